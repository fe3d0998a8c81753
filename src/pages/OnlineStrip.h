// The strip below the pages while online: what is listened to, and what of it the device has confirmed.
#pragma once

#include "model/Config.h"
#include "model/Names.h"

#include <QWidget>

#include <array>

class QCheckBox;
class QHBoxLayout;
class QLabel;
class QPushButton;
class QRadioButton;

namespace vek {

class LevelTrim;
class NameLabel;
class StatementLabel;

/// How sure the level of an output is.
enum class Certainty {
    Unknown, ///< nothing was sent
    Pending, ///< the answer is waited for
    Confirmed,
    Failed, ///< the device did not acknowledge what was sent last
};

class OnlineStrip : public QWidget {
    Q_OBJECT

  public:
    explicit OnlineStrip(QWidget* parent = nullptr);

    /// The input listened to, 0 … 7.
    std::size_t Input() const;
    /// Names the inputs and outputs.
    void ShowNames(const Names& names);

    /// What is true at the moment, and the same in fewer words; `alarming` when the device does not confirm
    /// it.
    void ShowState(const QString& text, const QString& shorter, bool alarming);
    /// The level that an output was confirmed last, in words.
    void ShowConfirmed(std::size_t output, const QString& level, Certainty certainty);
    /// What is shown but was not sent, empty for nothing; the input is marked in its own frame, too.
    void ShowNotSent(const QString& what, bool input);
    /// The mutes and the offset stay usable, but look as what they are when they change nothing; `reason` is
    /// empty when they do.
    void ShowWithoutEffect(const QString& reason);
    /// As after a new start: nothing muted, no offset.
    void Reset();

    // Owned by this widget.
    std::array<QRadioButton*, inputCount> RouteOption;     ///< frame "Input"
    std::array<QCheckBox*, outputCount> OutPutSelectCheck; ///< frame "Output", "Mute"
    QLabel* OnlineLabel32;
    LevelTrim* OnlineLevelOffset;
    QPushButton* MuteAll;
    QPushButton* SendAllAgain;
    QCheckBox* SafeLevels;

  Q_SIGNALS:
    void RouteClicked(std::size_t input);
    void MuteClicked();
    void OffsetChanged();

  protected:
    void changeEvent(QEvent* event) override;

  private:
    int CaptionWidth() const;
    QWidget* MakeInputs();
    QWidget* MakeMutes();
    QWidget* MakeMuteAll();
    QLayout* MakeActions();
    QLayout* MakeOffset();
    void PaintConfirmed(std::size_t output);

    QString muteCaption_;
    QString notSentCaption_;
    StatementLabel* OnlineState_;
    QLabel* inputNotSent_;
    QLabel* notSent_;
    std::array<NameLabel*, inputCount> inputNames_;
    std::array<NameLabel*, outputCount> outputNames_;
    std::array<QLabel*, outputCount> Confirmed_;
    std::array<Certainty, outputCount> certainties_ = {};
};

} // namespace vek
