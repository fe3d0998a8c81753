// What inputs, outputs, modes and remote panels are called: lines of the notes such as "Input 1: Lectern".
#pragma once

#include "model/Config.h"
#include "model/Panels.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace vek {

enum class NameKind { Input, Output, Mode, Panel };
inline constexpr std::array nameKinds = {NameKind::Input, NameKind::Output, NameKind::Mode, NameKind::Panel};

/// How many there are of a kind.
std::size_t CountOf(NameKind kind);
/// "Input 1", "Panel A": what stands before the colon. Index from 0.
std::string NumberText(NameKind kind, std::size_t index);

/// The names that notes give. A name is what follows the colon of a line of its own, without the blanks
/// around it. The word and a panel's letter stand in either case; of several lines for one number the first
/// counts. Bytes are those of the notes, Windows-1252.
class Names {
  public:
    Names() = default;
    explicit Names(std::string_view notes);

    /// Empty for what has none. Index from 0.
    const std::string& Of(NameKind kind, std::size_t index) const;

    bool operator==(const Names&) const = default;

  private:
    std::array<std::array<std::string, panelCount>, nameKinds.size()> names_;
};

/// The notes with another name for one thing and every other line as it is. A new line goes behind the last
/// that gives a name, or to the end. An empty name removes its lines. Line ends in a name become blanks.
std::string WithName(std::string_view notes, NameKind kind, std::size_t index, std::string_view name);

} // namespace vek
