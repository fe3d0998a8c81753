// The toolbar commands, their messages and what they leave behind.
#include "editor/EditorFixture.h"

#include "model/ConfigFile.h"
#include "pages/EditorPages.h"

#include <QCheckBox>
#include <QDialog>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTimer>

using namespace vek;
using namespace vek::test;

namespace {

const QString question = QStringLiteral("Current cofiguration has changed,\r\nDo you wish to save changes?");
const QString changedTitle = QStringLiteral("Config Changed!");
const QString errorTitle = QStringLiteral("Sorry File Error!");

class Commands : public EditorTest {
  protected:
    QString PathOf(const std::string& name) const { return QString::fromStdString(folder.Path(name)); }
    QString Sample(const std::string& number) const {
        return QString::fromStdString(DataPath(number + ".VMC"));
    }
    void Open(const QString& path, const QString& startAt = {}) {
        boxes.ExpectOpenFile(startAt, path);
        Trigger(QStringLiteral("OPEN"));
    }
    void ExpectSaved(const std::string& name) {
        boxes.ExpectMessage(QStringLiteral("File Saved."),
                            QStringLiteral("Configuration saved to ") + QString::fromStdString(name),
                            MessageIcon::None);
    }
    /// Presses a button of the dialog that a command opens, after ticking some boxes.
    void InOptions(const QStringList& ticks, const QString& button) {
        QTimer::singleShot(0, window.get(), [this, ticks, button] {
            auto* dialog = window->findChild<QDialog*>();
            ASSERT_NE(dialog, nullptr);
            for (const QString& tick : ticks)
                dialog->findChild<QCheckBox*>(tick)->setChecked(true);
            dialog->findChild<QAbstractButton*>(button)->click();
        });
    }
    TemporaryFolder folder;
};

} // namespace

TEST_F(Commands, TitleAndSaveButtonFollowTheName) {
    EXPECT_TRUE(window->windowTitle().startsWith(QStringLiteral("Vorn Matrix Editor ")));
    EXPECT_FALSE(Find<QAction>(QStringLiteral("SAVE"))->isEnabled());
    Open(Sample("02"));
    window->Timer1_Tick();
    EXPECT_EQ(window->windowTitle(), QStringLiteral("02.VMC"));
    EXPECT_TRUE(Find<QAction>(QStringLiteral("SAVE"))->isEnabled());
    Trigger(QStringLiteral("NEW"));
    EXPECT_TRUE(window->windowTitle().startsWith(QStringLiteral("Vorn Matrix Editor ")));
    EXPECT_FALSE(Find<QAction>(QStringLiteral("SAVE"))->isEnabled());
    EXPECT_EQ(Differing(Bytes(), ReadText(DataPath("01.VMC"))), "");
}

TEST_F(Commands, SaveAsThenSaveWriteTheRecord) {
    Type(QStringLiteral("RemotePaneInputs_0"), QStringLiteral("12"));
    boxes.ExpectSaveFile(QString(), PathOf("a.VMC"));
    ExpectSaved("a.VMC");
    Trigger(QStringLiteral("SAVEAS"));
    EXPECT_EQ(Differing(ReadText(folder.Path("a.VMC")), Bytes()), "");
    EXPECT_FALSE(ConfigDiffers());
    // What is being typed counts, though the box has not been left.
    auto* maximum = Part<QLineEdit>(QStringLiteral("PanelMaximumLevel"), QStringLiteral("Text1"));
    Find<QTabWidget>(QStringLiteral("SSTab1"))->setCurrentIndex(LevelsTab);
    window->activateWindow();
    maximum->setFocus();
    maximum->setText(QStringLiteral("7.5"));
    ExpectSaved("a.VMC");
    Trigger(QStringLiteral("SAVE"));
    EXPECT_EQ(LoadConfig(folder.Path("a.VMC")).Modes[0].OutputLevels[0].MaximumLevel, 7.5F);
}

TEST_F(Commands, UnsavedChangesAreAskedFor) {
    const struct {
        Answer answer;
        std::optional<QString> file;
        bool goesOn;
    } cases[] = {{Answer::Cancel, {}, false},
                 {Answer::No, {}, true},
                 {Answer::Yes, std::nullopt, false},
                 {Answer::Yes, PathOf("no/such/folder.VMC"), false},
                 {Answer::Yes, PathOf("kept.VMC"), true}};
    for (const auto& c : cases) {
        NewConfiguration();
        Config.VekNetBase = 99;
        boxes.ExpectYesNoCancel(changedTitle, question, c.answer);
        if (c.answer == Answer::Yes)
            boxes.ExpectSaveFile(QString(), c.file);
        if (c.answer == Answer::Yes && c.goesOn)
            ExpectSaved("kept.VMC");
        Trigger(QStringLiteral("NEW"));
        EXPECT_EQ(Config.VekNetBase, c.goesOn ? 512 : 99) << &c - cases;
    }
    EXPECT_EQ(LoadConfig(folder.Path("kept.VMC")).VekNetBase, 99);
    Config.VekNetBase = 98;
    boxes.ExpectYesNoCancel(changedTitle, question, Answer::No);
    boxes.ExpectOpenFile(QString(), std::nullopt);
    Trigger(QStringLiteral("OPEN"));
    EXPECT_EQ(Config.VekNetBase, 98) << "a cancelled file dialog changes nothing";
}

TEST_F(Commands, AFailedReadGivesDefaultsAndAMessage) {
    WriteText(folder.Path("short.VMC"), std::string(6237, ' '));
    for (const QString& path :
         {PathOf("short.VMC"), PathOf("missing.VMC"), QString::fromStdString(folder.Path())}) {
        Open(Sample("02"));
        boxes.ExpectOpenFile(Sample("02"), path);
        boxes.ExpectMessage(errorTitle, QStringLiteral("Sorry there was an error the file !"));
        Trigger(QStringLiteral("OPEN"));
        EXPECT_EQ(Differing(Bytes(), ReadText(DataPath("01.VMC"))), "");
        Trigger(QStringLiteral("ONLINE"));
        EXPECT_EQ(Differing(Bytes(), ReadText(DataPath("01.VMC"))), "")
            << "nothing of the former file is left in the controls";
    }
}

TEST_F(Commands, AFailedWriteKeepsEverything) {
    boxes.ExpectSaveFile(QString(), PathOf("a.VMC"));
    ExpectSaved("a.VMC");
    Trigger(QStringLiteral("SAVEAS"));
    Type(QStringLiteral("RemotePaneInputs_0"), QStringLiteral("5"));
    std::filesystem::remove(folder.Path("a.VMC"));
    std::filesystem::create_directory(folder.Path("a.VMC"));
    const QString text =
        QStringLiteral("Sorry there was an error the file ") + PathOf("a.VMC") + QLatin1Char('!');
    boxes.ExpectMessage(errorTitle, text);
    Trigger(QStringLiteral("SAVE"));
    boxes.ExpectSaveFile(PathOf("a.VMC"), QStringLiteral("/dev/full"));
    boxes.ExpectMessage(errorTitle, text);
    Trigger(QStringLiteral("SAVEAS"));
    EXPECT_TRUE(ConfigDiffers());
    EXPECT_TRUE(ConfigChanged);
    EXPECT_EQ(CurrentFileName, folder.Path("a.VMC"));
}

TEST_F(Commands, ResetAsksUnlessTheModeIsBlank) {
    Click(QStringLiteral("Modes_2"));
    Trigger(QStringLiteral("DEFAULT"));
    EXPECT_EQ(Config.Modes[2], DefaultMode());
    EXPECT_EQ(Config.Modes[1], ModeRecord());
    const QString ask = QStringLiteral("Do you wish to reset this mode to default settings?");
    Type(QStringLiteral("RemotePaneInputs_7"), QString());
    boxes.ExpectYesNo(QStringLiteral("Reset to default"), ask, Answer::No);
    Trigger(QStringLiteral("DEFAULT"));
    EXPECT_NE(Config.Modes[2], DefaultMode());
    boxes.ExpectYesNo(QStringLiteral("Reset to default"), ask, Answer::Yes);
    Trigger(QStringLiteral("DEFAULT"));
    EXPECT_EQ(Config.Modes[2], DefaultMode());
}

TEST_F(Commands, ReportAndListAreExportedByteForByte) {
    Open(Sample("03"));
    // The samples were made for mode 6 and output 7 and the file as it stands.
    Click(QStringLiteral("Modes_5"));
    Click(QStringLiteral("UsePanel_6"));
    Config = LoadConfig(DataPath("03.VMC"));
    const QStringList sections = {QStringLiteral("IncludeVekNetCheck"), QStringLiteral("IncludeRS232Check"),
                                  QStringLiteral("IncludeInputTrimsCheck"),
                                  QStringLiteral("IncludeOutputTrimsCheck")};
    InOptions({}, QStringLiteral("Done"));
    Trigger(QStringLiteral("TEXT")); // nothing chosen: no dialog follows
    InOptions(sections, QStringLiteral("Cancel"));
    Trigger(QStringLiteral("TEXT"));
    InOptions(sections, QStringLiteral("Done"));
    boxes.ExpectSaveFile(Sample("03").chopped(3) + QStringLiteral("TXT"), PathOf("r.TXT"));
    boxes.ExpectMessage(QStringLiteral("Successful"),
                        PathOf("r.TXT") + QStringLiteral(" has been successfully exported"),
                        MessageIcon::None);
    Trigger(QStringLiteral("TEXT"));
    const std::string whole = ReadText(DataPath("03.txt"));
    const std::string written = ReadText(folder.Path("r.TXT"));
    const std::size_t modes = whole.find("\r\nMode 1", whole.find("\"R8\""));
    EXPECT_EQ(Differing(written.substr(0, modes), whole.substr(0, modes)), "");
    EXPECT_EQ(Differing(written.substr(modes),
                        whole.substr(whole.find("\r\n\r\nInput trims"), written.size() - modes)),
              "");

    for (const bool unused : {false, true}) {
        boxes.ExpectYesNo(QStringLiteral("Include Unused?"),
                          QStringLiteral("Do you wish to include unused adresses?"),
                          unused ? Answer::Yes : Answer::No);
        boxes.ExpectSaveFile(Sample("03").chopped(3) + QStringLiteral("CSV"), PathOf("l.CSV"));
        boxes.ExpectMessage(QStringLiteral("Successful"),
                            PathOf("l.CSV") + QStringLiteral(" has been successfully exported"),
                            MessageIcon::None);
        Trigger(QStringLiteral("CSV"));
        EXPECT_EQ(Differing(ReadText(folder.Path("l.CSV")),
                            ReadText(DataPath(unused ? "03.unused.csv" : "03.csv"))),
                  "");
    }
}

TEST_F(Commands, ExportsTheImageAndReportsWhatCannotBeBuilt) {
    boxes.ExpectYesNo(QStringLiteral("Include Unused?"),
                      QStringLiteral("Do you wish to include unused adresses?"), Answer::No);
    boxes.ExpectMessage(QStringLiteral("Sorry"), QStringLiteral("Nothing to export"));
    Trigger(QStringLiteral("CSV"));

    boxes.ExpectSaveFile(QString(), PathOf("d.VEX"));
    boxes.ExpectMessage(QStringLiteral("Successful"),
                        PathOf("d.VEX") + QStringLiteral(" has been successfully exported"),
                        MessageIcon::None);
    Trigger(QStringLiteral("EXPORT"));
    const std::string vex = ReadText(folder.Path("d.VEX"));
    ASSERT_EQ(vex.size(), 268U + 2 * 8192);
    EXPECT_EQ(vex[0], 29);
    EXPECT_EQ(Differing(vex.substr(268, 2177), ReadText(DataPath("01.image"))), "");

    boxes.ExpectSaveFile(QString(), PathOf("no/such/d.VEX"));
    Trigger(QStringLiteral("EXPORT")); // fails without a box

    Config.Modes[4].OutputLevels[4].MinimumLevel = 6.0F;
    for (const char* command : {"EXPORT", "DOWNLOAD"}) {
        boxes.ExpectMessage(QStringLiteral("Error!"), QStringLiteral("Division by zero"));
        Trigger(QString::fromLatin1(command));
    }
    Config.Modes[4].OutputLevels[4].MinimumLevel = -36.0F;
    Config.Modes[4].OutputLevels[4].StepLevel = 200.0F;
    boxes.ExpectMessage(QStringLiteral("Error!"), QStringLiteral("Overflow"));
    Trigger(QStringLiteral("DOWNLOAD"));
}

TEST(StartUp, OpensTheNamedFileUnnamed) {
    ScriptedDialogs boxes;
    MemoryStore store;
    ScriptedPort port;
    const EditorServices services = {boxes, store, [&] { return std::make_unique<BorrowedPort>(port); },
                                     [&] { return std::make_unique<BorrowedTimer>(port); },
                                     [] { return QStringList(); }};
    const QString path = QString::fromStdString(DataPath("07.VMC"));
    const TemporaryFolder folder;
    WriteText(folder.Path("broken.VMC"), "x");
    const auto tick = [&](const QString& commandLine) {
        CorvaneForm window(services, commandLine);
        window.Timer4_Tick();
        return Config.VekNetBase;
    };
    EXPECT_EQ(tick(path), 307);
    EXPECT_TRUE(CurrentFileName.empty());
    EXPECT_EQ(tick(QLatin1Char('"') + path + QLatin1Char('"')), 307);
    EXPECT_EQ(tick(path.chopped(3) + QStringLiteral("vmc")), 512);
    EXPECT_EQ(tick(QStringLiteral("missing.VMC")), 512);
    EXPECT_EQ(tick(QString()), 512);
    boxes.ExpectMessage(QStringLiteral("Sorry File Error!"),
                        QStringLiteral("Sorry there was an error the file !"));
    EXPECT_EQ(tick(QString::fromStdString(folder.Path("broken.VMC"))), 512);
}
