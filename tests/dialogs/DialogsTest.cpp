#include "dialogs/Dialogs.h"

#include "support/Windows.h"

#include <functional>

using namespace vek;
using namespace Qt::StringLiterals;

/// Acts on the dialogs that open one after the other.
static void WithDialogs(std::vector<std::function<void(QWidget&)>> acts) {
    if (acts.empty())
        return;
    QTimer::singleShot(0, qApp, [acts = std::move(acts)]() mutable {
        auto act = std::move(acts.front());
        acts.erase(acts.begin());
        WithDialogs(std::move(acts));
        act(*QApplication::activeModalWidget());
    });
}

/// Notes what a message box shows and presses a button, or closes it when there is none.
static std::function<void(QWidget&)> Press(QMessageBox::StandardButton button, QString* shown = nullptr) {
    return [=](QWidget& dialog) {
        auto& box = dynamic_cast<QMessageBox&>(dialog);
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        if (shown != nullptr)
            *shown = box.windowTitle() + u'|' + box.text() + u'|' +
                     (box.defaultButton() != nullptr ? box.defaultButton()->text().remove(u'&') : QString());
        if (button == QMessageBox::NoButton)
            box.close();
        else
            box.button(button)->click();
    };
}

TEST(ScreenDialogs, MessagesArePlainTextWithOneBreakPerLine) {
    QString shown;
    WithDialogs({Press(QMessageBox::Ok, &shown)});
    ScreenDialogs().Message(nullptr, MessageIcon::Exclamation, u"Title"_s, u"<b>one</b>\r\ntwo"_s);
    EXPECT_EQ(shown, "Title|<b>one</b>\ntwo|OK"_L1);
}

TEST(ScreenDialogs, QuestionsGiveTheAnswerAndClosingOneTheSafeAnswer) {
    const std::tuple<QMessageBox::StandardButton, Answer, Answer> cases[] = {
        {QMessageBox::Yes, Answer::Yes, Answer::Yes},
        {QMessageBox::No, Answer::No, Answer::No},
        {QMessageBox::NoButton, Answer::No, Answer::Cancel}};
    for (const auto& [button, yesNo, yesNoCancel] : cases) {
        QString shown;
        WithDialogs({Press(button, &shown)});
        EXPECT_EQ(ScreenDialogs().AskYesNo(nullptr, u"T"_s, u"?"_s, Answer::No), yesNo);
        EXPECT_EQ(shown, "T|?|No"_L1);
        WithDialogs({Press(button, &shown)});
        EXPECT_EQ(ScreenDialogs().AskYesNoCancel(nullptr, u"T"_s, u"?"_s), yesNoCancel);
        EXPECT_EQ(shown, "T|?|Yes"_L1);
    }
}

struct FileDialogsTest : testing::Test {
    static std::function<void(QWidget&)> Choose(const QString& name) {
        return [=](QWidget& dialog) {
            auto& edit = Child<QLineEdit>(dialog, "fileNameEdit");
            edit.setText(name);
            QTest::keyClick(&edit, name.isEmpty() ? Qt::Key_Escape : Qt::Key_Return);
        };
    }
    QString Path(const QString& name) const { return folder.filePath(name); }

    QTemporaryDir folder;
    const FileKind kind{u"Vorn Matrix File (*.VMC)"_s, u"VMC"_s};
};

TEST_F(FileDialogsTest, SavingAddsTheSuffixWhenNoneIsTyped) {
    const std::pair<QString, QString> cases[] = {{u"hall"_s, u"hall.VMC"_s},
                                                 {u"hall."_s, u"hall.VMC"_s},
                                                 {u"hall.vmc"_s, u"hall.vmc"_s},
                                                 {u"Hall v1.2"_s, u"Hall v1.2.VMC"_s},
                                                 {u"the \"A\" hall"_s, u"the \"A\" hall.VMC"_s}};
    for (const auto& [typed, saved] : cases) {
        WithDialogs({[&](QWidget& dialog) {
            EXPECT_EQ(Child<QLineEdit>(dialog, "fileNameEdit").text(), "old.VMC"_L1);
            Choose(typed)(dialog);
        }});
        EXPECT_EQ(ScreenDialogs().SaveFile(nullptr, Path(u"old.VMC"_s), kind), Path(saved));
    }
    WithDialogs({Choose({})});
    EXPECT_EQ(ScreenDialogs().SaveFile(nullptr, Path(u"old.VMC"_s), kind), std::nullopt);
}

TEST_F(FileDialogsTest, AsksBeforeReplacingAFileAndOpensIt) {
    ASSERT_TRUE(QFile(Path(u"hall.VMC"_s)).open(QFile::WriteOnly));
    QString shown;
    WithDialogs(
        {Choose(u"hall"_s), Press(QMessageBox::No, &shown), Choose(u"hall"_s), Press(QMessageBox::Yes)});
    EXPECT_EQ(ScreenDialogs().SaveFile(nullptr, Path(u"x.VMC"_s), kind), Path(u"hall.VMC"_s));
    EXPECT_EQ(shown, "Save As|hall.VMC already exists.\nDo you want to replace it?|No"_L1);

    WithDialogs({Choose(u"hall.VMC"_s)});
    EXPECT_EQ(ScreenDialogs().OpenFile(nullptr, Path(u"hall.VMC"_s), kind), Path(u"hall.VMC"_s));
    WithDialogs({Choose({})});
    EXPECT_EQ(ScreenDialogs().OpenFile(nullptr, {}, kind), std::nullopt);
}
