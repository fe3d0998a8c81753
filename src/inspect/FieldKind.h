// The parts of a configuration.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace vek {

/// What a field belongs to; Tail is what follows the record in a file.
enum class FieldKind { Base, Panels, LinkGroups, Levels, InputTrims, OutputTrims, Notes, Addresses, Tail };

// The words for the fields of an output in a mode.
namespace captions {
inline constexpr std::string_view inputSequence = "Input sequence";
inline constexpr std::string_view usePreviousRoute = "Use previous route";
inline constexpr std::string_view volumePanels = "Volume remote panels";
inline constexpr std::string_view selectorPanels = "Input selector remote panels";
inline constexpr std::string_view maximumLevel = "Maximum level";
inline constexpr std::string_view minimumLevel = "Minimum level";
inline constexpr std::string_view muteOnMinimum = "Mute on minimum level";
inline constexpr std::string_view startLevel = "Start level";
inline constexpr std::string_view previousStartLevel = "Use previous start level";
inline constexpr std::string_view levelSteps = "Level steps";
} // namespace captions

/// Where in the editor a field is found.
struct FieldPlace {
    FieldKind Kind;
    std::optional<std::size_t> Mode;      ///< 0 … 7, where the field belongs to one
    std::optional<std::size_t> Output;    ///< 0 … 7, where the field belongs to one
    std::optional<std::size_t> Trim = {}; ///< 0 … 7, where the field is one of the trims
    std::string_view Caption = {};        ///< "Maximum level", of one field; empty for several. Lives on.
};

} // namespace vek
