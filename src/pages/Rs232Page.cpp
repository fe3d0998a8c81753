#include "pages/Rs232Page.h"

#include "base/FixedText.h"
#include "controls/FocusGrid.h"
#include "controls/LayoutHelpers.h"
#include "controls/NameLabel.h"
#include "controls/TextConversion.h"
#include "reports/Rs232Codes.h"

#include <QFocusEvent>
#include <QGridLayout>
#include <QLabel>

#include <utility>

namespace vek {

namespace {

enum Column { NumberColumn, NameColumn, FirstCodeColumn };

constexpr int codeMargin = 3; // pixels

int CodeColumn(std::size_t command) { return FirstCodeColumn + static_cast<int>(command); }

/// A code that the keyboard has gone to is selected, ready to be copied.
class CodeLabel : public QLabel {
  public:
    using QLabel::QLabel;

  protected:
    void focusInEvent(QFocusEvent* event) override {
        QLabel::focusInEvent(event);
        if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason)
            setSelection(0, static_cast<int>(text().size()));
    }
};

} // namespace

Rs232Page::Rs232Page(QWidget* parent) : QWidget(parent) {
    auto* grid = new QGridLayout(this);
    MakeHeadings();
    for (std::size_t output = 0; output < outputCount; ++output)
        MakeRow(output);
    auto* hint =
        MakeHint(tr("n stands for a digit that the host supplies: 0 to 9 for a volume level, 1 to 8 for an "
                    "input. A mode is recalled with R and its number, R1 to R8."),
                 this);
    const int below = grid->rowCount();
    grid->addWidget(hint, below, 0, 1, grid->columnCount());
    grid->setRowStretch(below + 1, 1);
}

void Rs232Page::MakeHeadings() {
    auto* grid = static_cast<QGridLayout*>(layout());
    const auto commands = Rs232Functions();
    for (std::size_t j = 0; j < commands.size(); ++j) {
        auto* heading = new QLabel(FromConstant(TrimBlanks(commands[j].Label)), this);
        heading->setWordWrap(true);
        heading->setAlignment(Qt::AlignHCenter | Qt::AlignBottom);
        grid->addWidget(heading, 0, CodeColumn(j));
        grid->setColumnStretch(CodeColumn(j), 1);
    }
}

void Rs232Page::MakeRow(std::size_t output) {
    auto* grid = static_cast<QGridLayout*>(layout());
    const int row = static_cast<int>(output) + 1;
    grid->addWidget(new QLabel(tr("Output %1").arg(row), this), row, NumberColumn);
    names_[output] = new NameLabel(this);
    grid->addWidget(names_[output], row, NameColumn);
    const auto commands = Rs232Functions();
    for (std::size_t j = 0; j < commands.size(); ++j) {
        auto* code = new CodeLabel(FromConstant(Rs232Code(commands[j], output)), this);
        code->setObjectName(ElementName("RS232Label", codes_.size()));
        code->setAlignment(Qt::AlignCenter);
        code->setMargin(codeMargin);
        codes_.push_back(code);
        grid->addWidget(code, row, CodeColumn(j));
    }
}

void Rs232Page::ShowNames(const Names& names) {
    for (std::size_t output = 0; output < outputCount; ++output)
        names_[output]->SetName(NameOf(names, NameKind::Output, output));
}

void Rs232Page::showEvent(QShowEvent* event) {
    // A text that can be selected is a whole document; these wait until they are looked at.
    if (!std::exchange(selectable_, true)) {
        const QFont fixed = FixedFont(*this);
        auto* focus = new FocusGrid(Rs232Functions().size(), this);
        for (QLabel* code : codes_) {
            code->setFont(fixed);
            code->setTextInteractionFlags(Qt::TextSelectableByMouse);
            focus->Add(code);
        }
    }
    QWidget::showEvent(event);
}

} // namespace vek
