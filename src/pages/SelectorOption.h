// One number of a selector, with the name of what it chooses and what there is to it.
#pragma once

#include <QRadioButton>

namespace vek {

/// What a selector says about a mode or an output.
struct SelectorState {
    QString Name = {};
    bool Used = false;
    int LinkGroup = 0;  ///< 1 … 4, 0 = not linked
    QString Words = {}; ///< all of it for the tool tip and the screen reader: "in use, follows output 1"

    bool operator==(const SelectorState&) const = default;
};

/// The text is the number alone. The chosen one lies on the highlight colour; what is not in use is lighter.
class SelectorOption : public QRadioButton {
    Q_OBJECT

  public:
    /// `word` is what is chosen ("Mode").
    SelectorOption(const QString& word, std::size_t index, QWidget* parent);

    void ShowState(const SelectorState& state);
    /// Whether the page in front shows what is chosen here; drawn quieter when not.
    void SetConcerned(bool concerned);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    bool hitButton(const QPoint& position) const override { return rect().contains(position); }
    void paintEvent(QPaintEvent* event) override;

  private:
    int NameLeft() const;
    int MarkWidth() const;
    void PaintMark(QPainter& painter, const QRect& area) const;

    QString word_;
    SelectorState state_;
    bool concerned_ = true;
};

} // namespace vek
