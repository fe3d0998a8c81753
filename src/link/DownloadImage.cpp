#include "link/DownloadImage.h"

#include "base/Numbers.h"
#include "model/Levels.h"
#include "model/VekNetAddresses.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <span>

namespace vek {

namespace {

using Bytes = std::span<std::uint8_t>;

// | 256 address enables | 8 mode blocks | 8 × (input trim, output trim) | gap | modes in use | base | gap |
constexpr std::size_t addressCount = vekNetAddressCount;
constexpr std::size_t modeBlocksOffset = addressCount;
constexpr std::size_t modeBlockSize = 235;
constexpr std::size_t trimsOffset = 2136;
constexpr std::size_t trimSize = 2;
constexpr std::size_t modesInUseOffset = 2168;
constexpr std::size_t baseOffset = 2169;
constexpr std::size_t baseSize = 2;
static_assert(modeBlocksOffset + modeCount * modeBlockSize == trimsOffset);
static_assert(inputCount == outputCount, "input and output trims stand in pairs");
static_assert(trimsOffset + outputCount * trimSize <= modesInUseOffset);
static_assert(modesInUseOffset + 1 == baseOffset);
static_assert(baseOffset + baseSize <= static_cast<std::size_t>(imageLength));
static_assert(static_cast<std::size_t>(imageLength) <= imageBufferSize);

// A mode block:
// | fixed start | new route | mute | 8 output records | volume panels | select panels | link leaders | gap |
constexpr std::size_t fixedStartMaskOffset = 0;
constexpr std::size_t newRouteMaskOffset = 1;
constexpr std::size_t muteMaskOffset = 2;
constexpr std::size_t outputRecordsOffset = 3;
constexpr std::size_t outputRecordSpacing = 24;
constexpr std::size_t volumePanelsOffset = 193;
constexpr std::size_t selectPanelsOffset = volumePanelsOffset + panelCount;
constexpr std::size_t linkLeadersOffset = selectPanelsOffset + panelCount;
static_assert(linkLeadersOffset + outputCount <= modeBlockSize);

/// Link groups that the device's own table has room for.
constexpr std::size_t linkTableSize = 16;

/// R is the range between the level limits in half-dB steps.
struct OutputRecord {
    std::array<std::uint8_t, inputCharacters.size()> AllowedInputs =
        {}; ///< 1 + input, in order; 0 after the last
    std::uint8_t TopCode = 0;
    std::uint8_t BottomCode = 0;
    std::uint8_t AnalogPerStep = 0;  ///< 255 / R in 32nds
    std::uint8_t StepsPerAnalog = 0; ///< R / 255 in 32nds
    std::uint8_t Gap1 = 0;
    std::uint8_t TopCodeAgain = 0;
    std::uint8_t BottomCodeAgain = 0;
    std::uint8_t EleventhOfRange = 0;
    std::uint8_t Step = 0; ///< in half dB
    std::uint8_t Gap2 = 0;
    std::uint8_t StartCode = 0;
};
using OutputRecordBytes = std::array<std::uint8_t, 20>;
static_assert(sizeof(OutputRecord) == sizeof(OutputRecordBytes));
static_assert(sizeof(OutputRecord) <= outputRecordSpacing);
// The spacing would let the last record reach into the panels; what is written of it ends before them.
static_assert(outputRecordsOffset + (outputCount - 1) * outputRecordSpacing + sizeof(OutputRecord) <=
              volumePanelsOffset);

constexpr std::uint8_t enabledByte = 255;

std::uint8_t Bit(std::size_t index) { return static_cast<std::uint8_t>(1U << index); }

std::uint8_t OneBased(std::size_t index) { return static_cast<std::uint8_t>(index + 1); }

template <std::size_t N>
std::string_view TrimInPlace(FixedText<N>& text) {
    text = text.Trimmed();
    return text.Trimmed();
}

void EncodeBase(std::int16_t base, Bytes bytes) {
    const auto pattern = static_cast<std::uint16_t>(base);
    bytes[0] = static_cast<std::uint8_t>(pattern & 0xFF);
    bytes[1] = static_cast<std::uint8_t>(pattern >> 8);
}

void EncodeAddressEnables(const AddressEnables& enables, Bytes bytes) {
    using enum AddressGroup;
    for (const AddressGroup group : {Mode, Volume, RouteControl, Route}) {
        for (std::size_t function = 0; function < FunctionCount(group); ++function) {
            for (std::size_t output = 0; output < outputCount; ++output) {
                const auto offset = static_cast<std::size_t>(AddressOffset(group, function, output));
                bytes[offset] = IsSet(AddressFlag(enables, group, function, output)) ? enabledByte : 0;
            }
        }
    }
}

/// A ratio in 32nds, cut to whole ones and limited to what the device can divide by.
std::uint8_t In32nds(float ratio) {
    constexpr float parts = 32.0F;
    const float whole = std::floor(CheckedSingle(ratio * parts));
    return static_cast<std::uint8_t>(std::clamp(whole, 1.0F, 255.0F));
}

OutputRecord BuildOutputRecord(OutputLevelRecord& levels, std::string_view panelInputs) {
    constexpr float analogSteps = 255.0F;
    constexpr float rangeParts = 11.0F;

    const float span = CheckedSingle(levels.MaximumLevel - levels.MinimumLevel);
    const float range = CheckedSingle(codesPerDb * span);

    OutputRecord record;
    for (std::size_t i = 0; i < panelInputs.size(); ++i)
        record.AllowedInputs.at(i) = ToByte(1 + LenientNumber(panelInputs.substr(i, 1)));

    const std::uint8_t maximumCode = VolumeCode(levels.MaximumLevel);
    const std::uint8_t minimumCode = VolumeCode(levels.MinimumLevel);
    record.TopCode = std::max(maximumCode, minimumCode);
    record.BottomCode = std::min(maximumCode, minimumCode);
    if (record.TopCode == record.BottomCode)
        record.BottomCode = static_cast<std::uint8_t>(record.TopCode - 2);
    record.TopCodeAgain = record.TopCode;
    record.BottomCodeAgain = record.BottomCode;

    record.AnalogPerStep = In32nds(CheckedQuotient(analogSteps, range));
    record.StepsPerAnalog = In32nds(CheckedQuotient(range, analogSteps));
    record.EleventhOfRange = std::max<std::uint8_t>(ToByte(CheckedQuotient(range, rangeParts)), 1);
    record.Step = ToByte(CheckedSingle(codesPerDb * levels.StepLevel));
    record.StartCode = VolumeCode(levels.StartLevel);
    return record;
}

/// Each panel's byte is 1 + the last output that lists it.
template <std::size_t N>
void EncodePanels(FixedText<N>& panels, std::size_t output, Bytes table) {
    for (const char panel : TrimInPlace(panels))
        table[PanelCharToIndex(panel)] = OneBased(output);
}

void EncodeLinkLeaders(const ModeRecord& mode, Bytes leaders) {
    std::array<std::uint8_t, linkTableSize> leaderOfGroup = {};
    for (std::size_t output = 0; output < outputCount; ++output) {
        if (mode.LinkGroup[output] == 0)
            continue;
        std::uint8_t& leader = leaderOfGroup[CheckedIndex(mode.LinkGroup[output], linkTableSize)];
        if (leader == 0)
            leader = OneBased(output);
        else
            leaders[output] = leader;
    }
}

void EncodeMode(ModeRecord& mode, Bytes block) {
    for (std::size_t output = 0; output < outputCount; ++output) {
        const OutputLevelRecord& levels = mode.OutputLevels[output];
        if (!IsSet(levels.PreviousNotSetStartLevel))
            block[fixedStartMaskOffset] |= Bit(output);
        if (!IsSet(mode.OutputPanels[output].UsePreviousRoute))
            block[newRouteMaskOffset] |= Bit(output);
        if (IsSet(levels.MuteOnMin))
            block[muteMaskOffset] |= Bit(output);
    }
    for (std::size_t output = 0; output < outputCount; ++output) {
        const OutputRecord record =
            BuildOutputRecord(mode.OutputLevels[output], TrimInPlace(mode.OutputPanels[output].PanelInputs));
        const auto bytes = std::bit_cast<OutputRecordBytes>(record);
        std::ranges::copy(bytes, block.subspan(outputRecordsOffset + output * outputRecordSpacing).begin());
    }
    for (std::size_t output = 0; output < outputCount; ++output)
        EncodePanels(mode.OutputPanels[output].PanelVolumes, output,
                     block.subspan(volumePanelsOffset, panelCount));
    for (std::size_t output = 0; output < outputCount; ++output)
        EncodePanels(mode.OutputPanels[output].PanelSelects, output,
                     block.subspan(selectPanelsOffset, panelCount));
    EncodeLinkLeaders(mode, block.subspan(linkLeadersOffset, outputCount));
}

} // namespace

std::uint8_t VolumeCode(float& level) {
    level = LimitLevel(level, levelMaximum, levelMinimum);
    return ToByte(VolumeChipCode(level));
}

EncodedImage EncodeImage(const MatrixConfig& config) {
    EncodedImage result{{}, config};
    result.Image.Length = imageLength;
    const Bytes bytes(result.Image.Buffer);
    MatrixConfig& adjusted = result.Config;

    EncodeBase(adjusted.VekNetBase, bytes.subspan(baseOffset, baseSize));
    for (std::size_t mode = 0; mode < modeCount; ++mode) {
        if (IsUsedMode(adjusted.Modes[mode]))
            bytes[modesInUseOffset] |= Bit(mode);
    }
    EncodeAddressEnables(adjusted.Addresses, bytes.first(addressCount));
    for (std::size_t mode = 0; mode < modeCount; ++mode)
        EncodeMode(adjusted.Modes[mode],
                   bytes.subspan(modeBlocksOffset + mode * modeBlockSize, modeBlockSize));
    for (std::size_t i = 0; i < outputCount; ++i) {
        bytes[trimsOffset + i * trimSize] = VolumeCode(adjusted.InputTrim[i]);
        bytes[trimsOffset + i * trimSize + 1] = VolumeCode(adjusted.OutputTrim[i]);
    }
    return result;
}

} // namespace vek
