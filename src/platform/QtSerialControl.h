// The serial port of the protocol on QSerialPort.
#pragma once

#include "link/SerialControl.h"
#include "platform/ComPorts.h"
#include "platform/PortSettings.h"

#include <QSerialPort>

#include <chrono>
#include <functional>
#include <string>

namespace vek {

/// For the thread of the application object, whose event loop brings in what is received. Ports are opened
/// for this program alone; one that is in use does not open. A port whose device vanishes closes itself.
/// Output blocks for as long as the bytes take on the line (100 ms for a byte at 110 baud) without running
/// events.
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
    void SetSettings(std::string_view settings) override;
    void Output(std::span<const std::uint8_t> bytes) override;
    ByteVector Input() override;
    std::size_t InBufferCount() const override;

  private:
    void Open();
    void Close();
    void OnError(QSerialPort::SerialPortError error);
    void Fail();
    bool WriteOut(std::span<const std::uint8_t> bytes);
    void SendBreak();
    bool OnPseudoTerminal() const;

    DeviceLookup deviceOf_;
    SettingsDriver applySettings_;
    QSerialPort port_;
    int commPort_ = 1;
    PortSettings current_;                                ///< of the open port
    std::chrono::steady_clock::time_point lineFree_ = {}; ///< when the last output has left the line
    bool failed_ = false;       ///< the device is gone; the port is about to be closed
    bool pulseByBreak_ = false; ///< the port cannot do the rate of the wake pulse, to which it is set
};

} // namespace vek
