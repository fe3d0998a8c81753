#include "link/LinkDoctor.h"

#include <algorithm>
#include <utility>

namespace vek {

namespace {

constexpr int listeningTime = 500; // milliseconds

/// Closes the port however the examination ends.
class ClosesAtEnd {
  public:
    explicit ClosesAtEnd(SerialControl& port) : port_(port) {}
    ClosesAtEnd(const ClosesAtEnd&) = delete;
    ClosesAtEnd& operator=(const ClosesAtEnd&) = delete;
    ~ClosesAtEnd() {
        if (port_.PortOpen())
            port_.SetPortOpen(false);
    }

  private:
    SerialControl& port_;
};

} // namespace

LinkDoctor::LinkDoctor(SerialControl& port, OneShotTimer& timer, const DeviceTypeList& types,
                       PortSystem system, std::function<void()> changed)
    : port_(port), link_(port, timer, types, *this), system_(std::move(system)),
      changed_(std::move(changed)) {}

Task<> LinkDoctor::ExamineAll() {
    for (std::size_t row = 0; row < portCount; ++row) {
        const PortFacts facts = system_.Facts(row);
        if (facts.Device.empty())
            continue;
        co_await Examine(row, "COM" + std::to_string(row + 1) + " (" + facts.Name + ")");
    }
}

Task<> LinkDoctor::Examine(std::size_t row, std::string title) {
    examinations_.emplace_back().Title = std::move(title);
    co_await ExamineNext(row);
    Begin(ExaminationStep::Done);
}

Task<> LinkDoctor::ExamineNext(std::size_t row) {
    Current().Facts = system_.Facts(row);
    if (!Current().Facts.Exists || !Current().Facts.IsSerial)
        co_return;
    Begin(ExaminationStep::Settings);
    Current().RefusedSettings = system_.RefusedSettings(row);
    const ClosesAtEnd closer(port_);
    co_await link_.set_active_port(row);
    if (!port_.PortOpen()) {
        Current().Finding = NotOpened(port_.WhyNotOpen());
        co_return;
    }
    Current().Finding = Silent();
    Begin(ExaminationStep::Listening);
    Current().Unasked = co_await link_.Listen(listeningTime);
    Begin(ExaminationStep::Asking);
    Current().Finding = co_await link_.Find_vek(true);
    Current().Vanished = !port_.PortOpen();
}

void LinkDoctor::Begin(ExaminationStep step) {
    Current().Step = step;
    changed_();
}

void LinkDoctor::Heard(const RateAnswer& answer) {
    auto& answers = Current().Answers;
    const auto same = std::ranges::find(answers, answer.Settings, &RateAnswer::Settings);
    if (same == answers.end())
        answers.push_back(answer);
    else
        *same = answer;
    changed_();
}

Task<> LinkDoctor::Failed(Failure failure) {
    Current().Restart = failure;
    co_return;
}

} // namespace vek
