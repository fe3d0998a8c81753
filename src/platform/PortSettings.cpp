#include "platform/PortSettings.h"

#include <algorithm>
#include <array>
#include <asm/termbits.h> // struct termios2, the only one with the rate as a number; excludes <termios.h>
#include <charconv>
#include <cstdlib>
#include <iterator>
#include <sys/ioctl.h>

namespace vek {

namespace {

constexpr std::array<tcflag_t, 4> sizeFlags = {CS5, CS6, CS7, CS8};
constexpr int fewestDataBits = 5;

struct StandardRate {
    int Baud;
    tcflag_t Flag;
};

constexpr StandardRate standardRates[] = {{110, B110},   {2400, B2400},   {4800, B4800},
                                          {9600, B9600}, {19200, B19200}, {38400, B38400}};

/// The rate's own flag where it has one, as any program would set it; otherwise the rate goes as a number.
tcflag_t RateFlag(int baud) {
    const auto* rate = std::find_if(std::begin(standardRates), std::end(standardRates),
                                    [&](const StandardRate& candidate) { return candidate.Baud == baud; });
    return rate == std::end(standardRates) ? BOTHER : rate->Flag;
}

tcflag_t ControlFlags(tcflag_t flags, const PortSettings& settings) {
    // Without an input rate of its own, input runs at the output rate.
    flags &= ~static_cast<tcflag_t>(CBAUD | CBAUD << IBSHIFT | CSIZE | CSTOPB | PARENB | PARODD);
    flags |= RateFlag(settings.Baud) | CREAD | CLOCAL;
    flags |= sizeFlags[static_cast<std::size_t>(settings.DataBits - fewestDataBits)];
    if (settings.StopBits == 2)
        flags |= CSTOPB;
    if (settings.Parity != 'n')
        flags |= PARENB;
    if (settings.Parity == 'o')
        flags |= PARODD;
    return flags;
}

int IntegerOf(int descriptor, unsigned long request) {
    int value = 0;
    return ::ioctl(descriptor, request, &value) == 0 ? value : 0;
}

} // namespace

std::optional<PortSettings> ParsePortSettings(std::string_view text) {
    PortSettings settings;
    const char* const end = text.data() + text.size();
    const auto rate = std::from_chars(text.data(), end, settings.Baud);
    const std::string_view rest(rate.ptr, static_cast<std::size_t>(end - rate.ptr));
    if (rate.ec != std::errc() || settings.Baud <= 0 || rest.size() != 6 || rest[0] != ',' ||
        rest[2] != ',' || rest[4] != ',')
        return std::nullopt;
    settings.Parity = rest[1];
    settings.DataBits = rest[3] - '0';
    settings.StopBits = rest[5] - '0';
    const bool known = (settings.Parity == 'n' || settings.Parity == 'o' || settings.Parity == 'e') &&
                       settings.DataBits >= fewestDataBits && settings.DataBits <= 8 &&
                       (settings.StopBits == 1 || settings.StopBits == 2);
    return known ? std::optional(settings) : std::nullopt;
}

int ApplyPortSettings(int descriptor, const PortSettings& settings) {
    termios2 line = {};
    if (::ioctl(descriptor, TCGETS2, &line) != 0)
        return 0;
    const auto rate = static_cast<speed_t>(settings.Baud);
    const tcflag_t flags = ControlFlags(line.c_cflag, settings);
    const tcflag_t inputFlags = line.c_iflag & ~static_cast<tcflag_t>(IGNPAR | PARMRK | INPCK);
    const bool sameRate = line.c_ospeed == rate && line.c_ispeed == rate;
    if (sameRate && line.c_cflag == flags && line.c_iflag == inputFlags)
        return settings.Baud;
    line.c_cflag = flags;
    line.c_iflag = inputFlags;
    line.c_ospeed = rate;
    line.c_ispeed = rate;
    if (::ioctl(descriptor, TCSETS2, &line) != 0 || ::ioctl(descriptor, TCGETS2, &line) != 0)
        return 0;
    return static_cast<int>(line.c_ospeed);
}

bool TakesPortSettings(int descriptor, const PortSettings& settings) {
    const int rate = ApplyPortSettings(descriptor, settings);
    termios2 line = {};
    if (!RatesAgree(rate, settings.Baud) || ::ioctl(descriptor, TCGETS2, &line) != 0)
        return false;
    constexpr auto framing = static_cast<tcflag_t>(CSIZE | CSTOPB | PARENB | PARODD);
    return (line.c_cflag & framing) == (ControlFlags(line.c_cflag, settings) & framing);
}

bool RatesAgree(int a, int b) {
    // With eleven bits to a byte, the last one is still read right at twice this deviation.
    constexpr int percent = 2;
    return std::abs(a - b) * 100 <= b * percent;
}

int QueuedOutput(int descriptor) { return IntegerOf(descriptor, TIOCOUTQ); }

int QueuedInput(int descriptor) { return IntegerOf(descriptor, FIONREAD); }

} // namespace vek
