// Hours of use take neither memory nor descriptors. bench/long_run.sh has the hours.
#include "editor/EditorFixture.h"
#include "endurance/Settings.h"
#include "model/ConfigFile.h"
#include "platform/QtOneShotTimer.h"
#include "platform/QtSerialControl.h"

#include <QProcess>

#include <malloc.h>
#include <random>
#include <unistd.h>

using namespace vek;
using namespace vek::test;

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr bool sanitized = true; // keeps freed memory for a while
#else
constexpr bool sanitized = false;
#endif

constexpr long mostGrowth = 1024; // KiB
/// More edits than the history has room for, which is meant to fill up.
constexpr int historyAndMore = 1600;

struct Resources {
    long Resident; ///< KiB
    long Descriptors;
};

Resources Used() {
    ::malloc_trim(0);
    long total = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    const auto descriptors = std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                                           std::filesystem::directory_iterator());
    return {resident * ::sysconf(_SC_PAGESIZE) / 1024, static_cast<long>(descriptors)};
}

/// Short runs tell of descriptors alone: the caches of the window have not come to their size.
void ExpectNoGrowth(const char* what, const Resources& before, bool longRun) {
    const Resources after = Used();
    std::printf("%s: %ld KiB -> %ld KiB, %ld -> %ld descriptors\n", what, before.Resident, after.Resident,
                before.Descriptors, after.Descriptors);
    EXPECT_EQ(after.Descriptors, before.Descriptors);
    if (longRun && !sanitized) {
        EXPECT_LT(after.Resident - before.Resident, mostGrowth);
    }
}

class LongRun : public EditorTest {
  protected:
    std::size_t Below(std::size_t count) { return random() % count; }
    void FillHistory() {
        ShowTab(OutputTrimsTab);
        for (int edit = 0; edit < historyAndMore; ++edit)
            PressKnob(Element("OutputLevelTrim", static_cast<std::size_t>(edit % 8)),
                      edit / 8 % 2 != 0 ? Qt::Key_Up : Qt::Key_Down);
    }
    /// On one of the pages that can be used online, by turns.
    void MoveASlider(int move) {
        constexpr int pages[] = {InputTrimsTab, OutputTrimsTab, LevelsTab};
        const auto turn = static_cast<std::size_t>(move / 20 % 3);
        if (move % 20 == 0)
            ShowTab(pages[turn]);
        const QString sliders[] = {Element("InputLevelTrim", Below(8)), Element("OutputLevelTrim", Below(8)),
                                   u"LevelTrim1"_s};
        const QString slider = Below(5) == 0 ? u"OnlineLevelOffset"_s : sliders[turn];
        constexpr Qt::Key keys[] = {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown};
        PressKnob(slider, keys[Below(4)]);
        if (move % 50 == 0)
            Click(Element("OutPutSelectCheck", Below(8)));
        if (move % 70 == 0)
            Click(Element("RouteOption", Below(8)));
    }

    std::mt19937 random{11};
};

} // namespace

TEST_F(LongRun, OnlineWithMovingSliders) {
    const int minutes = Setting("VEK_LONG_ONLINE", 2);
    const bool isLong = minutes >= 60;
    long packets = 0;
    if (isLong)
        FillHistory();
    GoOnline();
    port.OnOutput = [&](const ByteVector&) {
        ++packets;
        port.Forget();
        port.Reply(7, {240});
    };
    Click(u"ShowDiagnostics"_s);
    const auto slideFor = [&](long length) {
        // A slider each second, and half a second in which nothing happens.
        const long end = port.Now + length * 60'000;
        for (int move = 0; port.Now < end; ++move) {
            port.At(500, [this] { window->Timer1_Tick(); });
            Settle();
            MoveASlider(move);
        }
    };
    slideFor(isLong ? minutes / 8 : 1);
    const Resources before = Used();
    slideFor(minutes);
    ExpectNoGrowth(("online for " + std::to_string(minutes) + " virtual minutes").c_str(), before, isLong);
    std::printf("%ld packets\n", packets);
    EXPECT_TRUE(port.PortOpen());
    EXPECT_GT(packets, minutes * 60L * 8);
}

TEST_F(LongRun, RoundsOfOpenEditSaveUndo) {
    const int rounds = Setting("VEK_LONG_ROUNDS", 20);
    const TemporaryFolder folder;
    const auto round = [&](int number) {
        const std::string path = folder.Path("hall.VMC");
        WriteText(path, ReadText(DataPath(SampleNumbers()[static_cast<std::size_t>(number % 8)] + ".VMC")));
        OpenAnyway(QString::fromStdString(path));
        const MatrixConfig opened = Config;
        ShowTab(number % 8);
        Type(Element("RemotePanelVolumes", Below(8)), QString::number(1 + Below(8)));
        PressKnob(Element("OutputLevelTrim", Below(8)), Qt::Key_Home);
        Find<QPlainTextEdit>(u"Text1"_s)->insertPlainText(QString::number(number));
        Click(Element("Modes", Below(8)));
        Click(Element("VekNetLabel2", Below(8)));
        ExpectSaved(u"hall.VMC"_s);
        Trigger(u"SAVE"_s);
        EXPECT_EQ(LoadConfig(path), Config);
        EXPECT_NE(Config, opened);
        while (Find<QAction>(u"EditUndo"_s)->isEnabled())
            Trigger(u"EditUndo"_s);
        EXPECT_EQ(Config.OutputTrim, opened.OutputTrim);
        EXPECT_EQ(Config.Notes, opened.Notes);
        port.Forget();
    };
    const int warmUp = std::max(8, rounds / 10);
    for (int number = 0; number < warmUp; ++number)
        round(number);
    const Resources before = Used();
    for (int number = 0; number < rounds; ++number)
        round(number);
    ExpectNoGrowth((std::to_string(rounds) + " rounds").c_str(), before, rounds >= 500);
}

TEST_F(LongRun, AtAUsersPaceOnARealLine) {
    const int seconds = Setting("VEK_LONG_WINDOW", 3);
    const bool isLong = seconds >= 60;
    // In a program of its own: it keeps what it heard.
    QProcess device;
    device.start(QStringLiteral(VEKCTL), {u"simulate"_s, u"--paced"_s});
    ASSERT_TRUE(device.waitForReadyRead());
    const std::string path = device.readLine().trimmed().toStdString();
    device.setStandardOutputFile(QProcess::nullDevice());
    services.MakeSerialControl = [&] {
        return std::make_unique<QtSerialControl>([&](int number) { return number == 1 ? path : ""; });
    };
    services.MakeTimer = [] { return std::make_unique<QtOneShotTimer>(); };
    Restart();
    const auto await = [&](auto condition, const char* what) {
        EXPECT_TRUE(QTest::qWaitFor(condition, 10'000)) << what;
    };
    const auto goOnline = [&] {
        ShowTab(OnlineTab);
        Click(u"OnlineSearch"_s);
        auto* found = Find(u"OnlinePort_0"_s);
        await([&] { return found->isEnabled() && found->isVisible(); }, "a device");
        boxes.ExpectMessage(u"Online"_s, u"Matrix Vek is now online."_s, MessageIcon::None);
        Click(u"OnlinePort_0"_s);
        await([&] { return boxes.Done() && !Find<QTabWidget>(u"SSTab1"_s)->isTabEnabled(NotesTab); },
              "online");
    };
    const auto goOffline = [&] {
        Click(u"OnlineCancel"_s);
        await([&] { return Find<QTabWidget>(u"SSTab1"_s)->isTabEnabled(NotesTab); }, "offline");
    };
    const auto useFor = [&](std::chrono::seconds length) {
        const auto end = std::chrono::steady_clock::now() + length;
        while (std::chrono::steady_clock::now() < end) {
            goOnline();
            for (int move = 0; move < 60 && std::chrono::steady_clock::now() < end; ++move) {
                MoveASlider(move);
                QTest::qWait(static_cast<int>(100 + Below(500)));
            }
            goOffline();
        }
    };
    if (isLong)
        FillHistory();
    useFor(std::chrono::seconds(isLong ? seconds / 5 : 1));
    const Resources before = Used();
    useFor(std::chrono::seconds(seconds));
    ExpectNoGrowth((std::to_string(seconds) + " seconds in the window").c_str(), before, isLong);
    device.terminate();
    EXPECT_TRUE(device.waitForFinished());
}
