// What a conversation told, for comparison.
#pragma once

#include "link/OutcomeTexts.h"
#include "support/ScriptedPort.h"

#include <array>
#include <deque>
#include <gtest/gtest.h>
#include <optional>
#include <string>

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

inline const std::string noRestart = "Error!|No reply to restart;";
using PortStates = std::vector<PortState>;

template <typename Outcomes>
class RecordingOutcomes : public Outcomes {
  public:
    std::array<std::optional<PortFinding>, portCount> Found;
    std::string Boxes; ///< "title|text;" of each

    void PortSearched(std::size_t row, const PortFinding& finding) override { Found.at(row) = finding; }
    Task<> Failed(Failure failure) override {
        const MessageText message = TextOf(failure);
        Boxes += message.Title + '|' + message.Text + ';';
        co_return;
    }
    /// Of the four rows, all searched.
    PortStates States() const {
        PortStates states;
        for (const auto& finding : Found)
            states.push_back(finding.value().State);
        return states;
    }
    /// "Matrix Vek2.5|dashes|..." of the rows searched so far.
    std::string Texts() const {
        std::string texts;
        for (const auto& finding : Found)
            texts += (finding ? TextOf(*finding) : "not searched") + '|';
        return texts;
    }
};

} // namespace vek::test
