#include "link/Packets.h"

#include "base/Errors.h"
#include "base/Numbers.h"
#include "model/Levels.h"

#include <algorithm>
#include <numeric>

namespace vek {

namespace {

std::uint8_t Sum(std::span<const std::uint8_t> bytes) {
    return static_cast<std::uint8_t>(std::accumulate(bytes.begin(), bytes.end(), 0U) & 0xFFU);
}

OnlinePacket BuildPacket(char letter, std::uint8_t first, std::uint8_t second) {
    OnlinePacket packet = {static_cast<std::uint8_t>(letter), first, second, 0};
    packet.back() = CheckByte(std::span(packet).first<3>());
    return packet;
}

} // namespace

std::uint8_t CheckByte(std::span<const std::uint8_t> bytes) {
    return static_cast<std::uint8_t>(255U - Sum(bytes));
}

bool SumIsValid(std::span<const std::uint8_t> bytes) { return Sum(bytes) == 255; }

bool IsAccepted(std::span<const std::uint8_t> reply) {
    return !reply.empty() && reply.front() == acceptedReply;
}

std::size_t FindReplyStart(std::size_t received) {
    constexpr std::size_t longestReply = 5;
    return received > longestReply ? received - longestReply : 0;
}

std::optional<std::uint32_t> DecodeFindReply(std::span<const std::uint8_t> received) {
    if (received.size() < findReplyLength)
        return std::nullopt;
    const auto reply = received.subspan(FindReplyStart(received.size()), findReplyLength);
    if (!SumIsValid(reply))
        return std::nullopt;
    return reply[0] + (std::uint32_t{reply[1]} << 8) + (std::uint32_t{reply[2]} << 16);
}

int BlockCount(int length) {
    constexpr auto size = static_cast<int>(blockImageBytes);
    return (length + size - 1) / size;
}

DownloadBlock BuildBlock(const DownloadImage& image, int number) {
    const std::size_t index = CheckedIndex(number, imageBufferSize / blockImageBytes);
    DownloadBlock block = {static_cast<std::uint8_t>(index >> 8), static_cast<std::uint8_t>(index & 0xFF)};
    std::ranges::copy(std::span(image.Buffer).subspan(index * blockImageBytes, blockImageBytes),
                      block.begin() + 2);
    block.back() = CheckByte(std::span(block).first<block.size() - 1>());
    return block;
}

OnlinePacket RestartPacket() { return BuildPacket('R', 255, 255); }

OnlinePacket RoutePacket(int output, int input) { return BuildPacket('M', ToByte(output), ToByte(input)); }

OnlinePacket VolumePacket(int output, float registerValue) {
    return BuildPacket('V', ToByte(output), ToByte(registerValue));
}

float VolumeRegister(float level) { return CheckedSingle(VolumeChipCode(level)); }

} // namespace vek
