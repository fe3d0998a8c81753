#include "link/Exchange.h"

namespace vek {

void Exchange::Open(int number) {
    Close();
    port_.SetCommPort(number);
    port_.SetPortOpen(true);
}

void Exchange::Close() {
    if (port_.PortOpen())
        port_.SetPortOpen(false);
}

void Exchange::SetSettings(std::string_view settings) {
    if (!Ended())
        port_.SetSettings(settings);
}

void Exchange::Send(std::span<const std::uint8_t> bytes) {
    if (!Ended())
        port_.Output(bytes);
}

void Exchange::DiscardInput() {
    if (!Ended())
        port_.Input();
}

void Exchange::Wait(int milliseconds) {
    timer_.Start(milliseconds);
    while (timer_.Enabled() && !Ended())
        timer_.LetEventsRun();
    timer_.Stop();
}

ByteVector Exchange::WaitForReply(int milliseconds, std::size_t enough, std::size_t least) {
    timer_.Start(milliseconds);
    while (timer_.Enabled() && port_.InBufferCount() < enough && !Ended())
        timer_.LetEventsRun();
    timer_.Stop();
    if (Ended() || port_.InBufferCount() < least)
        return {};
    return port_.Input();
}

} // namespace vek
