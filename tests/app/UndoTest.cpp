#include "editors/frmEditItems.h"
#include "editors/frmRoomProperties.h"
#include "editors/frmTextSectionEdit.h"
#include "support/SmallGame.h"

#include <QDockWidget>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

TEST(Undo, TakesBackEveryCommandThatChangedSomethingAndKnowsTheSavedState) {
    RunningProgram p(Small);
    const GameModel opened = p.game;
    p.Open<frmEditItems>("mnuViewItems", [](frmEditItems& form) { Click(form, "butOK"); });
    EXPECT_TRUE(p.game.Modified);
    EXPECT_EQ(UndoText(p), "-, -");
    DeleteRoom(p, 0);
    p.Select("lstRooms", 0);
    p.Open<frmRoomProperties>("butEditRoom", [](frmRoomProperties& form) {
        SetText(form, "txtAlias", "loft");
        Click(form, "butOK");
    });
    p.Open<frmTextSectionEdit>("mnuViewTextSectionEditor", [](frmTextSectionEdit& form) {
        TypeText(form, "txtText", "abc"); // several changes, one step
    });
    EXPECT_EQ(UndoText(p), "&Undo edit text blocks, -");
    p.Trigger("mnuToolsUndo");
    EXPECT_EQ(p.game.TextSections[1].Text, "");
    EXPECT_EQ(UndoText(p), "&Undo edit room, &Redo edit text blocks");
    p.dialogs.SaveFile(p.Path("other.kel"));
    p.Trigger("mnuFileSaveAs");
    EXPECT_FALSE(p.game.Modified);
    p.Trigger("mnuToolsUndo");
    p.Trigger("mnuToolsUndo");
    EXPECT_TRUE(SameGame(p.game, opened));
    EXPECT_EQ(p.Rows("lstRooms"), (QStringList{"Hall", "Attic"}));
    EXPECT_TRUE(p.game.Modified) << "the file holds a later state";
    EXPECT_EQ(UndoText(p), "-, &Redo delete room");
    p.Trigger("mnuToolsRedo");
    p.Trigger("mnuToolsRedo");
    EXPECT_FALSE(p.game.Modified) << "back at what was saved";
    EXPECT_EQ(p.Status(), "");
    EXPECT_EQ(p.game.FileName, p.folder.Path("other.kel"));
    p.Trigger("mnuToolsUndo");
    DeleteRoom(p, 0); // another way: what was undone is gone, and so is the saved state
    EXPECT_EQ(UndoText(p), "&Undo delete room, -");
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
    EXPECT_EQ(steps(), "(as opened)|delete room|delete room");
    p.Select("lstSteps", 0);
    EXPECT_EQ(p.game.Rooms.Count(), 2);
    EXPECT_EQ(steps(), "(as opened)|delete room (undone)|delete room (undone)");
    p.Select("lstSteps", 1);
    EXPECT_EQ(p.Rows("lstRooms"), QStringList{"Attic"});
    EXPECT_EQ(p.SelectedRow("lstSteps"), 1);
    p.game.Modified = false;
    p.Trigger("mnuFileNew");
    EXPECT_EQ(steps(), "(as opened)");
}

} // namespace
} // namespace zem::test
