#include "simulator/Faults.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace vek {

namespace {

using Bytes = std::vector<std::uint8_t>;
using Kind = DeviceEventKind;
using std::chrono::milliseconds;

/// Which of a row of events the fault changes, as a text: "-" unchanged, "x" changed.
std::string Changed(std::string_view fault, const std::vector<std::pair<Kind, int>>& events) {
    FaultPlan plan({ParseFault(fault)});
    std::string result;
    for (const auto& [kind, number] : events)
        result += plan.DeliveryOf({kind, number, {}, {240}, {}}).Note.empty() ? '-' : 'x';
    return result;
}

TEST(Faults, HitTheirEventAsOftenAsAsked) {
    const std::vector<std::pair<Kind, int>> searches = {
        {Kind::Search, 1}, {Kind::Search, 2}, {Kind::Restart, 1}, {Kind::Search, 3}, {Kind::Search, 4}};
    EXPECT_EQ(Changed("no-reply@search", searches), "x----");
    EXPECT_EQ(Changed("no-reply@searchx2", searches), "xx---");
    EXPECT_EQ(Changed("no-reply@search:2x2", searches), "-x-x-");
    EXPECT_EQ(Changed("no-reply@search:3x*", searches), "---xx");
    EXPECT_EQ(Changed("no-reply@any:2x2", searches), "-x-x-");
    EXPECT_EQ(Changed("no-reply@volume", searches), "-----");

    const std::vector<std::pair<Kind, int>> blocks = {
        {Kind::Block, 0}, {Kind::Block, 1}, {Kind::Block, 1}, {Kind::Block, 1}, {Kind::Block, 2}};
    EXPECT_EQ(Changed("no-reply@block:1x2", blocks), "-xx--");
    EXPECT_EQ(Changed("no-reply@block:0x9", blocks), "x----");
}

TEST(Faults, ChangeTheReply) {
    const DeviceEvent search = {Kind::Search, 1, {}, {39, 2, 5, 209, 13}, {}};
    const struct {
        std::string_view Fault;
        Bytes Sent;
        milliseconds Delay;
        milliseconds Flood;
        bool HangUp;
    } cases[] = {
        {"no-reply@any", {}, {}, {}, false},
        {"wrong-reply@any", {216, 2, 5, 209, 13}, {}, {}, false},
        {"half-reply@any", {39, 2}, {}, {}, false},
        {"late-reply:250@any", {39, 2, 5, 209, 13}, milliseconds(250), {}, false},
        {"noise:2@any", {0x55, 0x55, 39, 2, 5, 209, 13}, {}, {}, false},
        {"flood:90@any", {}, {}, milliseconds(90), false},
        {"hang-up@any", {}, {}, {}, true},
    };
    for (const auto& expected : cases) {
        FaultPlan plan({ParseFault(expected.Fault)});
        const Delivery delivery = plan.DeliveryOf(search);
        EXPECT_EQ(delivery.Bytes, expected.Sent) << expected.Fault;
        EXPECT_EQ(delivery.Delay, expected.Delay) << expected.Fault;
        EXPECT_EQ(delivery.Flood, expected.Flood) << expected.Fault;
        EXPECT_EQ(delivery.HangUp, expected.HangUp) << expected.Fault;
        EXPECT_EQ(plan.DeliveryOf(search).Bytes, search.Reply) << "once only: " << expected.Fault;
    }
}

TEST(Faults, LeaveSilentEventsAlone) {
    EXPECT_EQ(FaultPlan({ParseFault("noise@any")}).DeliveryOf({Kind::Refused, 1, {1}, {}, {}}).Bytes,
              Bytes());
}

TEST(Faults, RefuseWhatTheyDoNotKnow) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"no-reply", "no @EVENT in \"no-reply\""},
        {"bang@search", "unknown fault \"bang\""},
        {"no-reply@breakfast", "unknown event \"breakfast\""},
        {"no-reply:3@search", "no number belongs to \"no-reply\""},
        {"noise:many@search", "not a number: \"many\""},
        {"noise@search:-1", "not a number: \"-1\""},
        {"noise@search:1x", "not a number: \"\""},
        {"noise@block:1x2y", "not a number: \"2y\""},
    };
    for (const auto& [text, message] : cases)
        EXPECT_THAT([&] { ParseFault(text); },
                    testing::ThrowsMessage<std::invalid_argument>(testing::StrEq(std::string(message))));
}

} // namespace

} // namespace vek
