// Every field that can be edited: changed through its control, that field alone differs, and back again none
// does.
#include "editor/EditorFixture.h"

#include <QDialog>
#include <QPlainTextEdit>
#include <QTimer>

using namespace vek;
using namespace vek::test;
using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t mode = 3;
constexpr std::size_t output = 5;

struct Field {
    std::string name;
    std::size_t offset; ///< in the record
    std::size_t size;
    std::function<void()> change;
    std::function<void()> changeBack;
};

class EveryField : public EditorTest {
  protected:
    EveryField() {
        Click(Element("Modes", mode));
        Click(Element("UsePanel", output));
        for (std::size_t o = 0; o < outputCount; ++o)
            AddPanels(o);
        AddLevels();
        AddTrims();
        AddAddresses();
        fields.push_back(
            {"Notes", 4226, notesLength, [this] { TypeNotes(u"x"_s); }, [this] { TypeNotes(QString()); }});
        fields.push_back(
            {"VekNetBase", 0, 2, [this] { EditBase(u"700"_s); }, [this] { EditBase(u"512"_s); }});
        fields.push_back({"LinkGroup", ModeOffset() + 504 + 2 * output, 2, [this] { Group(Qt::Key_2); },
                          [this] { Group(Qt::Key_0); }});
    }

    static std::size_t ModeOffset() { return 2 + 520 * mode; }

    void AddPanels(std::size_t o) {
        const std::size_t start = ModeOffset() + 160 + 43 * o;
        const auto list = [&](const char* control, std::size_t offset, std::size_t size) {
            const QString name = Element(control, o);
            fields.push_back({name.toStdString(), start + offset, size, [this, name] { Type(name, u"3"_s); },
                              [this, name] { Type(name, QString()); }});
        };
        list("RemotePaneInputs", 0, 9);
        list("RemotePanelVolumes", 9, 16);
        list("RemotePanelSelects", 25, 16);
        const QString check = Element("UsePreviousRouteCheck", o);
        fields.push_back({check.toStdString(), start + 41, 2, [this, check] { Click(check); },
                          [this, check] { Click(check); }});
    }
    void AddLevels() {
        const std::size_t start = ModeOffset() + 20 * output;
        const auto level = [&](const char* control, std::size_t offset, const char* text,
                               const char* textBefore) {
            const QString name = QString::fromLatin1(control);
            fields.push_back({control, start + offset, 4,
                              [=, this] { Type(name, QString::fromLatin1(text)); },
                              [=, this] { Type(name, QString::fromLatin1(textBefore)); }});
        };
        level("PanelMaximumLevel", 0, "8.5", "6");
        level("RemoteStartLevel", 4, "-2.5", "0");
        level("PanelMinimumLevel", 8, "-40", "-36");
        level("RemoteStepLevel", 14, "2.5", "1");
        const auto click = [&](const char* control, std::size_t offset, const char* back) {
            fields.push_back({control, start + offset, 2, [=, this] { Click(QString::fromLatin1(control)); },
                              [=, this] { Click(QString::fromLatin1(back)); }});
        };
        click("RemoteMuteOnMin", 12, "RemoteMuteOnMin");
        click("RemotePreviousNotSetStartLevel_1", 18, "RemotePreviousNotSetStartLevel_0");
    }
    void AddTrims() {
        for (std::size_t i = 0; i < 16; ++i) {
            const QString name = i < 8 ? Element("InputLevelTrim", i) : Element("OutputLevelTrim", i - 8);
            fields.push_back({name.toStdString(), 4162 + 4 * i, 4,
                              [this, name] { PressKnob(name, Qt::Key_Down); },
                              [this, name] { PressKnob(name, Qt::Key_Up); }});
        }
    }
    void AddAddresses() {
        const auto labels = [&](const char* control, std::size_t count, std::size_t offset) {
            for (std::size_t i = 0; i < count; ++i) {
                const QString name = Element(control, i);
                fields.push_back({name.toStdString(), offset + 2 * i, 2, [this, name] { Click(name); },
                                  [this, name] { Click(name); }});
            }
        };
        labels("VekNetLabel2", 16, 5726);
        labels("VolumeVekNetLabel", 8, 5758 + 2 * 8 * output);
        labels("VekNetLabelRouteControl", 6, 5886 + 2 * 6 * output);
        labels("VekNetLabelRoute", 16, 5982 + 2 * 16 * output);
    }

    void TypeNotes(const QString& text) {
        auto* notes = Find<QPlainTextEdit>(u"Text1"_s);
        notes->selectAll();
        QTest::keyClick(notes, Qt::Key_Delete);
        QTest::keyClicks(notes, text);
    }
    /// Does something in the dialog that a command opens.
    template <typename Action>
    void InDialog(const QString& command, Action action) {
        QTimer::singleShot(0, window.get(), [this, action] {
            auto* dialog = window->findChild<QDialog*>();
            ASSERT_NE(dialog, nullptr);
            action(dialog);
        });
        Trigger(command);
    }
    void EditBase(const QString& text) {
        InDialog(u"BASE"_s, [text](QDialog* dialog) {
            auto* box = dialog->findChild<QLineEdit*>(u"Text1"_s);
            box->selectAll();
            QTest::keyClicks(box, text);
            QTest::keyClick(box, Qt::Key_Return);
        });
    }
    void Group(Qt::Key group) {
        InDialog(u"LINK"_s, [group](QDialog* dialog) {
            QTest::keyClick(dialog->findChild<QWidget*>(Element("Label1", output)), group);
            dialog->findChild<QAbstractButton*>(u"Done"_s)->click();
        });
    }

    std::vector<Field> fields;
};

/// The bytes that differ, as "first … last".
std::pair<std::size_t, std::size_t> Difference(const std::string& a, const std::string& b) {
    std::size_t first = a.size();
    std::size_t last = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i] != b[i]) {
            first = std::min(first, i);
            last = i;
        }
    }
    return {first, last};
}

} // namespace

TEST_F(EveryField, ChangesAloneAndBack) {
    const std::string before = Bytes();
    ASSERT_FALSE(ConfigDiffers());
    ASSERT_EQ(fields.size(), 4U * 8 + 6 + 16 + 46 + 3);
    for (const Field& field : fields) {
        SCOPED_TRACE(field.name);
        Click(Element("UsePanel", output)); // undo goes to the output of a list
        ConfigChanged = false;
        field.change();
        const auto [first, last] = Difference(before, Bytes());
        EXPECT_GE(first, field.offset);
        EXPECT_LT(first, field.offset + field.size) << "no byte of the field changed";
        EXPECT_LT(last, field.offset + field.size);
        EXPECT_TRUE(ConfigDiffers());
        EXPECT_TRUE(ConfigChanged);
        const std::string changed = Bytes();
        Trigger(u"EditUndo"_s);
        EXPECT_EQ(Differing(Bytes(), before), "");
        EXPECT_FALSE(ConfigDiffers());
        Trigger(u"EditRedo"_s);
        EXPECT_EQ(Differing(Bytes(), changed), "");
        field.changeBack();
        EXPECT_EQ(Differing(Bytes(), before), "");
        EXPECT_FALSE(ConfigDiffers());
    }
}

TEST_F(EveryField, TheBaseMovesTheAddresses) {
    Click(u"VekNetLabel2_3"_s);
    EditBase(u"700"_s);
    EXPECT_EQ(Find<QAbstractButton>(u"VekNetLabel2_3"_s)->text(), u"703"_s);
}

TEST_F(EveryField, WhatIsNotTouchedKeepsItsExactValue) {
    // Values that the controls cannot show as they are.
    NewConfiguration();
    ModeRecord& odd = Config.Modes[mode];
    odd.OutputLevels[output].MaximumLevel = 30.25F;
    odd.OutputLevels[output].StepLevel = 0.3F;
    odd.OutputLevels[output].MuteOnMin = 7;
    odd.OutputPanels[2].PanelInputs = "  12";
    odd.OutputPanels[2].PanelVolumes = "gCdc";
    odd.OutputPanels[3].PanelSelects = "\t1\xA0\r\n";
    odd.OutputPanels[2].UsePreviousRoute = 256;
    Config.InputTrim[1] = -3.7F;
    Config.Notes = "one\ntwo\rthree\x81\xA0";
    Config.Addresses.RouteAddressEnable[7][15] = 2;
    const TemporaryFolder folder;
    const std::string path = folder.Path("odd.VMC");
    WriteConfigFile(path);
    NewConfiguration();
    boxes.ExpectOpenFile(QString(), QString::fromStdString(path));
    Trigger(u"OPEN"_s);
    for (std::size_t i = 0; i < 8; ++i) {
        Click(Element("Modes", i));
        Click(Element("UsePanel", i));
    }
    EXPECT_FALSE(ConfigDiffers());
    EXPECT_FALSE(ConfigChanged);
    EXPECT_EQ(Differing(Bytes(), ReadText(path)), "");
}
