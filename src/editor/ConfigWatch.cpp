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

QString CountText(const std::vector<Finding>& findings) {
    const auto errors = std::ranges::count(findings, Severity::Error, &Finding::Level);
    const auto warnings = std::ranges::count(findings, Severity::Warning, &Finding::Level);
    QStringList counts;
    if (errors > 0)
        counts += errors == 1 ? QObject::tr("1 error") : QObject::tr("%1 errors").arg(errors);
    if (warnings > 0)
        counts += warnings == 1 ? QObject::tr("1 warning") : QObject::tr("%1 warnings").arg(warnings);
    return counts.isEmpty() ? QObject::tr("No problems") : counts.join(QStringLiteral(", "));
}

ConfigWatch::ConfigWatch(EditHistory& history, QObject* parent) : QObject(parent) {
    timer_.setSingleShot(true);
    timer_.setInterval(delay);
    connect(&timer_, &QTimer::timeout, this, [this] {
        Found();
        Q_EMIT Looked();
    });
    connect(&history, &EditHistory::Entered, &timer_, qOverload<>(&QTimer::start));
    connect(&history, &EditHistory::Restored, &timer_, qOverload<>(&QTimer::start));
}

void ConfigWatch::Look() {
    if (checked_ != Config && !timer_.isActive())
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
