// Boxes of text in a window that has one undo for everything.
#pragma once

#include <QAction>
#include <QKeyEvent>
#include <QMenu>

#include <algorithm>

namespace vek {

inline bool IsUndoKey(const QKeyEvent& event) {
    return event.matches(QKeySequence::Undo) || event.matches(QKeySequence::Redo);
}

/// Shows a box's standard menu at the global position and deletes it when it is closed. The menu of an
/// editable box begins with Undo, Redo and a line, which are left out.
inline void PopUpWithoutUndo(QMenu& menu, bool editable, const QPoint& at) {
    constexpr qsizetype undoEntries = 3;
    const QList<QAction*> actions = menu.actions();
    for (qsizetype i = 0; editable && i < std::min(undoEntries, actions.size()); ++i)
        menu.removeAction(actions[i]);
    menu.setAttribute(Qt::WA_DeleteOnClose);
    menu.popup(at);
}

} // namespace vek
