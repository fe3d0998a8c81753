// The commands of the toolbar, which are in the menus, too: keys, captions, tool tips and shortcuts, in the
// order of the toolbar.
#pragma once

#include <span>
#include <string_view>

namespace vek {

struct ToolbarCommand {
    std::string_view Key; ///< also the object name of its action
    std::string_view Caption;
    std::string_view MenuCaption; ///< the same in the menus, with the mark of its key
    std::string_view ToolTip;
    std::string_view Shortcut; ///< portable text of a key sequence, or empty
    bool StartsGroup;          ///< a separator stands before it
    bool WhileOnline;          ///< false: would change what the device plays, or needs its port
};

std::span<const ToolbarCommand> ToolbarCommands();

/// Nullptr for a key that no button has.
const ToolbarCommand* FindToolbarCommand(std::string_view key);

} // namespace vek
