// A programming link to a scripted Vekule on COM1.
#pragma once

#include "link/Packets.h"
#include "link/RecordingOutcomes.h"
#include "link/VekLink.h"

namespace vek::test {

class LinkOutcomesOfTest : public RecordingOutcomes<LinkOutcomes>, public ProgrammingOutcomes {
  public:
    std::string Percentages; ///< each followed by a blank
    int YesAnswers = 0;      ///< to questions to come

    void Progress(DownloadProgress progress) override { Percentages += PercentText(progress) + ' '; }
    Task<bool> WantsAnother() override {
        Boxes += "another?;";
        co_return YesAnswers-- > 0;
    }
};

class LinkFixture : public testing::Test {
  protected:
    LinkFixture() {
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

} // namespace vek::test
