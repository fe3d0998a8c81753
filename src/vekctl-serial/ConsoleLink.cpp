#include "vekctl-serial/ConsoleLink.h"

#include "console/EndingSignals.h"
#include "platform/JsonRegistryStore.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <unistd.h>

namespace vek {

namespace {

DeviceTypeList DeviceTypesOfThisMachine() {
    JsonRegistryStore store = JsonRegistryStore::OfThisMachine();
    DeviceTypeList types;
    CheckDeviceTypes(store, types);
    return types;
}

[[noreturn]] void Refuse(const std::string& name, const char* reason) {
    throw std::runtime_error(std::string(name).append(": ").append(reason));
}

} // namespace

void ConsoleView::ErrorMessage(const std::string& title, const std::string& text) {
    // A title may carry the number of a block behind its word.
    const std::size_t blank = title.find(' ');
    const std::string block =
        blank == std::string::npos ? "" : " (block" + title.substr(title.find_last_of(' ')) + ")";
    std::fflush(stdout);
    std::fprintf(stderr, "vekctl: %s%s\n", text.c_str(), block.c_str());
}

ConsoleLink::ConsoleLink(VekLinkView& view, QtSerialControl::DeviceLookup deviceOf)
    : types_(DeviceTypesOfThisMachine()), port_(std::move(deviceOf)), link_(port_, timer_, types_, view),
      endings_(BlockSignals({SIGINT, SIGTERM, SIGHUP})),
      signalNotifier_(endings_.Get(), QSocketNotifier::Read) {
    QObject::connect(&signalNotifier_, &QSocketNotifier::activated, &signalNotifier_, [this] {
        signalNotifier_.setEnabled(false);
        cancelled_ = true;
        link_.Cancel();
    });
}

void ConsoleLink::ThrowIfCancelled() const {
    if (cancelled_)
        throw std::runtime_error("cancelled");
}

NamedPort::NamedPort(const std::string& name) : device_(DeviceOfPortName(name)), text_(name) {
    if (device_.empty())
        Refuse(name, "there is no such port");
    if (::access(device_.c_str(), R_OK | W_OK) != 0)
        Refuse(device_, std::strerror(errno));
    if (!IsSerialDevice(device_))
        Refuse(device_, "is not a serial port");
    if (name.find('/') == std::string::npos)
        text_.append(" (").append(ShownDeviceName(device_)).append(")");
}

QtSerialControl::DeviceLookup NamedPort::AsCom1() const {
    return [device = device_](int number) { return number == 1 ? device : std::string(); };
}

} // namespace vek
