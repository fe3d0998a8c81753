// The job of a download from the command line: a real vekctl on a real serial layer against a simulated
// device.
#include "simulator/PseudoTerminal.h"
#include "support/TestData.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <csignal>
#include <gmock/gmock.h>
#include <list>
#include <thread>
#include <tuple>

using namespace vek;
using namespace vek::test;
using testing::HasSubstr;

namespace {

/// Until it holds, or for ten seconds.
template <typename Condition>
void Await(Condition condition) {
    for (int i = 0; i < 2000 && !condition(); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
}

/// A simulated device as COM1, the only port, and vekctl in a world of its own. Both run in the folder of the
/// samples.
class Console {
  public:
    /// With options of "vekctl simulate".
    explicit Console(const char* simulation) {
        Start(Simulator,
              "simulate --link " + Com1() + " --image-out " + folder.Path("image") + ' ' + simulation,
              folder.Path("log"));
        Await([this] { return std::filesystem::exists(Com1()); });
    }
    Console() = default;
    ~Console() {
        Simulator.kill();
        Simulator.waitForFinished();
    }

    void Start(const std::string& command) { Start(Program, command, folder.Path("out")); }
    void Start(QProcess& process, const std::string& command, const std::string& out) {
        QProcessEnvironment environment;
        environment.insert("VEK_COM1", QString::fromStdString(Com1()));
        for (const char* other : {"VEK_COM2", "VEK_COM3", "VEK_COM4"})
            environment.insert(other, "");
        environment.insert("VEK_STORE", QString::fromStdString(folder.Path("store.json")));
        environment.insert("XDG_STATE_HOME", QString::fromStdString(folder.Path("state")));
        environment.insert("LC_ALL", "C.UTF-8");
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(VEK_TEST_DATA);
        process.setStandardInputFile(QProcess::nullDevice());
        process.setStandardOutputFile(QString::fromStdString(out));
        const std::string name = std::filesystem::path(out).filename().string();
        process.setStandardErrorFile(QString::fromStdString(folder.Path(name + ".err")));
        process.startCommand(QString::fromStdString(VEKCTL " " + command));
    }
    /// The exit status; -1 when it does not end in time or a signal ended it.
    static int Wait(QProcess& process, int patience = 60'000) {
        return process.waitForFinished(patience) && process.exitStatus() == QProcess::NormalExit
                   ? process.exitCode()
                   : -1;
    }
    int Run(const std::string& command) {
        Start(command);
        return Wait(Program);
    }

    std::string Com1() const { return folder.Path("COM1"); }
    std::string Out() const { return ReadText(folder.Path("out")); }
    std::string Err() const { return ReadText(folder.Path("out.err")); }
    std::string Log() const { return ReadText(folder.Path("log")); }
    /// What the device was programmed with; empty when it was not.
    std::string Image() const {
        return std::filesystem::exists(folder.Path("image")) ? ReadText(folder.Path("image")) : "";
    }

    TemporaryFolder folder;
    QProcess Simulator, Program;
};

} // namespace

TEST(Console, ProgramsTheDeviceWithTheImageOfTheFile) {
    Console console("");
    EXPECT_EQ(console.Run("program 03.VMC --port COM1"), 0);
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
    Console console("--fault no-reply@block:1 --fault late-reply:300@block:7 --fault half-reply@block:272 "
                    "--fault wrong-reply@restart");
    PseudoTerminal terminal;
    console.Start(console.Program, "program 03.VMC --port " + console.Com1(), terminal.PortPath());
    EXPECT_EQ(Console::Wait(console.Program), 0);
    std::string screen;
    for (auto bytes = terminal.Read(); !bytes.empty(); bytes = terminal.Read())
        screen.append(bytes.begin(), bytes.end());
    EXPECT_THAT(screen, HasSubstr("\r[####"));
    EXPECT_THAT(screen, HasSubstr("]   100%\n"));
    EXPECT_EQ(console.Image(), ReadText(DataPath("03.image")));
    EXPECT_THAT(console.Log(), HasSubstr("block 272 (repeated) -> F0 0F\n"));
}

TEST(Console, TellsWhyADeviceWasNotProgrammed) {
    const std::tuple<std::string, const char*, const char*> cases[] = {
        {"--fault no-reply@block:0x4", "vekctl: No reply to download (block 0)\n", "block not answered"},
        {"--fault wrong-reply@block:11x4", "vekctl: Reply to download failed (block 11)\n",
         "11 of 273 blocks  3 retries"},
        {"--fault hang-up@block:20", "vekctl: No reply to download (block 20)\n", " 20 of 273 "},
        {"--fault hang-up@search", ": no device answers\n", "no device answered"},
        {"--fault no-reply@search:2x*", "vekctl: Vek not responding\n", "no device answered"},
        {"--reply-code 13", ": not a Matrix Vek but Wall Panel 8 Vek2.5\n", "Wall Panel 8 Vek 2.5"},
        {"--fault wrong-reply@restartx4",
         "vekctl: Reply fail to restart\nvekctl: Program failed, Vekule will fail to operate correctly until "
         "reprogrammmed, Try powering the vek off/wait/on and reprogram again\n",
         "restart failed"},
    };
    // Side by side, because all of them mostly wait.
    std::list<Console> consoles;
    for (const auto& [simulation, error, kept] : cases)
        consoles.emplace_back(simulation.c_str()).Start("program 03.VMC --port COM1");
    for (const auto& [simulation, error, kept] : cases) {
        Console& console = consoles.front();
        EXPECT_EQ(Console::Wait(console.Program), 1) << simulation;
        EXPECT_THAT(console.Err(), HasSubstr(error)) << simulation;
        EXPECT_THAT(console.Out(), testing::Not(HasSubstr("Programmed"))) << simulation;
        const bool restartFailed = simulation.ends_with("restartx4");
        EXPECT_EQ(console.Image().empty(), !restartFailed) << simulation;
        if (simulation.starts_with("--fault hang-up")) {
            EXPECT_EQ(Console::Wait(console.Simulator), 0);
        }
        EXPECT_EQ(console.Run("history"), 0);
        EXPECT_THAT(console.Out(), HasSubstr(kept)) << simulation;
        consoles.pop_front();
    }
}

TEST(Console, RemembersWhatADeviceWasGiven) {
    Console console("");
    EXPECT_EQ(console.Run("history"), 0);
    EXPECT_EQ(console.Err(), "vekctl: no device was programmed yet\n");
    EXPECT_EQ(console.Run("program 03.VMC --port COM1"), 0);
    console.Start("program 02.VMC --port COM1");
    Await([&] {
        return console.Log().find("block 5 ", console.Log().find("programmed")) != std::string::npos;
    });
    console.Program.kill();
    Console::Wait(console.Program);
    EXPECT_EQ(console.Run("history --json"), 0);
    const auto entries = QJsonDocument::fromJson(QByteArray::fromStdString(console.Out())).array();
    ASSERT_EQ(entries.size(), 2);
    EXPECT_EQ(entries[0]["result"], "unfinished");
    EXPECT_EQ(entries[1]["result"], "programmed");
    EXPECT_EQ(entries[1]["file"], VEK_TEST_DATA "/03.VMC");
    const auto digest =
        QCryptographicHash::hash(QByteArray::fromStdString(console.Image()), QCryptographicHash::Sha256);
    EXPECT_EQ(entries[1]["imageSha256"].toString().toLatin1(), digest.toHex());
    const std::string copy = entries[1]["copy"].toString().toStdString();
    EXPECT_EQ(console.Run("image " + copy + " -o -"), 0);
    EXPECT_EQ(console.Out(), console.Image());

    std::filesystem::remove_all(console.folder.Path("state"));
    WriteText(console.folder.Path("state"), "no folder");
    EXPECT_EQ(console.Run("program 03.VMC --port COM1"), 0);
    EXPECT_THAT(console.Err(), testing::StartsWith("vekctl: The programming history could not be written: "));
    EXPECT_NE(console.Run("history"), 0);
    EXPECT_THAT(console.Err(), testing::StartsWith("vekctl: the programming history cannot be read: /"));
}

TEST(Console, FindsDevicesAtEveryRateAndPace) {
    const std::tuple<const char*, std::string, int> cases[] = {
        {"", "Matrix Vek2.5", 0},
        {"--rate 2400 --firmware 12.34", "Matrix Vek12.34", 0},
        {"--rate 28800 --paced --reply-length 4", "Matrix Vek2.5", 0},
        {"--fault late-reply:60@search", "Matrix Vek2.5", 0},
        {"--fault wrong-reply@search", "Matrix Vek2.5", 0}, // in the second pass
        {"--no-wake --reply-code 41", "Paging Station Vek2.5", 1},
    };
    for (const auto& [simulation, found, status] : cases) {
        Console console(simulation);
        EXPECT_EQ(console.Run("find"), status) << console.Err();
        EXPECT_EQ(console.Out(), "COM1 (" + console.Com1() + "): " + found + "\n");
        console.Simulator.terminate();
        EXPECT_EQ(Console::Wait(console.Simulator), 0);
        EXPECT_FALSE(std::filesystem::is_symlink(console.Com1()));
    }
}

TEST(Console, ExaminesPortsAndNamesTheLikeliestCause) {
    const std::tuple<const char*, const char*, int, const char*, const char*> cases[] = {
        {"--rate 38400", "doctor", 0,
         "\n  At 38400 baud: 27 02 05 D1 0D - Matrix Vek 2.5\n  No answer at: 9600 baud\n",
         "): Matrix Vek 2.5: the link is in order\nWhat to do: "},
        {"--fault mute", "doctor --port COM1", 1,
         "\n  Opens: yes\n  Settings: ", "\nLikeliest cause: COM1: Nothing answers\n"},
        {"--fault chatter:150", "doctor", 0, "\n  Comes unasked: 4F 4B 0D 0A", "\nFound: COM1 ("},
        {"", "doctor --port /dev/null", 1, "\n  Device: /dev/null, which is no serial port\n",
         "This is no serial port\n"},
    };
    for (const auto& [simulation, command, status, fact, end] : cases) {
        Console console(simulation);
        EXPECT_EQ(console.Run(command), status);
        EXPECT_THAT(console.Out(), testing::AllOf(HasSubstr(fact), HasSubstr(end)));
        EXPECT_EQ(console.Err(), "");
        EXPECT_THAT(console.Log(), testing::Not(HasSubstr("block")));
    }
}

TEST(Console, CancelsInOrderAndKeepsOthersOut) {
    Console console("");
    console.Start("program 03.VMC --port COM1");
    Await([&] { return console.Log().find("block 5 ") != std::string::npos; });
    for (const char* second : {"program 03.VMC --port COM1", "find --port COM1", "find"}) {
        QProcess other;
        console.Start(other, second, console.folder.Path("second"));
        EXPECT_EQ(Console::Wait(other), 1);
        const std::string error = ReadText(console.folder.Path("second.err"));
        EXPECT_THAT(error, HasSubstr("COM1 (" + console.Com1() + "): another program is using it"));
        EXPECT_EQ(error.starts_with("vekctl: Port not open\n"), second[0] == 'p');
    }
    ::kill(static_cast<pid_t>(console.Program.processId()), SIGINT);
    EXPECT_EQ(Console::Wait(console.Program, 2000), 1);
    EXPECT_THAT(console.Err(), HasSubstr("cancelled"));
    EXPECT_EQ(console.Run("find --port " + console.Com1()), 0) << "the port is free again: " << console.Err();
}

TEST(Console, EndsOnASignalWhereverItIs) {
    const std::tuple<const char*, const char*, const char*, int> cases[] = {
        {"--fault no-reply@search", "find", "search at", SIGINT},
        {"--fault no-reply@restart", "find", "restart", SIGTERM},
        {"--fault no-reply@search", "doctor", "search at", SIGTERM},
        {"", "program 03.VMC --port COM1", "block 9 ", SIGTERM},
    };
    for (const auto& [simulation, command, at, signal] : cases) { // at: in the log of the device
        Console console(simulation);
        console.Start(command);
        Await([&] { return console.Log().find(at) != std::string::npos; });
        ::kill(static_cast<pid_t>(console.Program.processId()), signal);
        EXPECT_EQ(Console::Wait(console.Program, 1000), 1) << command << " at " << at;
        // A device that is being programmed is restarted first.
        const bool programs = std::string_view(command).starts_with("program");
        EXPECT_EQ(console.Err(), (programs ? "vekctl: COM1 (" + console.Com1() +
                                                 ") holds an incomplete configuration: program it again\n"
                                           : std::string()) +
                                     "vekctl: cancelled\n");
        EXPECT_TRUE(!programs || console.Log().find("restart", console.Log().find(at)) != std::string::npos);
        EXPECT_EQ(console.Run("find"), 0) << "the port is free again: " << console.Err();
    }
}

TEST(Console, NeedsNoDeviceToSayWhatIsWrong) {
    const std::tuple<const char*, int, const char*> cases[] = {
        {"program 03.VMC", 2, "--port is required"},
        {"find COM1", 2, "COM1"},
        {"program missing.VMC --port COM1", 1, "vekctl: missing.VMC: No such file or directory\n"},
        {"program 03.VMC --port COM2", 1, "vekctl: COM2: there is no such port\n"},
        {"program 03.VMC --port ttyNOWHERE", 1, "vekctl: /dev/ttyNOWHERE: No such file or directory\n"},
        {"program 03.VMC --port /dev/null", 1, "vekctl: /dev/null: is not a serial port\n"},
        {"find", 1, "): there is no such port\nvekctl: no Matrix Vek was found\n"},
        {"simulate --fault nonsense", 2, "unknown fault \"nonsense\""},
        {"simulate --rate 9601", 2, "--rate"},
        {"simulate --link 03.VMC", 1, "is there already and is not a link"},
    };
    for (const auto& [command, status, error] : cases) {
        Console console;
        EXPECT_EQ(console.Run(command), status) << command;
        EXPECT_THAT(console.Err(), HasSubstr(error));
        EXPECT_EQ(console.Out(), "");
    }
}

TEST(Console, SimulatesOnlyWhereNothingIsLost) {
    const std::tuple<const char*, const char*, std::string> refused[] = {
        {"kept", "new", "COM1: is a link already, but not to a terminal\n"},
        {"/dev/null", "new", "COM1: is a link already, but not to a terminal\n"},
        {"dangling", "nowhere/image", "nowhere/image: No such file or directory\n"},
    };
    const auto simulate = [](const Console& console, const std::string& imageOut) {
        return "simulate --link " + console.Com1() + " --image-out " + console.folder.Path(imageOut);
    };
    for (const auto& [target, imageOut, error] : refused) {
        Console console;
        WriteText(console.folder.Path("kept"), "kept");
        std::filesystem::create_symlink(target, console.Com1());
        EXPECT_EQ(console.Run(simulate(console, imageOut)), 1);
        EXPECT_EQ(console.Err(), "vekctl: " + console.folder.Path(error));
        EXPECT_EQ(std::filesystem::read_symlink(console.Com1()), target);
        EXPECT_EQ(ReadText(console.folder.Path("kept")), "kept");
    }
    const PseudoTerminal terminal;
    for (const std::string& target : {terminal.PortPath(), std::string("dangling")}) {
        Console console;
        WriteText(console.folder.Path("kept"), "kept");
        std::filesystem::create_symlink(target, console.Com1());
        console.Start(console.Simulator, simulate(console, "kept"), console.folder.Path("log"));
        const auto replaced = [&] { return std::filesystem::read_symlink(console.Com1()) != target; };
        Await(replaced);
        EXPECT_TRUE(replaced());
        EXPECT_EQ(ReadText(console.folder.Path("kept")), "kept");
    }
}

TEST(Console, TheEditorTellsItsVersionWithoutADisplay) {
    QProcess editor;
    editor.setProcessEnvironment({});
    for (const char* option : {"--version", "--help"}) {
        editor.startCommand(QString::fromStdString(EDITOR " ") + QString::fromLatin1(option));
        EXPECT_EQ(Console::Wait(editor), 0);
        EXPECT_FALSE(editor.readAllStandardOutput().isEmpty()) << option;
    }
}

TEST(Console, ListsThePorts) {
    Console console;
    EXPECT_EQ(console.Run("ports"), 0);
    EXPECT_EQ(console.Out(), "COM1  " + console.Com1() + "\n");
}
