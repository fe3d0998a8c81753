// The job of a download from the command line: a real vekctl on a real serial layer against a simulated
// device.
#include "simulator/PseudoTerminal.h"
#include "support/ChildProcess.h"
#include "support/TestData.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

namespace vek {

namespace {

using std::chrono::milliseconds;
using test::ChildProcess;
using test::DataPath;
using test::ReadText;
using testing::HasSubstr;
using testing::Not;
using Texts = std::vector<std::string>;

const std::string sample = DataPath("03.VMC");

void WaitForFile(const std::string& path) {
    for (int i = 0; i < 2000 && !std::filesystem::exists(path); ++i)
        std::this_thread::sleep_for(milliseconds(5));
}

/// A simulated device as COM1, the only port, and vekctl in a world of its own.
class Console {
  public:
    /// With options of "vekctl simulate".
    explicit Console(const Texts& simulation) {
        Texts arguments = {VEKCTL, "simulate", "--link", Com1(), "--image-out", folder.Path("image")};
        arguments.insert(arguments.end(), simulation.begin(), simulation.end());
        Simulator =
            std::make_unique<ChildProcess>(arguments, Texts(), folder.Path("log"), folder.Path("log.err"));
        WaitForFile(Com1());
    }
    Console() = default;

    ChildProcess Start(const Texts& arguments, const std::string& out = {}) {
        Texts all = {VEKCTL};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const Texts environment = {"VEK_COM1=" + Com1(),
                                   "VEK_COM2=",
                                   "VEK_COM3=",
                                   "VEK_COM4=",
                                   "VEK_STORE=" + folder.Path("store.json"),
                                   "LC_ALL=C.UTF-8"};
        return {all, environment, out.empty() ? folder.Path("out") : out, folder.Path("err")};
    }
    int Run(const Texts& arguments) { return Start(arguments).Wait(); }

    std::string Com1() const { return folder.Path("COM1"); }
    std::string Out() const { return ReadText(folder.Path("out")); }
    std::string Err() const { return ReadText(folder.Path("err")); }
    std::string Log() const { return ReadText(folder.Path("log")); }
    /// What the device was programmed with; empty when it was not.
    std::string Image() const {
        return std::filesystem::exists(folder.Path("image")) ? ReadText(folder.Path("image")) : "";
    }

    test::TemporaryFolder folder;
    std::unique_ptr<ChildProcess> Simulator;
};

TEST(Console, ProgramsTheDeviceWithTheImageOfTheFile) {
    Console console{Texts()};
    EXPECT_EQ(console.Run({"program", sample, "--port", "COM1"}), 0);
    EXPECT_EQ(console.Image(), ReadText(DataPath("03.image")));
    EXPECT_THAT(console.Out(), HasSubstr("Matrix Vek2.5 on COM1"));
    EXPECT_THAT(console.Out(), HasSubstr("\n100%\nProgrammed and restarted\n"));
    EXPECT_EQ(console.Err(), "");
    EXPECT_THAT(console.Log(),
                testing::MatchesRegex("(/dev/pts/[0-9]+\n"
                                      "(wake pulse\nsearch at 9600 baud -> 27 02 05 D1 0D\n){2}"
                                      "(block .*\n)+"
                                      "restart -> F0 0F\n"
                                      "programmed: 2177 bytes in use\n)"));
}

TEST(Console, ShowsABarOnATerminalAndTriesAgain) {
    Console console({"--fault", "no-reply@block:1", "--fault", "late-reply:300@block:7", "--fault",
                     "half-reply@block:272", "--fault", "wrong-reply@restart"});
    PseudoTerminal terminal;
    ChildProcess program = console.Start({"program", sample, "--port", console.Com1()}, terminal.PortPath());
    EXPECT_EQ(program.Wait(), 0);
    std::string screen;
    for (auto bytes = terminal.Read(); !bytes.empty(); bytes = terminal.Read())
        screen.append(bytes.begin(), bytes.end());
    EXPECT_THAT(screen, HasSubstr("\r[####"));
    EXPECT_THAT(screen, HasSubstr("]   100%\n"));
    EXPECT_EQ(console.Image(), ReadText(DataPath("03.image")));
    EXPECT_THAT(console.Log(), HasSubstr("block 272 (repeated) -> F0 0F\n"));
}

TEST(Console, TellsWhyADeviceWasNotProgrammed) {
    struct Case {
        Texts Simulation;
        std::string Error;
    };
    const Case cases[] = {
        {{"--fault", "no-reply@block:0x4"}, "vekctl: No reply to download (block 0)\n"},
        {{"--fault", "wrong-reply@block:11x4"}, "vekctl: Reply to download failed (block 11)\n"},
        // Where in the flood an attempt looks for its reply depends on the machine, so the block is left
        // open.
        {{"--fault", "flood:1000@block:3"}, "vekctl: Reply to download failed (block "},
        {{"--fault", "hang-up@block:20"}, "vekctl: No reply to download (block 20)\n"},
        {{"--fault", "hang-up@search"}, ": no device answers\n"},
        {{"--fault", "no-reply@searchx*"}, ": no device answers\n"},
        {{"--fault", "no-reply@search:2x*"}, "vekctl: Vek not responding\n"},
        {{"--reply-code", "13"}, ": not a Matrix Vek but Wall Panel 8 Vek2.5\n"},
        {{"--fault", "wrong-reply@restartx4"},
         "vekctl: Reply fail to restart\nvekctl: Program failed, Vekule will fail to operate correctly until "
         "reprogrammmed, Try powering the vek off/wait/on and reprogram again\n"},
    };
    // Side by side, because all of them mostly wait.
    std::vector<std::unique_ptr<Console>> consoles;
    std::vector<ChildProcess> programs;
    for (const Case& failure : cases) {
        consoles.push_back(std::make_unique<Console>(failure.Simulation));
        programs.push_back(consoles.back()->Start({"program", sample, "--port", "COM1"}));
    }
    for (std::size_t i = 0; i < programs.size(); ++i) {
        const std::string name = testing::PrintToString(cases[i].Simulation);
        EXPECT_EQ(programs[i].Wait(), 1) << name;
        EXPECT_THAT(consoles[i]->Err(), HasSubstr(cases[i].Error)) << name;
        EXPECT_THAT(consoles[i]->Out(), Not(HasSubstr("Programmed"))) << name;
        const bool restartFailed = i + 1 == programs.size();
        EXPECT_EQ(consoles[i]->Image().empty(), !restartFailed) << name;
    }
}

TEST(Console, FindsDevicesAtEveryRateAndPace) {
    const struct {
        Texts Simulation;
        std::string Found;
        int Status;
    } cases[] = {
        {{}, "Matrix Vek2.5", 0},
        {{"--rate", "2400", "--firmware", "12.34"}, "Matrix Vek12.34", 0},
        {{"--rate", "28800", "--paced", "--reply-length", "4"}, "Matrix Vek2.5", 0},
        {{"--fault", "late-reply:60@search"}, "Matrix Vek2.5", 0},
        {{"--fault", "wrong-reply@search"}, "Matrix Vek2.5", 0}, // in the second pass
        {{"--no-wake", "--reply-code", "41"}, "Paging Station Vek2.5", 1},
    };
    for (const auto& device : cases) {
        Console console(device.Simulation);
        EXPECT_EQ(console.Run({"find"}), device.Status) << console.Err();
        EXPECT_EQ(console.Out(), "COM1 (" + console.Com1() + "): " + device.Found + "\n");
        console.Simulator->Signal(SIGTERM);
        EXPECT_EQ(console.Simulator->Wait(), 0);
        EXPECT_FALSE(std::filesystem::is_symlink(console.Com1()));
    }
}

TEST(Console, CancelsInOrderAndKeepsOthersOut) {
    Console console{Texts()};
    ChildProcess program = console.Start({"program", sample, "--port", "COM1"});
    for (int i = 0; i < 1000 && console.Log().find("block 5 ") == std::string::npos; ++i)
        std::this_thread::sleep_for(milliseconds(10));
    for (const Texts& second :
         {Texts{"program", sample, "--port", "COM1"}, {"find", "--port", "COM1"}, {"find"}}) {
        EXPECT_EQ(console.Run(second), 1);
        EXPECT_THAT(console.Err(), HasSubstr("COM1 (" + console.Com1() + "): another program is using it"));
        EXPECT_EQ(console.Err().starts_with("vekctl: Port not open\n"), second.front() == "program");
    }
    program.Signal(SIGINT);
    EXPECT_EQ(program.Wait(milliseconds(2000)), 1);
    EXPECT_THAT(console.Err(), HasSubstr("cancelled"));
    EXPECT_EQ(console.Run({"find", "--port", console.Com1()}), 0)
        << "the port is free again: " << console.Err();
}

TEST(Console, NeedsNoDeviceToSayWhatIsWrong) {
    const struct {
        Texts Arguments;
        int Status;
        std::string Error;
    } cases[] = {
        {{"program", sample}, 2, "--port is required"},
        {{"program", "--port", "COM1"}, 2, "FILE.VMC is required"},
        {{"find", "COM1"}, 2, "COM1"},
        {{"program", "missing.VMC", "--port", "COM1"}, 1, "vekctl: missing.VMC: No such file or directory\n"},
        {{"program", sample, "--port", "COM2"}, 1, "vekctl: COM2: there is no such port\n"},
        {{"program", sample, "--port", "ttyNOWHERE"},
         1,
         "vekctl: /dev/ttyNOWHERE: No such file or directory\n"},
        {{"program", sample, "--port", "/dev/null"}, 1, "vekctl: /dev/null: is not a serial port\n"},
        {{"find"}, 1, "): there is no such port\nvekctl: no Matrix Vek was found\n"},
        {{"image", DataPath("manifest.json"), "-o", "-"}, 1, "manifest.json: "},
        {{"simulate", "--fault", "nonsense"}, 2, "no @EVENT in \"nonsense\""},
        {{"simulate", "--rate", "9601"}, 2, "--rate"},
        {{"simulate", "--link", DataPath("03.VMC")}, 1, "is there already and is not a link"},
    };
    for (const auto& wrong : cases) {
        Console console;
        EXPECT_EQ(console.Run(wrong.Arguments), wrong.Status) << testing::PrintToString(wrong.Arguments);
        EXPECT_THAT(console.Err(), HasSubstr(wrong.Error));
        EXPECT_EQ(console.Out(), "");
    }
}

TEST(Console, SimulatesOnlyWhereNothingIsLost) {
    const struct {
        const char* LinkTarget;
        const char* ImageOut;
        std::string Error;
    } refused[] = {
        {"kept", "new", "COM1: is a link already, but not to a terminal\n"},
        {"/dev/null", "new", "COM1: is a link already, but not to a terminal\n"},
        {".", "new", "COM1: is a link already, but not to a terminal\n"},
        {"dangling", "nowhere/image", "nowhere/image: No such file or directory\n"},
        {"dangling", "COM1.d", "COM1.d: is a folder\n"},
    };
    for (const auto& [target, imageOut, error] : refused) {
        Console console;
        test::WriteText(console.folder.Path("kept"), "kept");
        std::filesystem::create_directory(console.folder.Path("COM1.d"));
        std::filesystem::create_symlink(target, console.Com1());
        EXPECT_EQ(
            console.Run({"simulate", "--link", console.Com1(), "--image-out", console.folder.Path(imageOut)}),
            1);
        EXPECT_EQ(console.Err(), "vekctl: " + console.folder.Path(error));
        EXPECT_EQ(std::filesystem::read_symlink(console.Com1()), target);
        EXPECT_EQ(ReadText(console.folder.Path("kept")), "kept");
    }
    const PseudoTerminal terminal;
    for (const std::string& target : {terminal.PortPath(), std::string("dangling")}) {
        Console console;
        test::WriteText(console.folder.Path("kept"), "kept");
        std::filesystem::create_symlink(target, console.Com1());
        ChildProcess simulator =
            console.Start({"simulate", "--link", console.Com1(), "--image-out", console.folder.Path("kept")});
        const auto replaced = [&] { return std::filesystem::read_symlink(console.Com1()) != target; };
        for (int i = 0; i < 2000 && !replaced(); ++i)
            std::this_thread::sleep_for(milliseconds(5));
        EXPECT_TRUE(replaced());
        EXPECT_EQ(ReadText(console.folder.Path("kept")), "kept");
    }
}

TEST(Console, ListsThePorts) {
    Console console;
    EXPECT_EQ(console.Run({"ports"}), 0);
    EXPECT_EQ(console.Out(), "COM1  " + console.Com1() + "\n");
}

TEST(Console, WritesTheImageOfEverySample) {
    for (const std::string& number : test::SampleNumbers()) {
        Console console;
        EXPECT_EQ(console.Run({"image", DataPath(number + ".VMC"), "-o", "-"}), 0);
        EXPECT_EQ(console.Out(), ReadText(DataPath(number + ".image"))) << number;
    }
}

} // namespace

} // namespace vek
