// A programming link to a scripted Vekule on COM1.
#pragma once

#include "link/Packets.h"
#include "link/RecordingTable.h"
#include "link/VekLink.h"

namespace vek::test {

class RecordingLinkView : public RecordingTable<VekLinkView> {
  public:
    std::string Percentages, Activities; ///< each followed by a blank
    std::vector<int> Progress;
    bool pleaseWait = false, programEnabled = true;
    int yesAnswers = 0; ///< to questions to come

    void EnableProgramVek(bool enabled) override { programEnabled = enabled; }
    void ShowPleaseWait(bool visible) override { pleaseWait = visible; }
    void SetLabel2(const std::string& percentage) override { Percentages += percentage + ' '; }
    void SetLabel3(const std::string& activity) override { Activities += activity + ' '; }
    void SetProgressBar1(int value) override { Progress.push_back(value); }
    bool AskYesNo(const std::string& title, const std::string& text) override {
        Box(title, text);
        return yesAnswers-- > 0;
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
        view.Boxes.clear();
    }
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
    RecordingLinkView view;
    DeviceTypeList types = {{29, 39, "Matrix Vek", ""}, {9, 19, "Relay 4 Vek", ""}};
    VekLink link{port, port, types, view};

    std::string rate = "9600,n,8,2";
    Replies findReplies;        ///< a Matrix Vek of version 2.5 when used up
    std::string commandReplies; ///< accepted when used up
};

} // namespace vek::test
