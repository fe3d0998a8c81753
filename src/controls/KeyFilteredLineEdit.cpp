#include "controls/KeyFilteredLineEdit.h"

#include "controls/EditBoxMenus.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QToolTip>

#include <utility>

namespace vek {

namespace {

bool TypesCharacters(const QKeyEvent& event) {
    const Qt::KeyboardModifiers shortcutKeys = event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    return !event.text().isEmpty() && event.text().front().isPrint() && shortcutKeys != Qt::ControlModifier;
}

/// A menu over the box or another window in front takes the keyboard, but the user has not left the box.
bool IsPassing(const QFocusEvent& event) {
    return event.reason() == Qt::PopupFocusReason || event.reason() == Qt::ActiveWindowFocusReason;
}

} // namespace

KeyFilteredLineEdit::KeyFilteredLineEdit(CharacterFilter filter, QWidget* parent)
    : QLineEdit(parent), filter_(std::move(filter)) {}

void KeyFilteredLineEdit::SetFresh(const QString& text) {
    const bool same = text == this->text();
    if (same && !isUndoAvailable() && !isRedoAvailable())
        return;
    const int selected = same && hasSelectedText() ? selectionStart() : -1;
    const int length = selectionLength();
    const int cursor = cursorPosition();
    setText(text);
    if (same)
        setCursorPosition(cursor);
    if (selected >= 0)
        setSelection(selected, length);
}

void KeyFilteredLineEdit::ShowHint(const QString& text) {
    QToolTip::showText(mapToGlobal(QPoint(0, height())), text, this);
}

QString KeyFilteredLineEdit::Accepted(const QString& arriving) const {
    QString rest = text();
    if (hasSelectedText())
        rest.remove(selectionStart(), selectionLength());
    QString accepted;
    for (const QChar character : arriving) {
        if (!filter_(character, rest))
            continue;
        accepted += character;
        rest += character;
    }
    return accepted;
}

void KeyFilteredLineEdit::InsertFiltered(const QString& arriving) {
    if (isReadOnly())
        return;
    // Inserting nothing would still delete the selection.
    if (const QString accepted = Accepted(arriving); !accepted.isEmpty())
        insert(accepted);
}

void KeyFilteredLineEdit::paste() {
    Q_EMIT KeyTyped();
    InsertFiltered(QGuiApplication::clipboard()->text());
}

bool KeyFilteredLineEdit::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && IsUndoKey(*static_cast<QKeyEvent*>(event))) {
        event->ignore();
        return false;
    }
    return QLineEdit::event(event);
}

void KeyFilteredLineEdit::contextMenuEvent(QContextMenuEvent* event) {
    PopUpWithoutUndo(*createStandardContextMenu(), !isReadOnly(), event->globalPos());
}

void KeyFilteredLineEdit::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Paste)) {
        paste();
        event->accept();
        return;
    }
    if (!event->text().isEmpty())
        Q_EMIT KeyTyped();
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        event->accept();
        Q_EMIT EnterPressed();
    } else if (TypesCharacters(*event)) {
        InsertFiltered(event->text());
        event->accept();
    } else {
        QLineEdit::keyPressEvent(event);
    }
}

void KeyFilteredLineEdit::inputMethodEvent(QInputMethodEvent* event) {
    QInputMethodEvent filtered(event->preeditString(), event->attributes());
    if (!event->commitString().isEmpty())
        Q_EMIT KeyTyped();
    filtered.setCommitString(Accepted(event->commitString()), event->replacementStart(),
                             event->replacementLength());
    QLineEdit::inputMethodEvent(&filtered);
    event->setAccepted(filtered.isAccepted());
}

void KeyFilteredLineEdit::dropEvent(QDropEvent* event) {
    if (isReadOnly() || !event->mimeData()->hasText())
        return;
    Q_EMIT KeyTyped();
    deselect(); // a drop goes beside the selection, it does not replace it
    QMimeData accepted;
    accepted.setText(Accepted(event->mimeData()->text()));
    QDropEvent filtered(event->position(), event->possibleActions(), &accepted, event->buttons(),
                        event->modifiers());
    QLineEdit::dropEvent(&filtered);
    // Always a copy: the source must not lose characters that were refused here.
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void KeyFilteredLineEdit::mousePressEvent(QMouseEvent* event) {
    QLineEdit::mousePressEvent(event);
    if (entering_ && event->button() == Qt::LeftButton) {
        entryPoint_ = event->position().toPoint();
        selectAll();
    }
    Q_EMIT MousePressed();
}

void KeyFilteredLineEdit::mouseMoveEvent(QMouseEvent* event) {
    if (entering_) {
        const QPoint way = event->position().toPoint() - entryPoint_;
        if (way.manhattanLength() < QApplication::startDragDistance())
            return;
        entering_ = false;
        setCursorPosition(cursorPositionAt(entryPoint_));
    }
    QLineEdit::mouseMoveEvent(event);
}

void KeyFilteredLineEdit::mouseReleaseEvent(QMouseEvent* event) {
    entering_ = false;
    const QClipboard* clipboard = QGuiApplication::clipboard();
    if (event->button() == Qt::MiddleButton && clipboard->supportsSelection()) {
        Q_EMIT KeyTyped();
        deselect();
        InsertFiltered(clipboard->text(QClipboard::Selection));
        event->accept();
        return;
    }
    QLineEdit::mouseReleaseEvent(event);
}

void KeyFilteredLineEdit::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    if (IsPassing(*event))
        return;
    entering_ = event->reason() == Qt::MouseFocusReason;
    selectAll();
}

void KeyFilteredLineEdit::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    entering_ = false;
    if (!IsPassing(*event))
        Q_EMIT Left();
}

} // namespace vek
