// The image that a Matrix Vek stores and runs from: 2177 bytes made from a configuration.
#pragma once

#include "model/Config.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace vek {

inline constexpr std::size_t imageBufferSize = 8192; ///< what the device's memory has room for
inline constexpr int imageLength = 2177;             ///< what it uses

/// What a download sends: the first Length bytes of Buffer, filled up with what follows to whole blocks.
struct DownloadImage {
    std::array<std::uint8_t, imageBufferSize> Buffer = {};
    int Length = 0; ///< 0 … 8192
};

/// An image with the configuration as its build leaves it: levels limited to what the volume chip can take
/// and panel texts without leading blanks.
struct EncodedImage {
    DownloadImage Image;
    MatrixConfig Config;
};

/// Builds the image. The argument is not changed; store the result's Config to keep what the build adjusted.
/// Throws OverflowError (a step or range too large for its byte), DivisionByZeroError (a maximum level equal
/// to the minimum) or SubscriptError (a link group outside 0 … 15).
EncodedImage EncodeImage(const MatrixConfig& config);

/// Code of the volume chip for a level in dB, which is first limited to what the chip can take.
std::uint8_t VolumeCode(float& level);

} // namespace vek
