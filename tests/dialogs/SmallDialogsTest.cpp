#include "dialogs/AboutForm.h"
#include "dialogs/PrintingOptionsForm.h"
#include "dialogs/VekNetBaseForm.h"
#include "support/ScriptedDialogs.h"
#include "support/Windows.h"

using namespace vek;
using namespace Qt::StringLiterals;

struct VekNetBaseFormTest : testing::Test {
    /// A dialog on the screen with a text typed into its box.
    struct Shown {
        Shown(test::ScriptedDialogs& dialogs, std::int16_t base, const char* typed) : Form(base, dialogs) {
            ShowActive(Form);
            QTest::keyClicks(&Text1, QLatin1StringView(typed));
        }
        VekNetBaseForm Form;
        QLineEdit& Text1 = Child<QLineEdit>(Form, "Text1");
        QPushButton& Done = Child<QPushButton>(Form, "Done");
    };
    test::ScriptedDialogs dialogs;
};

TEST_F(VekNetBaseFormTest, EnterTakesTheNumberAsItStands) {
    const std::tuple<std::int16_t, const char*, std::int16_t> cases[] = {
        {512, "5000", 5000},   {512, "0", 0},    {512, "x7-8", 78},
        {512, "32767", 32767}, {5000, "", 5000}, {-3, "", -3}};
    for (const auto& [base, typed, result] : cases) {
        Shown shown(dialogs, base, typed);
        QTest::keyClick(&shown.Text1, Qt::Key_Return);
        EXPECT_EQ(shown.Form.result(), QDialog::Accepted);
        EXPECT_EQ(shown.Form.Base(), result) << typed;
        EXPECT_EQ(shown.Form.Changed(), result != base) << typed;
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
    EXPECT_EQ(shown.Form.Base(), 512);
}

TEST_F(VekNetBaseFormTest, LeavingTheBoxLimitsTheAddress) {
    const std::pair<const char*, int> cases[] = {
        {"0", 1}, {"2048", 2047}, {"99999999999999999999", 2047}, {"2047", 2047}, {"1", 1}};
    for (const auto& [typed, address] : cases)
        for (const bool byMouse : {true, false}) {
            Shown shown(dialogs, 512, typed);
            byMouse ? QTest::mouseClick(&shown.Done, Qt::LeftButton) : shown.Done.click();
            EXPECT_EQ(shown.Form.Base(), address) << typed;
            EXPECT_FALSE(shown.Form.isVisible());
        }
}

TEST_F(VekNetBaseFormTest, ButtonsAndArrowKeysStepWithinTheLimits) {
    Shown shown(dialogs, 512, "2046");
    for (int i = 0; i < 2; ++i)
        QTest::mouseClick(&Child<QWidget>(shown.Form, "Up"), Qt::LeftButton);
    EXPECT_EQ(shown.Text1.text(), "2047"_L1);
    shown.Form.SetAddress(2);
    QTest::mouseClick(&Child<QWidget>(shown.Form, "Down"), Qt::LeftButton);
    QTest::keyClick(&shown.Text1, Qt::Key_Down);
    EXPECT_EQ(shown.Form.Address(), 1);
    QTest::keyClick(&shown.Text1, Qt::Key_Up);
    EXPECT_EQ(shown.Text1.selectedText(), "2"_L1) << "the next digit starts a new address";
    shown.Done.setFocus();
    QTest::keyClick(&shown.Done, Qt::Key_Up); // the box has not the focus: no step
    EXPECT_EQ(shown.Form.Address(), 2);
}

TEST_F(VekNetBaseFormTest, TellsWhichAddressesTheBaseTakes) {
    Shown shown(dialogs, 512, "");
    auto& block = Child<QLabel>(shown.Form, "Block");
    const std::pair<const char*, QString> cases[] = {{"0", u"1 to 2047 are valid"_s},
                                                     {"1", u"Addresses 1 – 256"_s},
                                                     {"2047", u"Addresses 2047 – 2302"_s},
                                                     {"2048", u"1 to 2047 are valid"_s}};
    for (const auto& [typed, text] : cases) {
        shown.Text1.selectAll();
        QTest::keyClicks(&shown.Text1, QLatin1StringView(typed));
        EXPECT_EQ(block.text(), text) << typed;
    }
    EXPECT_EQ(shown.Text1.accessibleName(), "Base address"_L1);
    EXPECT_EQ(Child<QWidget>(shown.Form, "Down").accessibleName(), "Base address down"_L1);
    EXPECT_TRUE(shown.Text1.hasFocus());
    QTest::keyClick(&shown.Text1, Qt::Key_Escape);
    EXPECT_EQ(shown.Form.result(), QDialog::Rejected);
    EXPECT_FALSE(shown.Form.Changed());
}

TEST(AboutForm, NamesTheVersion) {
    EXPECT_EQ(Child<QLabel>(*std::make_unique<AboutForm>(u"1.2.3"_s), "Version").text(), "Version 1.2.3"_L1);
}

constexpr std::pair<const char*, bool PrintingOptions::*> options[] = {
    {"IncludeNotesCheck", &PrintingOptions::IncludeNotes},
    {"IncludeOutputTrimsCheck", &PrintingOptions::IncludeOutputTrims},
    {"IncludeInputTrimsCheck", &PrintingOptions::IncludeInputTrims},
    {"IncludeOutputsCheck", &PrintingOptions::IncludeOutputs},
    {"IncludeRS232Check", &PrintingOptions::IncludeRS232},
    {"IncludeVekNetCheck", &PrintingOptions::IncludeVekNet}};

TEST(PrintingOptionsForm, EachBoxShowsAndSetsItsFlag) {
    for (const auto& [name, flag] : options) {
        PrintingOptions only;
        only.*flag = true;
        PrintingOptionsForm form(only, true);
        QStringList checked;
        for (const QCheckBox* box : form.findChildren<QCheckBox*>())
            if (box->isChecked())
                checked += box->objectName();
        EXPECT_EQ(checked, QStringList{QLatin1StringView(name)});

        PrintingOptionsForm fresh(PrintingOptions(), false);
        Child<QCheckBox>(fresh, name).click();
        Child<QPushButton>(fresh, "Done").click();
        EXPECT_FALSE(fresh.OptionsCancelled());
        EXPECT_EQ(fresh.Options(), only);
    }
}

TEST(PrintingOptionsForm, CancelKeepsTheOptionsAndAGreyBoxCountsAsUnchecked) {
    const PrintingOptions before{.IncludeNotes = true};
    PrintingOptionsForm cancelled(before, true);
    Child<QCheckBox>(cancelled, "IncludeNotesCheck").click();
    EXPECT_EQ(Child<QPushButton>(cancelled, "Done").text(), "&Print"_L1);
    Child<QPushButton>(cancelled, "Cancel").click();
    EXPECT_TRUE(cancelled.OptionsCancelled());
    EXPECT_EQ(cancelled.Options(), before);
    ShowActive(cancelled);
    QTest::keyClick(&cancelled, Qt::Key_Return); // the default button
    EXPECT_FALSE(cancelled.OptionsCancelled());

    PrintingOptionsForm grey(before, false);
    Child<QCheckBox>(grey, "IncludeNotesCheck").setCheckState(Qt::PartiallyChecked);
    EXPECT_EQ(Child<QPushButton>(grey, "Done").text().remove(u'&'), "Export"_L1);
    Child<QPushButton>(grey, "Done").click();
    EXPECT_EQ(grey.Options(), PrintingOptions());
}
