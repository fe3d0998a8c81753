// How the link groups of a mode are told apart at a glance.
#pragma once

#include <QChar>
#include <QColor>

class QPalette;

namespace vek {

/// The letter of a link group 1 … 4: "A" … "D"; "?" for what is no group.
QChar GroupLetter(int group);

/// A colour of its own for each group, readable on the palette's Base and Window; the text's colour for what
/// is no group.
QColor GroupColour(int group, const QPalette& palette);

} // namespace vek
