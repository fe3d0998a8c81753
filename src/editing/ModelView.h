// The road between Config and the controls, and the only one on which edits reach it.
#pragma once

#include "model/Config.h"
#include "model/EnableMenus.h"
#include "model/Names.h"
#include "pages/EditorPages.h"

#include <QString>

#include <array>
#include <cstddef>
#include <cstdint>

namespace vek {

class EditHistory;

/// Shows one mode and one output of Config and takes over what the user does with it. Besides the commands
/// that replace the whole configuration (new, open), nothing but this class writes Config.
///
/// Every edit shows its result and is a step of the history, unless it changed nothing or only what linking
/// makes of followers. ConfigChanged is set by what the controls hold, the base and the address menus;
/// whether there is anything to save is for ConfigDiffers() to tell.
class ModelView {
  public:
    /// Both must outlive this object. Nothing but ReadSelectors() and StoreView(), which does nothing, may be
    /// used before the pages are made.
    ModelView(const EditorPages& pages, EditHistory& history) : pages_(pages), history_(history) {}

    // The slice that is shown.

    /// Sets the current mode and output from the selectors.
    void ReadSelectors();
    int CurrentMode() const { return currentMode_; } ///< 0 … 7
    /// The current mode and output in Config. Throw SubscriptError while nothing is selected.
    const ModeRecord& Mode() const;
    const OutputLevelRecord& Levels() const;
    /// What the notes call things.
    const Names& ShownNames() const { return names_; }
    std::size_t Output() const;

    // Between the controls and Config.

    /// Copies the controls and working copies into Config. A field is written, and ConfigChanged set, only
    /// when its control shows something else than the field's value, or when the user entered the level that
    /// it shows; so what the user did not touch keeps its exact value.
    void StoreView();

    /// Fills the controls and working copies from Config for the current mode and output. Writes to Config
    /// what it shows of linked outputs: a follower has its leader's "use previous route".
    void ShowMode();

    /// Fills the notes and the sixteen trims. Writes the notes back without the blanks around them.
    void ShowGlobalFields();

    /// ShowGlobalFields and ShowMode.
    void ShowAll();

    // Edits.

    /// Gives the current mode its default settings.
    void ResetMode();
    /// Replaces a mode (0 … 7), after taking over what the controls hold for another one.
    void PasteMode(std::size_t mode, const ModeRecord& pasted);
    /// Replaces the levels of an output (0 … 7) of the current mode.
    void PasteOutput(std::size_t output, const OutputLevelRecord& pasted);
    /// The levels of all outputs of the current mode, of which one or several were edited.
    void SetLevels(const std::array<OutputLevelRecord, outputCount>& levels);
    void SetBase(std::int16_t base);
    /// The link groups of the current mode, by output.
    void SetLinkGroups(const std::array<std::int16_t, outputCount>& groups);
    const std::array<std::int16_t, outputCount>& LinkGroups() const { return linkGroups_; }
    /// Switches an address of the current output on or off.
    void ToggleAddress(AddressGroup group, std::size_t function);
    /// `remembered` is the function that was right-clicked.
    void ApplyAddressMenu(AddressGroup group, const EnableMenuEntry& entry, std::size_t remembered);
    /// Takes over the levels that the download image had to limit.
    void TakeClamped(const MatrixConfig& clamped);
    /// Makes Config what it is with one difference taken back; `field` is its name.
    void TakeBack(const QString& field, const MatrixConfig& config);
    /// Makes an earlier or later state the configuration, and shows it; no edit of its own.
    void Restore(const MatrixConfig& config);

    /// What the edits can be taken back with.
    EditHistory& History() const { return history_; }

    // The slider's levels, dB, by mode and output; not part of the configuration.

    /// Gives every mode and output its start level.
    void TakeStartLevels();
    /// All 0.
    void ResetSliderLevels() { sliderLevels_ = {}; }
    /// Of the current mode and output.
    float SliderLevel() const;
    void SetSliderLevel(float level);

  private:
    template <typename Change>
    void Edit(Change change);
    template <typename Change>
    void Step(const QString& name, Change change);
    std::size_t ModeIndex() const;
    void StoreMode(ModeRecord& mode);
    void StoreLevels(OutputLevelRecord& levels);
    void StoreGlobalFields(MatrixConfig& config);
    void ShowNotesAndTrims();
    void ShowNames();
    void ShowSelection();
    void ShowPanels(ModeRecord& mode);
    void ShowLevels(const OutputLevelRecord& levels);
    void ShowLevelsOfOutputs();

    const EditorPages& pages_;
    EditHistory& history_;
    bool inStep_ = false;
    int currentMode_ = 0;
    int currentOutput_ = 0;
    Names names_; ///< as the pages show them
    // Working copies: what the page of the addresses shows, and the groups of the current mode.
    AddressEnables addresses_;
    std::array<std::int16_t, outputCount> linkGroups_ = {};
    std::array<std::array<float, outputCount>, modeCount> sliderLevels_ = {};
};

} // namespace vek
