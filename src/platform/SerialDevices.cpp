#include "platform/SerialDevices.h"

#include "base/Descriptor.h"

#include <QSerialPortInfo>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <linux/serial.h>
#include <sstream>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <tuple>

namespace vek {

namespace {

constexpr std::string_view deviceFolder = "/dev/";
constexpr std::string_view driverList = "/proc/tty/drivers";

bool IsDigit(char character) { return character >= '0' && character <= '9'; }

/// The digits at the start of the text, without leading zeros; removed from it.
std::string_view TakeNumber(std::string_view& text) {
    const auto end = std::find_if_not(text.begin(), text.end(), IsDigit);
    std::string_view digits = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(digits.size());
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    return digits;
}

/// Order of texts in which runs of digits count as numbers.
bool NaturallyBefore(std::string_view a, std::string_view b) {
    while (!a.empty() && !b.empty()) {
        if (IsDigit(a.front()) && IsDigit(b.front())) {
            const std::string_view first = TakeNumber(a);
            const std::string_view second = TakeNumber(b);
            if (first != second)
                return std::tuple(first.size(), first) < std::tuple(second.size(), second);
        } else if (a.front() != b.front()) {
            return a.front() < b.front();
        } else {
            a.remove_prefix(1);
            b.remove_prefix(1);
        }
    }
    return a.size() < b.size();
}

/// The main board's driver makes devices for more ports than there are; those have no hardware type. A port
/// that cannot be opened to ask (in use, no permission) counts as existing.
bool HasHardware(const std::string& path) {
    if (!path.starts_with("/dev/ttyS"))
        return true;
    const Descriptor port(::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    if (!port.Open())
        return true;
    serial_struct description = {};
    return ::ioctl(port.Get(), TIOCGSERIAL, &description) == 0 && description.type != PORT_UNKNOWN;
}

unsigned ToNumber(std::string_view text) {
    unsigned value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

} // namespace

void SortSerialDevices(std::vector<SerialDevice>& devices) {
    std::sort(devices.begin(), devices.end(), [](const SerialDevice& a, const SerialDevice& b) {
        return a.Usb != b.Usb ? a.Usb : NaturallyBefore(a.Path, b.Path);
    });
}

std::vector<SerialDevice> ExistingSerialDevices() {
    std::vector<SerialDevice> devices;
    for (const QSerialPortInfo& port : QSerialPortInfo::availablePorts()) {
        const std::string path = port.systemLocation().toStdString();
        if (IsSerialDevice(path) && HasHardware(path))
            devices.push_back({path, port.hasVendorIdentifier()});
    }
    SortSerialDevices(devices);
    return devices;
}

std::string DevicePath(std::string_view name) {
    if (name.empty() || name.find('/') != std::string_view::npos)
        return std::string(name);
    return std::string(deviceFolder) += name;
}

std::string ShownDeviceName(std::string_view path) {
    return std::string(path.starts_with(deviceFolder) ? path.substr(deviceFolder.size()) : path);
}

bool IsSerialDevice(const std::string& path) {
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISCHR(status.st_mode))
        return false;
    std::ifstream file{std::string(driverList)};
    const std::string drivers{std::istreambuf_iterator<char>(file), {}};
    return IsSerialDriver(drivers, major(status.st_rdev), minor(status.st_rdev));
}

bool IsSerialDriver(std::string_view drivers, unsigned majorNumber, unsigned minorNumber) {
    std::istringstream lines{std::string(drivers)};
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        const std::vector<std::string> fields{std::istream_iterator<std::string>(words), {}};
        // | name | device | major | minor or first-last minor | type |
        if (fields.size() != 5 || ToNumber(fields[2]) != majorNumber)
            continue;
        const std::string& range = fields[3];
        const std::size_t dash = range.find('-');
        const unsigned first = ToNumber(range);
        const unsigned last =
            dash == std::string::npos ? first : ToNumber(std::string_view(range).substr(dash + 1));
        if (minorNumber >= first && minorNumber <= last)
            return fields[4] == "serial" || fields[4] == "pty:slave";
    }
    return false;
}

} // namespace vek
