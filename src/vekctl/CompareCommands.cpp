// diff and check: what has changed, and what is wrong.
#include "vekctl/Commands.h"

#include "base/Bytes.h"
#include "base/Errors.h"
#include "inspect/ConfigCheck.h"
#include "inspect/ConfigDiff.h"
#include "model/ConfigFile.h"
#include "vekctl/EachFile.h"
#include "vekctl/Output.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <memory>

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

bool PrintDifferences(const DiffOptions& options) {
    std::string text;
    for (const std::string& line :
         Differences(LoadStoredConfig(options.Before), LoadStoredConfig(options.After)))
        text += line + '\n';
    Print(text);
    return !text.empty();
}

void RunDiff(const DiffOptions& options) {
    bool differ = false;
    try {
        differ = PrintDifferences(options);
    } catch (const FileError& error) {
        std::fprintf(stderr, "vekctl: %s\n", error.what());
        throw CLI::RuntimeError(cannotCompare);
    }
    if (differ)
        throw CLI::RuntimeError(different);
}

std::string FindingLine(const std::string& file, const Finding& finding) {
    std::string line = file + ": ";
    line += SeverityName(finding.Level);
    line += ": " + finding.Text + '\n';
    return line;
}

std::vector<Finding> CheckFile(const std::string& file) {
    try {
        return CheckConfig(LoadConfig(file));
    } catch (const FileError& error) {
        // The file's name stands in front of the finding already.
        const std::string message = error.what();
        const std::string prefix = file + ": ";
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
    command->add_option("A", options->Before, "The one before")->required();
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
