// What both windows' views remember of what they were told to show.
#pragma once

#include "link/PortTable.h"
#include "support/ScriptedPort.h"

#include <array>
#include <deque>
#include <gtest/gtest.h>
#include <optional>

namespace vek::test {

/// Replies of a device to come; nothing is no reply.
using Replies = std::deque<std::optional<ByteVector>>;

inline std::optional<ByteVector> Next(Replies& replies, const ByteVector& whenUsedUp) {
    if (replies.empty())
        return whenUsedUp;
    const auto reply = replies.front();
    replies.pop_front();
    return reply;
}

struct PortRow {
    bool blanking = false, optionVisible = false, optionEnabled = false, optionSelected = false;
    bool typeVisible = false;
    std::string type;
    bool operator==(const PortRow&) const = default;
};

template <typename View>
class RecordingTable : public View {
  public:
    std::array<PortRow, portCount> Rows;
    std::string Boxes; ///< "title|text;" of each

    void ShowBlanking(std::size_t row, bool visible) override { Rows.at(row).blanking = visible; }
    void ShowOption(std::size_t row, bool visible) override { Rows.at(row).optionVisible = visible; }
    void EnableOption(std::size_t row, bool enabled) override { Rows.at(row).optionEnabled = enabled; }
    void SelectOption(std::size_t row, bool selected) override { Rows.at(row).optionSelected = selected; }
    bool OptionSelected(std::size_t row) const override { return Rows.at(row).optionSelected; }
    void ShowVekType(std::size_t row, bool visible) override { Rows.at(row).typeVisible = visible; }
    void SetVekType(std::size_t row, const std::string& text) override { Rows.at(row).type = text; }
    void ErrorMessage(const std::string& title, const std::string& text) override { Box(title, text); }

    void Box(const std::string& title, const std::string& text) { Boxes += title + '|' + text + ';'; }
};

} // namespace vek::test
