// The main window's side of the online session: its controls are read and driven here.
#pragma once

#include "device/EditorServices.h"
#include "device/OnlineParts.h"
#include "device/OnlineTranscript.h"
#include "device/OnlineTruth.h"
#include "link/OnlineSession.h"

#include <QObject>

#include <memory>

class QAction;

namespace vek {

class PortRows;
class PortTurns;
class WindowMessages;

/// The window gets the action `MuteAllOutputs`, which is there while online.
class OnlineControl : public QObject, private OnlineOutcomes, private OnlineInputs {
    Q_OBJECT

  public:
    /// All must outlive this object.
    OnlineControl(const OnlineParts& parts, const EditorServices& services, PortTurns& turns,
                  const DeviceTypeList& types, WindowMessages& messages);
    ~OnlineControl() override;

    bool IsOnline() const { return session_.IsOnline(); }

    /// The port of the session as the user reads it ("COM1 (ttyUSB0)").
    QString PortName() const;
    /// What the user has to know of the last session's device, empty for nothing.
    QString Remains() const { return remains_; }
    /// Newer things are known of the devices.
    void ForgetRemains() { remains_.clear(); }

    /// Sends the levels that are shown; nothing while offline.
    void LevelsChanged();

    /// A click into the text of an input trim: listens to that input.
    void SelectInput(std::size_t input);
    /// The window shows another mode.
    void ModeChosen() { truth_.Changed(); }

    /// Ends the conversation because the window closes. False while the unit is restarted first;
    /// ReadyToClose() follows then.
    bool Shutdown();
    /// The same when nobody is there to read messages.
    bool ShutdownSilently();
    /// For a program that is ended in the middle of whatever it does.
    void RestartBlindly() { session_.RestartBlindly(); }
    /// Ends the session as its button does.
    void Disconnect();

    /// For a periodic look whether the adapter is still there.
    void CheckPort();

  Q_SIGNALS:
    /// IsOnline() has changed, or the pages that may be shown.
    void OnlineChanged();
    /// The unit has been restarted after Shutdown(), or did not answer.
    void ReadyToClose();

  protected:
    /// Other windows, boxes and menus keep keys from the window; the one that mutes has to come through.
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void PortSearchBegins(std::size_t row) override { searchedRow_ = row; }
    void Searching(const SearchStep& step) override;
    void PortSearched(std::size_t row, const PortFinding& finding) override;
    Task<> Failed(Failure failure) override;
    Task<> WentOnline() override;
    void Disconnected() override;
    void PassBegins() override;
    void SendingVolume(int output, float level) override;
    void SendingRoute(int output, int input) override;
    void Sending(std::span<const std::uint8_t> packet) override;
    void Replied(std::span<const std::uint8_t> reply) override;

    std::size_t OnlineInput() const override;
    bool MutedOutput(std::size_t output) const override;
    LevelSource LevelView() const override { return levelView_; }
    std::size_t CurrentOutput() const override;
    float LevelTrim1() const override;
    float InputLevelTrim(std::size_t input) const override;
    float OutputLevelTrim(std::size_t output) const override;
    float OnlineLevelOffset() const override;
    bool SafeLevels() const override;
    float MaximumLevel(std::size_t output) const override;

    void SayStillPlaying() const;
    void Connect();
    void Search();
    Task<> SearchAllPorts();
    void Choose(std::size_t row);
    Task<> GoOnline(std::size_t row);
    void RouteClicked();
    void TabChanged();
    void FollowTab();
    void UpdateTabs();
    void ShowConnection();
    void RoutesChanged();
    void MuteAll();
    void SendAllAgain();
    void SaveTranscript();
    void Tell(const QString& lines);
    void Converse(Task<> task);
    void Serve();
    PortRows& Ports() const;

    OnlineParts parts_;
    PortTurns& turns_;
    WindowMessages& messages_;
    std::unique_ptr<SerialControl> OnlineMSComm_;
    std::unique_ptr<OneShotTimer> OnlineTimer_;
    OnlineSession session_;
    OnlineTruth truth_;
    OnlineTranscript transcript_;
    QAction* muteAll_;
    Dialogs& boxes_;
    QString remains_;
    LevelSource levelView_ = LevelSource::InputTrims;
    bool searching_ = false;
    std::size_t searchedRow_ = 0;
    bool closing_ = false;
    bool silent_ = false;
    bool asking_ = false; ///< the conversation waits for the user
    RunningTask conversation_;
};

} // namespace vek
