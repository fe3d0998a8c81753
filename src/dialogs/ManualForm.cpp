#include "dialogs/ManualForm.h"

#include <QDesktopServices>
#include <QImage>
#include <QScreen>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr int usualCharacters = 110; // of a line
constexpr int usualLines = 40;

/// The name of a heading in links: "When something does not work" is "when-something-does-not-work".
QString AnchorOf(const QString& heading) {
    QString anchor;
    for (const QChar character : heading.toLower()) {
        if (character.isLetterOrNumber())
            anchor += character;
        else if (character == u' ' || character == u'-')
            anchor += u'-';
    }
    return anchor;
}

/// Shows pictures no wider than itself, and follows links to headings.
class ManualText : public QTextBrowser {
  public:
    explicit ManualText(QWidget* parent) : QTextBrowser(parent) {
        setOpenLinks(false);
        setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
        connect(this, &QTextBrowser::anchorClicked, this, &ManualText::Follow);
    }

    QVariant loadResource(int type, const QUrl& name) override {
        const QVariant resource = QTextBrowser::loadResource(type, name);
        if (type != QTextDocument::ImageResource)
            return resource;
        const QImage picture = resource.canConvert<QImage>() ? resource.value<QImage>()
                                                             : QImage::fromData(resource.toByteArray());
        const int widest = viewport()->width() - 2 * static_cast<int>(document()->documentMargin());
        return picture.width() > widest ? picture.scaledToWidth(widest, Qt::SmoothTransformation) : picture;
    }

  private:
    void Follow(const QUrl& link) {
        if (!link.hasFragment()) {
            QDesktopServices::openUrl(link);
            return;
        }
        for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
            if (block.blockFormat().headingLevel() == 0 || AnchorOf(block.text()) != link.fragment())
                continue;
            QTextCursor start(block);
            setTextCursor(start);
            verticalScrollBar()->setValue(verticalScrollBar()->value() + cursorRect().top());
            return;
        }
    }
};

} // namespace

ManualForm::ManualForm(QWidget* parent) : QDialog(parent) {
    setObjectName(u"ManualForm"_s);
    setWindowTitle(tr("Manual"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto* text = new ManualText(this);
    text->setFrameShape(QFrame::NoFrame);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(text);
    const QSize usual(fontMetrics().averageCharWidth() * usualCharacters,
                      fontMetrics().lineSpacing() * usualLines);
    resize(usual.boundedTo(screen()->availableSize() * 9 / 10));
    // The pictures fit the width that it has now.
    layout->activate();
    text->setSource(QUrl(u"qrc:/manual/manual.md"_s), QTextDocument::MarkdownResource);
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
