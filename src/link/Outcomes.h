// What a conversation with a device tells while it goes on. The words for it are in OutcomeTexts.h.
#pragma once

#include "base/Task.h"
#include "link/PortFinding.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace vek {

/// What went wrong in an exchange.
enum class FailureKind {
    PortNotOpen,
    NotResponding, ///< no device answers the search
    DownloadNoReply,
    DownloadRefused, ///< a reply came, but it is not the acknowledgement
    RestartNoReply,
    RestartRefused,
    ProgramFailed, ///< the image is in the device, but the device did not restart
    VolumeNoReply,
    VolumeRefused,
    RouteNoReply,
    RouteRefused,
};

struct Failure {
    FailureKind Kind;
    int Block = -1; ///< of a download, from 0; -1 elsewhere
};

/// How far a download is.
struct DownloadProgress {
    int Acknowledged = 0; ///< blocks
    int Blocks = 0;
    int Retries = 0; ///< blocks that were sent once more
};

/// What a search asks at the moment.
struct SearchStep {
    std::string_view Settings; ///< of the port, such as "9600,n,8,2"
    int Number;                ///< of the question, 1 … Count
    int Count;                 ///< questions of a pass
    int Pass;                  ///< from 1; there are more only where answers are not understood
};

/// What came from the line while a search asked at one of its settings.
struct RateAnswer {
    std::string Settings;
    ByteVector Early;  ///< before the question was complete, when no device answers yet
    ByteVector Answer; ///< behind it, also when it is too short for an answer

    bool operator==(const RateAnswer&) const = default;
};

class LinkOutcomes {
  public:
    virtual ~LinkOutcomes() = default;

    /// Row 0 … 3 is about to be opened.
    virtual void PortSearchBegins(std::size_t /*row*/) {}
    /// The port that is open is asked.
    virtual void Searching(const SearchStep& /*step*/) {}
    /// It has been asked.
    virtual void Heard(const RateAnswer& /*answer*/) {}

    /// Row 0 … 3 is COM1 … COM4; the port is closed again.
    virtual void PortSearched(std::size_t row, const PortFinding& finding) = 0;

    /// The conversation goes on when the user has taken note of it.
    virtual Task<> Failed(Failure failure) = 0;
};

class ProgrammingOutcomes {
  public:
    virtual ~ProgrammingOutcomes() = default;

    /// Something answered the search with which an attempt begins.
    virtual void DeviceFound(const PortFinding& /*finding*/) {}
    /// A block was acknowledged, or is about to be sent once more.
    virtual void Progress(DownloadProgress progress) = 0;
    /// The first block is about to be sent: what the device held before is gone.
    virtual void DownloadBegins() = 0;

    /// A device was programmed and has restarted; true when the user wants to program another one on the same
    /// port.
    virtual Task<bool> WantsAnother() = 0;
};

} // namespace vek
