// The places of the pages.
#pragma once

namespace vek {

/// The tabs of SSTab1 in order.
enum PageTab : int {
    RemotePanelsTab = 0,
    LevelsTab = 1,
    AddressesTab = 2,
    Rs232Tab = 3,
    InputTrimsTab = 4,
    OutputTrimsTab = 5,
    NotesTab = 6,
    OnlineTab = 7,
    OverviewTab = 8,
};

} // namespace vek
