// Modes, outputs, inputs and panels in texts: the number, and the name that the notes give it.
#pragma once

#include "model/Config.h"
#include "model/Names.h"

#include <cstddef>
#include <string>

namespace vek {

/// Texts are UTF-8 on one line, as FieldTexts has them. Of a long name only the beginning is told: the notes
/// have it whole. Indices count from 0, numbers in texts from 1.
class NamedNumbers {
  public:
    explicit NamedNumbers(const MatrixConfig& config) : names_(config.Notes.Padded()) {}
    /// What has no name in the configuration has the one of a former one.
    NamedNumbers(const MatrixConfig& config, const MatrixConfig& former)
        : names_(config.Notes.Padded()), former_(former.Notes.Padded()) {}

    /// "3 Foyer", "3" for what has no name.
    std::string Number(NameKind kind, std::size_t index) const;
    /// "Output 3 Foyer"
    std::string Text(NameKind kind, std::size_t index) const;
    /// "Mode 2 Evening, Output 3 Foyer"
    std::string OutputOfMode(std::size_t mode, std::size_t output) const;

  private:
    std::string NameAfterBlank(NameKind kind, std::size_t index) const;

    Names names_;
    Names former_;
};

} // namespace vek
