#include "editor/CommandTable.h"

#include <algorithm>

namespace vek {

namespace {

constexpr bool startsGroup = true;
constexpr bool continues = false;
constexpr bool whileOnline = true;
constexpr bool offlineOnly = false;

constexpr ToolbarCommand commands[] = {
    {"NEW", "New", "Start new configuration", "Ctrl+N", continues, offlineOnly},
    {"OPEN", "Open", "Open existing configuration", "Ctrl+O", continues, offlineOnly},
    {"SAVE", "Save", "Save configuration", "Ctrl+S", continues, whileOnline},
    {"SAVEAS", "Save As", "Save configuration to new filename", "Ctrl+Shift+S", continues, whileOnline},
    {"PRINT", "Print", "Print Configuration", "Ctrl+P", startsGroup, whileOnline},
    {"TEXT", "Text", "Save Configuration to Text File", "", continues, whileOnline},
    {"CSV", "CSV", "Export VekNet Addresses in Excel CSV Format", "", continues, whileOnline},
    {"EXPORT", "Export", "Export Vek Configuration File", "", continues, whileOnline},
    {"DEFAULT", "Default", "Set This Mode To Default Values", "", startsGroup, offlineOnly},
    {"LINK", "Link", "Link Output Channel Selection togther", "", continues, offlineOnly},
    {"BASE", "Base", "Set VekNet Base Address", "", continues, offlineOnly},
    {"ONLINE", "Online", "Set levels online", "", startsGroup, whileOnline},
    {"DOWNLOAD", "Download", "Download configuration to Matrix Vek", "", continues, offlineOnly},
    {"ABOUT", "About", "Display information about this program", "", startsGroup, whileOnline},
};

} // namespace

std::span<const ToolbarCommand> ToolbarCommands() { return commands; }

const ToolbarCommand* FindToolbarCommand(std::string_view key) {
    const auto* found = std::find_if(std::begin(commands), std::end(commands),
                                     [key](const ToolbarCommand& command) { return command.Key == key; });
    return found == std::end(commands) ? nullptr : found;
}

} // namespace vek
