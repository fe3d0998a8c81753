// Where the program keeps what belongs to the user but to no file of his.
#pragma once

#include <string>

namespace vek {

/// $XDG_STATE_HOME/vorn-matrix-editor, by default below ~/.local/state; empty for a user without a home. It
/// need not exist.
std::string UserStateFolder();

} // namespace vek
