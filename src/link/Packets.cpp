#include "link/Packets.h"

#include "base/Errors.h"
#include "base/Numbers.h"

#include <algorithm>
#include <numeric>

namespace vek {

namespace {

std::uint8_t Sum(std::span<const std::uint8_t> bytes) {
    return static_cast<std::uint8_t>(std::accumulate(bytes.begin(), bytes.end(), 0U) & 0xFFU);
}

CommandPacket BuildCommand(char letter, std::uint8_t first, std::uint8_t second) {
    CommandPacket packet = {static_cast<std::uint8_t>(letter), first, second, 0};
    packet.back() = CheckByte(std::span(packet).first<3>());
    return packet;
}

/// Upper case, without leading zeros.
std::string Hexadecimal(std::int16_t value) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (unsigned rest = static_cast<std::uint16_t>(value); rest != 0 || text.empty(); rest >>= 4)
        text.insert(text.begin(), digits[rest & 0xF]);
    return text;
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

std::string VersionText(std::uint32_t found) {
    // The first mask keeps bit 20 as well, which belongs to the second part: kept, as it is what users know.
    constexpr std::uint32_t firstPartMask = 0x10FF00;
    constexpr std::uint32_t secondPartMask = 0xFF0000;
    std::string text = std::to_string((found & firstPartMask) >> 8);
    text += '.';
    text += std::to_string((found & secondPartMask) >> 16);
    return text;
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

CommandPacket RestartPacket() { return BuildCommand('R', 255, 255); }

CommandPacket RoutePacket(int output, int input) { return BuildCommand('M', ToByte(output), ToByte(input)); }

CommandPacket VolumePacket(int output, float registerValue) {
    return BuildCommand('V', ToByte(output), ToByte(registerValue));
}

float VolumeRegister(float level) {
    constexpr float stepsPerDb = 2.0F;
    constexpr float zeroDbValue = 210.0F;
    return CheckedSingle(CheckedSingle(stepsPerDb * level) + zeroDbValue);
}

std::string VolumeLine(int output, float level) {
    const float value = VolumeRegister(level);
    std::string line = "V,";
    line += GeneralNumber(output);
    line += ',';
    line += GeneralNumber(value);
    line += " Volume Output = ";
    line += GeneralNumber(output + 1);
    line += ',';
    line += GeneralNumber(level);
    line += "dB, CS3318 = ";
    line += GeneralNumber(value);
    line += "/&H";
    line += Hexadecimal(ToInteger(value));
    line += "\r\n";
    return line;
}

std::string RouteLine(int output, int input) {
    std::string line = "M,";
    line += GeneralNumber(output);
    line += ',';
    line += GeneralNumber(input);
    line += " Route Output ";
    line += GeneralNumber(output + 1);
    line += " to Input ";
    line += GeneralNumber(input + 1);
    line += "\r\n";
    return line;
}

} // namespace vek
