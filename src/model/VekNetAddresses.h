// The 256 VekNet addresses of a Matrix Vek: one table that the address list, the address labels and the
// context menus walk. An address is the configuration's base plus an offset 0 … 255; plain sums, not wrapped
// at 16 bits.
#pragma once

#include "model/Config.h"

#include <span>
#include <string_view>

namespace vek {

/// Addresses that a unit occupies from its base on.
inline constexpr int vekNetAddressCount = 256;
/// What the VekNet has; the editor sets a base within it.
inline constexpr int lowestVekNetAddress = 1;
inline constexpr int highestVekNetAddress = 2047;

/// The last address of a unit.
constexpr int LastVekNetAddress(int base) { return base + vekNetAddressCount - 1; }

enum class AddressGroup { Mode, Volume, RouteControl, Route };
/// "Input" addresses drive the Matrix Vek, "output" addresses report from it.
enum class AddressSide { Input, Output };
enum class AddressKind { Digital, Analog };

/// One function within a block.
struct AddressFunction {
    std::string_view Name; ///< as the address list writes it, blanks included
    AddressKind Kind;
    bool Listed; ///< false: the address exists, but the list counts it as unused
};

/// Consecutive addresses of one group and side: for each unit (mode or output) 0 … 7, one per function.
struct AddressBlock {
    int Offset; ///< of unit 0, function 0
    AddressGroup Group;
    AddressSide Side;
    std::size_t FirstFlag; ///< index of function 0 in the group's enable flags
    std::size_t
        FirstListFlag; ///< the same as the address list looks it up, which differs for volumes and routes
    std::string_view UnitName; ///< "Mode ", "Volume ", … written before the unit's 0-based number
    std::span<const AddressFunction> Functions;
};

/// The eight blocks in the order of their offsets.
std::span<const AddressBlock> AddressBlocks();

/// Number of enable flags of a group (per output, except for the mode group).
std::size_t FunctionCount(AddressGroup group);

/// Index of the first "output" side flag of a group; those before it are "input" side.
std::size_t FirstOutputFunction(AddressGroup group);

/// Offset 0 … 255 of a function. `output` is 0 … 7 and ignored for the mode group.
int AddressOffset(AddressGroup group, std::size_t function, std::size_t output);

/// The enable flag of a function; throws SubscriptError outside the group's table.
Flag& AddressFlag(AddressEnables& enables, AddressGroup group, std::size_t function, std::size_t output);
Flag AddressFlag(const AddressEnables& enables, AddressGroup group, std::size_t function, std::size_t output);

} // namespace vek
