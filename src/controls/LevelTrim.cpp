#include "controls/LevelTrim.h"

#include "base/Numbers.h"
#include "controls/FaderAccessible.h"
#include "controls/FaderKnob.h"
#include "controls/KeyFilteredLineEdit.h"
#include "model/Panels.h"

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
bool TakesKey(QChar key, const QString&) {
    return (key >= u'0' && key <= u'8') || key == u'-' || key == u'+';
}

QString LevelText(float level) { return QString::fromStdString(FormatLevelText(level)); }

} // namespace

LevelTrim::LevelTrim(QWidget* parent)
    : QWidget(parent), Text2(new KeyFilteredLineEdit(TakesKey, this)), Command1(new FaderKnob(this)) {
    InstallFaderAccessible();
    Command1->setObjectName("Command1"_L1);
    Text2->setObjectName("Text2"_L1);
    Text2->setAlignment(Qt::AlignHCenter);
    Text2->setText(LevelText(level));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    setFocusProxy(Command1);

    connect(Command1, &FaderKnob::Dragged, this, &LevelTrim::DragKnob);
    connect(Command1, &FaderKnob::Stepped, this,
            [this](float decibels) { SetLevel(WholeLevel(range, level + decibels)); });
    connect(Command1, &FaderKnob::Released, this, &LevelTrim::Change);
    connect(Text2, &KeyFilteredLineEdit::EnterPressed, this, [this] {
        AcceptText();
        Text2->selectAll();
    });
    connect(Text2, &KeyFilteredLineEdit::Left, this, [this] {
        if (Text2->text() != LevelText(level))
            AcceptText();
    });
    connect(Text2, &KeyFilteredLineEdit::MousePressed, this, &LevelTrim::TextClicked);
}

// Destroyed with the focus in it, the box must not tell that it was left.
LevelTrim::~LevelTrim() { Text2->disconnect(this); }

void LevelTrim::SetLevel(float value) {
    StoreLevel(value);
    PlaceKnob();
}

void LevelTrim::SetMaxLevel(float value) {
    range.Max = value;
    LimitsChanged();
}

void LevelTrim::SetMinLevel(float value) {
    range.Min = value;
    LimitsChanged();
}

void LevelTrim::LimitsChanged() {
    updateGeometry();
    PlaceKnob();
    update();
}

void LevelTrim::SetAccessibleTitle(const QString& title) {
    setAccessibleName(title);
    Command1->setAccessibleName(title);
    Text2->setAccessibleName(title + u" in dB"_s);
}

void LevelTrim::StoreLevel(float value) {
    level = value;
    if (const QString text = LevelText(level); text != Text2->text())
        Text2->setText(text);
    if (QAccessible::isActive()) {
        QAccessibleValueChangeEvent changed(Command1, level);
        QAccessible::updateAccessibility(&changed);
    }
}

void LevelTrim::MoveTo(double value) {
    const float former = level;
    SetLevel(WholeLevel(range, value));
    if (level != former)
        Q_EMIT Change();
}

void LevelTrim::AcceptText() { MoveTo(LenientNumber(Text2->text().toStdString())); }

void LevelTrim::DragKnob(int wantedTop) {
    // The knob stays where the pointer has it, also between two whole decibels.
    const FaderTrack track = Track();
    const float top = LimitKnobTop(track, static_cast<float>(wantedTop));
    Command1->move(Command1->x(), static_cast<int>(top));
    StoreLevel(LevelAtKnobTop(track, range, top));
}

FaderTrack LevelTrim::Track() const {
    return {static_cast<float>(Text2->height() + textGap), static_cast<float>(height() - bottomGap),
            static_cast<float>(Command1->height())};
}

int LevelTrim::TrackCentre() const { return Command1->width() / 2; }

void LevelTrim::PlaceKnob() {
    const float top = KnobTopAtLevel(Track(), range, level);
    Command1->move(TrackCentre() - Command1->width() / 2, static_cast<int>(RoundHalfEven(top)));
}

void LevelTrim::Arrange() {
    Text2->setGeometry(0, 0, width(), Text2->sizeHint().height());
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
    for (const float mark : ScaleLevels(range))
        labels = std::max(labels, metrics.horizontalAdvance(LevelText(mark)));
    return {Command1->width() + tickGap + tickLength + tickGap + labels,
            Text2->sizeHint().height() + textGap + travel + Command1->height() + bottomGap};
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
    const int knobCentre = Command1->height() / 2; // a whole pixel: the height is odd

    const QRect groove(TrackCentre() - trackWidth / 2, static_cast<int>(track.Top), trackWidth,
                       static_cast<int>(track.Bottom - track.Top));
    painter.fillRect(groove, colours.color(QPalette::Mid));
    painter.fillRect(groove.adjusted(1, 1, -1, -1), colours.color(QPalette::Dark));

    const int tickLeft = Command1->width() + tickGap;
    // A knob that moves has no more than the groove repainted; the texts would be most of the work.
    if (event->rect().right() < tickLeft)
        return;
    const int labelLeft = tickLeft + tickLength + tickGap;
    painter.setPen(colours.color(QPalette::WindowText));
    for (const float mark : ScaleLevels(range)) {
        const int y = static_cast<int>(RoundHalfEven(KnobTopAtLevel(track, range, mark))) + knobCentre;
        painter.fillRect(tickLeft, y, tickLength, 1, colours.color(QPalette::WindowText));
        const QRect label(labelLeft, y - knobCentre, width() - labelLeft, Command1->height());
        painter.drawText(label, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, LevelText(mark));
    }
}

} // namespace vek
