// What is not saved outlives the window, and what other programs write is not overwritten unseen.
#include "editor/EditorFixture.h"

#include "controls/NoticeBar.h"
#include "model/ConfigFile.h"
#include "support/FailingDisk.h"
#include "userstate/RecoveryCopies.h"

using namespace vek;
using namespace vek::test;

namespace {

class Recovery : public EditorTest {
  protected:
    Recovery() {
        services.StateFolder = folder.Path("state");
        std::filesystem::copy_file(DataPath("02.VMC"), hall);
        Start();
    }
    /// A new editor, as after the one before has ended.
    void Start(const std::string& commandLine = {}) {
        Restart(commandLine);
        window->Timer4_Tick();
    }
    void Open() {
        boxes.ExpectOpenFile({}, QString::fromStdString(hall));
        Trigger(u"OPEN"_s);
    }
    void Save() {
        ExpectSaved(u"hall.VMC"_s);
        Trigger(u"SAVE"_s);
    }
    void Raise() {
        ShowTab(OutputTrimsTab);
        PressKnob(u"OutputLevelTrim_0"_s, Qt::Key_Up);
    }
    /// What the copies of ended and running editors hold.
    std::vector<std::string> Copies() {
        window->Timer1_Tick();
        std::vector<std::string> contents;
        std::error_code error;
        for (const auto& entry : std::filesystem::directory_iterator(folder.Path("state/recovery"), error)) {
            std::ifstream copy(entry.path(), std::ios::binary); // may just be removed
            if (copy && entry.path().extension() == ".VMC")
                contents.emplace_back(std::istreambuf_iterator<char>(copy), std::istreambuf_iterator<char>());
        }
        return contents;
    }
    bool AwaitCopies(std::size_t count) {
        return QTest::qWaitFor([&] { return Copies().size() == count; });
    }
    /// The text of a bar, empty while it is hidden.
    QString Bar(const char* name) {
        auto* bar = Find<NoticeBar>(QString::fromLatin1(name));
        return bar->isVisible() ? bar->Text() : QString();
    }
    QString RecoveryBar() { return Bar("RecoveryBar").left(28); }
    QString FileBar() {
        window->Timer1_Tick();
        return Bar("FileChangedBar").left(38);
    }
    QStringList ShownChanges(const QString& button) {
        Click(button);
        auto* list = window->findChild<QListWidget*>(u"Entries"_s);
        QStringList lines;
        for (int row = 0; list != nullptr && row < list->count(); ++row)
            lines += list->item(row)->text();
        if (list != nullptr)
            delete list->window();
        return lines;
    }
    /// Another program changes the base address in the file.
    void ChangeOutside(std::int16_t base) {
        MatrixConfig changed = LoadConfig(hall);
        changed.VekNetBase = base;
        SaveConfig(hall, changed);
        std::filesystem::last_write_time(hall, std::filesystem::file_time_type::clock::now() +
                                                   std::chrono::seconds(++outsideChanges));
    }

    TemporaryFolder folder;
    std::string hall = folder.Path("hall.VMC");
    int outsideChanges = 0;
};

} // namespace

TEST_F(Recovery, ACopyIsThereExactlyWhileThereAreUnsavedChanges) {
    Open();
    EXPECT_TRUE(Copies().empty());
    Raise();
    ASSERT_TRUE(AwaitCopies(1));
    const std::string first = Bytes();
    EXPECT_EQ(Copies().front(), first);
    Raise();
    const std::string second = Bytes();
    EXPECT_EQ(Copies().front(), first) << "not twice within two seconds";
    auto* interval = Find<QTimer>(u"RecoveryInterval"_s);
    EXPECT_EQ(interval->interval(), 2000);
    interval->start(0); // they are over
    EXPECT_TRUE(QTest::qWaitFor([&] { return Copies().front() == second; }));
    Trigger(u"EditUndo"_s);
    EXPECT_EQ(Status().section(u'|', 1, 1), u"No unsaved changes"_s);
    EXPECT_TRUE(AwaitCopies(0));
    Raise();
    Save();
    EXPECT_TRUE(AwaitCopies(0));
    Raise();
    ExpectUnsaved(Answer::No);
    Trigger(u"NEW"_s);
    EXPECT_TRUE(AwaitCopies(0));
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path("state/recovery")));
}

TEST_F(Recovery, WhatWasNotSavedIsOfferedAtTheNextStartAndRestored) {
    Open();
    EXPECT_EQ(RecoveryBar(), u""_s);
    ShowTab(LevelsTab);
    auto* box = Part<QLineEdit>(u"PanelMaximumLevel"_s, u"Text1"_s);
    Activate();
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, u"+3"_s); // still being typed
    window->close();
    const std::string closed = Bytes();
    ASSERT_NE(closed, ReadText(hall));
    Start();
    EXPECT_EQ(RecoveryBar(), u"Unsaved changes to hall.VMC "_s);
    EXPECT_TRUE(Bar("RecoveryBar").endsWith(QTime::currentTime().toString(u"HH:mm"_s)) ||
                QTime::currentTime().second() < 5);
    EXPECT_EQ(Status(), u"New configuration|No unsaved changes|Base 512-767|Offline"_s);
    const QStringList changes = ShownChanges(u"ShowRecovered"_s);
    EXPECT_EQ(changes.size(), 1);
    EXPECT_TRUE(changes.join(u"").contains(u"Maximum level"_s)) << changes.join(u"").toStdString();
    {
        const CorvaneForm second(services, {});
        EXPECT_TRUE(second.findChild<NoticeBar*>(u"RecoveryBar"_s)->isHidden()) << "one editor offers it";
    }
    NewConfiguration(); // the second window made a new one, too
    Click(u"Restore"_s);
    EXPECT_EQ(Bytes(), closed);
    EXPECT_EQ(RecoveryBar(), u""_s);
    EXPECT_TRUE(Status().startsWith(u"hall.VMC|Unsaved changes|"_s));
    EXPECT_EQ(Copies().size(), 1U) << "it stays until it is saved";
    Save();
    EXPECT_EQ(ReadText(hall), closed);
    EXPECT_TRUE(AwaitCopies(0));
    Start();
    EXPECT_EQ(RecoveryBar(), u""_s);
}

TEST_F(Recovery, DiscardingOneOffersTheNext) {
    Raise();
    window->close();
    Start(hall);
    EXPECT_EQ(RecoveryBar(), u"Unsaved changes to a new con"_s);
    Click(u"Discard"_s);
    Raise();
    const std::string edited = Bytes();
    window->close();
    Start();
    Raise();
    window->close();
    Start();
    if (RecoveryBar() != u"Unsaved changes to hall.VMC "_s)
        Click(u"Discard"_s); // both are of the same second
    Click(u"Restore"_s);
    EXPECT_EQ(Bytes(), edited);
    EXPECT_TRUE(Status().startsWith(u"hall.VMC, not named yet: Save As keeps it|Unsaved changes|"_s));
    EXPECT_EQ(RecoveryBar(), u""_s);
}

TEST_F(Recovery, EditsBeforeTheFileOfTheCommandLineIsOpenedAreKept) {
    Restart(hall);
    Raise();
    const std::string edited = Bytes();
    window->Timer4_Tick();
    EXPECT_EQ(Config, LoadConfig(hall));
    EXPECT_EQ(RecoveryBar(), u"Unsaved changes to a new con"_s);
    Click(u"Restore"_s);
    EXPECT_EQ(Bytes(), edited);
}

TEST_F(Recovery, RestoringAsksForPresentChangesAndABrokenCopyIsTold) {
    Open();
    Raise();
    window->close();
    Start();
    Raise();
    const std::string present = Bytes();
    ExpectUnsaved(Answer::Cancel);
    Click(u"Restore"_s);
    EXPECT_EQ(Bytes(), present);
    EXPECT_EQ(RecoveryBar(), u"Unsaved changes to hall.VMC "_s);
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path("state/recovery")))
        if (entry.path().extension() == ".VMC")
            WriteText(entry.path(), "broken");
    Click(u"Restore"_s);
    EXPECT_EQ(Bytes(), present);
    EXPECT_TRUE(Told().contains(u"/state/recovery/"_s)) << Told().toStdString();
    EXPECT_EQ(RecoveryBar(), u"Unsaved changes to hall.VMC "_s);
}

TEST_F(Recovery, AFolderThatCannotBeWrittenIsToldOnce) {
    WriteText(folder.Path("state"), "in the way");
    Raise();
    window->Timer1_Tick();
    EXPECT_TRUE(QTest::qWaitFor([&] { return Told().startsWith(u"Unsaved changes are not kept"_s); }));
    window->statusBar()->clearMessage();
    Raise();
    Find<QTimer>(u"RecoveryInterval"_s)->start(0);
    QTest::qWait(20);
    EXPECT_EQ(Told(), u""_s);
    std::filesystem::remove(folder.Path("state"));
    Find<QTimer>(u"RecoveryInterval"_s)->start(0);
    EXPECT_TRUE(AwaitCopies(1)) << "and tried again";
}

TEST_F(Recovery, AFileChangedOutsideIsToldAndReloaded) {
    Open();
    EXPECT_EQ(FileBar(), u""_s);
    std::filesystem::last_write_time(hall, std::filesystem::file_time_type::clock::now());
    EXPECT_EQ(FileBar(), u""_s) << "touched, but the same";
    ChangeOutside(1024);
    EXPECT_EQ(FileBar(), u"hall.VMC was changed by another progra"_s);
    const QStringList changes = ShownChanges(u"ShowFileChanges"_s);
    ASSERT_EQ(changes.size(), 1);
    EXPECT_TRUE(changes[0].endsWith(u"-> 1024"_s)) << changes[0].toStdString();
    Click(u"Reload"_s);
    EXPECT_EQ(Config, LoadConfig(hall));
    EXPECT_TRUE(Status().startsWith(u"hall.VMC|No unsaved changes|Base 1024"_s));
    EXPECT_EQ(FileBar(), u""_s);
    EXPECT_TRUE(Copies().empty());

    Raise();
    const std::string edited = Bytes();
    ChangeOutside(768);
    Click(u"Reload"_s);
    EXPECT_EQ(Config, LoadConfig(hall));
    EXPECT_EQ(RecoveryBar(), u"Unsaved changes to hall.VMC "_s) << "what was there can be had back";
    EXPECT_EQ(FileBar(), u""_s);
    Click(u"Restore"_s);
    EXPECT_EQ(Bytes(), edited);
    EXPECT_EQ(FileBar(), u"hall.VMC was changed by another progra"_s);

    WriteText(hall, "no configuration");
    std::filesystem::last_write_time(hall, std::filesystem::file_time_type::clock::now());
    boxes.ExpectMessage(u"Sorry File Error!"_s,
                        u"Sorry there was an error the file "_s + QString::fromStdString(hall) + u'!');
    Click(u"Reload"_s);
    EXPECT_EQ(Bytes(), edited) << "what cannot be read replaces nothing";
}

TEST_F(Recovery, SavingKeepsTheOtherVersion) {
    Open();
    ChangeOutside(1024);
    const std::string other = ReadText(hall);
    EXPECT_EQ(FileBar(), u"hall.VMC was changed by another progra"_s);
    Click(u"KeepMine"_s);
    EXPECT_TRUE(Status().startsWith(u"hall.VMC|Unsaved changes|"_s)) << "the file holds something else";
    EXPECT_EQ(FileBar(), u""_s);
    Raise();
    const std::string mine = Bytes();
    Save();
    EXPECT_EQ(ReadText(hall), mine);
    EXPECT_EQ(Told(), u"What another program wrote into hall.VMC is kept as a recovery copy"_s);
    EXPECT_TRUE(AwaitCopies(1));
    EXPECT_EQ(Copies().front(), other);
    Save();
    EXPECT_EQ(Copies().size(), 1U) << "kept once";
    Start();
    EXPECT_EQ(Bar("RecoveryBar").left(40), u"Another program's version of hall.VMC fr"_s);
    Click(u"Restore"_s);
    EXPECT_EQ(Bytes(), other);
    EXPECT_TRUE(Status().startsWith(u"hall.VMC|Unsaved changes|"_s));

    ChangeOutside(256);
    std::filesystem::remove_all(folder.Path("state"));
    WriteText(folder.Path("state"), "in the way");
    Save();
    EXPECT_EQ(ReadText(hall), other) << "saving goes before";
    EXPECT_TRUE(Told().startsWith(u"What another program wrote into hall.VMC could not be kept: "_s));
}

TEST_F(Recovery, WhatReplacesTheConfigurationWaitsForTheEndOfTheSession) {
    Raise();
    window->close();
    Start(hall);
    ChangeOutside(1024);
    EXPECT_NE(FileBar(), u""_s);
    GoOnline();
    for (const bool online : {true, false}) {
        if (!online)
            Click(u"OnlineCancel"_s);
        for (const char* button : {"Restore", "Reload"})
            EXPECT_EQ(Find(QString::fromLatin1(button))->isEnabled(), !online) << button;
        EXPECT_TRUE(Find(u"KeepMine"_s)->isEnabled());
    }
}

TEST_F(EditorTest, EveryFailureOfTheDiskLeavesTheOldFileOrTheNewOneAndIsTold) {
    const TemporaryFolder folder;
    const std::string path = folder.Path("saved");
    QString said;
    boxes.Seen = [&said](const QString& box) { said = box; };
    boxes.SeenFile = QString::fromStdString(path);
    Click(u"VekNetLabel2_0"_s); // an address to list
    for (const char* command : {"SAVEAS", "TEXT", "CSV", "EXPORT"}) {
        const std::string old(20'000, 'o');
        const auto run = [&] {
            WriteText(path, old);
            window->statusBar()->clearMessage();
            QTimer::singleShot(0, window.get(), [this] {
                if (auto* check = window->findChild<QCheckBox*>(u"IncludeNotesCheck"_s)) {
                    check->setChecked(true);
                    window->findChild<QAbstractButton*>(u"Done"_s)->click();
                }
            });
            Trigger(QString::fromLatin1(command));
        };
        run();
        const std::string written = ReadText(path);
        ASSERT_FALSE(written == old) << command;
        ForEveryFailure(run, [&] {
            const std::string content = ReadText(path);
            EXPECT_TRUE(content == old || content == written) << command << content.size();
            const bool success = said.contains(u"\"File Saved.\""_s) || said.contains(u"\"Successful\""_s);
            EXPECT_EQ(success, content == written) << command << said.toStdString();
            EXPECT_EQ(success, !Told().contains(*boxes.SeenFile + u": "_s)) << Told().toStdString();
            EXPECT_EQ(folder.EntryCount(), 1U) << "nothing is left over";
        });
    }
}
