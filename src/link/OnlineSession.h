// Hearing the configuration while it is edited: the main window's connection to a Matrix Vek, and the volume
// and route commands that it sends there.
#pragma once

#include "link/DeviceTypes.h"
#include "link/Exchange.h"
#include "link/Packets.h"
#include "link/PortTable.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace vek {

/// The controls that give the levels, in dB. They are read when a packet is built, so that a packet always
/// carries what is shown at that moment.
class OnlineLevels {
  public:
    virtual ~OnlineLevels() = default;

    /// The output being edited, 0 … 7.
    virtual std::size_t CurrentOutput() const = 0;
    /// Level of the current output in the current mode.
    virtual float LevelTrim1() const = 0;
    /// Trim of an input or output, 0 … 7.
    virtual float InputLevelTrim(std::size_t input) const = 0;
    virtual float OutputLevelTrim(std::size_t output) const = 0;
    virtual float OnlineLevelOffset() const = 0;
};

/// What the online page shows. The table of ports is `Blanking`, `OnlinePort` and `VekType`.
class OnlineView : public PortTableView {
  public:
    virtual void ShowOnlineSearch(bool visible) = 0;
    /// `OnlineCancel`, the button "Disconnect".
    virtual void ShowOnlineCancel(bool visible) = 0;
    /// `OnlineLabel32` and `OnlineLevelOffset`.
    virtual void ShowOnlineLevelOffset(bool visible) = 0;
    /// Enables and disables the tabs and commands for IsOnline(), and sets LevelView from the tab shown. May
    /// call ApplyOnlineLevels and SendRoutes, as a change of the tab does.
    virtual void UpdateTabs() = 0;

    /// The diagnostic box.
    virtual bool Text2Visible() const = 0;
    /// Adds to its text and moves the caret to the end.
    virtual void AppendText2(const std::string& text) = 0;

    /// A box with an exclamation icon, or with none, and an OK button; returns when it is closed.
    virtual void ErrorMessage(const std::string& title, const std::string& text) = 0;
    virtual void Message(const std::string& title, const std::string& text) = 0;
};

/// Which controls give the levels that are sent.
enum class LevelSource : int {
    InputTrims = 0,  ///< the selected input's trim, on every output
    OutputTrims = 1, ///< the same with each output's trim
    Level = 2,       ///< the current output alone, at its level
};

/// One main window's online connection.
///
/// The operations may be called at any time, also from an event handled while another one waits for a reply.
/// Only one exchange is on the line at a time: a call made during a wait is remembered and served, after the
/// exchange that runs, by the operation that is already under way; the call itself returns at once. So after
/// the last of any number of calls every output has been sent the level shown.
///
/// A port that goes away ends the session: the failure of the running command is told once, and the session
/// disconnects.
class OnlineSession {
  public:
    /// All must outlive this object.
    OnlineSession(SerialControl& port, OneShotTimer& timer, const DeviceTypeList& types,
                  const OnlineLevels& levels, OnlineView& view);

    // State that the window keeps up to date, each before the operation that follows from it.
    std::size_t OnlineInput = 0; ///< the input selected with `RouteOption`, 0 … 7
    std::array<bool, 8> MutedOutputs = {};
    LevelSource LevelView = LevelSource::InputTrims;

    bool IsOnline() const { return online_; }

    /// Scans COM1 to COM4 and fills the table. Ignored while online or busy.
    void Online_search_for_vek();
    /// Goes online on the port that the user selected, or disconnects when no Matrix Vek answers there.
    /// Ignored while online or busy.
    void ChoosePort();
    /// Restarts the unit when online, closes the port and empties the table.
    void Disconnect();
    /// Disconnects when the port of the session has gone away unnoticed; for a periodic look.
    void DisconnectIfPortLost();

    /// Sends all eight outputs the levels of LevelView; nothing while offline. Throws OverflowError when a
    /// level does not fit the volume chip's register: that packet and those after it are not sent.
    void ApplyOnlineLevels();
    /// Routes all eight outputs to OnlineInput unless they are, then applies the levels. Throws as
    /// ApplyOnlineLevels does.
    void SendRoutes();

    /// Ends what runs at once and without a message: the window is closing. Nothing is sent until Shutdown.
    void Cancel() { exchange_.Cancel(); }
    /// True while an operation is under way; the window must not be deleted then.
    bool Busy() const { return busy_; }
    /// Disconnects for good, before the window closes; true when done. While an operation is under way it
    /// cancels that instead and returns false: call again when Busy() is false.
    bool Shutdown();

  private:
    // The connection.
    bool Online_set_active_port();
    std::uint32_t OnlineFind_vek(bool restart);
    bool OnlineRestart_unit();
    void GoOnline();
    void DisconnectNow();
    ByteVector Request(std::span<const std::uint8_t> packet, std::size_t replyLength);

    // The commands.
    void SendVolume(std::size_t output, float level);
    void SendRoute(std::size_t output, std::size_t input);
    void SendCommand(const CommandPacket& packet, const std::string& name);
    float LevelOf(std::size_t output) const;
    void LevelPass();
    void RoutePass();
    void Log(const std::string& text);

    // Serving what was called for, one after the other.
    void ServeUnlessBusy();
    void Serve();

    Exchange exchange_;
    const DeviceTypeList& types_;
    const OnlineLevels& levels_;
    OnlineView& view_;
    std::optional<std::size_t> LastRoutedInput_; ///< nothing until all outputs were routed to one input
    bool online_ = false;
    bool busy_ = false;
    bool levelsWanted_ = false;
    bool routesWanted_ = false;
    bool disconnectWanted_ = false;
    bool lossReported_ = false; ///< the user knows that the port is gone
};

} // namespace vek
