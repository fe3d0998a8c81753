// What the strip says of an online session: what is heard, what the device has confirmed, what was not sent.
#pragma once

#include "device/OnlineParts.h"
#include "link/OnlineSession.h"
#include "model/Names.h"
#include "pages/OnlineStrip.h"

#include <QObject>
#include <QTimer>

#include <functional>

namespace vek {

class OnlineTruth : public QObject {
    Q_OBJECT

  public:
    /// All must outlive this object. `busy` tells whether a conversation goes on.
    OnlineTruth(const OnlineParts& parts, const OnlineSession& session, const OnlineInputs& inputs,
                std::function<bool()> busy);

    /// A session begins on that port.
    void Begin(const QString& portName);
    /// Levels are about to be sent for the mode shown.
    void PassBegins();
    /// Something has changed; it is shown when the event loop comes to it.
    void Changed();
    /// The session has ended: everything looks as before it.
    void End();

  private:
    void Show();
    void ShowOutputs();
    void ShowEffects();
    void ShowNotSent();
    Certainty CertaintyOf(std::size_t output) const;
    std::size_t MutedOutputs() const;
    bool LevelsDiffer() const;
    QString State(const QString& port) const;
    QString Heard() const;
    QString Answers(const QString& port) const;
    QString Called(NameKind kind, std::size_t index) const;

    OnlineParts parts_;
    const OnlineSession& session_;
    const OnlineInputs& inputs_;
    std::function<bool()> busy_;
    QString portName_;
    int passMode_ = 0; ///< the mode when the last pass began, 0 … 7
    int sentMode_ = 0; ///< the mode when the last pass that is through began
    QTimer show_;
};

} // namespace vek
