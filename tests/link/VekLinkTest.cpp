// A programming link to a scripted Vekule on COM1: what it finds, and what it programs.
#include "link/VekLink.h"
#include "link/Packets.h"
#include "link/RecordingOutcomes.h"

using namespace vek;
using namespace vek::test;

namespace {

const std::string programFailed = "Error!|Program failed, Vekule will fail to operate correctly until "
                                  "reprogrammmed, Try powering the vek off/wait/on and reprogram again;";

class LinkOutcomesOfTest : public RecordingOutcomes<LinkOutcomes>, public ProgrammingOutcomes {
  public:
    std::string Percentages; ///< each followed by a blank, and what else an attempt tells
    std::string Step;        ///< row, settings, number, count and pass of the search, the last one
    int YesAnswers = 0;      ///< to questions to come

    void PortSearchBegins(std::size_t row) override { Step = std::to_string(row) + ':'; }
    void Searching(const SearchStep& step) override {
        Step.resize(2);
        Step += step.Settings;
        for (const int number : {step.Number, step.Count, step.Pass})
            Step += ' ' + std::to_string(number);
    }
    void DeviceFound(const PortFinding& finding) override { Percentages += TextOf(finding) + ' '; }
    void DownloadBegins() override { Percentages += "begins "; }
    void Progress(DownloadProgress progress) override {
        Percentages += progress.Retries > retries ? "again " : PercentText(progress) + ' ';
        retries = progress.Retries;
    }
    Task<bool> WantsAnother() override {
        Boxes += "another?;";
        co_return YesAnswers-- > 0;
    }

  private:
    int retries = 0;
};

class VekLinkTest : public testing::Test {
  protected:
    VekLinkTest() {
        port.Present = {1};
        port.OnOutput = [this](const ByteVector& bytes) { Device(bytes); };
    }
    /// The device's port as if just opened by the link.
    void OpenPort() {
        port.SetPortOpen(true);
        port.Forget();
        outcomes.Boxes.clear();
    }
    /// The result of a procedure that runs to its end.
    template <typename Value>
    auto Run(Task<Value> task) {
        return port.Run(running, std::move(task)).value();
    }
    void Search() { port.Run(running, link.search_for_vek()); }

    /// Answers the wake word at the device's rate, and arguments of commands under even parity: '+' accepts,
    /// '-' refuses, '1' is one byte only, '.' silence.
    void Device(const ByteVector& bytes) {
        std::optional<ByteVector> reply;
        if (port.Rate == "9600,e,8,1") {
            const char kind = commandReplies.empty() ? '+' : commandReplies.front();
            commandReplies.erase(0, 1);
            if (kind != '.')
                reply =
                    kind == '1' ? ByteVector{240} : ByteVector{kind == '+' ? acceptedReply : refused, 240};
        } else if (port.Rate == rate && bytes == ByteVector{'K'}) {
            reply = Next(findReplies, {39, 2, 5, 209, 0});
        }
        if (reply)
            port.Reply(1, *reply);
    }

    static constexpr std::uint8_t refused = 15;
    ScriptedPort port;
    LinkOutcomesOfTest outcomes;
    DeviceTypeList types = {{29, 39, "Matrix Vek", ""}, {9, 19, "Relay 4 Vek", ""}};
    VekLink link{port, port, types, outcomes};
    RunningTask running;

    std::string rate = "9600,n,8,2";
    Replies findReplies;        ///< a Matrix Vek of version 2.5 when used up
    std::string commandReplies; ///< accepted when used up
};

using Searching = VekLinkTest;

class Download : public VekLinkTest {
  protected:
    Download() {
        for (std::size_t i = 0; i < image.Buffer.size(); ++i)
            image.Buffer[i] = static_cast<std::uint8_t>(i * 7);
        image.Length = 20;
    }
    DownloadImage image;
};

} // namespace

TEST_F(Searching, BytesAndSettingsInOrder) {
    OpenPort();
    EXPECT_EQ(Run(link.Find_vek(false)).Found, 0x050227U);
    EXPECT_EQ(port.Story(),
              "0 set 110,n,8,2, 0 send 00, 200 input, 200 set 9600,n,8,2, 200 send FF, 210 send 53, 220 send "
              "45, 230 send 54, 240 send 56, 250 send 45, 260 input, 260 send 4B, 270 input");
    OpenPort();
    findReplies = {{{39, 2, 5, 209}}};
    EXPECT_EQ(Run(link.Find_vek(false)).Found, 0x050227U);
    EXPECT_EQ(port.Now, 270 + 370) << "a fifth byte is waited for";
    OpenPort();
    rate = "none";
    EXPECT_EQ(Run(link.Find_vek(true)).Found, 0U) << "every rate once when nothing answers";
    EXPECT_EQ(port.Story("set"),
              "640 set 110,n,8,2, 840 set 9600,n,8,2, 1010 set 38400,n,8,2, 1180 set 28800,n,8,2, 1350 set "
              "19200,n,8,2, 1520 set 14400,n,8,2, 1690 set 4800,n,8,2, 1860 set 2400,n,8,2");
    EXPECT_EQ(port.Now, 2030);
    OpenPort();
    EXPECT_FALSE(Run(link.dumb_restart_unit()));
    EXPECT_EQ(port.Story(),
              "2030 input, 2030 set 9600,o,8,1, 2030 send 33, 2040 set 9600,e,8,1, 2040 send FF");
    EXPECT_EQ(port.Now, 5040);
}

TEST_F(Searching, RepliesPassesAndRestarts) {
    const std::optional<ByteVector> wrong = ByteVector{1, 1, 1, 1, 1};
    const struct {
        const char* what;
        Replies replies;
        std::uint32_t found;
        int words;    ///< wake words sent
        int restarts; ///< when asked for: after each pass with a reply, and of what was found
    } cases[] = {
        {"four bytes", {{{39, 2, 5, 209}}}, 0x050227, 1, 1},
        {"three bytes", {{{39, 2, 5}}}, 0, 7, 0},
        {"wrong sum", {{{39, 2, 5, 210, 0}}}, 0x050227, 8, 2},
        {"unknown type", {{{77, 2, 5, 171, 0}}}, 0x050227, 8, 2},
        {"noise that is a known type", {{{19, 1, 39, 2, 5, 209, 0}}}, 0x050227, 1, 1},
        {"other noise", {{{1, 1, 39, 2, 5, 209, 0}}}, 0x050227, 8, 2},
        {"always wrong", {wrong, wrong, wrong}, 0, 21, 3},
        {"once seen, looked for in every pass", {wrong, std::nullopt}, 0x050227, 15, 3},
    };
    for (const bool restart : {false, true}) {
        for (const auto& c : cases) {
            OpenPort();
            findReplies = c.replies;
            EXPECT_EQ(Run(link.Find_vek(restart)).Found, c.found) << c.what;
            EXPECT_EQ(port.Count("4B"), c.words) << c.what;
            EXPECT_EQ(port.Count("33"), restart ? c.restarts : 0) << c.what;
            EXPECT_EQ(outcomes.Boxes, "") << c.what;
        }
    }
}

TEST_F(Searching, TellsWhatIsOnEachPortAndLeavesItClosed) {
    using enum PortState;
    port.Present = {1, 2, 4};
    port.Refusal = OpenFailure::InUse;
    findReplies = {{{39, 2, 5, 209}}, {{19, 1, 39, 2, 5, 209, 0}}, {{19, 7, 16, 213, 0}}};
    Search();
    EXPECT_EQ(outcomes.Texts(), "Matrix Vek2.5|Matrix Vek2.5|--------------|Relay 4 Vek4103.16|");
    EXPECT_EQ(outcomes.States(), (PortStates{MatrixVek, MatrixVek, InUse, OtherDevice}));
    EXPECT_EQ(outcomes.Found[1]->Answer, (ByteVector{19, 1, 39, 2, 5, 209, 0}));
    EXPECT_EQ(outcomes.Found[1]->Settings, "9600,n,8,2");
    EXPECT_FALSE(port.PortOpen());

    types[1] = {1, 1, "One", ""}; // what noise is taken for; the answer itself is no known type now
    port.Present = {1, 3};
    rate = "4800,n,8,2";
    const std::optional<ByteVector> wrong = ByteVector{1, 1, 1, 1, 1};
    findReplies = {{{1, 1, 19, 7, 16, 213, 0}}, wrong, wrong, wrong};
    port.Refusal = OpenFailure::NotPermitted;
    Search();
    EXPECT_EQ(outcomes.Texts(), "--------------4103.16|--------------|--------------|--------------|");
    EXPECT_EQ(outcomes.States(), (PortStates{NotUnderstood, NotPermitted, NotUnderstood, NotPermitted}));
    EXPECT_TRUE(WhyNotOpened(*outcomes.Found[1]).starts_with("you are not allowed to use it"));
    EXPECT_EQ(outcomes.Found[2]->Settings, rate);
    EXPECT_EQ(outcomes.Step, "3:") << "COM4 is not asked";
    EXPECT_EQ(outcomes.Found[2]->Answer, *wrong);
    rate = "none";
    port.Present = {4};
    Search();
    EXPECT_EQ(outcomes.Found[3]->State, Silent);
    EXPECT_EQ(outcomes.Step, "3:2400,n,8,2 7 7 1");
}

TEST(Findings, AreToldInWords) {
    const DeviceTypeList types = {{29, 39, "Matrix Vek", ""}, {9, 19, "Relay 4 Vek", ""}};
    PortFacts outsider, joined, held;
    outsider.Rights.GroupToJoin = joined.Rights.GroupToJoin = "dialout";
    joined.Rights.JoinedSinceLogin = true;
    held.Holders = {{"screen", 47}};
    const std::tuple<PortFinding, PortFacts, const char*> cases[] = {
        {NotOpened(OpenFailure::NotThere), {}, "not there"},
        {NotOpened(OpenFailure::NotPermitted), {}, "may not be opened"},
        {NotOpened(OpenFailure::NotPermitted), outsider,
         "may not be opened: your user is not in the group dialout"},
        {NotOpened(OpenFailure::NotPermitted), joined,
         "may not be opened: log out and in again, to be in the group dialout"},
        {NotOpened(OpenFailure::InUse), {}, "in use by another program, or does not work"},
        {NotOpened(OpenFailure::InUse), held, "in use by screen (47)"},
        {Silent(), {}, "silent"},
        {NotUnderstood("9600,n,8,2", {1}), {}, "answers that are not understood"},
        {Understood(types, 0x02004D, "9600,n,8,2", {77}), {}, "another device: code 77, version 0.2"},
        {Understood(types, 0x050113, "9600,n,8,2", {19}), {}, "another device: Relay 4 Vek 1.5"},
        {Understood(types, 0x050227, "9600,n,8,2", {39}), {}, "Matrix Vek 2.5"},
    };
    for (const auto& [finding, facts, text] : cases)
        EXPECT_EQ(FindingText(finding, facts), text);
}

TEST_F(Searching, SendingIsWaitedForBeforeTheWaitsBegin) {
    OpenPort();
    port.SendTime = 110;
    rate = "none";
    port.At(500, [this] { running.Cancel(); });
    running.Start(link.send_wake_pulse(), [](const std::exception_ptr&) {});
    while (running.Running())
        port.Step();
    EXPECT_EQ(port.Now, 110 + 200);
    OpenPort();
    port.SendTime = 2;
    EXPECT_TRUE(Run(link.restart_unit()));
    EXPECT_EQ(port.Story(),
              "310 input, 310 set 9600,o,8,1, 310 send 33, 322 set 9600,e,8,1, 322 send FF, 324 input");
}

TEST_F(Searching, CancellingOrALostPortEndAnyWaitAtOnce) {
    types = {{1, 1, "One", ""}};
    rate = "2400,n,8,2"; // answered with an unknown type, so that a restart of 3 s follows
    for (const long sendTime : {0, 1}) {
        for (const long when : {100, 205, 235, 265, 300, 1395, 3000}) {
            for (const bool cancel : {true, false}) {
                port.SendTime = sendTime;
                port.Present = {1};
                outcomes.Found = {};
                const long end = port.Now + when;
                port.At(when, [&] { cancel ? running.Cancel() : port.Vanish(); });
                Search();
                EXPECT_EQ(port.Now, end);
                EXPECT_FALSE(port.PortOpen() || running.Running());
                EXPECT_EQ(outcomes.Texts(),
                          cancel ? "not searched|not searched|not searched|not searched|"
                                 : "--------------|--------------|--------------|--------------|");
            }
        }
    }
    EXPECT_EQ(outcomes.Boxes, "");
}

TEST_F(Download, BytesAndSettingsInOrder) {
    OpenPort();
    commandReplies = "+.++.";
    EXPECT_TRUE(Run(link.send_download(image, outcomes)));
    EXPECT_TRUE(Run(link.restart_unit()));
    EXPECT_EQ(
        port.Story(),
        "0 input, 0 set 9600,o,8,1, 0 send 11, 10 set 9600,e,8,1, 10 send 00 00 00 07 0E 15 1C 23 2A 31 3B, "
        "11 input, 11 set 9600,o,8,1, 11 send 11, 21 set 9600,e,8,1, 21 send 00 01 38 3F 46 4D 54 5B 62 69 "
        "7A, 521 set 9600,o,8,1, 521 send 11, 531 set 9600,e,8,1, 531 send 00 01 38 3F 46 4D 54 5B 62 69 7A, "
        "532 input, 532 set 9600,o,8,1, 532 send 11, 542 set 9600,e,8,1, 542 send 00 02 70 77 7E 85 8C 93 9A "
        "A1 B9, 543 input, 543 input, 543 set 9600,o,8,1, 543 send 33, 553 set 9600,e,8,1, 553 send FF, 1053 "
        "input, 1053 set 9600,o,8,1, 1053 send 33, 1063 set 9600,e,8,1, 1063 send FF, 1064 input");
    EXPECT_EQ(outcomes.Percentages, "begins 0.0% again 33.3% 100% ");
}

TEST_F(Download, WholeImageTakesItsFixedWaits) {
    OpenPort();
    image.Length = imageLength;
    EXPECT_TRUE(Run(link.send_download(image, outcomes)));
    EXPECT_EQ(port.Now, 273 * 11);
    EXPECT_EQ(outcomes.Percentages.substr(0, 27), "begins 0.0% 0.3% 0.7% 1.0% ");
    outcomes.Percentages.clear();
    image.Length = 0;
    EXPECT_EQ(Run(link.Configure_Vek(image, outcomes)), ConfigureResult::Done);
    EXPECT_EQ(outcomes.Percentages, "100% Matrix Vek2.5 begins ") << "of nothing";
}

TEST_F(Download, OutcomesOfAnAttempt) {
    using enum ConfigureResult;
    constexpr long found = 370, nextRate = 170; // at the first rate; of each further one
    constexpr long silent = 510, answered = 11; // commands
    const struct {
        const char* rate; ///< empty: no port
        const char* replies;
        ConfigureResult result;
        std::string boxes;
        int restarts;
        long time;
    } cases[] = {
        {"", "", PortNotOpen, "Error!|Port not open;", 0, 0},
        {"none", "", NotResponding, "Error!|Vek not responding;", 0, found + 7 * nextRate - 70},
        {"4800,n,8,2", "+.-1.", DownloadFailed, "Error!  1|No reply to download;", 0,
         found + 5 * nextRate + 2 * answered + 3 * silent},
        {"9600,n,8,2", "...-", DownloadFailed, "Error!  0|Reply to download failed;", 0,
         found + 3 * silent + answered},
        {"9600,n,8,2", "...+...+", Done, "another?;", 1, found + 6 * silent + 4 * answered},
        {"9600,n,8,2", "+++.1-+", Done, "another?;", 4, found + 2 * silent + 5 * answered},
        {"9600,n,8,2", "+++1111", RestartFailed, noRestart + programFailed, 4,
         found + 4 * silent + 3 * answered},
        {"9600,n,8,2", "+++.-..", RestartFailed, noRestart + programFailed, 4,
         found + 3 * silent + 4 * answered},
        {"9600,n,8,2", "+++...-", RestartFailed, "Error!|Reply fail to restart;" + programFailed, 4,
         found + 3 * silent + 4 * answered},
    };
    for (const auto& c : cases) {
        outcomes.Boxes.clear();
        port.Forget();
        rate = c.rate;
        port.Present = {rate.empty() ? 2 : 1};
        commandReplies = c.replies;
        const long start = port.Now;
        EXPECT_EQ(Run(link.ProgramVek(0, image, outcomes)), c.result) << c.boxes;
        EXPECT_EQ(outcomes.Boxes, c.boxes);
        EXPECT_EQ(port.Count("33"), c.restarts) << c.replies;
        EXPECT_EQ(port.Now - start, c.time) << c.replies;
        EXPECT_FALSE(port.PortOpen());
    }
}

TEST_F(Download, ProgramsOneAfterTheOther) {
    outcomes.YesAnswers = 1;
    EXPECT_EQ(Run(link.ProgramVek(0, image, outcomes)), ConfigureResult::Done);
    EXPECT_EQ(port.Story("open"), "0 open 1, 414 open 1");
    EXPECT_EQ(port.Events.back(), "828 close");
    EXPECT_EQ(port.Events[1], "100 set 110,n,8,2");
    EXPECT_EQ(outcomes.Percentages.substr(0, 29), "0% Matrix Vek2.5 begins 0.0% ");
}

TEST_F(Download, AskedToEndItFinishesTheBlockAndRestarts) {
    constexpr long found = 370; // the first block
    const struct {
        long when; ///< it is asked to end
        const char* replies;
        long end;
        int blocks;
        const char* boxes;
    } cases[] = {
        {found - 100, "", found + 11, 0, ""}, // during the search
        {found + 5, "", found + 2 * 11, 1, ""},
        {found + 15, "", found + 3 * 11, 2, ""},
        {found + 15, "+-", found + 3 * 11, 2, ""},
        {found + 15, "+.", found + 2 * 11 + 510, 2, ""},
        {found + 15, "+.....", found + 11 + 4 * 510 + 510, 2, "Error!|No reply to restart;"},
    };
    for (const auto& c : cases) {
        VekLink ended(port, port, types, outcomes);
        outcomes.Boxes.clear();
        port.Forget();
        commandReplies = c.replies;
        const long start = port.Now;
        port.At(c.when, [&] { ended.EndEarly(); });
        EXPECT_EQ(Run(ended.ProgramVek(0, image, outcomes)), ConfigureResult::EndedEarly);
        EXPECT_EQ(port.Now - start, c.end) << c.when << c.replies;
        EXPECT_EQ(port.Count("11"), c.blocks) << c.when << c.replies;
        EXPECT_EQ(outcomes.Boxes, c.boxes);
        EXPECT_FALSE(port.PortOpen());
    }
}

TEST_F(Download, ALostPortIsToldAndCancelIsSilent) {
    // 100 ms for the port, 200 ms wake pulse, 70 ms wake word, then 11 ms for each block.
    const std::pair<long, std::string> cases[] = {{50, "Error!|Port not open;"},
                                                  {250, "Error!|Vek not responding;"},
                                                  {335, "Error!|Vek not responding;"},
                                                  {375, "Error!  0|No reply to download;"},
                                                  {387, "Error!  1|No reply to download;"},
                                                  {408, noRestart + programFailed}};
    for (const auto& [when, boxes] : cases) {
        for (const bool cancel : {false, true}) {
            port.Present = {1};
            outcomes.Boxes.clear();
            const long end = port.Now + when;
            port.At(when, [&] { cancel ? running.Cancel() : port.Vanish(); });
            EXPECT_EQ(port.Run(running, link.ProgramVek(0, image, outcomes)).has_value(), !cancel);
            EXPECT_EQ(outcomes.Boxes, cancel ? "" : boxes) << when;
            EXPECT_EQ(port.Now, end) << when;
            EXPECT_FALSE(port.PortOpen());
        }
    }
}
