#include "dialogs/LinkingForm.h"

#include "dialogs/DialogButtons.h"
#include "dialogs/OutputLabel.h"

#include <QDialogButtonBox>
#include <QFrame>
#include <QPushButton>
#include <QVBoxLayout>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr double designFontHeight = 13.0; // pixels at which the drawing has its design size

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

LinkingForm::LinkingForm(const LinkGroups& groups, QWidget* parent)
    : QDialog(parent), groups_(groups), layout_(fontMetrics().height() / designFontHeight) {
    setWindowTitle(tr("Output Grouping"));
    auto* drawing = new QWidget(this);
    const PixelRect bounds = layout_.Bounds();
    drawing->setFixedSize(bounds.Width, bounds.Height);
    MakeFrames(drawing);
    MakeLabels(drawing);
    LayOutLabels();

    const DialogButtons buttons = MakeDialogButtons(this, tr("&Done"));
    connect(buttons.Done, &QPushButton::clicked, this, &QDialog::accept);

    auto* column = new QVBoxLayout(this);
    column->setSizeConstraint(QLayout::SetFixedSize);
    column->addWidget(drawing);
    column->addSpacing(column->spacing());
    column->addWidget(MakeText(
        u"Label4"_s,
        tr("To link outputs into a selection group, drag output number to the desired group frame."), this));
    column->addWidget(
        MakeText(u"Label5"_s,
                 tr("To release an output from a group drag its number into the individual frame."), this));
    column->addWidget(buttons.Box);
}

void LinkingForm::MakeFrames(QWidget* drawing) {
    for (std::size_t frame = 0; frame < groupFrameCount; ++frame) {
        Shape2_[frame] = new QFrame(drawing);
        Shape2_[frame]->setObjectName(u"Shape2_%1"_s.arg(frame));
        Shape2_[frame]->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
        Shape2_[frame]->setBackgroundRole(QPalette::Base);
        Shape2_[frame]->setAutoFillBackground(true);
        Shape2_[frame]->setGeometry(ToQRect(layout_.Frame(frame)));

        QLabel* caption = frame == 0
                              ? MakeText(u"Label2"_s, tr("Individual"), drawing)
                              : MakeText(u"Label3_%1"_s.arg(frame - 1), tr("Group %1").arg(frame), drawing);
        caption->setWordWrap(false);
        caption->setAlignment(frame == 0 ? Qt::AlignCenter : Qt::AlignLeft | Qt::AlignVCenter);
        caption->setGeometry(ToQRect(layout_.Caption(frame)));
    }
}

void LinkingForm::MakeLabels(QWidget* drawing) {
    for (std::size_t output = 0; output < outputCount; ++output) {
        auto* label = new OutputLabel(static_cast<int>(output) + 1, drawing);
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

void LinkingForm::LayOutLabels() {
    const auto rects = layout_.Labels(groups_);
    for (std::size_t output = 0; output < outputCount; ++output) {
        Label1_[output]->setGeometry(ToQRect(rects[output]));
        const QString where = groups_[output] == 0 ? tr("individual") : tr("group %1").arg(groups_[output]);
        Label1_[output]->setAccessibleName(tr("Output %1, %2").arg(output + 1).arg(where));
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
