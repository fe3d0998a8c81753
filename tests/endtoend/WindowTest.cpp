// The real window on a real serial layer against a simulated device, driven by mouse and keys.
#include "controls/LevelTrim.h"
#include "device/VekComms.h"
#include "editor/CorvaneForm.h"
#include "link/DownloadImage.h"
#include "model/ConfigFile.h"
#include "model/ProgramState.h"
#include "model/RecordLayout.h"
#include "pages/EditorPages.h"
#include "platform/QtOneShotTimer.h"
#include "platform/QtSerialControl.h"
#include "simulator/RunningVek.h"
#include "support/MemoryStore.h"
#include "support/OnlinePackets.h"
#include "support/ScriptedDialogs.h"
#include "support/TestData.h"
#include "support/Windows.h"

#include <gmock/gmock.h>

#include <optional>
#include <random>
#include <sys/resource.h>

using namespace vek;
using namespace vek::test;
using namespace Qt::StringLiterals;

namespace {

using std::chrono::milliseconds;

constexpr int patience = 10'000; // milliseconds

class WindowOnDevice : public testing::Test {
  protected:
    void Start(const SimulatedVekOptions& options = {}) {
        vek.emplace(options);
        window = std::make_unique<CorvaneForm>(services, std::string());
        window->FinishStart();
        // All tabs can be clicked, on a screen of any size.
        window->resize(1040, 700);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }

    template <typename Widget = QWidget>
    Widget* Find(const char* name) {
        return window->findChild<Widget*>(QString::fromLatin1(name));
    }
    /// Where a point of a widget is in its window.
    static QPoint InWindow(QWidget* widget, const QPoint& point) {
        return widget->mapTo(widget->window(), point);
    }
    static void ClickOn(QWidget* widget, const QPoint& point) {
        QTest::mouseClick(widget->window()->windowHandle(), Qt::LeftButton, {}, InWindow(widget, point));
    }
    /// On the mark of a radio button or check box, on the left of a push button.
    static void Click(QWidget* button) { ClickOn(button, {8, button->height() / 2}); }
    void Click(const char* name) { Click(Find(name)); }
    void ShowTab(int tab) {
        auto* bar = Find<QTabWidget>("SSTab1")->tabBar();
        ClickOn(bar, bar->tabRect(tab).center());
    }
    QWidget* Knob(const char* fader) { return Find(fader)->findChild<QWidget*>(u"Command1"_s); }
    float Level(const char* fader) { return Find<LevelTrim>(fader)->Level(); }
    void Drag(const char* fader, int down) { DragBy(*Knob(fader), {0, down}); }

    template <typename Condition>
    static void Await(Condition condition, const char* what) {
        EXPECT_TRUE(QTest::qWaitFor(condition, patience)) << what;
    }
    void AwaitBoxes() {
        Await([this] { return boxes.Done() && !boxes.AnyOpen(); }, "boxes");
    }
    void AwaitOffline() {
        Await([this] { return !IsOnline(); }, "offline");
    }
    /// What the device was asked and took.
    std::string Requests() {
        std::string requests;
        for (const DeviceEvent& event : (*vek)->Events())
            requests += event.Kind == DeviceEventKind::Refused ? event.Text : PacketText(event.Request);
        return requests;
    }
    void AwaitRequests(const std::string& requests) {
        Await([&] { return Requests() == requests; }, "requests");
        EXPECT_EQ(Requests(), requests);
    }

    void GoOnline() {
        ShowTab(OnlineTab);
        Click("OnlineSearch");
        Await([this] { return Find("OnlinePort_0")->isVisible() && Find("OnlinePort_0")->isEnabled(); },
              "a Matrix Vek");
        EXPECT_EQ(Find<QLineEdit>("VekType_0")->text(), u"Matrix Vek2.5"_s);
        boxes.ExpectMessage(u"Online"_s, u"Matrix Vek is now online."_s, MessageIcon::None);
        Click("OnlinePort_0");
        AwaitBoxes();
        ASSERT_TRUE(IsOnline());
    }
    bool IsOnline() { return !Find("OnlineCancel")->isHidden(); }

    ScriptedDialogs boxes;
    MemoryStore store;
    std::optional<RunningVek> vek;
    const QtSerialControl::DeviceLookup device = [this](int number) {
        return number == 1 && vek ? (*vek)->PortPath() : std::string();
    };
    EditorServices services{boxes, store, [this] { return std::make_unique<QtSerialControl>(device); },
                            [] { return std::make_unique<QtOneShotTimer>(); },
                            [] { return QStringList{u"pts"_s}; }};
    std::unique_ptr<CorvaneForm> window;
};

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

TEST_F(WindowOnDevice, HearsExactlyWhatTheUserDoes) {
    Start();
    GoOnline();
    std::string expected = "D R D ";
    const auto served = [&](const std::string& requests) { AwaitRequests(expected += requests); };
    const std::string exceptFive = Pass('V', {210, 210, 210, 210, 210, 18, 210, 210});
    ShowTab(InputTrimsTab); // the levels once more after the routes
    served(Pass('M', 0) + Pass('V', 210) + Pass('V', 210));
    Drag("InputLevelTrim_0", 1000);
    EXPECT_EQ(Level("InputLevelTrim_0"), -18.0F);
    served(Pass('V', 210 - 2 * 18));
    ShowTab(OutputTrimsTab);
    served(Pass('V', 210 - 2 * 18) + Pass('V', 210 - 2 * 18));
    Click("RouteOption_4");
    served(Pass('M', 4) + Pass('V', 210));
    Click("OutPutSelectCheck_5");
    served(exceptFive);
    ShowTab(OnlineTab);
    served(exceptFive);
    Click("OnlineCancel");
    served("R ");
    AwaitOffline();
}

TEST_F(WindowOnDevice, ProgramsWhatWasEditedAndSaved) {
    const TemporaryFolder folder;
    const QString example = QString::fromStdString(DataPath("../../examples/theatre-cafe.VMC"));
    const QString saved = QString::fromStdString(folder.Path("mine.VMC"));
    MatrixConfig expected = LoadConfig(example.toStdString());
    Start();
    boxes.ExpectOpenFile(QString(), example);
    Find<QAction>("OPEN")->trigger();

    ShowTab(LevelsTab);
    Click("Modes_1");
    Click("UsePanel_2");
    Drag("LevelTrim1", -1000);
    Click("UseSliderToSet_0");
    expected.Modes[1].OutputLevels[2].MaximumLevel = 10.0F;

    boxes.ExpectSaveFile(example, saved);
    boxes.ExpectMessage(u"File Saved."_s, u"Configuration saved to mine.VMC"_s, MessageIcon::None);
    Find<QAction>("SAVEAS")->trigger();
    const MatrixConfig written = LoadConfig(saved.toStdString());
    EXPECT_TRUE(EncodeRecord(written) == EncodeRecord(expected));

    // The programming window is modal: the user acts in its event loop.
    QTimer::singleShot(0, window.get(), [&] {
        auto* form = qobject_cast<VekComms*>(QApplication::activeModalWidget());
        ASSERT_NE(form, nullptr);
        auto* search = form->findChild<QWidget*>(u"Command1"_s);
        auto* found = form->findChild<QLineEdit*>(u"VekType_0"_s);
        Await([&] { return search->isEnabled() && found->text() == u"Matrix Vek2.5"_s; }, "a Matrix Vek");
        boxes.ExpectYesNo(u"All sent ok"_s, u"Program another vek"_s, Answer::No, Answer::No);
        Click(form->findChild<QWidget*>(u"Option1_0"_s));
        Click(form->findChild<QWidget*>(u"ProgramVek"_s));
    });
    Find<QAction>("DOWNLOAD")->trigger();
    const auto image = (*vek)->Image();
    ASSERT_TRUE(image);
    Find<QAction>("ShowChanges")->trigger();
    auto* base = Find<QComboBox>("ComparedWith");
    base->setCurrentIndex(0);
    QTest::keyClick(base, Qt::Key_End);
    EXPECT_EQ(base->currentText(), u"What was programmed last"_s);
    ShowTab(OutputTrimsTab);
    QTest::keyClick(Knob("OutputLevelTrim_1"), Qt::Key_Down);
    const auto* changes = Find("ChangesPanel")->findChild<QListWidget*>(u"Entries"_s);
    Await([&] { return changes->item(0)->text() == u"Output trim 2 Terrace 0dB -> -1dB"_s; }, "the change");
    const DownloadImage encoded = EncodeImage(written).Image;
    EXPECT_TRUE(std::equal(image->begin(), image->end(), encoded.Buffer.begin()));
    EXPECT_EQ(encoded.Length, static_cast<int>(image->size()));
}

TEST_F(WindowOnDevice, TellsAPulledAdapterOnceAndRests) {
    Start();
    GoOnline();
    boxes.ExpectMessage(u"Error!"_s, u"No reply to restart"_s);
    vek.reset(); // while nothing is sent
    AwaitOffline();
    AwaitBoxes();
    ExpectIdle(milliseconds(1000));
}

TEST_F(WindowOnDevice, ABurstEndsWithWhatIsShown) {
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

TEST_F(WindowOnDevice, MuteAllIsHeardAtOnce) {
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

TEST_F(WindowOnDevice, OpensTheFileOfTheCommandLine) {
    Start();
    const std::string path = DataPath("02.VMC");
    const CorvaneForm named(services, path);
    Await([&] { return Config == LoadConfig(path); }, "the file");
}

} // namespace
