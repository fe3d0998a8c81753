// Finding, restarting and programming a Vekule: the work behind the programming window.
#pragma once

#include "base/Task.h"
#include "link/DeviceTypes.h"
#include "link/DownloadImage.h"
#include "link/Exchange.h"
#include "link/Outcomes.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace vek {

/// Outcome of one programming attempt. Of what went wrong the user has been told.
enum class ConfigureResult {
    ProgramAnother, ///< programmed and restarted; the user wants to program another device
    Done,           ///< programmed and restarted
    PortNotOpen,
    NotResponding,
    DownloadFailed,
    RestartFailed, ///< the download succeeded
    EndedEarly,    ///< as EndEarly() asked
};

/// One window's dealings with its serial port. The procedures are tasks: at most one runs at a time, and
/// destroying it ends it at once, without a message and with its port closed.
///
/// A port that goes away while it is used ends a procedure with its ordinary failure.
class VekLink {
  public:
    /// All must outlive this object.
    VekLink(SerialControl& port, OneShotTimer& timer, const DeviceTypeList& types, LinkOutcomes& outcomes);

    // What the user starts. Row 0 … 3 is COM1 … COM4.

    /// Scans COM1 to COM4. Every port is closed afterwards.
    Task<> search_for_vek();
    /// Programs the device on the row's port, and another one there as long as the user wants to. The result
    /// is that of the last attempt. Image and outcomes must outlive the task.
    Task<ConfigureResult> ProgramVek(std::size_t row, const DownloadImage& image,
                                     ProgrammingOutcomes& programming);

    /// The program has to end: a download stops when the block under way is answered or its time is over, and
    /// the device is restarted. The device does not hear half a block then, as it would when the task were
    /// destroyed.
    void EndEarly() { endWanted_ = true; }

    // The steps of the above, on the port that is open.

    /// Opens the row's port and gives the device time.
    Task<> set_active_port(std::size_t row);
    /// What comes unasked during that time, at the first settings of a search.
    Task<ByteVector> Listen(int milliseconds);
    /// A long low pulse on the line, which wakes a device.
    Task<> send_wake_pulse();
    /// Looks for a device at every rate and leaves the port at the one where it answered; restarts it when
    /// asked to.
    Task<PortFinding> Find_vek(bool restart);
    /// Restarts what is there without asking for an answer; always false.
    Task<bool> dumb_restart_unit();
    /// True when the device acknowledged.
    Task<bool> restart_unit();
    /// Sends the image block by block; false when a block was not acknowledged.
    Task<bool> send_download(const DownloadImage& image, ProgrammingOutcomes& programming);
    /// One programming attempt.
    Task<ConfigureResult> Configure_Vek(const DownloadImage& image, ProgrammingOutcomes& programming);

  private:
    enum class Reply { Accepted, Refused, None };

    Task<ByteVector> SearchAt(std::string_view settings);
    Task<> SendRequest(std::uint8_t command, std::span<const std::uint8_t> argument);
    Task<Reply> Request(std::uint8_t command, std::span<const std::uint8_t> argument);
    /// The block behind those acknowledged.
    Task<bool> SendBlock(const DownloadImage& image, DownloadProgress& progress,
                         ProgrammingOutcomes& programming);

    Exchange exchange_;
    const DeviceTypeList& types_;
    LinkOutcomes& outcomes_;
    bool endWanted_ = false;
};

} // namespace vek
