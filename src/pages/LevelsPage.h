// The page "Levels": the volume slider and the level limits of the current output in the current mode, and
// those of all outputs in a table.
#pragma once

#include "model/Config.h"

#include <QWidget>

#include <array>
#include <cstddef>

class QCheckBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace vek {

class dBText;
class LevelTrim;
class LevelsTable;
class Names;

/// Elements of UseSliderToSet.
enum SliderTarget : int { SetMaximum = 0, SetStart = 1, SetMinimum = 2 };

class LevelsPage : public QWidget {
    Q_OBJECT

  public:
    explicit LevelsPage(QWidget* parent = nullptr);

    /// Shows or hides what belongs to a fixed start level; a sentence takes its place.
    void ShowStartLevel(bool fixedStart);
    bool FixedStart() const;
    /// Shows the levels of the mode in the table, and those of `current` (0 … 7) beside the slider.
    void ShowOutputs(const std::array<OutputLevelRecord, outputCount>& levels, std::size_t current);
    void ShowNames(const Names& names);

    // Owned by this page.
    LevelTrim* LevelTrim1;
    dBText* PanelMaximumLevel;
    dBText* PanelMinimumLevel;
    dBText* RemoteStartLevel;
    dBText* RemoteStepLevel;
    QLabel* StartLevelLabel;
    QLabel* PreviousStartNote; ///< stands in the place of the start level
    QCheckBox* RemoteMuteOnMin;
    /// 0 "Use Fixed Start Level", 1 "Use Previous Start Level"
    std::array<QRadioButton*, 2> RemotePreviousNotSetStartLevel;
    std::array<QPushButton*, 3> UseSliderToSet; ///< by SliderTarget
    LevelsTable* Outputs;
    QPushButton* ApplyToAll;

  Q_SIGNALS:
    /// The user edited what no rule ties to the three limited levels.
    void Edited();

  private:
    QWidget* MakeLimits();
    QWidget* MakeSlider();
    QWidget* MakeOutputs();
    void ShowChoice();

    QLabel* choice_; ///< what "Apply to all outputs" takes
};

} // namespace vek
