#include "editors/frmRoomProperties.h"
#include "editors/frmThingProperties.h"
#include "support/RunningProgram.h"
#include "support/WhenOpen.h"

#include <QMenu>
#include <QPointer>
#include <QToolBar>

#include <filesystem>
#include <gtest/gtest.h>

namespace zem {
namespace {

using test::CrLf;
using test::ReadBytes;
using test::RunningProgram;
using test::WhenOpen;

const char* const UnsavedQuestion = "Game not saved: Do you want to save the changes you made to this game?";
const char* const NotSaved = "Current version of game not saved.";

const std::string ThreeRooms = CrLf("define game <Tower>\nstart <Hall>\nend define\n"
                                    "define room <Hall>\nalias <the hall>\n"
                                    "define character <Bob>\nend define\ndefine character <Eve>\nend define\n"
                                    "define object <lamp>\nend define\nend define\n"
                                    "define room <Attic>\nend define\n"
                                    "define room <Cellar>\ndefine object <rope>\nend define\nend define\n");

TEST(MainWindow, ShowsAGameAndTheThingsOfTheSelectedRoom) {
    RunningProgram p;
    p.StartWith(ThreeRooms);
    ASSERT_TRUE(p.Main()->isVisible());
    EXPECT_FALSE(p.program->StartWindow()->isVisible());
    EXPECT_EQ(p.Title(), "\"Tower\" [" + p.folder.Path("game.kel") + "] - ZEM 1.0");
    EXPECT_EQ(p.Rows("lstRooms"), (QStringList{"Hall", "Attic", "Cellar"}));
    EXPECT_EQ(p.SelectedRow("lstRooms"), -1);
    for (const char* button : {"butEditRoom", "butDeleteRoom", "butAddObj_0", "butAddObj_1", "butEditObj_0",
                               "butEditObj_1", "butDeleteObj_0", "butDeleteObj_1"})
        EXPECT_FALSE(p.IsEnabled(button)) << button;

    p.Select("lstRooms", 0);
    EXPECT_EQ(p.Status(), "Selected room 'Hall' [alias the hall]");
    EXPECT_EQ(p.Rows("lstCharacters"), (QStringList{"Bob", "Eve"}));
    EXPECT_EQ(p.Rows("lstObjects"), QStringList{"lamp"});
    EXPECT_TRUE(p.IsEnabled("butDeleteRoom") && p.IsEnabled("butAddObj_0") && p.IsEnabled("butAddObj_1"));
    EXPECT_TRUE(p.IsEnabled("butEditRoom"));
    EXPECT_FALSE(p.IsEnabled("butDeleteObj_0") || p.IsEnabled("butEditObj_0"));
    p.Select("lstCharacters", 1);
    EXPECT_TRUE(p.IsEnabled("butDeleteObj_0") && p.IsEnabled("butEditObj_0"));
    EXPECT_FALSE(p.IsEnabled("butDeleteObj_1") || p.IsEnabled("butEditObj_1"));

    auto* rooms = p.Find<QAbstractItemView>("lstRooms");
    QTest::keyClick(rooms, Qt::Key_Space, Qt::ControlModifier); // takes nothing back
    EXPECT_EQ(p.SelectedRow("lstRooms"), 0);
    QTest::keyClick(rooms, Qt::Key_Down);
    EXPECT_EQ(p.Status(), "Selected room 'Attic'");
    EXPECT_TRUE(p.Rows("lstCharacters").isEmpty());
    EXPECT_FALSE(p.IsEnabled("butDeleteObj_0"));
    EXPECT_FALSE(p.game.Modified);
}

TEST(MainWindow, SelectsTheFirstRoomWithTheFirstKeyAndDoesNothingElse) {
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Return, Qt::Key_Delete}) {
        RunningProgram p;
        p.StartWith(ThreeRooms);
        auto* rooms = p.Find<QAbstractItemView>("lstRooms");
        rooms->setFocus(Qt::TabFocusReason);
        QTest::keyClick(rooms, key);
        EXPECT_EQ(p.SelectedRow("lstRooms"), 0);
        EXPECT_EQ(p.Rows("lstRooms").size(), 3);
    }
}

TEST(MainWindow, TakesAClickOnTheSelectedRoomForAClick) {
    RunningProgram p;
    p.StartWith(ThreeRooms);
    p.Select("lstRooms", 0);
    p.Select("lstCharacters", 0);
    p.Select("lstRooms", 0);
    EXPECT_FALSE(p.IsEnabled("butDeleteObj_0"));
    EXPECT_EQ(p.SelectedRow("lstCharacters"), -1);
}

TEST(MainWindow, AddsAndDeletesRoomsAndThingsAndSavesThem) {
    RunningProgram p;
    p.StartWith(ThreeRooms);
    const QString askRoom =
        QStringLiteral("New room: Please enter a name for this room: [Enter a name here...]");

    p.dialogs.Text(askRoom, QStringLiteral(u"Caf\u00E9"));
    WhenOpen<frmRoomProperties>([](auto&) {}); // which opens on it
    p.Click("butAddNewRoom");
    EXPECT_EQ(p.SelectedRow("lstRooms"), 3);
    EXPECT_EQ(p.Status(), NotSaved);

    p.dialogs.Text(
        QStringLiteral("New character: Please enter a name for this character: [Enter a name here...]"),
        QStringLiteral("Ann"));
    WhenOpen<frmThingProperties>([](auto&) {});
    p.Click("butAddObj_0");
    p.dialogs.Text(QStringLiteral("New object: Please enter a name for this object: [Enter a name here...]"),
                   QStringLiteral("cup"));
    WhenOpen<frmThingProperties>([](auto&) {});
    p.Click("butAddObj_1");
    EXPECT_EQ(p.Rows("lstCharacters"), QStringList{"Ann"});
    EXPECT_EQ(p.SelectedRow("lstCharacters"), 0);
    EXPECT_EQ(p.SelectedRow("lstObjects"), 0);
    EXPECT_TRUE(p.IsEnabled("butDeleteObj_1"));

    p.Select("lstRooms", 0);
    p.Select("lstCharacters", 1);
    p.Click("butDeleteObj_0"); // the last of the list: the first is selected
    EXPECT_EQ(p.Rows("lstCharacters"), QStringList{"Bob"});
    EXPECT_EQ(p.SelectedRow("lstCharacters"), 0);
    EXPECT_EQ(p.SelectedRow("lstRooms"), 0);
    p.Click("butDeleteObj_0");
    EXPECT_FALSE(p.IsEnabled("butDeleteObj_0"));

    p.Select("lstRooms", 1);
    p.Click("butDeleteRoom"); // the next one takes its place
    EXPECT_EQ(p.SelectedRow("lstRooms"), 1);
    EXPECT_EQ(p.Rows("lstObjects"), QStringList{"rope"});
    EXPECT_EQ(p.Status(), NotSaved);

    p.Trigger("mnuFileSave");
    EXPECT_EQ(p.Status(), "Game saved.");
    const std::string saved = ReadBytes(p.folder.Path("game.kel"));
    EXPECT_EQ(
        saved.substr(saved.find("define room"))
            .substr(0, saved.find("define text") - saved.find("define room")),
        CrLf("define room <Hall>\nalias <the hall>\ndefine object <lamp>\n\nend define\n\nend define\n\n"
             "define room <Cellar>\ndefine object <rope>\n\nend define\n\nend define\n\n"
             "define room <Caf\xE9>\ndefine character <Ann>\n\nend define\ndefine object <cup>\n\n"
             "end define\n\nend define\n\n"));
    EXPECT_EQ(ReadBytes(p.folder.Path("game.kel~")), ThreeRooms);
}

TEST(MainWindow, SelectsTheFirstRoomWhenTheLastIsDeletedAndNoneInAnEmptyGame) {
    RunningProgram p;
    p.StartWith(ThreeRooms);
    p.Select("lstRooms", 2);
    p.Click("butDeleteRoom");
    EXPECT_EQ(p.SelectedRow("lstRooms"), 0);
    p.Click("butDeleteRoom");
    p.Click("butDeleteRoom");
    EXPECT_TRUE(p.Rows("lstRooms").isEmpty());
    EXPECT_TRUE(p.Rows("lstCharacters").isEmpty());
    for (const char* button : {"butEditRoom", "butDeleteRoom", "butAddObj_0", "butAddObj_1", "butEditObj_0",
                               "butEditObj_1", "butDeleteObj_0", "butDeleteObj_1"})
        EXPECT_FALSE(p.IsEnabled(button)) << button;
    EXPECT_EQ(p.Status(), NotSaved);
}

// Each of the two lists the things of both; what is added or deleted is nevertheless the right thing.
TEST(MainWindow, KeepsThingsApartWhenRoomsShareAName) {
    RunningProgram p;
    p.StartWith("define room <Hall>\nend define\ndefine room <Hall>\ndefine object <a>\nend define\n"
                "define object <b>\nend define\nend define\n");
    p.Select("lstRooms", 0);
    EXPECT_EQ(p.Rows("lstObjects"), (QStringList{"a", "b"}));
    p.dialogs.Text(QStringLiteral("New object: Please enter a name for this object: [Enter a name here...]"),
                   QStringLiteral("mine"));
    WhenOpen<frmThingProperties>([](auto&) {});
    p.Click("butAddObj_1");
    EXPECT_EQ(p.Rows("lstObjects"), (QStringList{"mine", "a", "b"}));
    EXPECT_EQ(p.SelectedRow("lstObjects"), 0);
    EXPECT_EQ(p.game.Rooms[1].Objects[1].Name, "mine");
    p.Select("lstObjects", 2);
    p.Click("butDeleteObj_1");
    ASSERT_EQ(p.game.Rooms[2].Objects.Count(), 1);
    EXPECT_EQ(p.game.Rooms[2].Objects[1].Name, "a");
    EXPECT_EQ(p.game.Rooms[1].Objects.Count(), 1);
}

TEST(MainWindow, MarksTheGameAsChangedEvenWhenANameIsNotGiven) {
    for (const std::optional<QString>& answer :
         {std::optional<QString>(), std::optional<QString>(QString())}) {
        RunningProgram p;
        p.StartWith(ThreeRooms);
        p.dialogs.Text(QStringLiteral("New room: Please enter a name for this room: [Enter a name here...]"),
                       answer);
        p.Click("butAddNewRoom");
        EXPECT_EQ(p.Status(), NotSaved);
        EXPECT_TRUE(p.game.Modified);
        EXPECT_EQ(p.game.Rooms.Count(), 3);
    }
}

TEST(MainWindow, AsksAgainForANameThatCannotBeKept) {
    RunningProgram p;
    p.StartWith(ThreeRooms);
    const QString greek = QStringLiteral(u"\u0394elta");
    p.dialogs.Text(QStringLiteral("New room: Please enter a name for this room: [Enter a name here...]"),
                   greek);
    p.dialogs.Message(QStringLiteral("New room: ") + *UnstorableCharacter(greek));
    p.dialogs.Text(QStringLiteral("New room: Please enter a name for this room: [%1]").arg(greek),
                   QStringLiteral("Delta"));
    WhenOpen<frmRoomProperties>([](auto&) {}); // which opens on it
    p.Click("butAddNewRoom");
    EXPECT_EQ(p.Rows("lstRooms").constLast(), QStringLiteral("Delta"));
}

TEST(MainWindow, ReportsARoomTooMany) {
    RunningProgram p;
    p.StartWith(ThreeRooms);
    while (p.game.Rooms.Count() < Table<Room>::MaxCount)
        p.game.Rooms.Append();
    p.dialogs.Text(QStringLiteral("New room: Please enter a name for this room: [Enter a name here...]"),
                   QStringLiteral("one more"));
    p.dialogs.Message(QStringLiteral(
        "ZEM: The command was not carried out: a list of the game cannot hold more than 32,767 entries."));
    p.Click("butAddNewRoom");
    EXPECT_EQ(p.game.Rooms.Count(), 32767);
    EXPECT_FALSE(p.game.Modified);
}

TEST(MainWindow, AsksAboutUnsavedChangesBeforeTheyAreLost) {
    struct Case {
        const char* command;
        bool asksForFile;
    };
    for (const Case& c : {Case{"mnuFileNew", false}, {"mnuFileOpen", true}, {"mnuFileRecent_0", false}}) {
        SCOPED_TRACE(c.command);
        RunningProgram p;
        p.StartWith(ThreeRooms);
        p.Select("lstRooms", 0);
        p.Click("butDeleteRoom");
        p.dialogs.Message(QLatin1String(UnsavedQuestion), QMessageBox::Cancel);
        p.Trigger(c.command);
        EXPECT_EQ(p.game.Rooms.Count(), 2) << "Cancel ends the command";

        p.dialogs.Message(QLatin1String(UnsavedQuestion), QMessageBox::Yes);
        if (c.asksForFile)
            p.dialogs.OpenFile(p.Path("game.kel"));
        p.Trigger(c.command);
        EXPECT_EQ(ReadBytes(p.folder.Path("game.kel")).find("define room <Hall>"), std::string::npos);
        EXPECT_FALSE(p.game.Modified);
        EXPECT_EQ(p.Rows("lstRooms").size(), std::string(c.command) == "mnuFileNew" ? 0 : 2);

        p.Trigger("mnuFileNew");
        EXPECT_EQ(p.Title(), "ZEM 1.0");
        p.dialogs.ExpectAllAsked();
    }
}

TEST(MainWindow, ClosesAsTheAnswerSays) {
    struct Case {
        QMessageBox::StandardButton answer;
        bool closes;
        bool saves;
    };
    for (const Case& c : {Case{QMessageBox::Yes, true, true},
                          {QMessageBox::No, true, false},
                          {QMessageBox::Cancel, false, false}}) {
        RunningProgram p;
        p.StartWith(ThreeRooms);
        p.Select("lstRooms", 0);
        p.Click("butDeleteRoom");
        p.dialogs.Message(QLatin1String(UnsavedQuestion), c.answer);
        p.Trigger("mnuFileExit");
        EXPECT_EQ(p.Main()->isVisible(), !c.closes);
        EXPECT_EQ(p.program->StartWindow() == nullptr, c.closes);
        EXPECT_EQ(ReadBytes(p.folder.Path("game.kel")) != ThreeRooms, c.saves);
    }
}

TEST(MainWindow, StaysOpenWhenTheSaveBeforeClosingFails) {
    RunningProgram p;
    std::filesystem::create_directory(p.folder.Path("games"));
    p.Start(PathToQt(p.folder.Write("games/game.kel", ThreeRooms)));
    p.Select("lstRooms", 0);
    p.Click("butDeleteRoom");
    std::filesystem::remove_all(p.folder.Path("games"));
    p.dialogs.Message(QLatin1String(UnsavedQuestion), QMessageBox::Yes);
    p.dialogs.Message(
        QStringLiteral("Failed to save game: game.kel: the file cannot be written: its folder or the "
                       "file itself is not there."));
    p.Trigger("mnuFileExit");
    EXPECT_TRUE(p.Main()->isVisible());
    EXPECT_TRUE(p.game.Modified);
    EXPECT_EQ(p.Rows("lstRooms").size(), 2);
    p.game.Modified = false;
}

// A cancelled name dialog does not keep the window open: the author has said that he wants to leave.
TEST(MainWindow, ClosesWhenTheNameDialogIsCancelled) {
    RunningProgram p;
    p.Start();
    const QPointer<QWidget> start = p.program->StartWindow();
    auto* newGame = start->findChild<QPushButton*>(QStringLiteral("butNewGame"));
    newGame->setFocus();
    QTest::keyClick(newGame, Qt::Key_Return);
    EXPECT_FALSE(start->isVisible());
    newGame->click(); // which was already on its way
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(start.isNull());
    EXPECT_EQ(p.Title(), "ZEM 1.0");
    p.dialogs.Text(QStringLiteral("New room: Please enter a name for this room: [Enter a name here...]"), {});
    p.Click("butAddNewRoom");
    p.dialogs.Message(QLatin1String(UnsavedQuestion), QMessageBox::Yes);
    p.dialogs.SaveFile({});
    p.Trigger("mnuFileExit");
    EXPECT_FALSE(p.Main()->isVisible());
}

TEST(MainWindow, SavesUnderANewName) {
    RunningProgram p;
    p.StartWith("define game <Tower>\nend define\n");
    p.dialogs.SaveFile(p.Path("other & more.kel"));
    p.dialogs.Message(
        QStringLiteral("No start place: This game has no start place defined. The game will not work "
                       "properly in Veldt unless a start room is selected from the Game Properties "
                       "window.\r\n\r\nClick OK to continue saving this game."));
    p.Trigger("mnuFileSaveAs");
    EXPECT_EQ(NameFilters(p.dialogs.lastFileQuestion.filter),
              (QStringList{"Veldt KEL file (*.kel)", "Text file (*.txt)", "All files (*.*)"}));
    EXPECT_EQ(p.Status(),
              "Game saved. Click 'Edit' then 'Game Properties...' to select a start room for this game.");
    EXPECT_EQ(p.Title(), "\"Tower\" [" + p.folder.Path("other & more.kel") + "] - ZEM 1.0");
    EXPECT_EQ(p.Find<QAction>("mnuFileRecent_0")->text(), p.Path("other && more.kel"));
    EXPECT_EQ(p.Find<QAction>("mnuFileRecent_1")->text(), p.Path("game.kel"));
    p.Trigger("mnuFileRecent_1");
    EXPECT_EQ(p.Title(), "\"Tower\" [" + p.folder.Path("game.kel") + "] - ZEM 1.0");
}

TEST(MainWindow, ReportsABadFileAndGoesOnWithAnEmptyGame) {
    RunningProgram p;
    p.StartWith(ThreeRooms);
    const std::string bad = "define game <x>\nend define\ndefine room <Hall>\n  alias Hall\nend define\n";
    p.folder.Write("bad.kel", bad);
    p.dialogs.OpenFile(p.Path("bad.kel"));
    p.dialogs.Message(
        QStringLiteral("Failed to load game: bad.kel, line 4: a parameter in angle brackets is missing: "
                       "alias Hall."));
    p.Trigger("mnuFileOpen");
    EXPECT_EQ(p.Title(), "ZEM 1.0");
    EXPECT_TRUE(p.Rows("lstRooms").isEmpty());
    EXPECT_EQ(ReadBytes(p.folder.Path("bad.kel")), bad);
    p.dialogs.SaveFile({});
    p.Trigger("mnuFileSave"); // asks for a name, so that no file is overwritten by the empty game
    p.dialogs.OpenFile(p.Path("missing.kel"));
    p.dialogs.Message(QStringLiteral("Error: Error - file not found"));
    p.Trigger("mnuFileOpen");
}

TEST(MainWindow, RunsTheSavedFile) {
    const QString notNamed =
        QStringLiteral("Game not saved: The current game has not been saved. It needs to be saved as an .KEL "
                       "file before it can be executed in Veldt. Save now?");
    const QString changed =
        QStringLiteral("Game not saved: The current game has changed since it was last saved - if not saved "
                       "now, the last saved version will be executed instead. Save the current version now?");
    RunningProgram p;
    p.StartWith(ThreeRooms);
    const QString path = p.Path("game.kel");
    p.dialogs.Document(path, 33);
    p.Trigger("mnuFileRunKELfile");

    struct Case {
        int result;
        const char* problem;
    };
    for (const Case& c : {Case{2, ""},
                          {3, "file/path not found"},
                          {8, "out of memory"},
                          {31, "file association does not exist or is incomplete"},
                          {5, ""}}) {
        p.dialogs.Document(path, c.result);
        if (*c.problem != '\0')
            p.dialogs.Message(
                QStringLiteral("ZEM: Error loading %1 - %2").arg(path, QLatin1String(c.problem)));
        p.Trigger("mnuFileRunKELfile");
    }

    p.Select("lstRooms", 1);
    p.Click("butDeleteRoom");
    p.dialogs.Message(changed, QMessageBox::Cancel);
    p.Trigger("mnuFileRunKELfile");
    p.dialogs.Message(changed, QMessageBox::No);
    p.dialogs.Document(path, 33);
    p.Trigger("mnuFileRunKELfile");
    EXPECT_EQ(ReadBytes(p.folder.Path("game.kel")), ThreeRooms);
    p.dialogs.Message(changed, QMessageBox::Yes);
    p.dialogs.Document(path, 33);
    p.Trigger("mnuFileRunKELfile");
    EXPECT_FALSE(p.game.Modified);

    p.Trigger("mnuFileNew");
    p.dialogs.Message(notNamed, QMessageBox::Cancel);
    p.Trigger("mnuFileRunKELfile");
    p.dialogs.Message(notNamed, QMessageBox::Ok);
    p.dialogs.SaveFile({});
    p.dialogs.Document(QString(), 2); // which says nothing
    p.Trigger("mnuFileRunKELfile");
}

TEST(MainWindow, HasItsMenusShortcutsAndToolbar) {
    RunningProgram p;
    p.StartWith(ThreeRooms);
    struct Case {
        const char* action;
        const char* text;
        const char* shortcut;
    };
    for (const Case& c : {Case{"mnuFileNew", "&New", "Ctrl+N"},
                          {"mnuFileOpen", "&Open...", "Ctrl+O"},
                          {"mnuFileSave", "&Save", "Ctrl+S"},
                          {"mnuFileSaveAs", "Save &As...", "Ctrl+A"},
                          {"mnuFileRunKELfile", "&Run KEL file", "Ctrl+R"},
                          {"mnuFileExit", "E&xit", ""},
                          {"mnuViewGameProperties", "&Properties...", "Ctrl+G"},
                          {"mnuViewItems", "&Items...", "Ctrl+I"},
                          {"mnuViewCollectables", "&Collectables...", "Ctrl+C"},
                          {"mnuViewMenus", "&Menus...", ""},
                          {"mnuViewProcedures", "&Procedures...", "Ctrl+P"},
                          {"mnuViewMiscKEL", "&Misc KEL...", "Ctrl+M"},
                          {"mnuViewLibraries", "Included &Libraries...", "Ctrl+L"},
                          {"mnuViewSynonyms", "&Synonyms...", "Ctrl+Y"},
                          {"mnuEditErrorMessages", "&Error Messages...", ""},
                          {"mnuViewTextSectionEditor", "&Text Blocks...", "Ctrl+T"},
                          {"mnuViewOptions", "&Options...", ""},
                          {"mnuZEMRef", "&ZEM Reference (ZEM.HTM)", ""},
                          {"mnuKELRef", "&KEL Reference (KEL.HTM)", ""},
                          {"mnuHelpAbout", "&About ZEM", ""}}) {
        EXPECT_EQ(p.Find<QAction>(c.action)->text().toStdString(), c.text);
        EXPECT_EQ(p.Find<QAction>(c.action)->shortcut().toString().toStdString(), c.shortcut) << c.text;
    }
    p.dialogs.Document(p.programFolder + QStringLiteral("/ZEM.HTM"), 2);
    p.Trigger("butHelp");
    p.dialogs.Document(p.programFolder + QStringLiteral("/KEL.HTM"), 31); // even then nothing is said
    p.Trigger("mnuKELRef");
    p.dialogs.Document(p.Path("game.kel"), 33);
    p.Trigger("butRun");
    p.dialogs.OpenFile({});
    p.Trigger("butOpen");
    p.Trigger("butSave");
    EXPECT_EQ(p.Status(), "Game saved.");
    for (const QAction* button : p.Find<QToolBar>("Toolbar1")->actions())
        EXPECT_TRUE(button->isSeparator() || !button->icon().pixmap(24).isNull())
            << button->text().toStdString();
    p.Trigger("butNew");
    EXPECT_EQ(p.Title(), "ZEM 1.0");
    EXPECT_EQ(p.Status(), "");
}

/// A menu as text: its items with their places, those that are off in brackets, "-" for a separator.
QString Describe(const QMenu& menu) {
    QStringList items;
    for (const QAction* item : menu.actions()) {
        if (!item->isVisible())
            continue;
        QString text = item->isSeparator() ? QStringLiteral("-") : item->text();
        if (item->menu() != nullptr)
            text += u'{' + Describe(*item->menu()) + u'}';
        items.append(item->isEnabled() ? text : u'(' + text + u')');
    }
    return items.join(QStringLiteral(", "));
}

TEST(MainWindow, HasItsMenusAndToolbarInOrder) {
    RunningProgram p;
    p.Start();
    QTest::mouseClick(p.program->StartWindow()->findChild<QPushButton*>(QStringLiteral("butNewGame")),
                      Qt::LeftButton);
    EXPECT_EQ(Describe(*p.Find<QMenu>("mnuFile")).toStdString(),
              "&New, &Open..., &Save, Save &As..., -, &Run KEL file, -, E&xit");
    EXPECT_EQ(Describe(*p.Find<QMenu>("mnuView")).toStdString(),
              "&Game{&Properties..., &Items..., &Collectables...}, &Actions{&Menus..., &Procedures...}, "
              "&Advanced{&Misc KEL..., Included &Libraries..., &Synonyms..., &Error Messages...}, "
              "&Text Blocks..., -, &Options...");
    EXPECT_EQ(Describe(*p.Find<QMenu>("mnuTools")).toStdString(),
              "(&Undo ), (&Redo ), &History, -, Earlier &versions..., -, &What's this?");
    EXPECT_EQ(Describe(*p.Find<QMenu>("mnuHelp")).toStdString(),
              "&ZEM Reference (ZEM.HTM), &KEL Reference (KEL.HTM), &About ZEM");
    QStringList buttons;
    for (const QAction* button : p.Find<QToolBar>("Toolbar1")->actions())
        if (!button->isSeparator())
            buttons.append(button->objectName() + u' ' + button->toolTip() +
                           (button->isEnabled() ? QString() : QStringLiteral(" off")));
    EXPECT_EQ(buttons.join(u'|').toStdString(),
              "butNew New game|butOpen Open a game|butSave Save|butRun Run KEL file|butEditItems Items|"
              "butEditCollectables Collectables|butEditText Text Sections|butEditGame Game Properties|"
              "butEditProcs Procedures|butEditMiscKEL Misc KEL|butOptions Options|butEditLibs Libraries|"
              "butEditSynonyms Synonyms|butHelp Help");
    EXPECT_FALSE(p.IsEnabled("butEditRoom"));
}

TEST(MainWindow, ListsAsManyRoomsAsAGameHolds) {
    RunningProgram p;
    std::string bytes;
    for (int k = 1; k <= 32767; ++k)
        bytes += "define room <" + std::to_string(k) + ">\nend define\n";
    p.StartWith(bytes);
    EXPECT_EQ(p.Rows("lstRooms").size(), 32767);
    p.Select("lstRooms", 32766);
    EXPECT_EQ(p.Status(), "Selected room '32767'");
    p.Click("butDeleteRoom");
    EXPECT_EQ(p.SelectedRow("lstRooms"), 0);
}

} // namespace
} // namespace zem
