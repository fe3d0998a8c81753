// A conversation that an input tells: what the device answers and when, which ports there are, when one is
// pulled out, and what the user does meanwhile.
#pragma once

#include "Require.h"

#include "link/DeviceTypes.h"
#include "link/Packets.h"
#include "support/ScriptedPort.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <span>

namespace vek::test {

/// The bytes of an input one after the other.
class InputBytes {
  public:
    InputBytes(const std::uint8_t* data, std::size_t size) : rest(data, size) {}

    bool UsedUp() const { return rest.empty(); }
    /// 0 when they are used up.
    std::uint8_t Next() { return UsedUp() ? std::uint8_t{0} : Take(1).front(); }
    /// As many as there are.
    ByteVector Take(std::size_t count) {
        const auto taken = rest.first(std::min(count, rest.size()));
        rest = rest.subspan(taken.size());
        return {taken.begin(), taken.end()};
    }

  private:
    std::span<const std::uint8_t> rest;
};

/// A port, its device and its user. They do the input's next steps whenever something is sent, up to the
/// first that is the device's, and one when told to. A step is a byte, its kind in the lower half and an
/// amount in the upper one, and what the kind needs.
class FuzzedPort : public ScriptedPort {
  public:
    explicit FuzzedPort(InputBytes& bytes) : input(bytes) {
        SendTime = input.Next() % 16;
        OnOutput = [this](const ByteVector& sent) {
            OnSent(sent);
            while (answersToCome == 0 && !DoStep())
                ;
            if (answersToCome > 0) {
                --answersToCome;
                Reply(1, answer);
            }
        };
    }

    /// Sees what is sent.
    std::function<void(const ByteVector& sent)> OnSent;
    /// Does a user's step, of the kinds from 0 to 6, some time after it was met in the input.
    std::function<void(int kind, int amount)> OnUser;

    /// Does the next step; false when it was none of the device's.
    bool DoStep() {
        const int step = input.Next();
        const int kind = step % 16;
        const int amount = step / 16;
        switch (kind) {
        case 0:
            AnswerNext(amount, {});
            return true;
        case 1:
            AnswerNext(amount, {acceptedReply});
            return true;
        case 2:
            AnswerNext(amount, {acceptedReply, acceptedReply});
            return true;
        case 3:
            Reply(amount, FindReply(matrixVekReply, 2));
            return true;
        case 4: {
            const std::uint8_t type = input.Next();
            Reply(amount, FindReply(type, input.Next()));
            return true;
        }
        case 5:
            Reply(Delay(), input.Take(static_cast<std::size_t>(amount)));
            return true;
        case 6:
            Reply(Delay(), ByteVector(static_cast<std::size_t>(amount) * 300, input.Next()));
            return true;
        case 7:
            At(Delay(), [this] {
                if (PortOpen())
                    Vanish();
            });
            return false;
        case 8:
            Plug(amount);
            return false;
        default:
            At(Delay(), [this, kind, amount] { OnUser(kind - firstUserKind, amount); });
            return false;
        }
    }

  private:
    static constexpr int firstUserKind = 9;

    long Delay() { return 4L * input.Next(); }
    /// This sending and `more` after it.
    void AnswerNext(int more, ByteVector bytes) {
        answersToCome = more + 1;
        answer = std::move(bytes);
    }
    static ByteVector FindReply(std::uint8_t type, std::uint8_t version) {
        ByteVector reply = {type, version, 5};
        reply.push_back(
            static_cast<std::uint8_t>(255 - std::accumulate(reply.begin(), reply.end(), 0) % 256));
        return reply;
    }
    /// The ports that can be opened from now on, one for each bit.
    void Plug(int ports) {
        constexpr std::array refusals = {OpenFailure::NotThere, OpenFailure::NotPermitted,
                                         OpenFailure::InUse};
        Refusal = refusals.at(input.Next() % refusals.size());
        Present.clear();
        for (int port = 1; port <= static_cast<int>(portCount); ++port)
            if ((ports >> (port - 1)) % 2 != 0)
                Present.insert(port);
    }

    InputBytes& input;
    int answersToCome = 0;
    ByteVector answer;
};

// What may be sent.

inline bool ChecksOut(const ByteVector& bytes) {
    return (std::accumulate(bytes.begin(), bytes.end(), 0) + 1) % 256 == 0;
}

/// By a programming link under these settings.
inline bool IsLinkPacket(const std::string& settings, const ByteVector& bytes) {
    constexpr std::size_t blockLength = 11;
    if (settings == "9600,e,8,1")
        return bytes == ByteVector{255} || (bytes.size() == blockLength && ChecksOut(bytes));
    if (bytes.size() != 1)
        return false;
    if (settings == "9600,o,8,1")
        return bytes[0] == 17 || bytes[0] == 51;
    if (settings == "110,n,8,2")
        return bytes[0] == 0;
    return settings.ends_with(",n,8,2") &&
           (bytes[0] == 255 ||
            std::string_view("SETVK").find(static_cast<char>(bytes[0])) != std::string_view::npos);
}

/// By an online session.
inline bool IsOnlinePacket(const std::string& settings, const ByteVector& bytes) {
    if (settings != "9600,n,8,2")
        return false;
    if (bytes == ByteVector{'D', 'i', 'R', 'e', 'C', 't'})
        return true;
    if (bytes.size() != 4 || !ChecksOut(bytes))
        return false;
    const auto isPort = [](std::uint8_t number) { return number < 8; };
    switch (bytes[0]) {
    case 'R':
        return bytes[1] == 255 && bytes[2] == 255;
    case 'M':
        return isPort(bytes[1]) && isPort(bytes[2]);
    case 'V':
        return isPort(bytes[1]);
    default:
        return false;
    }
}

} // namespace vek::test
