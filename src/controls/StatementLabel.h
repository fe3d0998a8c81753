// A sentence that must be read to its end.
#pragma once

#include <QLabel>

namespace vek {

/// Shows a plain text on two lines at most. Where it has no room, a shorter text takes its place, and in the
/// last resort that one's end is left out.
class StatementLabel : public QLabel {
    Q_OBJECT

  public:
    static constexpr int lines = 2;

    explicit StatementLabel(QWidget* parent = nullptr);

    /// `shorter` says the same in fewer words.
    void Show(const QString& text, const QString& shorter);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString Fitting(const QRect& area) const;

    QString shorter_;
};

} // namespace vek
