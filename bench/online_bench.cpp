// The editor online with a device that answers at once: how long a released slider takes to be heard,
// compared with the bare round trips on the same pseudo-terminal, and what ten idle seconds cost. And what an
// edit costs with and without recovery copies.
#include "controls/LevelTrim.h"
#include "dialogs/Dialogs.h"
#include "editor/CorvaneForm.h"
#include "link/Packets.h"
#include "pages/EditorPages.h"
#include "platform/QtOneShotTimer.h"
#include "platform/QtSerialControl.h"
#include "simulator/RunningVek.h"
#include "support/ForwardingControl.h"
#include "support/MemoryStore.h"
#include "support/TestData.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEventLoop>
#include <QMouseEvent>
#include <QTabWidget>
#include <QTimer>

#include <algorithm>
#include <array>
#include <cstdio>
#include <fcntl.h>
#include <stdexcept>
#include <sys/resource.h>
#include <termios.h>
#include <unistd.h>

namespace {

using namespace Qt::StringLiterals;

using namespace vek;
using Clock = std::chrono::steady_clock;
using Microseconds = std::chrono::duration<double, std::micro>;

constexpr int rounds = 10;
constexpr int runsPerRound = 50;
constexpr std::chrono::seconds idleTime(10);
constexpr std::chrono::milliseconds afterEdit(30); // the history has looked at it then
constexpr auto patience = std::chrono::seconds(2);

/// Nothing may fail here; the news of being online needs no answer.
class NoDialogs final : public Dialogs {
  public:
    void Message(QWidget*, MessageIcon icon, const QString&, const QString& text) override {
        if (icon != MessageIcon::None)
            throw std::runtime_error(text.toStdString());
    }
    Answer AskYesNo(QWidget*, const QString&, const QString&, Answer, const QString&) override {
        return Answer::No;
    }
    Answer AskYesNoCancel(QWidget*, const QString&, const QString&) override { return Answer::Cancel; }
    std::unique_ptr<OpenBox> OpenMessage(QWidget* parent, MessageIcon icon, const QString& title,
                                         const QString& text, const QString&, BoxClosed closed) override {
        Message(parent, icon, title, text);
        QTimer::singleShot(0, qApp, [closed = std::move(closed)] { closed(Answer::Yes); });
        return std::make_unique<OpenBox>();
    }
    std::unique_ptr<OpenBox> OpenYesNo(QWidget*, const QString&, const QString& text, Answer,
                                       BoxClosed) override {
        throw std::runtime_error(text.toStdString());
    }
    std::optional<QString> OpenFile(QWidget*, const QString&, const FileKind&) override { return {}; }
    std::optional<QString> SaveFile(QWidget*, const QString&, const FileKind&) override { return {}; }
    bool ChoosePrinter(QWidget*, QPrinter&) override { return false; }
};

double ThreadMilliseconds() {
    timespec time = {};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

void Require(bool condition, const char* what) {
    if (!condition)
        throw std::runtime_error(what);
}

/// Eight volume packets and their acknowledgements with nothing but the system's calls.
class BareLine {
  public:
    explicit BareLine(const std::string& path) : port(::open(path.c_str(), O_RDWR | O_NOCTTY)) {
        termios settings = {};
        ::tcgetattr(port.Get(), &settings);
        ::cfmakeraw(&settings);
        settings.c_cflag |= CSTOPB;
        ::cfsetspeed(&settings, B9600);
        Require(::tcsetattr(port.Get(), TCSANOW, &settings) == 0, "cannot set the line");
        RoundTrip(std::array<std::uint8_t, 6>{'D', 'i', 'R', 'e', 'C', 't'}, 4);
    }
    void SendEight() {
        for (std::uint8_t output = 0; output < 8; ++output) {
            const int sum = 'V' + output + code;
            RoundTrip(std::array<std::uint8_t, 4>{'V', output, code, static_cast<std::uint8_t>(255 - sum)},
                      1);
        }
    }

  private:
    static constexpr std::uint8_t code = 210;

    template <std::size_t Size>
    void RoundTrip(const std::array<std::uint8_t, Size>& request, std::size_t replyLength) {
        Require(::write(port.Get(), request.data(), Size) == Size, "cannot write to the line");
        std::array<std::uint8_t, 16> reply;
        for (std::size_t got = 0; got < replyLength;) {
            const ssize_t more = ::read(port.Get(), reply.data(), reply.size());
            Require(more > 0, "cannot read from the line");
            got += static_cast<std::size_t>(more);
        }
    }

    Descriptor port;
};

/// The real serial control; counts the acknowledgements which the editor takes.
class CountingControl final : public test::ForwardingControl {
  public:
    CountingControl(QtSerialControl::DeviceLookup deviceOf, int& acknowledged)
        : ForwardingControl(port_), port_(std::move(deviceOf)), acknowledged_(acknowledged) {}
    ByteVector Input() override {
        ByteVector input = port_.Input();
        acknowledged_ += static_cast<int>(std::ranges::count(input, acceptedReply));
        return input;
    }

  private:
    QtSerialControl port_;
    int& acknowledged_;
};

class Editor {
  public:
    Editor(std::string device, const std::string& stateFolder)
        : path(std::move(device)), services{.Boxes = boxes,
                                            .Store = store,
                                            .MakeSerialControl =
                                                [this] {
                                                    return std::make_unique<CountingControl>(
                                                        [this](int n) { return n == 1 ? path : ""; },
                                                        acknowledged);
                                                },
                                            .MakeTimer = [] { return std::make_unique<QtOneShotTimer>(); },
                                            .PortNames = [] { return QStringList(); },
                                            .StateFolder = stateFolder},
          window(services, std::string()), tabs(window.findChild<QTabWidget*>(u"SSTab1"_s)) {
        window.FinishStart();
        fader = window.findChild<LevelTrim*>(u"InputLevelTrim_0"_s);
        knob = fader->findChild<QWidget*>(u"Command1"_s);
        window.show();
    }
    void GoOnline() {
        tabs->setCurrentIndex(OnlineTab);
        Click("OnlineSearch");
        RunUntil(
            [this] { return Button("OnlinePort_0")->isEnabled() && Button("OnlinePort_0")->isVisible(); });
        Click("OnlinePort_0");
        RunUntil([this] { return !tabs->isTabEnabled(NotesTab); });
        acknowledged = 0;
        tabs->setCurrentIndex(InputTrimsTab);
        RunUntil([this] { return acknowledged == 3 * 8; }); // routes, levels and the levels once more
    }
    void Disconnect() {
        Click("OnlineCancel");
        RunUntil([this] { return tabs->isTabEnabled(NotesTab); });
    }
    void MoveSlider(int direction) {
        const QPoint centre = knob->rect().center();
        Mouse(QEvent::MouseButtonPress, Qt::LeftButton, centre);
        Mouse(QEvent::MouseMove, Qt::NoButton, centre + QPoint(0, direction * knob->height()));
    }
    /// A step of the slider, and what the program does about it once there is time. Of this thread, which is
    /// what the user waits for.
    double EditMilliseconds(int number) {
        const double before = ThreadMilliseconds();
        QKeyEvent press(QEvent::KeyPress, number % 2 == 0 ? Qt::Key_Up : Qt::Key_Down, Qt::NoModifier);
        QApplication::sendEvent(knob, &press);
        QEventLoop events;
        QTimer::singleShot(afterEdit, &events, &QEventLoop::quit);
        events.exec();
        return ThreadMilliseconds() - before;
    }
    /// The same packets without anything to be painted.
    void SendLevels() {
        acknowledged = 0;
        Q_EMIT fader->Change();
        RunUntil([this] { return acknowledged == 8; });
    }
    /// Lets go of the dragged slider; returns when all eight packets are acknowledged.
    void ReleaseSlider() {
        acknowledged = 0;
        Mouse(QEvent::MouseButtonRelease, Qt::LeftButton, knob->rect().center());
        RunUntil([this] { return acknowledged == 8; });
    }

  private:
    template <typename Condition>
    static void RunUntil(Condition condition) {
        while (!condition())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QAbstractButton* Button(const char* name) const {
        return window.findChild<QAbstractButton*>(QString::fromLatin1(name));
    }
    void Click(const char* name) { Button(name)->click(); }
    void Mouse(QEvent::Type type, Qt::MouseButton button, const QPoint& at) {
        QMouseEvent event(type, at, knob->mapToGlobal(at), button,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(knob, &event);
    }

    std::string path;
    int acknowledged = 0;
    NoDialogs boxes;
    test::MemoryStore store;
    EditorServices services;
    CorvaneForm window;
    QTabWidget* tabs;
    LevelTrim* fader;
    QWidget* knob;
};

template <typename Operation>
double TimeOf(Operation operation) {
    const auto start = Clock::now();
    operation();
    return Microseconds(Clock::now() - start).count();
}

double Median(std::vector<double>& times) {
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

void MeasureSlider(RunningVek& device, Editor& editor) {
    std::vector<double> editorTimes;
    std::vector<double> unseenTimes;
    std::vector<double> bareTimes;
    int packets = 0;
    const auto requireEight = [&] {
        packets += 8;
        Require(device->WaitForEvents(DeviceEventKind::Volume, packets, patience), "the device heard less");
    };
    // In turn, so that whatever else the machine does meets both alike.
    for (int round = 0; round < rounds; ++round) {
        editor.GoOnline();
        packets += 8;
        requireEight();
        for (int run = 0; run < runsPerRound; ++run) {
            editor.MoveSlider(run % 2 == 0 ? 1 : -1);
            QCoreApplication::processEvents();
            editorTimes.push_back(TimeOf([&] { editor.ReleaseSlider(); }));
            QCoreApplication::processEvents();
            requireEight();
            unseenTimes.push_back(TimeOf([&] { editor.SendLevels(); }));
            requireEight();
        }
        editor.Disconnect();
        BareLine bare(device->PortPath());
        for (int run = 0; run < runsPerRound; ++run) {
            bareTimes.push_back(TimeOf([&] { bare.SendEight(); }));
            requireEight();
        }
    }
    const double bare = Median(bareTimes);
    const auto print = [&](const char* what, std::vector<double>& times) {
        const double time = Median(times);
        std::printf("%s: %.3f ms, ratio to the bare round trips %.2f\n", what, time / 1000, time / bare);
    };
    std::printf("bare round trips of eight packets: %.3f ms (medians of %d)\n", bare / 1000,
                rounds * runsPerRound);
    print("slider release to the eighth acknowledgement", editorTimes);
    print("the same with nothing to paint", unseenTimes);
}

void MeasureEdits(const std::string& stateFolder) {
    constexpr int edits = 300;
    for (const bool kept : {false, true}) {
        Editor editor({}, kept ? stateFolder : std::string());
        std::vector<double> times;
        for (int i = 0; i < edits; ++i)
            times.push_back(editor.EditMilliseconds(i));
        const double longest = *std::ranges::max_element(times);
        std::printf(
            "an edit %s recovery copies: %.3f ms of the window's thread (median of %d), %.3f ms at most\n",
            kept ? "with" : "without", Median(times), edits, longest);
    }
}

rusage Usage() {
    rusage usage = {};
    ::getrusage(RUSAGE_THREAD, &usage);
    return usage;
}

double ProcessorMilliseconds(const rusage& usage) {
    return static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1000 +
           static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1000;
}

void MeasureIdle(RunningVek& device, Editor& editor) {
    editor.GoOnline();
    QEventLoop events;
    const auto run = [&](std::chrono::milliseconds length) {
        QTimer::singleShot(length, &events, &QEventLoop::quit);
        events.exec();
    };
    run(std::chrono::seconds(1));
    const rusage before = Usage();
    run(idleTime);
    const rusage after = Usage();
    editor.Disconnect();
    // Each round has one restart from the search and one from the end of the connection.
    Require(device->WaitForEvents(DeviceEventKind::OnlineRestart, 2 * (rounds + 1), patience),
            "the editor was not online");
    std::printf(
        "%d s idle online: %.1f ms of processor time, %ld wake-ups\n", static_cast<int>(idleTime.count()),
        ProcessorMilliseconds(after) - ProcessorMilliseconds(before), after.ru_nvcsw - before.ru_nvcsw);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    RunningVek device;
    const test::TemporaryFolder state;
    Editor editor(device->PortPath(), state.Path());
    MeasureSlider(device, editor);
    MeasureIdle(device, editor);
    MeasureEdits(state.Path());
}
