// What has to be said when nobody looks at the window any more.
#pragma once

class QString;

namespace vek {

/// Puts a line on standard error, after the program's name.
void SayOnStandardError(const QString& text);

} // namespace vek
