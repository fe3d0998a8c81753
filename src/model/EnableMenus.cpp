#include "model/EnableMenus.h"

#include <array>

namespace vek {

namespace {

using enum MenuOutputs;
using Names = std::string_view;

constexpr EnableMenuEntry modeEntries[] = {
    {"mnuHiddenModeVekNetEnableAll", "Enable all", All, false, 0, 15, true},
    {"mnuHiddenModeVekNetDisableAll", "Disable all", All, false, 0, 15, false},
    {"mnuHiddenModeVekNetEnableIn", "Enable all inputs", All, false, 0, 7, true},
    {"mnuHiddenModeVekNetDisableIn", "Disable all inputs", All, false, 0, 7, false},
    {"mnuHiddenModeVekNetEnableOut", "Enable all outputs", All, false, 8, 15, true},
    {"mnuHiddenModeVekNetDisableOut", "Disable all outputs", All, false, 8, 15, false},
};

constexpr EnableMenuEntry volumeAllEntries[] = {
    {"mnuHiddenMenuVekNetVolumeAllEnableThisOne", "Enable this function", All, true, 0, 0, true},
    {"mnuHiddenMenuVekNetVolumeAllDisableThisOne", "Disable this function", All, true, 0, 0, false},
    {"mnuHiddenMenuVekNetVolumeAllEnable", "Enable all", All, false, 0, 7, true},
    {"mnuHiddenMenuVekNetVolumeAllDisable", "Disable all", All, false, 0, 7, false},
    {"mnuHiddenMenuVekNetVolumeAllInpEnable", "Enable all inputs", All, false, 0, 3, true},
    {"mnuHiddenMenuVekNetVolumeAllInpDisable", "Disable all inputs", All, false, 0, 3, false},
    {"mnuHiddenMenuVekNetVolumeAllOutEnable", "Enable all outputs", All, false, 4, 7, true},
    {"mnuHiddenMenuVekNetVolumeAllOutDisable", "Disable all outputs", All, false, 4, 7, false},
};

constexpr EnableMenuEntry volumeThisOneEntries[] = {
    {"mnuHiddenMenuVekNetVolumeThisOneEnableAll", "Enable all", Current, false, 0, 7, true},
    {"mnuHiddenMenuVekNetVolumeThisOneDisableAll", "Disable all", Current, false, 0, 7, false},
    {"mnuHiddenMenuVekNetVolumeThisOneEnableAllInputs", "Enable all inputs", Current, false, 0, 3, true},
    {"mnuHiddenMenuVekNetVolumeThisOneDisableAllInputs", "Disable all inputs", Current, false, 0, 3, false},
    {"mnuHiddenMenuVekNetVolumeThisOneEnableAllOutputs", "Enable all outputs", Current, false, 4, 7, true},
    {"mnuHiddenMenuVekNetVolumeThisOneDisableAllOutputs", "Disable all outputs", Current, false, 4, 7, false},
};

constexpr EnableMenuEntry controlAllEntries[] = {
    {"mnuHiddenGlobalSelectsAllEnableOne", "Enable this function", All, true, 0, 0, true},
    {"mnuHiddenGlobalSelectsAllDisableOne", "Disable this function", All, true, 0, 0, false},
    {"mnuHiddenGlobalSelectsAllEnableAll", "Enable all", All, false, 0, 5, true},
    {"mnuHiddenGlobalSelectsAllDisableAll", "Disable all", All, false, 0, 5, false},
    {"mnuHiddenGlobalSelectsAllEnableAllInputs", "Enable all inputs", All, false, 0, 2, true},
    {"mnuHiddenGlobalSelectsAllDisableAllInputs", "Disable all inputs", All, false, 0, 2, false},
    {"mnuHiddenGlobalSelectsAllEnableAllOutputs", "Enable all outputs", All, false, 3, 5, true},
    {"mnuHiddenGlobalSelectsAllDisableAllOutputs", "Disable all outputs", All, false, 3, 5, false},
};

constexpr EnableMenuEntry controlOneEntries[] = {
    {"mnuHiddenGlobalSelectsEnableAll", "Enable all", Current, false, 0, 5, true},
    {"mnuHiddenGlobalSelectsDisableAll", "Disable all", Current, false, 0, 5, false},
    {"mnuHiddenGlobalSelectsEnableAllInputs", "Enable all inputs", Current, false, 0, 2, true},
    {"mnuHiddenGlobalSelectsDisableAllInputs", "Disable all inputs", Current, false, 0, 2, false},
    {"mnuHiddenGlobalSelectsEnableAllOutputs", "Enable all outputs", Current, false, 3, 5, true},
    {"mnuHiddenGlobalSelectsDisableAllOutputs", "Disable all outputs", Current, false, 3, 5, false},
};

constexpr EnableMenuEntry routeAllEntries[] = {
    {"mnuHiddenOuputAllSelectOne", "Enable this function", All, true, 0, 0, true},
    {"mnuHiddenOuputAllDeSelectOne", "Disable this function", All, true, 0, 0, false},
    {"mnuHiddenOuputAllSelectAl", "Enable all", All, false, 0, 15, true},
    {"mnuHiddenOuputAllDeSelectAll", "Disable all", All, false, 0, 15, false},
    {"mnuHiddenOuputAllSelectInputs", "Enable all inputs", All, false, 0, 7, true},
    {"mnuHiddenOuputAllDeSelectInputs", "Disable all inputs", All, false, 0, 7, false},
    {"mnuHiddenOuputAllSelectOutputs", "Enable all outputs", All, false, 8, 15, true},
    {"mnuHiddenOuputAllDeSelectOutputs", "Disable all outputs", All, false, 8, 15, false},
};

constexpr EnableMenuEntry routeThisEntries[] = {
    {"mnuHiddenOuputSelectAll", "Enable All", Current, false, 0, 15, true},
    {"mnuHiddenOuputDeSelectAll", "Disable all", Current, false, 0, 15, false},
    {"mnuHiddenOuputSelectInputs", "Enable all inputs", Current, false, 0, 7, true},
    {"mnuHiddenOuputDeSelectInputs", "Disable all inputs", Current, false, 0, 7, false},
    {"mnuHiddenOuputSelectOutputs", "Enable all outputs", Current, false, 8, 15, true},
    // Also clears the last input function, as installers know it.
    {"mnuHiddenOuputDeSelectOutputs", "Disable all outputs", Current, false, 7, 15, false},
};

constexpr Names modeSeparators[] = {"mnuspace1", "mnuspace2"};
constexpr Names volumeAllSeparators[] = {"mnuspace3", "mnuspace4", "mnuspace5"};
constexpr Names volumeThisOneSeparators[] = {"mnuspace6", "mnuspace7"};
constexpr Names controlAllSeparators[] = {"mnuspace10", "mnuspace11", "mnuspace12"};
constexpr Names controlOneSeparators[] = {"mnuspace13", "mnuspace20"};
constexpr Names routeAllSeparators[] = {"mnuspace30", "mnuspace31", "mnuspace32"};
constexpr Names routeThisSeparators[] = {"mnuspace33", "mnuspace34"};

constexpr Names allOutputs = "All Outputs";
constexpr Names thisOutput = "This Output Only";

constexpr EnableSubmenu modeSubmenus[] = {{"", "", modeEntries, modeSeparators}};
constexpr EnableSubmenu volumeSubmenus[] = {
    {"mnuHiddenMenuVekNetVolumeAll", allOutputs, volumeAllEntries, volumeAllSeparators},
    {"mnuHiddenMenuVekNetVolumeThisOne", thisOutput, volumeThisOneEntries, volumeThisOneSeparators}};
constexpr EnableSubmenu controlSubmenus[] = {
    {"mnuHiddenGlobalSelectsAll", allOutputs, controlAllEntries, controlAllSeparators},
    {"mnuHiddenGlobalSelectsOne", thisOutput, controlOneEntries, controlOneSeparators}};
constexpr EnableSubmenu routeSubmenus[] = {
    {"mnuHiddenOuputSelectsAllOutputs", allOutputs, routeAllEntries, routeAllSeparators},
    {"mnuHiddenOuputSelectOuputs", thisOutput, routeThisEntries, routeThisSeparators}};

constexpr EnableMenu menus[] = {
    {"mnuHiddenModeVekNet", "HiddenModeVekNet", AddressGroup::Mode, modeSubmenus},
    {"mnuHiddenMenuVekNetVolume", "HiddenMenuVekNetVolumes", AddressGroup::Volume, volumeSubmenus},
    {"mnuHiddenGlobalSelects", "HiddenGlobalSelects", AddressGroup::RouteControl, controlSubmenus},
    {"mnuHiddenOuputSelects", "Hidden Ouput Selects", AddressGroup::Route, routeSubmenus},
};

} // namespace

std::span<const EnableMenu> EnableMenus() { return menus; }

void ApplyMenuEntry(AddressEnables& enables, AddressGroup group, const EnableMenuEntry& entry,
                    std::size_t currentOutput, std::size_t rememberedFunction) {
    const std::size_t first = entry.Remembered ? rememberedFunction : entry.First;
    const std::size_t last = entry.Remembered ? rememberedFunction : entry.Last;
    const bool all = entry.Outputs == MenuOutputs::All;
    const std::size_t firstOutput = all ? 0 : currentOutput;
    const std::size_t lastOutput = all ? outputCount - 1 : currentOutput;
    for (std::size_t output = firstOutput; output <= lastOutput; ++output) {
        for (std::size_t function = first; function <= last; ++function)
            AddressFlag(enables, group, function, output) = ToFlag(entry.Enable);
    }
}

} // namespace vek
