#include "pages/OnlineStrip.h"

#include "controls/LevelTrim.h"
#include "controls/NameLabel.h"
#include "controls/TextConversion.h"
#include "model/Levels.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>

#include <algorithm>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

/// A control with room for the name of what it stands for. All are equally wide.
NameLabel* AddNamed(QHBoxLayout& row, QWidget& control, QWidget* parent) {
    auto* name = new NameLabel(parent);
    auto* pair = new QHBoxLayout;
    pair->setSpacing(4);
    pair->addWidget(&control);
    pair->addWidget(name, 1);
    pair->addStretch(0);
    row.addLayout(pair, 1);
    return name;
}

} // namespace

OnlineStrip::OnlineStrip(QWidget* parent) : QWidget(parent) {
    auto* frames = new QVBoxLayout;
    const QString muteCaption = tr("Mute");
    frames->addWidget(MakeInputs(muteCaption));
    frames->addWidget(MakeMutes(muteCaption));
    frames->addStretch(1);

    OnlineLabel32 = new QLabel(tr("Online Level Offset"), this);
    OnlineLabel32->setObjectName(u"OnlineLabel32"_s);
    OnlineLevelOffset = new LevelTrim(this);
    OnlineLevelOffset->setObjectName(u"OnlineLevelOffset"_s);
    OnlineLevelOffset->SetAccessibleTitle(OnlineLabel32->text());
    OnlineLevelOffset->SetMaxLevel(trimMaximum);
    OnlineLevelOffset->SetMinLevel(trimMinimum);
    connect(OnlineLevelOffset, &LevelTrim::Change, this, &OnlineStrip::OffsetChanged);
    auto* offset = new QVBoxLayout;
    offset->addWidget(OnlineLabel32, 0, Qt::AlignHCenter);
    offset->addWidget(OnlineLevelOffset, 1, Qt::AlignHCenter);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(frames, 1);
    layout->addLayout(offset);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QSize OnlineStrip::sizeHint() const { return {QWidget::sizeHint().width(), minimumSizeHint().height()}; }

int OnlineStrip::CaptionWidth(const QString& caption) const {
    return fontMetrics().horizontalAdvance(caption) + fontMetrics().height();
}

QWidget* OnlineStrip::MakeInputs(const QString& muteCaption) {
    auto* frame = new QGroupBox(tr("Input"), this);
    auto* row = new QHBoxLayout(frame);
    // Input and mute of the same number stand below each other.
    auto* margin = new QWidget(frame);
    margin->setFixedWidth(CaptionWidth(muteCaption));
    row->addWidget(margin);
    for (std::size_t input = 0; input < inputCount; ++input) {
        auto* option = new QRadioButton(QString::number(input + 1), frame);
        option->setObjectName(ElementName("RouteOption", input));
        option->setAccessibleName(tr("Listen to input %1").arg(input + 1));
        connect(option, &QRadioButton::clicked, this, [this, input] { Q_EMIT RouteClicked(input); });
        RouteOption[input] = option;
        inputNames_[input] = AddNamed(*row, *option, frame);
    }
    RouteOption[0]->setChecked(true);
    return frame;
}

QWidget* OnlineStrip::MakeMutes(const QString& muteCaption) {
    auto* frame = new QGroupBox(tr("Output"), this);
    auto* row = new QHBoxLayout(frame);
    auto* caption = new QLabel(muteCaption, frame);
    caption->setFixedWidth(CaptionWidth(muteCaption));
    row->addWidget(caption);
    for (std::size_t output = 0; output < outputCount; ++output) {
        auto* check = new QCheckBox(QString::number(output + 1), frame);
        check->setObjectName(ElementName("OutPutSelectCheck", output));
        check->setAccessibleName(tr("Mute output %1").arg(output + 1));
        connect(check, &QCheckBox::clicked, this, &OnlineStrip::MuteClicked);
        OutPutSelectCheck[output] = check;
        outputNames_[output] = AddNamed(*row, *check, frame);
    }
    return frame;
}

void OnlineStrip::ShowNames(const Names& names) {
    for (std::size_t i = 0; i < inputCount; ++i)
        inputNames_[i]->SetName(NameOf(names, NameKind::Input, i));
    for (std::size_t i = 0; i < outputCount; ++i)
        outputNames_[i]->SetName(NameOf(names, NameKind::Output, i));
}

std::size_t OnlineStrip::Input() const {
    const auto checked = std::ranges::find_if(RouteOption, &QRadioButton::isChecked);
    return static_cast<std::size_t>(checked - RouteOption.begin());
}

} // namespace vek
