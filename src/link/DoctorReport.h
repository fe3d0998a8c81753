// The words of an examination, for the window and the command line.
#pragma once

#include "link/PortExamination.h"

#include <span>
#include <string>
#include <vector>

namespace vek {

struct ReportLine {
    enum class Kind { Port, Fact, Conclusion };
    Kind Is = Kind::Fact;
    std::string Text; ///< UTF-8, one line

    bool operator==(const ReportLine&) const = default;
};

/// What is known so far, port by port.
std::vector<ReportLine> ReportOf(std::span<const PortExamination> ports, const DeviceTypeList& types);

/// The likeliest cause and what to do, when all ports have been examined.
std::vector<ReportLine> ConclusionOf(std::span<const PortExamination> ports, const DeviceTypeList& types);

/// The lines as text to be sent to somebody: facts indented below their port, a blank line between ports.
std::string TextOf(std::span<const ReportLine> lines);

} // namespace vek
