// The editing rules of the levels page: what happens when a limit is changed, taken from the slider or
// switched.
#pragma once

#include "model/LevelRules.h"

#include <QObject>

namespace vek {

class LevelsPage;
class ModelView;
class WindowMessages;

class LevelLimits : public QObject {
    Q_OBJECT

  public:
    /// All must outlive this object.
    LevelLimits(LevelsPage& page, ModelView& view, WindowMessages& messages, QObject* parent = nullptr);

  private:
    void LevelChanged(LevelLimit changed);
    void TakeFromSlider(LevelLimit target);
    void StartChoiceClicked();

    LevelsPage& page_;
    ModelView& view_;
    WindowMessages& messages_;
};

} // namespace vek
