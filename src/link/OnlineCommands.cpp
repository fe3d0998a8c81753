// The volume and route commands of an online session.
#include "link/OnlineSession.h"

namespace vek {

namespace {

constexpr const char* lineBreak = "\r\n";

/// What a muted output is sent, in dB.
constexpr float mutedLevel = -96.0F;

} // namespace

void OnlineSession::Log(const std::string& text) {
    if (view.Text2Visible())
        view.AppendText2(text);
}

void OnlineSession::SendCommand(const CommandPacket& packet, const std::string& name) {
    const ByteVector reply = Request(packet, onlineReplyLength);
    if (exchange.Cancelled())
        return;
    const bool answered = reply.size() == onlineReplyLength;
    if (answered && IsAccepted(reply))
        return;
    if (!exchange.PortOpen()) {
        lossReported = true;
        disconnectWanted = true;
    }
    std::string text = answered ? "Reply ERROR to " : "Reply fail to ";
    text += name;
    view.ErrorMessage(errorTitle, text);
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
        return levels.InputLevelTrim(OnlineInput) + levels.OnlineLevelOffset();
    case LevelSource::OutputTrims: {
        if (MutedOutputs[output])
            return mutedLevel;
        const float level = levels.OutputLevelTrim(output) + levels.OnlineLevelOffset();
        return level + levels.InputLevelTrim(OnlineInput);
    }
    case LevelSource::Level: {
        // Only the output being edited is heard, muted or not.
        if (output != levels.CurrentOutput())
            return mutedLevel;
        const float level = levels.OutputLevelTrim(output) + levels.LevelTrim1();
        return level + levels.InputLevelTrim(OnlineInput);
    }
    }
    return mutedLevel;
}

void OnlineSession::LevelPass() {
    levelsWanted = false;
    Log(lineBreak);
    for (std::size_t output = 0; output < outputCount; ++output) {
        // Routes bring their own application of the levels.
        if (disconnectWanted || routesWanted || exchange.Cancelled())
            return;
        SendVolume(output, LevelOf(output));
    }
}

void OnlineSession::RoutePass() {
    routesWanted = false;
    const std::size_t input = OnlineInput;
    if (LastRoutedInput != input) {
        // Until all eight are through, the outputs may be on different inputs.
        LastRoutedInput.reset();
        Log(lineBreak);
        for (std::size_t output = 0; output < outputCount; ++output) {
            if (disconnectWanted || exchange.Cancelled() || (routesWanted && OnlineInput != input))
                return;
            SendRoute(output, input);
        }
    }
    LastRoutedInput = input;
    levelsWanted = true;
}

} // namespace vek
