// The report on paper: pages with margins, a fixed-pitch font, a header and no cut lines.
#pragma once

#include <QString>
#include <QStringList>

class QPrinter;

namespace vek {

/// The lines of a text as they fit `columns` characters: longer ones are wrapped, at a blank where there is
/// one.
QStringList WrapLines(const QString& text, int columns);

/// Prints the text (lines separated by LF) as one document; every page has the file name and its number on
/// top. False when the printer cannot be used.
bool PrintReport(QPrinter& printer, const QString& text, const QString& fileName);

} // namespace vek
