// diff and check: what has changed, and what is wrong.
#include "vekctl/Commands.h"

#include "base/Bytes.h"
#include "base/Errors.h"
#include "console/CommandLine.h"
#include "console/Input.h"
#include "console/Output.h"
#include "inspect/ConfigCheck.h"
#include "inspect/ConfigDiff.h"
#include "vekctl/EachFile.h"
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

struct CheckOptions {
    std::vector<std::string> Files;
    bool Strict = false;
};

/// Prints findings as they are made, and remembers whether one of them is a failure.
class CheckPrinter {
  public:
    explicit CheckPrinter(bool strict) : mildestFailure_(strict ? Severity::Warning : Severity::Error) {}

    void Print(const std::string& name, const std::vector<Finding>& findings) {
        std::string text;
        for (const Finding& finding : findings) {
            text += name + ": ";
            text += SeverityName(finding.Level);
            text += ": " + finding.Text + '\n';
            failed_ = failed_ || finding.Level <= mildestFailure_;
        }
        vek::Print(text);
    }
    bool Failed() const { return failed_; }

  private:
    Severity mildestFailure_;
    bool failed_ = false;
};

void RunCheck(const CheckOptions& options) {
    CheckPrinter printer(options.Strict);
    std::vector<NamedUnit> units;
    for (const std::string& file : options.Files) {
        const std::string name = InputName(file);
        try {
            const StoredConfig stored = LoadStoredInput(file);
            units.push_back({name, stored.Config.VekNetBase});
            printer.Print(name, CheckConfig(stored));
        } catch (const OutputError&) {
            throw;
        } catch (const FileError& error) {
            // The file's name stands in front of the finding already.
            const std::string message = error.what();
            const std::string prefix = name + ": ";
            printer.Print(name, {{Severity::Error,
                                  message.starts_with(prefix) ? message.substr(prefix.size()) : message}});
        }
    }
    for (const FileFinding& finding : CheckTogether(units))
        printer.Print(finding.Name, {finding.What});
    if (printer.Failed())
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
    auto options = std::make_shared<CheckOptions>();
    CLI::App* command = app.add_subcommand(
        "check", "Report what an installer wants to know before driving to the site, a line each");
    AddFilesOption(*command, options->Files);
    command->add_flag("--strict", options->Strict, "Fail when there is a warning, too");
    command->footer("Lines read FILE: error|warning|note: text. Exit status: 1 when there is an error or, "
                    "with --strict, a warning, else 0.");
    command->callback([options] { RunCheck(*options); });
}

} // namespace vek
