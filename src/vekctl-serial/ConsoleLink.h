// The link to a device without a window: the objects behind it, and its conversations run to their end.
#pragma once

#include "base/Descriptor.h"
#include "base/Task.h"
#include "link/DeviceTypes.h"
#include "link/Outcomes.h"
#include "platform/QtOneShotTimer.h"
#include "platform/QtSerialControl.h"

#include <QSocketNotifier>

#include <exception>
#include <functional>
#include <stdexcept>
#include <string>

namespace vek {

/// Puts a line on standard error, after what is on standard output.
void PrintMessage(const std::string& text);

/// Puts a failure on standard error.
void PrintFailure(const Failure& failure);

/// One of the ending signals came.
class Cancelled : public std::runtime_error {
  public:
    Cancelled() : std::runtime_error("cancelled") {}
};

/// A port, a clock and the list of device types for the command line. Needs the application object; at most
/// one at a time. The signals SIGINT, SIGTERM and SIGHUP end what it runs, so that the port is left in order.
class ConsoleLink {
  public:
    explicit ConsoleLink(QtSerialControl::DeviceLookup deviceOf);

    SerialControl& Port() { return port_; }
    OneShotTimer& Timer() { return timer_; }
    const DeviceTypeList& Types() const { return types_; }

    /// Runs the conversation to its end; throws what ended it, and Cancelled after one of the signals. The
    /// conversation ends at once then, or is asked to by `endEarly` and given some time.
    void Run(Task<> conversation, const std::function<void()>& endEarly = {});

  private:
    DeviceTypeList types_;
    QtOneShotTimer timer_;
    QtSerialControl port_;
    Descriptor endings_;
    QSocketNotifier signalNotifier_;
};

/// The port that a user names.
class NamedPort {
  public:
    /// Throws std::runtime_error, saying why, for a port that cannot be used.
    explicit NamedPort(const std::string& name);

    /// "COM1 (ttyUSB0)", or the device alone.
    const std::string& Text() const { return text_; }
    /// Its path.
    const std::string& Device() const { return device_; }
    /// Makes the device COM1, and the only port.
    QtSerialControl::DeviceLookup AsCom1() const;

  private:
    std::string device_;
    std::string text_;
};

} // namespace vek
