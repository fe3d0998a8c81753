#include "pages/NotesPage.h"

#include "controls/NotesBox.h"
#include "model/Config.h"
#include "pages/NamesTable.h"

#include <QHBoxLayout>
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
    Names = new NamesTable(this);
    auto* text = new QVBoxLayout;
    text->addWidget(Text1, 1);
    text->addWidget(remaining_);
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(text, 2);
    layout->addWidget(Names, 1);
    connect(Text1, &NotesBox::textChanged, this, [this] {
        ShowRemaining();
        Names->SetNotes(Text1->Bytes());
    });
    connect(Names, &NamesTable::Edited, Text1, &NotesBox::Replace);
    ShowRemaining();
}

void NotesPage::ShowRemaining() {
    remaining_->setText(tr("%1 of %2 characters left").arg(Text1->Remaining()).arg(notesLength));
}

} // namespace vek
