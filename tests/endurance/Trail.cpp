#include "endurance/Trail.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/common_interface_defs.h>
#endif

namespace vek::test {

namespace {

using Line = std::array<char, 160>;

// Without allocations, for a program that dies.
Line runName;
std::array<Line, 40> lines;
std::size_t noted = 0;

void Copy(Line& line, const std::string& text) {
    const std::size_t length = std::min(text.size(), line.size() - 2);
    std::memcpy(line.data(), text.data(), length);
    line.at(length) = '\n';
    line.at(length + 1) = '\0';
}

template <typename Tell>
void TellTrail(Tell tell) {
    tell(runName.data());
    for (std::size_t i = noted - std::min(noted, lines.size()); i < noted; ++i)
        tell(lines.at(i % lines.size()).data());
}

void WriteTrail() {
    TellTrail(
        [](const char* line) { [[maybe_unused]] const auto written = ::write(2, line, std::strlen(line)); });
}

void Die(int signal) {
    WriteTrail();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

} // namespace

void Note(const std::string& what) { Copy(lines.at(noted++ % lines.size()), what); }

void BeginTrail(const std::string& name, unsigned mostSeconds) {
    Copy(runName, name);
    noted = 0;
#ifdef __SANITIZE_ADDRESS__
    __sanitizer_set_death_callback(WriteTrail);
#else
    std::signal(SIGSEGV, Die);
#endif
    std::signal(SIGABRT, Die);
    std::signal(SIGALRM, Die);
    ::alarm(mostSeconds);
}

void EndTrail() { ::alarm(0); }

std::string Trail() {
    std::string trail;
    TellTrail([&](const char* line) { trail += line; });
    return trail;
}

} // namespace vek::test
