#include "model/VekNetAddresses.h"

#include "base/Errors.h"
#include "base/Numbers.h"

#include <array>

namespace vek {

namespace {

using enum AddressKind;

constexpr bool listed = true;
constexpr bool unlisted = false;

constexpr std::array<AddressFunction, 1> modeFunctions = {{{" Select", Digital, listed}}};

constexpr std::array<AddressFunction, 4> volumeInputFunctions = {{{" Step Up ", Digital, listed},
                                                                  {" Step Down ", Digital, listed},
                                                                  {" Analog ", Analog, listed},
                                                                  {" Mute ", Digital, listed}}};

// The steps have no state to report, so their addresses on the output side stay unused.
constexpr std::array<AddressFunction, 4> volumeOutputFunctions = {{{" Step Up ", Digital, unlisted},
                                                                   {" Step Down ", Digital, unlisted},
                                                                   {" Analog ", Analog, listed},
                                                                   {" Mute ", Digital, listed}}};

constexpr std::array<AddressFunction, 8> routeFunctions = {{{" Select Input 0", Digital, listed},
                                                            {" Select Input 1", Digital, listed},
                                                            {" Select Input 2", Digital, listed},
                                                            {" Select Input 3", Digital, listed},
                                                            {" Select Input 4", Digital, listed},
                                                            {" Select Input 5", Digital, listed},
                                                            {" Select Input 6", Digital, listed},
                                                            {" Select Input 7", Digital, listed}}};

constexpr std::array<AddressFunction, 3> controlInputFunctions = {{{" Next Input ", Digital, listed},
                                                                   {" Previous Input ", Digital, listed},
                                                                   {" Input Analog ", Analog, listed}}};

constexpr std::array<AddressFunction, 3> controlOutputFunctions = {{{" Next Input ", Digital, unlisted},
                                                                    {" Previous Input ", Digital, unlisted},
                                                                    {" Input Analog ", Analog, listed}}};

constexpr std::array<AddressBlock, 8> blocks = {{
    {0, AddressGroup::Mode, AddressSide::Input, 0, 0, "Mode ", modeFunctions},
    {8, AddressGroup::Mode, AddressSide::Output, 8, 8, "Mode ", modeFunctions},
    {16, AddressGroup::Volume, AddressSide::Input, 0, 0, "Volume ", volumeInputFunctions},
    {48, AddressGroup::Volume, AddressSide::Output, 4, 0, "Volume ", volumeOutputFunctions},
    {80, AddressGroup::Route, AddressSide::Input, 0, 0, "Output ", routeFunctions},
    {144, AddressGroup::Route, AddressSide::Output, 8, 0, "Output ", routeFunctions},
    {208, AddressGroup::RouteControl, AddressSide::Input, 0, 0, "Input ", controlInputFunctions},
    {232, AddressGroup::RouteControl, AddressSide::Output, 3, 3, "Output ", controlOutputFunctions},
}};

constexpr std::size_t unitCount = 8;

constexpr bool BlocksFillTheAddresses() {
    int next = 0;
    for (const AddressBlock& block : blocks) {
        if (block.Offset != next)
            return false;
        next += static_cast<int>(unitCount * block.Functions.size());
    }
    return next == vekNetAddressCount;
}
static_assert(BlocksFillTheAddresses(), "the blocks neither overlap nor leave a gap");

} // namespace

std::span<const AddressBlock> AddressBlocks() { return blocks; }

std::size_t FunctionCount(AddressGroup group) {
    switch (group) {
    case AddressGroup::Mode:
        return modeFunctionCount;
    case AddressGroup::Volume:
        return volumeFunctionCount;
    case AddressGroup::RouteControl:
        return routeControlFunctionCount;
    case AddressGroup::Route:
        return routeFunctionCount;
    }
    throw SubscriptError();
}

std::size_t FirstOutputFunction(AddressGroup group) { return FunctionCount(group) / 2; }

int AddressOffset(AddressGroup group, std::size_t function, std::size_t output) {
    CheckedIndex(static_cast<long long>(function), FunctionCount(group));
    const AddressSide side = function < FirstOutputFunction(group) ? AddressSide::Input : AddressSide::Output;
    for (const AddressBlock& block : blocks) {
        if (block.Group != group || block.Side != side)
            continue;
        const std::size_t within = function - block.FirstFlag;
        const std::size_t perUnit = block.Functions.size();
        // A mode function is its own unit; elsewhere the unit is the output.
        const std::size_t index = group == AddressGroup::Mode ? within : perUnit * output + within;
        return block.Offset + static_cast<int>(index);
    }
    throw SubscriptError();
}

Flag& AddressFlag(AddressEnables& enables, AddressGroup group, std::size_t function, std::size_t output) {
    const std::size_t f = CheckedIndex(static_cast<long long>(function), FunctionCount(group));
    if (group == AddressGroup::Mode)
        return enables.ModeAddressEnable[f];
    const std::size_t o = CheckedIndex(static_cast<long long>(output), outputCount);
    switch (group) {
    case AddressGroup::Volume:
        return enables.VolumeAddressEnable[o][f];
    case AddressGroup::RouteControl:
        return enables.RouteControlAddressEnable[o][f];
    default:
        return enables.RouteAddressEnable[o][f];
    }
}

Flag AddressFlag(const AddressEnables& enables, AddressGroup group, std::size_t function,
                 std::size_t output) {
    return AddressFlag(const_cast<AddressEnables&>(enables), group, function, output);
}

} // namespace vek
