#include "link/OnlineFixture.h"

using namespace vek;
using namespace vek::test;

using OnlineConnection = OnlineFixture;

namespace {

constexpr const char* findPacket = "44 69 52 65 43 74";
constexpr const char* restartPacket = "52 FF FF AF";
const std::string noRestart = "Error!|No reply to restart;";

} // namespace

TEST_F(OnlineConnection, SearchFillsTheTable) {
    port.Present = {1, 2, 4};
    replies = {{{39, 2, 5, 209}}, {{240}}, {{8, 9, 19, 7, 16, 213, 0}}, {{240}}, {{77, 1, 1, 176}}};
    session.Online_search_for_vek();
    EXPECT_EQ(view.Rows[0], (PortRow{false, true, true, false, true, "Matrix Vek2.5"}));
    EXPECT_EQ(view.Rows[1], (PortRow{false, true, false, false, true, "Relay 4 Vek4103.16"}));
    EXPECT_FALSE(view.Rows[2].typeVisible || view.Rows[2].optionVisible);
    EXPECT_TRUE(view.Rows[3].optionEnabled) << "found at the second attempt";
    EXPECT_EQ(port.Story().find("0 open 1, 0 set 9600,n,8,2, 0 input, 0 send 44 69 52 65 43 74, 1 input, "
                                "21 input, 21 send 52 FF FF AF, 22 input, 22 close, 22 open 2"),
              0U);
    EXPECT_FALSE(port.PortOpen());
    EXPECT_EQ(view.Boxes, "");
}

TEST_F(OnlineConnection, FindAttempts) {
    const std::optional<ByteVector> unknown = ByteVector{1, 1, 1, 252};
    const struct {
        Replies replies;
        int attempts;
        bool found;
    } cases[] = {
        {{{{39, 2, 5, 208}}, {{39, 2, 5}}, {{39, 2, 5, 209}}}, 3, true},
        {{std::nullopt, std::nullopt, std::nullopt}, 3, false},
        {{unknown, unknown, unknown}, 3, false},
        {{{{19, 1, 1, 234}}}, 1, false}, // known, but not the device to go online with
    };
    for (const auto& c : cases) {
        Forget();
        view.Rows[0].optionSelected = true;
        replies = c.replies;
        session.ChoosePort();
        EXPECT_EQ(port.Count(findPacket), c.attempts);
        EXPECT_EQ(session.IsOnline(), c.found);
        EXPECT_EQ(view.Boxes, c.found ? "Online|Matrix Vek is now online.;" : "");
        EXPECT_EQ(port.PortOpen(), c.found);
        session.Disconnect();
    }
    const long start = port.Now;
    const ByteVector pieces = {1, 2, 39, 2, 5, 209, 0}; // noise first
    for (std::size_t i = 0; i < pieces.size(); ++i)
        port.Reply(static_cast<long>(3 * i), {pieces[i]});
    replies = {std::nullopt};
    GoOnline();
    EXPECT_EQ(port.Now - start, 9 + 20) << "from the fourth byte, time for the rest";
}

TEST_F(OnlineConnection, GoingOnlineAndOffline) {
    view.Rows.fill({true, true, true, false, true, "x"});
    session.ChoosePort();
    EXPECT_FALSE(session.IsOnline()) << "no port was selected";
    EXPECT_EQ(view.Rows[3], (PortRow{false, true, false, false, true, ""}));

    view.Rows.fill({false, true, true, false, true, "x"});
    GoOnline();
    EXPECT_TRUE(view.Rows[0].optionEnabled && !view.Rows[1].optionEnabled);
    EXPECT_TRUE(!view.searchVisible && view.cancelVisible && view.offsetVisible);
    session.Online_search_for_vek();
    session.ChoosePort();
    EXPECT_EQ(port.Story(), "") << "neither has a meaning while online";

    session.Disconnect();
    session.Disconnect();
    EXPECT_EQ(port.Sent, std::vector<std::string>{restartPacket}) << "offline, there is nothing to restart";
    EXPECT_TRUE(view.searchVisible && !view.cancelVisible && !view.offsetVisible);
    EXPECT_EQ(view.Rows[0], (PortRow{false, true, false, false, true, ""}));
    EXPECT_EQ(view.tabUpdates, 4);
}

TEST_F(OnlineConnection, RestartHasFourAttempts) {
    const std::optional<ByteVector> refused = ByteVector{15};
    const std::pair<Replies, std::string> cases[] = {
        {{std::nullopt, refused, std::nullopt, {{240, 1}}}, ""},
        {{std::nullopt, std::nullopt, std::nullopt, refused}, "Error!|Reply fail to restart;"},
        {{refused, std::nullopt, std::nullopt, std::nullopt}, noRestart},
    };
    for (const auto& [given, boxes] : cases) {
        GoOnline();
        replies = given;
        session.Disconnect();
        EXPECT_EQ(port.Count(restartPacket), 4);
        EXPECT_EQ(view.Boxes, boxes);
        EXPECT_FALSE(port.PortOpen() || session.IsOnline());
    }
}

TEST_F(OnlineConnection, ClosingWhileAReplyIsAwaitedRestartsTheUnitFirst) {
    GoOnline();
    const long start = port.Now;
    view.text2Visible = true;
    replies = Replies(5, std::nullopt);
    port.At(50, [&] {
        EXPECT_TRUE(session.Busy());
        EXPECT_FALSE(session.Shutdown()) << "an operation is under way";
    });
    session.ApplyOnlineLevels();
    EXPECT_EQ(port.Now, start + 50);
    EXPECT_EQ(view.text2, "\r\n" + VolumeLine(0, 0));
    EXPECT_TRUE(port.PortOpen() && session.Shutdown());
    EXPECT_EQ(Packets(), "V0=210 R R R R ");
    EXPECT_EQ(port.Now, start + 50 + 4 * 500) << "also when the device no longer answers";
    EXPECT_EQ(view.Boxes, noRestart);
    EXPECT_FALSE(port.PortOpen() || session.IsOnline());
}

TEST_F(OnlineConnection, ClosingIsSilentWhateverRuns) {
    replies = Replies(3, std::nullopt);
    port.At(700, [&] { session.Shutdown(); });
    session.Online_search_for_vek();
    EXPECT_EQ(port.Now, 700);
    EXPECT_FALSE(port.PortOpen());
    EXPECT_TRUE(session.Shutdown());
    EXPECT_EQ(port.Count(findPacket), 2);
    EXPECT_EQ(port.Count(restartPacket), 0) << "it was not online";

    OnlineSession other(port, port, types, view, view);
    replies.clear();
    view.Rows[0].optionSelected = true;
    other.ChoosePort();
    Forget();
    const long start = port.Now;
    replies = Replies(2, std::nullopt);
    port.At(700, [&] { other.Shutdown(); });
    other.Disconnect();
    EXPECT_EQ(port.Now - start, 700);
    EXPECT_EQ(port.Count(restartPacket), 2);
    EXPECT_FALSE(port.PortOpen() || other.IsOnline());
    EXPECT_EQ(view.Boxes, "");
}

TEST_F(OnlineConnection, ALostPortIsToldOnce) {
    const std::string noVolume = "Error!|Reply fail to Volume;";
    const std::string noRoute = "Error!|Reply fail to Matrix;";
    constexpr long beforeSecondPacket = 10;
    const struct {
        long when; ///< of the loss; a packet takes 10 ms
        std::string box;
        std::size_t packets;
        void (OnlineSession::*operation)();
    } cases[] = {
        {15, noVolume, 2, &OnlineSession::ApplyOnlineLevels},
        {15, noRoute, 2, &OnlineSession::SendRoutes},
        {5, noRestart, 1, &OnlineSession::Disconnect},
        {beforeSecondPacket, noVolume, 1, &OnlineSession::ApplyOnlineLevels},
        {0, noRoute, 0, &OnlineSession::SendRoutes},
        {0, noRestart, 0, &OnlineSession::DisconnectIfPortLost},
    };
    delay = 10;
    view.text2Visible = true;
    for (const auto& c : cases) {
        port.Present = {1};
        GoOnline();
        session.DisconnectIfPortLost();
        ASSERT_TRUE(session.IsOnline());
        const long end = port.Now + c.when;
        if (c.when == 0)
            port.Vanish();
        else if (c.when != beforeSecondPacket)
            port.At(c.when, [&] { port.Vanish(); });
        view.OnText2 = [&](const std::string& line) {
            if (c.when == beforeSecondPacket && line.starts_with("V,1,"))
                port.Vanish();
        };
        (session.*c.operation)();
        EXPECT_EQ(view.Boxes, c.box);
        EXPECT_EQ(port.Sent.size(), c.packets);
        EXPECT_EQ(port.Now, end);
        EXPECT_TRUE(!session.IsOnline() && view.searchVisible);
    }
}
