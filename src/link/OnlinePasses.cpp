// The volume and route commands of an online session.
#include "link/OnlineSession.h"

#include "model/Config.h"
#include "model/Levels.h"

namespace vek {

Task<> OnlineSession::SendPacket(OnlinePacket packet, FailureKind noReply, FailureKind refused) {
    const ByteVector reply = co_await Request(packet, onlineReplyLength);
    const bool answered = reply.size() == onlineReplyLength;
    if (answered && IsAccepted(reply))
        co_return;
    if (!exchange_.PortOpen())
        lossReported_ = disconnectWanted_ = true;
    const Failure failure = {answered ? refused : noReply};
    co_await outcomes_.Failed(failure);
}

Task<> OnlineSession::SendVolume(std::size_t output, float level) {
    const int number = static_cast<int>(output);
    outcomes_.SendingVolume(number, level);
    const OnlinePacket packet = VolumePacket(number, VolumeRegister(level));
    co_await SendPacket(packet, FailureKind::VolumeNoReply, FailureKind::VolumeRefused);
}

Task<> OnlineSession::SendRoute(std::size_t output, std::size_t input) {
    const int number = static_cast<int>(output);
    outcomes_.SendingRoute(number, static_cast<int>(input));
    const OnlinePacket packet = RoutePacket(number, static_cast<int>(input));
    co_await SendPacket(packet, FailureKind::RouteNoReply, FailureKind::RouteRefused);
}

float OnlineSession::LevelOf(std::size_t output) const {
    switch (inputs_.LevelView()) {
    case LevelSource::InputTrims:
        if (inputs_.MutedOutput(output))
            return mutedLevel;
        return inputs_.InputLevelTrim(inputs_.OnlineInput()) + inputs_.OnlineLevelOffset();
    case LevelSource::OutputTrims: {
        if (inputs_.MutedOutput(output))
            return mutedLevel;
        const float level = inputs_.OutputLevelTrim(output) + inputs_.OnlineLevelOffset();
        return level + inputs_.InputLevelTrim(inputs_.OnlineInput());
    }
    case LevelSource::Level: {
        // Only the output being edited is heard, muted or not.
        if (output != inputs_.CurrentOutput())
            return mutedLevel;
        const float level = inputs_.OutputLevelTrim(output) + inputs_.LevelTrim1();
        return level + inputs_.InputLevelTrim(inputs_.OnlineInput());
    }
    }
    return mutedLevel;
}

Task<> OnlineSession::ApplyOnlineLevels() {
    outcomes_.PassBegins();
    for (std::size_t output = 0; output < outputCount; ++output) {
        // Routes bring their own application of the levels.
        if (disconnectWanted_ || routesWanted_)
            co_return;
        co_await SendVolume(output, LevelOf(output));
    }
}

Task<> OnlineSession::SendRoutes() {
    const std::size_t input = inputs_.OnlineInput();
    if (LastRoutedInput_ != input) {
        // Until all eight are through, the outputs may be on different inputs.
        LastRoutedInput_.reset();
        outcomes_.PassBegins();
        for (std::size_t output = 0; output < outputCount; ++output) {
            if (disconnectWanted_ || (routesWanted_ && inputs_.OnlineInput() != input))
                co_return;
            co_await SendRoute(output, input);
        }
    }
    LastRoutedInput_ = input;
    co_await ApplyOnlineLevels();
}

} // namespace vek
