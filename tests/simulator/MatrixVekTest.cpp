// How strict the simulated device is, on a clock of its own.
#include "simulator/MatrixVek.h"

#include <gtest/gtest.h>

using namespace vek;

namespace {

using Bytes = std::vector<std::uint8_t>;
using std::chrono::milliseconds;

constexpr LineSettings wakeLine = {110, 2, false};
constexpr LineSettings plainLine = {9600, 2, false};
constexpr LineSettings commandLine = {9600, 1, true};
constexpr LineSettings argumentLine = {9600, 1, false};

const Bytes searchWords = {255, 'S', 'E', 'T', 'V', 'E', 'K'};
const Bytes searchReply = {39, 2, 5, 209, 13};
const Bytes findReply = {39, 2, 5, 209};
const Bytes programReply = {240, 15};
const Bytes foundReplies = {39, 2, 5, 209, 240};

/// What is sent with the line set in one way.
struct Sent {
    LineSettings Line;
    Bytes Content;
    milliseconds Pause = milliseconds(10); ///< before each byte
};

const Sent wake = {wakeLine, {0}};
const Sent search = {plainLine, searchWords};
const Sent find = {plainLine, {'D', 'i', 'R', 'e', 'C', 't'}};
const Sent restartCommand = {commandLine, {51}};
const Sent restartArgument = {argumentLine, {255}};
const Sent downloadCommand = {commandLine, {17}};

Bytes BlockFrame(int number) {
    const auto high = static_cast<std::uint8_t>(number / 256);
    const auto low = static_cast<std::uint8_t>(number % 256);
    return {high, low, 0, 0, 0, 0, 0, 0, 0, 0, static_cast<std::uint8_t>(255 - high - low)};
}

struct Conversation {
    /// What the device answers to all of it.
    Bytes Say(const std::vector<Sent>& all) {
        Bytes answer;
        for (const Sent& sent : all)
            for (const std::uint8_t byte : sent.Content) {
                now += sent.Pause;
                for (const DeviceEvent& event : Vek.Receive(byte, sent.Line, now))
                    answer.insert(answer.end(), event.Reply.begin(), event.Reply.end());
            }
        return answer;
    }

    MatrixVek Vek{{}};
    DeviceTime now{milliseconds(1000)};
};

Sent At(LineSettings line, const Sent& sent) { return {line, sent.Content, sent.Pause}; }

const std::tuple<const char*, std::vector<Sent>, Bytes> exchanges[] = {
    {"search", {wake, search}, searchReply},
    {"search without a wake pulse", {search}, {}},
    {"search after a pulse at a higher rate", {{{300, 2, false}, {0}}, search}, {}},
    {"search after another byte than 0", {{wakeLine, {255}}, search}, {}},
    {"search at a rate that is not the device's", {wake, At({19200, 2, false}, search)}, {}},
    {"search with one stop bit", {wake, At(argumentLine, search)}, {}},
    {"search word without the byte before", {wake, {plainLine, {'S', 'E', 'T', 'V', 'E', 'K'}}}, {}},
    {"search word broken off and begun again", {wake, {plainLine, {255, 'S', 'E'}}, search}, searchReply},
    {"search with long pauses inside", {wake, {plainLine, searchWords, milliseconds(400)}}, {}},
    {"search after a restart", {wake, restartCommand, restartArgument, search}, programReply},

    {"restart", {restartCommand, restartArgument}, programReply},
    {"restart command without parity", {At(plainLine, restartCommand), restartArgument}, {}},
    {"restart argument under odd parity", {restartCommand, At(commandLine, restartArgument)}, {}},
    {"restart at another rate", {At({4800, 1, true}, restartCommand), restartArgument}, {}},
    {"restart with another argument", {restartCommand, {argumentLine, {254}}}, {}},
    {"restart argument too late", {restartCommand, {argumentLine, {255}, milliseconds(400)}}, {}},
    {"restart command given twice", {restartCommand, restartCommand, restartArgument}, programReply},
    {"unknown command", {{commandLine, {52}}, restartArgument}, {}},

    {"first block without a search", {downloadCommand, {argumentLine, BlockFrame(0)}}, {}},
    {"online find", {find}, findReply},
    {"online find at another rate", {At({4800, 2, false}, find)}, {}},
    {"online restart", {{plainLine, {'R', 255, 255, 0xAF}}}, {240}},
    {"online restart with a wrong sum", {{plainLine, {'R', 255, 255, 0xAE}}}, {}},
    {"volume without a find request", {{plainLine, {'V', 7, 0x12, 0x90}}}, {}},
    {"volume", {find, {plainLine, {'V', 7, 0x12, 0x90}}}, foundReplies},
    {"volume with a wrong sum", {find, {plainLine, {'V', 7, 0x12, 0x91}}}, findReply},
    {"volume of a ninth output", {find, {plainLine, {'V', 8, 0x12, 0x8F}}}, findReply},
    {"route", {find, {plainLine, {'M', 1, 4, 0xAD}}}, foundReplies},
    {"route from a ninth input", {find, {plainLine, {'M', 1, 8, 0xA9}}}, findReply},
    {"restart, volume", {find, {plainLine, {'R', 255, 255, 0xAF, 'V', 0, 0xD2, 0xD7}}}, foundReplies},
};

TEST(MatrixVek, AnswersOnlyWhatIsRight) {
    for (const auto& [meaning, said, answer] : exchanges)
        EXPECT_EQ(Conversation().Say(said), answer) << meaning;
}

class Download : public testing::Test {
  protected:
    Download() { conversation.Say({wake, search}); }

    bool Acknowledged(const Bytes& frame) {
        return conversation.Say({downloadCommand, {argumentLine, frame}}) == programReply;
    }
    void SendAll() {
        for (int number = 0; number < deviceBlockCount; ++number)
            ASSERT_TRUE(Acknowledged(BlockFrame(number))) << number;
    }
    void Restart() { EXPECT_EQ(conversation.Say({restartCommand, restartArgument}), programReply); }

    Conversation conversation;
};

TEST(MatrixVek, StaysAwakeOnlyThroughABlindRestart) {
    Conversation conversation;
    const auto restartAndSearch = [&] { return conversation.Say({restartCommand, restartArgument, search}); };
    Bytes both = programReply;
    both.insert(both.end(), searchReply.begin(), searchReply.end());
    conversation.Say({wake, search});
    conversation.Vek.SearchAnswerSpoilt();
    EXPECT_EQ(restartAndSearch(), both) << "the searcher has not understood the device";
    EXPECT_EQ(restartAndSearch(), programReply) << "now it has";
    conversation.Vek.SearchAnswerSpoilt();
    EXPECT_EQ(restartAndSearch(), programReply) << "asleep already";
}

TEST_F(Download, TakesBlocksInOrderAndTheLastOneAgain) {
    std::string taken;
    for (const int number : {1, 0, 0, 2, 1, 0, 1, 2})
        taken += Acknowledged(BlockFrame(number)) ? 'x' : '-';
    EXPECT_EQ(taken, "-xx-x-xx");
    EXPECT_FALSE(Acknowledged(BlockFrame(258))) << "high byte of the number";
}

TEST_F(Download, RefusesDamagedBlocks) {
    const Bytes frame = BlockFrame(0);
    for (std::size_t i = 0; i < frame.size(); ++i) {
        Bytes damaged = frame;
        damaged[i] ^= 0x10;
        EXPECT_FALSE(Acknowledged(damaged)) << i;
    }
    EXPECT_FALSE(Acknowledged({frame.begin(), frame.end() - 1}));
    EXPECT_TRUE(Acknowledged(frame));
}

TEST_F(Download, IsInUseWhenCompleteAndRestarted) {
    ASSERT_TRUE(Acknowledged(BlockFrame(0)));
    Restart();
    EXPECT_FALSE(conversation.Vek.Image());
    EXPECT_FALSE(Acknowledged(BlockFrame(0))) << "a restarted device waits for a search";
    conversation.Say({wake, search});
    SendAll();
    EXPECT_FALSE(Acknowledged(BlockFrame(273))) << "beyond the end";
    EXPECT_FALSE(conversation.Vek.Image());
    Restart();
    EXPECT_TRUE(conversation.Vek.Image());
    conversation.Say({wake, search});
    EXPECT_TRUE(Acknowledged(BlockFrame(0))) << "a search begins a new download";
}

} // namespace
