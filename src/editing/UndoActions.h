// Undo and redo as commands of the window.
#pragma once

#include "editing/EditHistory.h"
#include "editing/PlaceFinder.h"

#include <QObject>

#include <functional>

class QAction;
class QMenu;

namespace vek {

class ModelView;

/// The actions `EditUndo` and `EditRedo`. They name the step that they take, go to the mode, output and page
/// where it was made, and are disabled with the reason while that page is.
class UndoActions : public QObject {
    Q_OBJECT

  public:
    /// All must outlive this object; the actions belong to the menu and the window `window`.
    UndoActions(ModelView& view, const PlaceFinder& places, QMenu& menu, QWidget& window);

    /// Looks anew what can be done: other pages may be enabled.
    void Refresh();

  Q_SIGNALS:
    /// A step was taken back or made again; its place is shown.
    void Taken(vek::FieldKind kind);

  private:
    struct Direction {
        QAction* Action;
        QString Verb; ///< "Undo"
        std::optional<FieldPlace> (EditHistory::*Place)();
        QString (EditHistory::*Text)();
        void (EditHistory::*Take)();
    };

    QAction* MakeAction(const char* name, QMenu& menu, QWidget& window, const QList<QKeySequence>& keys);
    void Refresh(const Direction& direction);
    void Take(const Direction& direction);
    /// Takes over what is being typed; false when that was all there was to take back.
    bool FinishTyping();

    ModelView& view_;
    const PlaceFinder places_;
    QWidget& window_;
    Direction undo_;
    Direction redo_;
};

} // namespace vek
