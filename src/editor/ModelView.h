// The road between Config and the controls. Config is never edited from a control in any other way.
#pragma once

#include "model/Config.h"
#include "pages/EditorPages.h"

#include <array>
#include <cstddef>

namespace vek {

class ModelView {
  public:
    explicit ModelView(const EditorPages& pages) : pages_(pages) {}

    /// Sets CurrentMode and CurrentOutput from the selectors.
    void ReadSelectors();

    /// Copies the controls and working copies into Config. A field is written, and ConfigChanged set, only
    /// when its control shows something else than the field's value; so what the user did not touch keeps its
    /// exact value.
    void StoreView();

    /// Fills the controls and working copies from Config for CurrentMode and CurrentOutput.
    void ShowMode();

    /// Fills the notes and the sixteen trims.
    void ShowGlobalFields();

    /// ShowGlobalFields and ShowMode.
    void ShowAll();

    /// Gives every working level the start level of its mode and output.
    void TakeStartLevels();
    /// All working levels 0.
    void ResetWorkingLevels() { WorkingLevels = {}; }

    int CurrentMode = 0;                                  ///< 0 … 7
    int CurrentOutput = 0;                                ///< 0 … 7
    AddressEnables Addresses;                             ///< working copy
    std::array<std::int16_t, outputCount> LinkGroup = {}; ///< working copy, of the current mode
    /// Levels of the slider LevelTrim1, dB, by mode and output; not part of the configuration.
    std::array<std::array<float, outputCount>, modeCount> WorkingLevels = {};

    /// The current mode and output in Config. Throw SubscriptError while nothing is selected.
    ModeRecord& Mode() const;
    OutputLevelRecord& Levels() const;
    std::size_t Output() const;
    /// The slider's level of the current mode and output.
    float& WorkingLevel();

  private:
    void StoreMode(ModeRecord& mode);
    void StoreLevels(OutputLevelRecord& levels);
    void StoreGlobalFields();
    void ShowPanels(ModeRecord& mode);
    void ShowLevels(const OutputLevelRecord& levels);

    EditorPages pages_;
};

} // namespace vek
