// The table of the four serial ports that the programming window and the online page both show, and the scan
// that fills it.
#pragma once

#include "link/DeviceTypes.h"
#include "link/Exchange.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace vek {

inline constexpr std::size_t portCount = 4;

/// Title of the messages about a device that does not answer as it should.
inline constexpr const char* errorTitle = "Error!";

/// The controls of the table; `row` 0 … 3 is COM1 … COM4.
class PortTableView {
  public:
    virtual ~PortTableView() = default;

    /// `Blanking`: covers the row with "Please Wait Searching for Veks".
    virtual void ShowBlanking(std::size_t row, bool visible) = 0;

    /// `Option1` or `OnlinePort`: chooses the row.
    virtual void ShowOption(std::size_t row, bool visible) = 0;
    virtual void EnableOption(std::size_t row, bool enabled) = 0;
    /// Must not be taken for a click of the user.
    virtual void SelectOption(std::size_t row, bool selected) = 0;
    virtual bool OptionSelected(std::size_t row) const = 0;

    /// `VekType`: what was found there, as UTF-8.
    virtual void ShowVekType(std::size_t row, bool visible) = 0;
    virtual void SetVekType(std::size_t row, const std::string& text) = 0;
};

/// Deselects all four rows.
void DeselectPorts(PortTableView& view);

/// Opens the port of the selected row, closing what was open. False when no row is selected; whether the port
/// opened is for PortOpen() to tell.
bool OpenSelectedPort(Exchange& exchange, const PortTableView& view);

/// The device type of a search result, nullptr when it is not a known one.
const DeviceType* FoundType(const DeviceTypeList& types, std::uint32_t found);

/// True for the device that this program configures.
bool IsMatrixVek(std::uint32_t found);

/// The text of a search result (0 for nothing found): the device's name and version, or dashes.
std::string FoundText(const DeviceTypeList& types, std::uint32_t found);

/// Opens COM1 to COM4 one after the other, lets `identify` talk to what is there and shows its result (0 for
/// nothing found). A row can be chosen only when it is a Matrix Vek; none is selected afterwards. Leaves
/// every port closed, at once when cancelled.
void SearchPorts(Exchange& exchange, const DeviceTypeList& types, PortTableView& view,
                 const std::function<std::uint32_t()>& identify);

} // namespace vek
