// show and from-json: a configuration for a person or a program to read, and back.
#include "vekctl/Commands.h"

#include "base/Bytes.h"
#include "console/Input.h"
#include "console/Output.h"
#include "inspect/ConfigJson.h"
#include "inspect/ConfigSummary.h"
#include "inspect/Json.h"
#include "vekctl/EachFile.h"
#include "vekctl/StoredInput.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace vek {

namespace {

struct ShowOptions {
    std::vector<std::string> Files;
    bool AsJson = false;
};

struct FromJsonOptions {
    std::string Input;
    std::string Destination;
};

void RunShow(const ShowOptions& options) {
    ForEachFile(options.Files, [&](const std::string& file) {
        const StoredConfig stored = LoadStoredInput(file);
        std::string text;
        if (options.AsJson)
            text = ConfigToJson(stored);
        else if (options.Files.size() > 1)
            text = "=== " + InputName(file) + '\n' + SummaryOf(stored) + '\n';
        else
            text = SummaryOf(stored);
        WriteOutput(std::string(standardStream), AsBytes(text));
    });
}

void RunFromJson(const FromJsonOptions& options) {
    RefuseOwnInput(options.Destination, options.Input);
    const auto bytes = ReadInput(options.Input, largestDocument + 1);
    if (bytes.size() > largestDocument)
        throw FileError(InputName(options.Input) + ": longer than 129 MiB");
    StoredConfig stored;
    try {
        stored = ConfigFromJson({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    } catch (const JsonError& error) {
        throw FileError(InputName(options.Input) + ": " + error.what());
    }
    WriteOutput(options.Destination, EncodeStoredConfig(stored));
}

} // namespace

void AddShowCommand(CLI::App& app) {
    auto options = std::make_shared<ShowOptions>();
    CLI::App* command = app.add_subcommand("show", "Show what each configuration holds (UTF-8)");
    AddFilesOption(*command, options->Files);
    command->add_flag("--json", options->AsJson, "As JSON that holds everything, for from-json");
    command->callback([options] { RunShow(*options); });
}

void AddFromJsonCommand(CLI::App& app) {
    auto options = std::make_shared<FromJsonOptions>();
    CLI::App* command =
        app.add_subcommand("from-json", "Make the configuration file that a JSON text describes");
    command->add_option("IN.json", options->Input, "What show --json writes, - for standard input")
        ->required();
    command->add_option("-o", options->Destination, "The file to write, - for standard output")->required();
    command->callback([options] { RunFromJson(*options); });
}

} // namespace vek
