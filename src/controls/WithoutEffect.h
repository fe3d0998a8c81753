// Controls that can be used, but change nothing at the moment.
#pragma once

class QString;
class QWidget;

namespace vek {

/// Draws the control pale, with the reason as its tool tip and in what screen readers say; as usual when the
/// reason is empty.
void DrawWithoutEffect(QWidget& control, const QString& reason);

} // namespace vek
