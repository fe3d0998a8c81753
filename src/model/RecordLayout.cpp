#include "model/RecordLayout.h"

#include "base/Bytes.h"
#include "base/Errors.h"
#include "model/Levels.h"

#include <string>

namespace vek {

namespace {

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
    VisitRecord(config, archive);
    return bytes;
}

MatrixConfig DecodeRecord(std::span<const std::byte> bytes) {
    if (bytes.size() < recordSize)
        throw FileError("shorter than a configuration: " + std::to_string(bytes.size()) + " of " +
                        std::to_string(recordSize) + " bytes");
    MatrixConfig config;
    RecordReader archive(bytes.first(recordSize));
    VisitRecord(config, archive);
    return config;
}

} // namespace vek
