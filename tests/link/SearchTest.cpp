#include "link/LinkFixture.h"

using namespace vek;
using namespace vek::test;

using Search = LinkFixture;

TEST_F(Search, BytesAndSettingsInOrder) {
    OpenPort();
    EXPECT_EQ(link.Find_vek(false), 0x050227U);
    EXPECT_EQ(port.Story(), "0 set 110,n,8,2, 0 send 00, 200 input, 200 set 9600,n,8,2, 200 send FF, "
                            "210 send 53, 220 send 45, 230 send 54, 240 send 56, 250 send 45, 260 input, "
                            "260 send 4B, 270 input");
    OpenPort();
    findReplies = {{{39, 2, 5, 209}}};
    EXPECT_EQ(link.Find_vek(false), 0x050227U);
    EXPECT_EQ(port.Now, 270 + 370) << "a fifth byte is waited for";
    OpenPort();
    rate = "none";
    EXPECT_EQ(link.Find_vek(true), 0U) << "every rate once when nothing answers";
    EXPECT_EQ(port.Story("set"), "640 set 110,n,8,2, 840 set 9600,n,8,2, 1010 set 38400,n,8,2, "
                                 "1180 set 28800,n,8,2, 1350 set 19200,n,8,2, 1520 set 14400,n,8,2, "
                                 "1690 set 4800,n,8,2, 1860 set 2400,n,8,2");
    EXPECT_EQ(port.Now, 2030);
    OpenPort();
    EXPECT_FALSE(link.dumb_restart_unit());
    EXPECT_EQ(port.Story(),
              "2030 input, 2030 set 9600,o,8,1, 2030 send 33, 2040 set 9600,e,8,1, 2040 send FF");
    EXPECT_EQ(port.Now, 5040);
}

TEST_F(Search, RepliesPassesAndRestarts) {
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
            EXPECT_EQ(link.Find_vek(restart), c.found) << c.what;
            EXPECT_EQ(port.Count("4B"), c.words) << c.what;
            EXPECT_EQ(port.Count("33"), restart ? c.restarts : 0) << c.what;
            EXPECT_EQ(view.Boxes, "") << c.what;
        }
    }
}

TEST_F(Search, FillsTheTableAndLeavesEveryPortClosed) {
    port.Present = {1, 2, 4};
    view.Rows[2].typeVisible = true; // from an earlier search
    findReplies = {{{39, 2, 5, 209}}, {{19, 1, 39, 2, 5, 209, 0}}, {{19, 7, 16, 213, 0}}};
    link.search_for_vek();
    const PortRow matrix = {false, true, true, false, true, "Matrix Vek2.5"};
    EXPECT_EQ(view.Rows[0], matrix);
    EXPECT_EQ(view.Rows[1], matrix);
    EXPECT_EQ(view.Rows[2], (PortRow{false, false, false, false, false, "--------------"}));
    EXPECT_EQ(view.Rows[3], (PortRow{false, true, false, false, true, "Relay 4 Vek4103.16"}));
    EXPECT_FALSE(view.programEnabled || port.PortOpen());

    types[1] = {1, 1, "One", ""}; // what noise is taken for; the answer itself is no known type now
    findReplies = {{{1, 1, 19, 7, 16, 213, 0}}};
    link.Activate();
    EXPECT_EQ(view.Rows[0], (PortRow{false, true, false, false, true, "--------------4103.16"}));
    EXPECT_EQ(view.Progress, std::vector<int>{0});
}

TEST_F(Search, CancelOrALostPortEndAnyWaitAtOnce) {
    types = {{1, 1, "One", ""}};
    rate = "2400,n,8,2"; // answered with an unknown type, so that a restart of 3 s follows
    for (const long when : {100, 205, 235, 265, 300, 1395, 3000}) {
        for (const bool cancel : {true, false}) {
            VekLink search(port, port, types, view);
            port.Present = {1};
            const long end = port.Now + when;
            port.At(when, [&] {
                search.search_for_vek(); // ignored while another runs
                EXPECT_TRUE(search.Busy());
                cancel ? search.Cancel() : port.Vanish();
            });
            search.search_for_vek();
            EXPECT_EQ(port.Now, end);
            EXPECT_FALSE(port.PortOpen() || search.Busy());
            EXPECT_EQ(view.Rows[0].blanking, cancel) << "a lost port is a row without a device";
            EXPECT_EQ(view.Rows[0].type, cancel ? "" : "--------------");
            view.Rows[0].type = "";
        }
    }
    EXPECT_EQ(view.Boxes, "");
}
