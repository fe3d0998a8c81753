#include "editor/ConfigWatch.h"

#include "editing/EditHistory.h"
#include "inspect/ConfigCheck.h"
#include "model/ProgramState.h"

#include <algorithm>
#include <chrono>

namespace vek {

namespace {

constexpr std::chrono::milliseconds delay(50);

} // namespace

ConfigWatch::ConfigWatch(EditHistory& history, QObject* parent) : QObject(parent) {
    timer_.setSingleShot(true);
    timer_.setInterval(delay);
    connect(&timer_, &QTimer::timeout, this, [this] {
        Found();
        Q_EMIT Looked();
    });
    for (const auto signal : {&EditHistory::Entered, &EditHistory::Begun})
        connect(&history, signal, &timer_, qOverload<>(&QTimer::start));
    connect(&history, &EditHistory::Restored, &timer_, qOverload<>(&QTimer::start));
    timer_.start();
}

const std::vector<Finding>& ConfigWatch::Found() {
    if (checked_ == Config)
        return found_;
    found_ = CheckConfig({Config, {}});
    std::ranges::stable_sort(found_, {}, &Finding::Level);
    checked_ = Config;
    return found_;
}

} // namespace vek
