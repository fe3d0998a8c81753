#include "controls/FocusGrid.h"

#include <QKeyEvent>

#include <algorithm>

namespace vek {

void FocusGrid::Add(QWidget* control) {
    control->setFocusPolicy(controls_.empty() ? Qt::StrongFocus : Qt::ClickFocus);
    control->installEventFilter(this);
    controls_.push_back(control);
}

void FocusGrid::MakeStop(std::size_t index) {
    if (controls_[stop_] != nullptr)
        controls_[stop_]->setFocusPolicy(Qt::ClickFocus);
    controls_[index]->setFocusPolicy(Qt::StrongFocus);
    stop_ = index;
}

std::size_t FocusGrid::Beside(std::size_t index, int key) const {
    const std::size_t column = index % columns_;
    if (controls_[index]->isRightToLeft() && (key == Qt::Key_Left || key == Qt::Key_Right))
        key = key == Qt::Key_Left ? Qt::Key_Right : Qt::Key_Left;
    switch (key) {
    case Qt::Key_Left:
        return column > 0 ? index - 1 : index;
    case Qt::Key_Right:
        return column + 1 < columns_ && index + 1 < controls_.size() ? index + 1 : index;
    case Qt::Key_Up:
        return index >= columns_ ? index - columns_ : index;
    case Qt::Key_Down:
        return index + columns_ < controls_.size() ? index + columns_ : index;
    case Qt::Key_Home:
        return 0;
    case Qt::Key_End:
        return controls_.size() - 1;
    default:
        return controls_.size();
    }
}

bool FocusGrid::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::FocusIn && event->type() != QEvent::KeyPress)
        return false;
    const auto index = static_cast<std::size_t>(
        std::ranges::find(controls_, watched, &QPointer<QWidget>::data) - controls_.begin());
    if (event->type() == QEvent::FocusIn) {
        MakeStop(index);
        return false;
    }
    const auto* press = static_cast<QKeyEvent*>(event);
    if ((press->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
        return false;
    const std::size_t next = Beside(index, press->key());
    if (next == controls_.size() || controls_[next] == nullptr)
        return false;
    controls_[next]->window()->setAttribute(Qt::WA_KeyboardFocusChange);
    controls_[next]->setFocus(Qt::TabFocusReason);
    controls_[next]->update();
    return true;
}

} // namespace vek
