// The strip below the pages while online: what is listened to.
#pragma once

#include "model/Config.h"
#include "model/Names.h"

#include <QWidget>

#include <array>

class QCheckBox;
class QLabel;
class QRadioButton;

namespace vek {

class LevelTrim;
class NameLabel;

class OnlineStrip : public QWidget {
    Q_OBJECT

  public:
    explicit OnlineStrip(QWidget* parent = nullptr);

    /// The input listened to, 0 … 7.
    std::size_t Input() const;
    /// Names the inputs and outputs.
    void ShowNames(const Names& names);

    // Owned by this widget.
    std::array<QRadioButton*, inputCount> RouteOption;     ///< frame "Input"
    std::array<QCheckBox*, outputCount> OutPutSelectCheck; ///< frame "Output", "Mute"
    QLabel* OnlineLabel32;
    LevelTrim* OnlineLevelOffset;

    /// As low as it can be: the page above needs the room.
    QSize sizeHint() const override;

  Q_SIGNALS:
    void RouteClicked(std::size_t input);
    void MuteClicked();
    void OffsetChanged();

  private:
    int CaptionWidth(const QString& caption) const;
    QWidget* MakeInputs(const QString& muteCaption);
    QWidget* MakeMutes(const QString& muteCaption);

    std::array<NameLabel*, inputCount> inputNames_;
    std::array<NameLabel*, outputCount> outputNames_;
};

} // namespace vek
