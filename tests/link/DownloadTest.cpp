#include "link/LinkFixture.h"

using namespace vek;
using namespace vek::test;

namespace {

const std::string programFailed =
    "Error!|Program failed, Vekule will fail to operate correctly until reprogrammmed, Try powering the vek "
    "off/wait/on and reprogram again;";
const std::string noRestart = "Error!|No reply to restart;";

class Download : public LinkFixture {
  protected:
    Download() {
        for (std::size_t i = 0; i < image.Buffer.size(); ++i)
            image.Buffer[i] = static_cast<std::uint8_t>(i * 7);
        image.Length = 20;
    }
    bool SendDownload() { return Run(link.send_download(image, outcomes)); }
    DownloadImage image;
};

} // namespace

TEST_F(Download, BytesAndSettingsInOrder) {
    OpenPort();
    commandReplies = "+.++.";
    EXPECT_TRUE(SendDownload());
    EXPECT_TRUE(Run(link.restart_unit()));
    EXPECT_EQ(port.Story(),
              "0 input, 0 set 9600,o,8,1, 0 send 11, 10 set 9600,e,8,1, "
              "10 send 00 00 00 07 0E 15 1C 23 2A 31 3B, 11 input, "
              "11 set 9600,o,8,1, 11 send 11, 21 set 9600,e,8,1, "
              "21 send 00 01 38 3F 46 4D 54 5B 62 69 7A, "
              "521 set 9600,o,8,1, 521 send 11, 531 set 9600,e,8,1, "
              "531 send 00 01 38 3F 46 4D 54 5B 62 69 7A, 532 input, "
              "532 set 9600,o,8,1, 532 send 11, 542 set 9600,e,8,1, "
              "542 send 00 02 70 77 7E 85 8C 93 9A A1 B9, 543 input, "
              "543 input, 543 set 9600,o,8,1, 543 send 33, 553 set 9600,e,8,1, 553 send FF, "
              "1053 input, 1053 set 9600,o,8,1, 1053 send 33, 1063 set 9600,e,8,1, 1063 send FF, "
              "1064 input");
    EXPECT_EQ(outcomes.Percentages, "0.0% 33.3% 100% ");
}

TEST_F(Download, WholeImageTakesItsFixedWaits) {
    OpenPort();
    image.Length = imageLength;
    EXPECT_TRUE(SendDownload());
    EXPECT_EQ(port.Now, 273 * 11);
    EXPECT_EQ(outcomes.Percentages.substr(0, 20), "0.0% 0.3% 0.7% 1.0% ");
    outcomes.Percentages.clear();
    image.Length = 0;
    EXPECT_EQ(Run(link.Configure_Vek(image, outcomes)), ConfigureResult::Done);
    EXPECT_EQ(outcomes.Percentages, "100% ") << "of nothing";
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
    EXPECT_EQ(outcomes.Percentages.substr(0, 8), "0% 0.0% ");
}

TEST_F(Download, ALostPortIsToldAndCancelIsSilent) {
    // 100 ms for the port, 200 ms wake pulse, 70 ms wake word, then 11 ms for each block.
    const std::pair<long, std::string> cases[] = {
        {50, "Error!|Port not open;"},
        {250, "Error!|Vek not responding;"},
        {335, "Error!|Vek not responding;"},
        {375, "Error!  0|No reply to download;"},
        {387, "Error!  1|No reply to download;"},
        {408, noRestart + programFailed},
    };
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
