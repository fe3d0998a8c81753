// The main window with scripted boxes, a scripted serial port on a virtual clock and a store in memory.
#pragma once

#include "editor/CorvaneForm.h"
#include "model/ProgramState.h"
#include "pages/PageTab.h"
#include "support/ForwardingControl.h"
#include "support/MemoryStore.h"
#include "support/RecordText.h"
#include "support/ScriptedDialogs.h"
#include "support/ScriptedPort.h"
#include "support/TestData.h"

#include <QtTest>
#include <QtWidgets>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QStatusBar>
#include <QTabWidget>
#include <QTest>
#include <QWindow>

#include <gtest/gtest.h>

namespace vek::test {

using namespace Qt::StringLiterals;

/// The clock of a test outlives the windows that use it.
using BorrowedTimer = ForwardingTimer;

class EditorTest : public testing::Test {
  protected:
    EditorTest()
        : services{.Boxes = boxes,
                   .Store = store,
                   .MakeSerialControl = [this] { return std::make_unique<ForwardingControl>(port); },
                   .MakeTimer = [this] { return std::make_unique<BorrowedTimer>(port); },
                   .PortNames = [this] { return ++looksForPorts, QStringList{u"ttyUSB0"_s}; },
                   .FactsOfPort = [this](std::size_t row) { return facts[row]; },
                   .Clock = [this] { return std::int64_t{port.Now}; }} {
        Restart();
    }
    /// The window as a program has it that starts now.
    void Restart(const std::string& commandLine = {}) {
        window.reset();
        window = std::make_unique<CorvaneForm>(services, commandLine);
        window->FinishStart();
        window->show();
    }
    /// A control of the window by its name.
    template <typename Widget = QWidget>
    Widget* Find(const QString& name) {
        auto* found = window->findChild<Widget*>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return found;
    }
    /// A part of a custom control.
    template <typename Widget = QWidget>
    Widget* Part(const QString& control, const QString& part) {
        return Find(control)->template findChild<Widget*>(part);
    }
    /// Lets pending events run, boxes be answered and the device talk until nothing more happens.
    void Settle() {
        // What follows from an event may take some more turns of the event loop.
        for (int idle = 0; idle < 3; ++idle) {
            QCoreApplication::processEvents();
            if (boxes.AnyOpen() || port.Step())
                idle = -1;
        }
    }
    /// File, changes, addresses and connection, as the status bar tells them.
    QString Status() {
        window->Timer1_Tick();
        QStringList texts;
        for (const char* field : {"StatusFile", "StatusChanges", "StatusBase", "StatusLink"})
            texts += Find<QLabel>(QString::fromLatin1(field))->text();
        return texts.join(u'|');
    }
    /// What the status bar says for a moment.
    QString Told() { return window->statusBar()->currentMessage(); }
    /// The text of Undo or Redo in the open menu.
    QString EditText(const char* action) {
        Q_EMIT Find<QMenu>(u"EditMenu"_s)->aboutToShow();
        return Find<QAction>(QString::fromLatin1(action))->text();
    }
    bool Chosen(const QString& option) { return Find<QAbstractButton>(option)->isChecked(); }
    /// The text of a box for typing.
    QString TextIn(const QString& control) { return Part<QLineEdit>(control, u"Text1"_s)->text(); }
    /// Gives the window the keyboard, for what depends on the focus.
    void Activate() {
        window->activateWindow();
        QApplication::setActiveWindow(window.get());
        QCoreApplication::processEvents();
        ASSERT_TRUE(window->isActiveWindow());
    }
    /// Where the mark of a radio button or check box is, or the left of a push button, in the window.
    QPoint MarkOf(QWidget* button) { return button->mapTo(window.get(), QPoint(8, button->height() / 2)); }
    void Press(QWidget* button) {
        QTest::mousePress(window->windowHandle(), Qt::LeftButton, {}, MarkOf(button));
    }
    void Release(QWidget* button) {
        QTest::mouseRelease(window->windowHandle(), Qt::LeftButton, {}, MarkOf(button));
        Settle();
    }
    void Click(const QString& name) {
        Find<QAbstractButton>(name)->click();
        Settle();
    }
    void Trigger(const QString& action) {
        Find<QAction>(action)->trigger();
        Settle();
    }
    void ShowTab(int tab) {
        Find<QTabWidget>(u"SSTab1"_s)->setCurrentIndex(tab);
        Settle();
    }
    int ShownTab() { return Find<QTabWidget>(u"SSTab1"_s)->currentIndex(); }
    /// Goes online with a device on COM1 that accepts everything.
    void GoOnline() {
        port.Present = {1};
        port.OnOutput = [this](const ByteVector& bytes) {
            port.Reply(1, bytes.size() == 6 ? ByteVector{39, 1, 0, 255 - 39 - 1} : ByteVector{240});
        };
        ShowTab(OnlineTab);
        Click(u"OnlineSearch"_s);
        boxes.ExpectMessage(u"Online"_s, u"Matrix Vek is now online."_s, MessageIcon::None);
        Click(u"OnlinePort_0"_s);
    }
    /// The question whether the changes are to be saved.
    void ExpectUnsaved(Answer answer) {
        boxes.ExpectYesNoCancel(u"Config Changed!"_s,
                                u"Current cofiguration has changed,\r\nDo you wish to save changes?"_s,
                                answer);
    }
    void ExpectSaved(const QString& name) {
        boxes.ExpectMessage(u"File Saved."_s, u"Configuration saved to "_s + name, MessageIcon::None);
    }
    /// Opens a file; what is not saved goes.
    void OpenAnyway(const QString& path) {
        if (ConfigDiffers())
            ExpectUnsaved(Answer::No);
        boxes.ExpectOpenFile(QString::fromStdString(CurrentFileName), path);
        Trigger(u"OPEN"_s);
    }
    /// Replaces the text of a control's box by typing and Enter.
    void Type(const QString& control, const QString& text) {
        auto* box = Part<QLineEdit>(control, u"Text1"_s);
        box->selectAll();
        QTest::keyClick(box, Qt::Key_Backspace);
        QTest::keyClicks(box, text);
        QTest::keyClick(box, Qt::Key_Return);
        Settle();
    }
    void PressKnob(const QString& control, Qt::Key key) {
        QTest::keyClick(Part(control, u"Command1"_s), key);
        Settle();
    }
    static std::string Bytes() { return RecordText(Config); }

    ScriptedDialogs boxes;
    MemoryStore store;
    ScriptedPort port;
    int looksForPorts = 0;
    std::array<PortFacts, portCount> facts;
    EditorServices services;
    std::unique_ptr<CorvaneForm> window;
};

inline QString Element(const char* name, std::size_t index) {
    return u"%1_%2"_s.arg(QString::fromLatin1(name)).arg(index);
}

} // namespace vek::test
