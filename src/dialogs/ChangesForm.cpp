#include "dialogs/ChangesForm.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr int usualCharacters = 72;
constexpr int usualLines = 16;

} // namespace

ChangesForm::ChangesForm(const QString& title, const QStringList& lines, QWidget* parent) : QDialog(parent) {
    setObjectName(u"ChangesForm"_s);
    setWindowTitle(title);
    auto* entries = new QListWidget(this);
    entries->setObjectName(u"Entries"_s);
    entries->setAccessibleName(title);
    entries->setUniformItemSizes(true);
    entries->setSelectionMode(QAbstractItemView::ExtendedSelection);
    entries->addItems(lines.isEmpty() ? QStringList{tr("No differences")} : lines);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    auto* copy = buttons->addButton(tr("&Copy as text"), QDialogButtonBox::ActionRole);
    copy->setObjectName(u"CopyText"_s);
    copy->setAutoDefault(false);
    connect(copy, &QPushButton::clicked, this,
            [lines] { QApplication::clipboard()->setText(lines.join(u'\n')); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* column = new QVBoxLayout(this);
    column->addWidget(entries);
    column->addWidget(buttons);
    resize(fontMetrics().averageCharWidth() * usualCharacters, fontMetrics().lineSpacing() * usualLines);
}

} // namespace vek
