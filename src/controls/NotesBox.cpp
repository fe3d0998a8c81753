#include "controls/NotesBox.h"

#include "base/Windows1252.h"
#include "controls/TextConversion.h"
#include "model/Config.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QTextDocument>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr int lineEndBytes = 2;

int BytesOf(QChar character) { return character == u'\n' ? lineEndBytes : 1; }

int BytesOf(const QString& text) {
    int bytes = 0;
    for (const QChar character : text)
        bytes += BytesOf(character);
    return bytes;
}

/// Paragraph separators are the document's line ends; toPlainText() would also turn no-break spaces into
/// blanks.
QString WithLineFeeds(QString raw) {
    raw.replace(QChar::ParagraphSeparator, u'\n');
    raw.replace(QChar::LineSeparator, u'\n');
    return raw;
}

} // namespace

NotesBox::NotesBox(QWidget* parent) : QPlainTextEdit(parent) {
    setTabChangesFocus(true);
    connect(this, &QPlainTextEdit::textChanged, this, &NotesBox::TextChanged);
}

std::string NotesBox::Bytes() const { return LinesToBytes(WithLineFeeds(document()->toRawText())); }

void NotesBox::SetBytes(std::string_view bytes) {
    // Line ends of one byte count two in the box; a stored text is shown whole all the same.
    loading_ = true;
    setPlainText(LinesFromBytes(bytes));
    loading_ = false;
}

int NotesBox::Remaining() const {
    return static_cast<int>(notesLength) - BytesOf(WithLineFeeds(document()->toRawText()));
}

QString NotesBox::Acceptable(const QString& text, bool replaceUnknown) const {
    int room = Remaining() + BytesOf(WithLineFeeds(textCursor().selectedText()));
    QString accepted;
    for (const uint character : text.toUcs4()) {
        const auto byte = ToWindows1252(character);
        if (!byte && !replaceUnknown)
            continue;
        const QChar next = byte ? QChar(FromWindows1252(*byte)) : u'?';
        room -= BytesOf(next);
        if (room < 0)
            break;
        accepted += next;
    }
    return accepted;
}

void NotesBox::keyPressEvent(QKeyEvent* event) {
    const QString text = event->text();
    const bool lineEnd = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool types = lineEnd || (!text.isEmpty() && text.at(0).isPrint() &&
                                   !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)));
    const QString typed = lineEnd ? u"\n"_s : text;
    if (types && Acceptable(typed, false) != typed) {
        event->accept();
        return;
    }
    QPlainTextEdit::keyPressEvent(event);
}

void NotesBox::inputMethodEvent(QInputMethodEvent* event) {
    QInputMethodEvent filtered(event->preeditString(), event->attributes());
    filtered.setCommitString(Acceptable(event->commitString(), false), event->replacementStart(),
                             event->replacementLength());
    QPlainTextEdit::inputMethodEvent(&filtered);
}

void NotesBox::insertFromMimeData(const QMimeData* source) {
    QString text = source->text();
    text.replace("\r\n"_L1, "\n"_L1);
    text.replace(u'\r', u'\n');
    textCursor().insertText(Acceptable(text, true));
    ensureCursorVisible();
}

void NotesBox::TextChanged() {
    if (loading_)
        return;
    CutToLength();
    Q_EMIT Edited();
}

void NotesBox::CutToLength() {
    const QString text = WithLineFeeds(document()->toRawText());
    int room = static_cast<int>(notesLength);
    int fitting = 0;
    while (fitting < text.size() && (room -= BytesOf(text.at(fitting))) >= 0)
        ++fitting;
    if (fitting == text.size())
        return;
    QTextCursor rest(document());
    rest.setPosition(fitting);
    rest.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
    rest.removeSelectedText();
}

} // namespace vek
