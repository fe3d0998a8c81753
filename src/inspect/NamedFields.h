// The configuration by names: one description that the JSON writer, the JSON reader and the comparison walk.
#pragma once

#include "inspect/FieldKind.h"
#include "inspect/NumberLists.h"
#include "model/Config.h"
#include "model/Names.h"
#include "model/VekNetAddresses.h"

#include <array>
#include <optional>
#include <span>
#include <string_view>

namespace vek {

/// The name in JSON and the words for the user.
struct FieldName {
    std::string_view Json;
    std::string_view Caption;
    std::optional<FieldKind> Kind = {}; ///< of fields below another name: none, that name's
};

/// The member of the document, left out when there are none, for the bytes that follow the record.
inline constexpr std::string_view tailName = "dataAfterRecord";

/// The member of an object in place of the notes' text, when their line ends are to stay as they are.
inline constexpr std::string_view notesAsStoredName = "asStored";

/// The functions of one side of an address group.
struct AddressGroupNames {
    AddressGroup Group;
    FieldName Name;
    std::span<const FieldName> Functions; ///< empty when they are just numbered
    NameKind Numbered = {};               ///< what the numbers count
};

inline constexpr FieldName volumeFunctionNames[] = {
    {"stepUp", "Step up"}, {"stepDown", "Step down"}, {"analog", "Analog"}, {"mute", "Mute"}};
inline constexpr FieldName controlFunctionNames[] = {
    {"next", "Next"}, {"previous", "Previous"}, {"analog", "Analog"}};

inline constexpr AddressGroupNames modeAddressNames = {
    AddressGroup::Mode, {"modeRecall", "Mode recall address"}, {}, NameKind::Mode};
/// The groups that every output has.
inline constexpr AddressGroupNames outputAddressNames[] = {
    {AddressGroup::Volume, {"volume", "Volume address"}, volumeFunctionNames},
    {AddressGroup::RouteControl, {"routeControl", "Input select address"}, controlFunctionNames},
    {AddressGroup::Route, {"route", "Input select address"}, {}, NameKind::Input}};

/// The first half of a group's flags is the "In" side.
inline constexpr FieldName sideNames[] = {{"in", "(In)"}, {"out", "(Out)"}};

template <typename Archive, typename Flags>
void VisitAddressGroup(const AddressGroupNames& names, Flags flags, Archive& archive) {
    archive.Object(names.Name, [&] {
        const std::size_t perSide = flags.size() / std::size(sideNames);
        for (std::size_t side = 0; side < std::size(sideNames); ++side) {
            const auto sideFlags = flags.subspan(side * perSide, perSide);
            if (names.Functions.empty()) {
                archive.Enables(sideNames[side], names.Numbered, sideFlags);
                continue;
            }
            archive.Object(sideNames[side], [&] {
                for (std::size_t function = 0; function < perSide; ++function)
                    archive.Enable(names.Functions[function], sideFlags[function]);
            });
        }
    });
}

template <typename Archive, typename Enables>
void VisitAddresses(Enables& enables, Archive& archive) {
    VisitAddressGroup(modeAddressNames, std::span(enables.ModeAddressEnable), archive);
    archive.Array({"outputs", "Output"}, outputCount, [&](std::size_t output) {
        VisitAddressGroup(outputAddressNames[0], std::span(enables.VolumeAddressEnable[output]), archive);
        VisitAddressGroup(outputAddressNames[1], std::span(enables.RouteControlAddressEnable[output]),
                          archive);
        VisitAddressGroup(outputAddressNames[2], std::span(enables.RouteAddressEnable[output]), archive);
    });
}

template <typename Archive, typename Mode>
void VisitOutput(Mode& mode, std::size_t output, Archive& archive) {
    auto& panels = mode.OutputPanels[output];
    auto& levels = mode.OutputLevels[output];
    archive.List({"panelInputs", captions::inputSequence, FieldKind::Panels}, panels.PanelInputs,
                 inputNumbers);
    archive.Switch({"usePreviousRoute", captions::usePreviousRoute, FieldKind::Panels},
                   panels.UsePreviousRoute);
    archive.List({"panelVolumes", captions::volumePanels, FieldKind::Panels}, panels.PanelVolumes,
                 panelNumbers);
    archive.List({"panelSelects", captions::selectorPanels, FieldKind::Panels}, panels.PanelSelects,
                 panelNumbers);
    archive.LinkGroup({"linkGroup", "Link group", FieldKind::LinkGroups}, mode.LinkGroup[output]);
    archive.Level({"maximumLevel", captions::maximumLevel, FieldKind::Levels}, levels.MaximumLevel);
    archive.Level({"minimumLevel", captions::minimumLevel, FieldKind::Levels}, levels.MinimumLevel);
    archive.Switch({"muteOnMin", captions::muteOnMinimum, FieldKind::Levels}, levels.MuteOnMin);
    archive.Level({"startLevel", captions::startLevel, FieldKind::Levels}, levels.StartLevel);
    archive.Switch({"previousNotSetStartLevel", captions::previousStartLevel, FieldKind::Levels},
                   levels.PreviousNotSetStartLevel);
    archive.Level({"stepLevel", captions::levelSteps, FieldKind::Levels}, levels.StepLevel);
}

/// Config is const for archives that only read it.
template <typename Archive, typename Config>
void VisitNamedFields(Config& config, Archive& archive) {
    archive.Integer({"vekNetBase", "VekNet base address", FieldKind::Base}, config.VekNetBase);
    archive.Array({"modes", "Mode"}, modeCount, [&](std::size_t mode) {
        archive.Array({"outputs", "Output"}, outputCount,
                      [&](std::size_t output) { VisitOutput(config.Modes[mode], output, archive); });
    });
    archive.Levels({"inputTrim", "Input trim", FieldKind::InputTrims}, std::span(config.InputTrim));
    archive.Levels({"outputTrim", "Output trim", FieldKind::OutputTrims}, std::span(config.OutputTrim));
    archive.Notes({"notes", "Notes", FieldKind::Notes}, config.Notes);
    archive.Object({"enabledAddresses", "", FieldKind::Addresses},
                   [&] { VisitAddresses(config.Addresses, archive); });
}

} // namespace vek
