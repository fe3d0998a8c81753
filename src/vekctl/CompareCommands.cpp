// diff and check: what has changed, and what is wrong.
#include "vekctl/Commands.h"

#include "base/Bytes.h"
#include "base/Errors.h"
#include "console/CommandLine.h"
#include "console/Input.h"
#include "inspect/ConfigCheck.h"
#include "inspect/ConfigDiff.h"
#include "vekctl/EachFile.h"
#include "vekctl/Output.h"
#include "vekctl/StoredInput.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <memory>
#include <new>
#include <optional>
#include <sys/stat.h>

namespace vek {

namespace {

constexpr int different = 1;
constexpr int cannotCompare = 2;
constexpr int foundErrors = 1;

struct DiffOptions {
    std::string Before;
    std::string After;
};

void Print(const std::string& text) { WriteOutput(std::string(standardStream), AsBytes(text)); }

bool IsNullDevice(const std::string& path) {
    struct stat status = {};
    struct stat nullDevice = {};
    return ::stat(path.c_str(), &status) == 0 && S_ISCHR(status.st_mode) &&
           ::stat("/dev/null", &nullDevice) == 0 && status.st_rdev == nullDevice.st_rdev;
}

/// Version control gives the null device for the side on which there is no file.
std::optional<StoredConfig> LoadSide(const std::string& path) {
    return IsNullDevice(path) ? std::nullopt : std::optional(LoadStoredInput(path));
}

std::vector<std::string> LinesBetween(const std::optional<StoredConfig>& before,
                                      const std::optional<StoredConfig>& after) {
    if (before && after)
        return Differences(*before, *after);
    std::vector<std::string> lines;
    for (const auto& [side, word] : {std::pair(&before, "gone: "), std::pair(&after, "added: ")}) {
        if (!*side)
            continue;
        for (const std::string& setting : AllSettings(**side))
            lines.push_back(word + setting);
    }
    return lines;
}

bool PrintDifferences(const DiffOptions& options) {
    std::string text;
    for (const std::string& line : LinesBetween(LoadSide(options.Before), LoadSide(options.After)))
        text += line + '\n';
    Print(text);
    return !text.empty();
}

void RunDiff(const DiffOptions& options) {
    const auto fail = [](const char* reason) {
        std::fprintf(stderr, "vekctl: %s\n", reason);
        throw CLI::RuntimeError(cannotCompare);
    };
    bool differ = false;
    try {
        differ = PrintDifferences(options);
    } catch (const FileError& error) {
        fail(error.what());
    } catch (const std::bad_alloc&) {
        fail(notEnoughMemory);
    }
    if (differ)
        throw CLI::RuntimeError(different);
}

std::string FindingLine(const std::string& file, const Finding& finding) {
    std::string line = InputName(file) + ": ";
    line += SeverityName(finding.Level);
    line += ": " + finding.Text + '\n';
    return line;
}

std::vector<Finding> CheckFile(const std::string& file) {
    try {
        return CheckConfig(LoadConfigInput(file));
    } catch (const FileError& error) {
        // The file's name stands in front of the finding already.
        const std::string message = error.what();
        const std::string prefix = InputName(file) + ": ";
        return {{Severity::Error, message.starts_with(prefix) ? message.substr(prefix.size()) : message}};
    }
}

void RunCheck(const std::vector<std::string>& files) {
    bool errors = false;
    for (const std::string& file : files) {
        std::string text;
        for (const Finding& finding : CheckFile(file)) {
            text += FindingLine(file, finding);
            errors = errors || finding.Level == Severity::Error;
        }
        Print(text);
    }
    if (errors)
        throw CLI::RuntimeError(foundErrors);
}

} // namespace

void AddDiffCommand(CLI::App& app) {
    auto options = std::make_shared<DiffOptions>();
    CLI::App* command =
        app.add_subcommand("diff", "Tell what differs between two configurations, a line each");
    command->add_option("A", options->Before, "The one before; - is standard input, /dev/null no file")
        ->required();
    command->add_option("B", options->After, "The one after")->required();
    command->footer(
        "Exit status: 0 when the files are equal, 1 when they differ, 2 when they cannot be compared.");
    command->callback([options] { RunDiff(*options); });
}

void AddCheckCommand(CLI::App& app) {
    auto files = std::make_shared<std::vector<std::string>>();
    CLI::App* command = app.add_subcommand(
        "check", "Report what an installer wants to know before driving to the site, a line each");
    AddFilesOption(*command, *files);
    command->footer(
        "Lines read FILE: error|warning|note: text. Exit status: 1 when there is an error, else 0.");
    command->callback([files] { RunCheck(*files); });
}

} // namespace vek
