#include "controls/dBText.h"

#include "base/Numbers.h"
#include "controls/HalfDecibels.h"
#include "controls/KeyFilteredLineEdit.h"
#include "controls/UpDownButtons.h"
#include "model/Panels.h"

#include <QHBoxLayout>
#include <QKeyEvent>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr float stepLevel = 0.5F; // dB

/// The digits 0 to 8, the signs and the point; 9 is refused like any other key.
bool TakesKey(QChar key, const QString&) {
    return (key >= u'0' && key <= u'8') || key == u'-' || key == u'+' || key == u'.';
}

QString LevelText(float level) { return QString::fromStdString(FormatLevelText(level)); }

} // namespace

dBText::dBText(QWidget* parent)
    : QWidget(parent), Text1(new KeyFilteredLineEdit(TakesKey, this)), buttons(new UpDownButtons(this)) {
    Text1->setObjectName("Text1"_L1);
    Text1->setText(LevelText(level));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(Text1);
    row->addWidget(buttons);
    setFocusProxy(Text1);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);

    connect(Text1, &KeyFilteredLineEdit::EnterPressed, this, &dBText::Enter);
    connect(Text1, &KeyFilteredLineEdit::Left, this, &dBText::Leave);
    // A press takes the focus to the box itself. So a box that the user leaves with it is finished first, and
    // this one is not left: what was typed here counts, and the only Change is that of the release.
    connect(buttons, &UpDownButtons::Pressed, this, [this] {
        Text1->setFocus();
        TakeText();
    });
    connect(buttons, &UpDownButtons::Step, this, &dBText::Step);
    connect(buttons, &UpDownButtons::Released, this, &dBText::Change);
}

// Destroyed with the focus in it, the box must not tell that it was left.
dBText::~dBText() { Text1->disconnect(this); }

float dBText::Snapped(float value) const { return LimitLevel(SnapHalfDecibels(value), maxLevel, minLevel); }

void dBText::SetLevel(float value) {
    level = Snapped(value);
    if (const QString text = LevelText(level); text != Text1->text())
        Text1->setText(text);
}

void dBText::SetMaxLevel(float value) {
    maxLevel = value;
    SetLevel(level);
}

void dBText::SetMinLevel(float value) {
    minLevel = value;
    SetLevel(level);
}

void dBText::SetAccessibleTitle(const QString& title) {
    setAccessibleName(title);
    Text1->setAccessibleName(title);
    buttons->SetAccessibleTitle(title);
}

void dBText::TakeText() { SetLevel(static_cast<float>(LenientNumber(Text1->text().toStdString()))); }

void dBText::Step(int direction) {
    SetLevel(level + static_cast<float>(direction) * stepLevel);
    Text1->selectAll();
}

void dBText::Enter() {
    TakeText();
    Q_EMIT Change();
    Text1->selectAll();
}

void dBText::Leave() {
    // The comparison is with the whole decibels of the former level: a level between them counts as changed
    // each time the box is left.
    const double former = RoundHalfEven(level);
    TakeText();
    if (level != former)
        Q_EMIT Change();
}

void dBText::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Up && event->key() != Qt::Key_Down) {
        QWidget::keyPressEvent(event);
        return;
    }
    TakeText();
    Step(event->key() == Qt::Key_Up ? +1 : -1);
    Q_EMIT Change();
    Text1->selectAll();
}

} // namespace vek
