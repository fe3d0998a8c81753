#include "userstate/UserFolders.h"

#include <cstdlib>
#include <string_view>

namespace vek {

namespace {

/// A relative path would mean another folder after each change of the working one, and counts as not set.
std::string AbsolutePath(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value == '/' ? value : "";
}

std::string Below(const char* variable, std::string_view inHome, std::string_view name) {
    std::string base = AbsolutePath(variable);
    if (base.empty()) {
        base = AbsolutePath("HOME");
        if (base.empty())
            return {};
        base += inHome;
    }
    return base += name;
}

} // namespace

std::string UserStateFolder() { return Below("XDG_STATE_HOME", "/.local/state", "/vorn-matrix-editor"); }

std::string UserSettingsFile() { return Below("XDG_CONFIG_HOME", "/.config", "/vorn-matrix-editor.conf"); }

std::string UserTemplatesFolder() {
    return Below("XDG_DATA_HOME", "/.local/share", "/vorn-matrix-editor/templates");
}

} // namespace vek
