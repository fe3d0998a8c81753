#include "editor/EditorPanels.h"

#include "controls/TextConversion.h"
#include "editing/ModelView.h"
#include "editor/EditorStatusBar.h"
#include "editor/ProblemsPanel.h"

#include <QAction>
#include <QMainWindow>

#include <algorithm>
#include <utility>

namespace vek {

namespace {

constexpr int mostCharacters = 60; // of a line, unless the user makes it wider
constexpr int usualPart = 4;       // of the window's width

} // namespace

EditorPanels::EditorPanels(QMainWindow& window, ModelView& view, const PlaceFinder& places, Dialogs& boxes,
                           EditorStatusBar& status, ConfigWatch& watch,
                           ChangesPanel::LastProgrammed lastProgrammed)
    : QObject(&window), window_(window), view_(view), places_(places), boxes_(boxes), status_(status),
      lastProgrammed_(std::move(lastProgrammed)), watch_(watch),
      showProblems_(MakeAction("ShowProblems", tr("&Problems"), Qt::Key_F8)),
      showChanges_(MakeAction("ShowChanges", tr("What &changed"), Qt::Key_F7)) {
    connect(showProblems_, &QAction::triggered, this, [this](bool on) { ShowProblems(on); });
    connect(showChanges_, &QAction::triggered, this, [this](bool on) { ShowChanges(on); });
    connect(&status, &EditorStatusBar::ProblemsClicked, this, [this] { ShowProblems(true); });
    connect(&status, &EditorStatusBar::ChangesClicked, this, [this] { ShowChanges(true); });
    connect(&watch_, &ConfigWatch::Looked, this, [this] {
        status_.ShowProblems(FromConstant(CountText(watch_.Found())));
        if (changes_ != nullptr && changes_->isVisible())
            changes_->Look();
    });
}

QAction* EditorPanels::MakeAction(const char* name, const QString& text, Qt::Key key) {
    auto* action = new QAction(text, &window_);
    action->setObjectName(QLatin1StringView(name));
    action->setShortcut(key);
    action->setCheckable(true);
    window_.addAction(action);
    return action;
}

void EditorPanels::Look() {
    if (changes_ != nullptr && changes_->isVisible())
        changes_->Look();
}

void EditorPanels::ShowProblems(bool shown) {
    if (problems_ == nullptr) {
        problems_ = new ProblemsPanel(watch_, places_, &window_);
        connect(problems_, &ProblemsPanel::Told, this, &EditorPanels::Told);
        Add(*problems_, *showProblems_);
    }
    Show(*problems_, shown);
}

void EditorPanels::ShowChanges(bool shown) {
    if (changes_ == nullptr) {
        changes_ = new ChangesPanel(view_, places_, boxes_, lastProgrammed_, &window_);
        connect(changes_, &ChangesPanel::Told, this, &EditorPanels::Told);
        connect(changes_, &ChangesPanel::TakenBack, this, &EditorPanels::TakenBack);
        Add(*changes_, *showChanges_);
    }
    Show(*changes_, shown);
}

void EditorPanels::Add(QDockWidget& panel, QAction& action) {
    // Small screens have more room there than below.
    window_.addDockWidget(Qt::RightDockWidgetArea, &panel);
    if (problems_ != nullptr && changes_ != nullptr)
        window_.tabifyDockWidget(problems_, changes_);
    const int width =
        std::min(window_.width() / usualPart, window_.fontMetrics().averageCharWidth() * mostCharacters);
    window_.resizeDocks({&panel}, {width}, Qt::Horizontal);
    action.setChecked(true);
    // Closed by its own button, too; a panel behind another one stays checked.
    connect(panel.toggleViewAction(), &QAction::toggled, &action, &QAction::setChecked);
}

void EditorPanels::Show(QDockWidget& panel, bool shown) {
    panel.setVisible(shown);
    if (!shown)
        return;
    panel.raise();
    panel.widget()->setFocus();
}

} // namespace vek
