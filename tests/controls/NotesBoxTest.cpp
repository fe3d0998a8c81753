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
}

TEST(Notes, WhatDoesNotFitIsRefusedWithAHint) {
    NotesBox box;
    box.show();
    box.SetBytes(std::string(notesLength - 3, 'n'));
    box.moveCursor(QTextCursor::End);
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_EQ(box.Remaining(), 1);
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_EQ(box.Remaining(), 1) << "a line end takes two";
    EXPECT_EQ(QToolTip::text(), u"The notes hold 1500 characters: 1 too many"_s);
    QTest::keyClicks(&box, u"xy"_s);
    EXPECT_EQ(box.Remaining(), 0);
    EXPECT_TRUE(box.Bytes().ends_with("\r\nx"));
    // What replaces a selection has the selection's room.
    box.moveCursor(QTextCursor::StartOfLine, QTextCursor::KeepAnchor);
    Paste(box, u"12345"_s);
    EXPECT_EQ(QToolTip::text(), u"The notes hold 1500 characters: 4 too many"_s);
    EXPECT_TRUE(box.Bytes().ends_with("\r\nx"));
    Paste(box, u"1"_s);
    EXPECT_TRUE(box.Bytes().ends_with("\r\n1"));
    const std::string before = box.Bytes();
    box.setPlainText(QString(5000, u'z'));
    EXPECT_EQ(box.Bytes(), before);
    EXPECT_EQ(box.toPlainText().size(), 1499);
    box.selectAll();
    QTest::keyClicks(&box, u"x"_s);
    EXPECT_EQ(box.Bytes(), "x");
}

TEST(Notes, LineEndsOfOneByteStay) {
    NotesBox box;
    std::string stored;
    for (int line = 0; line < 500; ++line)
        stored += "ab\n";
    box.SetBytes(stored);
    EXPECT_EQ(box.Remaining(), 0);
    box.moveCursor(QTextCursor::Start);
    QTest::keyClick(&box, Qt::Key_Delete);
    EXPECT_EQ(box.Bytes(), stored.substr(1));
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_EQ(box.Bytes(), '\n' + stored.substr(1));
}

TEST(Notes, OnlyTheUserEdits) {
    NotesBox box;
    QSignalSpy edits(&box, &NotesBox::Edited);
    QTest::keyClicks(&box, u"z"_s);
    edits.clear();
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
