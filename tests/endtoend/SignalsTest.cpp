// What a signal leaves behind: a restarted unit, a closed port, and a copy of what was not saved.
#include "simulator/RunningVek.h"
#include "support/TestData.h"

#include <QProcess>

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <optional>

using namespace vek;
using namespace vek::test;

namespace {

/// What the device understood last.
std::optional<DeviceEventKind> LastRequest(RunningVek& vek) {
    std::optional<DeviceEventKind> last;
    for (const DeviceEvent& event : vek->Events())
        if (event.Kind != DeviceEventKind::Refused)
            last = event.Kind;
    return last;
}

} // namespace

TEST(Signals, RestartTheUnitCloseThePortAndKeepWhatIsNotSaved) {
    const std::string incomplete =
        "vorn-matrix-editor: COM1 (pts) holds an incomplete configuration: program it again\n";
    const std::string playing =
        "vorn-matrix-editor: COM1 (pts) still plays the levels of the online session: switch it off and on\n";
    const struct {
        const char* task;
        int signal;
        const char* fault; ///< of the device
        std::string said;
    } cases[] = {
        {"online", SIGTERM, "", ""},
        {"online", SIGINT, "late-reply:200@online-restart:2x*", ""},
        {"online", SIGHUP, "no-reply@online-restart:2x*", playing},
        {"search", SIGTERM, "no-reply@anyx*", ""},
        {"download", SIGTERM, "", incomplete},
        {"download", SIGINT, "late-reply:100@blockx*", incomplete},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.task) + " " + std::to_string(c.signal) + " " + c.fault);
        const TemporaryFolder state;
        SimulatedVekOptions options;
        if (*c.fault != '\0')
            options.Faults = {ParseFault(c.fault)};
        RunningVek vek(options);
        QProcess editor;
        editor.start(QStringLiteral(SIGNALLED_EDITOR),
                     {QString::fromLatin1(c.task), QString::fromStdString(vek->PortPath()),
                      QString::fromStdString(state.Path())});
        ASSERT_TRUE(editor.waitForReadyRead()) << editor.readAllStandardError().toStdString();
        ASSERT_EQ(editor.readLine(), "working\n");
        const auto start = std::chrono::steady_clock::now();
        ::kill(static_cast<pid_t>(editor.processId()), c.signal);
        EXPECT_TRUE(editor.waitForFinished());
        EXPECT_EQ(editor.exitStatus(), QProcess::CrashExit);
        EXPECT_EQ(editor.exitCode(), c.signal) << "it ends by the signal";
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
        // Qt says things of its own there.
        const std::string said = editor.readAllStandardError().toStdString();
        EXPECT_EQ(said.substr(std::min(said.find("vorn-matrix-editor: "), said.size())), c.said);
        const bool online = std::string_view(c.task) == "online";
        const bool searching = std::string_view(c.task) == "search";
        EXPECT_TRUE(searching ||
                    LastRequest(vek) == (online ? DeviceEventKind::OnlineRestart : DeviceEventKind::Restart));
        const bool kept = std::filesystem::exists(state.Path("recovery")) &&
                          !std::filesystem::is_empty(state.Path("recovery"));
        EXPECT_EQ(kept, online);
    }
}
