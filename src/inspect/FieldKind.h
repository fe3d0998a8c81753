// The parts of a configuration.
#pragma once

#include <cstddef>
#include <optional>

namespace vek {

/// What a field belongs to; Tail is what follows the record in a file.
enum class FieldKind { Base, Panels, LinkGroups, Levels, InputTrims, OutputTrims, Notes, Addresses, Tail };

/// Where in the editor a field is found.
struct FieldPlace {
    FieldKind Kind;
    std::optional<std::size_t> Mode;   ///< 0 … 7, where the field belongs to one
    std::optional<std::size_t> Output; ///< 0 … 7, where the field belongs to one
};

} // namespace vek
