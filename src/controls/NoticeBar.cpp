#include "controls/NoticeBar.h"

#include "controls/ElidedLabel.h"
#include "controls/LayoutHelpers.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr int stripeWidth = 4;
constexpr float tint = 0.18F; // of the highlight colour in the background

QColor Mixed(const QColor& base, const QColor& other, float share) {
    const auto mix = [share](float from, float to) { return from + (to - from) * share; };
    return QColor::fromRgbF(mix(base.redF(), other.redF()), mix(base.greenF(), other.greenF()),
                            mix(base.blueF(), other.blueF()));
}

} // namespace

NoticeBar::NoticeBar(const QString& name, QWidget* parent)
    : QFrame(parent), text_(new ElidedLabel(QString(), this)), row_(new QHBoxLayout(this)) {
    setObjectName(name);
    text_->setObjectName(u"Text"_s);
    row_->setContentsMargins(stripeWidth + 8, 4, 6, 4);
    row_->addWidget(text_, 1);
    setVisible(false);
}

QPushButton* NoticeBar::AddButton(const QString& name, const QString& caption) {
    auto* button = new QPushButton(caption, this);
    button->setObjectName(name);
    button->setAutoDefault(false);
    row_->addWidget(button);
    return button;
}

void NoticeBar::Tell(const QString& text) {
    if (text_->text() != text) {
        text_->setText(text);
        SetPlainToolTip(*text_, text);
        setAccessibleName(text);
    }
    setVisible(true);
}

QString NoticeBar::Text() const { return text_->text(); }

void NoticeBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QColor highlight = palette().color(QPalette::Highlight);
    painter.fillRect(rect(), Mixed(palette().color(QPalette::Window), highlight, tint));
    painter.fillRect(QRect(0, 0, stripeWidth, height()), highlight);
}

} // namespace vek
