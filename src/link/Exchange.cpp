#include "link/Exchange.h"

namespace vek {

void Exchange::Open(int number) {
    Close();
    port.SetCommPort(number);
    port.SetPortOpen(true);
}

void Exchange::Close() {
    if (port.PortOpen())
        port.SetPortOpen(false);
}

void Exchange::SetSettings(std::string_view settings) {
    if (!Ended())
        port.SetSettings(settings);
}

void Exchange::Send(std::span<const std::uint8_t> bytes) {
    if (!Ended())
        port.Output(bytes);
}

void Exchange::DiscardInput() {
    if (!Ended())
        port.Input();
}

void Exchange::Wait(int milliseconds) {
    timer.Start(milliseconds);
    while (timer.Enabled() && !Ended())
        timer.LetEventsRun();
    timer.Stop();
}

ByteVector Exchange::WaitForReply(int milliseconds, std::size_t enough, std::size_t least) {
    timer.Start(milliseconds);
    while (timer.Enabled() && port.InBufferCount() < enough && !Ended())
        timer.LetEventsRun();
    timer.Stop();
    if (Ended() || port.InBufferCount() < least)
        return {};
    return port.Input();
}

} // namespace vek
