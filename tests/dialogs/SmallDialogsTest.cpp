#include "dialogs/AboutForm.h"
#include "dialogs/PrintingOptionsForm.h"
#include "dialogs/VekNetBaseForm.h"
#include "support/ScriptedDialogs.h"
#include "support/Windows.h"

#include <QCheckBox>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

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

TEST_F(VekNetBaseFormTest, TellsWhichAddressesTheBaseTakes) {
    Shown shown(dialogs, 512, "");
    auto& block = Child<QLabel>(shown.Form, "Block");
    EXPECT_EQ(block.text(), u"Addresses 512 – 767"_s);
    const std::pair<const char*, QString> cases[] = {{"0", u"1 to 2047 are valid"_s},
                                                     {"1", u"Addresses 1 – 256"_s},
                                                     {"2047", u"Addresses 2047 – 2302"_s},
                                                     {"2048", u"1 to 2047 are valid"_s}};
    for (const auto& [typed, text] : cases) {
        shown.Text1.selectAll();
        QTest::keyClicks(&shown.Text1, QLatin1StringView(typed));
        EXPECT_EQ(block.text(), text) << typed;
    }
    QLabel* caption = nullptr;
    for (QLabel* label : shown.Form.findChildren<QLabel*>())
        if (label->buddy() == &shown.Text1)
            caption = label;
    ASSERT_NE(caption, nullptr);
    EXPECT_EQ(caption->text(), "&Base address (1 to 2047):"_L1);
    EXPECT_EQ(shown.Text1.accessibleName(), "Base address"_L1);
    EXPECT_EQ(Child<QWidget>(shown.Form, "Down").accessibleName(), "Base address down"_L1);
    EXPECT_EQ(shown.Form.windowTitle(), "VekNet Base Address"_L1);
    EXPECT_TRUE(shown.Text1.hasFocus());
}

TEST(AboutForm, NamesTheProgramAndItsVersion) {
    AboutForm form(u"1.2.3"_s);
    EXPECT_EQ(form.windowTitle(), "About Vorn Matrix Editor"_L1);
    EXPECT_TRUE(Child<QLabel>(form, "Version").textInteractionFlags() & Qt::TextSelectableByMouse);
    QStringList texts;
    for (const QLabel* label : form.findChildren<QLabel*>())
        texts += label->text();
    EXPECT_EQ(texts, (QStringList{u"Vorn Matrix Editor"_s, u"Version 1.2.3"_s,
                                  u"Configuration editor of the Matrix Vek"_s}));
    ShowActive(form);
    form.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
    EXPECT_EQ(form.result(), QDialog::Accepted);
    EXPECT_FALSE(form.isVisible());
}

const char* const optionNames[] = {"IncludeNotesCheck",   "IncludeOutputTrimsCheck", "IncludeInputTrimsCheck",
                                   "IncludeOutputsCheck", "IncludeRS232Check",       "IncludeVekNetCheck"};
const char* const optionCaptions[] = {"Include &Notes",          "Include Output &Trims",
                                      "Include &Input Trims",    "Include &Output Configurations",
                                      "Include &RS232 Commands", "Include &VekNet Addresses"};
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
        EXPECT_EQ(Child<QCheckBox>(fresh, optionNames[i]).text(), QLatin1StringView(optionCaptions[i]));
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
    EXPECT_EQ(cancelled.result(), QDialog::Rejected);
    EXPECT_EQ(Child<QPushButton>(cancelled, "Done").text(), "&Print"_L1);
    EXPECT_EQ(Child<QPushButton>(cancelled, "Cancel").text(), "&Cancel"_L1);
    EXPECT_EQ(Child<QGroupBox>(cancelled, "Frame1").title(), "Sections"_L1);
    ShowActive(cancelled);
    EXPECT_TRUE(Child<QCheckBox>(cancelled, "IncludeNotesCheck").hasFocus());
    QTest::keyClick(&cancelled, Qt::Key_Return); // the default button
    EXPECT_FALSE(cancelled.OptionsCancelled());
    EXPECT_EQ(cancelled.result(), QDialog::Accepted);

    PrintingOptionsForm grey(before, false);
    EXPECT_EQ(grey.windowTitle(), "Export Options"_L1);
    EXPECT_EQ(Child<QPushButton>(grey, "Done").text().remove(u'&'), "Export"_L1);
    Child<QCheckBox>(grey, "IncludeNotesCheck").setCheckState(Qt::PartiallyChecked);
    Child<QPushButton>(grey, "Done").click();
    EXPECT_EQ(grey.Options(), PrintingOptions());
}

} // namespace
} // namespace vek
