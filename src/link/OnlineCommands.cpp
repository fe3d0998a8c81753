// The volume and route commands of an online session.
#include "link/OnlineSession.h"

namespace vek {

namespace {

constexpr const char* lineBreak = "\r\n";

/// What a muted output is sent, in dB.
constexpr float mutedLevel = -96.0F;

} // namespace

void OnlineSession::Log(const std::string& text) {
    if (view_.Text2Visible())
        view_.AppendText2(text);
}

void OnlineSession::SendCommand(const CommandPacket& packet, const std::string& name) {
    const ByteVector reply = Request(packet, onlineReplyLength);
    if (exchange_.Cancelled())
        return;
    const bool answered = reply.size() == onlineReplyLength;
    if (answered && IsAccepted(reply))
        return;
    if (!exchange_.PortOpen()) {
        lossReported_ = true;
        disconnectWanted_ = true;
    }
    std::string text = answered ? "Reply ERROR to " : "Reply fail to ";
    text += name;
    view_.ErrorMessage(errorTitle, text);
}

void OnlineSession::SendVolume(std::size_t output, float level) {
    const int number = static_cast<int>(output);
    Log(VolumeLine(number, level));
    SendCommand(VolumePacket(number, VolumeRegister(level)), "Volume");
}

void OnlineSession::SendRoute(std::size_t output, std::size_t input) {
    Log(RouteLine(static_cast<int>(output), static_cast<int>(input)));
    SendCommand(RoutePacket(static_cast<int>(output), static_cast<int>(input)), "Matrix");
}

float OnlineSession::LevelOf(std::size_t output) const {
    switch (LevelView) {
    case LevelSource::InputTrims:
        if (MutedOutputs[output])
            return mutedLevel;
        return levels_.InputLevelTrim(OnlineInput) + levels_.OnlineLevelOffset();
    case LevelSource::OutputTrims: {
        if (MutedOutputs[output])
            return mutedLevel;
        const float level = levels_.OutputLevelTrim(output) + levels_.OnlineLevelOffset();
        return level + levels_.InputLevelTrim(OnlineInput);
    }
    case LevelSource::Level: {
        // Only the output being edited is heard, muted or not.
        if (output != levels_.CurrentOutput())
            return mutedLevel;
        const float level = levels_.OutputLevelTrim(output) + levels_.LevelTrim1();
        return level + levels_.InputLevelTrim(OnlineInput);
    }
    }
    return mutedLevel;
}

void OnlineSession::LevelPass() {
    levelsWanted_ = false;
    Log(lineBreak);
    for (std::size_t output = 0; output < outputCount; ++output) {
        // Routes bring their own application of the levels.
        if (disconnectWanted_ || routesWanted_ || exchange_.Cancelled())
            return;
        SendVolume(output, LevelOf(output));
    }
}

void OnlineSession::RoutePass() {
    routesWanted_ = false;
    const std::size_t input = OnlineInput;
    if (LastRoutedInput_ != input) {
        // Until all eight are through, the outputs may be on different inputs.
        LastRoutedInput_.reset();
        Log(lineBreak);
        for (std::size_t output = 0; output < outputCount; ++output) {
            if (disconnectWanted_ || exchange_.Cancelled() || (routesWanted_ && OnlineInput != input))
                return;
            SendRoute(output, input);
        }
    }
    LastRoutedInput_ = input;
    levelsWanted_ = true;
}

} // namespace vek
