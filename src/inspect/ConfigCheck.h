// What an installer wants to know about a configuration before driving to the site.
#pragma once

#include "inspect/Findings.h"
#include "inspect/StoredConfig.h"

#include <string>
#include <vector>

namespace vek {

/// Empty when there is nothing to say.
std::vector<Finding> CheckConfig(const StoredConfig& stored);

/// One of several files.
struct NamedUnit {
    std::string Name;
    int VekNetBase;
};

struct FileFinding {
    std::string Name;
    Finding What;
};

/// What is wrong when all of these units are on one VekNet. Quick for thousands of files.
std::vector<FileFinding> CheckTogether(const std::vector<NamedUnit>& units);

} // namespace vek
