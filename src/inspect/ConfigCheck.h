// What an installer wants to know about a configuration before driving to the site.
#pragma once

#include "model/Config.h"

#include <string>
#include <string_view>
#include <vector>

namespace vek {

enum class Severity {
    Error,   ///< the device cannot take it, or will not do what the configuration says
    Warning, ///< hardly what is meant
    Note     ///< worth a look
};

std::string_view SeverityName(Severity severity);

struct Finding {
    Severity Level;
    std::string Text; ///< UTF-8, one line; modes and outputs counted from 1
};

/// Empty when there is nothing to say.
std::vector<Finding> CheckConfig(const MatrixConfig& config);

} // namespace vek
