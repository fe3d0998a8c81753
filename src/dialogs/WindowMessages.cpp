#include "dialogs/WindowMessages.h"

#include "base/Errors.h"

#include <QApplication>

#include <algorithm>
#include <coroutine>
#include <new>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds mouseLook(10); // while a button is held

} // namespace

/// Waits for the user's answer to a box.
class WindowMessages::Pause {
  public:
    Pause(WindowMessages& messages, Box box) : messages_(messages), box_(std::move(box)) {}
    Pause(const Pause&) = delete;
    Pause& operator=(const Pause&) = delete;
    ~Pause() { messages_.Withdraw(number_); }

    bool await_ready() const { return false; }
    void await_suspend(std::coroutine_handle<> waiting) {
        box_.Closed = [this, waiting](Answer answer) {
            answer_ = answer;
            waiting.resume();
        };
        number_ = messages_.Add(std::move(box_));
    }
    Answer await_resume() const { return answer_; }

  private:
    WindowMessages& messages_;
    Box box_;
    int number_ = 0;
    Answer answer_ = Answer::Cancel;
};

WindowMessages::WindowMessages(QWidget& window, Dialogs& dialogs) : window_(window), dialogs_(dialogs) {
    next_.setSingleShot(true);
    connect(&next_, &QTimer::timeout, this, &WindowMessages::OpenNext);
}

WindowMessages::~WindowMessages() = default;

void WindowMessages::Show(MessageIcon icon, const QString& title, const QString& text) {
    Add({.Icon = icon, .Title = title, .Text = text});
}

void WindowMessages::ShowRunTimeError(const std::exception_ptr& error) {
    try {
        std::rethrow_exception(error);
    } catch (const RunTimeError& known) {
        Show(MessageIcon::Exclamation, tr("Error!"), QString::fromUtf8(known.what()));
    } catch (const std::bad_alloc&) {
        Show(MessageIcon::Exclamation, tr("Error!"), tr("Out of memory"));
    }
}

void WindowMessages::ShowFailure(const std::exception_ptr& error) {
    try {
        ShowRunTimeError(error);
    } catch (const std::exception& other) {
        Show(MessageIcon::Exclamation, tr("Error!"), QString::fromStdString(other.what()));
    }
}

Task<> WindowMessages::Shown(MessageIcon icon, QString title, QString text) {
    Box box = {.Icon = icon, .Title = std::move(title), .Text = std::move(text)};
    Pause pause(*this, std::move(box));
    co_await pause;
}

Task<bool> WindowMessages::ShownWith(QString other, MessageIcon icon, QString title, QString text) {
    Box box = {.Icon = icon, .Title = std::move(title), .Text = std::move(text), .Other = std::move(other)};
    Pause pause(*this, std::move(box));
    const Answer answer = co_await pause;
    co_return answer == Answer::No;
}

Task<bool> WindowMessages::Confirmed(QString title, QString text, Answer defaultAnswer) {
    Box box = {.Title = std::move(title),
               .Text = std::move(text),
               .IsQuestion = true,
               .DefaultAnswer = defaultAnswer};
    Pause pause(*this, std::move(box));
    const Answer answer = co_await pause;
    co_return answer == Answer::Yes;
}

int WindowMessages::Add(Box box) {
    box.Number = ++lastNumber_;
    boxes_.push_back(std::move(box));
    if (!open_)
        next_.start(0);
    return lastNumber_;
}

void WindowMessages::Withdraw(int number) {
    const auto found = std::ranges::find(boxes_, number, &Box::Number);
    if (found == boxes_.end())
        return;
    if (found == boxes_.begin())
        open_.reset();
    boxes_.erase(found);
    if (!open_ && !boxes_.empty())
        next_.start(0);
}

void WindowMessages::TakeNoteOfAll() {
    const auto awaited = [](const Box& box) { return box.Closed && !box.IsQuestion; };
    std::vector<BoxClosed> waiting;
    for (const Box& box : boxes_) {
        if (awaited(box))
            waiting.push_back(box.Closed);
    }
    if (!boxes_.empty() && awaited(boxes_.front()))
        open_.reset();
    std::erase_if(boxes_, awaited);
    if (!open_ && !boxes_.empty())
        next_.start(0);
    for (const BoxClosed& closed : waiting)
        closed(Answer::Yes);
}

void WindowMessages::OpenNext() {
    if (open_ || boxes_.empty())
        return;
    if (QGuiApplication::mouseButtons() != Qt::NoButton) {
        next_.start(mouseLook);
        return;
    }
    const Box& box = boxes_.front();
    // A dialog that a command waits for stands in front of the window.
    QWidget* const modal = QApplication::activeModalWidget();
    QWidget* const parent = modal != nullptr ? modal : &window_;
    const auto closed = [this](Answer answer) { Closed(answer); };
    open_ = box.IsQuestion ? dialogs_.OpenYesNo(parent, box.Title, box.Text, box.DefaultAnswer, closed)
                           : dialogs_.OpenMessage(parent, box.Icon, box.Title, box.Text, box.Other, closed);
}

void WindowMessages::Closed(Answer answer) {
    open_.reset();
    const Box box = std::move(boxes_.front());
    boxes_.pop_front();
    if (!boxes_.empty())
        next_.start(0);
    if (box.Closed)
        box.Closed(answer);
}

} // namespace vek
