#include "platform/ComPorts.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace vek {

namespace {

bool SameDevice(const std::string& a, const std::string& b) {
    std::error_code error;
    const auto resolve = [&](const std::string& path) {
        const auto resolved = std::filesystem::canonical(path, error);
        return error ? std::filesystem::path(path) : resolved;
    };
    return resolve(a) == resolve(b);
}

NamedComPorts PortsNamedByEnvironment() {
    NamedComPorts named;
    for (std::size_t row = 0; row < portCount; ++row) {
        std::string variable = "VEK_COM";
        variable += std::to_string(row + 1);
        if (const char* value = std::getenv(variable.c_str()))
            named[row] = DevicePath(value);
    }
    return named;
}

} // namespace

std::vector<ComPort> AssignComPorts(const NamedComPorts& named, const std::vector<SerialDevice>& existing) {
    const auto isNamed = [&](const SerialDevice& device) {
        return std::any_of(named.begin(), named.end(),
                           [&](const auto& name) { return name && SameDevice(*name, device.Path); });
    };
    std::vector<ComPort> ports;
    auto next = existing.begin();
    for (std::size_t row = 0; row < portCount; ++row) {
        std::string device;
        if (const auto& name = named[row]) {
            device = *name;
        } else {
            next = std::find_if_not(next, existing.end(), isNamed);
            if (next != existing.end())
                device = (next++)->Path;
        }
        if (!device.empty())
            ports.push_back({static_cast<int>(row) + 1, device, ShownDeviceName(device)});
    }
    return ports;
}

std::vector<ComPort> FindComPorts() {
    const NamedComPorts named = PortsNamedByEnvironment();
    const bool allNamed =
        std::all_of(named.begin(), named.end(), [](const auto& name) { return name.has_value(); });
    return AssignComPorts(named, allNamed ? std::vector<SerialDevice>() : ExistingSerialDevices());
}

std::string DeviceOfComPort(int number) {
    const auto ports = FindComPorts();
    const auto port = std::find_if(ports.begin(), ports.end(),
                                   [&](const ComPort& candidate) { return candidate.Number == number; });
    return port == ports.end() ? std::string() : port->Device;
}

std::string DeviceOfPortName(std::string_view name) {
    constexpr std::string_view prefix = "COM";
    if (name.size() == prefix.size() + 1 && name.starts_with(prefix)) {
        const int number = name.back() - '0';
        if (number >= 1 && number <= static_cast<int>(portCount))
            return DeviceOfComPort(number);
    }
    return DevicePath(name);
}

} // namespace vek
