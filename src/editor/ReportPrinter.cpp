#include "editor/ReportPrinter.h"

#include <QFontDatabase>
#include <QObject>
#include <QPainter>
#include <QPrinter>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr double marginMillimetres = 18;
constexpr double fontPoints = 9;
constexpr qsizetype tabWidth = 8; ///< characters
constexpr int headerLines = 3;    ///< the header, a rule and an empty line

QPageLayout WithMargins(QPageLayout layout) {
    layout.setUnits(QPageLayout::Millimeter);
    layout.setMargins({marginMillimetres, marginMillimetres, marginMillimetres, marginMillimetres});
    return layout;
}

QFont ReportFont() {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(fontPoints);
    return font;
}

/// Where the pages' parts stand, in device pixels of the printable rectangle.
struct PageGeometry {
    double Width;
    double LineHeight;
    int Columns;
    int LinesPerPage;
};

PageGeometry Measure(const QPrinter& printer, const QFontMetricsF& metrics) {
    const QRectF page = printer.pageRect(QPrinter::DevicePixel);
    const int lines = static_cast<int>(page.height() / metrics.lineSpacing());
    return {page.width(), metrics.lineSpacing(),
            std::max(20, static_cast<int>(page.width() / metrics.horizontalAdvance(u'M'))),
            std::max(1, lines - headerLines)};
}

void DrawHeader(QPainter& painter, const PageGeometry& page, const QString& fileName,
                const QString& pageNumber) {
    const QRectF header(0, 0, page.Width, page.LineHeight);
    const double numberWidth = painter.fontMetrics().horizontalAdvance(pageNumber);
    const QString name = painter.fontMetrics().elidedText(fileName, Qt::ElideMiddle,
                                                          static_cast<int>(page.Width - 2 * numberWidth));
    painter.drawText(header, Qt::AlignLeft | Qt::AlignVCenter, name);
    painter.drawText(header, Qt::AlignRight | Qt::AlignVCenter, pageNumber);
    const double rule = 1.5 * page.LineHeight;
    painter.drawLine(QPointF(0, rule), QPointF(page.Width, rule));
}

/// Columns of the address list are separated by tabs.
QString ExpandTabs(const QString& line) {
    QString expanded;
    for (const QChar character : line) {
        if (character == u'\t')
            expanded += QString(tabWidth - expanded.size() % tabWidth, u' ');
        else
            expanded += character;
    }
    return expanded;
}

} // namespace

QStringList WrapLines(const QString& text, int columns) {
    QStringList wrapped;
    for (const QString& original : text.split(u'\n')) {
        QString line = ExpandTabs(original);
        // Blanks that pad the end of a line would only make empty lines.
        while (line.endsWith(u' '))
            line.chop(1);
        while (line.size() > columns) {
            const qsizetype blank = line.lastIndexOf(u' ', columns);
            const qsizetype end = blank > columns / 2 ? blank : columns;
            wrapped += line.left(end);
            line.remove(0, blank == end ? end + 1 : end);
        }
        wrapped += line;
    }
    return wrapped;
}

bool PrintReport(QPrinter& printer, const QString& text, const QString& fileName) {
    printer.setPageLayout(WithMargins(printer.pageLayout()));
    QPainter painter;
    if (!painter.begin(&printer))
        return false;
    painter.setFont(ReportFont());
    const PageGeometry page = Measure(printer, QFontMetricsF(painter.font(), &printer));
    // Every line of the report begins with a line end, so the first one is empty.
    const QStringList lines = WrapLines(text.startsWith(u'\n') ? text.mid(1) : text, page.Columns);
    const auto pageCount = static_cast<int>((lines.size() + page.LinesPerPage - 1) / page.LinesPerPage);
    for (int number = 0; number < pageCount; ++number) {
        if (number > 0 && !printer.newPage())
            return false;
        DrawHeader(painter, page, fileName, QObject::tr("Page %1 of %2").arg(number + 1).arg(pageCount));
        double top = headerLines * page.LineHeight;
        const QStringList onPage =
            lines.mid(static_cast<qsizetype>(number) * page.LinesPerPage, page.LinesPerPage);
        for (const QString& line : onPage) {
            painter.drawText(QRectF(0, top, page.Width, page.LineHeight), Qt::AlignLeft | Qt::AlignVCenter,
                             line);
            top += page.LineHeight;
        }
    }
    return painter.end();
}

} // namespace vek
