#include "base/EndingSignals.h"

#include <cerrno>
#include <csignal>
#include <sys/signalfd.h>
#include <system_error>

namespace vek {

Descriptor BlockSignals(std::initializer_list<int> signals) {
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : signals) {
        struct sigaction action = {};
        ::sigaction(signal, nullptr, &action);
        if (action.sa_handler != SIG_IGN) // as nohup has it for SIGHUP
            sigaddset(&set, signal);
    }
    ::sigprocmask(SIG_BLOCK, &set, nullptr);
    Descriptor readable(::signalfd(-1, &set, SFD_CLOEXEC));
    if (!readable.Open())
        throw std::system_error(errno, std::generic_category(), "waiting for signals");
    return readable;
}

} // namespace vek
