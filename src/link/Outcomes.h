// What a conversation with a device tells while it goes on. The words for it are in OutcomeTexts.h.
#pragma once

#include "base/Task.h"
#include "link/PortFinding.h"

#include <cstddef>

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
};

class LinkOutcomes {
  public:
    virtual ~LinkOutcomes() = default;

    /// Row 0 … 3 is COM1 … COM4; the port is closed again.
    virtual void PortSearched(std::size_t row, const PortFinding& finding) = 0;

    /// The conversation goes on when the user has taken note of it.
    virtual Task<> Failed(Failure failure) = 0;
};

class ProgrammingOutcomes {
  public:
    virtual ~ProgrammingOutcomes() = default;

    virtual void Progress(DownloadProgress progress) = 0;
    /// The first block is about to be sent: what the device held before is gone.
    virtual void DownloadBegins() = 0;

    /// A device was programmed and has restarted; true when the user wants to program another one on the same
    /// port.
    virtual Task<bool> WantsAnother() = 0;
};

} // namespace vek
