#include "editors/frmRoomProperties.h"
#include "editors/frmThingProperties.h"
#include "support/Cases.h"
#include "support/SmallGame.h"

#include <QPointer>
#include <QScreen>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

const char* const NotSaved = "Current version of game not saved.";

const char* const NoStartPlace =
    "No start place: This game has no start place defined. The game will not work properly in Veldt unless a "
    "start room is selected from the Game Properties window.\r\n\r\nClick OK to continue saving this game.";

const std::string ThreeRooms = CrLf("define game <Tower>\nstart <Hall>\nend define\n"
                                    "define room <Hall>\nalias <the hall>\n"
                                    "define character <Bob>\nend define\ndefine character <Eve>\nend define\n"
                                    "define object <lamp>\nend define\nend define\n"
                                    "define room <Attic>\nend define\n"
                                    "define room <Cellar>\ndefine object <rope>\nend define\nend define\n");

/// The rooms, characters and objects, each list with "|" behind it and its selected row in brackets. The
/// buttons that work on a selected row can be pressed just when there is one.
std::string Lists(const RunningProgram& p) {
    std::string shown;
    for (const auto& [list, buttons] : Cases<const char*, std::vector<const char*>>{
             {"lstRooms", {"butEditRoom", "butDeleteRoom", "butAddObj_0", "butAddObj_1"}},
             {"lstCharacters", {"butEditObj_0", "butDeleteObj_0"}},
             {"lstObjects", {"butEditObj_1", "butDeleteObj_1"}}}) {
        QStringList rows = p.Rows(list);
        const int selected = p.SelectedRow(list);
        if (selected >= 0)
            rows[selected] = u'[' + rows[selected] + u']';
        shown += rows.join(u' ').toStdString() + '|';
        for (const char* button : buttons)
            EXPECT_EQ(p.IsEnabled(button), selected >= 0) << button;
    }
    return shown;
}

QString NameQuestion(const char* kind, const QString& text = QStringLiteral("Enter a name here...")) {
    return QStringLiteral("New %1: Please enter a name for this %1: [%2]").arg(QLatin1String(kind), text);
}

/// Adds a room, character or object, whose editor opens at once.
template <class Editor>
void Add(RunningProgram& p, const char* button, const char* kind, const QString& name) {
    p.dialogs.Text(NameQuestion(kind), name);
    p.Open<Editor>(button, [](auto&) {});
}

TEST(MainWindow, ShowsAGameAndTheThingsOfTheSelectedRoom) {
    RunningProgram p(ThreeRooms);
    EXPECT_TRUE(p.Main()->screen()->availableGeometry().contains(p.Main()->geometry()));
    ASSERT_TRUE(p.Main()->isVisible());
    EXPECT_FALSE(p.program->StartWindow()->isVisible());
    EXPECT_EQ(p.Title(), "\"Tower\" [" + p.folder.Path("game.kel") + "] - ZEM 1.0");
    EXPECT_EQ(Lists(p), "[Hall] Attic Cellar|Bob Eve|lamp|");

    p.Select("lstRooms", 0);
    p.Select("lstCharacters", 1);
    EXPECT_EQ(Lists(p), "[Hall] Attic Cellar|Bob [Eve]|lamp|");
    EXPECT_EQ(p.Status(), "Selected room 'Hall' [alias the hall]");
    p.Select("lstRooms", 0); // A click on the selected room clears both selections.
    EXPECT_EQ(Lists(p), "[Hall] Attic Cellar|Bob Eve|lamp|");

    PressKey(*p.Main(), "lstRooms", Qt::Key_Space, Qt::ControlModifier); // Does not deselect.
    EXPECT_EQ(p.SelectedRow("lstRooms"), 0);
    PressKey(*p.Main(), "lstRooms", Qt::Key_Down);
    EXPECT_EQ(Lists(p), "Hall [Attic] Cellar|||");
    EXPECT_EQ(p.Status(), "Selected room 'Attic'");
    EXPECT_FALSE(p.game.Modified);
}

TEST(MainWindow, UsesTheFirstKeyAfterAGameWasOpened) {
    RunningProgram p(ThreeRooms);
    QWidget* focused = p.Main()->focusWidget();
    ASSERT_NE(focused, nullptr);
    std::string edited;
    WhenOpen<frmRoomProperties>([&](frmRoomProperties& form) { edited = TextOf(form, "txtRoomName"); });
    QTest::keyClick(focused, Qt::Key_Return);
    EXPECT_EQ(edited, "Hall");
    QTest::keyClick(focused, Qt::Key_Down);
    EXPECT_EQ(Lists(p), "Hall [Attic] Cellar|||");
    p.Trigger("mnuFileRecent_0"); // While the focus is anywhere.
    QTest::keyClick(p.Main()->focusWidget(), Qt::Key_Delete);
    EXPECT_EQ(Lists(p), "[Attic] Cellar|||");
}

TEST(MainWindow, KeepsTheFocusWhereItWasWhenAnEditorHasChangedTheGame) {
    RunningProgram p(ThreeRooms);
    p.Select("lstObjects", 0);
    for (const auto& [control, editor] : Cases<const char*, const char*>{{"lstRooms", "butEditRoom"},
                                                                         {"butEditRoom", "butEditRoom"},
                                                                         {"butEditObj_1", "butEditObj_1"},
                                                                         {"lstObjects", "butEditObj_1"}}) {
        p.Find<QWidget>(control)->setFocus();
        WhenOpen<QDialog>([](QDialog& form) {
            SetText(form, "txtPrefix", "the");
            Click(form, "butOK");
        });
        p.Find<QAbstractButton>(editor)->click();
        EXPECT_EQ(p.Main()->focusWidget()->objectName().toStdString(), control);
        EXPECT_EQ(p.SelectedRow("lstObjects"), 0);
    }
    p.Find<QWidget>("butDeleteObj_1")->setFocus();
    p.Find<QAbstractButton>("butDeleteObj_1")->click(); // It has nothing more to delete.
    EXPECT_EQ(p.Main()->focusWidget()->objectName(), "lstObjects");
}

TEST(MainWindow, ComesBackInItsSizeAndPlaceWhereThereIsAScreenForIt) {
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const QRect inside(screen.left() + 30, screen.top() + 50, 640, 420);
    RunningProgram p(ThreeRooms);
    for (const auto& [left, back] : Cases<QRect, bool>{{inside, true}, {inside.translated(9000, 0), false}}) {
        p.Main()->setGeometry(left);
        p.Main()->close();
        p.StartWith(ThreeRooms);
        EXPECT_EQ(p.Main()->geometry() == left, back);
        EXPECT_TRUE(screen.contains(p.Main()->geometry()));
    }
    p.Main()->close();
    p.store.setValue("Editor/MainWindowGeometry", "no geometry");
    p.StartWith(ThreeRooms);
    EXPECT_TRUE(screen.contains(p.Main()->geometry()));
}

TEST(MainWindow, AddsAndDeletesRoomsAndThingsAndSavesThem) {
    RunningProgram p(ThreeRooms);
    Add<frmRoomProperties>(p, "butAddNewRoom", "room", QStringLiteral(u"Caf\u00E9"));
    EXPECT_EQ(p.Status(), NotSaved);
    Add<frmThingProperties>(p, "butAddObj_0", "character", "Ann");
    Add<frmThingProperties>(p, "butAddObj_1", "object", "cup");
    EXPECT_EQ(Lists(p), "Hall Attic Cellar [Caf\u00E9]|[Ann]|[cup]|");

    p.Select("lstRooms", 0);
    p.Select("lstCharacters", 1);
    p.Click("butDeleteObj_0"); // After the last row the first is selected.
    EXPECT_EQ(Lists(p), "[Hall] Attic Cellar Caf\u00E9|[Bob]|lamp|");
    p.Click("butDeleteObj_0");
    DeleteRoom(p, 1); // Selects the next room.
    EXPECT_EQ(Lists(p), "Hall [Cellar] Caf\u00E9||rope|");
    p.Trigger("mnuFileSave");
    EXPECT_EQ(p.Status(), "Game saved.");
    EXPECT_EQ(ReadBytes(p.folder.Path("game.kel~")), ThreeRooms);
    p.Trigger("mnuFileRecent_0"); // Opens the file again.
    p.Select("lstRooms", 2);
    EXPECT_EQ(Lists(p), "Hall Cellar [Caf\u00E9]|Ann|cup|");

    DeleteRoom(p, 2);
    EXPECT_EQ(Lists(p), "[Hall] Cellar||lamp|");
    DeleteRoom(p, 0);
    DeleteRoom(p, 0);
    EXPECT_EQ(Lists(p), "|||");
    EXPECT_EQ(p.Status(), NotSaved);
}

// Each of the two lists the things of both; what is added or deleted is nevertheless the right thing.
TEST(MainWindow, KeepsThingsApartWhenRoomsShareAName) {
    RunningProgram p("define room <Hall>\nend define\ndefine room <Hall>\ndefine object <a>\nend define\n"
                     "define object <b>\nend define\nend define\n");
    p.Select("lstRooms", 0);
    Add<frmThingProperties>(p, "butAddObj_1", "object", "mine");
    EXPECT_EQ(Lists(p), "[Hall] Hall||[mine] a b|");
    p.Select("lstObjects", 1);
    WhenOpen<frmThingProperties>([](frmThingProperties& form) {
        SetText(form, "txtThingName", "ours");
        Click(form, "butOK");
    });
    PressKey(*p.Main(), "lstObjects", Qt::Key_Return);
    EXPECT_EQ(Lists(p), "[Hall] Hall||mine [ours] b|");
    p.Select("lstObjects", 2);
    p.Click("butDeleteObj_1");
    EXPECT_EQ(Lists(p), "[Hall] Hall||[mine] ours|");
    EXPECT_EQ(p.game.Rooms[1].Objects[1].Name, "mine");
    EXPECT_EQ(p.game.Rooms[2].Objects[1].Name, "ours");
}

TEST(MainWindow, AsksAgainForANameThatCannotBeKeptAndMarksTheGameEvenWhenNoneIsGiven) {
    const QString greek = QStringLiteral(u"\u0394elta");
    for (const std::optional<QString>& answer : {std::optional<QString>(), std::optional<QString>("")}) {
        RunningProgram p(ThreeRooms);
        p.dialogs.Text(NameQuestion("room"), greek);
        p.dialogs.Message("New room: " + *UnstorableCharacter(greek));
        p.dialogs.Text(NameQuestion("room", greek), answer);
        p.Click("butAddNewRoom");
        EXPECT_EQ(Lists(p), "[Hall] Attic Cellar|Bob Eve|lamp|");
        EXPECT_EQ(p.Status(), NotSaved);
        EXPECT_TRUE(p.game.Modified);
    }
}

TEST(MainWindow, AsksAboutUnsavedChangesBeforeTheyAreLost) {
    const char* const old = "Hall Attic Cellar";
    const char* const changed = "Attic Cellar";
    for (const auto& [command, afterNo, afterYes] :
         Cases<const char*, const char*, const char*>{{"mnuFileNew", "", ""},
                                                      {"mnuFileOpen", old, changed},
                                                      {"mnuFileRecent_0", old, changed},
                                                      {"mnuFileExit", "closed", "closed"}})
        for (const auto& [answer, shown] : {std::pair(QMessageBox::Cancel, changed),
                                            {QMessageBox::No, afterNo},
                                            {QMessageBox::Yes, afterYes}}) {
            SCOPED_TRACE(command);
            RunningProgram p(ThreeRooms);
            DeleteRoom(p, 0);
            p.dialogs.Message(UnsavedQuestion, answer);
            if (std::string(command) == "mnuFileOpen" && answer != QMessageBox::Cancel)
                p.dialogs.OpenFile(p.Path("game.kel"));
            p.Trigger(command);
            const bool isClosed = !p.Main()->isVisible();
            EXPECT_EQ(isClosed ? "closed" : p.Rows("lstRooms").join(u' ').toStdString(), shown);
            EXPECT_EQ(p.program->StartWindow() == nullptr, isClosed);
            EXPECT_EQ(p.Saved() != ThreeRooms, answer == QMessageBox::Yes);
            EXPECT_TRUE(isClosed || p.game.Modified == (answer == QMessageBox::Cancel));
        }
}

TEST(MainWindow, SavesANewGameUnderANameAndStaysOpenWhenThatFails) {
    RunningProgram p;
    p.Start();
    const QPointer<QWidget> start = p.program->StartWindow();
    auto& newGame = Find<QPushButton>(*start, "butNewGame");
    newGame.setFocus();
    QTest::keyClick(&newGame, Qt::Key_Return);
    EXPECT_FALSE(start->isVisible());
    newGame.click(); // A second click that was already queued does nothing.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(start.isNull());
    Add<frmRoomProperties>(p, "butAddNewRoom", "room", "Hall");
    p.dialogs.Message(UnsavedQuestion, QMessageBox::Yes);
    p.dialogs.SaveFile(p.Path("gone/game.kel"));
    p.dialogs.Message(NoStartPlace);
    p.dialogs.Message("Failed to save game: game.kel: the file cannot be written: its folder or the "
                      "file itself is not there.");
    p.Trigger("mnuFileExit");
    EXPECT_TRUE(p.Main()->isVisible());
    EXPECT_TRUE(p.game.Modified);
    EXPECT_EQ(p.Title(), "ZEM 1.0");

    p.dialogs.SaveFile(p.Path("a & b.kel"));
    p.dialogs.Message(NoStartPlace);
    p.Trigger("mnuFileSaveAs");
    EXPECT_EQ(NameFilters(p.dialogs.lastFileQuestion.filter),
              (QStringList{"Veldt KEL file (*.kel)", "Text file (*.txt)", "All files (*.*)"}));
    EXPECT_EQ(p.Status(),
              "Game saved. Click 'Edit' then 'Game Properties...' to select a start room for this game.");
    EXPECT_EQ(p.Title(), "[" + p.folder.Path("a & b.kel") + "] - ZEM 1.0");
    EXPECT_EQ(p.Find<QAction>("mnuFileRecent_0")->text(), p.Path("a && b.kel"));
    p.Trigger("mnuFileRecent_0");
    EXPECT_EQ(Lists(p), "[Hall]|||");

    p.Trigger("mnuFileNew");
    p.dialogs.Text(NameQuestion("room"), {});
    p.Click("butAddNewRoom");
    p.dialogs.Message(UnsavedQuestion, QMessageBox::Yes);
    p.dialogs.SaveFile({}); // Cancel, and yet the author has said that he wants to leave
    p.Trigger("mnuFileExit");
    EXPECT_FALSE(p.Main()->isVisible());
}

TEST(MainWindow, ReportsABadFileAndGoesOnWithAnEmptyGame) {
    RunningProgram p(ThreeRooms);
    const std::string bad = "define game <x>\nend define\ndefine room <Hall>\n  alias Hall\nend define\n";
    p.folder.Write("bad.kel", bad);
    p.dialogs.OpenFile(p.Path("bad.kel"));
    p.dialogs.Message("Failed to load game: bad.kel, line 4: a parameter in angle brackets is missing: "
                      "alias Hall.");
    p.Trigger("mnuFileOpen");
    EXPECT_EQ(p.Title(), "ZEM 1.0");
    EXPECT_EQ(Lists(p), "|||");
    EXPECT_EQ(ReadBytes(p.folder.Path("bad.kel")), bad);
    p.dialogs.SaveFile({});
    p.Trigger("mnuFileSave"); // Asks for a name, so that the empty game overwrites no file.
    p.dialogs.OpenFile(p.Path("missing.kel"));
    p.dialogs.Message("Error: Error - file not found");
    p.Trigger("mnuFileOpen");
}

TEST(MainWindow, RefusesARoomTooManyAndLeavesTheGameAsItWas) {
    std::string bytes;
    for (int k = 1; k <= MostRecords; ++k)
        bytes += "define room <" + std::to_string(k) + ">\nend define\n";
    RunningProgram p(bytes);
    p.dialogs.Text("New room: Please enter a name for this room: [Enter a name here...]", "one more");
    p.dialogs.Message(
        "ZEM: The command was not carried out: a list of the game cannot hold more than 32,767 entries.");
    p.Click("butAddNewRoom");
    EXPECT_EQ(p.Rows("lstRooms").size(), 32767);
    EXPECT_FALSE(p.game.Modified);
}

} // namespace
} // namespace zem::test
