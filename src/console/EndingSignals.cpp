#include "console/EndingSignals.h"

#include <cerrno>
#include <csignal>
#include <sys/signalfd.h>
#include <system_error>

namespace vek {

Descriptor BlockSignals(std::initializer_list<int> signals) {
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : signals)
        sigaddset(&set, signal);
    ::sigprocmask(SIG_BLOCK, &set, nullptr);
    Descriptor readable(::signalfd(-1, &set, SFD_CLOEXEC));
    if (!readable.Open())
        throw std::system_error(errno, std::generic_category(), "waiting for signals");
    return readable;
}

} // namespace vek
