#include "dialogs/LinkingForm.h"

#include "controls/NameLabel.h"
#include "controls/TextConversion.h"
#include "dialogs/DialogButtons.h"
#include "dialogs/OutputLabel.h"

#include <QDialogButtonBox>
#include <QFrame>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

// What the window needs on the screen around itself, pixels.
constexpr int frameWidth = 12;
constexpr int frameHeight = 40;
constexpr int captionGap = 2; // between a caption and its frame

QRect ToQRect(const PixelRect& rect) { return {rect.Left, rect.Top, rect.Width, rect.Height}; }

PixelRect ToPixelRect(const QRect& rect) { return {rect.x(), rect.y(), rect.width(), rect.height()}; }

QLabel* MakeText(const QString& name, const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

LinkingForm::LinkingForm(const LinkGroups& groups, std::size_t mode, const Names& names, QWidget* parent)
    : QDialog(parent), groups_(groups), names_(names), drawing_(new QWidget(this)) {
    setWindowTitle(tr("Output Grouping"));
    MakeFrames();
    MakeLabels();

    const DialogButtons buttons = MakeDialogButtons(this, tr("&Done"));
    connect(buttons.Done, &QPushButton::clicked, this, &QDialog::accept);

    auto* column = new QVBoxLayout(this);
    column->setSizeConstraint(QLayout::SetFixedSize);
    column->addLayout(MakeTitle(mode));
    column->addWidget(drawing_);
    column->addSpacing(column->spacing());
    column->addWidget(MakeText(
        u"Label4"_s,
        tr("To link outputs into a selection group, drag output number to the desired group frame."), this));
    column->addWidget(
        MakeText(u"Label5"_s,
                 tr("To release an output from a group drag its number into the individual frame."), this));
    column->addWidget(buttons.Box);

    FitToScreen();
    LayOutDrawing();
}

QLayout* LinkingForm::MakeTitle(std::size_t mode) {
    auto* number = new QLabel(FromConstant(NumberText(NameKind::Mode, mode)), this);
    QFont bold = number->font();
    bold.setBold(true);
    number->setFont(bold);
    auto* name = new NameLabel(this);
    name->SetName(NameOf(names_, NameKind::Mode, mode));
    auto* line = new QHBoxLayout;
    line->addWidget(number);
    line->addWidget(name, 1);
    line->addStretch();
    return line;
}

void LinkingForm::MakeFrames() {
    for (std::size_t frame = 0; frame < groupFrameCount; ++frame) {
        Shape2_[frame] = new QFrame(drawing_);
        Shape2_[frame]->setObjectName(u"Shape2_%1"_s.arg(frame));
        Shape2_[frame]->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
        Shape2_[frame]->setBackgroundRole(QPalette::Base);
        Shape2_[frame]->setAutoFillBackground(true);

        captions_[frame] = frame == 0
                               ? MakeText(u"Label2"_s, tr("Individual"), drawing_)
                               : MakeText(u"Label3_%1"_s.arg(frame - 1), tr("Group %1").arg(frame), drawing_);
        captions_[frame]->setWordWrap(false);
    }
}

void LinkingForm::MakeLabels() {
    for (std::size_t output = 0; output < outputCount; ++output) {
        auto* label =
            new OutputLabel(static_cast<int>(output) + 1, NameOf(names_, NameKind::Output, output), drawing_);
        Label1_[output] = label;
        connect(label, &OutputLabel::Moved, this, [this, output] { ShowTarget(TargetOf(output)); });
        connect(label, &OutputLabel::Dropped, this, [this, output] { Drop(output); });
        connect(label, &OutputLabel::GroupTyped, this,
                [this, output](int group) { MoveTo(output, static_cast<std::size_t>(group)); });
        connect(label, &OutputLabel::FocusWanted, this, [this, output](int direction) {
            const std::size_t step = direction > 0 ? 1 : outputCount - 1;
            Label1_[(output + step) % outputCount]->setFocus(Qt::TabFocusReason);
        });
    }
}

void LinkingForm::FitToScreen() {
    const QSize room = screen()->availableSize() - QSize(frameWidth, frameHeight);
    const int textHeight = fontMetrics().height();
    const QMargins margins = layout()->contentsMargins();

    // The column is at least as wide as its caption.
    GroupingSizes sizes = {std::max(3 * textHeight, captions_[0]->sizeHint().width()), 2 * textHeight,
                           textHeight + captionGap};
    for (const OutputLabel* label : Label1_)
        sizes.LabelWidth = std::max(sizes.LabelWidth, label->sizeHint().width());
    sizes.LabelWidth = std::min(
        sizes.LabelWidth,
        GroupingLayout::LabelWidthFor(room.width() - margins.left() - margins.right(), sizes.LabelHeight));

    drawing_->setFixedSize(GroupingLayout(sizes).Bounds().Width, 0);
    const int others = layout()->totalHeightForWidth(layout()->totalSizeHint().width());
    const int least = Label1_.front()->sizeHint().height();
    while (sizes.LabelHeight > least &&
           GroupingLayout::HeightFor(sizes.LabelHeight, sizes.CaptionHeight) + others > room.height())
        --sizes.LabelHeight;
    layout_ = GroupingLayout(sizes);
}

void LinkingForm::LayOutDrawing() {
    const PixelRect bounds = layout_.Bounds();
    drawing_->setFixedSize(bounds.Width, bounds.Height);
    for (std::size_t frame = 0; frame < groupFrameCount; ++frame) {
        Shape2_[frame]->setGeometry(ToQRect(layout_.Frame(frame)));
        captions_[frame]->setGeometry(ToQRect(layout_.Caption(frame)));
    }
    LayOutLabels();
}

void LinkingForm::LayOutLabels() {
    const auto rects = layout_.Labels(groups_);
    for (std::size_t output = 0; output < outputCount; ++output) {
        Label1_[output]->setGeometry(ToQRect(rects[output]));
        const QString where = groups_[output] == 0 ? tr("individual") : tr("group %1").arg(groups_[output]);
        Label1_[output]->setAccessibleName(
            tr("%1, %2").arg(NumberAndName(names_, NameKind::Output, output), where));
    }
}

std::optional<std::size_t> LinkingForm::TargetOf(std::size_t output) const {
    return layout_.FrameAround(ToPixelRect(Label1_[output]->geometry()));
}

void LinkingForm::ShowTarget(std::optional<std::size_t> target) {
    for (std::size_t frame = 0; frame < groupFrameCount; ++frame)
        Shape2_[frame]->setBackgroundRole(frame == target ? QPalette::Midlight : QPalette::Base);
}

void LinkingForm::Drop(std::size_t output) {
    ShowTarget(std::nullopt);
    if (const auto frame = TargetOf(output))
        MoveTo(output, *frame);
    else
        Label1_[output]->PutBack();
}

void LinkingForm::MoveTo(std::size_t output, std::size_t group) {
    groups_[output] = static_cast<std::int16_t>(group);
    LayOutLabels();
}

} // namespace vek
