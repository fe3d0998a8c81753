#include "vekctl/EachFile.h"

#include "base/Errors.h"
#include "console/Input.h"
#include "console/Output.h"

#include <CLI/CLI.hpp>

#include <cstdio>

namespace vek {

void AddFilesOption(CLI::App& command, std::vector<std::string>& files) {
    command.add_option("FILE", files, "Configuration files (*.VMC), - for standard input")->required();
}

void RequireOneFileFor(const std::string& output, const std::vector<std::string>& files) {
    if (!IsStandardOutput(output) && files.size() > 1)
        throw CLI::ValidationError("-o", "takes one FILE, not " + std::to_string(files.size()));
}

void ForEachFile(const std::vector<std::string>& files, const std::function<void(const std::string&)>& work) {
    bool failed = false;
    for (const std::string& file : files) {
        try {
            work(file);
        } catch (const OutputError&) {
            throw;
        } catch (const FileError& error) {
            std::fprintf(stderr, "vekctl: %s\n", error.what());
            failed = true;
        } catch (const RunTimeError& error) {
            std::fprintf(stderr, "vekctl: %s: %s\n", InputName(file).c_str(), error.what());
            failed = true;
        }
    }
    if (failed)
        throw CLI::RuntimeError(1);
}

} // namespace vek
