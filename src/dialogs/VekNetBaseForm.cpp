#include "dialogs/VekNetBaseForm.h"

#include "base/Numbers.h"
#include "controls/KeyFilteredLineEdit.h"
#include "controls/UpDownButtons.h"
#include "dialogs/DialogButtons.h"
#include "dialogs/Guarded.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

#include <algorithm>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr int lowestAddress = 1;
constexpr int highestAddress = 2047;
constexpr int titleCharacters = 48; // room for the title beside the buttons of the window's frame
constexpr int blockLength = 256;    ///< addresses that a unit occupies from its base on

bool IsDigit(QChar key, const QString&) { return key >= u'0' && key <= u'9'; }

} // namespace

VekNetBaseForm::VekNetBaseForm(std::int16_t base, Dialogs& dialogs, QWidget* parent)
    : QDialog(parent), dialogs(dialogs), base(base), address(base),
      Text1(new KeyFilteredLineEdit(IsDigit, this)), buttons(new UpDownButtons(this)),
      block(new QLabel(this)) {
    setWindowTitle(u"VekNet Base Address"_s);
    setMinimumWidth(fontMetrics().averageCharWidth() * titleCharacters);
    Text1->setObjectName("Text1"_L1);
    Text1->setContextMenuPolicy(Qt::PreventContextMenu);
    Text1->setAccessibleName(u"Base address"_s);
    buttons->SetAccessibleTitle(u"Base address"_s);
    auto* label = new QLabel(u"&Base address (%1 to %2):"_s.arg(lowestAddress).arg(highestAddress), this);
    label->setBuddy(Text1);
    block->setObjectName("Block"_L1);

    const DialogButtons ending = MakeDialogButtons(this, u"&Done"_s);
    auto* grid = new QGridLayout(this);
    grid->setHorizontalSpacing(0);
    grid->addWidget(label, 0, 0, 1, 2);
    grid->addWidget(Text1, 1, 0);
    grid->addWidget(buttons, 1, 1);
    grid->addWidget(block, 2, 0, 1, 2);
    grid->setRowStretch(3, 1);
    grid->addWidget(ending.Box, 4, 0, 1, 2);

    connect(Text1, &KeyFilteredLineEdit::textChanged, this, &VekNetBaseForm::ShowBlock);
    connect(Text1, &KeyFilteredLineEdit::Left, this, &VekNetBaseForm::LeaveBox);
    connect(Text1, &KeyFilteredLineEdit::EnterPressed, this, &VekNetBaseForm::Store);
    connect(buttons, &UpDownButtons::Pressed, this, &VekNetBaseForm::LeaveBox);
    connect(buttons, &UpDownButtons::Step, this, [this](int step) { SetAddress(address + step); });
    connect(ending.Done, &QPushButton::clicked, this, [this] {
        LeaveBox(); // also where the button was pressed without taking the focus
        Store();
    });
    Text1->setText(QString::number(base));
    Text1->setFocus();
}

void VekNetBaseForm::SetAddress(int value) {
    address = std::clamp(value, lowestAddress, highestAddress);
    Text1->setText(QString::number(address));
}

double VekNetBaseForm::TypedNumber() const {
    return RoundHalfEven(LenientNumber(Text1->text().toStdString()));
}

void VekNetBaseForm::LeaveBox() {
    SetAddress(static_cast<int>(std::clamp<double>(TypedNumber(), lowestAddress, highestAddress)));
}

void VekNetBaseForm::Store() {
    Guarded(dialogs, this, [this] {
        const std::int16_t typed = ToInteger(TypedNumber());
        changed = typed != base;
        base = typed;
        accept();
    });
}

void VekNetBaseForm::ShowBlock() {
    const double first = TypedNumber();
    const bool outside = first < lowestAddress || first > highestAddress;
    const QString range =
        u"Addresses %1 – %2"_s.arg(first, 0, 'f', 0).arg(first + blockLength - 1, 0, 'f', 0);
    block->setText(outside ? u"%1 to %2 are valid"_s.arg(lowestAddress).arg(highestAddress) : range);
}

void VekNetBaseForm::keyPressEvent(QKeyEvent* event) {
    const bool steps = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down;
    if (!steps || !Text1->hasFocus()) {
        QDialog::keyPressEvent(event);
        return;
    }
    LeaveBox();
    SetAddress(address + (event->key() == Qt::Key_Up ? +1 : -1));
    Text1->selectAll();
}

} // namespace vek
