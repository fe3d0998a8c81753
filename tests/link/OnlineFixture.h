// An online session with a scripted Matrix Vek on COM1.
#pragma once

#include "link/RecordingOutcomes.h"
#include "support/OnlinePackets.h"
#include "support/ShownLevels.h"

namespace vek::test {

/// The window of the session: what it shows and what it was told.
class OnlineWindow : public RecordingOutcomes<OnlineOutcomes>, public ShownLevels {
  public:
    bool shownOnline = false;
    std::string lines;     ///< the diagnostic lines
    std::string exchanged; ///< packets and replies

    Task<> WentOnline() override {
        shownOnline = true;
        Boxes += "online;";
        co_return;
    }
    void Disconnected() override { shownOnline = false; }
    void PassBegins() override { lines += "\r\n"; }
    void SendingVolume(int output, float sent) override { lines += VolumeLine(output, sent); }
    void SendingRoute(int output, int routed) override { lines += RouteLine(output, routed); }
    void Sending(std::span<const std::uint8_t> packet) override { exchanged += PacketText(packet); }
    void Replied(std::span<const std::uint8_t> reply) override {
        exchanged += reply.empty() ? "none, " : std::to_string(reply[0]) + ", ";
    }
};

class OnlineFixture : public testing::Test {
  public:
    OnlineFixture() {
        port.Present = {1};
        port.OnOutput = [this](const ByteVector& packet) {
            packets += PacketText(packet);
            const bool find = packet.size() == onlineFindRequest.size();
            const auto reply = Next(replies, find ? ByteVector{39, 2, 5, 209} : ByteVector{240});
            if (reply)
                port.Reply(delay, *reply);
        };
    }

    // What the user does. During a wait it is remembered, otherwise it is done when these return.

    void Search() { port.Run(running, session.Online_search_for_vek()); }
    void ChoosePort(std::size_t row = 0) { port.Run(running, session.ChoosePort(row)); }
    void Levels() { Wish(&OnlineSession::WantLevels); }
    void Routes() { Wish(&OnlineSession::WantRoutes); }
    void Disconnect() { Wish(&OnlineSession::WantDisconnect); }
    void Wish(void (OnlineSession::*wish)()) {
        (session.*wish)();
        if (!running.Running() && session.Wanting())
            port.Run(running, session.Serve());
    }

    /// Goes online on COM1 and forgets how.
    void GoOnline() {
        ChoosePort();
        ASSERT_TRUE(session.IsOnline());
        Forget();
    }
    void Forget() {
        view.Boxes.clear();
        view.lines.clear();
        view.exchanged.clear();
        packets.clear();
        port.Forget();
    }

    ScriptedPort port;
    OnlineWindow view;
    DeviceTypeList types = {{29, 39, "Matrix Vek", ""}, {9, 19, "Relay 4 Vek", ""}};
    OnlineSession session{port, port, types, view, view};
    RunningTask running;

    std::string packets; ///< sent since Forget()
    long delay = 1;      ///< of each reply, ms
    Replies replies;     ///< when used up, a Matrix Vek that accepts everything
};

} // namespace vek::test
