// Where the program keeps what belongs to the user but to no file of his.
#pragma once

#include <string>

namespace vek {

// Below the folders that the XDG variables name, or their defaults in the home folder; empty for a user
// without a home. They need not exist.

/// $XDG_STATE_HOME/vorn-matrix-editor, by default below ~/.local/state
std::string UserStateFolder();
/// $XDG_CONFIG_HOME/vorn-matrix-editor.conf, by default below ~/.config
std::string UserSettingsFile();
/// $XDG_DATA_HOME/vorn-matrix-editor/templates, by default below ~/.local/share
std::string UserTemplatesFolder();

} // namespace vek
