// Which sections a configuration report holds.
#pragma once

namespace vek {

/// The user's choices for the report. They last until the program ends and are never saved.
struct PrintingOptions {
    bool IncludeVekNet = false;      ///< the list of VekNet addresses
    bool IncludeRS232 = false;       ///< the RS232 control codes
    bool IncludeOutputs = false;     ///< modes and outputs
    bool IncludeInputTrims = false;  ///< trims of the inputs
    bool IncludeOutputTrims = false; ///< trims of the outputs
    bool IncludeNotes = false;       ///< the free notes

    bool operator==(const PrintingOptions&) const = default;
};

} // namespace vek
