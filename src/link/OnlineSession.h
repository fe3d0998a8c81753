// Hearing the configuration while it is edited: the main window's connection to a Matrix Vek, and the volume
// and route commands that it sends there.
#pragma once

#include "base/Task.h"
#include "link/DeviceTypes.h"
#include "link/Exchange.h"
#include "link/Outcomes.h"
#include "link/Packets.h"
#include "model/Config.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace vek {

/// Which controls give the levels that are sent.
enum class LevelSource : int {
    InputTrims = 0,  ///< the selected input's trim, on every output
    OutputTrims = 1, ///< the same with each output's trim
    Level = 2,       ///< the current output alone, at its level
};

/// All that the session reads. It is read when a packet is built, so that a packet always carries what is
/// shown at that moment. Inputs and outputs 0 … 7, levels in dB.
class OnlineInputs {
  public:
    virtual ~OnlineInputs() = default;

    /// The input listened to.
    virtual std::size_t OnlineInput() const = 0;
    virtual bool MutedOutput(std::size_t output) const = 0;
    virtual LevelSource LevelView() const = 0;
    /// The output being edited, and its level in the current mode.
    virtual std::size_t CurrentOutput() const = 0;
    virtual float LevelTrim1() const = 0;
    virtual float InputLevelTrim(std::size_t input) const = 0;
    virtual float OutputLevelTrim(std::size_t output) const = 0;
    virtual float OnlineLevelOffset() const = 0;
    /// Nothing is to be louder than its maximum level, nor to become louder at once.
    virtual bool SafeLevels() const = 0;
    /// Of the output in the current mode.
    virtual float MaximumLevel(std::size_t output) const = 0;
};

class OnlineOutcomes : public LinkOutcomes {
  public:
    /// IsOnline() is true. The session goes on when the user has taken note of it.
    virtual Task<> WentOnline() = 0;
    /// The port is closed, also when it was never online.
    virtual void Disconnected() = 0;

    /// Commands for all outputs follow.
    virtual void PassBegins() = 0;
    /// A command that is about to be sent: output and input 0 … 7, level in dB.
    virtual void SendingVolume(int output, float level) = 0;
    virtual void SendingRoute(int output, int input) = 0;

    // Every packet, those of a search included.
    virtual void Sending(std::span<const std::uint8_t> packet) = 0;
    /// The reply to it; empty when none came in time.
    virtual void Replied(std::span<const std::uint8_t> reply) = 0;
};

/// What is known of an output of the device since the session began.
struct OutputTruth {
    std::optional<float> Confirmed; ///< the level that the device acknowledged last, dB
    std::optional<float> Sent;      ///< the level that was sent last
    bool Pending = false;           ///< its answer is waited for

    /// 0 … 7, of the route that the device acknowledged last; nothing after a failure.
    std::optional<std::size_t> Input;

    // How the last level and the last route came to nothing; empty when the device acknowledged them.
    std::optional<FailureKind> Failed;
    std::optional<FailureKind> RouteFailed;
};

/// One main window's online connection. Its procedures are tasks, of which one runs at a time. What is wanted
/// meanwhile is remembered; whoever runs the tasks runs Serve() when something is. So after the last of any
/// number of wishes every output has been sent the level shown.
///
/// A port that goes away ends the session: the failure of the running command is told once, and the session
/// disconnects. Destroying a task ends the conversation at once, without a message.
class OnlineSession {
  public:
    /// All must outlive this object.
    OnlineSession(SerialControl& port, OneShotTimer& timer, const DeviceTypeList& types,
                  const OnlineInputs& inputs, OnlineOutcomes& outcomes);

    bool IsOnline() const { return online_; }

    // Offline.

    /// Scans COM1 to COM4. Every port is closed afterwards.
    Task<> Online_search_for_vek();
    /// Goes online on the port of the row (0 … 3), or disconnects when no Matrix Vek answers there.
    Task<> ChoosePort(std::size_t row);

    // Wishes; none but a disconnection while offline.

    void WantLevels() { levelsWanted_ = online_; }
    void WantRoutes() { routesWanted_ = online_; }
    /// Routes even if the device should have them.
    void WantAllAgain() { routesWanted_ = againWanted_ = online_; }
    /// Levels before anything else; what fails is told when all have been sent.
    void WantMutes() { mutesWanted_ = online_; }
    void WantDisconnect() { disconnectWanted_ = true; }
    /// Wants to disconnect when the port of the session has gone away unnoticed; for a periodic look.
    void LookForLostPort();
    bool Wanting() const { return disconnectWanted_ || mutesWanted_ || routesWanted_ || levelsWanted_; }

    /// Fulfils the wishes, also those that come meanwhile. Throws OverflowError when a level does not fit the
    /// volume chip's register: that packet and those after it are not sent; other wishes stay.
    Task<> Serve();
    /// Restarts the unit when online, and closes the port. Ended in between, it leaves the session offline,
    /// too.
    Task<> Disconnect();
    /// Sends the unit its restart without waiting for anything: the program ends before events run again.
    void RestartBlindly();

    // What the device was sent, and what it said to that.

    const OutputTruth& TruthOf(std::size_t output) const { return truths_[output]; }
    /// The level that the controls ask for, with safe levels no more than the maximum.
    float WantedLevel(std::size_t output) const;
    /// The input that all outputs were sent; nothing before, and while they are sent another one.
    std::optional<std::size_t> RoutedInput() const { return LastRoutedInput_; }
    /// The device has left a whole pass unanswered.
    bool Unanswered() const { return unanswered_ >= static_cast<int>(outputCount); }
    /// Levels or routes were sent: the device does not play any more as it was programmed.
    bool Touched() const { return touched_; }
    /// The session ends, but the device did not acknowledge the restart.
    bool RestartFailed() const { return restartFailed_; }

  private:
    class GoingOffline;

    // The connection.
    Task<PortFinding> OnlineFind_vek(bool restart);
    Task<bool> OnlineRestart_unit();
    Task<ByteVector> Request(std::span<const std::uint8_t> packet, std::size_t replyLength);

    // The commands.
    Task<> ApplyOnlineLevels();
    Task<> SendMutes();
    Task<> SendRoutes();
    Task<std::optional<Failure>> SendVolume(std::size_t output, float level);
    Task<std::optional<Failure>> SendRoute(std::size_t output, std::size_t input);
    Task<std::optional<Failure>> SendPacket(OnlinePacket packet, FailureKind noReply, FailureKind refused);
    float LevelOf(std::size_t output) const;
    float NextLevel(std::size_t output, float wanted) const;
    bool SomethingElseFirst() const { return disconnectWanted_ || mutesWanted_; }

    Exchange exchange_;
    const DeviceTypeList& types_;
    const OnlineInputs& inputs_;
    OnlineOutcomes& outcomes_;
    std::optional<std::size_t> LastRoutedInput_; ///< nothing until all outputs were routed to one input
    bool online_ = false;
    bool levelsWanted_ = false;
    bool routesWanted_ = false;
    bool disconnectWanted_ = false;
    bool mutesWanted_ = false;
    bool againWanted_ = false;
    std::array<OutputTruth, outputCount> truths_ = {};
    /// The lowest level that an output may have at the moment, from which it may rise.
    std::array<float, outputCount> lowest_ = {};
    int unanswered_ = 0;        ///< packets one after the other
    bool lossReported_ = false; ///< the user knows that the port is gone
    bool touched_ = false;
    bool restartFailed_ = false;
};

} // namespace vek
