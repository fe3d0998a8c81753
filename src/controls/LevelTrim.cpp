#include "controls/LevelTrim.h"

#include "base/Numbers.h"
#include "controls/FaderAccessible.h"
#include "controls/KeyFilteredLineEdit.h"
#include "controls/TextConversion.h"

#include <QAccessible>
#include <QEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

// Logical pixels.
constexpr int textGap = 8;   // between the read-out and the track
constexpr int bottomGap = 1; // below the track
constexpr int trackWidth = 4;
constexpr int tickLength = 7;
constexpr int tickGap = 3; // on either side of a tick
constexpr int minorTickLength = 4;
constexpr int zeroTickHeight = 3;
constexpr int shadeWidth = 12;
constexpr QSize startMark(7, 9);
constexpr int shortestTravel = 72;
constexpr int usualTravel = 144;

constexpr float shadeOpacity = 0.45F;
constexpr float minorOpacity = 0.5F;

/// The digits 0 to 8 and the signs; 9 is refused like any other key.
bool IsLevelKey(QChar key) { return (key >= u'0' && key <= u'8') || key == u'-' || key == u'+'; }

} // namespace

LevelTrim::LevelTrim(QWidget* parent)
    : QWidget(parent),
      Text2_(new KeyFilteredLineEdit([this](QChar key, const QString&) { return TakesKey(key); }, this)),
      Command1_(new FaderKnob(*this, this)) {
    InstallFaderAccessible();
    Command1_->setObjectName("Command1"_L1);
    Text2_->setObjectName("Text2"_L1);
    Text2_->setAlignment(Qt::AlignHCenter);
    Text2_->setText(LevelText(level_));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);

    connect(Command1_, &FaderKnob::Dragged, this, &LevelTrim::DragKnob);
    connect(Command1_, &FaderKnob::Stepped, this,
            [this](float decibels) { SetLevel(WholeLevel(range_, level_ + decibels)); });
    connect(Command1_, &FaderKnob::Zeroed, this, [this] { SetLevel(WholeLevel(range_, 0.0)); });
    connect(Command1_, &FaderKnob::Released, this, &LevelTrim::Change);
    connect(Text2_, &KeyFilteredLineEdit::EnterPressed, this, [this] {
        AcceptText();
        Text2_->selectAll();
    });
    connect(Text2_, &KeyFilteredLineEdit::Left, this, [this] {
        if (Text2_->text() != LevelText(level_))
            AcceptText();
    });
    connect(Text2_, &KeyFilteredLineEdit::MousePressed, this, &LevelTrim::TextClicked);
}

// Destroyed with the focus in it, the box must not tell that it was left.
LevelTrim::~LevelTrim() { Text2_->disconnect(this); }

bool LevelTrim::TakesKey(QChar key) {
    if (key == u'9')
        Text2_->ShowHint(tr("9 cannot be typed here: use the knob, by mouse or with the arrow keys"));
    return IsLevelKey(key);
}

void LevelTrim::SetLevel(float value) {
    StoreLevel(value);
    PlaceKnob();
}

void LevelTrim::SetMaxLevel(float value) {
    range_.Max = value;
    LimitsChanged();
}

void LevelTrim::SetMinLevel(float value) {
    range_.Min = value;
    LimitsChanged();
}

void LevelTrim::LimitsChanged() {
    updateGeometry();
    PlaceKnob();
    update();
}

void LevelTrim::ShowMarks(const FaderMarks& marks) {
    if (marks_ == marks)
        return;
    const bool first = !marks_;
    marks_ = marks;
    const QString range = tr("From %1 to %2").arg(LevelText(marks.Shaded.Min), LevelText(marks.Shaded.Max));
    const QString start = marks.Start ? tr(", start at %1").arg(LevelText(*marks.Start)) : QString();
    Command1_->setAccessibleDescription(range + start);
    if (first) {
        updateGeometry();
        Arrange();
    }
    update();
}

void LevelTrim::SetAccessibleTitle(const QString& title) {
    setAccessibleName(title);
    Command1_->setAccessibleName(title);
    Text2_->setAccessibleName(tr("%1 in dB").arg(title));
}

void LevelTrim::StoreLevel(float value) {
    level_ = value;
    Text2_->SetFresh(LevelText(level_));
    if (QAccessible::isActive()) {
        QAccessibleValueChangeEvent changed(Command1_, level_);
        QAccessible::updateAccessibility(&changed);
    }
}

void LevelTrim::MoveTo(double value) {
    const float former = level_;
    SetLevel(WholeLevel(range_, value));
    if (level_ != former)
        Q_EMIT Change();
}

void LevelTrim::AcceptText() { MoveTo(LenientNumber(Text2_->text().toStdString())); }

void LevelTrim::DragKnob(int wantedTop) {
    // The knob stays where the pointer has it, also between two whole decibels.
    const FaderTrack track = Track();
    const float top = LimitKnobTop(track, static_cast<float>(wantedTop));
    Command1_->move(Command1_->x(), static_cast<int>(top));
    StoreLevel(LevelAtKnobTop(track, range_, top));
}

FaderTrack LevelTrim::Track() const {
    return {static_cast<float>(Text2_->height() + textGap), static_cast<float>(height() - bottomGap),
            static_cast<float>(Command1_->height())};
}

QString LevelTrim::StartText() const { return tr("start"); }

int LevelTrim::KnobLeft() const {
    if (!marks_)
        return 0;
    return QFontMetrics(ScaleFont()).horizontalAdvance(StartText()) + tickGap + startMark.width() + 1;
}

int LevelTrim::YAtLevel(float level) const {
    // The middle of the knob is a whole pixel: its height is odd.
    return static_cast<int>(RoundHalfEven(KnobTopAtLevel(Track(), range_, level))) + Command1_->height() / 2;
}

void LevelTrim::PlaceKnob() {
    const float top = KnobTopAtLevel(Track(), range_, level_);
    Command1_->move(KnobLeft(), static_cast<int>(RoundHalfEven(top)));
}

void LevelTrim::Arrange() {
    Text2_->setGeometry(0, 0, width(), Text2_->sizeHint().height());
    PlaceKnob();
}

void LevelTrim::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    Command1_->setFocus(Qt::MouseFocusReason);
    Command1_->ForgetClick();
    const int y = event->position().toPoint().y();
    const QRect knob = Command1_->geometry();
    if (y >= knob.top() && y <= knob.bottom())
        return;
    const int wantedTop = y - knob.height() / 2;
    MoveTo(LevelAfterClick(Track(), range_, level_, static_cast<float>(wantedTop)));
}

void LevelTrim::wheelEvent(QWheelEvent* event) {
    const bool focused = Command1_->hasFocus() || Text2_->hasFocus();
    if (!focused || event->buttons() != Qt::NoButton) {
        event->ignore();
        return;
    }
    // What is typed counts first.
    if (Text2_->hasFocus())
        Text2_->Finish();
    wheelRest_ += event->angleDelta().y();
    const int notches = wheelRest_ / QWheelEvent::DefaultDeltasPerStep;
    wheelRest_ -= notches * QWheelEvent::DefaultDeltasPerStep;
    if (notches != 0)
        MoveTo(level_ + static_cast<float>(notches) * faderStep);
}

void LevelTrim::resizeEvent(QResizeEvent*) { Arrange(); }

void LevelTrim::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        updateGeometry();
        Arrange();
    }
}

QSize LevelTrim::SizeForTravel(int travel) const {
    const QFontMetrics metrics(ScaleFont());
    int labels = 0;
    for (const float mark : ScaleLevels(range_))
        labels = std::max(labels, metrics.horizontalAdvance(LevelText(mark)));
    return {KnobLeft() + Command1_->width() + tickGap + tickLength + tickGap + labels,
            Text2_->sizeHint().height() + textGap + travel + Command1_->height() + bottomGap};
}

QSize LevelTrim::sizeHint() const { return SizeForTravel(usualTravel); }

QSize LevelTrim::minimumSizeHint() const { return SizeForTravel(shortestTravel); }

QFont LevelTrim::ScaleFont() const {
    QFont scaled = font();
    if (scaled.pointSizeF() > 0)
        scaled.setPointSizeF(scaled.pointSizeF() * 0.85);
    return scaled;
}

void LevelTrim::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setFont(ScaleFont());
    PaintTrack(painter);
    const int scaleLeft = KnobLeft() + Command1_->width() + tickGap;
    // A knob that moves has no more than the groove repainted; the texts would be most of the work.
    if (event->rect().left() >= KnobLeft() && event->rect().right() < scaleLeft)
        return;
    PaintStart(painter);
    PaintScale(painter, scaleLeft);
}

void LevelTrim::PaintTrack(QPainter& painter) const {
    const FaderTrack track = Track();
    const QPalette& colours = palette();
    const QRect groove(TrackCentre() - trackWidth / 2, static_cast<int>(track.Top), trackWidth,
                       static_cast<int>(track.Bottom - track.Top));
    if (marks_) {
        const int top = YAtLevel(marks_->Shaded.Max);
        QColor shade = colours.color(QPalette::Highlight);
        shade.setAlphaF(shadeOpacity);
        painter.fillRect(TrackCentre() - shadeWidth / 2, top, shadeWidth,
                         std::max(0, YAtLevel(marks_->Shaded.Min) + 1 - top), shade);
    }
    painter.fillRect(groove, colours.color(QPalette::Mid));
    painter.fillRect(groove.adjusted(1, 1, -1, -1), colours.color(QPalette::Dark));
}

void LevelTrim::PaintStart(QPainter& painter) const {
    if (!marks_ || !marks_->Start || *marks_->Start > range_.Max || *marks_->Start < range_.Min)
        return;
    const int y = YAtLevel(*marks_->Start);
    const int tip = KnobLeft() - 1;
    painter.setPen(palette().color(QPalette::WindowText));
    const QRect text(0, y - Command1_->height() / 2, tip - startMark.width() - tickGap, Command1_->height());
    painter.drawText(text, Qt::AlignRight | Qt::AlignVCenter | Qt::TextDontClip, StartText());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(QPalette::WindowText));
    const double middle = y + 0.5;
    const double half = startMark.height() / 2.0;
    painter.drawPolygon(QPolygonF({QPointF(tip - startMark.width(), middle - half), QPointF(tip, middle),
                                   QPointF(tip - startMark.width(), middle + half)}));
    painter.setRenderHint(QPainter::Antialiasing, false);
}

void LevelTrim::PaintScale(QPainter& painter, int left) const {
    const QColor ink = palette().color(QPalette::WindowText);
    if (HasDecibelTicks(Track(), range_)) {
        QColor light = ink;
        light.setAlphaF(minorOpacity);
        const int highest = static_cast<int>(std::floor(range_.Max));
        for (int level = static_cast<int>(std::ceil(range_.Min)); level <= highest; ++level)
            painter.fillRect(left, YAtLevel(static_cast<float>(level)), minorTickLength, 1, light);
    }
    const int height = Command1_->height();
    const int labelLeft = left + tickLength + tickGap;
    const auto label = [&](float level) {
        painter.drawText(QRect(labelLeft, YAtLevel(level) - height / 2, width() - labelLeft, height),
                         Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, LevelText(level));
    };
    painter.setPen(ink);
    bool roomForZero = range_.Max > 0.0F && range_.Min < 0.0F;
    if (roomForZero)
        painter.fillRect(left - tickGap, YAtLevel(0.0F) - 1, tickGap + tickLength, zeroTickHeight, ink);
    for (const float mark : ScaleLevels(range_)) {
        painter.fillRect(left, YAtLevel(mark), tickLength, 1, ink);
        label(mark);
        roomForZero &= std::abs(YAtLevel(mark) - YAtLevel(0.0F)) >= painter.fontMetrics().height();
    }
    if (!roomForZero)
        return;
    QFont bold = painter.font();
    bold.setBold(true);
    painter.setFont(bold);
    label(0.0F);
}

} // namespace vek
