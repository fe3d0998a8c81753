#include "platform/QtSerialControl.h"

#include <QDeadlineTimer>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <poll.h>
#include <thread>
#include <unistd.h>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;

/// What a device that never stops sending can make the program hold.
constexpr qint64 readBufferSize = 4096;
/// How much is discarded at most when the input is emptied while a device never stops sending.
constexpr std::size_t mostInput = 16 * readBufferSize;

constexpr PortSettings settingsOfNewPort = {9600, 'n', 8, 1};
constexpr int wakePulseRate = 110;
constexpr milliseconds breakLength(100);

/// Start bit, data bits, parity and two stop bits at most.
constexpr int longestByteBits = 12;
/// Bytes pass a pseudo-terminal at once, but who reads them sees the settings of the moment of reading.
constexpr microseconds pseudoTerminalTime(150);
/// What a driver may take on top of the time on the line.
constexpr milliseconds driverPatience(500);

microseconds LineTime(std::size_t bytes, const PortSettings& settings) {
    constexpr std::int64_t second = 1'000'000;
    return microseconds(static_cast<std::int64_t>(bytes) * longestByteBits * second / settings.Baud);
}

/// Hands all the bytes to the driver of a port that never blocks; false when it does not take them in time.
/// QSerialPort would have its event loop watch for room in the driver at each output, which costs more than
/// the exchange with the device.
bool WriteAll(int descriptor, std::span<const std::uint8_t> bytes, const QDeadlineTimer& deadline) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written > 0) {
            bytes = bytes.subspan(static_cast<std::size_t>(written));
            continue;
        }
        if (written < 0 && errno != EAGAIN && errno != EINTR)
            return false;
        pollfd room = {descriptor, POLLOUT, 0};
        if (::poll(&room, 1, static_cast<int>(deadline.remainingTime())) == 0)
            return false;
    }
    return true;
}

/// Path without links, so that two names of one device exclude each other.
std::string ResolvedPath(const std::string& path) {
    std::error_code error;
    const auto resolved = std::filesystem::canonical(path, error);
    return error ? path : resolved.string();
}

} // namespace

QtSerialControl::QtSerialControl(DeviceLookup deviceOf, SettingsDriver applySettings)
    : deviceOf_(std::move(deviceOf)), applySettings_(std::move(applySettings)) {
    QObject::connect(&port_, &QSerialPort::errorOccurred, &port_,
                     [this](QSerialPort::SerialPortError error) { OnError(error); });
}

void QtSerialControl::SetPortOpen(bool open) {
    Close();
    if (open)
        Open();
}

void QtSerialControl::Open() {
    const std::string device = ResolvedPath(deviceOf_(commPort_));
    if (!IsSerialDevice(device))
        return;
    port_.setPortName(QString::fromStdString(device));
    port_.setReadBufferSize(readBufferSize);
    lineFree_ = {};
    current_ = settingsOfNewPort;
    if (port_.open(QIODevice::ReadWrite))
        port_.clear(QSerialPort::Input);
}

void QtSerialControl::Close() {
    if (port_.isOpen())
        port_.close();
    failed_ = false;
    pulseByBreak_ = false;
}

void QtSerialControl::OnError(QSerialPort::SerialPortError error) {
    switch (error) {
    case QSerialPort::ReadError:
    case QSerialPort::WriteError:
    case QSerialPort::ResourceError:
    case QSerialPort::PermissionError:
        Fail();
        break;
    default:
        break; // an opening that failed, or the end of Input's look for more
    }
}

void QtSerialControl::Fail() {
    if (!PortOpen())
        return;
    failed_ = true;
    // Not from within the port's own signal. Until then the port reports its end over and over.
    QMetaObject::invokeMethod(
        &port_,
        [this] {
            if (failed_)
                Close();
        },
        Qt::QueuedConnection);
}

void QtSerialControl::SetSettings(std::string_view settings) {
    const auto parsed = ParsePortSettings(settings);
    if (!parsed || !PortOpen())
        return;
    // Hardware sends on from its own buffer when the driver's is empty. A device that answers what it was
    // asked has everything already; one that answers something older may not.
    std::this_thread::sleep_until(lineFree_);
    current_ = *parsed;
    const int rate = applySettings_(static_cast<int>(port_.handle()), current_);
    pulseByBreak_ = current_.Baud == wakePulseRate && !RatesAgree(rate, wakePulseRate);
}

void QtSerialControl::Output(std::span<const std::uint8_t> bytes) {
    if (!PortOpen())
        return;
    if (pulseByBreak_)
        SendBreak();
    else if (!WriteOut(bytes))
        Fail();
}

/// False when the port does not take the bytes.
bool QtSerialControl::WriteOut(std::span<const std::uint8_t> bytes) {
    const auto start = std::chrono::steady_clock::now();
    const QDeadlineTimer deadline(2 * LineTime(bytes.size(), current_) + driverPatience, Qt::PreciseTimer);
    if (!WriteAll(static_cast<int>(port_.handle()), bytes, deadline))
        return false;
    // The driver has them all; now they go out.
    while (PortOpen() && !deadline.hasExpired()) {
        const int queued = QueuedOutput(static_cast<int>(port_.handle()));
        if (queued == 0)
            break;
        std::this_thread::sleep_for(LineTime(static_cast<std::size_t>(queued), current_));
    }
    lineFree_ = OnPseudoTerminal() ? std::chrono::steady_clock::now() + pseudoTerminalTime
                                   : start + LineTime(bytes.size(), current_);
    return true;
}

bool QtSerialControl::OnPseudoTerminal() const { return port_.portName().startsWith("pts/"_L1); }

void QtSerialControl::SendBreak() {
    port_.setBreakEnabled(true);
    std::this_thread::sleep_for(breakLength);
    port_.setBreakEnabled(false);
}

ByteVector QtSerialControl::Input() {
    ByteVector input;
    const auto take = [&] {
        const QByteArray bytes = port_.readAll();
        input.insert(input.end(), bytes.begin(), bytes.end());
    };
    if (!PortOpen())
        return input;
    take();
    // And what arrived since events last ran.
    while (PortOpen() && input.size() < mostInput && QueuedInput(static_cast<int>(port_.handle())) > 0 &&
           port_.waitForReadyRead(0))
        take();
    return input;
}

std::size_t QtSerialControl::InBufferCount() const {
    return PortOpen() ? static_cast<std::size_t>(port_.bytesAvailable()) : 0;
}

} // namespace vek
