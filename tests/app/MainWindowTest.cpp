#include "editors/frmRoomProperties.h"
#include "editors/frmThingProperties.h"
#include "support/Cases.h"
#include "support/RunningProgram.h"
#include "support/WhenOpen.h"

#include <QPointer>
#include <QScreen>

#include <filesystem>
#include <gtest/gtest.h>

namespace zem::test {
namespace {

const char* const UnsavedQuestion = "Game not saved: Do you want to save the changes you made to this game?";
const char* const AskRoom = "New room: Please enter a name for this room: [Enter a name here...]";
const char* const AskObject = "New object: Please enter a name for this object: [Enter a name here...]";
const char* const NotSaved = "Current version of game not saved.";

const std::string ThreeRooms = CrLf("define game <Tower>\nstart <Hall>\nend define\n"
                                    "define room <Hall>\nalias <the hall>\n"
                                    "define character <Bob>\nend define\ndefine character <Eve>\nend define\n"
                                    "define object <lamp>\nend define\nend define\n"
                                    "define room <Attic>\nend define\n"
                                    "define room <Cellar>\ndefine object <rope>\nend define\nend define\n");

/// The buttons that can be pressed, of those that work on what is selected.
std::string ButtonsOn(const RunningProgram& p) {
    std::string on;
    for (const char* button : {"butEditRoom", "butDeleteRoom", "butAddObj_0", "butAddObj_1", "butEditObj_0",
                               "butDeleteObj_0", "butEditObj_1", "butDeleteObj_1"})
        if (p.IsEnabled(button))
            on += std::string(button + 3) + ' ';
    return on;
}

TEST(MainWindow, ShowsAGameAndTheThingsOfTheSelectedRoom) {
    RunningProgram p;
    p.StartWith(ThreeRooms);
    EXPECT_TRUE(p.Main()->screen()->availableGeometry().contains(p.Main()->geometry()));
    ASSERT_TRUE(p.Main()->isVisible());
    EXPECT_FALSE(p.program->StartWindow()->isVisible());
    EXPECT_EQ(p.Title(), "\"Tower\" [" + p.folder.Path("game.kel") + "] - ZEM 1.0");
    EXPECT_EQ(p.Rows("lstRooms"), (QStringList{"Hall", "Attic", "Cellar"}));
    EXPECT_EQ(p.SelectedRow("lstRooms"), -1);
    EXPECT_EQ(ButtonsOn(p), "");

    p.Select("lstRooms", 0);
    EXPECT_EQ(p.Status(), "Selected room 'Hall' [alias the hall]");
    EXPECT_EQ(p.Rows("lstCharacters"), (QStringList{"Bob", "Eve"}));
    EXPECT_EQ(p.Rows("lstObjects"), QStringList{"lamp"});
    EXPECT_EQ(ButtonsOn(p), "EditRoom DeleteRoom AddObj_0 AddObj_1 ");
    p.Select("lstCharacters", 1);
    EXPECT_EQ(ButtonsOn(p), "EditRoom DeleteRoom AddObj_0 AddObj_1 EditObj_0 DeleteObj_0 ");

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
    p.dialogs.Text(AskRoom, QStringLiteral(u"Caf\u00E9"));
    WhenOpen<frmRoomProperties>([](auto&) {}); // which opens on it
    p.Click("butAddNewRoom");
    EXPECT_EQ(p.SelectedRow("lstRooms"), 3);
    EXPECT_EQ(p.Status(), NotSaved);

    p.dialogs.Text("New character: Please enter a name for this character: [Enter a name here...]", "Ann");
    WhenOpen<frmThingProperties>([](auto&) {});
    p.Click("butAddObj_0");
    p.dialogs.Text(AskObject, "cup");
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
    EXPECT_EQ(ButtonsOn(p), "");
    EXPECT_EQ(p.Status(), NotSaved);
}

// Each of the two lists the things of both; what is added or deleted is nevertheless the right thing.
TEST(MainWindow, KeepsThingsApartWhenRoomsShareAName) {
    RunningProgram p;
    p.StartWith("define room <Hall>\nend define\ndefine room <Hall>\ndefine object <a>\nend define\n"
                "define object <b>\nend define\nend define\n");
    p.Select("lstRooms", 0);
    EXPECT_EQ(p.Rows("lstObjects"), (QStringList{"a", "b"}));
    p.dialogs.Text(AskObject, "mine");
    WhenOpen<frmThingProperties>([](auto&) {});
    p.Click("butAddObj_1");
    EXPECT_EQ(p.Rows("lstObjects"), (QStringList{"mine", "a", "b"}));
    EXPECT_EQ(p.SelectedRow("lstObjects"), 0);
    EXPECT_EQ(p.game.Rooms[1].Objects[1].Name, "mine");
    p.Select("lstObjects", 1);
    WhenOpen<frmThingProperties>([](frmThingProperties& form) {
        SetText(form, "txtThingName", "ours");
        Click(form, "butOK");
    });
    QTest::keyClick(p.Find<QAbstractItemView>("lstObjects"), Qt::Key_Return);
    EXPECT_EQ(p.Rows("lstObjects"), (QStringList{"mine", "ours", "b"}));
    EXPECT_EQ(p.SelectedRow("lstObjects"), 1);
    p.Select("lstObjects", 2);
    p.Click("butDeleteObj_1");
    ASSERT_EQ(p.game.Rooms[2].Objects.Count(), 1);
    EXPECT_EQ(p.game.Rooms[2].Objects[1].Name, "ours");
    EXPECT_EQ(p.game.Rooms[1].Objects.Count(), 1);
}

TEST(MainWindow, MarksTheGameAsChangedEvenWhenANameIsNotGiven) {
    for (const std::optional<QString>& answer : {std::optional<QString>(), std::optional<QString>("")}) {
        RunningProgram p;
        p.StartWith(ThreeRooms);
        p.dialogs.Text(AskRoom, answer);
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
    p.dialogs.Text(AskRoom, greek);
    p.dialogs.Message("New room: " + *UnstorableCharacter(greek));
    p.dialogs.Text(QString("New room: Please enter a name for this room: [%1]").arg(greek), "Delta");
    WhenOpen<frmRoomProperties>([](auto&) {}); // which opens on it
    p.Click("butAddNewRoom");
    EXPECT_EQ(p.Rows("lstRooms").constLast(), "Delta");
}

TEST(MainWindow, ListsAsManyRoomsAsAGameHoldsAndNoMore) {
    RunningProgram p;
    std::string bytes;
    for (int k = 1; k <= Table<Room>::MaxCount; ++k)
        bytes += "define room <" + std::to_string(k) + ">\nend define\n";
    p.StartWith(bytes);
    EXPECT_EQ(p.Rows("lstRooms").size(), 32767);
    p.Select("lstRooms", 32766);
    EXPECT_EQ(p.Status(), "Selected room '32767'");
    p.dialogs.Text(AskRoom, "one more");
    p.dialogs.Message(
        "ZEM: The command was not carried out: a list of the game cannot hold more than 32,767 entries.");
    p.Click("butAddNewRoom");
    EXPECT_EQ(p.game.Rooms.Count(), 32767);
    EXPECT_FALSE(p.game.Modified);
}

TEST(MainWindow, AsksAboutUnsavedChangesBeforeTheyAreLost) {
    for (const std::string command : {"mnuFileNew", "mnuFileOpen", "mnuFileRecent_0"}) {
        SCOPED_TRACE(command);
        RunningProgram p;
        p.StartWith(ThreeRooms);
        p.Select("lstRooms", 0);
        p.Click("butDeleteRoom");
        p.dialogs.Message(UnsavedQuestion, QMessageBox::Cancel);
        p.Trigger(command.c_str());
        EXPECT_EQ(p.game.Rooms.Count(), 2) << "Cancel ends the command";

        p.dialogs.Message(UnsavedQuestion, QMessageBox::Yes);
        if (command == "mnuFileOpen")
            p.dialogs.OpenFile(p.Path("game.kel"));
        p.Trigger(command.c_str());
        EXPECT_EQ(ReadBytes(p.folder.Path("game.kel")).find("define room <Hall>"), std::string::npos);
        EXPECT_FALSE(p.game.Modified);
        EXPECT_EQ(p.Rows("lstRooms").size(), command == "mnuFileNew" ? 0 : 2);

        p.Trigger("mnuFileNew");
        EXPECT_EQ(p.Title(), "ZEM 1.0");
        p.dialogs.ExpectAllAsked();
    }
}

TEST(MainWindow, ClosesAsTheAnswerSays) {
    for (const auto& [answer, closes, saves] :
         Cases<QMessageBox::StandardButton, bool, bool>{{QMessageBox::Yes, true, true},
                                                        {QMessageBox::No, true, false},
                                                        {QMessageBox::Cancel, false, false}}) {
        RunningProgram p;
        p.StartWith(ThreeRooms);
        p.Select("lstRooms", 0);
        p.Click("butDeleteRoom");
        p.dialogs.Message(UnsavedQuestion, answer);
        p.Trigger("mnuFileExit");
        EXPECT_EQ(p.Main()->isVisible(), !closes);
        EXPECT_EQ(p.program->StartWindow() == nullptr, closes);
        EXPECT_EQ(ReadBytes(p.folder.Path("game.kel")) != ThreeRooms, saves);
    }
}

TEST(MainWindow, StaysOpenWhenTheSaveBeforeClosingFails) {
    RunningProgram p;
    std::filesystem::create_directory(p.folder.Path("games"));
    p.Start(PathToQt(p.folder.Write("games/game.kel", ThreeRooms)));
    p.Select("lstRooms", 0);
    p.Click("butDeleteRoom");
    std::filesystem::remove_all(p.folder.Path("games"));
    p.dialogs.Message(UnsavedQuestion, QMessageBox::Yes);
    p.dialogs.Message("Failed to save game: game.kel: the file cannot be written: its folder or the "
                      "file itself is not there.");
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
    auto& newGame = Find<QPushButton>(*start, "butNewGame");
    newGame.setFocus();
    QTest::keyClick(&newGame, Qt::Key_Return);
    EXPECT_FALSE(start->isVisible());
    newGame.click(); // which was already on its way
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(start.isNull());
    EXPECT_EQ(p.Title(), "ZEM 1.0");
    p.dialogs.Text(AskRoom, {});
    p.Click("butAddNewRoom");
    p.dialogs.Message(UnsavedQuestion, QMessageBox::Yes);
    p.dialogs.SaveFile({});
    p.Trigger("mnuFileExit");
    EXPECT_FALSE(p.Main()->isVisible());
}

TEST(MainWindow, SavesUnderANewName) {
    RunningProgram p;
    p.StartWith("define game <Tower>\nend define\n");
    p.dialogs.SaveFile(p.Path("other & more.kel"));
    p.dialogs.Message("No start place: This game has no start place defined. The game will not work "
                      "properly in Veldt unless a start room is selected from the Game Properties "
                      "window.\r\n\r\nClick OK to continue saving this game.");
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
    p.dialogs.Message("Failed to load game: bad.kel, line 4: a parameter in angle brackets is missing: "
                      "alias Hall.");
    p.Trigger("mnuFileOpen");
    EXPECT_EQ(p.Title(), "ZEM 1.0");
    EXPECT_TRUE(p.Rows("lstRooms").isEmpty());
    EXPECT_EQ(ReadBytes(p.folder.Path("bad.kel")), bad);
    p.dialogs.SaveFile({});
    p.Trigger("mnuFileSave"); // asks for a name, so that no file is overwritten by the empty game
    p.dialogs.OpenFile(p.Path("missing.kel"));
    p.dialogs.Message("Error: Error - file not found");
    p.Trigger("mnuFileOpen");
}

} // namespace
} // namespace zem::test
