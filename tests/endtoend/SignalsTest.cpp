// What a signal leaves behind: a restarted unit, a closed port, and a copy of what was not saved.
#include "simulator/RunningVek.h"
#include "support/TestData.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <optional>
#include <sys/wait.h>

using namespace vek;
using namespace vek::test;

namespace {

/// A program whose output and messages can be read.
class Child {
  public:
    explicit Child(std::vector<std::string> arguments) {
        int out[2] = {};
        int messages[2] = {};
        if (::pipe2(out, O_CLOEXEC) != 0 || ::pipe2(messages, O_CLOEXEC) != 0)
            throw std::runtime_error("no pipes");
        std::vector<char*> pointers;
        for (std::string& argument : arguments)
            pointers.push_back(argument.data());
        pointers.push_back(nullptr);
        process_ = ::fork();
        if (process_ == 0) {
            ::dup2(out[1], STDOUT_FILENO);
            ::dup2(messages[1], STDERR_FILENO);
            ::execv(pointers[0], pointers.data());
            ::_exit(127);
        }
        ::close(out[1]), ::close(messages[1]);
        out_ = out[0], messages_ = messages[0];
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child() {
        ::kill(process_, SIGKILL);
        ::waitpid(process_, nullptr, 0);
        ::close(out_), ::close(messages_);
    }
    /// Until it says something.
    std::string Output() const { return Read(out_); }
    /// Ends it with the signal; how it ended.
    int End(int signal) {
        ::kill(process_, signal);
        int status = 0;
        ::waitpid(process_, &status, 0);
        return WIFSIGNALED(status) ? WTERMSIG(status) : -1;
    }
    /// What it said on standard error, once it has ended.
    std::string Messages() const {
        std::string all;
        for (std::string part = Read(messages_); !part.empty(); part = Read(messages_))
            all += part;
        return all;
    }

  private:
    static std::string Read(int file) {
        char text[4096];
        const ssize_t got = ::read(file, text, sizeof text);
        return {text, static_cast<std::size_t>(std::max<ssize_t>(got, 0))};
    }
    pid_t process_ = -1;
    int out_ = -1;
    int messages_ = -1;
};

/// What the device understood last.
std::optional<DeviceEventKind> LastRequest(RunningVek& vek) {
    std::optional<DeviceEventKind> last;
    for (const DeviceEvent& event : vek->Events())
        if (event.Kind != DeviceEventKind::Refused)
            last = event.Kind;
    return last;
}

} // namespace

TEST(Signals, RestartTheUnitCloseThePortAndKeepWhatIsNotSaved) {
    const std::string incomplete =
        "vorn-matrix-editor: COM1 (pts) holds an incomplete configuration: program it again\n";
    const std::string playing =
        "vorn-matrix-editor: COM1 (pts) still plays the levels of the online session: switch it off and on\n";
    const struct {
        const char* task;
        int signal;
        const char* fault; ///< of the device
        std::string said;
    } cases[] = {
        {"online", SIGTERM, "", ""},
        {"online", SIGINT, "late-reply:200@online-restart:2x*", ""},
        {"online", SIGHUP, "no-reply@online-restart:2x*", playing},
        {"search", SIGTERM, "no-reply@anyx*", ""},
        {"download", SIGTERM, "", incomplete},
        {"download", SIGINT, "late-reply:100@blockx*", incomplete},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.task) + " " + std::to_string(c.signal) + " " + c.fault);
        const TemporaryFolder state;
        SimulatedVekOptions options;
        if (*c.fault != '\0')
            options.Faults = {ParseFault(c.fault)};
        RunningVek vek(options);
        Child editor({SIGNALLED_EDITOR, c.task, vek->PortPath(), state.Path()});
        ASSERT_EQ(editor.Output(), "working\n") << editor.Messages();
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(editor.End(c.signal), c.signal);
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
        // Qt says things of its own there.
        const std::string said = editor.Messages();
        EXPECT_EQ(said.substr(std::min(said.find("vorn-matrix-editor: "), said.size())), c.said);
        const bool online = std::string_view(c.task) == "online";
        const bool searching = std::string_view(c.task) == "search";
        EXPECT_TRUE(searching ||
                    LastRequest(vek) == (online ? DeviceEventKind::OnlineRestart : DeviceEventKind::Restart));
        const bool kept = std::filesystem::exists(state.Path("recovery")) &&
                          !std::filesystem::is_empty(state.Path("recovery"));
        EXPECT_EQ(kept, online);
    }
}
