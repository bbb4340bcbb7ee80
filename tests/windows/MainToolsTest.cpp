// The tools of the main window: undo, earlier versions, and what happens to the file behind its back.
#include "editors/frmEditItems.h"
#include "editors/frmRoomProperties.h"
#include "editors/frmTextSectionEdit.h"
#include "session/Versions.h"
#include "support/Cases.h"
#include "support/SmallGame.h"
#include "windows/frmReadBack.h"
#include "windows/frmVersions.h"

#include <QDockWidget>
#include <QTreeWidget>

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace zem::test {
namespace {

// ---- Undo

TEST(Undo, TakesBackEveryCommandThatChangedSomethingAndKnowsTheSavedState) {
    RunningProgram p(Small);
    const GameModel opened = p.game;
    p.Open<frmEditItems>("mnuViewItems", [](frmEditItems& form) { Click(form, "butOK"); });
    EXPECT_TRUE(p.game.Modified);
    EXPECT_EQ(UndoText(p), "-, -");
    DeleteRoom(p, 0);
    p.Select("lstRooms", 0);
    p.Open<frmRoomProperties>("butEditRoom", [](frmRoomProperties& form) {
        SetText(form, "txtRoomAlias", "loft");
        Click(form, "butOK");
    });
    p.Open<frmTextSectionEdit>("mnuViewTextSectionEditor", [](frmTextSectionEdit& form) {
        TypeText(form, "txtText", "abc"); // Three changes become one step.
    });
    EXPECT_EQ(UndoText(p), "&Undo edit text blocks: intro, -");
    p.Trigger("mnuToolsUndo");
    EXPECT_EQ(p.game.TextSections[1].Text, "");
    EXPECT_EQ(UndoText(p), "&Undo edit room Attic: alias, &Redo edit text blocks: intro");
    p.dialogs.SaveFile(p.Path("other.kel"));
    p.Trigger("mnuFileSaveAs");
    EXPECT_FALSE(p.game.Modified);
    p.Trigger("mnuToolsUndo");
    p.Trigger("mnuToolsUndo");
    EXPECT_TRUE(SameGame(p.game, opened));
    EXPECT_EQ(p.Rows("lstRooms"), (QStringList{"Hall", "Attic"}));
    EXPECT_TRUE(p.game.Modified) << "the file holds a later state";
    EXPECT_EQ(UndoText(p), "-, &Redo delete room Hall");
    p.Trigger("mnuToolsRedo");
    p.Trigger("mnuToolsRedo");
    EXPECT_FALSE(p.game.Modified) << "back at what was saved";
    EXPECT_EQ(p.Status(), "");
    EXPECT_EQ(p.game.FileName, p.folder.Path("other.kel"));
    p.Trigger("mnuToolsUndo");
    DeleteRoom(p, 0); // A new change drops the undone steps and with them the saved state.
    EXPECT_EQ(UndoText(p), "&Undo delete room Attic, -");
    p.Trigger("mnuToolsUndo");
    EXPECT_TRUE(p.game.Modified);
}

TEST(Undo, JumpsToAnyStepFromThePanel) {
    RunningProgram p(Small);
    p.Trigger("mnuToolsHistory");
    EXPECT_TRUE(p.Find<QDockWidget>("dckHistory")->isVisible());
    DeleteRoom(p, 0);
    DeleteRoom(p, 0);
    const auto steps = [&p] { return p.Rows("lstSteps").join(u'|').toStdString(); };
    EXPECT_EQ(steps(), "(as opened)|delete room Hall|delete room Attic");
    p.Select("lstSteps", 0);
    EXPECT_EQ(p.game.Rooms.Count(), 2);
    EXPECT_EQ(steps(), "(as opened)|delete room Hall (undone)|delete room Attic (undone)");
    p.Select("lstSteps", 1);
    EXPECT_EQ(p.Rows("lstRooms"), QStringList{"Attic"});
    EXPECT_EQ(p.SelectedRow("lstSteps"), 1);
    p.game.Modified = false;
    p.Trigger("mnuFileNew");
    EXPECT_EQ(steps(), "(as opened)");
}

// ---- Earlier versions

TEST(EarlierVersions, OpenAsUnsavedGamesAndAreKeptAsideWhenTheyAreDamaged) {
    RunningProgram p(Small);
    p.Trigger("mnuFileSave");
    for (int k = 0; k < 2; ++k) {
        DeleteRoom(p, 0);
        p.Trigger("mnuFileSave");
    }
    const QString path = Versions(p.Path("state/versions")).List(p.Path("game.kel")).at(0).path;
    std::ofstream(PathFromQt(path)) << "define game <x>\r\n";
    p.dialogs.Message(
        QStringLiteral("Failed to load game: %1, line 1: this block has no \"end define\": define "
                       "game <x>. It is kept aside as %2.damaged.")
            .arg(QFileInfo(path).fileName(), path));
    p.Open<frmVersions>("mnuToolsVersions", [](frmVersions& form) { Click(form, "butOpen"); });
    EXPECT_EQ(p.game.FileName, p.folder.Path("game.kel")) << "the game that was open";
    EXPECT_TRUE(QFile::exists(path + ".damaged"));

    p.Open<frmVersions>("mnuToolsVersions", [](frmVersions& form) {
        auto& list = Find<QTreeWidget>(form, "lstVersions");
        ASSERT_EQ(list.topLevelItemCount(), 3) << "the one before the first save, too";
        list.setCurrentItem(list.topLevelItem(1)); // Selects the older version.
        Click(form, "butOpen");
    });
    EXPECT_EQ(p.Rows("lstRooms"), (QStringList{"Hall", "Attic"}));
    EXPECT_TRUE(p.game.FileName.empty());
    EXPECT_TRUE(p.game.Modified);
    EXPECT_EQ(UndoText(p), "-, -");
    EXPECT_EQ(p.Saved().find("define room"), std::string::npos);
}

TEST(EarlierVersions, AreBoundedInNumberButForThosePinned) {
    const TempFolder folder;
    const Versions versions(PathToQt(folder.Path("versions")));
    const QString game = PathToQt(folder.Write("game.kel", "0"));
    const QString other = PathToQt(folder.Write("other.kel", "other"));
    EXPECT_TRUE(versions.Keep(game, game, VersionKind::BeforeLoss));
    for (int k = 1; k <= Versions::MostVersions + 3; ++k) {
        folder.Write("game.kel", std::to_string(k));
        QTest::qWait(2); // Versions are named by the millisecond.
        EXPECT_TRUE(versions.Keep(game, game));
    }
    EXPECT_TRUE(versions.Keep(other, other));
    const std::vector<FileVersion> kept = versions.List(game);
    ASSERT_EQ(kept.size(), Versions::MostVersions + 1U);
    EXPECT_EQ(ReadBytes(PathFromQt(kept.front().path)), "53");
    EXPECT_EQ(ReadBytes(PathFromQt(kept[kept.size() - 2].path)), "4");
    EXPECT_EQ(kept.back().kind, VersionKind::BeforeLoss);
    EXPECT_EQ(versions.List(other).size(), 1U);
    EXPECT_FALSE(versions.Keep(game, PathToQt(folder.Path("missing.kel"))));
}

// ---- Saves that do not come back

TEST(SavedMeansReadable, NamesThePlacesAndOpensTheirEditors) {
    RunningProgram p(Small);
    p.game.Includes.Append("a > b");
    p.game.GameAuthor = "<x>y";
    p.game.Items.Append({"a, b", false});
    p.game.Collectables.Append({"gold p=0 [!,-]", "gold"});
    p.game.ErrorMessages.Edit(1).GameText = "No > way.";
    p.game.Synonyms.Append({"x = y", "z"});
    p.game.Rooms.Edit(2).Look = "x > y";
    p.game.Rooms.Edit(1).Objects.Append().Name = "a>b";
    p.game.Procedures.Append({"p", "{\r\n}\r\n"});
    p.game.SelectionMenus.Append({"a > b", "", {}});
    p.game.TextSections.Append({"poem", "end define\r\n"});
    p.game.UnknownBlocks = std::string("define x\r\n");
    p.game.Modified = true;
    int row = 0;
    for (const auto& [place, editor] : Cases<const char*, const char*>{
             {"Game properties, game author:", "frmGameProperties"},
             {"Game properties, blocks of other kinds:", "frmTagEditor"},
             {"Library a > b:", "frmIncludedLibraries"},
             {"Object a>b in Hall, name:", "frmThingProperties"},
             {"Room Attic, description:", "frmRoomProperties"},
             {"Text block poem, text:", "frmTextSectionEdit"},
             {"Item a, b, name:", "frmEditItems"},
             {"Collectable gold:", "frmEditCollectables"},
             {"Procedure p, script:", "frmProcedureEditor"},
             {"Menu a > b, name:", "frmMenuList"},
             {"Synonym z, words:", "frmSynonyms"},
             {"Error message badcommand, text:", "frmEditErrors"},
         }) {
        std::string shown;
        std::string opened;
        WhenOpenLater<frmReadBack>([&](frmReadBack& form) {
            shown = Rows(form, "lstPlaces").value(row).toStdString();
            SelectRow(form, "lstPlaces", row++);
            WhenOpen<QDialog>([&](QDialog& window) { opened = window.objectName().toStdString(); });
            Click(form, "butEdit");
        });
        p.Trigger("mnuFileSave");
        EXPECT_TRUE(shown.starts_with(place)) << shown;
        EXPECT_EQ(opened, editor);
    }
    EXPECT_EQ(p.Status(), "Game saved.");
    p.Open<frmVersions>("mnuToolsVersions", [](frmVersions& form) {
        EXPECT_FALSE(Find<QTreeWidget>(form, "lstVersions")
                         .findItems("before a save that does not come back whole", Qt::MatchExactly, 2)
                         .isEmpty());
    });
}

TEST(SavedMeansReadable, AsksAgainAboutWhatIsMendedOnTheWayOut) {
    for (const auto& [command, question] :
         {std::pair("mnuFileNew", UnsavedQuestion), {"mnuFileRunKELfile", UnsavedRunQuestion}}) {
        RunningProgram p(Small);
        p.game.Rooms.Edit(2).Alias = "a>b";
        p.game.Modified = true;
        p.dialogs.Message(question, QMessageBox::Yes);
        p.dialogs.Message(question, QMessageBox::Yes);
        WhenOpenLater<frmReadBack>([](frmReadBack& form) {
            WhenOpen<frmRoomProperties>([](frmRoomProperties& room) {
                SetText(room, "txtRoomAlias", "a to b");
                Click(room, "butOK");
            });
            Click(form, "butEdit");
        });
        if (question == UnsavedRunQuestion)
            p.dialogs.Document(p.Path("game.kel"), 33);
        p.Trigger(command);
        EXPECT_FALSE(p.game.Modified);
        EXPECT_NE(p.Saved().find("alias <a to b>"), std::string::npos);
    }
}

TEST(SavedMeansReadable, ReadsLargeGamesBackInTheBackground) {
    RunningProgram p;
    std::string bytes = Small;
    for (int k = 0; k < 700; ++k)
        bytes += "define room <" + std::to_string(k) + ">\r\nlook <" + std::string(500, 'x') +
                 ">\r\nend define\r\n";
    p.StartWith(bytes);
    p.game.Rooms.Edit(500).Alias = "a>b";
    p.Trigger("mnuFileSave");
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "the author can go on";
    QStringList places;
    WhenOpenLater<frmReadBack>([&](frmReadBack& form) { places = Rows(form, "lstPlaces"); });
    EXPECT_TRUE(QTest::qWaitFor([&] { return !places.isEmpty(); }, 60000));
    EXPECT_EQ(places, QStringList{"Room 497, alias: the \">\" in it ends it early."});
}

// ---- Changes by other programs

enum Choice { Cancel = -1, KeepMine, AnotherName, Reload };

void ExpectQuestion(RunningProgram& p, Choice answer,
                    const char* what = "has been changed by another program", bool isThere = true) {
    const char* const more = !isThere          ? ""
                             : p.game.Modified ? "|&Reload|Show &differences...|&Merge both"
                                               : "|&Reload|Show &differences...";
    p.dialogs.Choice(QString("File changed: The file %1 %2 since it was opened or saved here. "
                             "[&Keep mine|Save mine under &another name...%3]")
                         .arg(p.Path("game.kel"), what, more),
                     answer);
}

TEST(ChangedOnDisk, IsToldBeforeASaveOverwritesIt) {
    const std::string theirs = CrLf("define game <Theirs>\nstart <Hall>\nend define\n");
    for (const Choice choice : {Cancel, KeepMine, AnotherName, Reload}) {
        RunningProgram p(Small);
        DeleteRoom(p, 0);
        p.folder.Write("game.kel", theirs);
        ExpectQuestion(p, choice);
        if (choice == AnotherName)
            p.dialogs.SaveFile(p.Path("mine.kel"));
        p.Trigger("mnuFileSave");
        EXPECT_EQ(p.Saved() == theirs, choice != KeepMine);
        EXPECT_EQ(std::filesystem::exists(p.folder.Path("mine.kel")), choice == AnotherName);
        EXPECT_EQ(p.game.GameName, choice == Reload ? "Theirs" : "Tower");
        EXPECT_EQ(p.game.Modified, choice == Cancel);
    }
}

TEST(ChangedOnDisk, StopsWhatThreatensTheGameUntilTheAuthorHasDecided) {
    for (const auto& [command, question] : {std::pair("mnuFileNew", UnsavedQuestion),
                                            {"mnuFileExit", UnsavedQuestion},
                                            {"mnuFileRunKELfile", UnsavedRunQuestion}}) {
        SCOPED_TRACE(command);
        RunningProgram p(Small);
        DeleteRoom(p, 0);
        p.folder.Write("game.kel", Small + "'x\r\n");
        p.dialogs.Message(question, QMessageBox::Yes);
        ExpectQuestion(p, Cancel);
        p.Trigger(command);
        EXPECT_TRUE(p.Main()->isVisible());
        EXPECT_TRUE(p.game.Modified);
        EXPECT_EQ(p.Rows("lstRooms"), QStringList{"Attic"});
    }
}

TEST(ChangedOnDisk, IsToldOnceOnReturnToTheWindow) {
    RunningProgram p(Small);
    const auto comeBack = [&p] {
        QEvent event(QEvent::ActivationChange);
        QApplication::setActiveWindow(p.Main());
        QApplication::sendEvent(p.Main(), &event);
        QCoreApplication::processEvents();
        p.dialogs.ExpectAllAsked();
    };
    comeBack(); // The file has not changed.
    p.folder.Write("game.kel", Small);
    comeBack(); // The content has not changed.
    p.folder.Write("game.kel", Small + "'x\r\n");
    ExpectQuestion(p, Cancel);
    comeBack();
    comeBack();
    EXPECT_FALSE(p.game.Modified);
    p.folder.Write("game.kel", Small + "'xyz\r\n");
    ExpectQuestion(p, KeepMine);
    comeBack();
    EXPECT_TRUE(p.game.Modified) << "the file holds something else";
    p.Trigger("mnuFileSave"); // Asks nothing more.
    std::filesystem::remove(p.folder.Path("game.kel"));
    ExpectQuestion(p, KeepMine, "is not there any more", false);
    comeBack();
    EXPECT_TRUE(p.game.Modified);
}

} // namespace
} // namespace zem::test
