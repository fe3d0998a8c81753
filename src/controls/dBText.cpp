#include "controls/dBText.h"

#include "base/Numbers.h"
#include "controls/KeyFilteredLineEdit.h"
#include "controls/TextConversion.h"
#include "controls/UpDownButtons.h"

#include <QHBoxLayout>
#include <QKeyEvent>

#include <algorithm>

namespace vek {

using namespace Qt::StringLiterals;

dBText::dBText(QWidget* parent)
    : QWidget(parent),
      Text1_(new KeyFilteredLineEdit([this](QChar key, const QString&) { return TakesKey(key); }, this)),
      buttons_(new UpDownButtons(this)) {
    Text1_->setObjectName("Text1"_L1);
    Text1_->setText(LevelText(level_));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(Text1_);
    row->addWidget(buttons_);
    setFocusProxy(Text1_);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);

    connect(Text1_, &KeyFilteredLineEdit::textEdited, this, [this] { touched_ = true; });
    connect(Text1_, &KeyFilteredLineEdit::EnterPressed, this, &dBText::Enter);
    connect(Text1_, &KeyFilteredLineEdit::Left, this, &dBText::Leave);
    // A press takes the focus to the box itself. So a box that the user leaves with it is finished first, and
    // this one is not left: what was typed here counts, and the only Change is that of the release.
    connect(buttons_, &UpDownButtons::Pressed, this, [this] {
        Text1_->setFocus();
        TakeText();
    });
    connect(buttons_, &UpDownButtons::Step, this, &dBText::Step);
    connect(buttons_, &UpDownButtons::Released, this, &dBText::Change);
}

// Destroyed with the focus in it, the box must not tell that it was left.
dBText::~dBText() { Text1_->disconnect(this); }

bool dBText::TakesKey(QChar key) {
    if (key == u'9')
        Text1_->ShowHint(tr("9 cannot be typed here: use the buttons or the arrow keys"));
    return IsLevelKey(key);
}

float dBText::Snapped(float value) const { return LimitLevel(SnapHalfDecibels(value), maxLevel_, minLevel_); }

void dBText::SetLevel(float value) {
    touched_ = false;
    level_ = Snapped(value);
    Text1_->SetFresh(LevelText(level_));
}

void dBText::EnterLevel(float value) {
    touched_ = true;
    Show(value);
}

void dBText::Show(float value) {
    level_ = Snapped(value);
    if (const QString text = LevelText(level_); text != Text1_->text())
        Text1_->setText(text);
}

QSize dBText::sizeHint() const {
    const QSize usual = QWidget::sizeHint();
    const int spared = Text1_->sizeHint().width() - Text1_->minimumSizeHint().width();
    const int longest = fontMetrics().horizontalAdvance(LevelText(levelMinimum - levelStep) + u"  "_s);
    return {usual.width() - std::max(0, spared - longest), usual.height()};
}

void dBText::SetMaxLevel(float value) {
    maxLevel_ = value;
    Show(level_);
}

void dBText::SetMinLevel(float value) {
    minLevel_ = value;
    Show(level_);
}

void dBText::SetAccessibleTitle(const QString& title) {
    setAccessibleName(title);
    Text1_->setAccessibleName(title);
    buttons_->SetAccessibleTitle(title);
}

void dBText::TakeText() { Show(static_cast<float>(LenientNumber(Text1_->text().toStdString()))); }

void dBText::Step(int direction) {
    EnterLevel(level_ + static_cast<float>(direction) * levelStep);
    Text1_->selectAll();
}

void dBText::Enter() {
    touched_ = true;
    TakeText();
    Q_EMIT Change();
    Text1_->selectAll();
}

void dBText::Leave() {
    // The comparison is with the whole decibels of the former level: a level between them counts as changed
    // each time the box is left.
    const double former = RoundHalfEven(level_);
    TakeText();
    if (level_ != former)
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
    Text1_->selectAll();
}

} // namespace vek
