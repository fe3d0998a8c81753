// The editing rules of the levels page: what happens when a limit is changed, taken from the slider, switched
// or entered in the table of all outputs.
#pragma once

#include "model/LevelRules.h"

#include <QObject>

#include <cstddef>
#include <string_view>
#include <vector>

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
    void Refuse(std::string_view title, const QString& reason);
    void Enter(const std::vector<std::size_t>& outputs, const LevelEntry& entry);

    LevelsPage& page_;
    ModelView& view_;
    WindowMessages& messages_;
};

} // namespace vek
