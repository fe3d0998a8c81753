// The page "Levels": the volume slider and the level limits of the current output in the current mode.
#pragma once

#include <QWidget>

#include <array>

class QCheckBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace vek {

class dBText;
class LevelTrim;

/// Elements of UseSliderToSet.
enum SliderTarget : int { SetMaximum = 0, SetStart = 1, SetMinimum = 2 };

class LevelsPage : public QWidget {
    Q_OBJECT

  public:
    explicit LevelsPage(QWidget* parent = nullptr);

    /// Shows or hides what belongs to a fixed start level.
    void ShowStartLevel(bool fixedStart);
    bool FixedStart() const;

    // Owned by this page.
    LevelTrim* LevelTrim1;
    dBText* PanelMaximumLevel;
    dBText* PanelMinimumLevel;
    dBText* RemoteStartLevel;
    dBText* RemoteStepLevel;
    QLabel* StartLevelLabel;
    QCheckBox* RemoteMuteOnMin;
    /// 0 "Use Fixed Start Level", 1 "Use Previous Start Level"
    std::array<QRadioButton*, 2> RemotePreviousNotSetStartLevel;
    std::array<QPushButton*, 3> UseSliderToSet; ///< by SliderTarget

  Q_SIGNALS:
    /// The user edited what no rule ties to the three limited levels.
    void Edited();

  private:
    QWidget* MakeLimits();
    QWidget* MakeSlider();
};

} // namespace vek
