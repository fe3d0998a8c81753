// The commands that read and write files, run as a user runs them.
#include "base/Bytes.h"
#include "console/CommandLine.h"
#include "console/Output.h"
#include "inspect/ConfigJson.h"
#include "model/ConfigFile.h"
#include "reports/GoldenCases.h"
#include "support/FailingDisk.h"
#include "support/RunVekctl.h"

#include <CLI/CLI.hpp>
#include <gmock/gmock.h>

#include <algorithm>
#include <new>

using namespace vek::test;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

/// The samples are at hand as 01.VMC and so on.
class FileCommands : public testing::Test {
  protected:
    FileCommands() {
        for (const std::string& number : SampleNumbers())
            std::filesystem::copy_file(DataPath(number + ".VMC"), folder.Path(number + ".VMC"));
        WriteText(folder.Path("short.VMC"), "short");
    }
    RunResult Run(const std::string& arguments, const std::string& before = {}) const {
        return RunVekctl(folder, arguments, before);
    }

    TemporaryFolder folder;
};

} // namespace

TEST_F(FileCommands, EveryFailureOfTheDiskLeavesTheOldFileOrTheNewOne) {
    const std::string json = vek::ConfigToJson({vek::LoadConfig(DataPath("02.VMC")), {}});
    const std::string path = folder.Path("02.json");
    const std::size_t entries = folder.EntryCount() + 1;
    std::string told;
    ForEveryFailure(
        [&] {
            WriteText(path, "old");
            told.clear();
            try {
                vek::WriteOutput(path, vek::AsBytes(json));
            } catch (const vek::FileError& error) {
                told = error.what();
            }
        },
        [&] {
            EXPECT_EQ(ReadText(path), told.empty() ? json : "old");
            EXPECT_TRUE(told.empty() || told.starts_with(path + ": ")) << told;
            EXPECT_EQ(folder.EntryCount(), entries) << "nothing is left over";
        });
}

TEST_F(FileCommands, DocumentsAreByteForByteTheSamples) {
    for (const GoldenCase& golden : GoldenCases()) {
        const std::string file = golden.Number + ".VMC";
        const std::string output = " --output " + std::to_string(golden.Output + 1);
        const std::string mode = " --mode " + std::to_string(golden.Mode + 1);
        EXPECT_EQ(Run("report " + file + mode + output).Out, golden.Expected(".txt"));
        EXPECT_EQ(Run("csv " + file + output).Out, golden.Expected(".csv"));
        EXPECT_EQ(Run("csv --unused " + file + output + " -o a.csv").Out, "");
        EXPECT_EQ(ReadText(folder.Path("a.csv")), golden.Expected(".unused.csv"));

        EXPECT_EQ(Run("vex " + file + " -o a.vex").Status, 0);
        EXPECT_EQ(ReadText(folder.Path("a.vex")).substr(268, 2177), golden.Expected(".image"));
    }
}

TEST_F(FileCommands, JsonMakesTheIdenticalFileAgain) {
    WriteText(folder.Path("07.VMC"), ReadText(folder.Path("07.VMC")) + std::string("tail\0", 5));
    EXPECT_EQ(Run("show --json 07.VMC > a.json").Status, 0);
    EXPECT_EQ(Run("from-json a.json -o a.VMC").Status, 0);
    EXPECT_EQ(ReadText(folder.Path("a.VMC")), ReadText(folder.Path("07.VMC")));
    WriteText(folder.Path("a.VMC"), std::string(7000, 'x'));
    EXPECT_EQ(Run("from-json - -o a.VMC < a.json").Status, 0);
    EXPECT_EQ(ReadText(folder.Path("a.VMC")), ReadText(folder.Path("07.VMC")));
}

TEST_F(FileCommands, SeveralFilesAreDoneOneAfterTheOther) {
    const auto report = Run("report --sections input-trims,notes 02.VMC nowhere.VMC 03.VMC");
    EXPECT_EQ(report.Status, 1);
    EXPECT_EQ(report.Out, Run("report 02.VMC --sections input-trims,notes").Out +
                              Run("report 03.VMC --sections notes,input-trims").Out);
    EXPECT_THAT(report.Out, StartsWith("\r\n\r\nInput trims        \r\n"));
    EXPECT_EQ(report.Err, "vekctl: nowhere.VMC: No such file or directory\n");
    const auto show = Run("show 01.VMC 02.VMC");
    EXPECT_THAT(show.Out, StartsWith("=== 01.VMC\nVekNet base address: 512\n"));
    EXPECT_THAT(show.Out, HasSubstr("\n=== 02.VMC\nVekNet base address: 512\n"));
}

TEST_F(FileCommands, DiffAndCheckTellByTheirStatus) {
    EXPECT_EQ(Run("diff 02.VMC 02.VMC").Status, 0);
    const auto different = Run("diff 01.VMC 02.VMC");
    EXPECT_EQ(different.Status, 1);
    EXPECT_THAT(different.Out, StartsWith("Mode 1, Output 1: Input sequence none -> OFF,1,2,3,4,5,6,7,8\n"));
    EXPECT_EQ(Run("diff 01.VMC short.VMC").Status, 2);

    EXPECT_EQ(Run("check 01.VMC 02.VMC").Status, 0);
    const auto strict = Run("check --strict 02.VMC 02.VMC");
    EXPECT_EQ(strict.Status, 1);
    EXPECT_EQ(strict.Out,
              "02.VMC: warning: VekNet addresses 512 to 767 overlap those of 02.VMC (512 to 767)\n");
    EXPECT_EQ(Run("check --strict 02.VMC").Status, 0);
    const auto broken = Run("check 02.VMC short.VMC 03.VMC");
    EXPECT_EQ(broken.Status, 1);
    EXPECT_THAT(broken.Out, StartsWith("short.VMC: error: shorter than a configuration: 5 of 6238 bytes\n"));
    EXPECT_THAT(broken.Out,
                HasSubstr("\n03.VMC: error: Mode 1: Volume remote panel E is given to outputs 4, 7;"));
    EXPECT_EQ(broken.Err, "");
}

TEST_F(FileCommands, PipesAndStandardInputAreReadLikeFiles) {
    WriteText(folder.Path("a.VMC"), ReadText(folder.Path("03.VMC")) + "tail");
    for (const char* command : {"show", "show --json", "report", "csv", "vex -o -", "image -o -"}) {
        const std::string fromFile = Run(command + std::string(" a.VMC")).Out;
        EXPECT_EQ(Run(command + std::string(" - < a.VMC")).Out, fromFile) << command;
        EXPECT_EQ(Run(command + std::string(" fifo & cat a.VMC > fifo; wait; rm fifo"), "mkfifo fifo; ").Out,
                  fromFile)
            << command;
    }
    EXPECT_THAT(Run("check - < 03.VMC").Out,
                HasSubstr("standard input: error: Mode 2: Volume remote panel 7 "));
    EXPECT_EQ(Run("diff /dev/stdin 02.VMC", "cat 02.VMC | ").Status, 0);
    EXPECT_EQ(Run("diff 02.VMC - < 03.VMC").Out, Run("diff 02.VMC 03.VMC").Out);
}

TEST_F(FileCommands, AFileOnOneSideOnlyIsListed) {
    const auto added = Run("diff /dev/null 02.VMC");
    EXPECT_EQ(added.Status, 1);
    EXPECT_THAT(added.Out,
                StartsWith("added: VekNet base address 512\nadded: Mode 1, Output 1: Input sequence "));
    const auto gone = Run("diff 02.VMC /dev/null");
    EXPECT_EQ(gone.Status, 1);
    EXPECT_THAT(gone.Out, StartsWith("gone: VekNet base address 512\n"));
    EXPECT_EQ(std::count(gone.Out.begin(), gone.Out.end(), '\n'),
              std::count(added.Out.begin(), added.Out.end(), '\n'));
    EXPECT_EQ(Run("diff /dev/null /dev/null").Status, 0);
}

TEST_F(FileCommands, NoFileIsDestroyed) {
    const std::string before = ReadText(folder.Path("03.VMC"));
    const std::pair<const char*, const char*> cases[] = {
        {"report 03.VMC -o 03.VMC", "03.VMC: is the file that is read"},
        {"csv ./03.VMC -o link.VMC", "link.VMC: is the file that is read"},
        {"vex 03.VMC -o hard.VMC", "hard.VMC: is the file that is read"},
        {"image - -o 03.VMC < 03.VMC", "03.VMC: is the file that is read"},
        {"from-json 03.VMC -o link.VMC", "link.VMC: is the file that is read"},
        {"report 03.VMC >> 03.VMC", "standard output: is the file that is read"},
        {"new link.VMC", "link.VMC: is there already (--force replaces it)"},
    };
    std::filesystem::create_symlink("03.VMC", folder.Path("link.VMC"));
    std::filesystem::create_hard_link(folder.Path("03.VMC"), folder.Path("hard.VMC"));
    for (const auto& [arguments, reason] : cases) {
        const auto result = Run(arguments);
        EXPECT_EQ(result.Status, 1) << arguments;
        EXPECT_EQ(result.Err, std::string("vekctl: ") + reason + '\n');
        EXPECT_EQ(ReadText(folder.Path("03.VMC")), before) << arguments;
    }
    EXPECT_EQ(Run("new --force link.VMC").Status, 0);
    EXPECT_EQ(ReadText(folder.Path("03.VMC")), Run("new -").Out);
    EXPECT_EQ(Run("new fresh.VMC").Status, 0);
}

TEST_F(FileCommands, StandardOutputHasADeviceFile) {
    EXPECT_EQ(Run("report 02.VMC 03.VMC -o /dev/stdout | cat").Out, Run("report 02.VMC 03.VMC").Out);
    EXPECT_EQ(Run("image 02.VMC -o /dev/stdout | cat").Out, Run("image 02.VMC -o -").Out);
}

TEST_F(FileCommands, FailuresSayWhyAndEndWithTheirStatus) {
    WriteText(folder.Path("bad.json"), "{\"vekNetBase\": 1e3}");
    WriteText(folder.Path("long.VMC"), ReadText(folder.Path("02.VMC")));
    std::filesystem::resize_file(folder.Path("long.VMC"), (std::size_t{64} << 20) + 1);
    const std::tuple<const char*, int, const char*> cases[] = {
        {"show short.VMC", 1, "vekctl: short.VMC: shorter than a configuration"},
        {"report . ", 1, "vekctl: .: is a folder"},
        {"csv 01.VMC -o nowhere/a.csv", 1, "vekctl: nowhere/a.csv: No such file or directory"},
        {"from-json bad.json -o a.VMC", 1, "vekctl: bad.json: /vekNetBase: must be a whole number"},
        {"from-json - -o a.VMC < bad.json", 1, "vekctl: standard input: /vekNetBase: must be a whole number"},
        {"from-json - -o a.VMC < /dev/zero", 1, "vekctl: standard input: longer than 129 MiB"},
        {"report 02.VMC > /dev/full", 1, "vekctl: standard output: No space left on device"},
        {"report 02.VMC --sections input-trims > /dev/full", 1, "vekctl: standard output: "},
        {"show --json long.VMC", 1, "vekctl: long.VMC: longer than 64 MiB"},
        {"show - < long.VMC", 1, "vekctl: standard input: longer than 64 MiB"},
        {"show /dev/null", 1, "vekctl: /dev/null: is not a regular file"},
        {"show - < short.VMC", 1, "vekctl: standard input: shorter than a configuration: 5 of 6238 bytes"},
        {"image - -o - <&-", 1, "vekctl: standard input: Bad file descriptor"},
        {"check 03.VMC > /dev/full", 1, "vekctl: standard output: "},
        {"diff 02.VMC 03.VMC > /dev/full", 2, "vekctl: standard output: "},
        {"--help > /dev/full", 1, "vekctl: standard output cannot be written"},
        {"report 02.VMC >&-", 1, "vekctl: standard output: "},
        {"report", 2, "FILE is required"},
        {"report 01.VMC 02.VMC -o a.txt", 2, "-o: takes one FILE, not 2"},
        {"report 01.VMC --mode 9", 2, "--mode: Value 9 not in range 1 to 8"},
        {"report 01.VMC --output 0", 2, "--output: Value 0 not in range 1 to 8"},
        {"report 01.VMC --sections notes,lyrics", 2, "--sections: lyrics not in "},
        {"report 01.VMC --sections notes --all", 2, "--"},
        {"vex 01.VMC", 2, "-o is required"},
        {"diff 01.VMC", 2, "B is required"},
        {"image 01.VMC --output a", 2, "-o is required"},
        {"from-json bad.json", 2, "-o is required"},
    };
    for (const auto& [arguments, status, error] : cases) {
        const auto result = Run(arguments);
        EXPECT_EQ(result.Status, status) << arguments;
        EXPECT_THAT(result.Err, StartsWith(error)) << arguments;
        EXPECT_EQ(result.Out, "") << arguments;
    }
    EXPECT_FALSE(std::filesystem::exists(folder.Path("a.VMC")));
    EXPECT_EQ(Run("show --json 02.VMC 03.VMC > /dev/full").Err,
              "vekctl: standard output: No space left on device\n")
        << "told once, not for every file";
}

TEST_F(FileCommands, ReaderThatWentAwayIsASilentFailure) {
    // The reader is gone before the first byte: the command starts when its end of the FIFO says so.
    const auto result =
        Run("--version > /dev/null; mkfifo gone; sh -c ': < gone' & exec 3> gone; wait; " VEKCTL
            " report 02.VMC >&3");
    EXPECT_EQ(result.Status, 1);
    EXPECT_EQ(result.Err, "");
}

TEST(CommandLine, MemoryThatIsUsedUpIsAFailureInWords) {
    CLI::App app;
    app.add_subcommand("large")->callback([] { throw std::bad_alloc(); });
    std::string program = "vekctl";
    std::string command = "large";
    char* arguments[] = {program.data(), command.data(), nullptr};
    testing::internal::CaptureStderr();
    EXPECT_EQ(vek::RunCommandLine(app, 2, arguments), 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "vekctl: there is not enough memory\n");
}
