// The configuration as 6238 bytes: little-endian, no header, no padding. This is the one description of the
// layout: the sizes, and the fields in their order on disk, with which an archive is called.
#pragma once

#include "model/Config.h"

#include <cstddef>
#include <span>

namespace vek {

inline constexpr std::size_t integerSize = 2;
inline constexpr std::size_t singleSize = 4;
/// | maximum | start | minimum | mute | step | previous |
inline constexpr std::size_t levelRecordSize = 4 * singleSize + 2 * integerSize;
/// | inputs | volume panels | select panels | previous route |
inline constexpr std::size_t panelRecordSize = 9 + 16 + 16 + integerSize;
inline constexpr std::size_t modeRecordSize = outputCount * (levelRecordSize + panelRecordSize + integerSize);
inline constexpr std::size_t recordSize =
    integerSize + modeCount * modeRecordSize + (inputCount + outputCount) * singleSize + notesLength +
    integerSize * (modeFunctionCount +
                   outputCount * (volumeFunctionCount + routeControlFunctionCount + routeFunctionCount));
static_assert(recordSize == 6238);

template <typename Archive, typename Levels>
void VisitLevels(Levels& levels, Archive& archive) {
    archive.Level(levels.MaximumLevel);
    archive.Level(levels.StartLevel);
    archive.Level(levels.MinimumLevel);
    archive.Integer(levels.MuteOnMin);
    archive.Level(levels.StepLevel);
    archive.Integer(levels.PreviousNotSetStartLevel);
}

template <typename Archive, typename Panels>
void VisitPanels(Panels& panels, Archive& archive) {
    archive.Text(panels.PanelInputs);
    archive.Text(panels.PanelVolumes);
    archive.Text(panels.PanelSelects);
    archive.Integer(panels.UsePreviousRoute);
}

template <typename Archive, typename Mode>
void VisitMode(Mode& mode, Archive& archive) {
    for (auto& levels : mode.OutputLevels)
        VisitLevels(levels, archive);
    for (auto& panels : mode.OutputPanels)
        VisitPanels(panels, archive);
    for (auto& group : mode.LinkGroup)
        archive.LinkGroup(group);
}

template <typename Archive, typename Table>
void VisitOutputFlags(Table& table, Archive& archive) {
    for (auto& functionsOfOutput : table) {
        for (auto& flag : functionsOfOutput)
            archive.Integer(flag);
    }
}

/// Config is const when the record is written, not const when it is read.
template <typename Archive, typename Config>
void VisitRecord(Config& config, Archive& archive) {
    archive.Integer(config.VekNetBase);
    for (auto& mode : config.Modes)
        VisitMode(mode, archive);
    for (auto& trim : config.InputTrim)
        archive.Level(trim);
    for (auto& trim : config.OutputTrim)
        archive.Level(trim);
    archive.Text(config.Notes);
    for (auto& flag : config.Addresses.ModeAddressEnable)
        archive.Integer(flag);
    VisitOutputFlags(config.Addresses.VolumeAddressEnable, archive);
    VisitOutputFlags(config.Addresses.RouteControlAddressEnable, archive);
    VisitOutputFlags(config.Addresses.RouteAddressEnable, archive);
}

using RecordBytes = std::array<std::byte, recordSize>;

RecordBytes EncodeRecord(const MatrixConfig& config);

/// Reads one record; bytes beyond the record are ignored. Throws FileError for fewer than 6238 bytes, a link
/// group outside 0 … 4, or a level or trim that is not a finite number.
MatrixConfig DecodeRecord(std::span<const std::byte> bytes);

} // namespace vek
