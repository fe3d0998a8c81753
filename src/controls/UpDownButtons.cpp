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
    : QWidget(parent), up_(MakeButton(u"Up"_s, Qt::UpArrow, upHeld_, +1)),
      down_(MakeButton(u"Down"_s, Qt::DownArrow, downHeld_, -1)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(up_);
    column->addWidget(down_);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);

    timer_.setObjectName("Timer1"_L1);
    connect(&timer_, &QTimer::timeout, this, &UpDownButtons::Timer1_Tick);
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
    up_->setAccessibleName(tr("%1 up").arg(what));
    down_->setAccessibleName(tr("%1 down").arg(what));
}

void UpDownButtons::Press(bool& held, int direction) {
    held = true;
    Q_EMIT Pressed();
    // What the press set off elsewhere (a message of the box that lost the focus) may have ended it.
    if (!held)
        return;
    Q_EMIT Step(direction);
    if (held)
        timer_.start(firstRepeat);
}

void UpDownButtons::Release(bool& held) {
    if (!held)
        return;
    held = false;
    timer_.stop();
    Q_EMIT Released();
}

void UpDownButtons::Timer1_Tick() {
    if (!downHeld_ && !upHeld_)
        return;
    timer_.setInterval(nextRepeat);
    if (downHeld_)
        Q_EMIT Step(-1);
    if (upHeld_)
        Q_EMIT Step(+1);
}

void UpDownButtons::Interrupt() {
    if (!upHeld_ && !downHeld_)
        return;
    upHeld_ = downHeld_ = false;
    timer_.stop();
    up_->setDown(false);
    down_->setDown(false);
    // Not from within the hiding or deactivating: who hears it may open a message box.
    QMetaObject::invokeMethod(this, &UpDownButtons::Released, Qt::QueuedConnection);
}

bool UpDownButtons::event(QEvent* event) {
    if (event->type() == QEvent::Hide || event->type() == QEvent::WindowDeactivate)
        Interrupt();
    return QWidget::event(event);
}

} // namespace vek
