#include "pages/Overview.h"

#include "controls/LayoutHelpers.h"
#include "pages/OverviewPainter.h"

#include <QContextMenuEvent>
#include <QFontInfo>
#include <QHelpEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr int leastZoom = 50; // percent
constexpr int mostZoom = 300;
constexpr int wheelNotch = 120;
constexpr int lastMode = static_cast<int>(modeCount) - 1;
constexpr int lastOutput = static_cast<int>(outputCount) - 1;
constexpr int rowHeaderColumn = -1;
constexpr int tipCharacters = 80; // of the longest line of a tool tip

std::array<bool, modeCount> UsedModes(const OverviewContent& content) {
    std::array<bool, modeCount> used = {};
    std::ranges::transform(content.Rows, used.begin(), &OverviewRow::Used);
    return used;
}

/// In percent; 0 for another key. Where "+" needs Shift, "=" does as well.
int ZoomOf(const QKeyEvent& event) {
    if (!event.modifiers().testFlag(Qt::ControlModifier))
        return 0;
    switch (event.key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        return Overview::zoomStep;
    case Qt::Key_Minus:
        return -Overview::zoomStep;
    default:
        return 0;
    }
}

} // namespace

Overview::Overview(QWidget* parent)
    : QAbstractScrollArea(parent), geometry_(MetricsFor(font(), width()), UsedModes(content_)) {
    setObjectName(u"Overview"_s);
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::NoFrame);
    setAccessibleName(tr("Overview of modes and outputs"));
    viewport()->setAutoFillBackground(false); // a tab's page has a background of its own
}

void Overview::Show(const MatrixConfig& config, const Names& names, const std::vector<Finding>& findings) {
    const OverviewContent former = std::exchange(content_, MakeOverviewContent(config, names, findings));
    if (UsedModes(former) != UsedModes(content_) || former.Called != content_.Called) {
        UpdateAll();
        return;
    }
    for (std::size_t mode = 0; mode < modeCount; ++mode) {
        const OverviewRow& row = content_.Rows[mode];
        const OverviewRow& before = former.Rows[mode];
        if (row.Problems != before.Problems)
            UpdatePlace({mode, std::nullopt});
        for (std::size_t output = 0; output < outputCount; ++output) {
            if (row.Cells[output] == before.Cells[output])
                continue;
            UpdatePlace({mode, output});
            // Its equal in a comparison may be no longer.
            for (const std::size_t other : compared_)
                UpdatePlace({other, output});
        }
    }
}

void Overview::SetCurrent(const OverviewPlace& place) {
    if (place == current_)
        return;
    const OverviewPlace former = std::exchange(current_, place);
    for (const OverviewPlace& changed : {former, place}) {
        UpdatePlace(changed);
        UpdatePlace({changed.Mode, std::nullopt});
        UpdatePlace({std::nullopt, changed.Output});
    }
    Reveal(place);
    Q_EMIT CurrentChanged();
}

void Overview::Compare(std::vector<std::size_t> modes) {
    compared_ = std::move(modes);
    viewport()->update();
    Q_EMIT ComparedChanged();
}

void Overview::ToggleCompared(std::size_t mode) {
    std::vector<std::size_t> modes = compared_;
    if (std::erase(modes, mode) == 0) {
        if (modes.size() == 2)
            modes.erase(modes.begin());
        modes.push_back(mode);
    }
    Compare(std::move(modes));
}

void Overview::SetZoom(int percent) {
    zoom_ = std::clamp(percent, leastZoom, mostZoom);
    UpdateAll();
    Reveal(current_);
}

QFont Overview::ZoomedFont() const {
    QFont zoomed = font();
    zoomed.setPointSizeF(QFontInfo(zoomed).pointSizeF() * zoom_ / usualZoom);
    return zoomed;
}

void Overview::Arrange() {
    const QSize room = viewport()->size();
    geometry_ = OverviewGeometry(MetricsFor(ZoomedFont(), room.width()), UsedModes(content_));
    const QSize size = geometry_.Size();
    legendHeight_ = OverviewPainter::LegendHeight(ZoomedFont(), room.width());
    const int high = LegendTop() + legendHeight_;
    const int line = geometry_.HeaderSize().height();
    horizontalScrollBar()->setRange(0, size.width() - room.width());
    horizontalScrollBar()->setPageStep(room.width());
    horizontalScrollBar()->setSingleStep(2 * line);
    verticalScrollBar()->setRange(0, high - room.height());
    verticalScrollBar()->setPageStep(room.height());
    verticalScrollBar()->setSingleStep(line);
}

void Overview::UpdateAll() {
    Arrange();
    viewport()->update();
}

QRect Overview::RectOf(const OverviewPlace& place) const {
    const int x = horizontalScrollBar()->value();
    const int y = verticalScrollBar()->value();
    if (place.Mode && place.Output)
        return geometry_.Cell(*place.Mode, *place.Output).translated(-x, -y);
    if (place.Mode)
        return geometry_.RowHeader(*place.Mode).translated(0, -y);
    if (place.Output)
        return geometry_.ColumnHeader(*place.Output).translated(-x, 0);
    return {QPoint(0, 0), geometry_.HeaderSize()};
}

void Overview::UpdatePlace(const OverviewPlace& place) { viewport()->update(RectOf(place)); }

int Overview::LegendTop() const { return geometry_.Size().height() + geometry_.HeaderSize().height() / 3; }

QRect Overview::LegendRect() const {
    return {0, LegendTop() - verticalScrollBar()->value(), viewport()->width(), legendHeight_};
}

void Overview::Reveal(const OverviewPlace& place) {
    const QRect rect = RectOf(place);
    const QSize header = geometry_.HeaderSize();
    const auto reveal = [](QScrollBar* bar, int first, int last, int from, int to) {
        if (first < from)
            bar->setValue(bar->value() + first - from);
        else if (last > to)
            bar->setValue(bar->value() + std::min(last - to, first - from));
    };
    if (place.Mode)
        reveal(verticalScrollBar(), rect.top(), rect.bottom(), header.height(), viewport()->height() - 1);
    if (place.Output)
        reveal(horizontalScrollBar(), rect.left(), rect.right(), header.width(), viewport()->width() - 1);
}

std::optional<OverviewPlace> Overview::PlaceAt(QPoint point) const {
    const QSize header = geometry_.HeaderSize();
    if (point.x() >= header.width())
        point.rx() += horizontalScrollBar()->value();
    if (point.y() >= header.height())
        point.ry() += verticalScrollBar()->value();
    auto place = geometry_.At(point);
    if (place && place->Mode && place->Output)
        place->Part = geometry_.PartAt(geometry_.Cell(*place->Mode, *place->Output),
                                       SignsOf(content_.Rows[*place->Mode].Cells[*place->Output]), point);
    return place;
}

OverviewState Overview::StateOf(const OverviewPlace& place) const {
    const bool current = hasFocus() && place.Mode == current_.Mode && place.Output == current_.Output;
    const bool chosen = std::ranges::find(compared_, *place.Mode) != compared_.end();
    OverviewState state{.Faded = false, .Current = current, .Chosen = chosen && !place.Output};
    if (compared_.size() == 2)
        state.Faded =
            !chosen || (place.Output && SameSettings(content_.Rows[compared_[0]].Cells[*place.Output],
                                                     content_.Rows[compared_[1]].Cells[*place.Output]));
    return state;
}

QStringList Overview::WordsFor(const OverviewPlace& place) const {
    if (!place.Mode && !place.Output)
        return {accessibleName()};
    if (!place.Mode)
        return {PlaceWords(content_.Called, NameKind::Output, *place.Output)};
    if (!place.Output)
        return RowWords(content_, *place.Mode);
    QStringList words = CellWords(content_, *place.Mode, *place.Output);
    if (compared_.size() == 2 && std::ranges::find(compared_, *place.Mode) != compared_.end()) {
        const std::size_t other = compared_[compared_[0] == *place.Mode ? 1 : 0];
        const QString name = PlaceWords(content_.Called, NameKind::Mode, other);
        words += (StateOf(place).Faded ? tr("The same in %1") : tr("Different in %1")).arg(name);
    }
    return words;
}

void Overview::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    const QFont zoomed = ZoomedFont();
    OverviewPainter draw(painter, geometry_, palette(), zoomed);
    const QRegion& dirty = event->region();
    const QSize header = geometry_.HeaderSize();
    const auto shown = [&](const QRect& rect, const QRect& area) {
        return area.intersects(rect) && dirty.intersects(rect & area);
    };
    const QRect all = viewport()->rect();
    const QRect cells = all.adjusted(header.width(), header.height(), 0, 0);
    const QRect rows = all.adjusted(0, header.height(), 0, 0);
    const QRect columns = all.adjusted(header.width(), 0, 0, 0);
    for (std::size_t mode = 0; mode < modeCount; ++mode) {
        painter.setClipRect(cells);
        for (std::size_t output = 0; output < outputCount; ++output) {
            const QRect rect = RectOf({mode, output});
            if (shown(rect, cells))
                draw.Cell(rect, content_.Rows[mode], output, StateOf({mode, output}));
        }
        const OverviewPlace place = {mode, std::nullopt};
        painter.setClipRect(rows);
        if (shown(RectOf(place), rows))
            draw.RowHeader(RectOf(place), content_, mode, StateOf(place), mode == current_.Mode);
    }
    painter.setClipRect(columns);
    for (std::size_t output = 0; output < outputCount; ++output) {
        const QRect rect = RectOf({std::nullopt, output});
        if (shown(rect, columns))
            draw.ColumnHeader(rect, content_, output, output == current_.Output);
    }
    painter.setClipRect(rows);
    if (shown(LegendRect(), rows))
        draw.Legend(LegendRect());
}

void Overview::resizeEvent(QResizeEvent*) { Arrange(); }

void Overview::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        UpdateAll();
}

void Overview::scrollContentsBy(int, int) { viewport()->update(); }

void Overview::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    UpdatePlace(current_);
    Q_EMIT CurrentChanged();
}

void Overview::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    UpdatePlace(current_);
}

bool Overview::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        // Here these keys mean the place that is current, whatever the window does with them.
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->matches(QKeySequence::Copy) || key->matches(QKeySequence::Paste) || ZoomOf(*key) != 0) {
            event->accept();
            return true;
        }
    }
    return QAbstractScrollArea::event(event);
}

bool Overview::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const auto place = PlaceAt(help->pos());
        if (!place) {
            QToolTip::hideText();
            return true;
        }
        const QFontMetrics metrics(QToolTip::font());
        const QString text =
            WrappedToolTip(WordsFor(*place), metrics, metrics.averageCharWidth() * tipCharacters);
        QToolTip::showText(help->globalPos(), text, viewport(), RectOf(*place));
        return true;
    }
    return QAbstractScrollArea::viewportEvent(event);
}

bool Overview::MoveBy(const QKeyEvent& event) {
    int mode = static_cast<int>(current_.Mode.value_or(0));
    int column = current_.Output ? static_cast<int>(*current_.Output) : rowHeaderColumn;
    switch (event.key()) {
    case Qt::Key_Up:
        --mode;
        break;
    case Qt::Key_Down:
        ++mode;
        break;
    case Qt::Key_PageUp:
        mode = 0;
        break;
    case Qt::Key_PageDown:
        mode = lastMode;
        break;
    case Qt::Key_Left:
        --column;
        break;
    case Qt::Key_Right:
        ++column;
        break;
    case Qt::Key_Home:
        column = rowHeaderColumn;
        break;
    case Qt::Key_End:
        column = lastOutput;
        break;
    default:
        return false;
    }
    OverviewPlace place = {static_cast<std::size_t>(std::clamp(mode, 0, lastMode)), std::nullopt};
    column = std::clamp(column, rowHeaderColumn, lastOutput);
    if (column != rowHeaderColumn)
        place.Output = static_cast<std::size_t>(column);
    SetCurrent(place);
    return true;
}

void Overview::keyPressEvent(QKeyEvent* event) {
    const OverviewPlace place = current_; // who is told may choose another one
    if (event->matches(QKeySequence::Copy))
        Q_EMIT CopyRequested(place);
    else if (event->matches(QKeySequence::Paste))
        Q_EMIT PasteRequested(place);
    else if (const int zoom = ZoomOf(*event); zoom != 0)
        SetZoom(zoom_ + zoom);
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        Q_EMIT Activated(place);
    else if (event->key() == Qt::Key_Space)
        ToggleCompared(*place.Mode);
    else if (event->key() == Qt::Key_Escape && !compared_.empty())
        Compare({});
    else if (!MoveBy(*event))
        event->ignore(); // not the scroll area's own keys: the arrows move the place
}

void Overview::mousePressEvent(QMouseEvent* event) {
    const auto place = PlaceAt(event->position().toPoint());
    if (!place)
        return;
    SetCurrent({place->Mode ? place->Mode : current_.Mode, place->Output, place->Part});
    if (event->button() == Qt::LeftButton && event->modifiers() == Qt::ControlModifier && !place->Output)
        ToggleCompared(*place->Mode);
}

void Overview::mouseDoubleClickEvent(QMouseEvent* event) {
    const auto place = PlaceAt(event->position().toPoint());
    if (place && event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier)
        Q_EMIT Activated(*place);
}

void Overview::wheelEvent(QWheelEvent* event) {
    if (event->modifiers() != Qt::ControlModifier) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    wheelAngle_ += event->angleDelta().y();
    const int notches = wheelAngle_ / wheelNotch;
    wheelAngle_ -= notches * wheelNotch;
    if (notches != 0)
        SetZoom(zoom_ + notches * zoomStep);
}

void Overview::contextMenuEvent(QContextMenuEvent* event) {
    QPoint at = event->globalPos();
    if (event->reason() == QContextMenuEvent::Keyboard)
        at = viewport()->mapToGlobal(RectOf(current_).center());
    Q_EMIT MenuRequested(at);
}

} // namespace vek
