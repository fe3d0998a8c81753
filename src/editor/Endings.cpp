#include "editor/Endings.h"

#include "base/EndingSignals.h"
#include "editor/CorvaneForm.h"

#include <QPointer>

#include <csignal>
#include <cstdlib>
#include <sys/signalfd.h>
#include <unistd.h>

namespace vek {

namespace {

constexpr unsigned longestEnding = 2; // seconds

/// Qt calls exit() when its display goes; the window still exists then.
QPointer<CorvaneForm> watched;
void EndWithTheDisplay() {
    if (watched)
        watched->EndAtOnce();
}

} // namespace

Endings::Endings() : blocked_(BlockSignals({SIGINT, SIGTERM, SIGHUP})) {}

void Endings::Watch(CorvaneForm& window) {
    watched = &window;
    std::atexit(EndWithTheDisplay);
    notifier_ = std::make_unique<QSocketNotifier>(blocked_.Get(), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, &window, [this, &window] {
        signalfd_siginfo signal = {};
        if (::read(blocked_.Get(), &signal, sizeof signal) != sizeof signal)
            return;
        came_ = static_cast<int>(signal.ssi_signo);
        ::alarm(longestEnding);
        window.EndInOrder();
    });
}

void Endings::Raise() const {
    if (came_ == 0)
        return;
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, came_);
    std::raise(came_);
    ::sigprocmask(SIG_UNBLOCK, &set, nullptr);
}

} // namespace vek
