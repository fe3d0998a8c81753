#include "platform/PortInspection.h"

#include "base/Descriptor.h"
#include "link/PortExamination.h"
#include "platform/PortHolders.h"
#include "platform/PortRights.h"
#include "platform/PortSettings.h"
#include "platform/SerialDevices.h"

#include <QSerialPortInfo>

#include <fcntl.h>
#include <filesystem>
#include <termios.h>

namespace vek {

namespace {

namespace fs = std::filesystem;

/// The name of the driver that serves a device; empty where the system does not tell.
std::string DriverOf(const std::string& device) {
    std::error_code error;
    const fs::path link = fs::path("/sys/class/tty") / fs::path(device).filename() / "device/driver";
    return fs::canonical(link, error).filename().string();
}

std::string AdapterText(const QSerialPortInfo& info) {
    const QString text = (info.manufacturer() + u' ' + info.description()).simplified();
    return text.toStdString();
}

} // namespace

PortFacts FactsOfDevice(const std::string& device) {
    PortFacts facts;
    facts.Name = ShownDeviceName(device);
    std::error_code error;
    const fs::path resolved = fs::canonical(device, error);
    facts.Device = error ? device : resolved.string();
    facts.Exists = !error;
    facts.Grabbers = RunningGrabbers();
    if (!facts.Exists)
        return facts;
    facts.IsSerial = IsSerialDevice(facts.Device);
    facts.IsPseudoTerminal = facts.IsSerial && facts.Device.starts_with("/dev/pts/");
    facts.Rights = RightsOf(facts.Device);
    facts.Holders = HoldersOf(facts.Device);
    facts.Driver = DriverOf(facts.Device);
    const QSerialPortInfo info(QString::fromStdString(ShownDeviceName(facts.Device)));
    facts.Adapter = AdapterText(info);
    facts.SerialNumber = info.serialNumber().toStdString();
    return facts;
}

std::vector<std::string> RefusedSettings(const std::string& device) {
    std::vector<std::string> refused;
    const Descriptor port(::open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    termios before = {};
    if (!port.Open() || ::tcgetattr(port.Get(), &before) != 0)
        return refused;
    for (const NeededSettings& needed : neededSettings) {
        if (!TakesPortSettings(port.Get(), *ParsePortSettings(needed.Settings)))
            refused.emplace_back(needed.Settings);
    }
    ::tcsetattr(port.Get(), TCSANOW, &before);
    return refused;
}

} // namespace vek
