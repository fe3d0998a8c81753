#include "userstate/StateFolder.h"

#include <cstdlib>

namespace vek {

namespace {

/// A relative path would mean another folder after each change of the working one, and counts as not set.
std::string AbsolutePath(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value == '/' ? value : "";
}

} // namespace

std::string UserStateFolder() {
    std::string base = AbsolutePath("XDG_STATE_HOME");
    if (base.empty()) {
        base = AbsolutePath("HOME");
        if (base.empty())
            return {};
        base += "/.local/state";
    }
    return base + "/vorn-matrix-editor";
}

} // namespace vek
