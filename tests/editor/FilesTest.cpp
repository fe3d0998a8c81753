// What starts from a file or is remembered: recent files, templates, drops, the window's place.
#include "editor/EditorFixture.h"

#include "editor/FileCommands.h"
#include "editor/RecentFiles.h"
#include "editor/TemplateMenu.h"
#include "model/ConfigFile.h"
#include "userstate/UserSettings.h"

using namespace vek;
using namespace vek::test;

namespace {

class Files : public EditorTest {
  protected:
    Files() {
        services.SettingsFile = folder.Path("settings");
        Restart();
    }
    FileCommands& Commands() { return *window->findChild<FileCommands*>(); }
    QString Copy(const char* sample, const std::string& name) {
        std::filesystem::copy_file(DataPath(sample), folder.Path(name));
        return QString::fromStdString(folder.Path(name));
    }
    /// Opens the menu, and tells what it offers.
    static QStringList Texts(QMenu& menu) {
        Q_EMIT menu.aboutToShow();
        QStringList texts;
        for (const QAction* action : menu.actions()) {
            if (!action->isSeparator())
                texts += action->isEnabled() ? action->text() : u'(' + action->text() + u')';
        }
        return texts;
    }
    /// Drags the files over a widget and drops them; true when the window would take them.
    bool DropOn(QWidget& widget, const QStringList& paths) {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString& path : paths)
            urls += QUrl::fromLocalFile(path);
        data.setUrls(urls);
        const QPoint at = widget.mapTo(window.get(), widget.rect().center());
        QDragEnterEvent enter(at, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(window->windowHandle(), &enter);
        QDropEvent drop(at, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(window->windowHandle(), &drop);
        EXPECT_EQ(drop.isAccepted(), enter.isAccepted());
        return drop.isAccepted();
    }

    TemporaryFolder folder;
    UserSettings settings{folder.Path("settings")};
};

TEST_F(Files, RecentFilesAreOfferedAndOpenedAsOpenDoes) {
    QMenu menu;
    RecentFiles recent(menu, settings);
    QObject::connect(&recent, &RecentFiles::Chosen,
                     [&](const std::string& path) { Commands().OpenNamed(path); });
    EXPECT_EQ(Texts(menu), QStringList{u"(&Clear List)"_s});
    const QString first = Copy("01.VMC", "Bar & <b>.VMC"), second = Copy("02.VMC", "hall.VMC");
    OpenAnyway(first);
    OpenAnyway(second);
    EXPECT_EQ(Texts(menu), (QStringList{u"&1 hall.VMC"_s, u"&2 Bar && <b>.VMC"_s, u"&Clear List"_s}));
    const auto choose = [&](const char* name) {
        menu.findChild<QAction*>(QLatin1StringView(name))->trigger();
    };
    EXPECT_EQ(menu.findChild<QAction*>(u"RecentFile_1"_s)->statusTip(), first);

    Click(u"VekNetLabel2_3"_s);
    ExpectUnsaved(Answer::Cancel);
    choose("RecentFile_1");
    EXPECT_EQ(CurrentFileName, second.toStdString());
    ExpectUnsaved(Answer::No);
    choose("RecentFile_1");
    EXPECT_EQ(CurrentFileName, first.toStdString());
    EXPECT_TRUE(Config == LoadConfig(DataPath("01.VMC")) && !ConfigDiffers());

    std::filesystem::remove(second.toStdString());
    choose("RecentFile_0"); // of a menu that was filled before
    EXPECT_EQ(Told(), "hall.VMC was not opened: there is no such file"_L1);
    EXPECT_EQ(Texts(menu), (QStringList{u"&1 Bar && <b>.VMC"_s, u"&Clear List"_s}));
    choose("ClearRecentFiles");
    EXPECT_EQ(Texts(menu), QStringList{u"(&Clear List)"_s});
    // A new configuration is looked for, and saved, where the last file was.
    Trigger(u"NEW"_s);
    const QString start = QString::fromStdString(folder.Path()) + u'/';
    boxes.ExpectOpenFile(start, std::nullopt);
    Trigger(u"OPEN"_s);
    boxes.ExpectSaveFile(start, std::nullopt);
    Trigger(u"SAVEAS"_s);
}

TEST_F(Files, ATemplateOpensUnnamedWithNothingUnsaved) {
    std::filesystem::create_directory(folder.Path("own"));
    Copy("02.VMC", "own/Chapel.VMC");
    Copy("03.VMC", "School.VMC");
    Copy("01.VMC", "Cafe.VMC");
    WriteText(folder.Path("own/notes.txt"), "");
    std::filesystem::create_directory(folder.Path("own/Folder.VMC"));
    std::filesystem::create_symlink("nowhere", folder.Path("own/Link.VMC"));
    WriteText(folder.Path("own/Zoo.VMC"), "too short");
    QMenu menu;
    TemplateMenu templates(menu, {folder.Path("none"), folder.Path(), folder.Path("own")});
    QObject::connect(&templates, &TemplateMenu::Chosen,
                     [&](const std::string& path) { Commands().NewFromTemplate(path); });
    EXPECT_EQ(Texts(menu),
              (QStringList{u"&1 Cafe"_s, u"&2 School"_s, u"&3 Chapel"_s, u"&4 Zoo"_s,
                           u"(Your own go into %1)"_s.arg(QString::fromStdString(folder.Path("own")))}));
    OpenAnyway(QString::fromStdString(DataPath("01.VMC")));
    boxes.ExpectMessage(u"Error!"_s,
                        u"Zoo.VMC cannot be read: shorter than a configuration: 9 of 6238 bytes\n\n%1"_s.arg(
                            QString::fromStdString(folder.Path("own/Zoo.VMC"))));
    menu.findChild<QAction*>(u"Template_3"_s)->trigger();
    EXPECT_EQ(CurrentFileName, DataPath("01.VMC")) << "what cannot be read changes nothing";
    menu.findChild<QAction*>(u"Template_2"_s)->trigger();
    EXPECT_TRUE(Config == LoadConfig(DataPath("02.VMC")));
    EXPECT_FALSE(ConfigDiffers());
    EXPECT_EQ(CurrentFileName, "");
    EXPECT_TRUE(Status().startsWith(u"Copy of Chapel.VMC, not named yet: Save As keeps it|"_s));
    boxes.ExpectPrinter(false);
    Trigger(u"PrintOverview"_s);
    EXPECT_EQ(boxes.LastPrinted, u"Copy of Chapel.VMC"_s);
    EXPECT_FALSE(Find<QAction>(u"EditUndo"_s)->isEnabled());
    EXPECT_EQ(settings.RecentFiles(), std::vector{DataPath("01.VMC")});
}

TEST_F(Files, AFileIsDroppedAnywhereOnTheWindow) {
    const QString hall = Copy("02.VMC", "hall.vmc");
    auto& notes = *Find<QPlainTextEdit>(u"Text1"_s);
    EXPECT_TRUE(DropOn(notes, {hall}));
    EXPECT_EQ(CurrentFileName, "") << "not before the drop is over";
    Settle();
    EXPECT_EQ(CurrentFileName, hall.toStdString());
    EXPECT_TRUE(Config == LoadConfig(hall.toStdString()));
    EXPECT_FALSE(DropOn(*window, {hall, hall}));
    EXPECT_FALSE(DropOn(*window, {QString::fromStdString(folder.Path("settings"))}));
    EXPECT_FALSE(DropOn(*window, {QString::fromStdString(folder.Path("none.VMC"))}));
    QDialog modal;
    modal.setModal(true);
    modal.show();
    EXPECT_FALSE(DropOn(*window, {hall}));
    modal.close();

    GoOnline();
    EXPECT_FALSE(DropOn(notes, {hall}));
    EXPECT_EQ(Told(), "No file can be opened while online"_L1);
}

TEST_F(Files, TheWindowComesBackWhereItFitsOnTheScreen) {
    window->setGeometry(60, 50, 790, 700);
    const QSize size = window->size();
    window->close();
    Restart();
    EXPECT_EQ(window->size(), size);
    const QRect screen = window->screen()->availableGeometry();
    window->setGeometry(screen.right() + 500, screen.bottom() + 500, size.width(), size.height());
    window->close();
    Restart();
    EXPECT_TRUE(screen.contains(window->geometry().center()));
    window->close();
    for (const char* broken : {"zz", "", "01d9d0cb000300000000"}) {
        settings.SetGeometry(broken);
        Restart();
        EXPECT_TRUE(window->isVisible());
    }
}

} // namespace
