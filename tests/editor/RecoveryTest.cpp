// What is not saved outlives the window, and what other programs write is not overwritten unseen.
#include "editor/EditorFixture.h"

#include "controls/NoticeBar.h"
#include "model/ConfigFile.h"
#include "pages/EditorPages.h"
#include "support/FailingDisk.h"
#include "userstate/RecoveryCopies.h"

#include <QCheckBox>
#include <QListWidget>
#include <QStatusBar>
#include <QTabWidget>
#include <QTimer>

using namespace vek;
using namespace vek::test;
using namespace Qt::StringLiterals;

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
        window.reset();
        window = std::make_unique<CorvaneForm>(services, commandLine);
        window->FinishStart();
        window->show();
        window->Timer4_Tick();
    }
    void Open() {
        boxes.ExpectOpenFile({}, QString::fromStdString(hall));
        Trigger(u"OPEN"_s);
    }
    void ExpectSaved() {
        boxes.ExpectMessage(u"File Saved."_s, u"Configuration saved to hall.VMC"_s, MessageIcon::None);
    }
    void Raise() {
        Find<QTabWidget>(u"SSTab1"_s)->setCurrentIndex(OutputTrimsTab);
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
    QString Told() { return window->statusBar()->currentMessage(); }
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
    EXPECT_TRUE(Copies().empty());
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
    ExpectSaved();
    Trigger(u"SAVE"_s);
    EXPECT_TRUE(AwaitCopies(0));
    Raise();
    boxes.ExpectYesNoCancel(u"Config Changed!"_s,
                            u"Current cofiguration has changed,\r\nDo you wish to save changes?"_s,
                            Answer::No);
    Trigger(u"NEW"_s);
    EXPECT_TRUE(AwaitCopies(0));
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path("state/recovery")));
}

TEST_F(Recovery, WhatWasNotSavedIsOfferedAtTheNextStartAndRestored) {
    Open();
    EXPECT_EQ(RecoveryBar(), u""_s);
    Find<QTabWidget>(u"SSTab1"_s)->setCurrentIndex(LevelsTab);
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
    ExpectSaved();
    Trigger(u"SAVE"_s);
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
    Raise();
    window->close();
    Start();
    QStringList offered;
    for (int i = 0; i < 2; ++i) {
        offered += RecoveryBar();
        Click(u"Discard"_s);
    }
    offered.sort();
    EXPECT_EQ(offered, (QStringList{u"Unsaved changes to a new con"_s, u"Unsaved changes to hall.VMC "_s}));
    EXPECT_EQ(RecoveryBar(), u""_s);
    EXPECT_TRUE(Copies().empty());
}

TEST_F(Recovery, EditsBeforeTheFileOfTheCommandLineIsOpenedAreKept) {
    window.reset();
    window = std::make_unique<CorvaneForm>(services, hall);
    window->FinishStart();
    window->show();
    Raise();
    const std::string edited = Bytes();
    window->Timer4_Tick();
    EXPECT_EQ(Config, LoadConfig(hall));
    EXPECT_EQ(RecoveryBar(), u"Unsaved changes to a new con"_s);
    Click(u"Restore"_s);
    EXPECT_EQ(Bytes(), edited);
}

TEST_F(Recovery, AnUnnamedConfigurationStaysUnnamed) {
    Start(hall);
    Raise();
    const std::string edited = Bytes();
    window->close();
    Start();
    Click(u"Restore"_s);
    EXPECT_EQ(Bytes(), edited);
    EXPECT_TRUE(Status().startsWith(u"hall.VMC, not named yet: Save As keeps it|Unsaved changes|"_s));
}

TEST_F(Recovery, RestoringAsksForPresentChangesAndABrokenCopyIsTold) {
    Open();
    Raise();
    window->close();
    Start();
    Raise();
    const std::string present = Bytes();
    boxes.ExpectYesNoCancel(u"Config Changed!"_s,
                            u"Current cofiguration has changed,\r\nDo you wish to save changes?"_s,
                            Answer::Cancel);
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
    Raise();
    const std::string mine = Bytes();
    ChangeOutside(1024);
    const std::string other = ReadText(hall);
    EXPECT_EQ(FileBar(), u"hall.VMC was changed by another progra"_s);
    Click(u"KeepMine"_s);
    EXPECT_EQ(FileBar(), u""_s);
    ExpectSaved();
    Trigger(u"SAVE"_s);
    EXPECT_EQ(ReadText(hall), mine);
    EXPECT_EQ(Told(), u"What another program wrote into hall.VMC is kept as a recovery copy"_s);
    EXPECT_TRUE(AwaitCopies(1));
    EXPECT_EQ(Copies().front(), other);
    ExpectSaved();
    Trigger(u"SAVE"_s);
    EXPECT_EQ(Copies().size(), 1U) << "kept once";
    Start();
    EXPECT_EQ(Bar("RecoveryBar").left(40), u"Another program's version of hall.VMC fr"_s);
    Click(u"Restore"_s);
    EXPECT_EQ(Bytes(), other);
    EXPECT_TRUE(Status().startsWith(u"hall.VMC|Unsaved changes|"_s));

    ChangeOutside(256);
    std::filesystem::remove_all(folder.Path("state"));
    WriteText(folder.Path("state"), "in the way");
    ExpectSaved();
    Trigger(u"SAVE"_s);
    EXPECT_EQ(ReadText(hall), other) << "saving goes before";
    EXPECT_TRUE(Told().startsWith(u"What another program wrote into hall.VMC could not be kept: "_s));
}

TEST_F(Recovery, KeepingMineMakesItUnsaved) {
    Open();
    ChangeOutside(1024);
    EXPECT_EQ(FileBar(), u"hall.VMC was changed by another progra"_s);
    Click(u"KeepMine"_s);
    EXPECT_TRUE(Status().startsWith(u"hall.VMC|Unsaved changes|"_s)) << "the file holds something else";
}

TEST_F(Recovery, WhatReplacesTheConfigurationWaitsForTheEndOfTheSession) {
    Raise();
    window->close();
    Start(hall);
    ChangeOutside(1024);
    EXPECT_NE(FileBar(), u""_s);
    Find<QTabWidget>(u"SSTab1"_s)->setCurrentIndex(OnlineTab);
    port.OnOutput = [this](const ByteVector& bytes) {
        port.Reply(1, bytes.front() == 'D' ? ByteVector{39, 2, 5, 209, 0} : ByteVector{240});
    };
    for (const bool online : {true, false}) {
        if (online) {
            Click(u"OnlineSearch"_s);
            boxes.ExpectMessage(u"Online"_s, u"Matrix Vek is now online."_s, MessageIcon::None);
            Click(u"OnlinePort_0"_s);
        } else {
            Click(u"OnlineCancel"_s);
        }
        for (const char* button : {"Restore", "Reload"})
            EXPECT_EQ(Find(QString::fromLatin1(button))->isEnabled(), !online) << button;
        EXPECT_TRUE(Find(u"KeepMine"_s)->isEnabled());
    }
}

namespace {

/// Saves wherever it is asked to, and remembers what was said.
class SavingDialogs final : public Dialogs {
  public:
    explicit SavingDialogs(QString path) : path_(std::move(path)) {}
    QString Said;

    void Message(QWidget*, MessageIcon, const QString& title, const QString&) override { Said += title; }
    Answer AskYesNo(QWidget*, const QString&, const QString&, Answer, const QString&) override {
        return Answer::Yes;
    }
    Answer AskYesNoCancel(QWidget*, const QString&, const QString&) override { return Answer::No; }
    std::unique_ptr<OpenBox> OpenMessage(QWidget*, MessageIcon, const QString&, const QString&,
                                         const QString&, BoxClosed) override {
        return nullptr;
    }
    std::unique_ptr<OpenBox> OpenYesNo(QWidget*, const QString&, const QString&, Answer, BoxClosed) override {
        return nullptr;
    }
    std::optional<QString> OpenFile(QWidget*, const QString&, const FileKind&) override {
        return std::nullopt;
    }
    std::optional<QString> SaveFile(QWidget*, const QString&, const FileKind&) override { return path_; }
    bool ChoosePrinter(QWidget*, QPrinter&) override { return false; }

  private:
    QString path_;
};

} // namespace

TEST_F(EditorTest, EveryFailureOfTheDiskLeavesTheOldFileOrTheNewOneAndIsTold) {
    const TemporaryFolder folder;
    const std::string path = folder.Path("saved");
    SavingDialogs saving(QString::fromStdString(path));
    const EditorServices saver{saving, store, services.MakeSerialControl, services.MakeTimer,
                               services.PortNames};
    window = std::make_unique<CorvaneForm>(saver, std::string());
    window->FinishStart();
    for (const char* command : {"SAVEAS", "TEXT", "CSV", "EXPORT"}) {
        std::optional<std::string> written; // by the command without failures
        const std::string old = std::string(20'000, 'o');
        const auto run = [&] {
            WriteText(path, old);
            saving.Said.clear();
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
        written = ReadText(path);
        ASSERT_NE(*written, old) << command;
        ForEveryFailure(run, [&] {
            const std::string content = ReadText(path);
            EXPECT_TRUE(content == old || content == *written) << command << content.size();
            const bool success = saving.Said == u"File Saved."_s || saving.Said == u"Successful"_s;
            EXPECT_EQ(success, content == *written) << command << saving.Said.toStdString();
            const QString told = window->statusBar()->currentMessage();
            EXPECT_EQ(success, !told.contains(QString::fromStdString(path + ": "))) << told.toStdString();
            EXPECT_EQ(folder.EntryCount(), 1U) << "nothing is left over";
        });
    }
}
