#include "dialogs/OutputLabel.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionButton>

#include <algorithm>

namespace vek {

using namespace Qt::StringLiterals;

OutputLabel::OutputLabel(int number, QWidget* parent) : QLabel(QString::number(number), parent) {
    setObjectName(u"Label1_%1"_s.arg(number - 1));
    setAlignment(Qt::AlignCenter);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::OpenHandCursor);
    setToolTip(tr("Drag the number to a frame, or press 0 to 4"));
}

void OutputLabel::PutBack() { move(home_); }

void OutputLabel::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    dragging_ = true;
    grab_ = event->position().toPoint();
    home_ = pos();
    raise();
    setCursor(Qt::ClosedHandCursor);
}

void OutputLabel::mouseMoveEvent(QMouseEvent* event) {
    if (!dragging_)
        return;
    const QPoint wanted = pos() + event->position().toPoint() - grab_;
    const QSize room = parentWidget()->size() - size();
    move(std::clamp(wanted.x(), 0, room.width()), std::clamp(wanted.y(), 0, room.height()));
    Q_EMIT Moved();
}

void OutputLabel::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && dragging_)
        EndDrag();
}

void OutputLabel::EndDrag() {
    dragging_ = false;
    setCursor(Qt::OpenHandCursor);
    update();
    Q_EMIT Dropped();
}

void OutputLabel::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (dragging_) { // the pointer has it; only Escape takes it away
        if (key != Qt::Key_Escape)
            return;
        PutBack();
        EndDrag();
    } else if (key >= Qt::Key_0 && key <= Qt::Key_4)
        Q_EMIT GroupTyped(key - Qt::Key_0);
    else if (key == Qt::Key_Right || key == Qt::Key_Down)
        Q_EMIT FocusWanted(+1);
    else if (key == Qt::Key_Left || key == Qt::Key_Up)
        Q_EMIT FocusWanted(-1);
    else
        QLabel::keyPressEvent(event);
}

void OutputLabel::focusInEvent(QFocusEvent* event) {
    QLabel::focusInEvent(event);
    update();
}

void OutputLabel::focusOutEvent(QFocusEvent* event) {
    QLabel::focusOutEvent(event);
    update();
}

void OutputLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool marked = hasFocus() || dragging_;
    painter.setBrush(palette().color(marked ? QPalette::Highlight : QPalette::Button));
    painter.setPen(palette().color(marked ? QPalette::Highlight : QPalette::Mid));
    constexpr double radius = 3.0;
    painter.drawRoundedRect(QRectF(rect()).adjusted(1.5, 0.5, -1.5, -0.5), radius, radius);
    painter.setPen(palette().color(marked ? QPalette::HighlightedText : QPalette::ButtonText));
    painter.drawText(rect(), Qt::AlignCenter, text());
}

} // namespace vek
