// history: what devices were given, by this program and by the editor.
#include "vekctl/Commands.h"

#include "base/Bytes.h"
#include "base/Errors.h"
#include "console/Output.h"
#include "userstate/ProgrammingJournal.h"
#include "userstate/UserFolders.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace vek {

namespace {

std::vector<KeptAttempt> ReadHistory() {
    try {
        return ProgrammingJournal(UserStateFolder()).FromNewest();
    } catch (const FileError& error) {
        throw FileError(std::string("the programming history cannot be read: ") + error.what());
    }
}

void RunHistory(bool asJson) {
    const auto attempts = ReadHistory();
    if (attempts.empty())
        std::fputs("vekctl: no device was programmed yet\n", stderr);
    std::string text;
    if (asJson) {
        text = EncodeJournal(attempts);
    } else {
        for (const std::string& line : JournalLines(attempts))
            text += line + '\n';
    }
    WriteOutput(std::string(standardStream), AsBytes(text));
}

} // namespace

void AddHistoryCommand(CLI::App& app) {
    auto asJson = std::make_shared<bool>(false);
    CLI::App* command =
        app.add_subcommand("history", "List the attempts to program a device, the editor's as well");
    command->add_flag("--json", *asJson, "As JSON with everything that is known of them");
    command->callback([asJson] { RunHistory(*asJson); });
}

} // namespace vek
