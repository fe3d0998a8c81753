// The window of the programming history, and what its buttons do.
#include "editor/ProgrammingFixture.h"

#include "model/ConfigFile.h"
#include "support/ProgrammedHall.h"
#include "support/SimulatedLine.h"

#include <QClipboard>
#include <QListWidget>
#include <QStatusBar>

using namespace vek;
using namespace vek::test;
using namespace Qt::StringLiterals;

namespace {

class History : public Programming {
  protected:
    /// Two attempts, of which the older one sent `sent`.
    History() {
        sent.VekNetBase = 900;
        sent.Modes[2].OutputLevels[3].StepLevel = 2.0F;
        JournalEntry entry = programmedHall;
        entry.User.clear();
        Keep(sent, entry);
        Keep({}, {.Time = 1'795'343'105, .Port = "COM2", .Result = AttemptResult::NoAnswer, .Blocks = 273});
        Restart();
        Trigger(u"ProgrammingHistory"_s);
        history = Find(u"HistoryWindow"_s);
        entries = history->findChild<QListWidget*>(u"Entries"_s);
    }
    void Keep(const MatrixConfig& config, const JournalEntry& entry) {
        ProgrammingJournal(services.StateFolder).Enter(entry, EncodeRecord(config));
    }
    void Press(const char* button) {
        history->findChild<QAbstractButton*>(QString::fromLatin1(button))->click();
        Settle();
    }
    bool Enabled(const char* button) const {
        return history->findChild<QAbstractButton*>(QString::fromLatin1(button))->isEnabled();
    }
    QString Told() const { return window->statusBar()->currentMessage(); }
    MatrixConfig sent;
    QWidget* history;
    QListWidget* entries;
};

} // namespace

TEST_F(History, ListsTheAttemptsFromTheNewest) {
    ASSERT_EQ(entries->count(), 2);
    EXPECT_TRUE(entries->item(1)->text().startsWith(
        u"2026-11-22 11:24:05  programmed          hall.VMC   COM1 (ttyUSB0)  Matrix Vek 2.5  273 blocks "_s));
    EXPECT_EQ(
        entries->item(1)->toolTip(),
        u"File: /home/a/hall.VMC\nSerial number of the adapter: FT1\nSHA-256 of the image: 00ff\nComputer: desk"_s);
    Press("CopyText");
    EXPECT_EQ(QApplication::clipboard()->text(),
              entries->item(0)->text() + u'\n' + entries->item(1)->text() + u'\n');
    entries->setCurrentRow(1);
    Keep({}, {.Time = 1'795'343'205});
    Trigger(u"ProgrammingHistory"_s);
    EXPECT_EQ(entries->count(), 3);
    EXPECT_EQ(entries->currentRow(), 2) << "the same attempt";
    std::filesystem::remove_all(folder.Path("downloads"));
    Trigger(u"ProgrammingHistory"_s);
    EXPECT_EQ(entries->item(0)->text(), u"No device was programmed yet"_s);
    EXPECT_FALSE(Enabled("OpenCopy") || Enabled("ProgramAgain") || Enabled("WhatChanged") ||
                 Enabled("ExportEntry"));
    WriteText(folder.Path("downloads"), "no folder");
    Trigger(u"ProgrammingHistory"_s);
    EXPECT_EQ(entries->item(0)->text(), u"The programming history cannot be read: Not a directory"_s);
}

TEST_F(History, OpensACopyWithoutAName) {
    Config.VekNetBase = 700;
    const auto ask = [this](Answer answer) {
        boxes.ExpectYesNoCancel(u"Config Changed!"_s,
                                u"Current cofiguration has changed,\r\nDo you wish to save changes?"_s,
                                answer);
    };
    entries->setCurrentRow(1);
    ask(Answer::Cancel);
    Press("OpenCopy");
    EXPECT_EQ(Config.VekNetBase, 700);
    ask(Answer::No);
    QTest::keyClick(entries, Qt::Key_Return);
    Settle();
    EXPECT_EQ(Config, sent);
    EXPECT_EQ(CurrentFileName, "");
    EXPECT_FALSE(ConfigDiffers());
    EXPECT_EQ(Told(), u"This is a copy of hall.VMC of 2026-11-22 11:24: Save As keeps it"_s);
}

TEST_F(History, NamesAnEntryThatCannotBeRead) {
    const std::string path = ProgrammingJournal(services.StateFolder).FromNewest().back().ConfigPath();
    WriteText(path, "short");
    entries->setCurrentRow(1);
    for (const char* button : {"WhatChanged", "OpenCopy"}) {
        boxes.ExpectMessage(
            u"Error!"_s,
            u"hall.VMC of 2026-11-22 11:24 cannot be read: shorter than a configuration: 5 of 6238 "
            "bytes\n\n%1"_s.arg(QString::fromStdString(path)));
        Press(button);
    }
}

TEST_F(History, ExportsTheConfigurationAndItsText) {
    entries->setCurrentRow(1);
    const auto kept = ProgrammingJournal(services.StateFolder).FromNewest().back();
    const QString proposed =
        QString::fromStdString(std::filesystem::path(kept.ConfigPath()).filename().string());
    const QString target = QString::fromStdString(folder.Path("out.VMC"));
    boxes.ExpectSaveFile(proposed, std::nullopt);
    Press("ExportEntry");
    WriteText(folder.Path("out.json"), "mine");
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        boxes.ExpectSaveFile(proposed, target);
        boxes.ExpectYesNo(u"Export"_s, u"Do you wish to replace this file?"_s, answer, Answer::No);
        Press("ExportEntry");
        EXPECT_EQ(boxes.LastAbout, QString::fromStdString(folder.Path("out.json")));
        EXPECT_EQ(std::filesystem::exists(folder.Path("out.VMC")), answer == Answer::Yes);
    }
    EXPECT_EQ(LoadConfig(folder.Path("out.VMC")), sent);
    EXPECT_EQ(ReadText(folder.Path("out.json")), ReadText(kept.TextPath()));
    const QString missing = QString::fromStdString(folder.Path("missing/out.VMC"));
    boxes.ExpectSaveFile(proposed, missing);
    boxes.ExpectMessage(u"Error!"_s, u"Nothing was written: %1: No such file or directory"_s.arg(missing));
    Press("ExportEntry");
    std::filesystem::remove(folder.Path("out.json"));
    std::filesystem::create_directory(folder.Path("out.json"));
    boxes.ExpectSaveFile(proposed, target);
    boxes.ExpectYesNo(u"Export"_s, u"Do you wish to replace this file?"_s, Answer::Yes, Answer::No);
    boxes.ExpectMessage(u"Error!"_s, u"%1 is exported, but not its text: %2: is a folder"_s.arg(
                                         target, QString::fromStdString(folder.Path("out.json"))));
    Press("ExportEntry");
}

TEST_F(History, WhatReplacesTheConfigurationWaitsWhileOnline) {
    const SimulatedDevice unit(port);
    Trigger(u"ONLINE"_s);
    Click(u"OnlineSearch"_s);
    boxes.ExpectMessage(u"Online"_s, u"Matrix Vek is now online."_s, MessageIcon::None);
    Click(u"OnlinePort_0"_s);
    EXPECT_FALSE(Enabled("OpenCopy") || Enabled("ProgramAgain"));
    EXPECT_TRUE(Enabled("WhatChanged") && Enabled("ExportEntry"));
    Click(u"OnlineCancel"_s);
    EXPECT_TRUE(Enabled("OpenCopy") && Enabled("ProgramAgain"));
}
