#include "vekctl/Commands.h"

#include "model/RecordLayout.h"
#include "vekctl/Output.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace vek {

namespace {

struct NewOptions {
    std::string Output;
    bool Reset = false;
};

void RunNew(const NewOptions& options) {
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
    command->callback([options] { RunNew(*options); });
}

} // namespace vek
