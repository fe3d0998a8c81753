#include "dialogs/Dialogs.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPrintDialog>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

/// A box with a plain text; line breaks of either kind show as one line break.
int RunMessageBox(QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& text,
                  QMessageBox::StandardButtons buttons, QMessageBox::StandardButton defaultButton,
                  QMessageBox::StandardButton escapeButton) {
    QMessageBox box(parent);
    box.setObjectName("MessageBox"_L1);
    box.setIcon(icon);
    box.setWindowTitle(title);
    box.setTextFormat(Qt::PlainText);
    box.setText(QString(text).replace("\r\n"_L1, "\n"_L1));
    box.setStandardButtons(buttons);
    box.setDefaultButton(defaultButton);
    box.setEscapeButton(escapeButton);
    return box.exec();
}

void Prepare(QFileDialog& dialog, const QString& name, const QString& startAt, const FileKind& kind) {
    dialog.setObjectName(name);
    dialog.setNameFilter(kind.Filter);
    if (startAt.isEmpty())
        return;
    const QFileInfo start(startAt);
    dialog.setDirectory(start.absolutePath());
    dialog.selectFile(start.fileName());
}

QString WithSuffix(const QString& path, const QString& suffix) {
    const bool typed = suffix.isEmpty() || !QFileInfo(path).suffix().isEmpty();
    return typed ? path : path + (path.endsWith(u'.') ? u""_s : u"."_s) + suffix;
}

class BoxesOnScreen final : public Dialogs {
  public:
    void Message(QWidget* parent, MessageIcon icon, const QString& title, const QString& text) override {
        RunMessageBox(parent, icon == MessageIcon::Exclamation ? QMessageBox::Warning : QMessageBox::NoIcon,
                      title, text, QMessageBox::Ok, QMessageBox::Ok, QMessageBox::Ok);
    }

    Answer AskYesNo(QWidget* parent, const QString& title, const QString& text,
                    Answer defaultAnswer) override {
        const int pressed =
            RunMessageBox(parent, QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::No,
                          defaultAnswer == Answer::Yes ? QMessageBox::Yes : QMessageBox::No, QMessageBox::No);
        return pressed == QMessageBox::Yes ? Answer::Yes : Answer::No;
    }

    Answer AskYesNoCancel(QWidget* parent, const QString& title, const QString& text) override {
        const int pressed = RunMessageBox(parent, QMessageBox::Question, title, text,
                                          QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel,
                                          QMessageBox::Yes, QMessageBox::Cancel);
        if (pressed == QMessageBox::Yes)
            return Answer::Yes;
        return pressed == QMessageBox::No ? Answer::No : Answer::Cancel;
    }

    std::optional<QString> OpenFile(QWidget* parent, const QString& startAt, const FileKind& kind) override {
        QFileDialog dialog(parent);
        dialog.setAcceptMode(QFileDialog::AcceptOpen);
        dialog.setFileMode(QFileDialog::ExistingFile);
        Prepare(dialog, u"OpenFileDialog"_s, startAt, kind);
        if (dialog.exec() != QDialog::Accepted)
            return std::nullopt;
        return dialog.selectedFiles().value(0);
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
            proposed = WithSuffix(dialog.selectedFiles().value(0), kind.Suffix);
            if (!QFileInfo::exists(proposed) || MayReplace(parent, proposed))
                return proposed;
        }
    }

    bool ChoosePrinter(QWidget* parent, QPrinter& printer) override {
        QPrintDialog dialog(&printer, parent);
        dialog.setObjectName("PrintDialog"_L1);
        return dialog.exec() == QDialog::Accepted;
    }

  private:
    bool MayReplace(QWidget* parent, const QString& path) {
        return AskYesNo(parent, u"Save As"_s,
                        u"%1 already exists.\nDo you want to replace it?"_s.arg(QFileInfo(path).fileName()),
                        Answer::No) == Answer::Yes;
    }
};

} // namespace

Dialogs& ScreenDialogs() {
    static BoxesOnScreen boxes;
    return boxes;
}

} // namespace vek
