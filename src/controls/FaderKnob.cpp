#include "controls/FaderKnob.h"

#include "model/Levels.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionButton>

#include <limits>

namespace vek {

namespace {

// Odd height: the line across the middle stands on a whole pixel.
constexpr QSize knobSize(26, 15);

struct KnobKey {
    int Key;
    float Decibels;
};

constexpr float toEnd = std::numeric_limits<float>::infinity();
constexpr KnobKey knobKeys[] = {
    {Qt::Key_Up, faderStep},         {Qt::Key_Down, -faderStep},
    {Qt::Key_PageUp, faderPageStep}, {Qt::Key_PageDown, -faderPageStep},
    {Qt::Key_Home, -toEnd},          {Qt::Key_End, toEnd},
};

const KnobKey* FindKnobKey(int key) {
    for (const KnobKey& entry : knobKeys)
        if (entry.Key == key)
            return &entry;
    return nullptr;
}

} // namespace

FaderKnob::FaderKnob(AdjustableLevel& shown, QWidget* parent) : QWidget(parent), shown_(shown) {
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::SizeVerCursor);
    setAttribute(Qt::WA_Hover);
    resize(knobSize);
}

QSize FaderKnob::sizeHint() const { return knobSize; }

bool FaderKnob::event(QEvent* event) {
    const bool disabled = event->type() == QEvent::EnabledChange && !isEnabled();
    if (disabled || event->type() == QEvent::Hide || event->type() == QEvent::WindowDeactivate)
        Interrupt();
    return QWidget::event(event);
}

void FaderKnob::Interrupt() {
    if (!dragging_ && !repeating_)
        return;
    dragging_ = repeating_ = false;
    update();
    QMetaObject::invokeMethod(this, &FaderKnob::Released, Qt::QueuedConnection);
}

void FaderKnob::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    grabOffset_ = event->position().toPoint().y();
    clicked_ = true;
    dragging_ = true;
    update();
}

void FaderKnob::mouseMoveEvent(QMouseEvent* event) {
    if (dragging_ && grabOffset_)
        Q_EMIT Dragged(mapToParent(event->position().toPoint()).y() - *grabOffset_);
}

void FaderKnob::mouseDoubleClickEvent(QMouseEvent* event) {
    const bool second = clicked_ && event->button() == Qt::LeftButton;
    mousePressEvent(event);
    if (!second)
        return;
    grabOffset_.reset();
    Q_EMIT Zeroed();
}

void FaderKnob::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !dragging_)
        return;
    dragging_ = false;
    update();
    Q_EMIT Released();
}

void FaderKnob::keyPressEvent(QKeyEvent* event) {
    const KnobKey* found = FindKnobKey(event->key());
    if (found == nullptr) {
        QWidget::keyPressEvent(event);
        return;
    }
    Q_EMIT Stepped(found->Decibels);
    if (event->isAutoRepeat())
        repeating_ = true;
    else
        Q_EMIT Released();
}

void FaderKnob::keyReleaseEvent(QKeyEvent* event) {
    if (event->isAutoRepeat() || FindKnobKey(event->key()) == nullptr)
        QWidget::keyReleaseEvent(event);
    else
        EndRepeat();
}

void FaderKnob::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    EndRepeat();
}

void FaderKnob::EndRepeat() {
    if (!repeating_)
        return;
    repeating_ = false;
    Q_EMIT Released();
}

void FaderKnob::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QStyleOptionButton option;
    option.initFrom(this);
    option.state |= dragging_ ? QStyle::State_Sunken : QStyle::State_Raised;
    style()->drawControl(QStyle::CE_PushButtonBevel, &option, &painter, this);

    const QColor mark = palette().color(hasFocus() ? QPalette::Highlight : QPalette::ButtonText);
    constexpr int inset = 4;
    painter.fillRect(inset, height() / 2, width() - 2 * inset, 1, mark);
    if (hasFocus()) {
        constexpr double penWidth = 2.0;
        constexpr double radius = 2.0;
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(mark, penWidth));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), radius, radius);
    }
}

} // namespace vek
