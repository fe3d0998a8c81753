#include "controls/LevelTrim.h"

#include "base/Numbers.h"
#include "controls/FaderAccessible.h"
#include "controls/KeyFilteredLineEdit.h"
#include "controls/TextConversion.h"

#include <QAccessible>
#include <QEvent>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

// Logical pixels.
constexpr int textGap = 8;   // between the read-out and the track
constexpr int bottomGap = 1; // below the track
constexpr int trackWidth = 4;
constexpr int tickLength = 7;
constexpr int tickGap = 3; // on either side of a tick
constexpr int shortestTravel = 72;
constexpr int usualTravel = 144;

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

int LevelTrim::TrackCentre() const { return Command1_->width() / 2; }

void LevelTrim::PlaceKnob() {
    const float top = KnobTopAtLevel(Track(), range_, level_);
    Command1_->move(TrackCentre() - Command1_->width() / 2, static_cast<int>(RoundHalfEven(top)));
}

void LevelTrim::Arrange() {
    Text2_->setGeometry(0, 0, width(), Text2_->sizeHint().height());
    PlaceKnob();
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
    return {Command1_->width() + tickGap + tickLength + tickGap + labels,
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
    const FaderTrack track = Track();
    const QPalette& colours = palette();
    const int knobCentre = Command1_->height() / 2; // a whole pixel: the height is odd

    const QRect groove(TrackCentre() - trackWidth / 2, static_cast<int>(track.Top), trackWidth,
                       static_cast<int>(track.Bottom - track.Top));
    painter.fillRect(groove, colours.color(QPalette::Mid));
    painter.fillRect(groove.adjusted(1, 1, -1, -1), colours.color(QPalette::Dark));

    const int tickLeft = Command1_->width() + tickGap;
    // A knob that moves has no more than the groove repainted; the texts would be most of the work.
    if (event->rect().right() < tickLeft)
        return;
    const int labelLeft = tickLeft + tickLength + tickGap;
    painter.setPen(colours.color(QPalette::WindowText));
    for (const float mark : ScaleLevels(range_)) {
        const int y = static_cast<int>(RoundHalfEven(KnobTopAtLevel(track, range_, mark))) + knobCentre;
        painter.fillRect(tickLeft, y, tickLength, 1, colours.color(QPalette::WindowText));
        const QRect label(labelLeft, y - knobCentre, width() - labelLeft, Command1_->height());
        painter.drawText(label, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, LevelText(mark));
    }
}

} // namespace vek
