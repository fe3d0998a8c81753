// Running one command for several files.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace vek {

/// Adds the option FILE…, one or more configuration files.
void AddFilesOption(CLI::App& command, std::vector<std::string>& files);

/// Throws the error for wrong usage when several files would end in one that is not standard output.
void RequireOneFileFor(const std::string& output, const std::vector<std::string>& files);

/// Calls `work` for each file. A failure is told on standard error and the rest still done; at the end the
/// command ends with exit status 1.
void ForEachFile(const std::vector<std::string>& files, const std::function<void(const std::string&)>& work);

} // namespace vek
