#include "controls/UpDownButtons.h"

#include <QEvent>
#include <QToolButton>
#include <QVBoxLayout>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr int firstRepeat = 1000; // ms
constexpr int nextRepeat = 100;   // ms
constexpr int buttonWidth = 20;   // logical pixels

/// Stays pressed until the mouse button is released, also when the pointer slips off: one press, one hold.
class HoldButton final : public QToolButton {
  public:
    using QToolButton::QToolButton;

  protected:
    bool hitButton(const QPoint&) const override { return true; }
};

} // namespace

UpDownButtons::UpDownButtons(QWidget* parent)
    : QWidget(parent), up(MakeButton(u"Up"_s, Qt::UpArrow, upHeld, +1)),
      down(MakeButton(u"Down"_s, Qt::DownArrow, downHeld, -1)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(up);
    column->addWidget(down);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);

    timer.setObjectName("Timer1"_L1);
    connect(&timer, &QTimer::timeout, this, &UpDownButtons::Timer1_Tick);
}

QAbstractButton* UpDownButtons::MakeButton(const QString& name, Qt::ArrowType arrow, bool& held,
                                           int direction) {
    auto* button = new HoldButton(this);
    button->setObjectName(name);
    button->setArrowType(arrow);
    button->setFocusPolicy(Qt::NoFocus);
    button->setFixedWidth(buttonWidth);
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
    connect(button, &QToolButton::pressed, this, [this, &held, direction] { Press(held, direction); });
    connect(button, &QToolButton::released, this, [this, &held] { Release(held); });
    return button;
}

void UpDownButtons::SetAccessibleTitle(const QString& what) {
    up->setAccessibleName(what + u" up"_s);
    down->setAccessibleName(what + u" down"_s);
}

void UpDownButtons::Press(bool& held, int direction) {
    held = true;
    Q_EMIT Pressed();
    // What the press set off elsewhere (a message of the box that lost the focus) may have ended it.
    if (!held)
        return;
    Q_EMIT Step(direction);
    if (held)
        timer.start(firstRepeat);
}

void UpDownButtons::Release(bool& held) {
    if (!held)
        return;
    held = false;
    timer.stop();
    Q_EMIT Released();
}

void UpDownButtons::Timer1_Tick() {
    if (!downHeld && !upHeld)
        return;
    timer.setInterval(nextRepeat);
    if (downHeld)
        Q_EMIT Step(-1);
    if (upHeld)
        Q_EMIT Step(+1);
}

void UpDownButtons::Interrupt() {
    if (!upHeld && !downHeld)
        return;
    upHeld = downHeld = false;
    timer.stop();
    up->setDown(false);
    down->setDown(false);
    // Not from within the hiding or deactivating: who hears it may open a message box.
    QMetaObject::invokeMethod(this, &UpDownButtons::Released, Qt::QueuedConnection);
}

bool UpDownButtons::event(QEvent* event) {
    if (event->type() == QEvent::Hide || event->type() == QEvent::WindowDeactivate)
        Interrupt();
    return QWidget::event(event);
}

} // namespace vek
