#include "platform/QtSerialControl.h"

#include <QSocketNotifier>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <thread>
#include <unistd.h>

namespace vek {

namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;

/// What a device that never stops sending can make the program hold.
constexpr qint64 readBufferSize = 4096;
/// How much is discarded at most when the input is emptied while a device never stops sending.
constexpr std::size_t mostInput = 16 * readBufferSize;
/// More than any answer with what may come before it.
constexpr std::size_t floodSize = 1024;

constexpr PortSettings settingsOfNewPort = {9600, 'n', 8, 1};
constexpr int wakePulseRate = 110;
constexpr milliseconds breakLength(100);

/// Bytes pass a pseudo-terminal at once, but who reads them sees the settings of the moment of reading.
constexpr microseconds pseudoTerminalTime(150);
/// What a driver may take on top of the time on the line.
constexpr milliseconds driverPatience(500);

microseconds LineTime(std::size_t bytes, const PortSettings& settings) {
    constexpr std::int64_t second = 1'000'000;
    const int bits = 1 + settings.DataBits + (settings.Parity == 'n' ? 0 : 1) + settings.StopBits;
    return microseconds(static_cast<std::int64_t>(bytes) * bits * second / settings.Baud);
}

/// Path without links, so that two names of one device exclude each other.
std::string ResolvedPath(const std::string& path) {
    std::error_code error;
    const auto resolved = std::filesystem::canonical(path, error);
    return error ? path : resolved.string();
}

OpenFailure ReasonToStayClosed(const std::string& device) {
    if (device.empty() || ::access(device.c_str(), F_OK) != 0)
        return OpenFailure::NotThere;
    return ::access(device.c_str(), R_OK | W_OK) != 0 ? OpenFailure::NotPermitted : OpenFailure::InUse;
}

} // namespace

QtSerialControl::QtSerialControl(DeviceLookup deviceOf, SettingsDriver applySettings)
    : deviceOf_(std::move(deviceOf)), applySettings_(std::move(applySettings)) {
    sendTimer_.setSingleShot(true);
    sendTimer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&sendTimer_, &QTimer::timeout, &port_, [this] {
        GoOnSending();
        if (!sending_)
            Notify();
    });
    QObject::connect(&port_, &QSerialPort::readyRead, &port_, [this] { Notify(); });
    QObject::connect(&port_, &QSerialPort::errorOccurred, &port_,
                     [this](QSerialPort::SerialPortError error) { OnError(error); });
}

void QtSerialControl::Notify() const {
    if (listener_)
        listener_();
}

void QtSerialControl::SetPortOpen(bool open) {
    Close();
    if (open)
        Open();
}

void QtSerialControl::Open() {
    const std::string device = ResolvedPath(deviceOf_(commPort_));
    openFailure_ = IsSerialDevice(device) ? ReasonToStayClosed(device) : OpenFailure::NotThere;
    if (!IsSerialDevice(device))
        return;
    port_.setPortName(QString::fromStdString(device));
    onPseudoTerminal_ = device.starts_with("/dev/pts/");
    port_.setReadBufferSize(readBufferSize);
    lineFree_ = {};
    current_ = settingsOfNewPort;
    if (port_.open(QIODevice::ReadWrite))
        port_.clear(QSerialPort::Input);
}

void QtSerialControl::Close() {
    if (breaking_)
        port_.setBreakEnabled(false);
    if (port_.isOpen())
        port_.close();
    failed_ = pulseByBreak_ = sending_ = breaking_ = false;
    unsent_.clear();
    sendTimer_.stop();
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
            if (!failed_)
                return;
            Close();
            Notify();
        },
        Qt::QueuedConnection);
}

void QtSerialControl::SetSettings(std::string_view settings) {
    const auto parsed = ParsePortSettings(settings);
    if (!parsed || !PortOpen())
        return;
    // A device that answers what it was asked has everything already; one that answers something older may
    // not. Only on a pseudo-terminal is the line not free yet.
    std::this_thread::sleep_until(lineFree_);
    current_ = *parsed;
    const int rate = applySettings_(static_cast<int>(port_.handle()), current_);
    pulseByBreak_ = current_.Baud == wakePulseRate && !RatesAgree(rate, wakePulseRate);
}

void QtSerialControl::Output(std::span<const std::uint8_t> bytes) {
    if (!PortOpen())
        return;
    const auto now = Clock::now();
    const microseconds lineTime = LineTime(bytes.size(), current_);
    patienceEnd_ = now + 2 * lineTime + driverPatience;
    sending_ = true;
    breaking_ = pulseByBreak_;
    if (breaking_) {
        port_.setBreakEnabled(true);
        lineFree_ = now + breakLength;
    } else {
        unsent_.insert(unsent_.end(), bytes.begin(), bytes.end());
        lineFree_ = std::max(now, lineFree_) + (onPseudoTerminal_ ? pseudoTerminalTime : lineTime);
    }
    GoOnSending();
}

void QtSerialControl::GoOnSending() {
    if (!PortOpen() || !sending_)
        return;
    if (!WriteUnsent()) {
        Fail();
        return;
    }
    // Whole milliseconds, and never early.
    const auto rest = std::chrono::ceil<milliseconds>(TimeToBeOut());
    if (rest > milliseconds::zero() && Clock::now() < patienceEnd_) {
        sendTimer_.start(rest);
        return;
    }
    sending_ = false;
    if (std::exchange(breaking_, false))
        port_.setBreakEnabled(false);
}

/// Hands to the driver what it takes without blocking; false when it refuses. QSerialPort would have its
/// event loop watch for room in the driver at each output, which costs more than the exchange with the
/// device.
bool QtSerialControl::WriteUnsent() {
    while (!unsent_.empty()) {
        const ssize_t written = ::write(static_cast<int>(port_.handle()), unsent_.data(), unsent_.size());
        if (written > 0)
            unsent_.erase(unsent_.begin(), unsent_.begin() + written);
        else if (written < 0 && errno == EAGAIN)
            return Clock::now() < patienceEnd_;
        else if (written == 0 || errno != EINTR)
            return false;
    }
    return true;
}

/// Until the bytes are on the line as far as can be told; hardware sends on from a buffer of its own when the
/// driver's is empty.
QtSerialControl::Clock::duration QtSerialControl::TimeToBeOut() const {
    const auto queued = static_cast<std::size_t>(QueuedOutput(static_cast<int>(port_.handle())));
    const Clock::duration inDriver = LineTime(unsent_.size() + queued, current_);
    if (onPseudoTerminal_ && !breaking_)
        return inDriver;
    return std::max(inDriver, lineFree_ - Clock::now());
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
           port_.waitForReadyRead(0)) {
        take();
        WithdrawAnnouncement();
    }
    // Of a flood the system holds more than it tells, and would bring it as the next reply.
    if (PortOpen() && input.size() >= floodSize) {
        port_.clear(QSerialPort::Input);
        WithdrawAnnouncement();
    }
    return input;
}

/// The event loop may have announced what has been taken meanwhile. QSerialPort would find nothing then, and
/// hold that for the end of the device.
void QtSerialControl::WithdrawAnnouncement() const {
    for (QSocketNotifier* notifier : port_.findChildren<QSocketNotifier*>(Qt::FindDirectChildrenOnly)) {
        if (notifier->type() == QSocketNotifier::Read && notifier->isEnabled()) {
            notifier->setEnabled(false);
            notifier->setEnabled(true);
        }
    }
}

std::size_t QtSerialControl::InBufferCount() const {
    return PortOpen() ? static_cast<std::size_t>(port_.bytesAvailable()) : 0;
}

} // namespace vek
