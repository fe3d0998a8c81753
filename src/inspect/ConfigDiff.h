// What differs between two configuration files, in the user's words.
#pragma once

#include "inspect/FieldKind.h"
#include "inspect/StoredConfig.h"

#include <string>
#include <vector>

namespace vek {

/// A field that differs.
struct FieldDifference {
    std::string Field; ///< in words: "Mode 2, Output 3: Maximum level"
    std::string Before;
    std::string After;
    FieldPlace Place;
    std::size_t Number; ///< of the field, or of the line of the notes, from 0

    /// "Mode 2, Output 3: Maximum level +6dB -> +3dB"
    std::string Line() const { return Field + ' ' + Before + " -> " + After; }
};

/// Texts are UTF-8, modes and outputs in them counted from 1 and with their names, those of `after` first.
/// Empty exactly when the two are the same byte for byte.
std::vector<FieldDifference> FieldDifferences(const StoredConfig& before, const StoredConfig& after);

/// `after` with the value that the field has in `before`; the difference is one of those between the two.
/// Nothing when the notes have no room for the line, and for data after the record.
std::optional<MatrixConfig> TakenBack(const FieldDifference& difference, const MatrixConfig& before,
                                      const MatrixConfig& after);

/// A UTF-8 line for each difference, "Mode 2, Output 3: Maximum level +6dB -> +3dB", modes and outputs
/// counted from 1. Empty exactly when the two files are the same byte for byte.
std::vector<std::string> Differences(const StoredConfig& before, const StoredConfig& after);

/// A UTF-8 line for each setting, "Mode 2, Output 3: Maximum level +6dB", for a file that there is on one
/// side only.
std::vector<std::string> AllSettings(const StoredConfig& stored);

} // namespace vek
