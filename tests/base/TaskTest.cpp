#include "base/Task.h"

#include "base/Errors.h"

#include <gtest/gtest.h>

#include <coroutine>
#include <memory>
#include <string>

using namespace vek;

/// What a task waits for: resumed by the test.
class Gate {
  public:
    bool await_ready() const { return false; }
    void await_suspend(std::coroutine_handle<> waiting) { waiting_ = waiting; }
    void await_resume() const {}
    void Open() { std::exchange(waiting_, {}).resume(); }

  private:
    std::coroutine_handle<> waiting_;
};

/// Tells when it goes.
struct Witness {
    std::string& Story;
    const char* Name;
    ~Witness() { (Story += '~') += Name; }
};

class Tasks : public testing::Test {
  protected:
    Task<int> Double(int value) {
        const Witness witness{story, "inner "};
        co_await gate;
        if (value < 0)
            throw OverflowError();
        co_return 2 * value;
    }
    Task<> AddUp(int count) {
        const Witness witness{story, "outer "};
        for (int i = 0; i < count; ++i) {
            const int doubled = co_await Double(i);
            sum += doubled;
        }
    }
    Task<> TryNegative() {
        try {
            co_await Double(-1);
        } catch (const OverflowError&) {
            story += "caught ";
        }
        co_await AddUp(0);
        co_await Double(-1);
        sum = -1;
    }
    Gate gate;
    std::string story;
    int sum = 0;
    std::exception_ptr failure;
    RunningTask::Ended ended = [this](const std::exception_ptr& thrown) {
        story += "ended";
        failure = thrown;
    };
    RunningTask running;
};

TEST_F(Tasks, RunLazilyAndGoOnWhereTheyWait) {
    Task<> task = AddUp(3);
    EXPECT_EQ(story, "");
    running.Start(std::move(task), ended);
    EXPECT_TRUE(running.Running());
    for (int opened = 0; opened < 3; ++opened)
        gate.Open();
    EXPECT_EQ(sum, 0 + 2 + 4);
    EXPECT_EQ(story, "~inner ~inner ~inner ~outer ended");
    EXPECT_FALSE(running.Running());
    EXPECT_EQ(failure, nullptr);
}

TEST_F(Tasks, PassExceptionsToWhoAwaitsThem) {
    running.Start(TryNegative(), ended);
    gate.Open();
    gate.Open();
    EXPECT_EQ(story, "~inner caught ~outer ~inner ended");
    EXPECT_EQ(sum, 0);
    ASSERT_NE(failure, nullptr);
    EXPECT_THROW(std::rethrow_exception(failure), OverflowError);
}

TEST_F(Tasks, EndWhereTheyWaitWhenTheirOwnerGoes) {
    {
        RunningTask owner;
        owner.Start(AddUp(3), ended);
        gate.Open();
    }
    EXPECT_EQ(story, "~inner ~inner ~outer ") << "from the inside out, and nothing is told";
    running.Start(AddUp(1), ended);
    running.Cancel();
    EXPECT_FALSE(running.Running());
    running.Start(AddUp(0), ended);
    EXPECT_EQ(story.substr(story.size() - 12), "~outer ended")
        << "another one can follow, also one that never waits";
    { const Task<> neverRun = AddUp(1); }
}

TEST_F(Tasks, MayBeFollowedByAnotherWhenTheyEnd) {
    int rounds = 0;
    RunningTask::Ended again = [&](const std::exception_ptr&) {
        if (++rounds < 3)
            running.Start(AddUp(1), again);
    };
    running.Start(AddUp(1), again);
    while (running.Running())
        gate.Open();
    EXPECT_EQ(rounds, 3);

    auto owner = std::make_unique<RunningTask>();
    RunningTask& last = *owner;
    last.Start(AddUp(1), [&](const std::exception_ptr&) { owner.reset(); });
    gate.Open();
    EXPECT_EQ(owner, nullptr);
}
