#include "model/RecordLayout.h"

#include "base/Bytes.h"
#include "base/Errors.h"
#include "model/Levels.h"

#include <string>

namespace vek {

namespace {

// The one description of the layout. An archive is called with every field in its order on disk; Config is
// const when written, not const when read.

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

template <typename Archive, typename Config>
void Visit(Config& config, Archive& archive) {
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

class RecordWriter {
  public:
    explicit RecordWriter(std::span<std::byte> bytes) : writer_(bytes) {}
    void Integer(std::int16_t value) { writer_.Integer(value); }
    void LinkGroup(std::int16_t value) { writer_.Integer(value); }
    void Level(float value) { writer_.Single(value); }
    template <std::size_t N>
    void Text(const FixedText<N>& text) {
        writer_.Text(text.Padded());
    }

  private:
    ByteWriter writer_;
};

class RecordReader {
  public:
    explicit RecordReader(std::span<const std::byte> bytes) : reader_(bytes) {}
    void Integer(std::int16_t& value) { value = reader_.Integer(); }
    void LinkGroup(std::int16_t& value) {
        value = reader_.Integer();
        if (!IsValidLinkGroup(value))
            throw FileError("link group " + std::to_string(value) + " is outside 0 to 4");
    }
    void Level(float& value) {
        value = reader_.Single();
        if (!IsValidLevel(value))
            throw FileError("a level is not a finite number");
    }
    template <std::size_t N>
    void Text(FixedText<N>& text) {
        text = reader_.Text(N);
    }

  private:
    ByteReader reader_;
};

} // namespace

RecordBytes EncodeRecord(const MatrixConfig& config) {
    RecordBytes bytes;
    RecordWriter archive(bytes);
    Visit(config, archive);
    return bytes;
}

MatrixConfig DecodeRecord(std::span<const std::byte> bytes) {
    if (bytes.size() < recordSize)
        throw FileError("shorter than a configuration: " + std::to_string(bytes.size()) + " of " +
                        std::to_string(recordSize) + " bytes");
    MatrixConfig config;
    RecordReader archive(bytes.first(recordSize));
    Visit(config, archive);
    return config;
}

} // namespace vek
