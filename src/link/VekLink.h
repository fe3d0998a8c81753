// Finding, restarting and programming a Vekule: the work behind the programming window.
#pragma once

#include "link/DeviceTypes.h"
#include "link/DownloadImage.h"
#include "link/Exchange.h"
#include "link/PortTable.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace vek {

/// What the programming window shows. The table of ports is `Blanking`, `Option1` and `VekType`.
class VekLinkView : public PortTableView {
  public:
    virtual void EnableProgramVek(bool enabled) = 0;

    /// `PleaseWait`: the progress panel with the three below.
    virtual void ShowPleaseWait(bool visible) = 0;
    virtual void SetLabel2(const std::string& percentage) = 0;
    virtual void SetLabel3(const std::string& activity) = 0;
    /// Tenths of a percent, 0 … 1000.
    virtual void SetProgressBar1(int value) = 0;

    /// A box with an exclamation icon and an OK button; returns when it is closed.
    virtual void ErrorMessage(const std::string& title, const std::string& text) = 0;
    /// A question with No as its default; true for Yes. Asked only after a device was programmed and
    /// restarted.
    virtual bool AskYesNo(const std::string& title, const std::string& text) = 0;
};

/// Outcome of one programming attempt.
enum class ConfigureResult : int {
    ProgramAnother = 1, ///< programmed and restarted; the user wants to program another device
    Finished = 0, ///< programmed and restarted, the user is done; or the download failed or was cancelled
    PortNotOpen = -1,
    NotResponding = -2,
    RestartFailed = -4, ///< the download succeeded
};

/// One programming window's dealings with its serial port. The procedures return when they are done; while
/// they wait, events are handled, so that Cancel() can be called.
///
/// A port that goes away while it is used ends the procedure with its ordinary message. A cancelled procedure
/// ends at once without a message.
class VekLink {
  public:
    /// All must outlive this object.
    VekLink(SerialControl& port, OneShotTimer& timer, const DeviceTypeList& types, VekLinkView& view);

    // What the user starts. One at a time: a call while another runs is ignored.

    /// When the window is activated: the window as it starts, then the search.
    void Activate();
    /// Scans COM1 to COM4 and fills the table. Every port is closed afterwards.
    void search_for_vek();
    /// Programs the device on the chosen port, and another one there as long as the user answers Yes. The
    /// port is closed afterwards, and the window should close. The result is that of the last attempt.
    ConfigureResult ProgramVek(const DownloadImage& image);

    /// Ends what runs at once, for good: the window is closing. What runs closes its port as it returns.
    void Cancel() { exchange_.Cancel(); }
    /// True while one of the procedures above is running; the window must not be deleted then.
    bool Busy() const { return busy_; }

    // The steps of the above, on the port that is open.

    /// Opens the port of the selected row and gives the device time.
    void set_active_port();
    /// A long low pulse on the line, which wakes a device.
    void send_wake_pulse();
    /// Looks for a device at every rate and leaves the port at the one where it answered; restarts it when
    /// asked to. Returns reply code + version part 1 × 256 + version part 2 × 65536, or 0.
    std::uint32_t Find_vek(bool restart);
    /// Restarts what is there without asking for an answer; always false.
    bool dumb_restart_unit();
    /// True when the device acknowledged; otherwise the user has been told.
    bool restart_unit();
    /// Sends the image block by block. `success` is false when a block was not acknowledged, of which the
    /// user has been told, or when cancelled.
    void send_download(const DownloadImage& image, bool& success);
    /// One programming attempt.
    ConfigureResult Configure_Vek(const DownloadImage& image);

  private:
    enum class Reply { Accepted, Refused, None };

    ByteVector SearchAt(std::string_view settings);
    void SendCommand(std::uint8_t command, std::span<const std::uint8_t> argument);
    Reply Command(std::uint8_t command, std::span<const std::uint8_t> argument);
    bool SendBlock(const DownloadImage& image, int number);
    void ShowProgress(const std::string& percentage, int value);

    Exchange exchange_;
    const DeviceTypeList& types_;
    VekLinkView& view_;
    bool busy_ = false;
};

} // namespace vek
