// The link to a device without a window: the objects behind it, and what would be on the screen as lines.
#pragma once

#include "base/Descriptor.h"
#include "link/VekLink.h"
#include "platform/QtOneShotTimer.h"
#include "platform/QtSerialControl.h"

#include <QSocketNotifier>

#include <array>
#include <string>

namespace vek {

/// A window that shows nothing and answers No. Keeps the state of the port table.
class ConsoleView : public VekLinkView {
  public:
    void ShowBlanking(std::size_t, bool) override {}
    void ShowOption(std::size_t, bool) override {}
    void EnableOption(std::size_t row, bool enabled) override { rows_[row].Enabled = enabled; }
    void SelectOption(std::size_t row, bool selected) override { rows_[row].Selected = selected; }
    bool OptionSelected(std::size_t row) const override { return rows_[row].Selected; }
    void ShowVekType(std::size_t row, bool visible) override { rows_[row].Opened = visible; }
    void SetVekType(std::size_t row, const std::string& text) override { rows_[row].Found = text; }

    void EnableProgramVek(bool) override {}
    void ShowPleaseWait(bool) override {}
    void SetLabel2(const std::string&) override {}
    void SetLabel3(const std::string&) override {}
    void SetProgressBar1(int) override {}
    void ErrorMessage(const std::string& title, const std::string& text) override;
    bool AskYesNo(const std::string&, const std::string&) override { return false; }

  protected:
    struct Row {
        bool Opened = false;
        bool Enabled = false; ///< a Matrix Vek is there
        bool Selected = false;
        std::string Found;
    };
    std::array<Row, portCount> rows_;
};

/// A device link for the command line. Needs the application object; at most one at a time. The signals
/// SIGINT, SIGTERM and SIGHUP cancel what it does, so that the port is left in order.
class ConsoleLink {
  public:
    /// The view must outlive this object.
    ConsoleLink(VekLinkView& view, QtSerialControl::DeviceLookup deviceOf);

    VekLink* operator->() { return &link_; }
    const DeviceTypeList& Types() const { return types_; }
    /// Throws std::runtime_error after one of the signals.
    void ThrowIfCancelled() const;

  private:
    DeviceTypeList types_;
    QtOneShotTimer timer_;
    QtSerialControl port_;
    VekLink link_;
    Descriptor endings_;
    QSocketNotifier signalNotifier_;
    bool cancelled_ = false;
};

/// The port that a user names.
class NamedPort {
  public:
    /// Throws std::runtime_error, saying why, for a port that cannot be used.
    explicit NamedPort(const std::string& name);

    /// "COM1 (ttyUSB0)", or the device alone.
    const std::string& Text() const { return text_; }
    /// Makes the device COM1, and the only port.
    QtSerialControl::DeviceLookup AsCom1() const;

  private:
    std::string device_;
    std::string text_;
};

} // namespace vek
