#include "dialogs/PrintingOptionsForm.h"
#include "dialogs/VekNetBaseForm.h"
#include "support/ScriptedDialogs.h"
#include "support/Windows.h"

#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

namespace vek {
namespace {

using namespace Qt::StringLiterals;
using test::ScriptedDialogs;

struct VekNetBaseFormTest : testing::Test {
    /// A dialog on the screen with a text typed into its box.
    struct Shown {
        Shown(ScriptedDialogs& dialogs, std::int16_t base, const char* typed) : Form(base, dialogs) {
            ShowActive(Form);
            QTest::keyClicks(&Text1, QLatin1StringView(typed));
        }
        VekNetBaseForm Form;
        QLineEdit& Text1 = Child<QLineEdit>(Form, "Text1");
        QPushButton& Done = Child<QPushButton>(Form, "Done");
    };
    ScriptedDialogs dialogs;
};

TEST_F(VekNetBaseFormTest, EnterTakesTheNumberAsItStands) {
    const struct {
        std::int16_t Base;
        const char* Typed;
        std::int16_t Result;
    } cases[] = {{512, "5000", 5000},   {512, "0", 0},    {512, "x7-8", 78},
                 {512, "32767", 32767}, {5000, "", 5000}, {-3, "", -3}};
    for (const auto& c : cases) {
        Shown shown(dialogs, c.Base, c.Typed);
        QTest::keyClick(&shown.Text1, Qt::Key_Return);
        EXPECT_EQ(shown.Form.result(), QDialog::Accepted);
        EXPECT_FALSE(shown.Form.isVisible());
        EXPECT_EQ(shown.Form.Base(), c.Result) << c.Typed;
        EXPECT_EQ(shown.Form.Changed(), c.Result != c.Base) << c.Typed;
    }
    Shown empty(dialogs, 512, "");
    QTest::keyClick(&empty.Text1, Qt::Key_Delete);
    QTest::keyClick(&empty.Text1, Qt::Key_Enter);
    EXPECT_EQ(empty.Form.Base(), 0);
}

TEST_F(VekNetBaseFormTest, ANumberBeyond16BitsKeepsTheDialogOpen) {
    Shown shown(dialogs, 512, "32768");
    dialogs.ExpectMessage(u"Error!"_s, u"Overflow"_s);
    QTest::keyClick(&shown.Text1, Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return dialogs.Done() && !dialogs.AnyOpen(); }));
    EXPECT_TRUE(shown.Form.isVisible());
    EXPECT_FALSE(shown.Form.Changed());
    EXPECT_EQ(shown.Form.Base(), 512);
}

TEST_F(VekNetBaseFormTest, LeavingTheBoxLimitsTheAddress) {
    const struct {
        const char* Typed;
        int Address;
    } cases[] = {{"0", 1}, {"2048", 2047}, {"99999999999999999999", 2047}, {"2047", 2047}, {"1", 1}};
    for (const auto& c : cases)
        for (const bool byMouse : {true, false}) {
            Shown shown(dialogs, 512, c.Typed);
            byMouse ? QTest::mouseClick(&shown.Done, Qt::LeftButton) : shown.Done.click();
            EXPECT_EQ(shown.Form.Base(), c.Address) << c.Typed;
            EXPECT_FALSE(shown.Form.isVisible());
        }
}

TEST_F(VekNetBaseFormTest, ButtonsAndArrowKeysStepWithinTheLimits) {
    Shown shown(dialogs, 512, "2046");
    QTest::mousePress(&Child<QWidget>(shown.Form, "Up"), Qt::LeftButton);
    QTimer& timer = Child<QTimer>(shown.Form, "Timer1");
    EXPECT_EQ(timer.interval(), 1000);
    QMetaObject::invokeMethod(timer.parent(), "Timer1_Tick");
    EXPECT_EQ(shown.Text1.text(), "2047"_L1);
    EXPECT_EQ(timer.interval(), 100);
    QTest::mouseRelease(&Child<QWidget>(shown.Form, "Up"), Qt::LeftButton);
    EXPECT_FALSE(timer.isActive());
    shown.Form.SetAddress(2);
    QTest::mouseClick(&Child<QWidget>(shown.Form, "Down"), Qt::LeftButton);
    QTest::keyClick(&shown.Text1, Qt::Key_Down);
    EXPECT_EQ(shown.Form.Address(), 1);
    QTest::keyClick(&shown.Text1, Qt::Key_Up);
    EXPECT_EQ(shown.Text1.text(), "2"_L1);
    EXPECT_EQ(Child<QLabel>(shown.Form, "Block").text(), u"Addresses 2 – 257"_s);
}

TEST_F(VekNetBaseFormTest, EscapeKeepsTheBaseAndPastingIsFiltered) {
    Shown shown(dialogs, 512, "");
    QApplication::clipboard()->setText(u"1, 2 and 3"_s);
    QTest::keyClick(&shown.Text1, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(shown.Text1.text(), "123"_L1);
    QTest::mouseClick(&shown.Text1, Qt::RightButton);
    QContextMenuEvent wanted(QContextMenuEvent::Mouse, {3, 3}, shown.Text1.mapToGlobal(QPoint(3, 3)));
    QApplication::sendEvent(&shown.Text1, &wanted);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    QTest::keyClick(&shown.Text1, Qt::Key_Escape);
    EXPECT_EQ(shown.Form.result(), QDialog::Rejected);
    EXPECT_FALSE(shown.Form.Changed());
}

const char* const optionNames[] = {"IncludeNotesCheck",   "IncludeOutputTrimsCheck", "IncludeInputTrimsCheck",
                                   "IncludeOutputsCheck", "IncludeRS232Check",       "IncludeVekNetCheck"};
constexpr bool PrintingOptions::*optionFlags[] = {
    &PrintingOptions::IncludeNotes,      &PrintingOptions::IncludeOutputTrims,
    &PrintingOptions::IncludeInputTrims, &PrintingOptions::IncludeOutputs,
    &PrintingOptions::IncludeRS232,      &PrintingOptions::IncludeVekNet};

TEST(PrintingOptionsForm, EachBoxShowsAndSetsItsFlag) {
    for (std::size_t i = 0; i < std::size(optionNames); ++i) {
        PrintingOptions only;
        only.*optionFlags[i] = true;
        PrintingOptionsForm form(only, true);
        QStringList checked;
        for (const QCheckBox* box : form.findChildren<QCheckBox*>())
            if (box->isChecked())
                checked += box->objectName();
        EXPECT_EQ(checked, QStringList{QLatin1StringView(optionNames[i])});

        PrintingOptionsForm fresh(PrintingOptions(), false);
        Child<QCheckBox>(fresh, optionNames[i]).click();
        Child<QPushButton>(fresh, "Done").click();
        EXPECT_FALSE(fresh.OptionsCancelled());
        EXPECT_EQ(fresh.Options(), only);
    }
}

TEST(PrintingOptionsForm, CancelKeepsTheOptionsAndAGreyBoxCountsAsUnchecked) {
    const PrintingOptions before{.IncludeNotes = true};
    PrintingOptionsForm cancelled(before, true);
    EXPECT_EQ(cancelled.windowTitle(), "Printing Options"_L1);
    Child<QCheckBox>(cancelled, "IncludeNotesCheck").click();
    Child<QPushButton>(cancelled, "Cancel").click();
    EXPECT_TRUE(cancelled.OptionsCancelled());
    EXPECT_EQ(cancelled.Options(), before);

    PrintingOptionsForm grey(before, false);
    EXPECT_EQ(grey.windowTitle(), "Export Options"_L1);
    EXPECT_EQ(Child<QPushButton>(grey, "Done").text().remove(u'&'), "Export"_L1);
    Child<QCheckBox>(grey, "IncludeNotesCheck").setCheckState(Qt::PartiallyChecked);
    Child<QPushButton>(grey, "Done").click();
    EXPECT_EQ(grey.Options(), PrintingOptions());
}

} // namespace
} // namespace vek
