// An online session with a scripted Matrix Vek on COM1.
#pragma once

#include "link/OnlineSession.h"
#include "link/RecordingTable.h"

namespace vek::test {

class RecordingOnlineView : public RecordingTable<OnlineView>, public OnlineLevels {
  public:
    bool searchVisible = true, cancelVisible = false, offsetVisible = false, text2Visible = false;
    std::string text2;
    std::function<void(const std::string& text)> OnText2 = [](const std::string&) {};
    int tabUpdates = 0;
    std::size_t currentOutput = 0;
    float level = 0, offset = 0;
    std::array<float, 8> inputTrims = {}, outputTrims = {};

    void ShowOnlineSearch(bool visible) override { searchVisible = visible; }
    void ShowOnlineCancel(bool visible) override { cancelVisible = visible; }
    void ShowOnlineLevelOffset(bool visible) override { offsetVisible = visible; }
    void UpdateTabs() override { ++tabUpdates; }
    bool Text2Visible() const override { return text2Visible; }
    void AppendText2(const std::string& text) override {
        text2 += text;
        OnText2(text);
    }
    void Message(const std::string& title, const std::string& text) override { Box(title, text); }

    std::size_t CurrentOutput() const override { return currentOutput; }
    float LevelTrim1() const override { return level; }
    float InputLevelTrim(std::size_t input) const override { return inputTrims.at(input); }
    float OutputLevelTrim(std::size_t output) const override { return outputTrims.at(output); }
    float OnlineLevelOffset() const override { return offset; }
};

using OutputValues = std::array<int, 8>;

class OnlineFixture : public testing::Test {
  protected:
    OnlineFixture() {
        port.Present = {1};
        port.OnOutput = [this](const ByteVector& packet) {
            const bool find = packet.size() == onlineFindRequest.size();
            const auto reply = Next(replies, find ? ByteVector{39, 2, 5, 209} : ByteVector{240});
            if (reply)
                port.Reply(delay, *reply);
        };
    }
    /// Goes online on COM1 and forgets how.
    void GoOnline() {
        view.Rows[0].optionSelected = true;
        session.ChoosePort();
        ASSERT_TRUE(session.IsOnline());
        Forget();
    }
    void Forget() {
        view.Boxes.clear();
        view.text2.clear();
        port.Forget();
    }
    /// The packets sent from the nth on: "V0=210 M1=4 R ".
    std::string Packets(std::size_t first = 0) const {
        std::string text;
        for (std::size_t i = first; i < port.Sent.size(); ++i) {
            const auto byte = [&](std::size_t n) {
                return std::stoi(port.Sent[i].substr(3 * n), nullptr, 16);
            };
            text += static_cast<char>(byte(0));
            if (byte(0) != 'R')
                text += std::to_string(byte(1)) + '=' + std::to_string(byte(2));
            text += ' ';
        }
        return text;
    }
    std::string LastPackets(std::size_t count) const { return Packets(port.Sent.size() - count); }
    /// The same for a pass over all outputs.
    static std::string Pass(char letter, const OutputValues& values) {
        std::string text;
        for (std::size_t i = 0; i < values.size(); ++i)
            text += letter + std::to_string(i) + '=' + std::to_string(values.at(i)) + ' ';
        return text;
    }
    static std::string Pass(char letter, int value) {
        return Pass(letter, {value, value, value, value, value, value, value, value});
    }

    ScriptedPort port;
    RecordingOnlineView view;
    DeviceTypeList types = {{29, 39, "Matrix Vek", ""}, {9, 19, "Relay 4 Vek", ""}};
    OnlineSession session{port, port, types, view, view};

    long delay = 1;  ///< of each reply, ms
    Replies replies; ///< when used up, a Matrix Vek that accepts everything
};

} // namespace vek::test
