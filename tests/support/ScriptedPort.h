// A serial port whose other end is a script, and the clock that both live by. Nothing takes real time:
// running goes straight to the next thing that happens.
#pragma once

#include "base/Task.h"
#include "link/SerialControl.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace vek::test {

/// "01 FF"
inline std::string Hex(std::span<const std::uint8_t> bytes) {
    std::string text;
    for (const unsigned byte : bytes) {
        text += text.empty() ? "" : " ";
        text += "0123456789ABCDEF"[byte >> 4];
        text += "0123456789ABCDEF"[byte & 0xF];
    }
    return text;
}

class ScriptedPort : public SerialControl, public OneShotTimer {
  public:
    // The script.

    std::set<int> Present = {1, 2, 3, 4}; ///< ports that can be opened
    OpenFailure Refusal = OpenFailure::NotThere;
    std::function<void(const ByteVector& bytes)> OnOutput; ///< what the device does about bytes sent to it
    long SendTime = 0;                                     ///< milliseconds that an output takes

    /// Bytes from the device, so many milliseconds from now.
    void Reply(long delay, const ByteVector& bytes) {
        At(delay, [this, bytes] {
            received.insert(received.end(), bytes.begin(), bytes.end());
            Tell(portListener);
        });
    }
    /// Whatever happens so many milliseconds from now: a click, a pulled plug.
    void At(long delay, std::function<void()> action) { agenda.emplace(Now + delay, std::move(action)); }
    void Vanish() {
        Present.erase(number);
        open = false;
        received.clear();
        At(0, [this] { Tell(portListener); });
    }

    // What happened: "time what", in order.

    long Now = 0; ///< milliseconds
    std::vector<std::string> Events;
    std::vector<std::string> Sent; ///< the bytes of each Output
    std::string Rate;              ///< the settings now

    /// The events that contain a text, as one text: "0 open 1, 100 set 110,n,8,2".
    std::string Story(const std::string& what = "") const {
        std::string story;
        for (const std::string& event : Events) {
            if (event.find(what) != std::string::npos)
                (story += story.empty() ? "" : ", ") += event;
        }
        return story;
    }
    /// How often these bytes ("01 FF") were sent.
    auto Count(const std::string& bytes) const { return std::count(Sent.begin(), Sent.end(), bytes); }
    void Forget() {
        Events.clear();
        Sent.clear();
    }

    // Running.

    /// The next thing that happens; false when nothing will.
    bool Step() {
        if (!agenda.empty() && (!Enabled() || agenda.begin()->first <= timerEnd)) {
            auto next = agenda.extract(agenda.begin());
            Now = std::max(Now, next.key());
            next.mapped()();
            return true;
        }
        if (!Enabled())
            return false;
        Now = timerEnd;
        Stop();
        Tell(timerListener);
        return true;
    }
    /// Runs a task to its end and returns its result, or nothing when it was cancelled: `running` is what to
    /// cancel.
    template <typename Value>
    std::optional<Value> Run(RunningTask& running, Task<Value> task) {
        std::optional<Value> result;
        Converse(running, Keep(std::move(task), result));
        return result;
    }
    void Run(RunningTask& running, Task<> task) { Converse(running, std::move(task)); }

    // SerialControl

    void SetCommPort(int port) override { number = port; }
    void SetPortOpen(bool value) override {
        open = value && Present.contains(number);
        received.clear();
        sentAt = 0;
        Note(open ? "open " + std::to_string(number) : "close");
    }
    bool PortOpen() const override { return open; }
    OpenFailure WhyNotOpen() const override { return Refusal; }
    void SetSettings(std::string_view settings) override {
        if (Sending())
            throw std::logic_error("changes the settings while sending");
        Rate = settings;
        Note("set " + Rate);
    }
    void Output(std::span<const std::uint8_t> bytes) override {
        if (!open)
            throw std::logic_error("sends to a closed port");
        Sent.push_back(Hex(bytes));
        Note("send " + Sent.back());
        sentAt = Now + SendTime;
        if (SendTime > 0)
            At(SendTime, [this] { Tell(portListener); });
        if (OnOutput)
            OnOutput(ByteVector(bytes.begin(), bytes.end()));
    }
    bool Sending() const override { return open && Now < sentAt; }
    ByteVector Input() override {
        Note("input");
        return std::exchange(received, {});
    }
    std::size_t InBufferCount() const override { return received.size(); }

    // OneShotTimer

    void Start(int milliseconds) override { timerEnd = Now + milliseconds; }
    void Stop() override { timerEnd = never; }
    bool Enabled() const override { return timerEnd != never; }

    // Both.

    /// The port and the clock are listened to by the same object.
    void SetListener(std::function<void()> listener) override {
        portListener = timerListener = std::move(listener);
    }

  private:
    static void Tell(const std::function<void()>& listener) {
        if (listener)
            listener();
    }
    void Note(const std::string& what) { Events.push_back((std::to_string(Now) += ' ') += what); }
    template <typename Value>
    static Task<> Keep(Task<Value> task, std::optional<Value>& result) {
        Value value = co_await task;
        result = std::move(value);
    }
    void Converse(RunningTask& running, Task<> task) {
        std::exception_ptr failure;
        running.Start(std::move(task), [&](const std::exception_ptr& thrown) { failure = thrown; });
        while (running.Running()) {
            if (!Step())
                throw std::logic_error("waits for what will never happen");
        }
        if (failure)
            std::rethrow_exception(failure);
    }

    static constexpr long never = -1;
    int number = 1;
    bool open = false;
    ByteVector received;
    long sentAt = 0;
    long timerEnd = never;
    std::function<void()> portListener, timerListener;
    std::multimap<long, std::function<void()>> agenda;
};

} // namespace vek::test
