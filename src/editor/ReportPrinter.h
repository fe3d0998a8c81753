// The report on paper: pages with margins, a fixed-pitch font, a header and no cut lines.
#pragma once

#include <QString>
#include <QStringList>

class QPrinter;

namespace vek {

/// The lines of a text as they fit `columns` characters: longer ones are wrapped, at a blank where there is
/// one,
/// and go on under their beginning, indented as it is.
QStringList WrapLines(const QString& text, int columns);

/// The lines of each page. No heading is the last line of a page, and a page that goes on with an output
/// begins with its mode and output ("Mode 2 (continued)").
QList<QStringList> Paginate(const QStringList& lines, int linesPerPage);

/// What stands on top of every page, beside the page's number.
struct PrintHeader {
    QString FileName;
    QString Date;
};

/// Prints the text (lines separated by LF) as one document. False when the printer cannot be used.
bool PrintReport(QPrinter& printer, const QString& text, const PrintHeader& header);

} // namespace vek
