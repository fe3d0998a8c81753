// The main window's side of the online session: its controls are read and driven here.
#pragma once

#include "editor/EditorServices.h"
#include "link/OnlineSession.h"
#include "pages/PortRows.h"

#include <QObject>

#include <memory>

class QTabWidget;

namespace vek {

class LevelTrim;
class ModelView;
class OnlinePage;
class OnlineStrip;
class TrimPage;

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

class OnlineControl : public QObject, private WithPortRows<OnlineView>, private OnlineLevels {
    Q_OBJECT

  public:
    /// All must outlive this object; `window` is the parent of the boxes.
    OnlineControl(QWidget& window, const OnlineParts& parts, const EditorServices& services,
                  const DeviceTypeList& types);
    ~OnlineControl() override;

    bool IsOnline() const { return session_.IsOnline(); }

    /// The port of the session as the user reads it ("COM1 (ttyUSB0)").
    QString PortName() const;

    /// Sends the levels that are shown; nothing while offline.
    void LevelsChanged();

    /// A click into the text of an input trim: listens to that input.
    void SelectInput(std::size_t input);

    /// Ends the session because the window closes; false while something still waits, Unwound() follows then.
    bool Shutdown();

    /// For a periodic look whether the adapter is still there.
    void CheckPort();

  Q_SIGNALS:
    /// IsOnline() has changed, or the pages that may be shown.
    void OnlineChanged();
    /// What ran when Shutdown() was refused has ended.
    void Unwound();

  private:
    PortRows& Ports() const override;
    void ShowOnlineSearch(bool visible) override;
    void ShowOnlineCancel(bool visible) override;
    void ShowOnlineLevelOffset(bool visible) override;
    void UpdateTabs() override;
    bool Text2Visible() const override;
    void AppendText2(const std::string& text) override;
    void ErrorMessage(const std::string& title, const std::string& text) override;
    void Message(const std::string& title, const std::string& text) override;

    std::size_t CurrentOutput() const override;
    float LevelTrim1() const override;
    float InputLevelTrim(std::size_t input) const override;
    float OutputLevelTrim(std::size_t output) const override;
    float OnlineLevelOffset() const override;

    void Connect();
    void RouteClicked(std::size_t input);
    void TabChanged();
    void FollowTab();
    void RouteAndApply();
    /// Runs an operation of the session as an event handler.
    template <typename Operation>
    void Run(Operation operation);

    QWidget& window_;
    OnlineParts parts_;
    Dialogs& dialogs_;
    std::unique_ptr<SerialControl> OnlineMSComm_;
    std::unique_ptr<OneShotTimer> OnlineTimer_;
    OnlineSession session_;
    bool closing_ = false;
};

} // namespace vek
