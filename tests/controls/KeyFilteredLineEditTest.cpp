#include "controls/KeyFilteredLineEdit.h"

#include "support/Windows.h"

#include <QClipboard>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QMenu>
#include <QMimeData>
#include <QSignalSpy>
#include <QVBoxLayout>

#include <memory>

namespace vek {
namespace {

using namespace Qt::StringLiterals;

/// Takes digits, each only once.
bool TakesKey(QChar key, const QString& rest) { return key.isDigit() && !rest.contains(key); }

struct KeyFilteredLineEditTest : testing::Test {
    KeyFilteredLineEditTest() {
        auto* column = new QVBoxLayout(&window);
        column->addWidget(&other);
        column->addWidget(&edit);
        ShowActive(window);
        edit.setFocus();
    }

    void Drop(const QString& text) {
        QMimeData data;
        data.setText(text);
        QDragEnterEvent enter(QPoint(edit.width() - 2, 5), Qt::CopyAction | Qt::MoveAction, &data,
                              Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&edit, &enter);
        QDropEvent drop(QPointF(edit.width() - 2, 5), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                        Qt::NoModifier);
        drop.setDropAction(Qt::MoveAction);
        QApplication::sendEvent(&edit, &drop);
        EXPECT_EQ(drop.dropAction(), Qt::CopyAction) << "the source would lose what was refused";
    }

    void Commit(const QString& text) {
        QInputMethodEvent commit;
        commit.setCommitString(text);
        QApplication::sendEvent(&edit, &commit);
    }

    void PasteFromMenu() {
        const std::unique_ptr<QMenu> menu(edit.createStandardContextMenu());
        for (QAction* action : menu->actions())
            if (action->text().remove(u'&').startsWith("Paste"_L1))
                action->trigger();
    }

    QWidget window;
    QLineEdit other;
    KeyFilteredLineEdit edit{TakesKey};
};

TEST_F(KeyFilteredLineEditTest, EveryWayInPassesTheFilterCharacterByCharacter) {
    const QString arriving = u"a1 2x\n23"_s;
    QApplication::clipboard()->setText(arriving);
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"typed", [&] { QTest::keyClicks(&edit, u"a1 2x23"_s); }},
        {"Ctrl+V", [&] { QTest::keyClick(&edit, Qt::Key_V, Qt::ControlModifier); }},
        {"Shift+Insert", [&] { QTest::keyClick(&edit, Qt::Key_Insert, Qt::ShiftModifier); }},
        {"edit menu", [&] { PasteFromMenu(); }},
        {"dropped", [&] { Drop(arriving); }},
        {"input method", [&] { Commit(arriving); }},
    };
    for (const auto& [name, arrive] : ways) {
        edit.setText(u"3"_s);
        edit.end(false);
        QSignalSpy typed(&edit, &KeyFilteredLineEdit::KeyTyped);
        arrive();
        EXPECT_EQ(edit.text(), "312"_L1) << name;
        EXPECT_GE(typed.count(), 1) << name;
    }
}

TEST_F(KeyFilteredLineEditTest, WhatASelectionReplacesCountsAsGone) {
    edit.setText(u"123"_s);
    edit.setSelection(1, 1);
    QTest::keyClicks(&edit, u"x"_s);
    EXPECT_EQ(edit.text(), "123"_L1) << "a refused key must not delete the selection";
    QTest::keyClicks(&edit, u"2"_s);
    EXPECT_EQ(edit.text(), "123"_L1);
    edit.setSelection(1, 2);
    QTest::keyClicks(&edit, u"3"_s);
    EXPECT_EQ(edit.text(), "13"_L1);
    QTest::keyClick(&edit, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(edit.text(), "123"_L1);
}

TEST_F(KeyFilteredLineEditTest, NavigationDeletionAndClipboardKeysWork) {
    edit.setText(u"1234"_s);
    QTest::keyClick(&edit, Qt::Key_Home);
    QTest::keyClick(&edit, Qt::Key_Delete);
    QTest::keyClick(&edit, Qt::Key_End);
    QTest::keyClick(&edit, Qt::Key_Left);
    QTest::keyClick(&edit, Qt::Key_Backspace);
    EXPECT_EQ(edit.text(), "24"_L1);
    QTest::keyClick(&edit, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&edit, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "24"_L1);
    QTest::keyClick(&edit, Qt::Key_Tab);
    EXPECT_FALSE(edit.hasFocus());
}

TEST_F(KeyFilteredLineEditTest, SelectsItsTextWhenEnteredByMouseUntilDragged) {
    edit.setText(u"1234567890"_s);
    other.setFocus();
    const QPoint at(12, edit.height() / 2);
    edit.setFocus(Qt::MouseFocusReason);
    QTest::mousePress(&edit, Qt::LeftButton, {}, at);
    QTest::mouseMove(&edit, at + QPoint(1, 0));
    EXPECT_EQ(edit.selectedText(), edit.text()) << "a trembling hand is no drag";
    QTest::mouseRelease(&edit, Qt::LeftButton, {}, at);
    EXPECT_EQ(edit.selectedText(), edit.text());
    QTest::mouseClick(&edit, Qt::LeftButton, {}, at);
    EXPECT_FALSE(edit.hasSelectedText()) << "a second click sets the cursor";
}

TEST_F(KeyFilteredLineEditTest, IsLeftForAnotherControlButNotForMenusAndWindows) {
    QSignalSpy left(&edit, &KeyFilteredLineEdit::Left);
    for (const Qt::FocusReason passing : {Qt::PopupFocusReason, Qt::ActiveWindowFocusReason}) {
        edit.setText(u"12"_s);
        edit.setCursorPosition(1);
        QFocusEvent out(QEvent::FocusOut, passing);
        QApplication::sendEvent(&edit, &out);
        QFocusEvent in(QEvent::FocusIn, passing);
        QApplication::sendEvent(&edit, &in);
        EXPECT_EQ(edit.cursorPosition(), 1);
    }
    EXPECT_EQ(left.count(), 0);
    other.setFocus();
    EXPECT_EQ(left.count(), 1);
}

TEST_F(KeyFilteredLineEditTest, AReadOnlyTextTakesNothing) {
    edit.setText(u"3"_s);
    edit.setReadOnly(true);
    QApplication::clipboard()->setText(u"12"_s);
    QTest::keyClicks(&edit, u"1"_s);
    edit.paste();
    QMimeData data;
    data.setText(u"12"_s);
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&edit, &drop);
    EXPECT_EQ(edit.text(), "3"_L1);
}

TEST_F(KeyFilteredLineEditTest, EnterEndsInTheBoxAndAMousePressIsTold) {
    QSignalSpy entered(&edit, &KeyFilteredLineEdit::EnterPressed);
    QSignalSpy returned(&edit, &QLineEdit::returnPressed);
    QSignalSpy pressed(&edit, &KeyFilteredLineEdit::MousePressed);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, u"\r"_s);
        QApplication::sendEvent(&edit, &press);
        EXPECT_TRUE(press.isAccepted()) << "it would reach a dialog's default button";
    }
    EXPECT_EQ(entered.count(), 2);
    EXPECT_EQ(returned.count(), 0);
    QTest::mouseClick(&edit, Qt::LeftButton);
    EXPECT_EQ(pressed.count(), 1);
}

TEST_F(KeyFilteredLineEditTest, DraggingAfterEnteringSelectsFromThePress) {
    edit.setText(u"1234567890"_s);
    other.setFocus();
    edit.setFocus(Qt::MouseFocusReason);
    const QPoint from(4, edit.height() / 2);
    QTest::mousePress(&edit, Qt::LeftButton, {}, from);
    QTest::mouseMove(&edit, from + QPoint(edit.fontMetrics().horizontalAdvance(u"123"_s), 0));
    QMouseEvent drag(QEvent::MouseMove, from + QPointF(edit.fontMetrics().horizontalAdvance(u"123"_s), 0),
                     edit.mapToGlobal(from), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&edit, &drag);
    EXPECT_EQ(edit.selectedText(), "123"_L1);
    other.setFocus();
    edit.setFocus(Qt::TabFocusReason);
    QTest::mouseClick(&edit, Qt::LeftButton, {}, from);
    EXPECT_FALSE(edit.hasSelectedText()) << "entered by key, then clicked";
}

} // namespace
} // namespace vek
