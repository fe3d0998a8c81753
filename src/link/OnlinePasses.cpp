// The volume and route commands of an online session.
#include "link/OnlineSession.h"

#include "model/Levels.h"

#include <algorithm>
#include <utility>

namespace vek {

namespace {

constexpr float steepestRise = 6.0F; // dB in a pass, with safe levels

std::optional<FailureKind> KindOf(const std::optional<Failure>& failure) {
    return failure ? std::optional(failure->Kind) : std::nullopt;
}

} // namespace

Task<std::optional<Failure>> OnlineSession::SendPacket(OnlinePacket packet, FailureKind noReply,
                                                       FailureKind refused) {
    const ByteVector reply = co_await Request(packet, onlineReplyLength);
    const bool answered = reply.size() == onlineReplyLength;
    if (answered && IsAccepted(reply))
        co_return std::nullopt;
    if (!exchange_.PortOpen())
        lossReported_ = disconnectWanted_ = true;
    co_return Failure{answered ? refused : noReply};
}

Task<std::optional<Failure>> OnlineSession::SendVolume(std::size_t output, float level) {
    const int number = static_cast<int>(output);
    outcomes_.SendingVolume(number, level);
    const OnlinePacket packet = VolumePacket(number, VolumeRegister(level));
    OutputTruth& truth = truths_[output];
    touched_ = true;
    truth.Sent = level;
    truth.Pending = true;
    const auto failure = co_await SendPacket(packet, FailureKind::VolumeNoReply, FailureKind::VolumeRefused);
    truth.Pending = false;
    truth.Failed = KindOf(failure);
    if (!failure)
        truth.Confirmed = level;
    // It may have been obeyed without an answer.
    lowest_[output] = failure ? std::min(lowest_[output], level) : level;
    co_return failure;
}

Task<std::optional<Failure>> OnlineSession::SendRoute(std::size_t output, std::size_t input) {
    const int number = static_cast<int>(output);
    outcomes_.SendingRoute(number, static_cast<int>(input));
    const OnlinePacket packet = RoutePacket(number, static_cast<int>(input));
    touched_ = true;
    const auto failure = co_await SendPacket(packet, FailureKind::RouteNoReply, FailureKind::RouteRefused);
    truths_[output].RouteFailed = KindOf(failure);
    truths_[output].Input = failure ? std::nullopt : std::optional(input);
    co_return failure;
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

float OnlineSession::WantedLevel(std::size_t output) const {
    const float level = LevelOf(output);
    return inputs_.SafeLevels() ? std::min(level, inputs_.MaximumLevel(output)) : level;
}

float OnlineSession::NextLevel(std::size_t output, float wanted) const {
    return inputs_.SafeLevels() ? std::min(wanted, lowest_[output] + steepestRise) : wanted;
}

Task<> OnlineSession::ApplyOnlineLevels() {
    outcomes_.PassBegins();
    bool rising = false;
    for (std::size_t output = 0; output < outputCount; ++output) {
        // Routes bring their own application of the levels.
        if (SomethingElseFirst() || routesWanted_)
            co_return;
        const float wanted = WantedLevel(output);
        const float level = NextLevel(output, wanted);
        const auto failure = co_await SendVolume(output, level);
        if (failure)
            co_await outcomes_.Failed(*failure);
        else
            rising = rising || level < wanted;
    }
    levelsWanted_ = levelsWanted_ || rising;
}

Task<> OnlineSession::SendMutes() {
    levelsWanted_ = false;
    outcomes_.PassBegins();
    std::optional<Failure> failed;
    bool rising = false;
    for (std::size_t output = 0; output < outputCount && !disconnectWanted_; ++output) {
        const float wanted = WantedLevel(output);
        const float level = NextLevel(output, wanted);
        const auto failure = co_await SendVolume(output, level);
        if (failure)
            failed = failure;
        else
            rising = rising || level < wanted;
    }
    levelsWanted_ = levelsWanted_ || rising;
    if (failed)
        co_await outcomes_.Failed(*failed);
}

Task<> OnlineSession::SendRoutes() {
    const std::size_t input = inputs_.OnlineInput();
    if (std::exchange(againWanted_, false) || LastRoutedInput_ != input) {
        // Until all eight are through, the outputs may be on different inputs.
        LastRoutedInput_.reset();
        outcomes_.PassBegins();
        for (std::size_t output = 0; output < outputCount; ++output) {
            if (mutesWanted_)
                routesWanted_ = true;
            if (SomethingElseFirst() || (routesWanted_ && inputs_.OnlineInput() != input))
                co_return;
            const auto failure = co_await SendRoute(output, input);
            if (failure)
                co_await outcomes_.Failed(*failure);
        }
    }
    LastRoutedInput_ = input;
    co_await ApplyOnlineLevels();
}

} // namespace vek
