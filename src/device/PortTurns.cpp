#include "device/PortTurns.h"

namespace vek {

PortTurns::PortTurns() {
    next_.setSingleShot(true);
    QObject::connect(&next_, &QTimer::timeout, &next_, [this] { GiveNext(); });
}

bool PortTurns::Take(const Turn& turn) {
    if (!Free())
        return false;
    holder_ = &turn;
    return true;
}

void PortTurns::Leave(const Turn& turn) {
    std::erase(queue_, &turn);
    if (holder_ != &turn)
        return;
    holder_ = nullptr;
    if (!queue_.empty())
        next_.start(0);
}

void PortTurns::GiveNext() {
    if (holder_ != nullptr || queue_.empty())
        return;
    Turn* const turn = queue_.front();
    queue_.pop_front();
    holder_ = turn;
    turn->waiting_.resume();
}

} // namespace vek
