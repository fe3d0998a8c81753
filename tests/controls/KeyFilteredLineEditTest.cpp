#include "controls/KeyFilteredLineEdit.h"

#include "controls/ControlTest.h"

#include <memory>

using namespace vek;
using namespace Qt::StringLiterals;

/// Takes digits, each only once.
static bool TakesKey(QChar key, const QString& rest) { return key.isDigit() && !rest.contains(key); }

struct KeyFilteredLineEditTest : ControlTest<KeyFilteredLineEdit> {
    KeyFilteredLineEditTest() : ControlTest(TakesKey) { edit.setFocus(); }

    /// The box's answer to a text that is moved into it.
    Qt::DropAction Drop(const QString& text) {
        QMimeData data;
        data.setText(text);
        const QPoint end(edit.width() - 2, 5);
        QDragEnterEvent enter(end, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&edit, &enter);
        QDropEvent drop(end, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        drop.setDropAction(Qt::MoveAction);
        QApplication::sendEvent(&edit, &drop);
        return drop.dropAction();
    }

    void PasteFromMenu() {
        const std::unique_ptr<QMenu> menu(edit.createStandardContextMenu());
        for (QAction* action : menu->actions())
            if (action->text().remove(u'&').startsWith("Paste"_L1))
                action->trigger();
    }

    QPoint EnterByMouse() {
        edit.setText(u"1234567890"_s);
        other.setFocus();
        edit.setFocus(Qt::MouseFocusReason);
        const QPoint at(4, edit.height() / 2);
        QTest::mousePress(&edit, Qt::LeftButton, {}, at);
        return at;
    }

    KeyFilteredLineEdit& edit = control;
};

TEST_F(KeyFilteredLineEditTest, EveryWayInPassesTheFilterCharacterByCharacter) {
    const QString arriving = u"a1 2x\n23"_s;
    QApplication::clipboard()->setText(arriving);
    QInputMethodEvent commit;
    commit.setCommitString(arriving);
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"typed", [&] { QTest::keyClicks(&edit, u"a1 2x23"_s); }},
        {"Ctrl+V", [&] { QTest::keyClick(&edit, Qt::Key_V, Qt::ControlModifier); }},
        {"Shift+Insert", [&] { QTest::keyClick(&edit, Qt::Key_Insert, Qt::ShiftModifier); }},
        {"edit menu", [&] { PasteFromMenu(); }},
        {"dropped",
         [&] { EXPECT_EQ(Drop(arriving), Qt::CopyAction) << "the source would lose what was refused"; }},
        {"input method", [&] { QApplication::sendEvent(&edit, &commit); }},
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
    QTest::keyClicks(&edit, u"x2"_s);
    EXPECT_EQ(edit.text(), "123"_L1) << "a refused key must not delete the selection";
    edit.setSelection(1, 2);
    QTest::keyClicks(&edit, u"3"_s);
    EXPECT_EQ(edit.text(), "13"_L1);
    QTest::keyClick(&edit, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(edit.text(), "123"_L1);
}

TEST_F(KeyFilteredLineEditTest, SelectsItsTextWhenEnteredByMouseUntilDragged) {
    QPoint at = EnterByMouse();
    QTest::mouseMove(&edit, at + QPoint(1, 0));
    QTest::mouseRelease(&edit, Qt::LeftButton, {}, at);
    EXPECT_EQ(edit.selectedText(), edit.text()) << "a trembling hand is no drag";
    QTest::mouseClick(&edit, Qt::LeftButton, {}, at);
    EXPECT_FALSE(edit.hasSelectedText()) << "a second click sets the cursor";

    at = EnterByMouse();
    const QPoint to = at + QPoint(edit.fontMetrics().horizontalAdvance(u"123"_s), 0);
    QTest::mouseMove(&edit, to);
    QMouseEvent drag(QEvent::MouseMove, to, edit.mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(&edit, &drag);
    EXPECT_EQ(edit.selectedText(), "123"_L1);
    QTest::mouseRelease(&edit, Qt::LeftButton, {}, to);
    other.setFocus();
    edit.setFocus(Qt::TabFocusReason);
    QTest::mouseClick(&edit, Qt::LeftButton, {}, at);
    EXPECT_FALSE(edit.hasSelectedText()) << "entered by key, then clicked";
}

TEST_F(KeyFilteredLineEditTest, IsLeftForAnotherControlButNotForMenusAndWindows) {
    QSignalSpy left(&edit, &KeyFilteredLineEdit::Left);
    for (const Qt::FocusReason passing : {Qt::PopupFocusReason, Qt::ActiveWindowFocusReason}) {
        edit.setText(u"12"_s);
        edit.setCursorPosition(1);
        for (const QEvent::Type type : {QEvent::FocusOut, QEvent::FocusIn}) {
            QFocusEvent event(type, passing);
            QApplication::sendEvent(&edit, &event);
        }
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
    Drop(u"12"_s);
    EXPECT_EQ(edit.text(), "3"_L1);
}

TEST_F(KeyFilteredLineEditTest, EnterEndsInTheBoxAndAMousePressIsTold) {
    QSignalSpy entered(&edit, &KeyFilteredLineEdit::EnterPressed);
    QSignalSpy pressed(&edit, &KeyFilteredLineEdit::MousePressed);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, u"\r"_s);
        QApplication::sendEvent(&edit, &press);
        EXPECT_TRUE(press.isAccepted()) << "it would reach a dialog's default button";
    }
    EXPECT_EQ(entered.count(), 2);
    QTest::mouseClick(&edit, Qt::LeftButton);
    EXPECT_EQ(pressed.count(), 1);
}
