// The real window on a real serial layer against a simulated device, driven by mouse and keys.
#include "controls/LevelTrim.h"
#include "editor/CorvaneForm.h"
#include "editor/VekComms.h"
#include "link/DownloadImage.h"
#include "model/ConfigFile.h"
#include "model/ProgramState.h"
#include "model/RecordLayout.h"
#include "pages/EditorPages.h"
#include "platform/QtOneShotTimer.h"
#include "platform/QtSerialControl.h"
#include "simulator/RunningVek.h"
#include "support/MemoryStore.h"
#include "support/ScriptedDialogs.h"
#include "support/TestData.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QEventLoop>
#include <QLineEdit>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <gmock/gmock.h>

#include <map>
#include <optional>
#include <random>
#include <sys/resource.h>

using namespace vek;
using namespace vek::test;
using namespace Qt::StringLiterals;

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;
using Lines = std::vector<std::string>;

constexpr int patience = 10'000; // milliseconds

class WindowOnDevice : public testing::Test {
  protected:
    void Start(const std::vector<std::string>& faults = {}) {
        SimulatedVekOptions options;
        for (const std::string& fault : faults)
            options.Faults.push_back(ParseFault(fault));
        vek.emplace(std::move(options));
        services.emplace(EditorServices{.Boxes = boxes,
                                        .Store = store,
                                        .MakeSerialControl =
                                            [this] {
                                                return std::make_unique<QtSerialControl>(
                                                    [this](int number) { return Device(number); });
                                            },
                                        .MakeTimer = [] { return std::make_unique<QtOneShotTimer>(); },
                                        .PortNames = [] { return QStringList{u"pts"_s}; }});
        window = std::make_unique<CorvaneForm>(*services, std::string());
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }
    std::string Device(int number) { return number == 1 && vek ? (*vek)->PortPath() : std::string(); }

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
    /// Drags a knob so many pixels down, at most to the window's edge, and lets it go.
    void Drag(const char* fader, int down) {
        QWidget* knob = Knob(fader);
        QWindow* handle = window->windowHandle();
        const QPoint grip = InWindow(knob, knob->rect().center());
        const QPoint goal(grip.x(), std::clamp(grip.y() + down, 0, window->height() - 1));
        QTest::mousePress(handle, Qt::LeftButton, {}, grip);
        QTest::mouseMove(handle, (grip + goal) / 2);
        QTest::mouseMove(handle, goal);
        QTest::mouseRelease(handle, Qt::LeftButton, {}, goal);
    }
    void Type(const char* box, const char* text) {
        auto* edit = Find(box)->findChild<QLineEdit*>(u"Text1"_s);
        ClickOn(edit, edit->rect().center());
        QTest::keySequence(edit, QKeySequence::SelectAll);
        QTest::keyClicks(edit, QString::fromLatin1(text));
        QTest::keyClick(edit, Qt::Key_Return);
    }

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
    /// Until the device has been asked so often.
    void AwaitRequests(std::size_t count) {
        Await([&] { return (*vek)->Events().size() >= count; }, "requests");
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
    bool IsOnline() {
        return Find<QAbstractButton>("OnlineCancel")->isVisibleTo(Find("OnlineCancel")->parentWidget());
    }
    void ExpectError(const char* text) { boxes.ExpectMessage(u"Error!"_s, QString::fromLatin1(text)); }

    ScriptedDialogs boxes;
    MemoryStore store;
    std::optional<RunningVek> vek;
    std::optional<EditorServices> services;
    std::unique_ptr<CorvaneForm> window;
};

std::string Hex(const std::vector<std::uint8_t>& bytes) {
    std::string text;
    char two[4];
    for (const unsigned byte : bytes) {
        std::snprintf(two, sizeof two, "%02X", byte);
        text += two;
    }
    return text;
}

/// What the device was asked, byte for byte.
Lines Requests(const std::vector<DeviceEvent>& events) {
    Lines lines;
    for (const DeviceEvent& event : events)
        lines.push_back(Hex(event.Request));
    return lines;
}

const std::string find = "446952654374";
const std::string restart = "52FFFFAF";

/// A packet of a letter, an output and a value.
std::string Packet(char letter, int output, int value) {
    const int sum = letter + output + value;
    return Hex({static_cast<std::uint8_t>(letter), static_cast<std::uint8_t>(output),
                static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(255 - sum % 256)});
}

void AddEight(Lines& lines, char letter, const std::function<int(int output)>& valueOf) {
    for (int output = 0; output < 8; ++output)
        lines.push_back(Packet(letter, output, valueOf(output)));
}

auto Always(int value) {
    return [value](int) { return value; };
}

/// Of this thread; the simulated device runs in another.
struct Usage {
    milliseconds Processor;
    long Sleeps;
};

Usage UsageNow() {
    rusage usage = {};
    ::getrusage(RUSAGE_THREAD, &usage);
    return {milliseconds((usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1000 +
                         (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1000),
            usage.ru_nvcsw};
}

void ExpectIdle(milliseconds length) {
    QEventLoop events;
    const auto run = [&](milliseconds time) {
        QTimer::singleShot(time, &events, &QEventLoop::quit);
        events.exec();
    };
    run(milliseconds(200)); // what is still to be painted
    const Usage before = UsageNow();
    run(length);
    const Usage after = UsageNow();
    EXPECT_LT(after.Processor - before.Processor, length / 10);
    EXPECT_LT(after.Sleeps - before.Sleeps, length.count() / 10) << "the window wakes up again and again";
}

TEST_F(WindowOnDevice, HearsExactlyWhatTheUserDoes) {
    Start();
    GoOnline();
    Lines expected = {find, restart, find};
    // Each step ends when the device has been asked what it says.
    const auto served = [&](std::initializer_list<std::pair<char, std::function<int(int)>>> passes) {
        for (const auto& [letter, valueOf] : passes)
            AddEight(expected, letter, valueOf);
        AwaitRequests(expected.size());
    };
    const auto exceptFive = [](int output) { return output == 5 ? 18 : 210; };
    ShowTab(InputTrimsTab); // the levels once more after the routes
    served({{'M', Always(0)}, {'V', Always(210)}, {'V', Always(210)}});
    Drag("InputLevelTrim_0", 1000);
    EXPECT_EQ(Level("InputLevelTrim_0"), -18.0F);
    served({{'V', Always(210 - 2 * 18)}});
    ShowTab(OutputTrimsTab);
    served({{'V', Always(210 - 2 * 18)}, {'V', Always(210 - 2 * 18)}});
    Click("RouteOption_4");
    served({{'M', Always(4)}, {'V', Always(210)}});
    Click("OutPutSelectCheck_5");
    served({{'V', exceptFive}});
    ShowTab(OnlineTab);
    served({{'V', exceptFive}});
    Click("OnlineCancel");
    expected.push_back(restart);
    AwaitOffline();
    EXPECT_EQ(Requests((*vek)->Events()), expected);
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
    Click("Modes_3");
    Click("UsePanel_6");
    Type("PanelMinimumLevel", "-55.5");
    Type("RemoteStepLevel", "1.5");
    expected.Modes[3].OutputLevels[6].MinimumLevel = -55.5F;
    expected.Modes[3].OutputLevels[6].StepLevel = 1.5F;

    boxes.ExpectSaveFile(example, saved);
    boxes.ExpectMessage(u"File Saved."_s, u"Configuration saved to mine.VMC"_s, MessageIcon::None);
    Find<QAction>("SAVEAS")->trigger();
    const MatrixConfig written = LoadConfig(saved.toStdString());
    EXPECT_TRUE(EncodeRecord(written) == EncodeRecord(expected));

    // The programming window is modal: the user is a timer meanwhile.
    QTimer user;
    bool pressed = false;
    QObject::connect(&user, &QTimer::timeout, &user, [&] {
        auto* form = qobject_cast<VekComms*>(QApplication::activeModalWidget());
        if (form == nullptr || pressed)
            return;
        auto* option = form->findChild<QAbstractButton*>(u"Option1_0"_s);
        auto* search = form->findChild<QAbstractButton*>(u"Command1"_s);
        if (!search->isEnabled())
            return;
        pressed = true;
        EXPECT_EQ(form->findChild<QLineEdit*>(u"VekType_0"_s)->text(), u"Matrix Vek2.5"_s);
        boxes.ExpectYesNo(u"All sent ok"_s, u"Program another vek"_s, Answer::No, Answer::No);
        Click(option);
        Click(form->findChild<QAbstractButton*>(u"ProgramVek"_s));
    });
    user.start(10);
    Find<QAction>("DOWNLOAD")->trigger();
    const auto image = (*vek)->Image();
    ASSERT_TRUE(image);
    const DownloadImage encoded = EncodeImage(written).Image;
    EXPECT_TRUE(std::equal(image->begin(), image->end(), encoded.Buffer.begin()));
    EXPECT_EQ(encoded.Length, static_cast<int>(image->size()));
}

TEST_F(WindowOnDevice, TellsAPulledAdapterOnceAndRests) {
    Start({"hang-up@volume:20"});
    GoOnline();
    ShowTab(InputTrimsTab);
    ExpectError("Reply fail to Volume");
    AwaitRequests(3 + 8 + 16);
    Drag("InputLevelTrim_0", 20);
    AwaitBoxes();
    AwaitOffline();
    ExpectIdle(milliseconds(1000));

    // Pulled while nothing is sent, it is missed all the same.
    vek.reset();
    Start();
    GoOnline();
    ExpectError("No reply to restart");
    vek.reset();
    AwaitOffline();
    AwaitBoxes();
    ExpectIdle(milliseconds(1000));
}

TEST_F(WindowOnDevice, ABurstEndsWithWhatIsShown) {
    Start({"late-reply:8@volumex*", "late-reply:8@routex*"});
    GoOnline();
    ShowTab(OutputTrimsTab);
    std::mt19937 random(5);
    const char* faders[] = {"OutputLevelTrim_3", "OnlineLevelOffset", "OutputLevelTrim_6"};
    constexpr Qt::Key keys[] = {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown};
    constexpr int lastMove = 50;
    int moves = 0;
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, &user, [&] {
        if (++moves == lastMove)
            user.stop();
        if (moves % 9 == 0)
            Find<QAbstractButton>(moves % 2 != 0 ? "RouteOption_1" : "RouteOption_0")->click();
        else
            QTest::keyClick(Knob(faders[moves % 3]), keys[random() % 4]);
    });
    user.start(13);
    Await([&] { return moves == lastMove; }, "moves");

    const int input = Find<QAbstractButton>("RouteOption_1")->isChecked() ? 1 : 0;
    std::map<int, int> shownVolumes;
    std::map<int, int> shownRoutes;
    for (int output = 0; output < 8; ++output) {
        const std::string fader = "OutputLevelTrim_" + std::to_string(output);
        const float level = Level(fader.c_str()) + Level("OnlineLevelOffset");
        shownVolumes[output] = 210 + static_cast<int>(2 * level);
        shownRoutes[output] = input;
    }
    std::map<int, int> volumes;
    std::map<int, int> routes;
    const auto heard = [&] {
        for (const DeviceEvent& event : (*vek)->Events()) {
            if (event.Kind == DeviceEventKind::Volume)
                volumes[event.Request[1]] = event.Request[2];
            if (event.Kind == DeviceEventKind::Route)
                routes[event.Request[1]] = event.Request[2];
        }
        return volumes == shownVolumes && routes == shownRoutes;
    };
    Await(heard, "what is shown is heard");
    ExpectIdle(milliseconds(600));
    EXPECT_TRUE(heard()) << "and nothing else afterwards";
    EXPECT_LT((*vek)->Events().size(), lastMove * 8U) << "moves during a pass share the next one";
    for (const DeviceEvent& event : (*vek)->Events())
        EXPECT_NE(event.Kind, DeviceEventKind::Refused) << event.Text;
}

TEST_F(WindowOnDevice, OpensTheFileOfTheCommandLine) {
    Start();
    const std::string path = DataPath("02.VMC");
    const CorvaneForm named(*services, path);
    Await([&] { return Config == LoadConfig(path); }, "the file");
}

TEST_F(WindowOnDevice, ClosesAlthoughTheDeviceNoLongerAnswers) {
    Start({"no-reply@online-restart:2x*"});
    GoOnline();
    ExpectError("No reply to restart");
    const auto start = Clock::now();
    EXPECT_FALSE(window->close()) << "the unit is restarted first";
    Await([this] { return !window->isVisible(); }, "closed");
    EXPECT_LT(Clock::now() - start, milliseconds(4 * 500 + 1000));
    EXPECT_EQ(Requests((*vek)->Events()), (Lines{find, restart, find, restart, restart, restart, restart}));

    QtSerialControl other([&](int) { return (*vek)->PortPath(); });
    other.SetPortOpen(true);
    EXPECT_TRUE(other.PortOpen()) << "the window has let go of the port";
}

} // namespace
