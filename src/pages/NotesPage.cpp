#include "pages/NotesPage.h"

#include "controls/NotesBox.h"
#include "model/Config.h"

#include <QLabel>
#include <QVBoxLayout>

namespace vek {

NotesPage::NotesPage(QWidget* parent) : QWidget(parent) {
    Text1 = new NotesBox(this);
    Text1->setObjectName(QStringLiteral("Text1"));
    Text1->setAccessibleName(tr("Notes"));
    remaining = new QLabel(this);
    remaining->setAlignment(Qt::AlignRight);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Text1, 1);
    layout->addWidget(remaining);
    connect(Text1, &NotesBox::textChanged, this, &NotesPage::ShowRemaining);
    ShowRemaining();
}

void NotesPage::ShowRemaining() {
    remaining->setText(tr("%1 of %2 characters left").arg(Text1->Remaining()).arg(notesLength));
}

} // namespace vek
