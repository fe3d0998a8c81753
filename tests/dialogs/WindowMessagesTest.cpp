#include "dialogs/WindowMessages.h"

#include "base/Errors.h"
#include "support/ScriptedDialogs.h"
#include "support/Windows.h"

using namespace vek;
using namespace Qt::StringLiterals;
using test::ScriptedDialogs;

class Messages : public testing::Test {
  protected:
    void LetEventsRun() const {
        for (int idle = 0; idle < 3; ++idle) {
            QCoreApplication::processEvents();
            if (dialogs.AnyOpen())
                idle = -1;
        }
    }
    static Task<> Ask(WindowMessages& shown, std::string& story) {
        co_await shown.Shown(MessageIcon::None, u"Online"_s, u"hello"_s);
        story += "shown ";
        const bool yes = co_await shown.Confirmed(u"All sent"_s, u"Another?"_s, Answer::No);
        story += yes ? "yes" : "no";
    }

    ScriptedDialogs dialogs;
    QWidget window;
    WindowMessages messages{window, dialogs};
};

TEST_F(Messages, OpenInOrderAfterTheHandlerThatShowedThem) {
    std::string story;
    dialogs.ExpectMessage(u"A"_s, u"1"_s, MessageIcon::Exclamation, [&] {
        story += "one ";
        messages.Show(MessageIcon::None, u"C"_s, u"3"_s);
    });
    dialogs.ExpectMessage(u"B"_s, u"2"_s, MessageIcon::None, [&] { story += "two "; });
    dialogs.ExpectMessage(u"C"_s, u"3"_s, MessageIcon::None, [&] { story += "three "; });
    messages.Show(MessageIcon::Exclamation, u"A"_s, u"1"_s);
    messages.Show(MessageIcon::None, u"B"_s, u"2"_s);
    story += "handler ";
    LetEventsRun();
    EXPECT_EQ(story, "handler one two three ");
}

TEST_F(Messages, AreAwaitedByConversations) {
    for (const Answer answer : {Answer::Yes, Answer::No}) {
        std::string story;
        RunningTask conversation;
        dialogs.ExpectMessage(u"Online"_s, u"hello"_s, MessageIcon::None, [&] { story += "open "; });
        dialogs.ExpectYesNo(u"All sent"_s, u"Another?"_s, answer, Answer::No);
        conversation.Start(Ask(messages, story), [&](const std::exception_ptr&) { story += " over"; });
        EXPECT_EQ(story, "");
        LetEventsRun();
        EXPECT_EQ(story, answer == Answer::Yes ? "open shown yes over" : "open shown no over");
    }
}

TEST_F(Messages, AreWithdrawnWithTheirConversation) {
    std::string story;
    RunningTask first, second;
    dialogs.ExpectMessage(u"Online"_s, u"hello"_s, MessageIcon::None, [&] {
        second.Cancel(); // still waiting for its turn
        first.Cancel();  // open
        EXPECT_FALSE(dialogs.AnyOpen());
    });
    first.Start(Ask(messages, story), [&](const std::exception_ptr&) { story += "over"; });
    second.Start(Ask(messages, story), [&](const std::exception_ptr&) { story += "over"; });
    LetEventsRun();
    EXPECT_EQ(story, "");
    dialogs.ExpectMessage(u"A"_s, u"1"_s, MessageIcon::None);
    messages.Show(MessageIcon::None, u"A"_s, u"1"_s);
    LetEventsRun();
    EXPECT_TRUE(dialogs.Done()) << "the next one opens";
}

TEST_F(Messages, TellRunTimeErrorsAndLetOthersPass) {
    EXPECT_TRUE(Guarded(messages, [] {}));
    dialogs.ExpectMessage(u"Error!"_s, u"Division by zero"_s);
    dialogs.ExpectMessage(u"Error!"_s, u"Out of memory"_s);
    EXPECT_FALSE(Guarded(messages, [] { throw DivisionByZeroError(); }));
    EXPECT_FALSE(Guarded(messages, [] { throw std::bad_alloc(); }));
    EXPECT_THROW(Guarded(messages, [] { throw FileError("disk"); }), FileError);
    LetEventsRun();
}

TEST_F(Messages, OnScreenBlockTheirWindowOnly) {
    WindowMessages onScreen(window, ScreenDialogs());
    ShowActive(window);
    std::string story;
    RunningTask conversation;
    conversation.Start(Ask(onScreen, story), [](const std::exception_ptr&) {});
    for (const std::string told : {"shown ", "shown no"}) {
        ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::activeModalWidget() != nullptr; }));
        QWidget* box = QApplication::activeModalWidget();
        EXPECT_EQ(box->windowModality(), Qt::WindowModal);
        EXPECT_EQ(box->parentWidget(), &window);
        QTest::keyClick(box, Qt::Key_Escape);
        EXPECT_TRUE(QTest::qWaitFor([&] { return story == told; }));
    }
}

TEST_F(Messages, WithASecondButtonLeaveTheWindowUsable) {
    WindowMessages onScreen(window, ScreenDialogs());
    ShowActive(window);
    bool other = false;
    const auto ask = [](WindowMessages& shown, bool& answer) -> Task<> {
        answer = co_await shown.ShownWith(u"Disconnect"_s, MessageIcon::Exclamation, u"Error!"_s, u"text"_s);
    };
    const std::pair<std::function<void(QMessageBox&)>, bool> ends[] = {
        {[](QMessageBox& box) { box.findChild<QAbstractButton*>(u"OtherButton"_s)->click(); }, true},
        {[](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); }, false},
        {[](QMessageBox& box) { box.defaultButton()->click(); }, false},
        {[](QMessageBox& box) { box.close(); }, false},
        {[&](QMessageBox&) { onScreen.TakeNoteOfAll(); }, false},
    };
    for (const auto& [end, pressed] : ends) {
        other = !pressed;
        RunningTask conversation;
        conversation.Start(ask(onScreen, other), [](const std::exception_ptr&) {});
        ASSERT_TRUE(QTest::qWaitFor([&] { return window.findChild<QMessageBox*>() != nullptr; }));
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
        end(*window.findChild<QMessageBox*>());
        EXPECT_TRUE(QTest::qWaitFor([&] { return !conversation.Running(); }));
        EXPECT_EQ(other, pressed);
        LetEventsRun();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}
