// The list of the unit's VekNet addresses, for a spreadsheet and as a section of the report.
#pragma once

#include "model/Config.h"

#include <cstddef>
#include <string>

namespace vek {

struct AddressListOptions {
    bool IncludeUnusedAddresses = false; ///< list disabled addresses too, as bare numbers
    bool CsvSeparator = false;           ///< "," between columns instead of a tab
};

/// One row per listed address in ascending order: CR LF, then address, side, kind and description. Empty when
/// there is nothing to list. Units are numbered from 0. `currentOutput` (0 … 7) is the output whose enable
/// flags decide about the volume and route rows of all eight outputs; any other value throws SubscriptError.
std::string BuildAddressList(const MatrixConfig& config, std::size_t currentOutput,
                             const AddressListOptions& options);

} // namespace vek
