// The main window's side of the online session: its controls are read and driven here.
#pragma once

#include "device/EditorServices.h"
#include "link/OnlineSession.h"

#include <QObject>

#include <memory>

class QTabWidget;

namespace vek {

class LevelTrim;
class ModelView;
class OnlinePage;
class OnlineStrip;
class PortRows;
class PortTurns;
class TrimPage;
class WindowMessages;

/// What the session reads and drives; owned by the window.
struct OnlineParts {
    QTabWidget& SSTab1;
    OnlinePage& Page;
    OnlineStrip& Strip;
    LevelTrim& Level;
    TrimPage& InputTrims;
    TrimPage& OutputTrims;
    const ModelView& View;
};

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

    /// Sends the levels that are shown; nothing while offline.
    void LevelsChanged();

    /// A click into the text of an input trim: listens to that input.
    void SelectInput(std::size_t input);

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

  private:
    void PortSearched(std::size_t row, const PortFinding& finding) override;
    Task<> Failed(Failure failure) override;
    Task<> WentOnline() override;
    void Disconnected() override;
    void PassBegins() override;
    void SendingVolume(int output, float level) override;
    void SendingRoute(int output, int input) override;

    std::size_t OnlineInput() const override;
    bool MutedOutput(std::size_t output) const override;
    LevelSource LevelView() const override { return levelView_; }
    std::size_t CurrentOutput() const override;
    float LevelTrim1() const override;
    float InputLevelTrim(std::size_t input) const override;
    float OutputLevelTrim(std::size_t output) const override;
    float OnlineLevelOffset() const override;

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
    void Converse(Task<> task);
    void Serve();
    PortRows& Ports() const;

    OnlineParts parts_;
    PortTurns& turns_;
    WindowMessages& messages_;
    std::unique_ptr<SerialControl> OnlineMSComm_;
    std::unique_ptr<OneShotTimer> OnlineTimer_;
    OnlineSession session_;
    LevelSource levelView_ = LevelSource::InputTrims;
    bool closing_ = false;
    bool silent_ = false;
    bool asking_ = false; ///< the conversation waits for the user
    RunningTask conversation_;
};

} // namespace vek
