#include "editing/UndoActions.h"

#include "controls/KeyFilteredLineEdit.h"
#include "editing/ModelView.h"

#include <QAction>
#include <QApplication>
#include <QMenu>

namespace vek {

UndoActions::UndoActions(ModelView& view, const PlaceFinder& places, QMenu& menu, QWidget& window)
    : view_(view), places_(places),
      window_(window), undo_{MakeAction("EditUndo", menu, window, {QKeySequence(tr("Ctrl+Z"))}), tr("&Undo"),
                             &EditHistory::UndoPlace, &EditHistory::UndoText, &EditHistory::Undo},
      redo_{MakeAction("EditRedo", menu, window,
                       {QKeySequence(tr("Ctrl+Shift+Z")), QKeySequence(tr("Ctrl+Y"))}),
            tr("&Redo"), &EditHistory::RedoPlace, &EditHistory::RedoText, &EditHistory::Redo} {
    for (const Direction* direction : {&undo_, &redo_})
        connect(direction->Action, &QAction::triggered, this, [this, direction] { Take(*direction); });
    connect(&view.History(), &EditHistory::Changed, this, [this] { Refresh(); });
    connect(&menu, &QMenu::aboutToShow, this, [this] { Refresh(); });
    // The next key may be the one that takes the edit back.
    connect(&view.History(), &EditHistory::Entered, this, [this] { undo_.Action->setEnabled(true); });
    connect(&view.History(), &EditHistory::Restored, this,
            [this](const MatrixConfig& config) { view_.Restore(config); });
    // Whatever takes the focus ends the visit of the field that had it.
    connect(qApp, &QApplication::focusChanged, this, [this] { view_.History().EndVisit(); });
    Refresh();
}

QAction* UndoActions::MakeAction(const char* name, QMenu& menu, QWidget& window,
                                 const QList<QKeySequence>& keys) {
    QAction* action = menu.addAction(QString());
    action->setObjectName(QLatin1StringView(name));
    action->setShortcuts(keys);
    window.addAction(action);
    return action;
}

void UndoActions::Refresh() {
    Refresh(undo_);
    Refresh(redo_);
}

void UndoActions::Refresh(const Direction& direction) {
    const auto place = (view_.History().*direction.Place)();
    const bool reachable = place && places_.Reachable(*place);
    QString text = direction.Verb;
    if (place)
        text +=
            QStringLiteral(": ") + (view_.History().*direction.Text)().replace(u'&', QStringLiteral("&&"));
    if (place && !reachable)
        text += tr(" (its page is disabled while online)");
    direction.Action->setText(text);
    direction.Action->setEnabled(reachable);
}

bool UndoActions::FinishTyping() {
    auto* box = qobject_cast<KeyFilteredLineEdit*>(window_.focusWidget());
    const QString typed = box ? box->text() : QString();
    const int depth = view_.History().Depth();
    if (box)
        box->Finish();
    view_.StoreView();
    return !box || box->text() == typed || view_.History().Depth() != depth;
}

void UndoActions::Take(const Direction& direction) {
    if (!FinishTyping())
        return;
    const auto place = (view_.History().*direction.Place)();
    if (!place || !places_.Reachable(*place))
        return;
    places_.GoTo(*place);
    (view_.History().*direction.Take)();
    view_.History().EndVisit();
    Q_EMIT Taken(place->Kind);
}

} // namespace vek
