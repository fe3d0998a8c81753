// What assistive technology sees of a fader.
#pragma once

namespace vek {

/// Makes every FaderKnob known as a slider with a value in dB. May be called repeatedly.
void InstallFaderAccessible();

} // namespace vek
