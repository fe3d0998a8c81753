// The behaviour of a Matrix Vek on its serial line: what it accepts, byte for byte, and what it answers. Kept
// apart from the editor's own protocol code on purpose, so that each checks the other.
#pragma once

#include "simulator/LineSettings.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vek {

inline constexpr std::size_t deviceImageSize = 2177;
inline constexpr std::size_t deviceBlockSize = 8;
/// The last block carries padding, which the device drops.
inline constexpr int deviceBlockCount = (deviceImageSize + deviceBlockSize - 1) / deviceBlockSize;
static_assert(deviceBlockCount == 273);
inline constexpr std::uint8_t deviceChannelCount = 8; ///< inputs, and outputs
using DeviceImage = std::array<std::uint8_t, deviceImageSize>;
using DeviceTime = std::chrono::steady_clock::time_point;

enum class DeviceEventKind {
    WakePulse,
    Search,        ///< "SETVEK" at the device's rate
    Block,         ///< a valid download block, repeated ones included
    Restart,       ///< by command byte
    OnlineFind,    ///< "DiReCt"
    OnlineRestart, ///< by packet
    Volume,
    Route,
    Programmed, ///< a restart after a complete download: the image is in use
    Refused,    ///< something the device does not take; it stays silent
};

/// Something the device noticed.
struct DeviceEvent {
    DeviceEventKind Kind = DeviceEventKind::Refused;
    /// Number of the block from 0; for every other kind, how many of the kind there were, this one included.
    int Number = 0;
    std::vector<std::uint8_t> Request = {}; ///< the bytes that belong to it
    std::vector<std::uint8_t> Reply = {};   ///< empty: the device does not answer
    std::string Text = {};                  ///< for people: "block 12", "volume of output 3: code 186"
    int Baud = 9600;                        ///< of the line
};

struct MatrixVekOptions {
    std::uint8_t ReplyCode = 39;
    std::uint8_t FirmwareMajor = 2;
    std::uint8_t FirmwareMinor = 5;
    int SearchRate = 9600; ///< at which it listens for the search; all else runs at 9600 baud
    /// 5: the search reply ends with an additional byte 13, which spares the searcher the rest of its wait.
    int SearchReplyLength = 5;
    bool NeedsWakePulse = true; ///< hears no search before a wake pulse
};

/// Fed with bytes and the settings of the line at their arrival; holds no port and reads no clock.
class MatrixVek {
  public:
    explicit MatrixVek(const MatrixVekOptions& options) : options_(options) {}

    /// Takes one byte. Usually gives no event or one; two when a restart puts a new image in use or a byte
    /// breaks off a request.
    std::vector<DeviceEvent> Receive(std::uint8_t byte, const LineSettings& line, DeviceTime now);

    /// The answer to the search just heard does not arrive as it should. Until the next search, a restart is
    /// one that a searcher sends blindly before it searches on without another pulse: the device stays awake.
    void SearchAnswerSpoilt() { answerSpoilt_ = true; }

    /// The image in use; nothing before the first complete download and restart.
    const std::optional<DeviceImage>& Image() const { return image_; }

  private:
    struct PlainRequest;
    static const PlainRequest plainRequests[];

    void ReceivePulse(std::uint8_t byte);
    void ReceivePlain(std::uint8_t byte);
    void ReceiveCommand(std::uint8_t byte);
    void ReceiveArgument(std::uint8_t byte);

    void OnSearch();
    void OnFind();
    void OnVolume();
    void OnRoute();
    void OnOnlineRestart();
    void OnBlock();
    void OnRestart();

    bool TakesPacket(const char* what);
    bool NamesChannels(const char* what, std::size_t count);
    void DropPartial(const char* why);
    void RefuseNoise(std::uint8_t byte);
    void Refuse(std::string why);
    /// Reports an event that the bytes collected so far make up.
    void Report(DeviceEventKind kind, std::string text, std::vector<std::uint8_t> reply);
    void Restarted();
    std::vector<std::uint8_t> Identity() const;

    MatrixVekOptions options_;
    LineSettings lastLine_;
    DeviceTime lastTime_ = {};
    std::vector<std::uint8_t> partial_; ///< of a request; with its command byte first where it has one
    std::vector<DeviceEvent> events_;   ///< of the byte being received
    std::map<DeviceEventKind, int> counts_;
    bool inNoise_ = false; ///< senseless bytes in a row are reported once

    bool awake_ = false;        ///< there was a wake pulse since the last restart that was not blind
    bool answerSpoilt_ = false; ///< of the last search
    bool identified_ = false;   ///< there was a search since the last restart: programming is allowed
    bool online_ = false;       ///< there was a find request since the last restart
    int nextBlock_ = 0;
    std::array<std::uint8_t, deviceBlockCount* deviceBlockSize> received_ = {};
    std::optional<DeviceImage> image_;
};

} // namespace vek
