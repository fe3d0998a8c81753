// The main window of the Vorn Matrix Editor.
#pragma once

#include "device/EditorServices.h"
#include "device/PortTurns.h"
#include "dialogs/WindowMessages.h"
#include "editing/EditHistory.h"
#include "editing/ModelView.h"
#include "editor/CommandDispatch.h"
#include "editor/FileOnDisk.h"
#include "link/DeviceTypes.h"
#include "userstate/UserSettings.h"

#include <QMainWindow>
#include <QTimer>

#include <functional>
#include <memory>
#include <string>
#include <string_view>

class QVBoxLayout;

namespace vek {

class ClipboardMenus;
class ConfigWatch;
class DoctorWindow;
class EditorMenus;
class EditorPanels;
class EditorStatusBar;
class EditorToolBar;
class ExportCommands;
class FileBars;
class FileCommands;
class FileDrop;
class HistoryCommands;
class OnlineControl;
class PageTabs;
class Programmer;
class RecoveryKeeper;
class UndoActions;

/// Wires the pages, commands and timers together. The configuration itself is the program-wide Config, which
/// the window replaces by a new one when it is made.
class CorvaneForm : public QMainWindow {
    Q_OBJECT

  public:
    /// `commandLine` may name a configuration file (a path in the system's own bytes), which is opened
    /// shortly after the start. The services must outlive the window.
    CorvaneForm(const EditorServices& services, std::string commandLine, QWidget* parent = nullptr);
    ~CorvaneForm() override;

    /// Makes what does not show when the program starts. Happens by itself once the window has been painted,
    /// and whenever something is wanted of it before.
    void FinishStart();

    /// Runs the command of a toolbar key, with what is being typed taken over first.
    void Dispatch(std::string_view key);

    /// Ends everything because the program is told to end from outside: asks nothing, keeps what is not saved
    /// for recovery, restarts a unit that is online or being programmed, closes the port and says on standard
    /// error what could not be done. Ended() follows after 1.8 s at the latest.
    void EndInOrder();
    /// The little that can be done when the program ends without returning here, because its display has
    /// gone: the same without waiting for events.
    void EndAtOnce();
    /// The desktop's session is about to end, which it may not do after all: what is not saved is kept, and
    /// the unit restarted.
    void PrepareForSessionEnd();

  Q_SIGNALS:
    void Ended();

  public Q_SLOTS:
    /// Title, SAVE button and status bar; every 500 ms.
    void Timer1_Tick();

    /// Opens the file of the command line; once.
    void Timer4_Tick();

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void MakeCommands();
    void LayOut();
    void ConnectSelectors();
    void ConnectPages();
    void LevelsRestored(FieldKind kind);
    void SelectionChanged();
    void PanelListEdited();
    void RouteEdited();
    void LevelMoved();
    void ShowOnline();
    void ShowDoctor();
    void ShowState();
    /// Takes over what is being typed, as if its box were left.
    void FinishTyping();
    void TakeOver();
    void EndProgramming();
    void GoOffline();
    void FinishEnding();
    void Replace(const std::function<void()>& action);
    QString ProgramTitle() const;

    const EditorServices& services_;
    std::string commandLine_;
    WindowMessages messages_;
    DeviceTypeList types_;
    PortTurns turns_;
    EditorToolBar* toolBar_;
    PageTabs* SSTab1_;
    EditorPages pages_;
    QVBoxLayout* column_ = nullptr; ///< the pages and what stands above and below them
    EditHistory history_{this};
    ModelView view_;
    std::unique_ptr<UndoActions>
        undo_; ///< hears of the focus, also while the window ends: before what it uses
    FileOnDisk file_;
    UserSettings settings_;
    RecoveryKeeper* recovery_;
    FileCommands* files_;
    ExportCommands* exports_;
    Programmer* programmer_;
    CommandDispatch dispatch_;
    EditorStatusBar* status_;
    ConfigWatch* watch_ = nullptr;
    EditorPanels* panels_ = nullptr;
    ClipboardMenus* clipboard_ = nullptr;
    EditorMenus* menus_ = nullptr;
    FileBars* bars_ = nullptr;
    FileDrop* drop_ = nullptr;
    HistoryCommands* programmed_ = nullptr;
    QTimer Timer1_;
    QTimer Timer4_;
    QTimer ending_; ///< runs while the window ends in order
    bool ended_ = false;
    std::unique_ptr<DoctorWindow> doctor_;
    std::unique_ptr<OnlineControl> online_; ///< last, so that its conversation ends first
};

} // namespace vek
