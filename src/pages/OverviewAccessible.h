// The overview as a table for assistive technology.
#pragma once

namespace vek {

/// From now on every Overview is a table with headers whose cells tell in words what is drawn.
void InstallOverviewAccessible();

} // namespace vek
