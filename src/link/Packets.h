// The bytes on the line: requests, replies and the check that they share. A group of bytes is valid when
// their sum plus 1 is a multiple of 256.
#pragma once

#include "link/DownloadImage.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vek {

/// The byte that makes a group valid when it is put at its end.
std::uint8_t CheckByte(std::span<const std::uint8_t> bytes);
bool SumIsValid(std::span<const std::uint8_t> bytes);

inline constexpr std::uint8_t acceptedReply = 240;
/// True when there is a reply and its first byte accepts the command.
bool IsAccepted(std::span<const std::uint8_t> reply);

// Search. The device answers with its reply code, two parts of its firmware version and the check byte, and
// some devices with one byte more.
inline constexpr std::size_t findReplyLength = 4;

/// Each byte is followed by a pause: 255 and "SETVEK".
inline constexpr std::array<std::uint8_t, 7> searchRequest = {255, 'S', 'E', 'T', 'V', 'E', 'K'};

/// Where the answer starts among the bytes received: noise before it is skipped when there are more than 5.
std::size_t FindReplyStart(std::size_t received);

/// reply code + version part 1 × 256 + version part 2 × 65536; nothing when the answer is too short or its
/// check byte is wrong.
std::optional<std::uint32_t> DecodeFindReply(std::span<const std::uint8_t> received);

// Download.

/// | number high | number low | eight image bytes | check |
using DownloadBlock = std::array<std::uint8_t, 11>;
inline constexpr std::size_t blockImageBytes = 8;

/// Number of blocks for an image of this length.
int BlockCount(int length);
/// Block `number` (from 0) of an image. Throws SubscriptError when it reaches beyond the buffer.
DownloadBlock BuildBlock(const DownloadImage& image, int number);

// Online commands.

/// | letter | two data bytes | check |
using OnlinePacket = std::array<std::uint8_t, 4>;

/// An online command is answered by one byte.
inline constexpr std::size_t onlineReplyLength = 1;

/// "DiReCt"
inline constexpr std::array<std::uint8_t, 6> onlineFindRequest = {'D', 'i', 'R', 'e', 'C', 't'};

OnlinePacket RestartPacket();
/// Routes an input to an output, both from 0. Throws OverflowError outside a byte.
OnlinePacket RoutePacket(int output, int input);
/// Sets an output (from 0) to a value of VolumeRegister. Throws OverflowError for a value outside a byte.
OnlinePacket VolumePacket(int output, float registerValue);

/// Register value of the volume chip for a level in dB, neither limited nor rounded: 210 is 0 dB, a step is
/// half a dB. Throws OverflowError when it is not finite.
float VolumeRegister(float level);

} // namespace vek
