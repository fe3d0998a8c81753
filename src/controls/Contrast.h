// How well a colour can be told from the one behind it.
#pragma once

#include <QColor>

namespace vek {

/// The least contrast at which small text is easy to read.
inline constexpr double readableContrast = 4.5;
/// The same for frames and marks.
inline constexpr double visibleContrast = 3.0;

/// The ratio of the relative luminances of two opaque colours: 1 for the same colour, 21 for black on white.
double ContrastRatio(const QColor& one, const QColor& other);

/// `part` of `text` laid over `background`; 0 is the background itself, 1 the text.
QColor Blended(const QColor& text, const QColor& background, double part);

/// The text colour, drawn towards its background as far as that contrast allows, also on the panes of tabs
/// and group boxes. For what stands beside the text that counts.
QColor LighterText(const QColor& text, const QColor& background, double contrast = readableContrast);

/// The colour of a text or of what is behind it, drawn away from the other one as far as needed for reading.
QColor ReadableOn(const QColor& colour, const QColor& other);

} // namespace vek
