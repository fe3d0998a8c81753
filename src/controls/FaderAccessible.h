// What assistive technology sees of a fader.
#pragma once

namespace vek {

/// Makes the knob of every LevelTrim known as a slider with a value in dB. May be called repeatedly.
void InstallFaderAccessible();

} // namespace vek
