// A search of the four ports, the programming link's or the online session's, ends whatever the ports and the
// devices do: every port is told once, in order, and closed by then; the user may end it at any time.
#include "Conversation.h"

#include "link/OutcomeTexts.h"
#include "link/VekLink.h"
#include "support/ShownLevels.h"

using namespace vek;
using namespace vek::test;

namespace {

class SearchWindow : public OnlineOutcomes, public ShownLevels {
  public:
    explicit SearchWindow(const SerialControl& searched) : port(searched) {}

    std::size_t Rows = 0; ///< told

    void PortSearched(std::size_t row, const PortFinding& finding) override {
        Require(row == Rows++ && !port.PortOpen());
        Require(!(finding.Opened() ? TextOf(finding) : WhyNotOpened(finding)).empty());
    }
    Task<> Failed(Failure failure) override {
        Require(!TextOf(failure).Text.empty());
        co_return;
    }
    // A search goes nowhere near the rest.
    Task<> WentOnline() override {
        Require(false);
        co_return;
    }
    void Disconnected() override { Require(false); }
    void PassBegins() override { Require(false); }
    void SendingVolume(int, float) override { Require(false); }
    void SendingRoute(int, int) override { Require(false); }
    void Sending(std::span<const std::uint8_t> packet) override { Require(!packet.empty()); }
    void Replied(std::span<const std::uint8_t>) override {}

  private:
    const SerialControl& port;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr long longest = 120'000; // ms
    const DeviceTypeList types = {{29, matrixVekReply, "Matrix Vek", ""}, {9, 19, "Relay 4 Vek", ""}};
    InputBytes input(data, size);
    const bool online = input.Next() % 2 != 0;
    FuzzedPort port(input);
    SearchWindow window(port);
    RunningTask running;
    bool ended = false;
    port.OnSent = [&](const ByteVector& sent) {
        Require(online ? IsOnlinePacket(port.Rate, sent) : IsLinkPacket(port.Rate, sent));
    };
    port.OnUser = [&](int, int) {
        ended = true;
        running.Cancel();
    };
    if (online) {
        OnlineSession session(port, port, types, window, window);
        port.Run(running, session.Online_search_for_vek());
    } else {
        VekLink link(port, port, types, window);
        port.Run(running, link.search_for_vek());
    }
    Require(!port.PortOpen() && port.Now < longest && (ended || window.Rows == portCount));
    return 0;
}
