// report, csv and vex: the documents that the editor exports.
#include "vekctl/Commands.h"

#include "base/Bytes.h"
#include "console/Input.h"
#include "console/Output.h"
#include "link/DownloadImage.h"
#include "reports/AddressList.h"
#include "reports/DeviceExport.h"
#include "reports/TextReport.h"
#include "vekctl/EachFile.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace vek {

namespace {

struct Section {
    const char* Name;
    bool PrintingOptions::*Option;
};

constexpr Section sections[] = {
    {"veknet", &PrintingOptions::IncludeVekNet},
    {"rs232", &PrintingOptions::IncludeRS232},
    {"outputs", &PrintingOptions::IncludeOutputs},
    {"input-trims", &PrintingOptions::IncludeInputTrims},
    {"output-trims", &PrintingOptions::IncludeOutputTrims},
    {"notes", &PrintingOptions::IncludeNotes},
};

/// What the three commands share; mode and output count from 1.
struct DocumentOptions {
    std::vector<std::string> Files;
    std::string Destination{standardStream};
    std::size_t Mode = 1;
    std::size_t Output = 1;
    std::vector<std::string> Sections;
    bool Unused = false;
};

PrintingOptions ChosenSections(const std::vector<std::string>& names) {
    if (names.empty())
        return allSections;
    PrintingOptions options;
    for (const Section& section : sections)
        options.*section.Option = std::find(names.begin(), names.end(), section.Name) != names.end();
    return options;
}

void AddOutputNumber(CLI::App& command, DocumentOptions& options) {
    command
        .add_option("--output", options.Output,
                    "Current output: the addresses of volume and route are listed as it enables them")
        ->check(CLI::Range(1, static_cast<int>(outputCount)))
        ->capture_default_str();
}

CLI::Option* AddDestination(CLI::App& command, DocumentOptions& options) {
    return command.add_option("-o", options.Destination, "The file to write, - for standard output");
}

void RunReport(const DocumentOptions& options) {
    RequireOneFileFor(options.Destination, options.Files);
    const PrintingOptions chosen = ChosenSections(options.Sections);
    ForEachFile(options.Files, [&](const std::string& file) {
        RefuseOwnInput(options.Destination, file);
        const MatrixConfig config = LoadConfigInput(file);
        const auto selection = SelectionOf(config, options.Mode - 1, options.Output - 1);
        WriteOutput(options.Destination, AsBytes(BuildReport(config, chosen, selection)));
    });
}

void RunCsv(const DocumentOptions& options) {
    RequireOneFileFor(options.Destination, options.Files);
    ForEachFile(options.Files, [&](const std::string& file) {
        RefuseOwnInput(options.Destination, file);
        const AddressListOptions list = {.IncludeUnusedAddresses = options.Unused, .CsvSeparator = true};
        WriteOutput(options.Destination,
                    AsBytes(BuildAddressList(LoadConfigInput(file), options.Output - 1, list)));
    });
}

void RunVex(const DocumentOptions& options) {
    RequireOneFileFor(options.Destination, options.Files);
    ForEachFile(options.Files, [&](const std::string& file) {
        RefuseOwnInput(options.Destination, file);
        const DownloadImage image = EncodeImage(LoadConfigInput(file)).Image;
        WriteOutput(options.Destination,
                    BuildDeviceExport(std::as_bytes(std::span(image.Buffer)), image.Length - 1),
                    ExistingTail::Keep);
    });
}

} // namespace

void AddReportCommand(CLI::App& app) {
    auto options = std::make_shared<DocumentOptions>();
    CLI::App* command =
        app.add_subcommand("report", "Write the text report of each configuration (Windows-1252, CR LF)");
    AddFilesOption(*command, options->Files);
    std::vector<std::string> names;
    for (const Section& section : sections)
        names.emplace_back(section.Name);
    auto* chosen =
        command->add_option("--sections", options->Sections, "Only these sections, separated by commas")
            ->delimiter(',')
            ->allow_extra_args(false)
            ->check(CLI::IsMember(names));
    command->add_flag("--all")->description("All sections (the default)")->excludes(chosen);
    command->add_option("--mode", options->Mode, "Current mode: linked outputs are named as it groups them")
        ->check(CLI::Range(1, static_cast<int>(modeCount)))
        ->capture_default_str();
    AddOutputNumber(*command, *options);
    AddDestination(*command, *options);
    command->callback([options] { RunReport(*options); });
}

void AddCsvCommand(CLI::App& app) {
    auto options = std::make_shared<DocumentOptions>();
    CLI::App* command = app.add_subcommand("csv", "Write the list of VekNet addresses for a spreadsheet");
    AddFilesOption(*command, options->Files);
    command->add_flag("--unused", options->Unused, "List unused addresses too, as bare numbers");
    AddOutputNumber(*command, *options);
    AddDestination(*command, *options);
    command->callback([options] { RunCsv(*options); });
}

void AddVexCommand(CLI::App& app) {
    auto options = std::make_shared<DocumentOptions>();
    CLI::App* command = app.add_subcommand(
        "vex", "Write the device export file; a longer one that exists keeps its bytes beyond it");
    command->add_option("FILE", options->Files, "Configuration file (*.VMC), - for standard input")
        ->required()
        ->expected(1);
    AddDestination(*command, *options)->required();
    command->callback([options] { RunVex(*options); });
}

} // namespace vek
