// The words for the outcomes of a conversation, for the windows and the command line.
#pragma once

#include "link/Outcomes.h"
#include "link/PortFacts.h"

#include <span>
#include <string>

namespace vek {

struct MessageText {
    std::string Title;
    std::string Text;
};

/// "Error!  12" and the sentence of the failure.
MessageText TextOf(const Failure& failure);

/// Of a port that was searched: the device's name and version, "Matrix Vek2.5", or dashes. UTF-8.
std::string TextOf(const PortFinding& finding);

/// Of a port that was searched, in words: "Matrix Vek 2.5", "another device: Relay 4 Vek 7.16", "silent",
/// "may not be opened: your user is not in the group dialout". The facts are those of the port. UTF-8.
std::string FindingText(const PortFinding& finding, const PortFacts& facts);

/// Of a port that did not open, why: "there is no such port".
std::string WhyNotOpened(const PortFinding& finding);

/// Programs and their numbers: "ModemManager (812), brltty (90)".
std::string NamesOf(std::span<const PortHolder> programs);

/// The firmware version of a search result, "2.5". The first number is version part 1, plus 4096 when bit 4
/// of version part 2 is set.
std::string VersionText(std::uint32_t found);

/// Tenths of a percent, 0 … fullProgress, and the same as a text. The blocks count as done when the next one
/// is, so that nothing but a finished download shows as 100 %.
inline constexpr int fullProgress = 1000;
int TenthsOf(const DownloadProgress& progress);
/// "0%" before the first block, "12.5%", "100%" at the end.
std::string PercentText(const DownloadProgress& progress);

/// The diagnostic lines of the online commands, CR LF at their end. Output and input from 0. Throws
/// OverflowError for a level that gives no register value.
std::string VolumeLine(int output, float level);
std::string RouteLine(int output, int input);

} // namespace vek
