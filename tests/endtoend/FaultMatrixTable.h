// The requests to a device, the faults they are tried with, and what the user sees then.
#pragma once

#include <algorithm>
#include <iterator>
#include <ostream>
#include <ranges>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace vek::test {

/// What the user starts.
enum class Action { Search, Program, OnlineSearch, GoOnline, Volume, Route, Disconnect };

/// A request of an action, and its reply.
struct Request {
    std::string_view Name;
    Action Within;
    std::string Event;   ///< of the simulated device, from its first occurrence within the action on
    int Tries;           ///< until the program gives up
    int TriesUnanswered; ///< the same when nothing answers
    std::string Sound;   ///< what the user sees without a fault
    int Heard = 0;       ///< online packets that the action sends
};

inline constexpr const char* found = "Matrix Vek2.5, to choose";
inline constexpr const char* programmed = "All sent ok: Program another vek; closed, programmed";

inline const Request requests[] = {
    {"search", Action::Search, "search", 3, 1, found}, // passes
    {"restart after search", Action::Search, "restart", 4, 4, found},
    {"search before download", Action::Program, "search:2", 3, 1, programmed},
    {"first block", Action::Program, "block:0", 4, 4, programmed},
    {"middle block", Action::Program, "block:136", 4, 4, programmed},
    {"last block", Action::Program, "block:272", 4, 4, programmed},
    {"restart after download", Action::Program, "restart:2", 4, 4, programmed},
    {"online search", Action::OnlineSearch, "find", 3, 3, found},
    {"restart after online search", Action::OnlineSearch, "online-restart", 4, 4, found},
    {"going online", Action::GoOnline, "find:2", 3, 3, "Online: Matrix Vek is now online.; online"},
    {"volume", Action::Volume, "volume:17", 8, 8, "online", 8}, // one try for each output
    {"route", Action::Route, "route:9", 8, 8, "online", 16},
    {"disconnecting", Action::Disconnect, "online-restart:2", 4, 4, "offline"},
};

enum class PortFault { None, BackAtOnce, Busy, Missing, Forbidden, NotSerial, OtherDevice };
enum class Times { Once, WhileUnanswered, WhileAnswered };

struct FaultEntry {
    std::string_view Name;
    std::string OfDevice; ///< as the simulated device reads it, without the event; empty: of the port alone
    Times HowOften = Times::Once;
    PortFault OfPort = PortFault::None;
    int Lasts = 0; ///< ms, when it outlives the request
};

inline const FaultEntry faults[] = {
    {"silent", "no-reply", Times::WhileUnanswered},
    {"refused", "wrong-reply", Times::WhileAnswered},
    {"half", "half-reply", Times::WhileUnanswered},
    {"late", "late-reply:600", Times::Once, PortFault::None, 600}, // while the next try waits for its reply
    {"noise before", "noise:3", Times::WhileAnswered},
    {"echo", "echo", Times::WhileAnswered},
    {"flood", "flood:700", Times::Once, PortFault::None, 750},
    {"hang-up", "hang-up"},
    {"adapter back", "hang-up", Times::Once, PortFault::BackAtOnce},
    {"busy", "", Times::Once, PortFault::Busy},
    {"missing", "", Times::Once, PortFault::Missing},
    {"forbidden", "", Times::Once, PortFault::Forbidden},
    {"not serial", "", Times::Once, PortFault::NotSerial},
    {"another device", "", Times::Once, PortFault::OtherDevice},
};

/// Requests | faults | what the user sees, a regular expression | ms until then at most.
/// The faults with a star are tried every time. Where in a flood a reply is looked for depends on the
/// machine; so does what meets an acknowledgement of a block that is late.
inline constexpr std::string_view outcomes = R"(
search | silent, half | -------------- | 2500
search | refused, noise before, echo | -------------- | 16000
search | late | Matrix Vek2.5, to choose | 2500
search | flood | Matrix Vek2.5, to choose | 8000
search | hang-up*, adapter back | -------------- | 1000
search | busy*, missing, forbidden, not serial | no row | 500
search | another device* | Wall Panel 8 Vek2.5 | 1000
restart after search, restart after online search | silent, half | No reply to restart; Matrix Vek2.5, to choose | 4000
restart after search, restart after online search | refused, noise before, echo | Reply fail to restart; Matrix Vek2.5, to choose | 1500
restart after search, restart after online search | late | Matrix Vek2.5, to choose | 2000
restart after search, restart after online search | flood | (Reply fail to restart; )?Matrix Vek2.5, to choose | 2000
restart after search, restart after online search | hang-up, adapter back | No reply to restart; Matrix Vek2.5, to choose | 1000
search before download | silent, half | Vek not responding; closed, not programmed | 3000
search before download | refused, noise before, echo | Vek not responding; closed, not programmed | 8000
search before download | late, flood | All sent ok: .*; closed, programmed | 20000
search before download | hang-up, adapter back | Vek not responding; closed, not programmed | 1000
search before download | busy, missing, forbidden, not serial | Port not open; closed, not programmed | 500
search before download | another device | All sent ok: .*; closed, programmed | 20000
first block | silent | 0: No reply to download; closed, not programmed | 4000
first block | refused, noise before, echo | 0: Reply to download failed; closed, not programmed | 1500
first block | half | All sent ok: .*; closed, programmed | 20000
first block | late | ([0-9]+: No reply to download; closed, not|All sent ok: .*; closed,) programmed | 20000
first block | flood | [0-9]+: Reply to download failed; closed, not programmed | 2500
first block | hang-up, adapter back* | 0: No reply to download; closed, not programmed | 1000
middle block | silent | 136: No reply to download; closed, not programmed | 12000
middle block | refused, noise before, echo | 136: Reply to download failed; closed, not programmed | 10000
middle block | half | All sent ok: .*; closed, programmed | 20000
middle block | late | ([0-9]+: No reply to download; closed, not|All sent ok: .*; closed,) programmed | 20000
middle block | flood | [0-9]+: Reply to download failed; closed, not programmed | 10000
middle block | hang-up, adapter back | 136: No reply to download; closed, not programmed | 10000
last block | silent | 272: No reply to download; closed, not programmed | 20000
last block | refused, noise before, echo | 272: Reply to download failed; closed, not programmed | 20000
last block | half, late | All sent ok: .*; closed, programmed | 20000
last block | flood | (272: .*; closed, not|Reply fail to restart; Program failed, .*; closed,|All.*,) programmed | 20000
last block | hang-up, adapter back | 272: No reply to download; closed, not programmed | 20000
restart after download | silent, half | No reply to restart; Program failed, .*; closed, programmed | 20000
restart after download | refused, noise before, echo | Reply fail to restart; Program failed, .*; closed, programmed | 20000
restart after download | late | All sent ok: .*; closed, programmed | 20000
restart after download | flood | (Reply fail to restart; Program failed, |All sent ok: ).*; closed, programmed | 20000
restart after download | hang-up | No reply to restart; Program failed, .*; closed, programmed | 20000
restart after download | adapter back | No reply to restart; Program failed, .*; closed, not programmed | 20000
online search | silent, half | -------------- | 3000
online search | refused, noise before, echo, flood*, hang-up, adapter back* | -------------- | 1000
online search | late | Matrix Vek2.5, to choose | 2000
online search | busy, missing, forbidden*, not serial | no row | 500
online search | another device | Wall Panel 8 Vek2.5 | 1000
going online | silent, half | offline | 3000
going online | refused*, noise before, echo, flood, hang-up, adapter back | offline | 1000
going online | late | Online: Matrix Vek is now online.; online | 2000
going online | busy, missing*, forbidden, not serial, another device* | offline | 500
volume, route | silent, half | 8 x Reply fail to (Volume|Matrix); online | 6000
volume | refused* | 8 x Reply ERROR to Volume; online | 1000
route | refused | 8 x Reply ERROR to Matrix; online | 1000
volume | noise before, echo | 8 x Reply fail to Volume; online | 1000
route | noise before, echo* | 8 x Reply fail to Matrix; online | 1000
volume, route | late | Reply fail to (Volume|Matrix); online | 1500
volume | flood* | (([0-9] x )?Reply (fail|ERROR) to Volume; )+online | 1000
route | flood | (([0-9] x )?Reply (fail|ERROR) to (Matrix|Volume); )+online | 1000
volume | hang-up, adapter back* | Reply fail to Volume; offline | 1000
route | hang-up*, adapter back | Reply fail to Matrix; offline | 1000
disconnecting | silent, half | No reply to restart; offline | 4000
disconnecting | refused*, noise before, echo | Reply fail to restart; offline | 1000
disconnecting | late | offline | 2000
disconnecting | flood | (Reply fail to restart; )?offline | 1000
disconnecting | hang-up, adapter back | No reply to restart; offline | 1000
)";

/// One request with one fault.
struct Cell {
    const Request* Asked;
    const FaultEntry* Spoilt;
    std::string Seen;
    int AtMost; ///< ms
};

/// For the failure of a test.
inline void PrintTo(const Cell& cell, std::ostream* out) {
    *out << cell.Asked->Name << ", " << cell.Spoilt->Name;
}

const auto& Named(const auto& table, std::string_view name) {
    const auto* entry = std::ranges::find(table, name, [](const auto& each) { return each.Name; });
    if (entry == std::end(table))
        throw std::out_of_range(std::string(name));
    return *entry;
}

inline std::vector<std::string_view> Split(std::string_view text, std::string_view separator) {
    std::vector<std::string_view> parts;
    for (const auto part : std::views::split(text, separator))
        parts.emplace_back(part.begin(), part.end());
    return parts;
}

inline std::vector<Cell> CellsOf(std::string_view table, bool all) {
    std::vector<Cell> cells;
    for (const std::string_view line : Split(table, "\n")) {
        if (line.empty())
            continue;
        const auto columns = Split(line, " | ");
        for (std::string_view fault : Split(columns.at(1), ", ")) {
            const bool quick = fault.ends_with('*');
            fault.remove_suffix(quick ? 1 : 0);
            if (!quick && !all)
                continue;
            for (const std::string_view request : Split(columns[0], ", "))
                cells.push_back({&Named(requests, request), &Named(faults, fault), std::string(columns.at(2)),
                                 std::stoi(std::string(columns.at(3)))});
        }
    }
    return cells;
}

} // namespace vek::test
