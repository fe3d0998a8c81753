// The panels of problems and changes, and what the status bar tells of the checks.
#pragma once

#include "editor/ChangesPanel.h"
#include "editor/ConfigWatch.h"

#include <QObject>

class QAction;
class QMainWindow;

namespace vek {

class EditorStatusBar;
class ProblemsPanel;

/// The actions `ShowProblems` and `ShowChanges` of the window, checked while their panel is shown. A panel is
/// made when it is first wanted.
class EditorPanels : public QObject {
    Q_OBJECT

  public:
    /// All must outlive this object.
    EditorPanels(QMainWindow& window, ModelView& view, const PlaceFinder& places, Dialogs& boxes,
                 EditorStatusBar& status, ConfigWatch& watch, ChangesPanel::LastProgrammed lastProgrammed);

    /// Looks whether there is anything new to show; every 500 ms, and when pages are enabled or disabled.
    void Look();

  Q_SIGNALS:
    void TakenBack(vek::FieldKind kind);
    /// For the status bar: why nothing came of what the user did.
    void Told(const QString& text);

  private:
    QAction* MakeAction(const char* name, const QString& text, Qt::Key key);
    void ShowProblems(bool shown);
    void ShowChanges(bool shown);
    void Add(QDockWidget& panel, QAction& action);
    void Show(QDockWidget& panel, bool shown);

    QMainWindow& window_;
    ModelView& view_;
    const PlaceFinder places_;
    Dialogs& boxes_;
    EditorStatusBar& status_;
    ChangesPanel::LastProgrammed lastProgrammed_;
    ConfigWatch& watch_;
    QAction* showProblems_;
    QAction* showChanges_;
    ProblemsPanel* problems_ = nullptr;
    ChangesPanel* changes_ = nullptr;
};

} // namespace vek
