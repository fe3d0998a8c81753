#include "vekctl-serial/ConsoleLink.h"

#include "base/EndingSignals.h"
#include "link/OutcomeTexts.h"
#include "platform/JsonRegistryStore.h"

#include <QCoreApplication>
#include <QTimer>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <unistd.h>
#include <utility>

namespace vek {

namespace {

constexpr std::chrono::milliseconds longestEnding(1600);

DeviceTypeList DeviceTypesOfThisMachine() {
    JsonRegistryStore store = JsonRegistryStore::OfThisMachine();
    DeviceTypeList types;
    CheckDeviceTypes(store, types);
    return types;
}

[[noreturn]] void Refuse(const std::string& name, const std::string& reason) {
    throw std::runtime_error(name + ": " + reason);
}

} // namespace

void PrintMessage(const std::string& text) {
    std::fflush(stdout);
    std::fprintf(stderr, "vekctl: %s\n", text.c_str());
}

void PrintFailure(const Failure& failure) {
    std::string text = TextOf(failure).Text;
    if (failure.Block >= 0)
        text.append(" (block ").append(std::to_string(failure.Block)).append(")");
    PrintMessage(text);
}

ConsoleLink::ConsoleLink(QtSerialControl::DeviceLookup deviceOf)
    : types_(DeviceTypesOfThisMachine()), port_(std::move(deviceOf)),
      endings_(BlockSignals({SIGINT, SIGTERM, SIGHUP})),
      signalNotifier_(endings_.Get(), QSocketNotifier::Read) {}

void ConsoleLink::Run(Task<> conversation, const std::function<void()>& endEarly) {
    QObject scope;
    std::exception_ptr failure;
    bool cancelled = false;
    RunningTask running;
    QObject::connect(&signalNotifier_, &QSocketNotifier::activated, &scope, [&] {
        signalNotifier_.setEnabled(false);
        cancelled = true;
        const auto cancel = [&running] {
            running.Cancel();
            QCoreApplication::quit();
        };
        if (!endEarly) {
            cancel();
            return;
        }
        endEarly();
        QTimer::singleShot(longestEnding, &scope, cancel);
    });
    running.Start(std::move(conversation), [&](const std::exception_ptr& thrown) {
        failure = thrown;
        QCoreApplication::quit();
    });
    if (running.Running())
        QCoreApplication::exec();
    if (cancelled)
        throw Cancelled();
    if (failure)
        std::rethrow_exception(failure);
}

NamedPort::NamedPort(const std::string& name) : device_(DeviceOfPortName(name)), text_(name) {
    if (device_.empty())
        Refuse(name, WhyNotOpened(NotOpened(OpenFailure::NotThere)));
    if (::access(device_.c_str(), R_OK | W_OK) != 0)
        Refuse(device_,
               errno == EACCES ? WhyNotOpened(NotOpened(OpenFailure::NotPermitted)) : std::strerror(errno));
    if (!IsSerialDevice(device_))
        Refuse(device_, "is not a serial port");
    if (name.find('/') == std::string::npos)
        text_.append(" (").append(ShownDeviceName(device_)).append(")");
}

QtSerialControl::DeviceLookup NamedPort::AsCom1() const {
    return [device = device_](int number) { return number == 1 ? device : std::string(); };
}

} // namespace vek
