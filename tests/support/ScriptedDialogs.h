// Boxes and file dialogs for tests: a script of what must appear, in order, and how the user answers.
#pragma once

#include "dialogs/Dialogs.h"

#include <QPointer>
#include <QPrinter>
#include <QTimer>

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <memory>
#include <utility>

namespace vek::test {

using namespace Qt::StringLiterals;

/// Fails the test when a box appears that the script does not hold next, and at its end when boxes are left.
class ScriptedDialogs final : public Dialogs {
  public:
    /// Something the test does while the box is open.
    using Meanwhile = std::function<void()>;

    ScriptedDialogs() = default;
    ScriptedDialogs(const ScriptedDialogs&) = delete;
    ScriptedDialogs& operator=(const ScriptedDialogs&) = delete;
    ~ScriptedDialogs() override {
        for (const Expected& left : script)
            ADD_FAILURE() << "did not appear: " << left.Box.toStdString();
    }

    void ExpectMessage(const QString& title, const QString& text, MessageIcon icon = MessageIcon::Exclamation,
                       Meanwhile meanwhile = {}) {
        script.push_back({MessageBox(icon, title, text), Answer::Yes, {}, std::move(meanwhile)});
    }
    /// A message of a failure while online; the user goes on or presses Disconnect.
    void ExpectFailure(const QString& text, bool disconnects = false, Meanwhile meanwhile = {}) {
        script.push_back({MessageBox(MessageIcon::Exclamation, u"Error!"_s, text, u"Disconnect"_s),
                          disconnects ? Answer::No : Answer::Yes,
                          {},
                          std::move(meanwhile)});
    }
    void ExpectYesNo(const QString& title, const QString& text, Answer answer,
                     Answer defaultAnswer = Answer::Yes) {
        script.push_back({YesNoBox(title, text, defaultAnswer), answer, {}, {}});
    }
    void ExpectYesNoCancel(const QString& title, const QString& text, Answer answer) {
        script.push_back({YesNoCancelBox(title, text), answer, {}, {}});
    }
    /// The user chooses this file, or cancels when there is none.
    void ExpectOpenFile(const QString& startAt, const std::optional<QString>& chosen) {
        script.push_back({FileBox(u"open"_s, startAt), Answer::Yes, chosen, {}});
    }
    void ExpectSaveFile(const QString& startAt, const std::optional<QString>& chosen) {
        script.push_back({FileBox(u"save"_s, startAt), Answer::Yes, chosen, {}});
    }
    void ExpectPrinter(bool chosen) {
        script.push_back({u"printer"_s, chosen ? Answer::Yes : Answer::Cancel, {}, {}});
    }

    /// Without a script: is told of every box that appears, which is then closed, a question with No.
    std::function<void(const QString& box)> Seen;
    /// With it, file dialogs choose this file.
    std::optional<QString> SeenFile;

    /// What the last question that a command waited for was about.
    QString LastAbout;
    /// The name of what was to be printed last.
    QString LastPrinted;

    /// True when every expected box has appeared.
    bool Done() const { return script.empty(); }

    void Message(QWidget*, MessageIcon icon, const QString& title, const QString& text) override {
        Next(MessageBox(icon, title, text));
    }
    Answer AskYesNo(QWidget*, const QString& title, const QString& text, Answer defaultAnswer,
                    const QString& about) override {
        LastAbout = about;
        return Next(YesNoBox(title, text, defaultAnswer)).Given;
    }
    Answer AskYesNoCancel(QWidget*, const QString& title, const QString& text) override {
        return Next(YesNoCancelBox(title, text)).Given;
    }
    std::optional<QString> OpenFile(QWidget*, const QString& startAt, const FileKind&) override {
        return Next(FileBox(u"open"_s, startAt)).File;
    }
    std::optional<QString> SaveFile(QWidget*, const QString& startAt, const FileKind&) override {
        return Next(FileBox(u"save"_s, startAt)).File;
    }
    std::unique_ptr<OpenBox> OpenMessage(QWidget*, MessageIcon icon, const QString& title,
                                         const QString& text, const QString& other,
                                         BoxClosed closed) override {
        if (Seen) {
            Seen(MessageBox(icon, title, text));
            return Open({{}, Answer::Yes, {}, {}}, closed);
        }
        return Open(Take(MessageBox(icon, title, text, other)), closed);
    }
    std::unique_ptr<OpenBox> OpenYesNo(QWidget*, const QString& title, const QString& text,
                                       Answer defaultAnswer, BoxClosed closed) override {
        return Open(Take(YesNoBox(title, text, defaultAnswer)), closed);
    }
    /// True while a box is open that its caller does not wait for.
    bool AnyOpen() const { return open > 0; }

    bool ChoosePrinter(QWidget*, QPrinter& printer) override {
        LastPrinted = printer.docName();
        return Next(u"printer"_s).Given == Answer::Yes;
    }

  private:
    struct Expected {
        QString Box;
        Answer Given = Answer::Cancel;
        std::optional<QString> File;
        Meanwhile WhileOpen;
    };

    static QString MessageBox(MessageIcon icon, const QString& title, const QString& text,
                              const QString& other = {}) {
        return u"message (%1) \"%2\": %3"_s.arg(
                   icon == MessageIcon::Exclamation ? u"exclamation"_s : u"no icon"_s, title, text) +
               (other.isEmpty() ? QString() : u" (or %1)"_s.arg(other));
    }
    static QString YesNoBox(const QString& title, const QString& text, Answer defaultAnswer) {
        return u"yes or no, %1 by default \"%2\": %3"_s.arg(defaultAnswer == Answer::Yes ? u"yes"_s : u"no"_s,
                                                            title, text);
    }
    static QString YesNoCancelBox(const QString& title, const QString& text) {
        return u"yes, no or cancel \"%1\": %2"_s.arg(title, text);
    }
    static QString FileBox(const QString& what, const QString& startAt) {
        return u"%1 a file, starting at \"%2\""_s.arg(what, startAt);
    }

    /// A box that the user closes as soon as events run.
    class ScriptedBox final : public OpenBox {
      public:
        ScriptedBox(int& open, const Expected& expected, const BoxClosed& closed) : open_(open) {
            ++open_;
            QTimer::singleShot(0, &self_, [expected, closed, self = QPointer(&self_)] {
                if (expected.WhileOpen)
                    expected.WhileOpen();
                if (self)
                    closed(expected.Given);
            });
        }
        ~ScriptedBox() override { --open_; }

      private:
        int& open_;
        QObject self_;
    };
    std::unique_ptr<OpenBox> Open(const Expected& expected, const BoxClosed& closed) {
        return std::make_unique<ScriptedBox>(open, expected, closed);
    }

    Expected Next(const QString& box) {
        Expected next = Take(box);
        if (next.WhileOpen)
            next.WhileOpen();
        return next;
    }
    Expected Take(const QString& box) {
        if (Seen) {
            Seen(box);
            return {box, Answer::No, SeenFile, {}};
        }
        if (script.empty() || script.front().Box != box) {
            ADD_FAILURE() << "appeared: " << box.toStdString() << "\nexpected: "
                          << (script.empty() ? "nothing" : script.front().Box.toStdString());
            return {};
        }
        Expected next = std::move(script.front());
        script.pop_front();
        return next;
    }

    std::deque<Expected> script;
    int open = 0;
};

} // namespace vek::test
