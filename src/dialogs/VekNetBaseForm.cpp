#include "dialogs/VekNetBaseForm.h"

#include "base/Numbers.h"
#include "controls/KeyFilteredLineEdit.h"
#include "controls/UpDownButtons.h"
#include "dialogs/DialogButtons.h"
#include "model/VekNetAddresses.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

#include <algorithm>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr int titleCharacters = 48; // room for the title beside the buttons of the window's frame

bool IsDigit(QChar key, const QString&) { return key >= u'0' && key <= u'9'; }

} // namespace

VekNetBaseForm::VekNetBaseForm(std::int16_t base, Dialogs& dialogs, QWidget* parent)
    : QDialog(parent), messages_(*this, dialogs), base_(base), address_(base),
      Text1_(new KeyFilteredLineEdit(IsDigit, this)), buttons_(new UpDownButtons(this)),
      block_(new QLabel(this)) {
    setWindowTitle(tr("VekNet Base Address"));
    setMinimumWidth(fontMetrics().averageCharWidth() * titleCharacters);
    Text1_->setObjectName("Text1"_L1);
    Text1_->setContextMenuPolicy(Qt::PreventContextMenu);
    Text1_->setAccessibleName(tr("Base address"));
    buttons_->SetAccessibleTitle(tr("Base address"));
    auto* label =
        new QLabel(tr("&Base address (%1 to %2):").arg(lowestVekNetAddress).arg(highestVekNetAddress), this);
    label->setBuddy(Text1_);
    block_->setObjectName("Block"_L1);

    const DialogButtons ending = MakeDialogButtons(this, tr("&Done"));
    auto* grid = new QGridLayout(this);
    grid->setHorizontalSpacing(0);
    grid->addWidget(label, 0, 0, 1, 2);
    grid->addWidget(Text1_, 1, 0);
    grid->addWidget(buttons_, 1, 1);
    grid->addWidget(block_, 2, 0, 1, 2);
    grid->setRowStretch(3, 1);
    grid->addWidget(ending.Box, 4, 0, 1, 2);

    connect(Text1_, &KeyFilteredLineEdit::textChanged, this, &VekNetBaseForm::ShowBlock);
    connect(Text1_, &KeyFilteredLineEdit::Left, this, &VekNetBaseForm::LeaveBox);
    connect(Text1_, &KeyFilteredLineEdit::EnterPressed, this, &VekNetBaseForm::Store);
    connect(buttons_, &UpDownButtons::Pressed, this, &VekNetBaseForm::LeaveBox);
    connect(buttons_, &UpDownButtons::Step, this, [this](int step) { SetAddress(address_ + step); });
    connect(ending.Done, &QPushButton::clicked, this, [this] {
        LeaveBox(); // also where the button was pressed without taking the focus
        Store();
    });
    Text1_->setText(QString::number(base));
    Text1_->setFocus();
}

void VekNetBaseForm::SetAddress(int value) {
    address_ = std::clamp(value, lowestVekNetAddress, highestVekNetAddress);
    Text1_->setText(QString::number(address_));
}

double VekNetBaseForm::TypedNumber() const {
    return RoundHalfEven(LenientNumber(Text1_->text().toStdString()));
}

void VekNetBaseForm::LeaveBox() {
    SetAddress(
        static_cast<int>(std::clamp<double>(TypedNumber(), lowestVekNetAddress, highestVekNetAddress)));
}

void VekNetBaseForm::Store() {
    Guarded(messages_, [this] {
        const std::int16_t typed = ToInteger(TypedNumber());
        changed_ = typed != base_;
        base_ = typed;
        accept();
    });
}

void VekNetBaseForm::ShowBlock() {
    const double typed = TypedNumber();
    if (typed < lowestVekNetAddress || typed > highestVekNetAddress) {
        block_->setText(tr("%1 to %2 are valid").arg(lowestVekNetAddress).arg(highestVekNetAddress));
        return;
    }
    const auto first = static_cast<int>(typed);
    block_->setText(tr("Addresses %1 – %2").arg(first).arg(LastVekNetAddress(first)));
}

void VekNetBaseForm::keyPressEvent(QKeyEvent* event) {
    const bool steps = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down;
    if (!steps || !Text1_->hasFocus()) {
        QDialog::keyPressEvent(event);
        return;
    }
    LeaveBox();
    SetAddress(address_ + (event->key() == Qt::Key_Up ? +1 : -1));
    Text1_->selectAll();
}

} // namespace vek
