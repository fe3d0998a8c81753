#include "editor/OverviewPrinter.h"

#include "pages/OverviewPainter.h"

#include <QFontMetrics>
#include <QObject>
#include <QPainter>
#include <QPrinter>

#include <algorithm>
#include <ranges>

namespace vek {

namespace {

constexpr double marginMillimetres = 12;
// The drawing is made in these units and scaled to the page as a whole.
constexpr int designWidth = 1060;
constexpr int fontSize = 12;

QPageLayout Landscape(QPageLayout layout) {
    layout.setUnits(QPageLayout::Millimeter);
    layout.setOrientation(QPageLayout::Landscape);
    layout.setMargins({marginMillimetres, marginMillimetres, marginMillimetres, marginMillimetres});
    return layout;
}

QPalette PaperColours() {
    QPalette paper(Qt::white);
    for (const auto role : {QPalette::Window, QPalette::Base, QPalette::HighlightedText})
        paper.setColor(role, Qt::white);
    for (const auto role : {QPalette::WindowText, QPalette::Text})
        paper.setColor(role, Qt::black);
    paper.setColor(QPalette::Highlight, QColor(0, 84, 166));
    return paper;
}

void DrawTitle(QPainter& painter, const QFont& font, const PrintHeader& header, int height) {
    QFont strong = font;
    strong.setBold(true);
    const QRect line(0, 0, designWidth, height);
    painter.setPen(Qt::black);
    painter.setFont(font);
    painter.drawText(line, Qt::AlignRight | Qt::AlignTop, header.Date);
    painter.setFont(strong);
    const int room = designWidth - 2 * QFontMetrics(font).horizontalAdvance(header.Date);
    painter.drawText(line, Qt::AlignLeft | Qt::AlignTop,
                     QFontMetrics(strong).elidedText(QObject::tr("Overview of %1").arg(header.FileName),
                                                     Qt::ElideMiddle, room));
}

} // namespace

bool PrintOverview(QPrinter& printer, const OverviewContent& content, const PrintHeader& header) {
    printer.setPageLayout(Landscape(printer.pageLayout()));
    QPainter painter;
    if (!painter.begin(&printer))
        return false;
    QFont font;
    font.setPixelSize(fontSize);
    const QPalette paper = PaperColours();
    std::array<bool, modeCount> used = {};
    std::ranges::transform(content.Rows, used.begin(), &OverviewRow::Used);
    const OverviewGeometry geometry(MetricsFor(font, designWidth), used);
    const int title = 2 * QFontMetrics(font).height();
    const int legend = OverviewPainter::LegendHeight(font, designWidth);
    const int height = title + geometry.Size().height() + title / 2 + legend;
    const QRectF page = printer.pageRect(QPrinter::DevicePixel);
    const double scale = std::min(page.width() / geometry.Size().width(), page.height() / height);
    painter.scale(scale, scale);
    OverviewPainter draw(painter, geometry, paper, font);
    DrawTitle(painter, font, header, title);
    painter.translate(0, title);
    for (std::size_t output = 0; output < outputCount; ++output)
        draw.ColumnHeader(geometry.ColumnHeader(output), content, output, false);
    for (std::size_t mode = 0; mode < modeCount; ++mode) {
        draw.RowHeader(geometry.RowHeader(mode), content, mode, {}, false);
        for (std::size_t output = 0; output < outputCount; ++output)
            draw.Cell(geometry.Cell(mode, output), content.Rows[mode], output, {});
    }
    draw.Legend({0, geometry.Size().height() + title / 2, designWidth, legend});
    return painter.end();
}

} // namespace vek
