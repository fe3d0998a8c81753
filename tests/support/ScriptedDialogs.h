// Boxes and file dialogs for tests: a script of what must appear, in order, and how the user answers.
#pragma once

#include "dialogs/Dialogs.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <utility>

namespace vek::test {

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
    void ExpectYesNo(const QString& title, const QString& text, Answer answer,
                     Answer defaultAnswer = Answer::Yes) {
        script.push_back({YesNoBox(title, text, defaultAnswer), answer, {}, {}});
    }
    void ExpectYesNoCancel(const QString& title, const QString& text, Answer answer) {
        script.push_back({YesNoCancelBox(title, text), answer, {}, {}});
    }
    /// The user chooses this file, or cancels when there is none.
    void ExpectOpenFile(const QString& startAt, const std::optional<QString>& chosen) {
        script.push_back({FileBox(QStringLiteral("open"), startAt), Answer::Yes, chosen, {}});
    }
    void ExpectSaveFile(const QString& startAt, const std::optional<QString>& chosen) {
        script.push_back({FileBox(QStringLiteral("save"), startAt), Answer::Yes, chosen, {}});
    }
    void ExpectPrinter(bool chosen) {
        script.push_back({QStringLiteral("printer"), chosen ? Answer::Yes : Answer::Cancel, {}, {}});
    }

    /// True when every expected box has appeared.
    bool Done() const { return script.empty(); }

    void Message(QWidget*, MessageIcon icon, const QString& title, const QString& text) override {
        Next(MessageBox(icon, title, text));
    }
    Answer AskYesNo(QWidget*, const QString& title, const QString& text, Answer defaultAnswer) override {
        return Next(YesNoBox(title, text, defaultAnswer)).Given;
    }
    Answer AskYesNoCancel(QWidget*, const QString& title, const QString& text) override {
        return Next(YesNoCancelBox(title, text)).Given;
    }
    std::optional<QString> OpenFile(QWidget*, const QString& startAt, const FileKind&) override {
        return Next(FileBox(QStringLiteral("open"), startAt)).File;
    }
    std::optional<QString> SaveFile(QWidget*, const QString& startAt, const FileKind&) override {
        return Next(FileBox(QStringLiteral("save"), startAt)).File;
    }
    bool ChoosePrinter(QWidget*, QPrinter&) override {
        return Next(QStringLiteral("printer")).Given == Answer::Yes;
    }

  private:
    struct Expected {
        QString Box;
        Answer Given = Answer::Cancel;
        std::optional<QString> File;
        Meanwhile WhileOpen;
    };

    static QString MessageBox(MessageIcon icon, const QString& title, const QString& text) {
        return QStringLiteral("message (%1) \"%2\": %3")
            .arg(icon == MessageIcon::Exclamation ? QStringLiteral("exclamation") : QStringLiteral("no icon"),
                 title, text);
    }
    static QString YesNoBox(const QString& title, const QString& text, Answer defaultAnswer) {
        return QStringLiteral("yes or no, %1 by default \"%2\": %3")
            .arg(defaultAnswer == Answer::Yes ? QStringLiteral("yes") : QStringLiteral("no"), title, text);
    }
    static QString YesNoCancelBox(const QString& title, const QString& text) {
        return QStringLiteral("yes, no or cancel \"%1\": %2").arg(title, text);
    }
    static QString FileBox(const QString& what, const QString& startAt) {
        return QStringLiteral("%1 a file, starting at \"%2\"").arg(what, startAt);
    }

    Expected Next(const QString& box) {
        if (script.empty() || script.front().Box != box) {
            ADD_FAILURE() << "appeared: " << box.toStdString() << "\nexpected: "
                          << (script.empty() ? "nothing" : script.front().Box.toStdString());
            return {};
        }
        const Expected next = std::move(script.front());
        script.pop_front();
        if (next.WhileOpen)
            next.WhileOpen();
        return next;
    }

    std::deque<Expected> script;
};

} // namespace vek::test
