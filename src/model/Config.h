// The configuration of one Matrix Vek: an eight-by-eight matrix switcher with a volume chip per output.
// All indices are 0-based; numbers inside texts ("1" … "8", panel characters) are 1-based as the user sees
// them.
#pragma once

#include "base/FixedText.h"
#include "model/Panels.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace vek {

inline constexpr std::size_t modeCount = 8;
inline constexpr std::size_t inputCount = 8;
inline constexpr std::size_t outputCount = 8;
static_assert(inputCharacters.size() == 1 + inputCount);
inline constexpr std::int16_t linkGroupCount = 4;
inline constexpr std::size_t notesLength = 1500;

inline constexpr std::size_t modeFunctionCount = 16;
inline constexpr std::size_t volumeFunctionCount = 8;
inline constexpr std::size_t routeControlFunctionCount = 6;
inline constexpr std::size_t routeFunctionCount = 16;

/// A 16-bit truth value: 0 is false, everything else true; the program itself writes -1 for true. Files may
/// hold other non-zero values, which are kept until the user changes the field.
using Flag = std::int16_t;
inline constexpr Flag flagTrue = -1;
inline constexpr Flag flagFalse = 0;
constexpr bool IsSet(Flag flag) { return flag != 0; }
constexpr Flag ToFlag(bool value) { return value ? flagTrue : flagFalse; }

/// Volume behaviour of one output in one mode; levels in dB.
struct OutputLevelRecord {
    float MaximumLevel = 6.0F; ///< highest level that a remote panel may set
    float StartLevel = 0.0F;   ///< level set when the mode is recalled
    float MinimumLevel = -36.0F;
    Flag MuteOnMin = flagTrue;                 ///< mute the output at the minimum level
    float StepLevel = 1.0F;                    ///< size of one volume step from a remote panel
    Flag PreviousNotSetStartLevel = flagFalse; ///< start at the previous level instead of StartLevel

    bool operator==(const OutputLevelRecord&) const = default;
};

/// Remote panels and input sequence of one output in one mode.
struct PanelRecord {
    // One character of model/Panels.h each.
    FixedText<inputCharacters.size()> PanelInputs; ///< inputs that may be selected, in order
    FixedText<panelCount> PanelVolumes;            ///< panels that control the volume
    FixedText<panelCount> PanelSelects;            ///< panels that select the input
    Flag UsePreviousRoute = flagFalse;             ///< keep the previous input when the mode is recalled

    bool operator==(const PanelRecord&) const = default;
};

struct ModeRecord {
    std::array<OutputLevelRecord, outputCount> OutputLevels;
    std::array<PanelRecord, outputCount> OutputPanels;
    std::array<std::int16_t, outputCount> LinkGroup = {}; ///< 0 = not linked, 1 … 4 = the output's group

    bool operator==(const ModeRecord&) const = default;
};

/// Enable flags indexed [output][function].
template <std::size_t Functions>
using OutputFlags = std::array<std::array<Flag, Functions>, outputCount>;

/// The enable flags of every VekNet address function.
struct AddressEnables {
    /// 0 … 7 the "In" addresses of modes 1 – 8, 8 … 15 their "Out" addresses
    std::array<Flag, modeFunctionCount> ModeAddressEnable = {};
    OutputFlags<volumeFunctionCount> VolumeAddressEnable = {};
    OutputFlags<routeControlFunctionCount> RouteControlAddressEnable = {};
    OutputFlags<routeFunctionCount> RouteAddressEnable = {};

    bool operator==(const AddressEnables&) const = default;
};

/// The whole configuration. A default-constructed one is what NEW gives.
struct MatrixConfig {
    std::int16_t VekNetBase = 512; ///< first of the 256 VekNet addresses of the unit
    std::array<ModeRecord, modeCount> Modes;
    std::array<float, inputCount> InputTrim = {};   ///< dB
    std::array<float, outputCount> OutputTrim = {}; ///< dB
    FixedText<notesLength> Notes;                   ///< Windows-1252, lines separated by CR LF
    AddressEnables Addresses;

    /// True when no field differs; Singles are compared by value.
    bool operator==(const MatrixConfig&) const = default;
};

/// True when every output of the mode has the settings of a new configuration, all panel texts blank.
bool IsBlankMode(const ModeRecord& mode);

/// The mode after "Reset to default": every output has all inputs and the panel of its own number.
ModeRecord DefaultMode();

/// True when at least one output of the mode has an input sequence.
bool IsUsedMode(const ModeRecord& mode);

/// The first output (0 … 7) of the link group in this mode, outputCount when no output belongs to it.
std::size_t LinkLeader(const ModeRecord& mode, std::int16_t group);

/// True when the output (0 … 7) is linked to another one before it.
bool IsFollower(const ModeRecord& mode, std::size_t output);

/// True when nothing differs but what linking makes of followers: their inputs, selector panels and start
/// route, which their leader's have taken the place of.
bool DifferInFollowersOnly(const MatrixConfig& a, const MatrixConfig& b);

/// The output (0 … 7) other than `output` whose list of panels in this mode names the panel (index 0 … 15),
/// the lowest first. Selector panels of a follower do not count: its leader's are used.
std::optional<std::size_t> OutputUsingPanel(const ModeRecord& mode, NumberList list, std::size_t panel,
                                            std::size_t output);

/// True for 0 (not linked) and the groups 1 … 4.
constexpr bool IsValidLinkGroup(int group) { return group >= 0 && group <= linkGroupCount; }

} // namespace vek
