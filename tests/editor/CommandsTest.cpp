// The toolbar commands, their messages and what they leave behind.
#include "editor/EditorFixture.h"

#include "model/ConfigFile.h"
#include "reports/TextReport.h"

using namespace vek;
using namespace vek::test;

namespace {

const QString errorTitle = u"Sorry File Error!"_s;

class Commands : public EditorTest {
  protected:
    QString PathOf(const std::string& name) const { return QString::fromStdString(folder.Path(name)); }
    QString Sample(const std::string& number) const {
        return QString::fromStdString(DataPath(number + ".VMC"));
    }
    void Open(const QString& path, const QString& startAt = {}) {
        boxes.ExpectOpenFile(startAt, path);
        Trigger(u"OPEN"_s);
    }
    void ExpectExported(const QString& path) {
        boxes.ExpectMessage(u"Successful"_s, path + u" has been successfully exported"_s, MessageIcon::None);
    }
    /// Presses a button of the dialog that a command opens, after ticking some boxes.
    void InOptions(const QStringList& ticks, const QString& button) {
        QTimer::singleShot(0, window.get(), [this, ticks, button] {
            auto* dialog = window->findChild<QDialog*>();
            ASSERT_NE(dialog, nullptr);
            optionsTitle = dialog->windowTitle();
            for (const QString& tick : ticks)
                dialog->findChild<QCheckBox*>(tick)->setChecked(true);
            dialog->findChild<QAbstractButton*>(button)->click();
        });
    }
    TemporaryFolder folder;
    QString optionsTitle;
};

} // namespace

TEST_F(Commands, TitleAndSaveButtonFollowTheName) {
    EXPECT_TRUE(window->windowTitle().startsWith(u"Vorn Matrix Editor "_s));
    EXPECT_EQ(Status(), u"New configuration|No unsaved changes|Base 512-767|Offline"_s);
    Open(Sample("02"));
    EXPECT_EQ(Status(), u"02.VMC|No unsaved changes|Base %1-%2|Offline"_s.arg(Config.VekNetBase)
                            .arg(Config.VekNetBase + 255));
    EXPECT_EQ(Find(u"StatusFile"_s)->toolTip(), Sample("02"));
    EXPECT_EQ(window->windowTitle(), u"02.VMC"_s);
    EXPECT_TRUE(Find<QAction>(u"SAVE"_s)->isEnabled());
    Config.VekNetBase = 2000;
    EXPECT_EQ(Status(), u"02.VMC|Unsaved changes|Base 2000-2255|Offline"_s);
    Config = SavedConfig;
    ConfigChanged = true;
    Trigger(u"NEW"_s);
    EXPECT_FALSE(ConfigChanged);
    EXPECT_TRUE(window->windowTitle().startsWith(u"Vorn Matrix Editor "_s));
    EXPECT_FALSE(Find<QAction>(u"SAVE"_s)->isEnabled());
    EXPECT_EQ(Differing(Bytes(), ReadText(DataPath("01.VMC"))), "");
}

TEST_F(Commands, SaveAsThenSaveWriteTheRecord) {
    Type(u"RemotePaneInputs_0"_s, u"12"_s);
    boxes.ExpectSaveFile(QString(), PathOf("a.VMC"));
    ExpectSaved(u"a.VMC"_s);
    Trigger(u"SAVEAS"_s);
    EXPECT_EQ(Differing(ReadText(folder.Path("a.VMC")), Bytes()), "");
    EXPECT_FALSE(ConfigDiffers());
    // What is being typed counts, though the box has not been left and another window is in front.
    auto* maximum = Part<QLineEdit>(u"PanelMaximumLevel"_s, u"Text1"_s);
    ShowTab(LevelsTab);
    window->activateWindow();
    maximum->setFocus();
    maximum->setText(u"7.5"_s);
    QWidget inFront;
    inFront.show();
    QApplication::setActiveWindow(&inFront);
    ASSERT_FALSE(maximum->hasFocus());
    ExpectSaved(u"a.VMC"_s);
    Trigger(u"SAVE"_s);
    EXPECT_EQ(LoadConfig(folder.Path("a.VMC")).Modes[0].OutputLevels[0].MaximumLevel, 7.5F);
}

TEST_F(Commands, UnsavedChangesAreAskedFor) {
    const std::tuple<Answer, std::optional<QString>, bool> cases[] = {
        {Answer::Cancel, {}, false},
        {Answer::No, {}, true},
        {Answer::Yes, std::nullopt, false},
        {Answer::Yes, PathOf("no/such/folder.VMC"), false},
        {Answer::Yes, PathOf("kept.VMC"), true}};
    for (const auto& [answer, file, goesOn] : cases) {
        NewConfiguration();
        Config.VekNetBase = 99;
        ExpectUnsaved(answer);
        if (answer == Answer::Yes)
            boxes.ExpectSaveFile(QString(), file);
        if (answer == Answer::Yes && goesOn)
            ExpectSaved(u"kept.VMC"_s);
        Trigger(u"NEW"_s);
        EXPECT_EQ(Config.VekNetBase, goesOn ? 512 : 99) << static_cast<int>(answer);
    }
    EXPECT_EQ(LoadConfig(folder.Path("kept.VMC")).VekNetBase, 99);
    Config.VekNetBase = 98;
    ExpectUnsaved(Answer::No);
    boxes.ExpectOpenFile(QString(), std::nullopt);
    Trigger(u"OPEN"_s);
    EXPECT_EQ(Config.VekNetBase, 98) << "a cancelled file dialog changes nothing";
}

TEST_F(Commands, AFailedReadGivesDefaultsAndAMessage) {
    WriteText(folder.Path("short.VMC"), std::string(6237, ' '));
    Open(Sample("02"));
    const auto slider = [this] { return Find(u"LevelTrim1"_s)->property("Level").toFloat(); };
    EXPECT_EQ(slider(), Config.Modes[0].OutputLevels[0].StartLevel);
    PressKnob(u"LevelTrim1"_s, Qt::Key_Up);
    ASSERT_NE(slider(), 0.0F);
    boxes.ExpectOpenFile(Sample("02"), PathOf("short.VMC"));
    boxes.ExpectMessage(errorTitle, u"Sorry there was an error the file !"_s);
    Trigger(u"OPEN"_s);
    EXPECT_EQ(slider(), 0.0F) << "the slider's levels of the former file are gone";
    Trigger(u"ONLINE"_s);
    EXPECT_EQ(Differing(Bytes(), ReadText(DataPath("01.VMC"))), "")
        << "nothing of the former file is left in the controls";
}

TEST_F(Commands, AFailedWriteKeepsEverything) {
    boxes.ExpectSaveFile(QString(), PathOf("a.VMC"));
    ExpectSaved(u"a.VMC"_s);
    Trigger(u"SAVEAS"_s);
    Type(u"RemotePaneInputs_0"_s, u"5"_s);
    std::filesystem::remove(folder.Path("a.VMC"));
    std::filesystem::create_directory(folder.Path("a.VMC"));
    const QString text = u"Sorry there was an error the file "_s + PathOf("a.VMC") + u'!';
    boxes.ExpectMessage(errorTitle, text);
    Trigger(u"SAVE"_s);
    boxes.ExpectSaveFile(PathOf("a.VMC"), u"/dev/full"_s);
    boxes.ExpectMessage(errorTitle, text);
    Trigger(u"SAVEAS"_s);
    EXPECT_TRUE(ConfigDiffers() && ConfigChanged);
    EXPECT_EQ(CurrentFileName, folder.Path("a.VMC"));
}

TEST_F(Commands, ResetAsksUnlessTheModeIsBlank) {
    Click(u"Modes_2"_s);
    Trigger(u"DEFAULT"_s);
    EXPECT_EQ(Config.Modes[2], DefaultMode());
    EXPECT_EQ(Config.Modes[1], ModeRecord());
    const QString ask = u"Do you wish to reset this mode to default settings?"_s;
    Type(u"RemotePaneInputs_7"_s, QString());
    boxes.ExpectYesNo(u"Reset to default"_s, ask, Answer::No);
    Trigger(u"DEFAULT"_s);
    EXPECT_NE(Config.Modes[2], DefaultMode());
    boxes.ExpectYesNo(u"Reset to default"_s, ask, Answer::Yes);
    Trigger(u"DEFAULT"_s);
    EXPECT_EQ(Config.Modes[2], DefaultMode());
}

TEST_F(Commands, ReportAndListAreExportedByteForByte) {
    Open(Sample("03"));
    // The samples were made for mode 6 and output 7 and the file as it stands.
    Click(u"Modes_5"_s);
    Click(u"UsePanel_6"_s);
    Config = LoadConfig(DataPath("03.VMC"));
    const QStringList sections = {u"IncludeVekNetCheck"_s,      u"IncludeRS232Check"_s,
                                  u"IncludeOutputsCheck"_s,     u"IncludeInputTrimsCheck"_s,
                                  u"IncludeOutputTrimsCheck"_s, u"IncludeNotesCheck"_s};
    InOptions({}, u"Done"_s);
    Trigger(u"TEXT"_s); // nothing chosen: no dialog follows
    EXPECT_EQ(optionsTitle, u"Export Options"_s);
    InOptions({}, u"Done"_s);
    Trigger(u"PRINT"_s);
    EXPECT_EQ(optionsTitle, u"Printing Options"_s);
    InOptions({u"IncludeNotesCheck"_s}, u"Done"_s);
    boxes.ExpectPrinter(false);
    Trigger(u"PRINT"_s);
    EXPECT_TRUE(boxes.Done());
    InOptions(sections, u"Cancel"_s);
    Trigger(u"TEXT"_s);
    InOptions(sections, u"Done"_s);
    boxes.ExpectSaveFile(Sample("03").chopped(3) + u"TXT"_s, PathOf("r.TXT"));
    ExpectExported(PathOf("r.TXT"));
    Trigger(u"TEXT"_s);
    const std::string report = BuildReport(Config, allSections, SelectionOf(Config, 5, 6));
    EXPECT_EQ(Differing(ReadText(folder.Path("r.TXT")), report), "");

    for (const bool unused : {false, true}) {
        boxes.ExpectYesNo(u"Include Unused?"_s, u"Do you wish to include unused adresses?"_s,
                          unused ? Answer::Yes : Answer::No);
        boxes.ExpectSaveFile(Sample("03").chopped(3) + u"CSV"_s, PathOf("l.CSV"));
        ExpectExported(PathOf("l.CSV"));
        Trigger(u"CSV"_s);
        EXPECT_EQ(Differing(ReadText(folder.Path("l.CSV")),
                            ReadText(DataPath(unused ? "03.unused.csv" : "03.csv"))),
                  "");
    }
}

TEST_F(Commands, LevelsThatTheImageLimitsAreStoredBack) {
    Config.Modes[0].OutputLevels[0].MaximumLevel = 30;
    Config.Modes[5].OutputLevels[3].MinimumLevel = -100.25F;
    SaveConfig(folder.Path("wide.VMC"), Config);
    Config = SavedConfig;
    Open(PathOf("wide.VMC"));
    boxes.ExpectSaveFile(PathOf("wide.VEX"), std::nullopt);
    Trigger(u"EXPORT"_s);
    EXPECT_EQ(Config.Modes[0].OutputLevels[0].MaximumLevel, 22.0F);
    EXPECT_EQ(Config.Modes[5].OutputLevels[3].MinimumLevel, -96.0F);
    EXPECT_TRUE(ConfigDiffers());
    Trigger(u"ONLINE"_s);
    EXPECT_EQ(Config.Modes[0].OutputLevels[0].MaximumLevel, 22.0F) << "and shown";
}

TEST_F(Commands, ExportsTheImageAndReportsWhatCannotBeBuilt) {
    boxes.ExpectYesNo(u"Include Unused?"_s, u"Do you wish to include unused adresses?"_s, Answer::No);
    boxes.ExpectMessage(u"Sorry"_s, u"Nothing to export"_s);
    Trigger(u"CSV"_s);

    boxes.ExpectSaveFile(QString(), PathOf("d.VEX"));
    ExpectExported(PathOf("d.VEX"));
    Trigger(u"EXPORT"_s);
    const std::string vex = ReadText(folder.Path("d.VEX"));
    ASSERT_EQ(vex.size(), 268U + 2 * 8192);
    EXPECT_EQ(Differing(vex.substr(268, 2177), ReadText(DataPath("01.image"))), "");

    boxes.ExpectSaveFile(QString(), PathOf("no/such/d.VEX"));
    Trigger(u"EXPORT"_s);
    EXPECT_TRUE(Told().startsWith(u"Nothing was written: "_s));

    Config.Modes[4].OutputLevels[4].MinimumLevel = 6.0F;
    for (const char* command : {"EXPORT", "DOWNLOAD"}) {
        boxes.ExpectMessage(u"Error!"_s, u"Division by zero"_s);
        Trigger(QString::fromLatin1(command));
    }
}

TEST_F(Commands, TheFileOfTheCommandLineIsOpenedUnnamed) {
    const std::string path = DataPath("07.VMC");
    WriteText(folder.Path("broken.VMC"), "x");
    const std::string quoted = folder.Path("\"odd\" \xE9.VMC"); // quotes and a byte that is no UTF-8
    std::filesystem::copy_file(path, quoted);
    std::filesystem::copy_file(path, folder.Path("small.vmc"));
    const struct {
        std::string commandLine;
        int base;
        const char* told;
    } cases[] = {
        {path, 307, ""},
        {'"' + path + '"', 307, ""},
        {quoted, 307, ""},
        {folder.Path("small.vmc"), 512, "small.vmc was not opened: its name does not end in \"VMC\""},
        {"missing.VMC", 512, "missing.VMC was not opened: there is no such file"},
        {"", 512, ""},
    };
    for (const auto& c : cases) {
        Restart(c.commandLine);
        window->Timer4_Tick();
        EXPECT_EQ(Config.VekNetBase, c.base) << c.commandLine;
        EXPECT_EQ(Told(), QLatin1StringView(c.told));
        EXPECT_EQ(CurrentFileName, "");
        EXPECT_EQ(Status().startsWith(u"07.VMC, not named yet: Save As keeps it|"_s),
                  c.commandLine.find(path) != std::string::npos);
    }
    boxes.ExpectMessage(errorTitle, u"Sorry there was an error the file !"_s);
    Restart(folder.Path("broken.VMC"));
    window->Timer4_Tick();
    EXPECT_EQ(Config.VekNetBase, 512);
}

TEST_F(Commands, ANewConfigurationOfAFileIsSavedBesideIt) {
    Restart(DataPath("07.VMC"));
    window->Timer4_Tick();
    boxes.ExpectSaveFile(Sample("07"), PathOf("a [*].VMC"));
    ExpectSaved(u"a [*].VMC"_s);
    Trigger(u"SAVEAS"_s);
    EXPECT_TRUE(Status().startsWith(u"a [*].VMC|"_s));
    EXPECT_EQ(window->windowTitle(), u"a [*][*].VMC"_s) << "which Qt shows as [*]";
    Trigger(u"NEW"_s);
    boxes.ExpectSaveFile(QString(), std::nullopt);
    Trigger(u"SAVEAS"_s);
}
