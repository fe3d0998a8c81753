#include "vekctl/Commands.h"

#include "console/ImageOfFile.h"
#include "console/Output.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <span>

namespace vek {

void AddImageCommand(CLI::App& app) {
    struct Options {
        std::string File;
        std::string Output;
    };
    auto options = std::make_shared<Options>();
    CLI::App* command =
        app.add_subcommand("image", "Write the image that a download of a configuration sends");
    command->add_option("FILE.VMC", options->File, "The configuration, - for standard input")->required();
    command->add_option("-o", options->Output, "The file to write, - for standard output")->required();
    command->callback([options] {
        RefuseOwnInput(options->Output, options->File);
        const DownloadImage image = ImageOfFile(options->File).Image;
        WriteOutput(options->Output, std::as_bytes(std::span(image.Buffer).first(imageLength)));
    });
}

} // namespace vek
