#include "device/OnlineTruth.h"

#include "controls/LevelTrim.h"
#include "controls/TextConversion.h"
#include "controls/WithoutEffect.h"
#include "device/ProgrammingTexts.h"
#include "editing/ModelView.h"
#include "model/Levels.h"
#include "pages/TrimPage.h"

#include <QStringList>

#include <algorithm>
#include <utility>
#include <vector>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

/// "+3 dB", "-22.5 dB"
QString LevelWords(float level) {
    if (level == mutedLevel)
        return QObject::tr("muted");
    return (level > 0 ? u"+"_s : QString()) + QString::number(level) + u" dB"_s;
}

bool Refused(const OutputTruth& truth) {
    const auto failed = truth.Failed ? truth.Failed : truth.RouteFailed;
    return failed == FailureKind::VolumeRefused || failed == FailureKind::RouteRefused;
}

// The same within a sentence.

/// "output 3 Main Output"
QString CalledInSentence(QString called) {
    called[0] = called[0].toLower();
    return called;
}

QString LevelInSentence(float level) { return LevelWords(level).replace(u'-', u'\u2212'); }

} // namespace

OnlineTruth::OnlineTruth(const OnlineParts& parts, const OnlineSession& session, const OnlineInputs& inputs,
                         std::function<bool()> busy)
    : parts_(parts), session_(session), inputs_(inputs), busy_(std::move(busy)) {
    show_.setSingleShot(true);
    connect(&show_, &QTimer::timeout, this, &OnlineTruth::Show);
}

void OnlineTruth::Begin(const QString& portName) {
    portName_ = portName;
    passMode_ = sentMode_ = parts_.View.CurrentMode();
    Show();
}

void OnlineTruth::PassBegins() { passMode_ = parts_.View.CurrentMode(); }

void OnlineTruth::Changed() {
    if (session_.IsOnline() && !show_.isActive())
        show_.start(0);
}

void OnlineTruth::End() {
    show_.stop();
    parts_.Strip.Reset();
    parts_.Strip.ShowWithoutEffect({});
    for (const TrimPage* page : {&parts_.InputTrims, &parts_.OutputTrims}) {
        for (LevelTrim* trim : page->Trims)
            DrawWithoutEffect(*trim, {});
    }
}

void OnlineTruth::Show() {
    if (!session_.IsOnline())
        return;
    ShowOutputs();
    ShowEffects();
    ShowNotSent();
    bool alarming = session_.Unanswered() || session_.RestartFailed();
    for (std::size_t output = 0; output < outputCount; ++output)
        alarming = alarming || CertaintyOf(output) == Certainty::Failed;
    parts_.Strip.ShowState(State(portName_), State(ShortPortName(portName_)), alarming);
}

void OnlineTruth::ShowOutputs() {
    for (std::size_t output = 0; output < outputCount; ++output) {
        const auto& confirmed = session_.TruthOf(output).Confirmed;
        parts_.Strip.ShowConfirmed(output, confirmed ? LevelWords(*confirmed) : QString(),
                                   CertaintyOf(output));
    }
}

void OnlineTruth::ShowEffects() {
    const bool one = inputs_.LevelView() == LevelSource::Level;
    parts_.Strip.ShowWithoutEffect(
        one ? tr("Without effect: on the Levels page %1 alone is heard, at its own "
                 "level, muted or not")
                  .arg(Called(NameKind::Output, inputs_.CurrentOutput()))
            : QString());
    const std::size_t listened = inputs_.OnlineInput();
    const bool allMuted = !one && MutedOutputs() == outputCount;
    for (std::size_t i = 0; i < inputCount; ++i)
        DrawWithoutEffect(*parts_.InputTrims.Trims[i],
                          allMuted ? tr("Without effect at the moment: all outputs are muted")
                          : i == listened
                              ? QString()
                              : tr("Without effect at the moment: it is the trim of %1 that is sent")
                                    .arg(Called(NameKind::Input, listened)));
    for (std::size_t i = 0; i < outputCount; ++i)
        DrawWithoutEffect(
            *parts_.OutputTrims.Trims[i],
            inputs_.MutedOutput(i) && !one
                ? tr("Without effect at the moment: %1 is muted").arg(Called(NameKind::Output, i))
                : QString());
}

std::size_t OnlineTruth::MutedOutputs() const {
    std::size_t muted = 0;
    for (std::size_t output = 0; output < outputCount; ++output)
        muted += inputs_.MutedOutput(output) ? 1 : 0;
    return muted;
}

Certainty OnlineTruth::CertaintyOf(std::size_t output) const {
    const OutputTruth& truth = session_.TruthOf(output);
    if (truth.Pending)
        return Certainty::Pending;
    if (truth.Failed || truth.RouteFailed)
        return Certainty::Failed;
    if (!truth.Confirmed)
        return Certainty::Unknown;
    // Its turn in the pass may still come.
    const bool toCome = busy_() && *truth.Confirmed != session_.WantedLevel(output);
    return toCome ? Certainty::Pending : Certainty::Confirmed;
}

bool OnlineTruth::LevelsDiffer() const {
    for (std::size_t output = 0; output < outputCount; ++output) {
        const auto& sent = session_.TruthOf(output).Sent;
        if (sent && *sent != session_.WantedLevel(output))
            return true;
    }
    return false;
}

void OnlineTruth::ShowNotSent() {
    // What is on its way is not missing.
    if (busy_() || session_.Wanting())
        return;
    if (session_.Touched())
        sentMode_ = passMode_;
    const bool mode = sentMode_ != parts_.View.CurrentMode();
    const bool input = session_.RoutedInput() && session_.RoutedInput() != inputs_.OnlineInput();
    QStringList missing;
    if (mode)
        missing += Called(NameKind::Mode, static_cast<std::size_t>(parts_.View.CurrentMode()));
    if (input)
        missing += Called(NameKind::Input, inputs_.OnlineInput());
    if (missing.isEmpty() && LevelsDiffer())
        missing += tr("levels");
    parts_.Strip.ShowNotSent(missing.join(u", "_s), input);
}

QString OnlineTruth::Called(NameKind kind, std::size_t index) const {
    return NumberAndName(parts_.View.ShownNames(), kind, index);
}

QString OnlineTruth::Heard() const {
    if (!session_.Touched())
        return tr("nothing was sent yet, the device plays as it was programmed");
    // What the device has confirmed, whatever the controls show by now.
    std::vector<std::size_t> audible;
    int muted = 0;
    for (std::size_t output = 0; output < outputCount; ++output) {
        const auto& confirmed = session_.TruthOf(output).Confirmed;
        if (confirmed == mutedLevel)
            ++muted;
        else if (confirmed)
            audible.push_back(output);
    }
    const auto levelOf = [this](std::size_t output) { return *session_.TruthOf(output).Confirmed; };
    constexpr int all = static_cast<int>(outputCount);
    const LevelSource view = inputs_.LevelView();
    const QString page = view == LevelSource::Level        ? tr("Levels: ")
                         : view == LevelSource::InputTrims ? tr("Input Trims: ")
                                                           : tr("Output Trims: ");
    if (muted == all)
        return page + tr("all outputs are muted");
    if (audible.empty())
        return page + tr("%1 of %2 outputs are muted").arg(muted).arg(all);
    if (view == LevelSource::Level && audible.size() == 1 && muted == all - 1)
        return page + tr("only %1 is heard, at %2")
                          .arg(CalledInSentence(Called(NameKind::Output, audible.front())),
                               LevelInSentence(levelOf(audible.front())));
    const auto routed = session_.TruthOf(audible.front()).Input;
    const bool together = routed && std::ranges::all_of(audible, [&](std::size_t output) {
                              return session_.TruthOf(output).Input == routed;
                          });
    const QString input = together ? CalledInSentence(Called(NameKind::Input, *routed)) : tr("their inputs");
    const auto count = static_cast<int>(audible.size());
    QString words = count == all ? tr("all outputs play %1").arg(input)
                                 : tr("%1 of %2 outputs play %3").arg(count).arg(all).arg(input);
    const bool alike = std::ranges::all_of(
        audible, [&](std::size_t output) { return levelOf(output) == levelOf(audible[0]); });
    if (view == LevelSource::InputTrims && alike)
        words += tr(", at %1").arg(LevelInSentence(levelOf(audible[0])));
    if (muted > 0)
        words += tr(", %1 muted").arg(muted);
    return page + words;
}

QString OnlineTruth::Answers(const QString& port) const {
    if (session_.RestartFailed())
        return tr("%1 did not acknowledge the restart").arg(port);
    if (session_.Unanswered())
        return tr("%1 does not answer").arg(port);
    int confirmed = 0;
    QStringList silent;
    QStringList refused;
    for (std::size_t output = 0; output < outputCount; ++output) {
        const OutputTruth& truth = session_.TruthOf(output);
        const Certainty certainty = CertaintyOf(output);
        if (certainty == Certainty::Confirmed)
            ++confirmed;
        else if (certainty == Certainty::Failed)
            (Refused(truth) ? refused : silent) += QString::number(output + 1);
    }
    QString words = tr("%1 of %2 confirmed").arg(confirmed).arg(outputCount);
    const auto add = [&words](const QStringList& outputs, const QString& what) {
        if (!outputs.isEmpty())
            words += (outputs.size() == 1 ? tr(", output %1 %2") : tr(", outputs %1 %2"))
                         .arg(outputs.join(u", "_s), what);
    };
    add(silent, tr("not answered"));
    add(refused, tr("refused"));
    return words;
}

QString OnlineTruth::State(const QString& port) const {
    QStringList parts = {tr("ONLINE %1").arg(port), Heard()};
    if (session_.Touched() || session_.RestartFailed())
        parts += Answers(port);
    return parts.join(u" · "_s);
}

} // namespace vek
