// A window's one place for the boxes that nobody waits for in an event handler.
#pragma once

#include "base/Task.h"
#include "dialogs/Dialogs.h"

#include <QObject>
#include <QTimer>

#include <deque>
#include <exception>
#include <memory>
#include <utility>

class QWidget;

namespace vek {

/// Boxes open window-modal (those with a second button block nothing), one after the other, from the event
/// loop, and never while a mouse button is held: a click that brought a box up (by leaving a field) does what
/// it says before the box takes the mouse away.
class WindowMessages : public QObject {
    Q_OBJECT

  public:
    /// Both must outlive this object.
    WindowMessages(QWidget& window, Dialogs& dialogs);
    ~WindowMessages() override;

    void Show(MessageIcon icon, const QString& title, const QString& text);
    /// Shows what ended an event handler or a conversation: a run-time error or exhausted memory, as
    /// "Error!". Rethrows any other exception.
    void ShowRunTimeError(const std::exception_ptr& error);
    /// The same for a conversation, whose window goes on whatever ended it: any std::exception is shown.
    void ShowFailure(const std::exception_ptr& error);

    // For conversations. Destroying the task withdraws the box.

    /// Ends when the user has closed the message.
    Task<> Shown(MessageIcon icon, QString title, QString text);
    /// The same with a second button; true when it was pressed.
    Task<bool> ShownWith(QString other, MessageIcon icon, QString title, QString text);
    /// True for Yes. Closing the box counts as No.
    Task<bool> Confirmed(QString title, QString text, Answer defaultAnswer);
    /// Closes the messages that conversations wait for, as if the user had read them.
    void TakeNoteOfAll();

  private:
    struct Box {
        MessageIcon Icon = MessageIcon::None;
        QString Title;
        QString Text;
        QString Other = {}; ///< the caption of a second button
        bool IsQuestion = false;
        Answer DefaultAnswer = Answer::Yes;
        BoxClosed Closed = {};
        int Number = 0;
    };
    class Pause;

    int Add(Box box);
    void Withdraw(int number);
    void OpenNext();
    void Closed(Answer answer);

    QWidget& window_;
    Dialogs& dialogs_;
    QTimer next_; ///< opens the first box
    std::deque<Box> boxes_;
    std::unique_ptr<OpenBox> open_; ///< the first box, once it is open
    int lastNumber_ = 0;
};

/// Runs the callable, with which an event handler enters the program. A run-time error ends it and is shown;
/// the window lives on. Returns whether the callable ran to its end.
template <class Callable>
bool Guarded(WindowMessages& messages, Callable&& callable) {
    try {
        std::forward<Callable>(callable)();
        return true;
    } catch (...) {
        messages.ShowRunTimeError(std::current_exception());
    }
    return false;
}

} // namespace vek
