// The parts of a configuration.
#pragma once

namespace vek {

/// What a field belongs to; Tail is what follows the record in a file.
enum class FieldKind { Base, Panels, LinkGroups, Levels, InputTrims, OutputTrims, Notes, Addresses, Tail };

} // namespace vek
