// The menu bar, the keys, the heading and what the selectors tell.
#include "editor/EditorFixture.h"

#include "editor/CommandTable.h"
#include "editor/EditorToolBar.h"
#include "model/ConfigFile.h"
#include "pages/PageHeading.h"

#include <set>

using namespace vek;
using namespace vek::test;

namespace {

class Menus : public EditorTest {
  protected:
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
        QTest::keyClick(window.get(), key, modifiers);
        Settle();
    }
    TemporaryFolder folder;
};

TEST_F(Menus, HaveEveryCommandAndNoKeyTwice) {
    std::set<QAction*> inMenus;
    std::set<QString> keys;
    for (const QAction* title : window->menuBar()->actions()) {
        std::set<QString> marks;
        for (QAction* entry : title->menu()->actions()) {
            inMenus.insert(entry);
            for (const QKeySequence& key : entry->shortcuts())
                EXPECT_TRUE(keys.insert(key.toString()).second) << key.toString().toStdString();
            if (entry->isSeparator())
                continue;
            const qsizetype mark = entry->text().indexOf(u'&');
            ASSERT_GE(mark, 0) << entry->text().toStdString();
            EXPECT_TRUE(marks.insert(entry->text().mid(mark + 1, 1).toUpper()).second)
                << entry->text().toStdString();
        }
    }
    for (const ToolbarCommand& command : ToolbarCommands()) {
        auto* action = Find<QAction>(QString::fromLatin1(command.Key));
        EXPECT_TRUE(inMenus.contains(action) && !action->shortcut().isEmpty()) << command.Key;
        EXPECT_TRUE(action->toolTip().endsWith(u" ("_s + action->shortcut().toString() + u')'))
            << command.Key;
    }
}

TEST_F(Menus, KeysChooseModeOutputAndPage) {
    Activate();
    Key(Qt::Key_3, Qt::AltModifier);
    Key(Qt::Key_4, Qt::ControlModifier);
    EXPECT_TRUE(Chosen(u"Modes_2"_s) && Chosen(u"UsePanel_3"_s));
    Key(Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(ShownTab(), LevelsTab);
    Find<QTabWidget>(u"SSTab1"_s)->setTabEnabled(RemotePanelsTab, false);
    Key(Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(ShownTab(), OverviewTab) << "disabled pages are passed over, round about";
    Key(Qt::Key_F1, Qt::NoModifier);
    auto* manual = window->findChild<QDialog*>(u"ManualForm"_s);
    ASSERT_NE(manual, nullptr);
    auto* text = manual->findChild<QTextBrowser*>();
    EXPECT_TRUE(text->toPlainText().contains(u"Ctrl+PgDn"_s));
    EXPECT_EQ(text->horizontalScrollBar()->maximum(), 0) << "pictures fit";
    Q_EMIT text->anchorClicked(QUrl(u"#when-something-does-not-work"_s));
    EXPECT_EQ(text->textCursor().block().text(), u"When something does not work"_s);
}

TEST_F(Menus, PasteIsOfferedWhenItWouldWork) {
    const auto offered = [this] {
        Q_EMIT Find<QMenu>(u"EditMenu"_s)->aboutToShow();
        return std::pair(Find<QAction>(u"PasteMode"_s)->isEnabled(),
                         Find<QAction>(u"PasteOutput"_s)->isEnabled());
    };
    QGuiApplication::clipboard()->setText(u"neither"_s);
    EXPECT_EQ(offered(), std::pair(false, false));
    Find<QAction>(u"CopyMode"_s)->trigger();
    EXPECT_EQ(offered(), std::pair(true, false));
    Click(u"UsePanel_1"_s);
    Find<QAction>(u"CopyOutput"_s)->trigger();
    EXPECT_EQ(offered(), std::pair(false, true));
    Config.Modes[0].OutputLevels[1].MaximumLevel = -3;
    Find<QAction>(u"PasteOutput"_s)->trigger();
    EXPECT_EQ(Config.Modes[0].OutputLevels[1], OutputLevelRecord());
}

TEST_F(Menus, NamesAndStatesAreToldWhereModesAndOutputsAreChosen) {
    MatrixConfig config;
    config.Notes = FixedText<notesLength>("Mode 2: Evening & late\r\noutput 3: <b>Foyer");
    config.Modes[1].OutputPanels[2].PanelInputs = FixedText<inputCharacters.size()>("12");
    config.Modes[1].LinkGroup[2] = config.Modes[1].LinkGroup[4] = 2;
    SaveConfig(folder.Path("names.VMC"), config);
    OpenAnyway(QString::fromStdString(folder.Path("names.VMC")));
    Click(u"Modes_1"_s);
    Click(u"UsePanel_2"_s);
    ShowTab(LevelsTab);
    EXPECT_EQ(Find<PageHeading>(u"PageHeading"_s)->text(),
              u"Levels of Mode 2 Evening & late, Output 3 <b>Foyer"_s);
    Q_EMIT Find<QMenu>(u"ModeMenu"_s)->aboutToShow();
    EXPECT_EQ(Find<QAction>(u"ChooseMode_1"_s)->text(), u"Mode &2 Evening && late"_s);
    EXPECT_TRUE(Find<QAction>(u"ChooseMode_1"_s)->isChecked());
    const auto told = [this](const QString& name) { return Find(name)->accessibleDescription(); };
    EXPECT_EQ(Find(u"UsePanel_2"_s)->accessibleName(), u"Output 3 <b>Foyer"_s);
    EXPECT_EQ(told(u"UsePanel_2"_s), u"in use in this mode, link group B"_s);
    EXPECT_EQ(told(u"UsePanel_4"_s), u"in use in this mode, link group B, follows Output 3 <b>Foyer"_s);
    EXPECT_EQ(told(u"Modes_0"_s), u"not in use: no output has inputs"_s);
    boxes.ExpectYesNo(u"Reset to default"_s, u"Do you wish to reset this mode to default settings?"_s,
                      Answer::No);
    Trigger(u"DEFAULT"_s);
    EXPECT_EQ(boxes.LastAbout, u"Mode 2 Evening & late"_s);
}

TEST_F(Menus, ToolbarDropsItsTextsWhereThereIsNoRoom) {
    const auto* bar = window->findChild<EditorToolBar*>();
    for (const int width : {1100, 500, 1100}) {
        window->resize(width, 600);
        Settle();
        EXPECT_EQ(bar->toolButtonStyle(),
                  width == 500 ? Qt::ToolButtonIconOnly : Qt::ToolButtonTextUnderIcon);
        EXPECT_LE(window->width(), std::max(width, 700)) << "pages and selectors scroll";
    }
}

} // namespace
