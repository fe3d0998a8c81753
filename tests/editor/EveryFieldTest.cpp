// Every field that can be edited: changed through its control, that field alone differs, and back again none
// does.
#include "editor/EditorFixture.h"

using namespace vek;
using namespace vek::test;

namespace {

constexpr std::size_t mode = 3;
constexpr std::size_t output = 5;
constexpr std::size_t modeOffset = 2 + 520 * mode;

struct Field {
    std::string name;
    std::size_t offset; ///< in the record
    std::size_t size;
    std::function<void(bool changed)> set; ///< to another value, and back
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
        Add(u"Notes"_s, 4226, notesLength, [this](bool changed) { TypeNotes(changed ? u"x"_s : QString()); });
        Add(u"VekNetBase"_s, 0, 2, [this](bool changed) { EditBase(changed ? u"700"_s : u"512"_s); });
        Add(u"LinkGroup"_s, modeOffset + 504 + 2 * output, 2,
            [this](bool changed) { Group(changed ? Qt::Key_2 : Qt::Key_0); });
    }

    void Add(const QString& name, std::size_t offset, std::size_t size, std::function<void(bool)> set) {
        fields.push_back({name.toStdString(), offset, size, std::move(set)});
    }
    void AddClicked(const QString& name, std::size_t offset) {
        Add(name, offset, 2, [this, name](bool) { Click(name); });
    }
    void AddTyped(const QString& name, std::size_t offset, std::size_t size, const QString& text,
                  const QString& textBefore) {
        Add(name, offset, size, [=, this](bool changed) { Type(name, changed ? text : textBefore); });
    }
    void AddPanels(std::size_t o) {
        const std::size_t start = modeOffset + 160 + 43 * o;
        AddTyped(Element("RemotePaneInputs", o), start, 9, u"3"_s, {});
        AddTyped(Element("RemotePanelVolumes", o), start + 9, 16, u"3"_s, {});
        AddTyped(Element("RemotePanelSelects", o), start + 25, 16, u"3"_s, {});
        AddClicked(Element("UsePreviousRouteCheck", o), start + 41);
    }
    void AddLevels() {
        const std::size_t start = modeOffset + 20 * output;
        AddTyped(u"PanelMaximumLevel"_s, start, 4, u"8.5"_s, u"6"_s);
        AddTyped(u"RemoteStartLevel"_s, start + 4, 4, u"-2.5"_s, u"0"_s);
        AddTyped(u"PanelMinimumLevel"_s, start + 8, 4, u"-40"_s, u"-36"_s);
        AddTyped(u"RemoteStepLevel"_s, start + 14, 4, u"2.5"_s, u"1"_s);
        AddClicked(u"RemoteMuteOnMin"_s, start + 12);
        Add(u"RemotePreviousNotSetStartLevel"_s, start + 18, 2,
            [this](bool changed) { Click(Element("RemotePreviousNotSetStartLevel", changed ? 1 : 0)); });
    }
    void AddTrims() {
        for (std::size_t i = 0; i < 16; ++i) {
            const QString name = i < 8 ? Element("InputLevelTrim", i) : Element("OutputLevelTrim", i - 8);
            Add(name, 4162 + 4 * i, 4,
                [this, name](bool changed) { PressKnob(name, changed ? Qt::Key_Down : Qt::Key_Up); });
        }
    }
    void AddAddresses() {
        const auto labels = [&](const char* control, std::size_t count, std::size_t offset) {
            for (std::size_t i = 0; i < count; ++i)
                AddClicked(Element(control, i), offset + 2 * i);
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

/// Whether the texts differ, and nowhere but in the field.
bool DifferOnlyIn(const Field& field, const std::string& a, std::string b) {
    if (a == b)
        return false;
    return b.replace(field.offset, field.size, a, field.offset, field.size) == a;
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
        field.set(true);
        EXPECT_TRUE(DifferOnlyIn(field, before, Bytes())) << Differing(before, Bytes());
        EXPECT_TRUE(ConfigDiffers() && ConfigChanged);
        const std::string changed = Bytes();
        Trigger(u"EditUndo"_s);
        EXPECT_EQ(Differing(Bytes(), before), "");
        EXPECT_FALSE(ConfigDiffers());
        Trigger(u"EditRedo"_s);
        EXPECT_EQ(Differing(Bytes(), changed), "");
        field.set(false);
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
    EXPECT_FALSE(ConfigDiffers() || ConfigChanged);
    EXPECT_EQ(Differing(Bytes(), ReadText(path)), "");
}
