// A quiet line above the pages that tells something and offers what to do about it.
#pragma once

#include <QFrame>

class QHBoxLayout;
class QPushButton;

namespace vek {

class ElidedLabel;

/// Hidden until it has something to tell. In colours of the palette, told apart from the pages by a stripe in
/// the highlight colour.
class NoticeBar : public QFrame {
    Q_OBJECT

  public:
    explicit NoticeBar(const QString& name, QWidget* parent = nullptr);

    /// The bar owns the button.
    QPushButton* AddButton(const QString& name, const QString& caption);
    void Tell(const QString& text);
    QString Text() const;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    ElidedLabel* text_;
    QHBoxLayout* row_;
};

} // namespace vek
