#include "simulator/PseudoTerminal.h"

#include <array>
#include <asm/termbits.h> // struct termios2, the only one with the rate as a number; excludes <termios.h>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <system_error>
#include <unistd.h>

namespace vek {

namespace {

[[noreturn]] void Fail(const char* what) { throw std::system_error(errno, std::generic_category(), what); }

int Checked(int result, const char* what) {
    if (result < 0)
        Fail(what);
    return result;
}

void MakeRaw(int port) {
    termios2 settings = {};
    Checked(::ioctl(port, TCGETS2, &settings), "reading the settings of a pseudo-terminal");
    settings.c_iflag = 0;
    settings.c_oflag = 0;
    settings.c_lflag = 0;
    settings.c_cflag = B9600 | CS8 | CREAD | CLOCAL;
    settings.c_cc[VMIN] = 1;
    settings.c_cc[VTIME] = 0;
    Checked(::ioctl(port, TCSETS2, &settings), "setting a pseudo-terminal");
}

} // namespace

std::string Describe(const LineSettings& line) {
    std::string text = std::to_string(line.Baud);
    text += line.StopBits == 1 ? " baud, 1 stop bit" : " baud, 2 stop bits";
    if (line.OddParity)
        text += ", odd";
    return text;
}

PseudoTerminal::PseudoTerminal() {
    device_ = Descriptor(
        Checked(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC), "making a pseudo-terminal"));
    Checked(::grantpt(device_.Get()), "making a pseudo-terminal");
    Checked(::unlockpt(device_.Get()), "making a pseudo-terminal");
    std::array<char, 64> name = {};
    Checked(-::ptsname_r(device_.Get(), name.data(), name.size()), "naming a pseudo-terminal");
    portPath_ = name.data();
    port_ =
        Descriptor(Checked(::open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC), "opening a pseudo-terminal"));
    MakeRaw(port_.Get());
}

LineSettings PseudoTerminal::Settings() const {
    termios2 settings = {};
    Checked(::ioctl(device_.Get(), TCGETS2, &settings), "reading the line's settings");
    return {static_cast<int>(settings.c_ospeed), (settings.c_cflag & CSTOPB) != 0 ? 2 : 1,
            (settings.c_cflag & PARODD) != 0};
}

std::vector<std::uint8_t> PseudoTerminal::Read() {
    std::vector<std::uint8_t> bytes(4096);
    const ssize_t got = ::read(device_.Get(), bytes.data(), bytes.size());
    if (got < 0 && errno != EAGAIN && errno != EINTR)
        Fail("reading from the line");
    bytes.resize(got < 0 ? 0 : static_cast<std::size_t>(got));
    return bytes;
}

std::size_t PseudoTerminal::Write(std::span<const std::uint8_t> bytes) {
    const ssize_t put = ::write(device_.Get(), bytes.data(), bytes.size());
    if (put < 0 && errno != EAGAIN && errno != EINTR)
        Fail("writing to the line");
    return put < 0 ? 0 : static_cast<std::size_t>(put);
}

void PseudoTerminal::HangUp() {
    device_ = Descriptor();
    port_ = Descriptor();
}

} // namespace vek
