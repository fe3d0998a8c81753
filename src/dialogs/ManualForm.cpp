#include "dialogs/ManualForm.h"

#include <QScreen>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr int usualCharacters = 110; // of a line
constexpr int usualLines = 40;

} // namespace

ManualForm::ManualForm(QWidget* parent) : QDialog(parent) {
    setObjectName(u"ManualForm"_s);
    setWindowTitle(tr("Manual"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto* text = new QTextBrowser(this);
    text->setOpenExternalLinks(true);
    text->setFrameShape(QFrame::NoFrame);
    text->setSource(QUrl(u"qrc:/manual/manual.md"_s), QTextDocument::MarkdownResource);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(text);
    const QSize usual(fontMetrics().averageCharWidth() * usualCharacters,
                      fontMetrics().lineSpacing() * usualLines);
    resize(usual.boundedTo(screen()->availableSize() * 9 / 10));
}

void ManualForm::ShowFor(QWidget& window) {
    auto* form = window.findChild<ManualForm*>(QString(), Qt::FindDirectChildrenOnly);
    if (form == nullptr)
        form = new ManualForm(&window);
    form->show();
    form->raise();
    form->activateWindow();
}

} // namespace vek
