// The editing rules of the levels page: what happens when a limit is changed, taken from the slider or
// switched.
#pragma once

#include "model/LevelRules.h"

#include <QObject>

namespace vek {

class Dialogs;
class LevelsPage;
class ModelView;

class LevelLimits : public QObject {
    Q_OBJECT

  public:
    /// All must outlive this object.
    LevelLimits(LevelsPage& page, ModelView& view, Dialogs& dialogs, QObject* parent = nullptr);

  private:
    void LevelChanged(LimitedLevel changed);
    void TakeFromSlider(LimitedLevel target);
    void StartChoiceClicked();

    LevelsPage& page_;
    ModelView& view_;
    Dialogs& dialogs_;
    bool refusing_ = false; ///< a refusal is being shown; leaving the box for it must not refuse again
};

} // namespace vek
