#include "pages/NotesPage.h"

#include "controls/NotesBox.h"
#include "model/Config.h"

#include <QLabel>
#include <QVBoxLayout>

namespace vek {

using namespace Qt::StringLiterals;

NotesPage::NotesPage(QWidget* parent) : QWidget(parent) {
    Text1 = new NotesBox(this);
    Text1->setObjectName(u"Text1"_s);
    Text1->setAccessibleName(tr("Notes"));
    remaining_ = new QLabel(this);
    remaining_->setAlignment(Qt::AlignRight);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Text1, 1);
    layout->addWidget(remaining_);
    connect(Text1, &NotesBox::textChanged, this, &NotesPage::ShowRemaining);
    ShowRemaining();
}

void NotesPage::ShowRemaining() {
    remaining_->setText(tr("%1 of %2 characters left").arg(Text1->Remaining()).arg(notesLength));
}

} // namespace vek
