#include "controls/NotesBox.h"

#include "model/Config.h"
#include "support/Windows.h"

using namespace vek;
using namespace Qt::StringLiterals;

static void Paste(NotesBox& box, const QString& text) {
    QGuiApplication::clipboard()->setText(text);
    box.paste();
}

TEST(Notes, AllCharactersOfTheCodePageAndNoOthers) {
    NotesBox box;
    for (const QChar typed : u"a\u20ACz\u2192"_s) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(typed));
        QCoreApplication::sendEvent(&box, &press);
    }
    EXPECT_EQ(box.Bytes(), "a\x80z") << "an arrow cannot be typed";
    Paste(box, u"\u2192\u00E9\U0001F600\r\nx"_s);
    EXPECT_EQ(box.Bytes(), "a\x80z?\xE9?\r\nx");

    std::string all;
    for (int byte = 1; byte < 256; ++byte)
        if (byte != '\r' && byte != '\n' && byte != 0x1C)
            all += static_cast<char>(byte);
    box.SetBytes(all);
    EXPECT_EQ(box.Bytes(), all);
    box.SetBytes("a\r\nb\rc\nd\n\r");
    EXPECT_EQ(box.Bytes(), "a\r\nb\r\nc\r\nd\r\n\r\n");
}

TEST(Notes, NoMoreThanFits) {
    NotesBox box;
    box.SetBytes(std::string(notesLength - 3, 'n'));
    box.moveCursor(QTextCursor::End);
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_EQ(box.Remaining(), 1);
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_EQ(box.Remaining(), 1) << "a line end takes two";
    QTest::keyClicks(&box, u"xy"_s);
    EXPECT_EQ(box.Remaining(), 0);
    EXPECT_TRUE(box.Bytes().ends_with("\r\nx"));
    // What replaces a selection has the selection's room.
    box.moveCursor(QTextCursor::StartOfLine, QTextCursor::KeepAnchor);
    Paste(box, u"12345"_s);
    EXPECT_TRUE(box.Bytes().ends_with("\r\n1"));
    box.setPlainText(QString(5000, u'z'));
    EXPECT_EQ(box.Bytes(), std::string(notesLength, 'z'));
    box.selectAll();
    QTest::keyClicks(&box, u"x"_s);
    EXPECT_EQ(box.Bytes(), "x");
}

TEST(Notes, OnlyTheUserEdits) {
    NotesBox box;
    QSignalSpy edits(&box, &NotesBox::Edited);
    box.SetBytes(std::string(2 * notesLength, '\n')); // counts double in the box, shown whole all the same
    EXPECT_EQ(box.document()->blockCount(), static_cast<int>(2 * notesLength) + 1);
    box.SetBytes("a");
    EXPECT_EQ(edits.count(), 0);
    QTest::keyClicks(&box, u"b"_s);
    EXPECT_EQ(edits.count(), 1);
    QInputMethodEvent commit;
    commit.setCommitString(u"\u2192c"_s);
    QCoreApplication::sendEvent(&box, &commit);
    EXPECT_EQ(box.Bytes(), "bca");
    EXPECT_EQ(edits.count(), 2);
    EXPECT_TRUE(box.tabChangesFocus());
}
