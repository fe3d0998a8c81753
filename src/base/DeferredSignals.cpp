#include "base/DeferredSignals.h"

#include <csignal>
#include <mutex>

namespace vek {

namespace {

struct Deferred {
    int Signal;
    volatile std::sig_atomic_t Came = 0;
    bool Replaced = false;
};

Deferred signals[] = {{SIGINT}, {SIGTERM}, {SIGHUP}};
std::mutex guard;
int holders = 0;

void Note(int number) {
    for (Deferred& deferred : signals) {
        if (deferred.Signal == number)
            deferred.Came = 1;
    }
}

void Replace(Deferred& deferred) {
    struct sigaction action = {};
    ::sigaction(deferred.Signal, nullptr, &action);
    deferred.Replaced = (action.sa_flags & SA_SIGINFO) == 0 && action.sa_handler == SIG_DFL;
    if (!deferred.Replaced)
        return;
    action.sa_handler = Note;
    action.sa_flags = SA_RESTART;
    ::sigaction(deferred.Signal, &action, nullptr);
}

void Restore(Deferred& deferred) {
    if (!deferred.Replaced)
        return;
    std::signal(deferred.Signal, SIG_DFL);
    deferred.Replaced = false;
    if (deferred.Came != 0)
        std::raise(deferred.Signal);
}

} // namespace

DeferredSignals::DeferredSignals() {
    const std::scoped_lock lock(guard);
    if (holders++ > 0)
        return;
    for (Deferred& deferred : signals)
        Replace(deferred);
}

DeferredSignals::~DeferredSignals() {
    const std::scoped_lock lock(guard);
    if (--holders > 0)
        return;
    for (Deferred& deferred : signals)
        Restore(deferred);
}

} // namespace vek
