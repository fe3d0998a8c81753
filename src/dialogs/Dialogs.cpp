#include "dialogs/Dialogs.h"

#include "controls/LayoutHelpers.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPrintDialog>
#include <QPushButton>

#include <utility>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

struct BoxContents {
    QMessageBox::Icon Icon;
    QString Title;
    QString Text; ///< plain; line breaks of either kind show as one line break
    QMessageBox::StandardButtons Buttons;
    QMessageBox::StandardButton Default;
    QMessageBox::StandardButton Escape;
    QString About = {}; ///< below the text, smaller
    QString Other = {}; ///< a button beside the usual ones
};

BoxContents MessageContents(MessageIcon icon, const QString& title, const QString& text) {
    return {icon == MessageIcon::Exclamation ? QMessageBox::Warning : QMessageBox::NoIcon,
            title,
            text,
            QMessageBox::Ok,
            QMessageBox::Ok,
            QMessageBox::Ok};
}

BoxContents YesNoContents(const QString& title, const QString& text, Answer defaultAnswer) {
    return {QMessageBox::Question,
            title,
            text,
            QMessageBox::Yes | QMessageBox::No,
            defaultAnswer == Answer::Yes ? QMessageBox::Yes : QMessageBox::No,
            QMessageBox::No};
}

void Fill(QMessageBox& box, const BoxContents& contents) {
    box.setObjectName("MessageBox"_L1);
    box.setIcon(contents.Icon);
    box.setWindowTitle(contents.Title);
    box.setTextFormat(Qt::PlainText);
    box.setText(QString(contents.Text).replace("\r\n"_L1, "\n"_L1));
    box.setInformativeText(PlainToolTip(contents.About));
    box.setStandardButtons(contents.Buttons);
    box.setDefaultButton(contents.Default);
    box.setEscapeButton(contents.Escape);
    if (!contents.Other.isEmpty())
        box.addButton(contents.Other, QMessageBox::DestructiveRole)->setObjectName("OtherButton"_L1);
}

Answer AnswerOf(const QMessageBox& box, int pressed) {
    if (pressed == QMessageBox::Cancel)
        return Answer::Cancel;
    QAbstractButton* clicked = box.clickedButton();
    const bool isOther = clicked != nullptr && box.standardButton(clicked) == QMessageBox::NoButton;
    return pressed == QMessageBox::No || isOther ? Answer::No : Answer::Yes;
}

Answer Execute(QWidget* parent, const BoxContents& contents) {
    QMessageBox box(parent);
    Fill(box, contents);
    const int pressed = box.exec();
    return AnswerOf(box, pressed);
}

class OpenMessageBox final : public OpenBox {
  public:
    OpenMessageBox(QWidget* parent, const BoxContents& contents, BoxClosed closed)
        : box_(new QMessageBox(parent)) {
        Fill(*box_, contents);
        QObject::connect(box_, &QDialog::finished, box_,
                         [box = box_, closed = std::move(closed)](int pressed) {
                             // Who is told may destroy this, and with it the box and what is captured here.
                             const BoxClosed tell = closed;
                             tell(AnswerOf(*box, pressed));
                         });
        if (contents.Other.isEmpty()) {
            box_->open();
        } else {
            box_->setModal(false);
            box_->show();
        }
    }
    ~OpenMessageBox() override {
        if (box_ == nullptr)
            return;
        box_->disconnect();
        box_->hide();
        box_->deleteLater();
    }

  private:
    QPointer<QMessageBox> box_; ///< gone already when its parent is
};

void Prepare(QFileDialog& dialog, const QString& name, const QString& startAt, const FileKind& kind) {
    dialog.setObjectName(name);
    dialog.setNameFilter(kind.Filter);
    if (startAt.isEmpty())
        return;
    const QFileInfo start(startAt);
    dialog.setDirectory(start.absolutePath());
    dialog.selectFile(start.fileName());
}

/// "Hall v1.2" is a whole name, not one of the suffix "2".
QString WithSuffix(const QString& path, const QString& suffix) {
    if (suffix.isEmpty() || path.endsWith(u'.' + suffix, Qt::CaseInsensitive))
        return path;
    return path + (path.endsWith(u'.') ? u""_s : u"."_s) + suffix;
}

/// The chosen file. Qt takes quotes for the marks around several names: a name that has some is taken as it
/// was typed.
QString ChosenFile(const QFileDialog& dialog) {
    const auto* typed = dialog.findChild<QLineEdit*>(u"fileNameEdit"_s);
    if (typed != nullptr && typed->text().contains(u'"'))
        return dialog.directory().absoluteFilePath(typed->text());
    return dialog.selectedFiles().value(0);
}

class BoxesOnScreen final : public Dialogs {
  public:
    void Message(QWidget* parent, MessageIcon icon, const QString& title, const QString& text) override {
        Execute(parent, MessageContents(icon, title, text));
    }

    Answer AskYesNo(QWidget* parent, const QString& title, const QString& text, Answer defaultAnswer,
                    const QString& about) override {
        BoxContents contents = YesNoContents(title, text, defaultAnswer);
        contents.About = about;
        return Execute(parent, contents);
    }

    Answer AskYesNoCancel(QWidget* parent, const QString& title, const QString& text) override {
        return Execute(parent, {QMessageBox::Question, title, text,
                                QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes,
                                QMessageBox::Cancel});
    }

    std::unique_ptr<OpenBox> OpenMessage(QWidget* parent, MessageIcon icon, const QString& title,
                                         const QString& text, const QString& other,
                                         BoxClosed closed) override {
        BoxContents contents = MessageContents(icon, title, text);
        contents.Other = other;
        return std::make_unique<OpenMessageBox>(parent, contents, std::move(closed));
    }

    std::unique_ptr<OpenBox> OpenYesNo(QWidget* parent, const QString& title, const QString& text,
                                       Answer defaultAnswer, BoxClosed closed) override {
        return std::make_unique<OpenMessageBox>(parent, YesNoContents(title, text, defaultAnswer),
                                                std::move(closed));
    }

    std::optional<QString> OpenFile(QWidget* parent, const QString& startAt, const FileKind& kind) override {
        QFileDialog dialog(parent);
        dialog.setAcceptMode(QFileDialog::AcceptOpen);
        dialog.setFileMode(QFileDialog::ExistingFile);
        Prepare(dialog, u"OpenFileDialog"_s, startAt, kind);
        if (dialog.exec() != QDialog::Accepted)
            return std::nullopt;
        return ChosenFile(dialog);
    }

    std::optional<QString> SaveFile(QWidget* parent, const QString& startAt, const FileKind& kind) override {
        QString proposed = startAt;
        for (;;) {
            QFileDialog dialog(parent);
            dialog.setAcceptMode(QFileDialog::AcceptSave);
            dialog.setFileMode(QFileDialog::AnyFile);
            // A desktop's own dialog would ask about the name as typed. The file at stake is the one with the
            // suffix, so the question is asked here.
            dialog.setOption(QFileDialog::DontConfirmOverwrite);
            Prepare(dialog, u"SaveFileDialog"_s, proposed, kind);
            if (dialog.exec() != QDialog::Accepted)
                return std::nullopt;
            proposed = WithSuffix(ChosenFile(dialog), kind.Suffix);
            if (!QFileInfo::exists(proposed) || MayReplace(parent, proposed))
                return proposed;
        }
    }

    bool ChoosePrinter(QWidget* parent, QPrinter& printer) override {
        QPrintDialog dialog(&printer, parent);
        // The report is printed whole, in the order of its pages.
        dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
        dialog.setOption(QAbstractPrintDialog::PrintSelection, false);
        dialog.setOption(QAbstractPrintDialog::PrintCurrentPage, false);
        dialog.setObjectName("PrintDialog"_L1);
        return dialog.exec() == QDialog::Accepted;
    }

  private:
    bool MayReplace(QWidget* parent, const QString& path) {
        return AskYesNo(parent, QObject::tr("Save As"),
                        QObject::tr("%1 already exists.\nDo you want to replace it?")
                            .arg(QFileInfo(path).fileName()),
                        Answer::No, {}) == Answer::Yes;
    }
};

} // namespace

Dialogs& ScreenDialogs() {
    static BoxesOnScreen boxes;
    return boxes;
}

} // namespace vek
