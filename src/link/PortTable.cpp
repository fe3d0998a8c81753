#include "link/PortTable.h"

#include "link/Packets.h"

#include <array>

namespace vek {

namespace {

constexpr const char* nothingFound = "--------------";

std::uint8_t ReplyCode(std::uint32_t found) { return static_cast<std::uint8_t>(found & 0xFF); }

int PortNumber(std::size_t row) { return static_cast<int>(row) + 1; }

} // namespace

const DeviceType* FoundType(const DeviceTypeList& types, std::uint32_t found) {
    return FindDeviceType(types, ReplyCode(found));
}

bool IsMatrixVek(std::uint32_t found) { return ReplyCode(found) == matrixVekReply; }

void DeselectPorts(PortTableView& view) {
    for (std::size_t row = 0; row < portCount; ++row)
        view.SelectOption(row, false);
}

bool OpenSelectedPort(Exchange& exchange, const PortTableView& view) {
    exchange.Close();
    bool selected = false;
    for (std::size_t row = 0; row < portCount; ++row) {
        if (!view.OptionSelected(row))
            continue;
        exchange.Open(PortNumber(row));
        selected = true;
    }
    return selected;
}

std::string FoundText(const DeviceTypeList& types, std::uint32_t found) {
    const DeviceType* type = FoundType(types, found);
    std::string text = type != nullptr ? type->Name : nothingFound;
    if (found != 0)
        text += VersionText(found);
    return text;
}

void SearchPorts(Exchange& exchange, const DeviceTypeList& types, PortTableView& view,
                 const std::function<std::uint32_t()>& identify) {
    for (std::size_t row = 0; row < portCount; ++row) {
        view.ShowBlanking(row, true);
        view.SelectOption(row, false);
        view.EnableOption(row, false);
        view.ShowOption(row, false);
    }
    std::array<bool, portCount> shown = {};
    for (std::size_t row = 0; row < portCount; ++row) {
        exchange.Open(PortNumber(row));
        shown[row] = exchange.PortOpen();
        // Without a port nothing is found; the row's text is then that of an empty search.
        const std::uint32_t found = shown[row] ? identify() : 0;
        exchange.Close();
        if (exchange.Cancelled())
            return;
        view.SetVekType(row, shown[row] ? FoundText(types, found) : nothingFound);
        view.EnableOption(row, IsMatrixVek(found) && FoundType(types, found) != nullptr);
        view.ShowVekType(row, shown[row]);
        view.ShowBlanking(row, false);
    }
    for (std::size_t row = 0; row < portCount; ++row)
        view.ShowOption(row, shown[row]);
    DeselectPorts(view);
}

} // namespace vek
