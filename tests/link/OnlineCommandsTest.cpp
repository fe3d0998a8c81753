#include "link/OnlineFixture.h"

#include <gmock/gmock.h>

using namespace vek;
using namespace vek::test;

using OnlineCommands = OnlineFixture;
using testing::EndsWith;

TEST_F(OnlineCommands, LevelsOfEachView) {
    view.input = 1;
    view.muted[6] = true;
    view.inputTrims = {1, 2, 3, 4, 5, 6, 7, 8};
    view.outputTrims = {0, -1, -2, -3, -4, -5, -6, 6};
    view.offset = -10.5F;
    view.level = -20;
    view.currentOutput = 6;
    const std::pair<LevelSource, std::array<int, 8>> cases[] = {
        {LevelSource::InputTrims, {193, 193, 193, 193, 193, 193, 18, 193}},
        {LevelSource::OutputTrims, {193, 191, 189, 187, 185, 183, 18, 205}},
        {LevelSource::Level, {18, 18, 18, 18, 18, 18, 162, 18}},
    };
    Levels();
    EXPECT_EQ(packets, "") << "offline";
    GoOnline();
    for (const auto& [source, values] : cases) {
        Forget();
        view.source = source;
        Levels();
        EXPECT_EQ(packets, Pass('V', values));
    }
    view.outputTrims.fill(16777216.0F);
    view.offset = 1.0F; // lost in the first sum, which is formed in single precision
    view.inputTrims[1] = -16777216.0F;
    view.muted = {};
    view.source = LevelSource::OutputTrims;
    Levels();
    EXPECT_THAT(packets, EndsWith(Pass('V', 210)));
}

TEST_F(OnlineCommands, RoutesAreSentWhenTheInputChanged) {
    GoOnline();
    Routes();
    EXPECT_EQ(packets, Pass('M', 0) + Pass('V', 210)) << "none was routed yet";
    Forget();
    Routes();
    EXPECT_EQ(packets, Pass('V', 210));

    Forget();
    view.input = 4;
    view.source = LevelSource::Level;
    view.currentOutput = 2;
    view.level = -12;
    Routes();
    std::string lines = "\r\n";
    for (int output = 0; output < 8; ++output)
        lines += RouteLine(output, 4);
    lines += "\r\n";
    for (int output = 0; output < 8; ++output)
        lines += VolumeLine(output, output == 2 ? -12.0F : -96.0F);
    EXPECT_EQ(view.lines, lines);
    EXPECT_EQ(packets, Pass('M', 4) + Pass('V', {18, 18, 186, 18, 18, 18, 18, 18}));

    Disconnect();
    GoOnline();
    Routes();
    EXPECT_EQ(port.Sent.size(), 16U) << "the restarted unit may have forgotten its routes";
}

TEST_F(OnlineCommands, FailedRepliesAreToldAndTheNextOutputFollows) {
    for (const std::string name : {"Matrix", "Volume"}) {
        GoOnline();
        view.input = 1;
        if (name == "Volume")
            Routes();
        const long start = port.Now;
        Forget();
        replies = {{{240}}, std::nullopt, {{15}}, {{240, 240}}};
        Routes();
        EXPECT_EQ(view.Boxes, "Error!|Reply fail to " + name + ";Error!|Reply ERROR to " + name +
                                  ";Error!|Reply fail to " + name + ';');
        EXPECT_EQ(packets, (name == "Matrix" ? Pass('M', 1) : "") + Pass('V', 210));
        EXPECT_EQ(port.Now - start, 500 + static_cast<long>(port.Sent.size()) - 1);
        Disconnect();
    }
}

TEST_F(OnlineCommands, CallsDuringWaitsAreServedAfterwardsTogether) {
    GoOnline();
    delay = 100;
    for (const long when : {250, 350}) { // outputs 2 and 3 wait
        port.At(when, [this] {
            view.offset -= 2.5F;
            const std::size_t sent = port.Sent.size();
            Levels();
            EXPECT_EQ(port.Sent.size(), sent) << "one exchange at a time";
        });
    }
    Levels();
    EXPECT_EQ(packets, Pass('V', {210, 210, 210, 205, 200, 200, 200, 200}) + Pass('V', 200));
    EXPECT_EQ(view.Boxes, "");
    EXPECT_THAT(view.lines, testing::HasSubstr("\r\n\r\nV,0,200"));
}

TEST_F(OnlineCommands, AChangeOfInputOvertakesLevelsAndRoutes) {
    GoOnline();
    delay = 100;
    Routes();
    Forget();
    port.At(250, [&] { // during the third volume
        view.input = 2;
        Routes();
    });
    port.At(450, [&] { // during the second route: back to the input that the other outputs still have
        view.input = 0;
        Routes();
    });
    port.At(650, [&] { Routes(); }); // nothing new
    Levels();
    EXPECT_EQ(packets, "V0=210 V1=210 V2=210 M0=2 M1=2 " + Pass('M', 0) + Pass('V', 210));
    Forget();
    port.At(750, [&] { // during the last volume
        view.input = 5;
        view.inputTrims[5] = 3;
        Routes();
    });
    Levels();
    EXPECT_EQ(packets, Pass('V', 210) + Pass('M', 5) + Pass('V', 216));
}

TEST_F(OnlineCommands, DisconnectingDuringAWaitFollowsTheRunningExchange) {
    GoOnline();
    delay = 100;
    port.At(250, [&] {
        Levels();
        Disconnect();
        EXPECT_TRUE(session.IsOnline());
    });
    port.At(350, [&] { Levels(); }); // the restart waits
    Levels();
    EXPECT_EQ(packets, "V0=210 V1=210 V2=210 R ");
    EXPECT_FALSE(session.IsOnline() || port.PortOpen());
    EXPECT_EQ(view.Boxes, "");
}

TEST_F(OnlineCommands, MutesOvertakeEverythingAndTellFailuresAfterwards) {
    delay = 20;
    const auto muting = [this] {
        view.muted.fill(true);
        session.WantMutes();
    };
    const struct {
        std::function<void()> UnderWay;
        std::string Before; ///< the packets that were through or under way
        std::string After;
    } cases[] = {
        {[this] { Levels(); }, "V0=210 V1=210 V2=210 ", ""},
        {[this] { Routes(); }, "M0=1 M1=1 M2=1 ", Pass('M', 1) + Pass('V', 18)},
    };
    for (const auto& c : cases) {
        GoOnline();
        view.input = 1;
        view.muted = {};
        port.At(45, [&] {
            muting();
            replies = {std::nullopt}; // to the first mute
        });
        c.UnderWay();
        EXPECT_EQ(packets, c.Before + Pass('V', 18) + c.After);
        EXPECT_EQ(view.Boxes, "Error!|Reply fail to Volume;");
        EXPECT_TRUE(session.TruthOf(0).Failed.has_value() == c.After.empty() && !session.TruthOf(1).Failed);
        Disconnect();
    }
    view.muted = {};
    GoOnline();
    long pressed = 0;
    port.At(45, [&] {
        muting();
        pressed = port.Now;
    });
    Levels();
    EXPECT_LE(port.Now - pressed, 9 * delay);
}

TEST_F(OnlineCommands, SafeLevelsRiseSlowlyAndNeverBeyondTheMaximum) {
    view.safe = true;
    view.maximum = {-80, -10, -10, -10, -10, -10, -10, -10};
    view.source = LevelSource::OutputTrims;
    view.outputTrims = {0, -90.5F, -84, 0, 0, 0, 0, 0};
    view.muted = {false, false, false, true, true, true, true, true};
    GoOnline();
    Levels();
    EXPECT_EQ(packets, Pass('V', {30, 29, 30, 18, 18, 18, 18, 18}) +
                           Pass('V', {42, 29, 42, 18, 18, 18, 18, 18}) +
                           Pass('V', {50, 29, 42, 18, 18, 18, 18, 18}));
    Forget();
    view.outputTrims[2] = -70; // 14 dB more; not acknowledged where it may have been obeyed
    replies = {{{240}}, {{240}}, {{240}}, {{240}}, {{240}},     {{240}},
               {{240}}, {{240}}, {{240}}, {{240}}, std::nullopt};
    Levels();
    EXPECT_EQ(packets,
              Pass('V', {50, 29, 54, 18, 18, 18, 18, 18}) + Pass('V', {50, 29, 66, 18, 18, 18, 18, 18}));
    EXPECT_EQ(view.Boxes, "Error!|Reply fail to Volume;") << "what failed is not tried again";
    Forget();
    view.outputTrims[2] = -30;
    port.At(3, [this] { view.muted[2] = true, Levels(); });
    Levels();
    EXPECT_EQ(packets,
              Pass('V', {50, 29, 66, 18, 18, 18, 18, 18}) + Pass('V', {50, 29, 18, 18, 18, 18, 18, 18}))
        << "falls at once";
    Forget();
    view.safe = false;
    view.muted[2] = false;
    Levels();
    EXPECT_EQ(packets, Pass('V', {210, 29, 150, 18, 18, 18, 18, 18}));
}

TEST_F(OnlineCommands, WhatIsKnownOfTheDevice) {
    GoOnline();
    EXPECT_FALSE(session.TruthOf(0).Confirmed || session.TruthOf(0).Sent || session.RoutedInput());
    view.input = 3;
    replies = {{{15}}};
    Routes();
    EXPECT_EQ(session.RoutedInput(), 3U);
    EXPECT_EQ(session.TruthOf(0).RouteFailed, FailureKind::RouteRefused);
    EXPECT_FALSE(session.TruthOf(1).RouteFailed);
    EXPECT_THAT(view.exchanged, testing::StartsWith("M0=3 15, M1=3 240, M2=3 240, "));
    Forget();
    Wish(&OnlineSession::WantAllAgain);
    EXPECT_EQ(packets, Pass('M', 3) + Pass('V', 210));
    EXPECT_FALSE(session.TruthOf(0).RouteFailed);
    view.offset = -4;
    replies.assign(8, std::nullopt);
    port.At(1, [this] {
        EXPECT_TRUE(session.TruthOf(0).Pending);
        EXPECT_EQ(session.TruthOf(0).Sent, -4.0F);
    });
    Levels();
    EXPECT_TRUE(session.Unanswered());
    EXPECT_TRUE(session.TruthOf(7).Failed && !session.TruthOf(7).Pending);
    EXPECT_EQ(session.TruthOf(7).Confirmed, 0.0F);
    Levels();
    EXPECT_FALSE(session.Unanswered() || session.TruthOf(7).Failed);
}
