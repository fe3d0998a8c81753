// Every fault of the line, of the device and of the port, in every exchange with the device: what the user of
// the real windows sees on the real serial layer, how soon, what it costs, and that the same works
// afterwards.
#include "endtoend/FaultMatrixTable.h"

#include "device/PortTurns.h"
#include "device/VekComms.h"
#include "editor/CorvaneForm.h"
#include "model/ConfigFile.h"
#include "pages/EditorPages.h"
#include "platform/QtOneShotTimer.h"
#include "platform/QtSerialControl.h"
#include "simulator/RunningVek.h"
#include "support/MemoryStore.h"
#include "support/ScriptedDialogs.h"
#include "support/TestData.h"
#include "support/Windows.h"

#include <gmock/gmock.h>

#include <atomic>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <linux/capability.h>
#include <optional>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>

using namespace vek;
using namespace vek::test;
using namespace Qt::StringLiterals;

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

/// Names a file: the whole matrix runs, not only what takes little time, and is written there.
constexpr const char* tableVariable = "VEK_FAULT_TABLE";

/// "middle block, hang-up" is middle_block__hang_up.
std::string NameOf(const testing::TestParamInfo<Cell>& info) {
    std::string name = std::string(info.param.Asked->Name).append("__").append(info.param.Spoilt->Name);
    std::ranges::replace_if(
        name, [](char letter) { return letter == ' ' || letter == '-'; }, '_');
    return name;
}

/// The superuser may use every port, whoever else holds it.
void ActAsOrdinaryUser() {
    __user_cap_header_struct header = {_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct capabilities[_LINUX_CAPABILITY_U32S_3] = {};
    ::syscall(SYS_capget, &header, capabilities);
    for (const unsigned capability : {CAP_DAC_OVERRIDE, CAP_DAC_READ_SEARCH, CAP_SYS_ADMIN}) {
        capabilities[0].effective &= ~(1U << capability);
        capabilities[0].permitted &= ~(1U << capability);
    }
    ASSERT_EQ(::syscall(SYS_capset, &header, capabilities), 0);
}

/// Of this thread; the simulated device runs in another.
milliseconds ProcessorTime() {
    rusage usage = {};
    ::getrusage(RUSAGE_THREAD, &usage);
    const auto length = [](const timeval& time) {
        return std::chrono::seconds(time.tv_sec) + std::chrono::microseconds(time.tv_usec);
    };
    return std::chrono::duration_cast<milliseconds>(length(usage.ru_utime) + length(usage.ru_stime));
}

/// Another program that has the port.
class Rival {
  public:
    explicit Rival(const std::string& port) : port_(::open(port.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC)) {
        EXPECT_EQ(::ioctl(port_.Get(), TIOCEXCL), 0);
    }
    Rival(const Rival&) = delete;
    Rival& operator=(const Rival&) = delete;
    ~Rival() { ::ioctl(port_.Get(), TIOCNXCL); }

  private:
    Descriptor port_;
};

class FaultMatrix : public testing::TestWithParam<Cell> {
  protected:
    static void SetUpTestSuite() { ActAsOrdinaryUser(); }

    FaultMatrix() {
        boxes.Seen = [this](const QString& box) { Note(box); };
        window = std::make_unique<CorvaneForm>(services, std::string());
        window->FinishStart();
        window->show();
        CheckDeviceTypes(store, types);
    }

    // The port.

    void LinkTo(const std::string& target) const {
        std::filesystem::remove(com1);
        if (!target.empty())
            std::filesystem::create_symlink(target, com1);
    }
    void PlugIn(SimulatedVekOptions options = {}) {
        options.OnEvent = [this](const DeviceEvent&, const std::string& fault) {
            if (fault == "hang-up")
                unplugged = true;
        };
        vek.emplace(std::move(options));
        unplugged = false;
        LinkTo((*vek)->PortPath());
    }
    void Spoil(PortFault fault) {
        const std::string device = (*vek)->PortPath();
        backAtOnce = fault == PortFault::BackAtOnce;
        if (fault == PortFault::Busy)
            rival.emplace(device);
        else if (fault == PortFault::Missing)
            LinkTo({});
        else if (fault == PortFault::Forbidden)
            ::chmod(device.c_str(), 0);
        else if (fault == PortFault::NotSerial)
            LinkTo("/dev/null");
        else if (fault == PortFault::OtherDevice)
            PlugIn({.Device = {.ReplyCode = 13}});
    }
    void Repair(PortFault fault) {
        rival.reset();
        backAtOnce = false;
        if (fault == PortFault::Forbidden)
            ::chmod((*vek)->PortPath().c_str(), S_IRUSR | S_IWUSR);
        if (unplugged || fault == PortFault::OtherDevice)
            PlugIn();
        else
            LinkTo((*vek)->PortPath());
    }

    // The user.

    static void Click(QWidget& parent, const char* name) { Child<QAbstractButton>(parent, name).click(); }
    void ShowTab(PageTab tab) { Child<QTabWidget>(*window, "SSTab1").setCurrentIndex(tab); }
    bool IsOnline() { return !Child<QWidget>(*window, "OnlineCancel").isHidden(); }

    /// Everything before the action, with a device that does as it should.
    void Prepare(Action action) {
        if (IsOnline() && (action == Action::OnlineSearch || action == Action::GoOnline)) {
            Click(*window, "OnlineCancel");
            Settle();
        }
        if (action == Action::Search || action == Action::Program) {
            form = std::make_unique<VekComms>(formServices, turns, types, job);
            if (action == Action::Program) {
                form->show();
                Settle();
                Click(*form, "Option1_0");
            }
        } else if (!IsOnline() && action != Action::OnlineSearch) {
            ShowTab(OnlineTab);
            Click(*window, "OnlineSearch");
            Settle();
            if (action == Action::GoOnline)
                return;
            Click(*window, "OnlinePort_0");
            Settle();
            ASSERT_TRUE(IsOnline());
            if (action != Action::Disconnect)
                ShowTab(OutputTrimsTab);
        }
        Settle();
    }
    void Start(Action action) {
        switch (action) {
        case Action::Search:
            return form->show();
        case Action::Program:
            return Click(*form, "ProgramVek");
        case Action::OnlineSearch:
            return Click(*window, "OnlineSearch");
        case Action::GoOnline:
            return Click(*window, "OnlinePort_0");
        case Action::Volume:
            return QTest::keyClick(&Child<QWidget>(Child<QWidget>(*window, "OutputLevelTrim_3"), "Command1"),
                                   Qt::Key_Down);
        case Action::Route:
            return Click(*window, ++routes % 2 == 0 ? "RouteOption_1" : "RouteOption_2");
        case Action::Disconnect:
            return Click(*window, "OnlineCancel");
        }
    }
    /// How things stand after the action.
    std::string Standing(Action action) {
        const auto row = [](QWidget& parent, const char* option) {
            if (Child<QWidget>(parent, "Blanking_0").isVisible())
                return std::string("searching");
            const auto& type = Child<QLineEdit>(parent, "VekType_0");
            return type.isHidden() ? std::string("no row")
                                   : type.text().toStdString() +
                                         (Child<QWidget>(parent, option).isEnabled() ? ", to choose" : "");
        };
        const auto received = (*vek)->Image();
        switch (action) {
        case Action::Search:
            return row(*form, "Option1_0");
        case Action::Program:
            return std::string(form->isVisible() ? "open" : "closed") +
                   (received &&
                            std::ranges::equal(*received, std::span(job.Image.Buffer).first(received->size()))
                        ? ", programmed"
                        : ", not programmed");
        case Action::OnlineSearch:
            return row(*window, "OnlinePort_0");
        default:
            return IsOnline() ? "online" : "offline";
        }
    }

    /// Online packets that the device took.
    long Heard() {
        return std::ranges::count_if((*vek)->Events(), [](const DeviceEvent& event) {
            return event.Kind == DeviceEventKind::Volume || event.Kind == DeviceEventKind::Route;
        });
    }

    // What happens.

    /// A box, without its icon, quotation marks and the title that all failures have.
    void Note(QString box) {
        lastSeen = Clock::now();
        if (!firstSeen)
            firstSeen = lastSeen;
        static const QRegularExpression trimmings(u"^[^\"]*\"(Error! *)?|\"(?=: )"_s);
        box.remove(trimmings);
        if (box.startsWith(u": "_s))
            box.remove(0, 2);
        if (!noted.empty() && noted.back().first == box)
            ++noted.back().second;
        else
            noted.emplace_back(box, 1);
    }
    bool Conversing() const {
        return boxes.AnyOpen() || std::ranges::any_of(lines, [](const auto& line) {
                   return line.Timer != nullptr && (line.Timer->Enabled() || line.Port->Sending());
               });
    }
    /// Lets the program run until nothing has happened for a while; since when.
    Clock::time_point Settle(milliseconds quiet = milliseconds(40)) {
        auto still = Clock::now();
        for (auto now = still; now - still < quiet; now = Clock::now()) {
            Run(milliseconds(5));
            if (Conversing())
                still = Clock::now();
            if (backAtOnce && unplugged)
                PlugIn();
        }
        return still;
    }
    static void Run(milliseconds length) {
        QEventLoop events;
        QTimer::singleShot(length, Qt::PreciseTimer, &events, &QEventLoop::quit);
        events.exec();
    }

    struct Result {
        std::string Seen;
        milliseconds First, Over, Processor;
    };
    Result Act(Action action) {
        noted.clear();
        firstSeen.reset();
        const auto start = Clock::now();
        const auto processor = ProcessorTime();
        Start(action);
        const auto over = std::max(Settle(restLength), lastSeen);
        Result result = {
            {}, {}, std::chrono::duration_cast<milliseconds>(over - start), ProcessorTime() - processor};
        result.First = std::chrono::duration_cast<milliseconds>(firstSeen.value_or(over) - start);
        for (const auto& [box, count] : noted)
            result.Seen += (count > 1 ? std::to_string(count) + " x " : "") + box.toStdString() + "; ";
        result.Seen += Standing(action);
        return result;
    }

    /// In which a program that does not come to rest would show.
    static constexpr milliseconds restLength{250};
    /// Beside a tenth of the time: for what is painted.
    static constexpr milliseconds mostProcessorTime{150};

    /// The ports and timers that the windows were given.
    struct Line {
        QtSerialControl* Port;
        QtOneShotTimer* Timer;
    };
    EditorServices ServicesOn(Line& line) {
        return {boxes, store,
                [this, &line] {
                    auto port = std::make_unique<QtSerialControl>(
                        [this](int number) { return number == 1 ? com1 : std::string(); });
                    line.Port = port.get();
                    return port;
                },
                [&line] {
                    auto timer = std::make_unique<QtOneShotTimer>();
                    line.Timer = timer.get();
                    return timer;
                },
                [] { return QStringList{u"COM1"_s}; }};
    }

    const TemporaryFolder folder;
    const std::string com1 = folder.Path("COM1");
    ScriptedDialogs boxes;
    MemoryStore store;
    DeviceTypeList types;
    ProgrammingJob job = {EncodeImage(LoadConfig(DataPath("03.VMC"))).Image, {}, {}};
    PortTurns turns;
    std::array<Line, 2> lines = {};
    const EditorServices services = ServicesOn(lines[0]), formServices = ServicesOn(lines[1]);
    std::atomic<bool> unplugged = false;
    bool backAtOnce = false;
    std::optional<RunningVek> vek;
    std::optional<Rival> rival;
    std::unique_ptr<CorvaneForm> window;
    std::unique_ptr<VekComms> form;
    int routes = 0;
    std::vector<std::pair<QString, int>> noted; ///< boxes, each with how many times in a row
    std::optional<Clock::time_point> firstSeen; ///< a box, in this action
    Clock::time_point lastSeen;
};

TEST_P(FaultMatrix, IsToldSoonWithoutEffortAndGoesOn) {
    const auto& [request, fault, seen, atMost] = GetParam();
    SimulatedVekOptions options;
    if (!fault->OfDevice.empty()) {
        const int times = fault->HowOften == Times::Once              ? 1
                          : fault->HowOften == Times::WhileUnanswered ? request->TriesUnanswered
                                                                      : request->Tries;
        options.Faults.push_back(
            ParseFault(fault->OfDevice + '@' + request->Event + 'x' + std::to_string(times)));
    }
    PlugIn(options);
    Prepare(request->Within);
    Spoil(fault->OfPort);
    const Result result = Act(request->Within);
    EXPECT_THAT(result.Seen, testing::MatchesRegex(seen));
    EXPECT_LE(result.Over, milliseconds(atMost));
    EXPECT_LE(result.Processor, mostProcessorTime + result.Over / 10);
    if (const char* table = std::getenv(tableVariable))
        std::ofstream(table, std::ios::app)
            << request->Name << '|' << fault->Name << '|' << result.First.count() << '|'
            << result.Over.count() << '|' << result.Processor.count() << '|' << result.Seen << '\n';

    Run(milliseconds(fault->Lasts));
    Repair(fault->OfPort);
    Prepare(request->Within);
    const long heard = Heard();
    EXPECT_EQ(Act(request->Within).Seen, request->Sound) << "afterwards";
    EXPECT_EQ(Heard() - heard, request->Heard);
}

INSTANTIATE_TEST_SUITE_P(Each, FaultMatrix,
                         testing::ValuesIn(CellsOf(outcomes, std::getenv(tableVariable) != nullptr)), NameOf);

} // namespace
