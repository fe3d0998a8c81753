#include "controls/NotesBox.h"

#include "base/Windows1252.h"
#include "controls/EditBoxMenus.h"
#include "controls/TextConversion.h"
#include "model/Config.h"
#include "model/NotesText.h"

#include <QContextMenuEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QTextDocument>
#include <QToolTip>

#include <algorithm>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

/// Paragraph separators are the document's line ends; toPlainText() would also turn no-break spaces into
/// blanks.
QString WithLineFeeds(QString raw) {
    raw.replace(QChar::ParagraphSeparator, u'\n');
    raw.replace(QChar::LineSeparator, u'\n');
    return raw;
}

/// Without the characters that the configuration cannot store.
QString Storable(const QString& text) {
    QString storable;
    for (const uint character : text.toUcs4()) {
        if (const auto byte = ToWindows1252(character))
            storable += QChar(FromWindows1252(*byte));
    }
    return storable;
}

} // namespace

NotesBox::NotesBox(QWidget* parent) : QPlainTextEdit(parent) {
    setTabChangesFocus(true);
    setUndoRedoEnabled(false);
    connect(this, &QPlainTextEdit::textChanged, this, &NotesBox::TextChanged);
}

void NotesBox::SetBytes(std::string_view bytes) {
    bytes_ = bytes;
    loading_ = true;
    setPlainText(LinesFromBytes(bytes));
    loading_ = false;
}

void NotesBox::Replace(const std::string& bytes) {
    const QString former = WithLineFeeds(document()->toRawText());
    const QString text = LinesFromBytes(bytes);
    const qsizetype shorter = std::min(former.size(), text.size());
    qsizetype start = 0;
    while (start < shorter && former[start] == text[start])
        ++start;
    qsizetype same = 0; // characters at the end
    while (same < shorter - start && former[former.size() - 1 - same] == text[text.size() - 1 - same])
        ++same;
    bytes_ = bytes;
    loading_ = true;
    QTextCursor edit(document());
    edit.setPosition(static_cast<int>(start));
    edit.setPosition(static_cast<int>(former.size() - same), QTextCursor::KeepAnchor);
    edit.insertText(text.sliced(start, text.size() - same - start));
    loading_ = false;
    Q_EMIT Edited();
}

int NotesBox::Remaining() const { return static_cast<int>(notesLength) - static_cast<int>(bytes_.size()); }

std::string NotesBox::BytesWith(const QString& text) const {
    const QTextCursor cursor = textCursor();
    QString whole = WithLineFeeds(document()->toRawText());
    whole.replace(cursor.selectionStart(), cursor.selectionEnd() - cursor.selectionStart(), text);
    return WithLineEndsOf(bytes_, ToBytes(whole));
}

bool NotesBox::Fits(const QString& text) {
    const std::size_t size = BytesWith(text).size();
    if (size <= notesLength)
        return true;
    Hint(tr("The notes hold %1 characters: %2 too many").arg(notesLength).arg(size - notesLength));
    return false;
}

void NotesBox::Hint(const QString& text) {
    QToolTip::showText(viewport()->mapToGlobal(cursorRect().bottomLeft()), text, this);
}

bool NotesBox::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && IsUndoKey(*static_cast<QKeyEvent*>(event))) {
        event->ignore();
        return false;
    }
    return QPlainTextEdit::event(event);
}

void NotesBox::contextMenuEvent(QContextMenuEvent* event) {
    PopUpWithoutUndo(*createStandardContextMenu(), true, event->globalPos());
}

void NotesBox::keyPressEvent(QKeyEvent* event) {
    const QString text = event->text();
    const bool lineEnd = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool types = lineEnd || (!text.isEmpty() && text.at(0).isPrint() &&
                                   !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)));
    const QString typed = lineEnd ? u"\n"_s : text;
    if (types && Storable(typed) != typed)
        Hint(tr("The notes cannot hold this character"));
    else if (!types || Fits(typed)) {
        QPlainTextEdit::keyPressEvent(event);
        return;
    }
    event->accept();
}

void NotesBox::inputMethodEvent(QInputMethodEvent* event) {
    QInputMethodEvent filtered(event->preeditString(), event->attributes());
    const QString text = Storable(event->commitString());
    filtered.setCommitString(Fits(text) ? text : QString(), event->replacementStart(),
                             event->replacementLength());
    QPlainTextEdit::inputMethodEvent(&filtered);
}

void NotesBox::insertFromMimeData(const QMimeData* source) {
    QString text = FromBytes(ToBytes(source->text()));
    text.replace("\r\n"_L1, "\n"_L1);
    text.replace(u'\r', u'\n');
    if (Fits(text))
        textCursor().insertText(text);
    ensureCursorVisible();
}

void NotesBox::TextChanged() {
    if (loading_)
        return;
    const std::string bytes = WithLineEndsOf(bytes_, ToBytes(WithLineFeeds(document()->toRawText())));
    if (bytes.size() > notesLength) {
        // It came in past the other checks.
        SetBytes(std::string(bytes_));
        Hint(tr("The notes hold %1 characters").arg(notesLength));
        return;
    }
    bytes_ = bytes;
    Q_EMIT Edited();
}

} // namespace vek
