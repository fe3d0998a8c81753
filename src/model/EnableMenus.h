// The context menus that enable or disable many VekNet addresses at once: 48 entries, one table, one handler.
#pragma once

#include "model/VekNetAddresses.h"

#include <span>
#include <string_view>

namespace vek {

enum class MenuOutputs { All, Current };

/// One entry. Entries come in pairs (enable, disable) with a separator after each pair but the last of a menu
/// level.
struct EnableMenuEntry {
    std::string_view Name;
    std::string_view Caption;
    MenuOutputs Outputs; ///< without meaning for the mode group
    bool Remembered;     ///< acts on the one function that was right-clicked; First and Last are then unused
    std::size_t First;   ///< flag indices, both included
    std::size_t Last;
    bool Enable;
};

/// A menu level. `SeparatorNames` are given to the separators in order.
struct EnableSubmenu {
    std::string_view Name; ///< empty: the entries stand in the menu itself
    std::string_view Caption;
    std::span<const EnableMenuEntry> Entries;
    std::span<const std::string_view> SeparatorNames;
};

struct EnableMenu {
    std::string_view Name;
    std::string_view Caption;
    AddressGroup Group;
    std::span<const EnableSubmenu> Submenus;
};

/// The four menus.
std::span<const EnableMenu> EnableMenus();

/// Sets the flags that an entry names. `currentOutput` is 0 … 7, `rememberedFunction` the index of the
/// right-clicked label within its group. Throws SubscriptError for an index outside the tables.
void ApplyMenuEntry(AddressEnables& enables, AddressGroup group, const EnableMenuEntry& entry,
                    std::size_t currentOutput, std::size_t rememberedFunction);

} // namespace vek
