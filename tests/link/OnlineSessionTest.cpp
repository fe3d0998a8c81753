#include "link/OnlineFixture.h"

using namespace vek;
using namespace vek::test;

using OnlineConnection = OnlineFixture;

TEST_F(OnlineConnection, SearchTellsWhatIsOnEachPort) {
    using enum PortState;
    port.Present = {1, 2, 4};
    replies = {{{39, 2, 5, 209}}, {{240}}, {{8, 9, 19, 7, 16, 213, 0}}, {{240}}, {{77, 1, 1, 176}}};
    Search();
    EXPECT_EQ(view.Texts(), "Matrix Vek2.5|Relay 4 Vek4103.16|--------------|Matrix Vek2.5|");
    EXPECT_EQ(view.States(), (PortStates{MatrixVek, OtherDevice, NotThere, MatrixVek}));
    EXPECT_EQ(view.Found[1]->Answer, (ByteVector{8, 9, 19, 7, 16, 213, 0}));
    EXPECT_EQ(packets, "D R D R D D R ") << "the last one found at the second attempt";
    EXPECT_EQ(port.Story().find("0 open 1, 0 set 9600,n,8,2, 0 input, 0 send 44 69 52 65 43 74, 1 input, 21 "
                                "input, 21 send 52 FF FF AF, 22 input, 22 close, 22 open 2"),
              0U);
    EXPECT_FALSE(port.PortOpen());

    port.Present = {1, 2};
    replies = {{{77, 1, 1, 176}}, {{77, 1, 1, 176}}, {{39, 2, 5, 1}},
               std::nullopt,      std::nullopt,      std::nullopt};
    Search();
    EXPECT_EQ(view.States(), (PortStates{NotUnderstood, Silent, NotThere, NotThere}));
    EXPECT_EQ(view.Found[0]->Answer, (ByteVector{39, 2, 5, 1})) << "the last one";
    EXPECT_EQ(view.Boxes, "");
}

TEST_F(OnlineConnection, GoesOnlineWithAMatrixVekAndOffAgain) {
    const std::optional<ByteVector> unknown = ByteVector{1, 1, 1, 252};
    const std::tuple<std::size_t, Replies, const char*, bool> cases[] = {
        {0, {{{39, 2, 5, 208}}, {{39, 2, 5}}, {{39, 2, 5, 209}}}, "D D D ", true},
        {0, {std::nullopt, std::nullopt, std::nullopt}, "D D D ", false},
        {0, {unknown, unknown, unknown}, "D D D ", false},
        {0, {{{19, 1, 1, 234}}}, "D ", false}, // known, but not the device to go online with
        {1, {}, "", false},                    // no port
    };
    for (const auto& [row, given, sent, found] : cases) {
        Forget();
        view.shownOnline = !found;
        replies = given;
        ChoosePort(row);
        EXPECT_EQ(packets, sent);
        EXPECT_EQ(view.Boxes, found ? "online;" : "");
        EXPECT_TRUE(session.IsOnline() == found && view.shownOnline == found && port.PortOpen() == found);
        Forget();
        Disconnect();
        Disconnect();
        EXPECT_EQ(packets, found ? "R " : "") << "offline, there is nothing to restart";
        EXPECT_FALSE(session.IsOnline() || view.shownOnline || port.PortOpen());
    }
    const long start = port.Now;
    const ByteVector pieces = {1, 2, 39, 2, 5, 209, 0}; // noise first
    for (std::size_t i = 0; i < pieces.size(); ++i)
        port.Reply(static_cast<long>(3 * i), {pieces[i]});
    replies = {std::nullopt};
    GoOnline();
    EXPECT_EQ(port.Now - start, 9 + 20) << "from the fourth byte, time for the rest";
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
        Disconnect();
        EXPECT_EQ(packets, "R R R R ");
        EXPECT_EQ(view.Boxes, boxes);
        EXPECT_FALSE(port.PortOpen() || session.IsOnline());
    }
}

TEST_F(OnlineConnection, CancellingIsSilentWhateverRuns) {
    const std::function<Task<>()> searching = [this] { return session.Online_search_for_vek(); };
    const std::function<Task<>()> choosing = [this] { return session.ChoosePort(0); };
    const struct {
        long when;     ///< of cancelling
        Replies given; ///< replies take 1 ms
        std::string sent;
        const std::function<Task<>()>& conversation;
    } cases[] = {
        {700, {std::nullopt, std::nullopt}, "D D ", searching},
        {10, {}, "D ", searching}, // in the wait for the rest of an answer
        {700, {std::nullopt, std::nullopt}, "D D ", choosing},
        {10, {}, "D ", choosing},
    };
    for (const auto& c : cases) {
        Forget();
        replies = c.given;
        const long end = port.Now + c.when;
        port.At(c.when, [&] { running.Cancel(); });
        port.Run(running, c.conversation());
        EXPECT_EQ(port.Now, end);
        EXPECT_EQ(packets, c.sent) << "no restart, it was not online";
        EXPECT_FALSE(port.PortOpen() || session.IsOnline());
    }
    GoOnline();
    replies = Replies(3, std::nullopt);
    port.At(50, [&] { running.Cancel(); });
    Levels();
    EXPECT_TRUE(session.IsOnline() && port.PortOpen()) << "the unit can still be restarted";
    port.At(700, [&] { running.Cancel(); });
    port.Run(running, session.Disconnect());
    EXPECT_EQ(packets, "V0=210 R R ");
    EXPECT_FALSE(port.PortOpen() || session.IsOnline());
    EXPECT_EQ(view.Boxes, "");
}

TEST_F(OnlineConnection, ALostPortIsToldOnce) {
    const std::string noVolume = "Error!|Reply fail to Volume;";
    const std::string noRoute = "Error!|Reply fail to Matrix;";
    const struct {
        long when; ///< of the loss; a packet takes 10 ms
        std::string box;
        std::size_t packets;
        void (OnlineSession::*operation)();
    } cases[] = {
        {15, noVolume, 2, &OnlineSession::WantLevels},      {15, noRoute, 2, &OnlineSession::WantRoutes},
        {5, noRestart, 1, &OnlineSession::WantDisconnect},  {0, noRoute, 0, &OnlineSession::WantRoutes},
        {0, noRestart, 0, &OnlineSession::LookForLostPort},
    };
    delay = 10;
    for (const auto& c : cases) {
        port.Present = {1};
        GoOnline();
        Wish(&OnlineSession::LookForLostPort);
        ASSERT_TRUE(session.IsOnline());
        const long end = port.Now + c.when;
        if (c.when == 0)
            port.Vanish();
        else
            port.At(c.when, [&] { port.Vanish(); });
        Wish(c.operation);
        EXPECT_EQ(view.Boxes, c.box);
        EXPECT_EQ(port.Sent.size(), c.packets);
        EXPECT_EQ(port.Now, end);
        EXPECT_TRUE(!session.IsOnline() && !view.shownOnline);
    }
}
