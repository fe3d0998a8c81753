// Ending in order on a signal.
#pragma once

#include "base/Descriptor.h"

#include <initializer_list>

namespace vek {

/// Blocks the signals, except ignored ones; the result is readable as soon as one of them has come. For the
/// main thread before it makes others, which inherit it.
Descriptor BlockSignals(std::initializer_list<int> signals);

} // namespace vek
