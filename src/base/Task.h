// Straight code that waits: a lazy coroutine, and the owner that runs one.
//
// Rules that keep it sound: `co_await` stands only as a whole statement or as an initialiser; no lambda with
// captures is a coroutine; parameters are values or objects that outlive the task.
#pragma once

#include <coroutine>
#include <exception>
#include <functional>
#include <optional>
#include <utility>

namespace vek {

namespace detail {

/// What promises of all values share: who goes on when the task is over, and the exception that ended it.
class TaskPromiseBase {
  public:
    struct HandOver {
        bool await_ready() const noexcept { return false; }
        template <typename Promise>
        std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> ended) const noexcept {
            return ended.promise().continuation_;
        }
        void await_resume() const noexcept {}
    };

    std::suspend_always initial_suspend() const noexcept { return {}; }
    HandOver final_suspend() const noexcept { return {}; }
    void unhandled_exception() noexcept { failure_ = std::current_exception(); }
    void ContinueWith(std::coroutine_handle<> continuation) noexcept { continuation_ = continuation; }

  protected:
    void RethrowFailure() const {
        if (failure_)
            std::rethrow_exception(failure_);
    }

  private:
    std::coroutine_handle<> continuation_ = std::noop_coroutine();
    std::exception_ptr failure_;
};

template <typename Value>
class TaskPromise : public TaskPromiseBase {
  public:
    std::coroutine_handle<TaskPromise> get_return_object() noexcept {
        return std::coroutine_handle<TaskPromise>::from_promise(*this);
    }
    void return_value(Value value) { value_ = std::move(value); }
    Value Result() {
        RethrowFailure();
        return std::move(*value_);
    }

  private:
    std::optional<Value> value_;
};

template <>
class TaskPromise<void> : public TaskPromiseBase {
  public:
    std::coroutine_handle<TaskPromise> get_return_object() noexcept {
        return std::coroutine_handle<TaskPromise>::from_promise(*this);
    }
    void return_void() const noexcept {}
    void Result() const { RethrowFailure(); }
};

} // namespace detail

/// A coroutine that runs when it is awaited, once. Its result or its exception goes to whoever awaits it.
/// Destroying it ends it where it is suspended, with the destructors of everything in it, tasks it awaits
/// included.
template <typename Value = void>
class [[nodiscard]] Task {
  public:
    using promise_type = detail::TaskPromise<Value>;

    /*implicit*/ Task(std::coroutine_handle<promise_type> frame) noexcept : frame_(frame) {}
    Task(Task&& other) noexcept : frame_(std::exchange(other.frame_, {})) {}
    Task& operator=(Task&&) = delete;
    ~Task() {
        if (frame_)
            frame_.destroy();
    }

    bool await_ready() const noexcept { return false; }
    std::coroutine_handle<> await_suspend(std::coroutine_handle<> awaiting) const noexcept {
        frame_.promise().ContinueWith(awaiting);
        return frame_;
    }
    Value await_resume() const { return frame_.promise().Result(); }

  private:
    std::coroutine_handle<promise_type> frame_;
};

/// Owns the outermost task of a conversation and runs it. Declared last in its class, so that it ends first.
class RunningTask {
  public:
    /// Told when the task has ended by itself; null unless an exception ended it. Must not throw. May start
    /// another task or destroy the owner.
    using Ended = std::function<void(std::exception_ptr failure)>;

    RunningTask() = default;
    RunningTask(const RunningTask&) = delete;
    RunningTask& operator=(const RunningTask&) = delete;
    ~RunningTask() { Cancel(); }

    bool Running() const { return static_cast<bool>(frame_); }

    /// Runs the task until it first waits, or to its end. Only while none is running.
    void Start(Task<> task, Ended ended) {
        frame_ = Run(*this, std::move(task), std::move(ended)).Frame;
        frame_.resume();
    }

    /// Ends the task where it waits; nothing is told. Not from within the task.
    void Cancel() {
        if (frame_)
            std::exchange(frame_, {}).destroy();
    }

  private:
    struct Outermost {
        struct promise_type {
            Outermost get_return_object() noexcept {
                return {std::coroutine_handle<promise_type>::from_promise(*this)};
            }
            std::suspend_always initial_suspend() const noexcept { return {}; }
            std::suspend_never final_suspend() const noexcept { return {}; }
            void return_void() const noexcept {}
            [[noreturn]] void unhandled_exception() const noexcept { std::terminate(); }
        };
        std::coroutine_handle<> Frame;
    };

    static Outermost Run(RunningTask& owner, Task<> task, Ended ended) {
        std::exception_ptr failure;
        try {
            co_await task;
        } catch (...) {
            failure = std::current_exception();
        }
        owner.frame_ = {};
        ended(failure);
    }

    std::coroutine_handle<> frame_;
};

} // namespace vek
