// The chip of an output that is dragged between the frames of the grouping dialog: its number and name.
#pragma once

#include <QLabel>

namespace vek {

/// Follows the pointer while the left button drags it, within its parent. Has the keyboard focus like a
/// button. The text is the number; the name stands beside it as far as there is room, and whole in the tool
/// tip.
class OutputLabel : public QLabel {
    Q_OBJECT

  public:
    /// `number` counts from 1.
    OutputLabel(int number, const QString& name, QWidget* parent);

    /// Wide enough for a name of usual length.
    QSize sizeHint() const override;

    /// Back to where it was grabbed.
    void PutBack();

  Q_SIGNALS:
    void Moved();
    /// The drag ended: the mouse button was released, or Escape put the label back.
    void Dropped();
    /// A key 0 … 4 was pressed.
    void GroupTyped(int group);
    /// An arrow key asks for the next (+1) or previous (-1) number.
    void FocusWanted(int direction);

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void EndDrag();
    QFont NumberFont() const;

    QString name_;
    bool dragging_ = false;
    QPoint grab_; ///< the pointer within the label when it was grabbed
    QPoint home_; ///< where the label stood then
};

} // namespace vek
