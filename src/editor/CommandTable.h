// The toolbar: keys, captions, tool tips and shortcuts, in order.
#pragma once

#include <span>
#include <string_view>

namespace vek {

struct ToolbarCommand {
    std::string_view Key; ///< also the object name of its action
    std::string_view Caption;
    std::string_view ToolTip;
    std::string_view Shortcut; ///< portable text of a key sequence, or empty
    bool StartsGroup;          ///< a separator stands before it
    bool WhileOnline;          ///< false: would change what the device plays, or needs its port
};

std::span<const ToolbarCommand> ToolbarCommands();

/// Nullptr for a key that no button has.
const ToolbarCommand* FindToolbarCommand(std::string_view key);

} // namespace vek
