#include "reports/AddressList.h"

#include "model/VekNetAddresses.h"

#include <string_view>

namespace vek {

namespace {

constexpr std::size_t unitCount = 8;
constexpr std::size_t longestRow = 50;

/// Both names are the same width, so that the columns of a tabbed list line up.
std::string_view SideName(AddressSide side) { return side == AddressSide::Input ? "Input " : "Output"; }

std::string_view KindName(AddressKind kind) { return kind == AddressKind::Analog ? "Analog" : "Digital"; }

bool IsEnabled(const AddressEnables& enables, const AddressBlock& block, std::size_t unit,
               std::size_t function, std::size_t currentOutput) {
    switch (block.Group) {
    case AddressGroup::Mode:
        return IsSet(AddressFlag(enables, block.Group, block.FirstListFlag + unit, 0));
    case AddressGroup::RouteControl:
        return IsSet(AddressFlag(enables, block.Group, block.FirstListFlag + function, unit));
    default:
        // The list has always shown the enables of the output being edited in the rows of every output.
        return IsSet(AddressFlag(enables, block.Group, block.FirstListFlag + function, currentOutput));
    }
}

void AppendColumns(std::string& list, const AddressBlock& block, std::size_t unit,
                   const AddressFunction& function, char separator) {
    list += separator;
    list += SideName(block.Side);
    list += separator;
    list += KindName(function.Kind);
    list += separator;
    list += block.UnitName;
    list += std::to_string(unit);
    list += function.Name;
}

void AppendUnit(std::string& list, const MatrixConfig& config, const AddressBlock& block, std::size_t unit,
                std::size_t currentOutput, const AddressListOptions& options) {
    const std::size_t functions = block.Functions.size();
    for (std::size_t i = 0; i < functions; ++i) {
        const AddressFunction& function = block.Functions[i];
        const bool used = function.Listed && IsEnabled(config.Addresses, block, unit, i, currentOutput);
        if (!used && !options.IncludeUnusedAddresses)
            continue;
        list += "\r\n";
        list += std::to_string(config.VekNetBase + block.Offset + static_cast<int>(unit * functions + i));
        if (used)
            AppendColumns(list, block, unit, function, options.CsvSeparator ? ',' : '\t');
    }
}

} // namespace

std::string BuildAddressList(const MatrixConfig& config, std::size_t currentOutput,
                             const AddressListOptions& options) {
    std::string list;
    for (const AddressBlock& block : AddressBlocks()) {
        list.reserve(list.size() + unitCount * block.Functions.size() * longestRow);
        for (std::size_t unit = 0; unit < unitCount; ++unit)
            AppendUnit(list, config, block, unit, currentOutput, options);
    }
    return list;
}

} // namespace vek
