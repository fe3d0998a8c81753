#include "pages/OverviewPainter.h"

#include "controls/Contrast.h"
#include "controls/LinkGroupLook.h"
#include "controls/TextConversion.h"

#include <QFontMetrics>
#include <QObject>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr double smallFont = 0.85;
constexpr double markFont = 0.7;
constexpr double fadedOpacity = 0.28;
constexpr double faint = 0.12; // shares of the text's colour in the background's
constexpr double lighter = 0.6;
constexpr double chosenTint = 0.35;
constexpr double chipCorner = 0.5;
constexpr double cellCorner = 3;
constexpr int errorHue = 0;
constexpr int warningHue = 40;

QString LegendText() {
    return QObject::tr(
        "Filled chip: input after recall, ring: the previous one stays · Bar: minimum to maximum "
        "level, tick: 0 dB, dot: start level (ring: previous) · V, S: volume and selector "
        "panels · M: mute on minimum · Coloured letter: linked outputs, ← 1 follows output 1 "
        "· Triangle: warning, square: error of the checks");
}

/// Paper has its font in pixels, the screen in points.
QFont Scaled(QFont font, double factor) {
    if (font.pixelSize() > 0)
        font.setPixelSize(static_cast<int>(std::lround(font.pixelSize() * factor)));
    else
        font.setPointSizeF(font.pointSizeF() * factor);
    return font;
}

/// Where a name is divided into two lines; -1 where it fits, or cannot be divided.
qsizetype LastBlankThatFits(const QString& name, const QFontMetrics& metrics, int width) {
    if (metrics.horizontalAdvance(name) <= width)
        return -1;
    qsizetype blank = name.lastIndexOf(u' ');
    while (blank > 0 && metrics.horizontalAdvance(name.left(blank)) > width)
        blank = name.lastIndexOf(u' ', blank - 1);
    return blank;
}

QString ChipText(const InputChip& chip) {
    if (chip.More)
        return u"…"_s;
    if (chip.First != chip.Last)
        return FromBytes({&chip.First, 1}) + u'–' + FromBytes({&chip.Last, 1});
    return chip.First == inputCharacters.front() ? QObject::tr("OFF") : FromBytes({&chip.First, 1});
}

} // namespace

OverviewMetrics MetricsFor(const QFont& font, int width) {
    const QFontMetrics metrics(font);
    return {metrics.height(), metrics.averageCharWidth(), width};
}

OverviewSigns SignsOf(const OverviewCell& cell) { return {cell.Group != 0, cell.Problems.Mark.has_value()}; }

OverviewPainter::OverviewPainter(QPainter& painter, const OverviewGeometry& geometry, const QPalette& palette,
                                 const QFont& font)
    : painter_(painter), geometry_(geometry), palette_(palette), font_(font), strong_(font),
      small_(Scaled(font, smallFont)) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(font);
    strong_.setBold(true);
}

bool OverviewPainter::IsDark() const {
    return palette_.color(QPalette::Base).lightness() < palette_.color(QPalette::Text).lightness();
}

QColor OverviewPainter::Between(QPalette::ColorRole from, QPalette::ColorRole to, double share) const {
    return Blended(palette_.color(to), palette_.color(from), share);
}

void OverviewPainter::ModeName(const QRect& rect, std::size_t mode, const QString& name) {
    const QString number = QString::number(mode + 1) + u' ';
    const QFontMetrics metrics(font_);
    painter_.setFont(strong_);
    painter_.drawText(rect, Qt::AlignLeft | Qt::AlignTop, number);
    painter_.setFont(font_);
    painter_.setPen(LighterText(palette_.color(QPalette::WindowText), palette_.color(QPalette::Window)));
    QRect line = rect.adjusted(QFontMetrics(strong_).horizontalAdvance(number), 0, 0, 0);
    line.setHeight(metrics.height());
    const bool twoLines = rect.height() >= 2 * line.height();
    const qsizetype blank = twoLines ? LastBlankThatFits(name, metrics, line.width()) : -1;
    if (blank > 0) {
        painter_.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, name.left(blank));
        line.translate(0, line.height());
    }
    painter_.drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                      metrics.elidedText(name.mid(blank + 1), Qt::ElideRight, line.width()));
}

void OverviewPainter::RowHeader(const QRect& rect, const OverviewContent& content, std::size_t mode,
                                OverviewState state, bool current) {
    const OverviewRow& row = content.Rows[mode];
    if (state.Chosen || state.Current) {
        painter_.setPen(state.Current ? QPen(palette_.color(QPalette::Highlight), 2) : QPen(Qt::NoPen));
        painter_.setBrush(state.Chosen ? Between(QPalette::Window, QPalette::Highlight, chosenTint)
                                       : QBrush(Qt::NoBrush));
        painter_.drawRoundedRect(QRectF(rect).adjusted(1, 1, -3, -1), cellCorner, cellCorner);
    }
    const int line = QFontMetrics(font_).height();
    if (current)
        painter_.fillRect(QRect(rect.right() - line / 5, rect.top() + 1, line / 8, rect.height() - 2),
                          palette_.color(QPalette::Highlight));
    const int above = row.Used ? line / 3 : (rect.height() - line) / 2;
    const QRect text = rect.adjusted(line / 3, above, -line / 3, -above);
    const QString name = FromBytes(content.Called.Of(NameKind::Mode, mode));
    const bool marked = row.Problems.Mark.has_value();
    painter_.setOpacity(state.Faded ? fadedOpacity : 1);
    painter_.setPen(palette_.color(QPalette::WindowText));
    if (row.Used) {
        ModeName(text, mode, name);
    } else {
        painter_.setPen(LighterText(palette_.color(QPalette::WindowText), palette_.color(QPalette::Window)));
        ModeName(text.adjusted(0, 0, marked ? -line : 0, 0), mode,
                 name.isEmpty() ? QObject::tr("not used") : name);
    }
    if (marked)
        Mark({text.right() + 1 - line, text.bottom() + 1 - line, line, line}, row.Problems);
    painter_.setOpacity(1);
}

void OverviewPainter::ColumnHeader(const QRect& rect, const OverviewContent& content, std::size_t output,
                                   bool current) {
    const QFontMetrics metrics(font_);
    if (current) {
        const int thickness = metrics.height() / 8;
        painter_.fillRect(QRect(rect.left(), rect.bottom() + 1 - thickness, rect.width(), thickness),
                          palette_.color(QPalette::Highlight));
    }
    const QString number = QString::number(output + 1) + u' ';
    const int numberWidth = QFontMetrics(strong_).horizontalAdvance(number);
    const QString name = metrics.elidedText(FromBytes(content.Called.Of(NameKind::Output, output)),
                                            Qt::ElideRight, rect.width() - numberWidth);
    const int free = rect.width() - numberWidth - metrics.horizontalAdvance(name);
    const QRect text = rect.adjusted(std::max(0, free / 2), 0, 0, 0);
    painter_.setPen(palette_.color(QPalette::WindowText));
    painter_.setFont(strong_);
    painter_.drawText(text, Qt::AlignLeft | Qt::AlignVCenter, number);
    painter_.setFont(font_);
    painter_.setPen(LighterText(palette_.color(QPalette::WindowText), palette_.color(QPalette::Window)));
    painter_.drawText(text.adjusted(numberWidth, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, name);
}

void OverviewPainter::Frame(const QRect& rect, bool used, OverviewState state) {
    painter_.setBrush(used ? palette_.color(QPalette::Base)
                           : Between(QPalette::Window, QPalette::WindowText, 0.03));
    if (state.Current)
        painter_.setPen(QPen(palette_.color(QPalette::Highlight), 2));
    else
        painter_.setPen(Between(QPalette::Window, QPalette::WindowText, used ? 0.25 : faint));
    painter_.drawRoundedRect(QRectF(rect).adjusted(1, 1, -1, -1), cellCorner, cellCorner);
}

void OverviewPainter::Cell(const QRect& rect, const OverviewRow& row, std::size_t output,
                           OverviewState state) {
    const OverviewCell& cell = row.Cells[output];
    const bool shown = row.Used && cell.Used;
    Frame(rect, shown, state);
    painter_.setOpacity(state.Faded ? fadedOpacity : 1);
    const OverviewCellParts parts = geometry_.Parts(rect, SignsOf(cell));
    if (shown) {
        Inputs(parts.Inputs, cell);
        Levels(parts.Levels, cell);
        Panels(parts.Volumes.united(parts.Selects), cell);
        painter_.setFont(small_);
        painter_.setPen(palette_.color(QPalette::Text));
        if (IsSet(cell.Levels.MuteOnMin))
            painter_.drawText(parts.Mute, Qt::AlignCenter | Qt::TextDontClip, QObject::tr("M"));
    } else if (row.Used) {
        painter_.setPen(Between(QPalette::Window, QPalette::WindowText, lighter));
        painter_.drawText(rect, Qt::AlignCenter, u"–"_s);
    }
    if (row.Used && cell.Group != 0)
        Group(parts.Group, cell.Group);
    if (cell.Problems.Mark) {
        const int top = row.Used ? parts.Mark.top() : rect.center().y() - parts.Mark.height() / 2;
        Mark({QPoint(parts.Mark.left(), top), parts.Mark.size()}, cell.Problems);
    }
    painter_.setOpacity(1);
}

void OverviewPainter::Chip(const QRect& rect, const QString& text, bool strong) {
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(strong ? palette_.color(QPalette::Highlight)
                             : Between(QPalette::Base, QPalette::Text, faint));
    const double corner = rect.height() * chipCorner;
    painter_.drawRoundedRect(rect, corner, corner);
    painter_.setPen(palette_.color(strong ? QPalette::HighlightedText : QPalette::Text));
    painter_.drawText(rect, Qt::AlignCenter | Qt::TextDontClip, text);
}

void OverviewPainter::Inputs(const QRect& rect, const OverviewCell& cell) {
    if (cell.Leader) {
        painter_.setPen(palette_.color(QPalette::Text));
        painter_.setFont(font_);
        painter_.drawText(rect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip,
                          u"← "_s + QString::number(*cell.Leader + 1));
        return;
    }
    painter_.setFont(small_);
    const QFontMetrics metrics(small_);
    const int gap = std::max(2, rect.height() / 8);
    const int round = rect.height();
    const auto width = [&](const InputChip& chip) {
        return gap + std::max(round * 7 / 8, metrics.horizontalAdvance(ChipText(chip)) + round * 2 / 5);
    };
    int left = rect.left();
    if (cell.PreviousRoute) {
        const int ring = round * 2 / 3;
        painter_.setPen(QPen(palette_.color(QPalette::Highlight), std::max(2, round / 8)));
        painter_.setBrush(Qt::NoBrush);
        painter_.drawEllipse(QRectF(left + 1, rect.top() + (round - ring) / 2.0, ring, ring));
        left += ring + 2 * gap;
    }
    bool strong = !cell.PreviousRoute;
    const int room = rect.right() + 1 - left + gap;
    for (const InputChip& chip : FittingChips(cell.Inputs, room, width)) {
        const int wide = width(chip) - gap;
        Chip({left, rect.top(), wide, round}, ChipText(chip), strong);
        left += wide + gap;
        strong = false;
    }
}

void OverviewPainter::Group(const QRect& rect, std::int16_t group) {
    const QFontMetrics metrics(small_);
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(GroupColour(group, palette_));
    painter_.drawRoundedRect(QRectF(rect).adjusted(1, 1, 0, -1), cellCorner, cellCorner);
    QFont letter = small_;
    letter.setBold(true);
    painter_.setFont(letter);
    painter_.setPen(palette_.color(QPalette::Base));
    painter_.drawText(QRect(rect.left(), rect.top(), rect.width(), metrics.height() * 3 / 2),
                      Qt::AlignCenter | Qt::TextDontClip, QString(GroupLetter(group)));
}

void OverviewPainter::Levels(const QRect& rect, const OverviewCell& cell) {
    const OutputLevelRecord& levels = cell.Levels;
    const QRect track = geometry_.Track(rect);
    const double corner = track.height() / 2.0;
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(Between(QPalette::Base, QPalette::Text, faint));
    painter_.drawRoundedRect(track, corner, corner);
    const int zero = geometry_.LevelX(track, 0);
    painter_.fillRect(QRect(zero, track.bottom() + 2, std::max(1, track.height() / 4), track.height()),
                      Between(QPalette::Base, QPalette::Text, lighter));
    const int ends[] = {geometry_.LevelX(track, levels.MinimumLevel),
                        geometry_.LevelX(track, levels.MaximumLevel)};
    const auto [low, high] = std::minmax(ends[0], ends[1]);
    painter_.setBrush(Between(QPalette::Base, QPalette::Highlight, 0.55));
    painter_.drawRoundedRect(QRect(low, track.top(), high - low, track.height()), corner, corner);
    const bool previous = IsSet(levels.PreviousNotSetStartLevel);
    const double radius = rect.height() / (previous ? 4.0 : 3.6);
    const QColor highlight = palette_.color(QPalette::Highlight);
    painter_.setPen(previous ? QPen(highlight, std::max(2, rect.height() / 8)) : QPen(Qt::NoPen));
    painter_.setBrush(previous ? palette_.color(QPalette::Base) : highlight);
    painter_.drawEllipse(QPointF(geometry_.LevelX(track, levels.StartLevel), QRectF(track).center().y()),
                         radius, radius);
}

void OverviewPainter::Panels(const QRect& rect, const OverviewCell& cell) {
    const QFontMetrics metrics(small_);
    const QString volumes = FromBytes(cell.VolumePanels);
    const QString selects = FromBytes(cell.SelectorPanels);
    const auto needed = [&metrics](const QString& letter, const QString& panels) {
        return panels.isEmpty() ? 0 : metrics.horizontalAdvance(letter + u' ' + panels + u' ');
    };
    const QString volumeLetter = QObject::tr("V");
    const QString selectorLetter = QObject::tr("S");
    // Half of the room for each list, more for one when the other needs less.
    const int half = rect.width() / 2;
    const int selectRoom = std::min(needed(selectorLetter, selects), half);
    const int division = std::clamp(needed(volumeLetter, volumes), std::min(half, rect.width() - selectRoom),
                                    rect.width() - selectRoom);
    List(rect.adjusted(0, 0, division - rect.width(), 0), volumeLetter, volumes);
    List(rect.adjusted(division, 0, 0, 0), selectorLetter, selects);
}

void OverviewPainter::List(const QRect& rect, const QString& letter, const QString& panels) {
    if (panels.isEmpty())
        return;
    painter_.setFont(small_);
    const QFontMetrics metrics(small_);
    painter_.setPen(LighterText(palette_.color(QPalette::Text), palette_.color(QPalette::Base)));
    painter_.drawText(rect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, letter);
    painter_.setPen(palette_.color(QPalette::Text));
    const int gap = metrics.horizontalAdvance(u' ');
    const QRect room = rect.adjusted(metrics.horizontalAdvance(letter) + gap, 0, -gap, 0);
    painter_.drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip,
                      metrics.elidedText(panels, Qt::ElideRight, room.width()));
}

void OverviewPainter::Mark(const QRect& rect, const OverviewProblems& problems) {
    if (!problems.Mark)
        return;
    const bool error = *problems.Mark == Severity::Error;
    const double inset = rect.height() / 8.0;
    const QRectF box = QRectF(rect).adjusted(inset, inset, -inset, -inset);
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(QColor::fromHsl(error ? errorHue : warningHue, 220, IsDark() ? 150 : 105));
    if (error)
        painter_.drawRoundedRect(box, 2, 2);
    else
        painter_.drawPolygon(QPolygonF({{box.center().x(), box.top()}, box.bottomRight(), box.bottomLeft()}));
    painter_.setFont(Scaled(strong_, markFont));
    painter_.setPen(IsDark() && !error ? Qt::black : Qt::white);
    painter_.drawText(box.adjusted(0, error ? 0 : inset, 0, error ? 0 : inset),
                      Qt::AlignCenter | Qt::TextDontClip, u"!"_s);
}

void OverviewPainter::Legend(const QRect& rect) {
    painter_.setFont(small_);
    painter_.setPen(LighterText(palette_.color(QPalette::WindowText), palette_.color(QPalette::Window)));
    painter_.drawText(rect, Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, LegendText());
}

int OverviewPainter::LegendHeight(const QFont& font, int width) {
    return QFontMetrics(Scaled(font, smallFont))
        .boundingRect(0, 0, width, 1, Qt::TextWordWrap, LegendText())
        .height();
}

} // namespace vek
