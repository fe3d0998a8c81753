// The serial port of the protocol on QSerialPort.
#pragma once

#include "link/SerialControl.h"
#include "platform/ComPorts.h"
#include "platform/PortSettings.h"

#include <QSerialPort>
#include <QTimer>

#include <chrono>
#include <functional>
#include <string>

namespace vek {

/// For the thread of the application object, whose event loop brings in what is received and watches what is
/// sent. Ports are opened for this program alone. A port whose device vanishes closes itself.
class QtSerialControl final : public SerialControl {
  public:
    /// Gives the path of the device of a port number, asked at each opening; empty when there is none.
    using DeviceLookup = std::function<std::string(int number)>;
    /// Sets an open port and returns the rate that it really has.
    using SettingsDriver = std::function<int(int descriptor, const PortSettings&)>;

    explicit QtSerialControl(DeviceLookup deviceOf = DeviceOfComPort,
                             SettingsDriver applySettings = ApplyPortSettings);

    void SetCommPort(int number) override { commPort_ = number; }
    void SetPortOpen(bool open) override;
    bool PortOpen() const override { return port_.isOpen() && !failed_; }
    OpenFailure WhyNotOpen() const override { return openFailure_; }
    void SetSettings(std::string_view settings) override;
    void Output(std::span<const std::uint8_t> bytes) override;
    bool Sending() const override { return sending_; }
    ByteVector Input() override;
    std::size_t InBufferCount() const override;
    void SetListener(std::function<void()> listener) override { listener_ = std::move(listener); }

  private:
    using Clock = std::chrono::steady_clock;

    void Open();
    void Close();
    void OnError(QSerialPort::SerialPortError error);
    void Fail();
    void Notify() const;
    void GoOnSending();
    bool WriteUnsent();
    Clock::duration TimeToBeOut() const;
    void WithdrawAnnouncement() const;

    DeviceLookup deviceOf_;
    SettingsDriver applySettings_;
    std::function<void()> listener_;
    QSerialPort port_;
    OpenFailure openFailure_ = OpenFailure::NotThere;
    int commPort_ = 1;
    PortSettings current_; ///< of the open port
    bool onPseudoTerminal_ = false;
    bool failed_ = false;       ///< the device is gone; the port is about to be closed
    bool pulseByBreak_ = false; ///< the port cannot do the rate of the wake pulse, to which it is set

    // Sending.
    QTimer sendTimer_; ///< the next look at how far it is
    bool sending_ = false;
    bool breaking_ = false;           ///< a break stands for the bytes
    ByteVector unsent_;               ///< not yet taken by the driver
    Clock::time_point lineFree_ = {}; ///< when the last output has left the line
    Clock::time_point patienceEnd_ = {};
};

} // namespace vek
