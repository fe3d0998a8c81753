// Random records: every byte that the record leaves free, valid where the reader insists.
#pragma once

#include "model/Config.h"
#include "model/RecordLayout.h"

#include <cstring>
#include <random>

namespace vek::test {

/// Levels are finite, link groups 0 … 4, everything else is any value: odd Booleans and any text bytes
/// included.
inline MatrixConfig RandomConfig(std::mt19937& random) {
    RecordBytes bytes;
    for (std::byte& byte : bytes)
        byte = static_cast<std::byte>(random());
    std::uniform_real_distribution<float> level(-96.0F, 22.0F);
    std::uniform_int_distribution<std::int16_t> group(0, linkGroupCount);
    const auto putLevel = [&](std::size_t offset) {
        const float value = level(random);
        std::memcpy(&bytes[offset], &value, sizeof value);
    };
    for (std::size_t mode = 0; mode < modeCount; ++mode) {
        const std::size_t start = integerSize + mode * modeRecordSize;
        for (std::size_t output = 0; output < outputCount; ++output) {
            for (const std::size_t field : {0, 4, 8, 14})
                putLevel(start + output * levelRecordSize + field);
            const std::size_t groups = start + outputCount * (levelRecordSize + panelRecordSize);
            bytes[groups + 2 * output] = static_cast<std::byte>(group(random));
            bytes[groups + 2 * output + 1] = std::byte{0};
        }
    }
    const std::size_t trims = integerSize + modeCount * modeRecordSize;
    for (std::size_t trim = 0; trim < inputCount + outputCount; ++trim)
        putLevel(trims + trim * singleSize);
    return DecodeRecord(bytes);
}

} // namespace vek::test
