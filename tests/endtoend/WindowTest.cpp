// The real window on a real serial layer against a simulated device, driven by mouse and keys.
#include "endtoend/WindowOnDevice.h"

#include <random>
#include <sys/resource.h>

using namespace vek;
using namespace vek::test;
using namespace Qt::StringLiterals;

namespace {

using std::chrono::milliseconds;

class RealWindow : public testing::Test, public WindowOnDevice {};

/// Of this thread; the simulated device runs in another.
rusage Usage() {
    rusage usage = {};
    ::getrusage(RUSAGE_THREAD, &usage);
    return usage;
}

void ExpectIdle(milliseconds length) {
    QEventLoop events;
    const auto run = [&](milliseconds time) {
        QTimer::singleShot(time, &events, &QEventLoop::quit);
        events.exec();
    };
    run(milliseconds(200)); // what is still to be painted
    const rusage before = Usage();
    run(length);
    const rusage after = Usage();
    const auto used = [&](timeval rusage::*part) {
        return std::chrono::seconds((after.*part).tv_sec - (before.*part).tv_sec) +
               std::chrono::microseconds((after.*part).tv_usec - (before.*part).tv_usec);
    };
    EXPECT_LT(used(&rusage::ru_utime) + used(&rusage::ru_stime), length / 10);
    EXPECT_LT(after.ru_nvcsw - before.ru_nvcsw, length.count() / 10) << "the window wakes up again and again";
}

TEST_F(RealWindow, TellsAPulledAdapterOnceAndRests) {
    Start();
    GoOnline();
    boxes.ExpectMessage(u"Error!"_s, u"No reply to restart"_s);
    vek.reset(); // while nothing is sent
    AwaitOffline();
    AwaitBoxes();
    ExpectIdle(milliseconds(1000));
}

TEST_F(RealWindow, ABurstEndsWithWhatIsShown) {
    Start({.Faults = {ParseFault("late-reply:8@volumex*"), ParseFault("late-reply:8@routex*")}});
    GoOnline();
    ShowTab(OutputTrimsTab);
    std::mt19937 random(5);
    const char* faders[] = {"OutputLevelTrim_3", "OnlineLevelOffset", "OutputLevelTrim_6"};
    constexpr Qt::Key keys[] = {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown};
    constexpr int moves = 50;
    for (int move = 1; move <= moves; ++move) {
        if (move % 9 == 0)
            Find<QAbstractButton>(move % 2 != 0 ? "RouteOption_1" : "RouteOption_0")->click();
        else
            QTest::keyClick(Knob(faders[move % 3]), keys[random() % 4]);
        QTest::qWait(13);
    }
    std::array<int, 8> volumes = {};
    for (std::size_t output = 0; output < volumes.size(); ++output) {
        const std::string fader = "OutputLevelTrim_" + std::to_string(output);
        volumes.at(output) = 210 + static_cast<int>(2 * (Level(fader.c_str()) + Level("OnlineLevelOffset")));
    }
    const std::string shown = Pass('V', volumes);
    Await([&] { return Requests().ends_with(shown); }, "what is shown is heard");
    ExpectIdle(milliseconds(600));
    EXPECT_TRUE(Requests().ends_with(shown)) << "and nothing else afterwards";
    EXPECT_EQ(Requests().substr(Requests().rfind('M'), 5), "M7=1 ");
    EXPECT_LT((*vek)->Events().size(), moves * 8U) << "moves during a pass share the next one";
}

TEST_F(RealWindow, MuteAllIsHeardAtOnce) {
    Start({.Faults = {ParseFault("late-reply:20@volumex*"), ParseFault("late-reply:20@routex*")}});
    GoOnline();
    ShowTab(OutputTrimsTab);
    const auto muted = [this] {
        return Find<QLabel>("OnlineState")->text().endsWith(u"muted · 8 of 8 confirmed"_s);
    };
    // Into the routes, and into the levels that follow them.
    for (const char* underWay : {"M3=1 ", "V3=210 "}) {
        Click("RouteOption_2");
        Await([this] { return Requests().ends_with("V7=210 "); }, "the other input");
        Click("RouteOption_1");
        const std::size_t before = Requests().size();
        Await([&] { return Requests().find(underWay, before) != std::string::npos; }, underWay);
        const std::size_t pressed = Requests().size();
        QElapsedTimer time;
        time.start();
        QTest::keyClick(window.get(), Qt::Key_M, Qt::ControlModifier);
        Await(muted, "the acknowledgement");
        std::printf("muted after %lld ms\n", static_cast<long long>(time.elapsed()));
        // At most the packet under way comes first; how long that takes is up to the machine.
        const std::string after = Requests().substr(pressed);
        EXPECT_LE(after.find("V0=18 "), std::string("V3=210 ").size()) << after;
        EXPECT_NE(after.find(Pass('V', 18)), std::string::npos) << after;
        for (std::size_t output = 0; output < 8; ++output)
            Click(("OutPutSelectCheck_" + std::to_string(output)).c_str());
    }
}

} // namespace
