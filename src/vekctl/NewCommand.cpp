#include "vekctl/Commands.h"

#include "console/Output.h"
#include "model/RecordLayout.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <memory>
#include <system_error>

namespace vek {

namespace {

struct NewOptions {
    std::string Output;
    bool Reset = false;
    bool Force = false;
};

void RunNew(const NewOptions& options) {
    std::error_code error;
    if (!options.Force && !IsStandardOutput(options.Output) &&
        std::filesystem::is_regular_file(options.Output, error))
        throw FileError(options.Output + ": is there already (--force replaces it)");
    MatrixConfig config;
    if (options.Reset)
        config.Modes.fill(DefaultMode());
    WriteOutput(options.Output, EncodeRecord(config), ExistingTail::Keep);
}

} // namespace

void AddNewCommand(CLI::App& app) {
    auto options = std::make_shared<NewOptions>();
    CLI::App* command = app.add_subcommand("new", "Make a new configuration");
    command->add_option("OUT.VMC", options->Output, "The file to write, - for standard output")->required();
    command->add_flag("--reset", options->Reset,
                      "Reset all eight modes to default: every output with all inputs and its own panel");
    command->add_flag("--force", options->Force, "Replace a file that is there already");
    command->callback([options] { RunNew(*options); });
}

} // namespace vek
