// Going online, being heard and disconnecting, whatever the device and the plug do: after the last of any
// wishes every output has been sent its level and its route as they are shown, a lost port is told of once,
// and in the end the port is closed.
#include "Conversation.h"

#include "base/Errors.h"
#include "link/OutcomeTexts.h"
#include "support/ShownLevels.h"

#include <limits>

using namespace vek;
using namespace vek::test;

namespace {

constexpr std::size_t portsOfKind = 8; ///< inputs, outputs

/// What is shown and what of it was heard.
class OnlineWindow : public OnlineOutcomes, public ShownLevels {
  public:
    explicit OnlineWindow(const SerialControl& used) : port(used) {}

    bool Overflowed = false; ///< a level shown cannot be sent

    /// Some level gets another value, or another level is the one that is heard.
    void EditLevel(int kind, std::size_t which, std::uint8_t value) {
        ++edits;
        Overflowed = false;
        const float edited = value == 0 ? std::numeric_limits<float>::infinity()
                                        : static_cast<float>(static_cast<std::int8_t>(value)) / 2;
        which %= portsOfKind;
        switch (kind) {
        case 0:
            inputTrims.at(which) = edited;
            break;
        case 1:
            outputTrims.at(which) = edited;
            muted.at(which) = value % 2 != 0;
            break;
        default:
            source = static_cast<LevelSource>(value % 3);
            currentOutput = which;
            level = offset = edited;
            break;
        }
    }
    void SelectInput(std::size_t selected) { input = selected % portsOfKind; }

    void Sent(const ByteVector& packet) {
        if (packet[0] == 'V')
            heardEdits.at(packet[1]) = edits;
        if (packet[0] == 'M')
            routes.at(packet[1]) = packet[2];
    }
    /// All that is shown was sent since the session went online.
    bool IsHeard() const {
        const auto isLatest = [this](int edit) { return edit == edits; };
        const auto isSelected = [this](std::size_t route) { return route == input; };
        return std::ranges::all_of(heardEdits, isLatest) && std::ranges::all_of(routes, isSelected);
    }

    void PortSearched(std::size_t, const PortFinding&) override { Require(false); }
    Task<> Failed(Failure failure) override {
        Require(!TextOf(failure).Text.empty());
        if (!port.PortOpen())
            Require(++lossesTold == 1);
        co_return;
    }
    Task<> WentOnline() override {
        heardEdits.fill(-1);
        routes.fill(portsOfKind);
        co_return;
    }
    void Disconnected() override {
        Require(!port.PortOpen());
        lossesTold = 0;
    }
    void PassBegins() override {}
    void SendingVolume(int output, float sent) override { Require(!VolumeLine(output, sent).empty()); }
    void SendingRoute(int output, int routed) override { Require(!RouteLine(output, routed).empty()); }
    void Sending(std::span<const std::uint8_t> packet) override { Require(!packet.empty()); }
    void Replied(std::span<const std::uint8_t>) override {}

  private:
    const SerialControl& port;
    int edits = 0;
    /// Of each output: how many there were when it was sent its level.
    std::array<int, portsOfKind> heardEdits = {};
    std::array<std::size_t, portsOfKind> routes = {}; ///< of each output
    int lossesTold = 0;
};

/// The window and the user, who closes it at the end of the input or before.
class Online {
  public:
    explicit Online(InputBytes& bytes) : input(bytes) {
        port.OnSent = [this](const ByteVector& sent) {
            Require(IsOnlinePacket(port.Rate, sent));
            window.Sent(sent);
        };
        port.OnUser = [this](int kind, int amount) { Do(kind, static_cast<std::size_t>(amount)); };
    }

    void Run() {
        while (!closing && !input.UsedUp()) {
            port.Run(running, session.ChoosePort(input.Next() % portCount));
            session.WantRoutes();
            while (!closing && session.IsOnline() && GoOn())
                ;
        }
        if (session.IsOnline())
            port.Run(running, session.Disconnect());
        Require(!session.IsOnline() && !port.PortOpen());
    }

  private:
    void Do(int kind, std::size_t amount) {
        switch (kind) {
        case 0:
        case 1:
        case 2:
            window.EditLevel(kind, amount, input.Next());
            session.WantLevels();
            break;
        case 3:
            window.SelectInput(amount);
            session.WantRoutes();
            break;
        case 4:
            session.WantDisconnect();
            break;
        case 5:
            session.LookForLostPort();
            if (amount % 4 == 1)
                session.WantMutes();
            else if (amount % 4 == 2)
                session.WantAllAgain();
            window.safe = amount % 4 == 3;
            break;
        default:
            closing = true;
            running.Cancel();
            break;
        }
    }

    /// The next thing that happens online; false when nothing will.
    bool GoOn() {
        if (session.Wanting())
            Serve();
        else if (!port.Step()) {
            if (input.UsedUp())
                return false;
            port.DoStep();
        }
        return true;
    }

    void Serve() {
        try {
            port.Run(running, session.Serve());
            Require(closing || !session.Wanting());
            Require(closing || !session.IsOnline() || window.Overflowed || window.IsHeard());
        } catch (const OverflowError&) {
            window.Overflowed = true;
        }
    }

    InputBytes& input;
    FuzzedPort port{input};
    OnlineWindow window{port};
    const DeviceTypeList types = {{29, matrixVekReply, "Matrix Vek", ""}, {9, 19, "Relay 4 Vek", ""}};
    OnlineSession session{port, port, types, window, window};
    bool closing = false;
    RunningTask running;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    InputBytes input(data, size);
    Online(input).Run();
    return 0;
}
