#include "editor/CommandTable.h"

#include <algorithm>

namespace vek {

namespace {

constexpr bool startsGroup = true;
constexpr bool continues = false;
constexpr bool whileOnline = true;
constexpr bool offlineOnly = false;

constexpr ToolbarCommand commands[] = {
    {"NEW", "New", "&New", "Start new configuration", "Ctrl+N", continues, offlineOnly},
    {"OPEN", "Open", "&Open ...", "Open existing configuration", "Ctrl+O", continues, offlineOnly},
    {"SAVE", "Save", "&Save", "Save configuration", "Ctrl+S", continues, whileOnline},
    {"SAVEAS", "Save As", "Save &As ...", "Save configuration to new filename", "Ctrl+Shift+S", continues,
     whileOnline},
    {"PRINT", "Print", "&Print ...", "Print Configuration", "Ctrl+P", startsGroup, whileOnline},
    {"TEXT", "Text", "Save as Te&xt ...", "Save Configuration to Text File", "Ctrl+T", continues,
     whileOnline},
    {"CSV", "CSV", "Export &CSV ...", "Export VekNet Addresses in Excel CSV Format", "Ctrl+Shift+T",
     continues, whileOnline},
    {"EXPORT", "Export", "&Export ...", "Export Vek Configuration File", "Ctrl+Shift+E", continues,
     whileOnline},
    {"DEFAULT", "Default", "Reset to &Default ...", "Set This Mode To Default Values", "Ctrl+R", startsGroup,
     offlineOnly},
    {"LINK", "Link", "&Link Outputs ...", "Link Output Channel Selection togther", "Ctrl+L", continues,
     offlineOnly},
    {"BASE", "Base", "&Base Address ...", "Set VekNet Base Address", "Ctrl+B", continues, offlineOnly},
    {"ONLINE", "Online", "&Online", "Set levels online", "Ctrl+G", startsGroup, whileOnline},
    {"DOWNLOAD", "Download", "&Download ...", "Download configuration to Matrix Vek", "Ctrl+D", continues,
     offlineOnly},
    {"ABOUT", "About", "&About", "Display information about this program", "Shift+F1", startsGroup,
     whileOnline},
};

} // namespace

std::span<const ToolbarCommand> ToolbarCommands() { return commands; }

const ToolbarCommand* FindToolbarCommand(std::string_view key) {
    const auto* found = std::find_if(std::begin(commands), std::end(commands),
                                     [key](const ToolbarCommand& command) { return command.Key == key; });
    return found == std::end(commands) ? nullptr : found;
}

} // namespace vek
