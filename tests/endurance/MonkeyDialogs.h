// The program's own boxes, and file dialogs that are answered at random.
#pragma once

#include "dialogs/Dialogs.h"
#include "support/TestData.h"

#include <QPrinter>

#include <functional>
#include <random>

namespace vek::test {

class MonkeyDialogs final : public Dialogs {
  public:
    explicit MonkeyDialogs(std::mt19937& random) : random_(random) {
        WriteText(folder_.Path("short.VMC"), "not a configuration");
        for (const std::string& number : SampleNumbers())
            WriteText(folder_.Path("sample" + number + ".VMC"), ReadText(DataPath(number + ".VMC")));
    }

    /// A sample, which may be written over.
    QString AnySample() const { return Path("sample" + SampleNumbers()[random_() % 8] + ".VMC"); }
    /// A file of this run.
    QString Path(const std::string& name) const { return QString::fromStdString(folder_.Path(name)); }

    /// Chosen in the next file dialog instead of a random one; nothing is saved before.
    std::optional<QString> NextFile;

    void Message(QWidget* parent, MessageIcon icon, const QString& title, const QString& text) override {
        ScreenDialogs().Message(parent, icon, title, text);
    }
    Answer AskYesNo(QWidget* parent, const QString& title, const QString& text, Answer defaultAnswer,
                    const QString& about) override {
        return ScreenDialogs().AskYesNo(parent, title, text, defaultAnswer, about);
    }
    Answer AskYesNoCancel(QWidget* parent, const QString& title, const QString& text) override {
        return NextFile ? Answer::No : ScreenDialogs().AskYesNoCancel(parent, title, text);
    }
    std::unique_ptr<OpenBox> OpenMessage(QWidget* parent, MessageIcon icon, const QString& title,
                                         const QString& text, const QString& other,
                                         BoxClosed closed) override {
        return ScreenDialogs().OpenMessage(parent, icon, title, text, other, std::move(closed));
    }
    std::unique_ptr<OpenBox> OpenYesNo(QWidget* parent, const QString& title, const QString& text,
                                       Answer defaultAnswer, BoxClosed closed) override {
        return ScreenDialogs().OpenYesNo(parent, title, text, defaultAnswer, std::move(closed));
    }
    std::optional<QString> OpenFile(QWidget*, const QString&, const FileKind&) override {
        auto chosen = Chosen({"1.VMC", "2.VMC", "short.VMC", "missing.VMC"}, true);
        return chosen;
    }
    std::optional<QString> SaveFile(QWidget*, const QString&, const FileKind& kind) override {
        const std::string suffix = '.' + kind.Suffix.toStdString();
        return Chosen({"1" + suffix, "2" + suffix, "no-folder/3" + suffix}, false);
    }
    bool ChoosePrinter(QWidget*, QPrinter& printer) override {
        printer.setOutputFileName(Path(random_() % 4 != 0 ? "report.pdf" : "no-folder/report.pdf"));
        return random_() % 2 != 0;
    }

  private:
    std::optional<QString> Chosen(const std::vector<std::string>& names, bool samplesToo) {
        if (NextFile)
            return std::exchange(NextFile, {});
        if (random_() % 4 == 0)
            return std::nullopt;
        if (samplesToo && random_() % 2 == 0)
            return AnySample();
        return Path(names[random_() % names.size()]);
    }

    std::mt19937& random_;
    TemporaryFolder folder_;
};

} // namespace vek::test
