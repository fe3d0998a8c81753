// Faults of the simulated device and when its bytes go out.
#include "simulator/ReplySchedule.h"

#include <gmock/gmock.h>

#include <stdexcept>

using namespace vek;

namespace {

using Kind = DeviceEventKind;
using std::chrono::milliseconds;

TEST(Faults, HitTheirEventAsOftenAsAsked) {
    const std::vector<std::pair<Kind, int>> searches = {
        {Kind::Search, 1}, {Kind::Search, 2}, {Kind::Restart, 1}, {Kind::Search, 3}, {Kind::Search, 4}};
    const std::vector<std::pair<Kind, int>> blocks = {
        {Kind::Block, 0}, {Kind::Block, 1}, {Kind::Block, 1}, {Kind::Block, 1}, {Kind::Block, 2}};
    const std::pair<std::string, const char*> cases[] = {
        {"search", "x----"},  {"searchx2", "xx---"}, {"search:2x2", "-x-x-"}, {"search:3x*", "---xx"},
        {"any:2x2", "-x-x-"}, {"volume", "-----"},   {"block:1x2", "-xx--"},  {"block:0x9", "x----"}};
    for (const auto& [event, hits] : cases) {
        FaultPlan plan({ParseFault("no-reply@" + event)});
        std::string hit; // a letter for each event
        for (const auto& [kind, number] : event.starts_with("block") ? blocks : searches)
            hit += plan.DeliveryOf({kind, number, {}, {240}, {}}).Note.empty() ? '-' : 'x';
        EXPECT_EQ(hit, hits) << event;
    }
}

TEST(Faults, ChangeTheReply) {
    const DeviceEvent search = {Kind::Search, 1, {'S', 'K'}, {39, 2, 5, 209, 13}, {}};
    const std::pair<std::string_view, Delivery> cases[] = {
        {"wrong-reply@any", {{216, 2, 5, 209, 13}}},
        {"half-reply@any", {{39, 2}}},
        {"late-reply:250@any", {search.Reply, milliseconds(250)}},
        {"noise:2@any", {{0x55, 0x55, 39, 2, 5, 209, 13}}},
        {"echo@any", {{'S', 'K', 39, 2, 5, 209, 13}}},
        {"flood:90@any", {.Flood = milliseconds(90)}},
        {"hang-up@any", {.HangUp = true}},
        {"mute", {}},
        {"wrong-sum@search", {{39, 3, 5, 209, 13}}},
        {"wrong-rate:9600", {search.Reply}},
        {"chatter:50", {search.Reply}},
    };
    for (const auto& [fault, expected] : cases) {
        FaultPlan plan({ParseFault(fault)});
        const Delivery delivery = plan.DeliveryOf(search);
        EXPECT_EQ(std::tuple(delivery.Bytes, delivery.Delay, delivery.Flood, delivery.HangUp),
                  std::tuple(expected.Bytes, expected.Delay, expected.Flood, expected.HangUp))
            << fault;
    }
    EXPECT_EQ(FaultPlan({ParseFault("noise@any")}).DeliveryOf({Kind::Refused, 1, {1}, {}, {}}).Bytes,
              std::vector<std::uint8_t>());
}

TEST(Faults, RefuseWhatTheyDoNotKnow) {
    const std::pair<const char*, const char*> cases[] = {
        {"wrong-rate:0", "no rate: \"wrong-rate:0\""},
        {"bang@search", "unknown fault \"bang\""},
        {"no-reply@breakfast", "unknown event \"breakfast\""},
        {"no-reply:3@search", "no number belongs to \"no-reply\""},
        {"noise:many@search", "not a number: \"many\""},
        {"noise@block:1x2y", "not a number: \"2y\""},
    };
    for (const auto& [text, message] : cases)
        EXPECT_THAT([&] { ParseFault(text); },
                    testing::ThrowsMessage<std::invalid_argument>(testing::StrEq(message)));
}

TEST(ReplySchedule, GivesBytesWhenTheyAreDue) {
    const auto played = [](const std::vector<Delivery>& deliveries, int byteTime) {
        ReplySchedule schedule;
        for (const Delivery& delivery : deliveries)
            schedule.Add(delivery, DeviceTime(), milliseconds(byteTime));
        std::string given;
        while (const auto next = schedule.NextTime()) {
            const auto due = schedule.Due(*next);
            given += std::to_string(next->time_since_epoch() / milliseconds(1)) + ':' +
                     std::string(due.begin(), due.end()) + ' ';
            schedule.Sent(due.size());
        }
        return given;
    };
    EXPECT_EQ(played({{{'a', 'b'}}}, 0), "0:ab ");
    EXPECT_EQ(played({{{'a', 'b'}}}, 2), "2:a 4:b ");
    EXPECT_EQ(played({{{'a', 'b'}, milliseconds(9)}, {{'c'}}}, 0), "0:c 9:ab ");
    EXPECT_EQ(played({{.Flood = milliseconds(5)}, {{'a'}, milliseconds(9)}}, 0), "9:a ");
}

} // namespace
