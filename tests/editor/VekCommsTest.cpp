// The programming window against a scripted device.
#include "editor/ProgrammingFixture.h"

#include "controls/TextConversion.h"
#include "link/OutcomeTexts.h"

#include <QComboBox>
#include <QProgressBar>
#include <QStandardItemModel>
#include <QStatusBar>

using namespace vek;
using namespace vek::test;
using namespace Qt::StringLiterals;

namespace {

class ProgrammingWindow : public Programming {
  protected:
    bool OffersLastProgrammed() {
        Trigger(u"ShowChanges"_s);
        const auto* model = qobject_cast<QStandardItemModel*>(Find<QComboBox>(u"ComparedWith"_s)->model());
        const bool offered = model->item(2)->isEnabled();
        Trigger(u"ShowChanges"_s);
        return offered;
    }
};

} // namespace

TEST_F(ProgrammingWindow, FindsChoosesAndPrograms) {
    const auto form = Searched();
    const int looks = looksForPorts;
    auto* option = form->findChild<QRadioButton*>(u"Option1_0"_s);
    auto* program = form->findChild<QAbstractButton*>(u"ProgramVek"_s);
    auto* wait = form->findChild<QWidget*>(u"PleaseWait"_s);
    option->click();
    form->hide();
    form->show();
    Settle();
    EXPECT_TRUE(option->isChecked()) << "shown again it does not search again";
    Press(*form, "Command1");
    EXPECT_FALSE(program->isEnabled());
    EXPECT_TRUE(form->findChild<QWidget*>(u"Blanking_0"_s)->isVisible());
    Settle();
    EXPECT_GT(looksForPorts, looks) << "adapters come and go";
    EXPECT_TRUE(TypeText(*form).endsWith(u"2.5"_s)) << TypeText(*form).toStdString();
    EXPECT_TRUE(option->isEnabled());
    EXPECT_FALSE(option->isChecked());
    EXPECT_FALSE(program->isEnabled());
    EXPECT_TRUE(form->findChild<QWidget*>(u"VekType_1"_s)->isHidden()) << "there is no COM2";
    EXPECT_FALSE(port.PortOpen());
    option->click();
    EXPECT_TRUE(program->isEnabled());
    EXPECT_FALSE(wait->isVisible());

    device.OnBlock = [&](std::size_t block) {
        if (block == 100) {
            EXPECT_EQ(form->findChild<QProgressBar*>(u"ProgressBar1"_s)->value(), 98 * 1000 / 273);
            EXPECT_FALSE(program->isEnabled() || Enabled(*form, "Command1"));
            EXPECT_TRUE(wait->isVisible());
            EXPECT_EQ(Text(*form, "DownloadDetails"), u"Block 99 of 273 · 0 retries · 2 s left"_s);
            EXPECT_EQ(Kept(), "unfinished 0/0;");
        }
    };
    EXPECT_FALSE(form->Programmed());
    boxes.ExpectYesNo(u"All sent ok"_s, u"Program another vek"_s, Answer::Yes, Answer::No);
    boxes.ExpectYesNo(u"All sent ok"_s, u"Program another vek"_s, Answer::No, Answer::No);
    Press(*form, "ProgramVek");
    Settle();
    EXPECT_TRUE(form->Programmed());
    EXPECT_EQ(device.Image.size(), 2U * 273 * 8);
    EXPECT_FALSE(form->isVisible()) << "the window closes when the user is done";
    EXPECT_FALSE(port.PortOpen());
    EXPECT_EQ(form->findChild<QLabel*>(u"Label2"_s)->text(), u"100%"_s);
    EXPECT_EQ(Kept(), "programmed 273/0;programmed 273/0;");
}

TEST_F(ProgrammingWindow, SaysWhatGoesWhereAndWhatIsThere) {
    job.File = "/home/a/hall.VMC";
    job.Config.Modes[2].OutputLevels[1].StepLevel = 2.0F;
    port.Refusal = OpenFailure::InUse;
    facts[0].Adapter = "USB Serial Converter";
    facts[1].Holders = {{"screen", 4711}, {"cat", 12}};
    VekComms form(services, turns, types, job);
    form.show();
    port.At(250, [&] { EXPECT_EQ(Text(form, "Finding_0"), u"asked at 9600 baud, 1 of 7"_s); });
    Settle();
    EXPECT_EQ(Text(form, "SendsWhat"), u"Sends hall.VMC (1 mode in use, VekNet 512 to 767)"_s);
    EXPECT_EQ(form.findChild<QWidget*>(u"VekType_0"_s)->toolTip(), u"USB Serial Converter (ttyUSB0)"_s);
    EXPECT_EQ(Text(form, "Finding_0"), u"Matrix Vek 2.5"_s);
    EXPECT_EQ(Text(form, "Finding_1"), u"in use by screen (4711), cat (12)"_s);
    EXPECT_EQ(Text(form, "Finding_2"), u"in use by another program, or does not work"_s);
    EXPECT_EQ(Text(form, "SearchHint"), u"A search restarts every known device on the ports"_s);
}

TEST_F(ProgrammingWindow, EveryEndIsKeptAndTold) {
    const QString error = u"Error!"_s;
    const QString programFailed = FromConstant(TextOf({FailureKind::ProgramFailed}).Text);
    const struct {
        std::size_t silentAfter; ///< blocks
        std::vector<std::pair<QString, QString>> boxes;
        std::string kept;
        QString told; ///< %1 is the time
    } cases[] = {
        {0,
         {{error, u"Vek not responding"_s}},
         "no device answered 0/0;",
         u"Not programmed: no device answered, COM1 (ttyUSB0), %1"_s},
        {3,
         {{error + u"  3"_s, u"No reply to download"_s}},
         "block not answered 3/3;",
         u"COM1 (ttyUSB0) holds an incomplete configuration: program it again"_s},
        {0, // which sends nothing
         {{error, u"Vek not responding"_s}},
         "no device answered 0/0;",
         u"COM1 (ttyUSB0) holds an incomplete configuration: program it again"_s},
        {273,
         {{error, u"No reply to restart"_s}, {error, programFailed}},
         "restart failed 273/0;",
         u"COM1 (ttyUSB0) holds the whole configuration, but did not restart: switch it off and on"_s},
        {1000,
         {},
         "programmed 273/0;",
         u"Programmed Matrix Vek 2.5 on COM1 (ttyUSB0), %1, 273 blocks, 0 retries"_s},
    };
    Restart();
    EXPECT_FALSE(OffersLastProgrammed());
    for (const auto& c : cases) {
        std::filesystem::remove_all(folder.Path("downloads"));
        for (const auto& [title, text] : c.boxes)
            boxes.ExpectMessage(title, text);
        if (c.boxes.empty())
            boxes.ExpectYesNo(u"All sent ok"_s, u"Program another vek"_s, Answer::No, Answer::No);
        Download(c.silentAfter);
        EXPECT_EQ(Kept(), c.kept);
        const auto entry = ProgrammingJournal(services.StateFolder).FromNewest().at(0).Entry;
        EXPECT_EQ(Find<QLabel>(u"StatusLink"_s)->text(),
                  QString(c.told).replace("%1"_L1, QString::fromStdString(JournalTime(entry)).mid(11, 5)));
        EXPECT_EQ(window->statusBar()->currentMessage(), QString());
    }
    EXPECT_TRUE(OffersLastProgrammed());
    Restart();
    EXPECT_TRUE(OffersLastProgrammed()) << "also after the program's end";

    services.StateFolder = folder.Path("file");
    WriteText(services.StateFolder, "no folder");
    Restart();
    boxes.ExpectYesNo(u"All sent ok"_s, u"Program another vek"_s, Answer::No, Answer::No);
    Download(1000);
    EXPECT_EQ(window->statusBar()->currentMessage(),
              u"The programming history could not be written: Not a directory"_s);
    EXPECT_TRUE(OffersLastProgrammed()) << "as long as the program runs";
}

TEST_F(ProgrammingWindow, ProblemsAreToldAndForbidNothing) {
    job.Config.VekNetBase = 2000;
    const auto form = Searched();
    EXPECT_EQ(form->findChild<QLabel*>(u"Problems"_s)->text(), u"1 error, 1 warning"_s);
    Press(*form, "Option1_0");
    EXPECT_TRUE(Enabled(*form, "ProgramVek"));
}

TEST_F(ProgrammingWindow, WaitsForItsTurnAndSaysWhy) {
    auto other = std::make_unique<PortTurns::Turn>(turns);
    ASSERT_TRUE(other->await_ready());
    const auto form = Searched();
    EXPECT_EQ(port.Story("open"), "");
    EXPECT_EQ(form->findChild<QLabel*>(u"Blanking1"_s)->text(),
              u"Waiting for the search on the Online page, which uses the same ports"_s);
    other.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(form->findChild<QLabel*>(u"Blanking1"_s)->text(), u"Please Wait Searching for Veks"_s);
    EXPECT_FALSE(turns.Free());
    Settle();
    EXPECT_TRUE(form->findChild<QRadioButton*>(u"Option1_0"_s)->isEnabled());
    EXPECT_TRUE(turns.Free());
}

TEST_F(ProgrammingWindow, ClosingEndsTheSearchAtOnce) {
    port.OnOutput = {};
    VekComms form(services, turns, types, job);
    form.show();
    port.At(50, [&] {
        EXPECT_FALSE(Enabled(form, "Command1"));
        EXPECT_TRUE(port.PortOpen());
        form.close();
        EXPECT_FALSE(form.isVisible() || port.PortOpen());
    });
    Settle();
    EXPECT_EQ(port.Now, 50);
    EXPECT_EQ(port.Story("open"), "0 open 1");
}

TEST_F(ProgrammingWindow, NoOtherPortCanBeChosenWhileOneIsProgrammed) {
    port.Present = {1, 2};
    const auto form = Searched();
    auto* first = form->findChild<QRadioButton*>(u"Option1_0"_s);
    auto* second = form->findChild<QRadioButton*>(u"Option1_1"_s);
    second->setFocus();
    second->click();
    device.OnBlock = [&](std::size_t block) {
        if (block != 5)
            return;
        QTest::keyClick(second, Qt::Key_Up);
        QTest::mouseClick(first, Qt::LeftButton, {}, {8, first->height() / 2});
        EXPECT_TRUE(second->isChecked());
        EXPECT_TRUE(second->isEnabled() && !first->isEnabled());
    };
    boxes.ExpectYesNo(u"All sent ok"_s, u"Program another vek"_s, Answer::Yes, Answer::No);
    boxes.ExpectYesNo(u"All sent ok"_s, u"Program another vek"_s, Answer::No, Answer::No);
    Press(*form, "ProgramVek");
    port.Forget();
    Settle();
    EXPECT_EQ(device.Image.size(), 2U * 273 * 8);
    EXPECT_EQ(port.Story("open 1"), "");
}

TEST_F(ProgrammingWindow, ToldToEndItLeavesTheDeviceRestartedAndSaysWhatIsMissing) {
    const struct {
        std::size_t block; ///< after which it is told to end; all of them are 273
        int restarts;
        std::string said;
    } cases[] = {
        {10, 1, "vorn-matrix-editor: COM1 (ttyUSB0) holds an incomplete configuration: program it again\n"},
        {273, 1, ""},
    };
    for (const auto& c : cases) {
        device.Image.clear();
        auto form = Searched();
        form->findChild<QRadioButton*>(u"Option1_0"_s)->click();
        port.Forget();
        device.OnBlock = [&](std::size_t block) {
            if (block == c.block)
                form->EndInOrder();
        };
        testing::internal::CaptureStderr();
        Press(*form, "ProgramVek");
        Settle();
        EXPECT_EQ(device.Image.size(), c.block * 8);
        EXPECT_EQ(Kept(), "ended with the program " + std::to_string(c.block) + "/0;");
        std::filesystem::remove_all(folder.Path("downloads"));
        EXPECT_EQ(port.Count("33"), c.restarts);
        EXPECT_FALSE(form->isVisible());
        EXPECT_FALSE(port.PortOpen());
        form.reset();
        // Qt's platform without a screen speaks there, too.
        const auto said = QString::fromStdString(testing::internal::GetCapturedStderr());
        EXPECT_EQ(
            QString(said).remove(u"This plugin does not support propagateSizeHints()\n"_s).toStdString(),
            c.said);
    }
}
