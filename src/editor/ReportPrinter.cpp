#include "editor/ReportPrinter.h"

#include <QFontDatabase>
#include <QObject>
#include <QPainter>
#include <QPrinter>

#include <algorithm>

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

void DrawHeader(QPainter& painter, const PageGeometry& page, const PrintHeader& header,
                const QString& pageNumber) {
    const QRectF line(0, 0, page.Width, page.LineHeight);
    const QFontMetrics metrics = painter.fontMetrics();
    const QString right = header.Date + u"    "_s + pageNumber;
    const double gap = metrics.horizontalAdvance(u"    "_s);
    const QString name =
        metrics.elidedText(header.FileName, Qt::ElideMiddle,
                           static_cast<int>(page.Width - metrics.horizontalAdvance(right) - gap));
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, name);
    painter.drawText(line, Qt::AlignRight | Qt::AlignVCenter, right);
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

qsizetype IndentOf(const QString& line) {
    const auto first = std::ranges::find_if(line, [](QChar character) { return character != u' '; });
    return first - line.begin();
}

/// Whether what follows belongs to the line.
bool IsHeading(const QStringList& lines, qsizetype number) {
    const QString& line = lines[number];
    const QString next = lines.value(number + 1);
    return !line.isEmpty() && !next.isEmpty() &&
           (IndentOf(next) > IndentOf(line) || line.startsWith("RS232 control for "_L1));
}

/// The headings that a line of the report stands under: its mode, its output.
class Headings {
  public:
    void Pass(const QStringList& lines, qsizetype number) {
        if (!lines[number].isEmpty())
            open_.resize(Above(IndentOf(lines[number])));
        if (IsHeading(lines, number) && (lines[number].startsWith("Mode "_L1) || !open_.isEmpty()))
            open_ += lines[number];
    }
    QStringList Continued(const QString& next) const {
        QStringList lines = open_.first(Above(IndentOf(next)));
        for (QString& line : lines)
            line += QObject::tr(" (continued)");
        return lines;
    }

  private:
    qsizetype Above(qsizetype indent) const {
        return std::ranges::count_if(open_, [=](const QString& line) { return IndentOf(line) < indent; });
    }
    QStringList open_;
};

} // namespace

QList<QStringList> Paginate(const QStringList& lines, int linesPerPage) {
    QList<QStringList> pages;
    Headings headings;
    for (qsizetype next = 0; next < lines.size();) {
        while (!pages.isEmpty() && next + 1 < lines.size() && lines[next].isEmpty())
            headings.Pass(lines, next++);
        QStringList page = headings.Continued(lines[next]);
        const qsizetype room = std::max<qsizetype>(1, linesPerPage - page.size());
        qsizetype end = std::min(next + room, lines.size());
        while (end < lines.size() && end > next + 1 && IsHeading(lines, end - 1))
            --end;
        for (; next < end; ++next) {
            headings.Pass(lines, next);
            page += lines[next];
        }
        pages += page;
    }
    return pages;
}

QStringList WrapLines(const QString& text, int columns) {
    QStringList wrapped;
    for (const QString& original : text.split(u'\n')) {
        QString line = ExpandTabs(original);
        // Blanks that pad the end of a line would only make empty lines.
        while (line.endsWith(u' '))
            line.chop(1);
        const QString indent(std::min<qsizetype>(IndentOf(line), columns / 3), u' ');
        while (line.size() > columns) {
            const qsizetype blank = line.lastIndexOf(u' ', columns);
            const qsizetype end = blank > std::max<qsizetype>(columns / 2, IndentOf(line)) ? blank : columns;
            wrapped += line.left(end);
            line.replace(0, blank == end ? end + 1 : end, indent);
        }
        wrapped += line;
    }
    return wrapped;
}

bool PrintReport(QPrinter& printer, const QString& text, const PrintHeader& header) {
    printer.setPageLayout(WithMargins(printer.pageLayout()));
    QPainter painter;
    if (!painter.begin(&printer))
        return false;
    painter.setFont(ReportFont());
    const PageGeometry page = Measure(printer, QFontMetricsF(painter.font(), &printer));
    // Every line of the report begins with a line end, so the first one is empty.
    const QStringList lines = WrapLines(text.startsWith(u'\n') ? text.mid(1) : text, page.Columns);
    const QList<QStringList> pages = Paginate(lines, page.LinesPerPage);
    for (qsizetype number = 0; number < pages.size(); ++number) {
        if (number > 0 && !printer.newPage())
            return false;
        DrawHeader(painter, page, header, QObject::tr("Page %1 of %2").arg(number + 1).arg(pages.size()));
        double top = headerLines * page.LineHeight;
        for (const QString& line : pages[number]) {
            painter.drawText(QRectF(0, top, page.Width, page.LineHeight), Qt::AlignLeft | Qt::AlignVCenter,
                             line);
            top += page.LineHeight;
        }
    }
    return painter.end();
}

} // namespace vek
