#include "pages/Rs232Page.h"

#include "base/FixedText.h"
#include "controls/LayoutHelpers.h"
#include "controls/TextConversion.h"
#include "model/Config.h"
#include "reports/Rs232Codes.h"

#include <QGridLayout>
#include <QLabel>

namespace vek {

Rs232Page::Rs232Page(QWidget* parent) : QWidget(parent) {
    auto* grid = new QGridLayout(this);
    const auto commands = Rs232Functions();
    for (std::size_t j = 0; j < commands.size(); ++j) {
        auto* heading = new QLabel(FromConstant(TrimBlanks(commands[j].Label)), this);
        heading->setWordWrap(true);
        heading->setAlignment(Qt::AlignHCenter | Qt::AlignBottom);
        grid->addWidget(heading, 0, static_cast<int>(j) + 1);
        grid->setColumnStretch(static_cast<int>(j) + 1, 1);
    }
    for (std::size_t output = 0; output < outputCount; ++output) {
        const int row = static_cast<int>(output) + 1;
        grid->addWidget(new QLabel(tr("Output %1").arg(row), this), row, 0);
        for (std::size_t j = 0; j < commands.size(); ++j) {
            auto* code = new QLabel(FromConstant(Rs232Code(commands[j], output)), this);
            code->setObjectName(ElementName("RS232Label", commands.size() * output + j));
            code->setAlignment(Qt::AlignCenter);
            code->setFrameShape(QFrame::StyledPanel);
            codes_.push_back(code);
            grid->addWidget(code, row, static_cast<int>(j) + 1);
        }
    }
    auto* hint =
        MakeHint(tr("n stands for a digit that the host supplies: 0 to 9 for a volume level, 1 to 8 for an "
                    "input. A mode is recalled with R and its number, R1 to R8."),
                 this);
    const int below = static_cast<int>(outputCount) + 1;
    grid->addWidget(hint, below, 0, 1, static_cast<int>(commands.size()) + 1);
    grid->setRowStretch(below + 1, 1);
}

void Rs232Page::showEvent(QShowEvent* event) {
    // A text that can be selected is a whole document; these wait until they are looked at.
    for (QLabel* code : codes_)
        code->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QWidget::showEvent(event);
}

} // namespace vek
