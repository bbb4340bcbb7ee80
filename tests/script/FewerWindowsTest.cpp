// What spares a window: boxes for the parts of a parameter, groups of commands, making a thing in passing,
// the scripts of a list below it, and timers as a form.
#include "editors/frmProcedureEditor.h"
#include "editors/frmSelectionWindow.h"
#include "editors/frmTimers.h"
#include "script/CreateButton.h"
#include "script/ScriptBlock.h"
#include "script/ScriptDraft.h"
#include "script/frmConditional.h"
#include "script/frmScriptEditor.h"
#include "script/frmScriptLines.h"
#include "support/Cases.h"
#include "support/Games.h"
#include "support/ScriptFixture.h"
#include "support/WhenOpen.h"

#include <QLabel>
#include <QTreeWidget>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

class FewerWindows : public ScriptFixture {
protected:
    static std::string CreateText(const QWidget& form) {
        const auto& button = Find<CreateButton>(form, "butCreate");
        return button.isVisible() ? button.text().toStdString() : "-";
    }
};

TEST_F(FewerWindows, EachPartOfAParameterHasABoxThatSaysTheSame) {
    game =
        LoadBytes(CrLf("define game <x>\nend define\ndefine room <Hall>\ndefine object <lamp>\nend define\n"
                       "end define\ndefine room <Attic>\nend define\n"));
    const auto form = Open<frmScriptEditor>("move object <lamp;Attic>");
    EXPECT_EQ(TextOf(*form, "cmbPart_0") + '/' + TextOf(*form, "cmbPart_1"), "lamp/Attic");
    EXPECT_EQ(Find<QComboBox>(*form, "cmbPart_1").count(), 2) << "the rooms of the game";
    EXPECT_EQ(Find<QWidget>(*form, "cmbPart_1").accessibleName(), "The room to move it to");
    EXPECT_EQ(TextOf(*form, "txtParameter"), "lamp;Attic") << "untouched";
    SetText(*form, "cmbPart_1", "Hall");
    EXPECT_EQ(TextOf(*form, "txtParameter"), "lamp; Hall");
    SetText(*form, "txtParameter", "oil; Quay; x");
    EXPECT_EQ(TextOf(*form, "cmbPart_0") + '/' + TextOf(*form, "cmbPart_1"), "oil/Quay; x");
    // As many procedures as one likes: there is always one box more.
    const auto pick = Open<frmScriptEditor>("pick <a; b; c>");
    EXPECT_EQ(TextOf(*pick, "cmbPart_2"), "c");
    SetText(*pick, "cmbPart_3", "d");
    Click(*pick, "butOK");
    EXPECT_EQ(pick->Line(), "pick <a; b; c; d>");
    EXPECT_FALSE(Find<QWidget>(*Open<frmScriptEditor>("msg <a; b>"), "pnlParts").isVisible());
    const auto condition = Open<frmConditional>("if object in <lamp; Hall> then win");
    SetText(*condition, "cmbPart_1", "Attic");
    EXPECT_EQ(TextOf(*condition, "txtRaw"), "if object in <lamp; Attic> then win");
}

TEST_F(FewerWindows, ACommandIsChosenFromItsGroup) {
    const auto form = Open<frmScriptEditor>("msg <Hi>");
    auto& groups = Find<QTreeWidget>(*form, "treGroups");
    EXPECT_EQ(groups.currentItem()->text(0), "Print a message") << "shown in its group";
    groups.setCurrentItem(groups.topLevelItem(0));
    EXPECT_EQ(TextOf(*form, "cmbFriendly"), "Print a message") << "a group is no command";
    groups.setCurrentItem(groups.findItems("Move an object", Qt::MatchRecursive | Qt::MatchExactly).value(0));
    EXPECT_EQ(TextOf(*form, "cmbFriendly"), "Move an object");
    Click(*form, "butOK");
    EXPECT_EQ(form->Line(), "move object <Hi>");
}

TEST_F(FewerWindows, WhatAScriptNamesIsMadeInPassingAndGoneAgainWithCancel) {
    const GameModel before = game;
    for (const bool isKept : {false, true}) {
        ScriptDraft editor(scripts); // of the editor around the script
        std::string script = "give <rope>\r\ndo <swing>\r\nchoose <#which#>\r\ntext <poem>";
        WhenOpen<frmScriptLines>([&](frmScriptLines& form) {
            EXPECT_EQ(CreateText(form), "Create item \"rope\"");
            Click(form, "butCreate");
            EXPECT_EQ(CreateText(form), "Create procedure \"swing\"...");
            WhenOpen<frmScriptLines>([](frmScriptLines& inner) { Click(inner, "butCancel"); });
            Click(form, "butCreate");
            EXPECT_EQ(CreateText(form), "Create procedure \"swing\"...");
            WhenOpen<frmScriptLines>([](frmScriptLines& inner) {
                EXPECT_EQ(TextOf(inner, "lblWhere"), "Procedure swing");
                TypeText(inner, "txtLine", "goto Tree");
                PressKey(inner, "txtLine", Qt::Key_Return);
                EXPECT_EQ(CreateText(inner), "Create room \"Tree\"");
                Click(inner, "butCreate");
                Click(inner, "butOK");
            });
            Click(form, "butCreate");
            EXPECT_EQ(CreateText(form), "Create text block \"poem\"...");
            dialogs.Text("New text block: What does the text block say? []", "Roses");
            Click(form, "butCreate");
            EXPECT_EQ(CreateText(form), "-") << "a name made of a variable is none to make";
            Click(form, isKept ? "butOK" : "butCancel");
        });
        EXPECT_EQ(scripts.EditScript(nullptr, script), isKept);
        EXPECT_TRUE(SameGame(door.game, before)) << "the editor around it is still open";
        if (isKept)
            editor.Keep();
    }
    ASSERT_EQ(game.Items.Count() * game.Rooms.Count() * game.TextSections.Count(), 1);
    EXPECT_EQ(game.Items[1].Name + game.Rooms[1].Name + game.TextSections[1].Text, "ropeTreeRoses");
    ASSERT_EQ(game.Procedures.Count(), 2) << "swing and the script itself";
    EXPECT_EQ(game.Procedures[1], (Procedure{"swing", "goto <Tree>"}));
}

TEST_F(FewerWindows, TheScriptOfTheSelectedRowStandsBelowItsList) {
    game.Procedures.Append({"~Internal Procedure 1", "win"});
    game.Procedures.Append({"ring", "if has <x> then do <~Internal Procedure 1> else die"});
    game.Procedures.Append({"rest", ""});
    frmProcedureEditor form(context);
    form.show();
    EXPECT_FALSE(Find<QWidget>(form, "blkProcedures").isVisible());
    SelectRow(form, "cmbProcedures", 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(Rows(form, "blkProcedures").value(1), "   The player wins");
    auto& block = Find<ScriptBlock>(form, "blkProcedures");
    block.setCurrentIndex(block.model()->index(1, 0));
    WhenOpen<frmScriptEditor>([](frmScriptEditor& line) {
        EXPECT_EQ(TextOf(line, "lblWhere"), "Procedure ring");
        SetText(line, "cmbFriendly", "Describe the room again");
        Click(line, "butOK");
    });
    PressKey(form, "blkProcedures", Qt::Key_Return);
    EXPECT_EQ(game.Procedures[1].Script, "look <>");
    EXPECT_EQ(Rows(form, "blkProcedures").value(1), "   Describe the room again");
    Click(form, "butRemove");
    QCoreApplication::processEvents();
    EXPECT_TRUE(Rows(form, "blkProcedures").isEmpty()) << "that of the next one";

    SelectionMenu menu;
    menu.Choices.Append({"yes", "win"});
    menu.Choices.Append({"no", "if has <x> then die"});
    frmSelectionWindow choices(context, menu);
    choices.show();
    SelectRow(choices, "lstMenu", 1);
    Click(choices, "butMoveUp");
    QCoreApplication::processEvents();
    EXPECT_EQ(Rows(choices, "blkMenu").value(1), "   The player loses");
    WhenOpen<frmScriptEditor>([](frmScriptEditor& line) {
        SetText(line, "cmbFriendly", "Start the game again");
        Click(line, "butOK");
    });
    auto& choice = Find<ScriptBlock>(choices, "blkMenu");
    choice.setCurrentIndex(choice.model()->index(1, 0));
    PressKey(choices, "blkMenu", Qt::Key_Return);
    EXPECT_EQ(choices.Menu().Choices[1].Script, "if has <x> then restart <>");
}

TEST_F(FewerWindows, ATimerIsAFormAndTheOtherBlocksStay) {
    const std::string weather = "define weather <rain>\r\nend define\r\n\r\n";
    const std::string odd = "define timer <odd>\r\ninterval <9>\r\nloop\r\nend define\r\n\r\n";
    const std::string tide = "define timer <tide>\r\ninterval <120>\r\naction win\r\nend define\r\n\r\n";
    game.UnknownBlocks = weather + odd + tide;
    {
        frmTimers form(context);
        form.show();
        Click(form, "butOK");
        EXPECT_EQ(door.changes, 0) << "nothing was changed";
    }
    frmTimers form(context);
    form.show();
    EXPECT_FALSE(IsEnabled(form, "txtName"));
    EXPECT_NE(TextOf(form, "lblProblem"), "") << "it says why";
    SelectRow(form, "lstTimers", 1);
    SetText(form, "txtSeconds", "soon");
    WhenOpen<frmScriptLines>([](frmScriptLines& script) {
        EXPECT_EQ(TextOf(script, "lblWhere"), "Timer tide");
        TypeText(script, "txtLine", "print The water rises.");
        PressKey(script, "txtLine", Qt::Key_Return);
        Click(script, "butOK");
    });
    Click(form, "butAction");
    dialogs.Message("Timers: The seconds of the timer \"tide\" must be a whole number from 1 to 32767.");
    Click(form, "butOK");
    SetText(form, "txtSeconds", "30");
    dialogs.Text("New timer: Enter a name for the timer: []", "TIDE");
    Click(form, "butAdd");
    dialogs.Message("Timers: There is a timer \"TIDE\" already.");
    Click(form, "butOK");
    EXPECT_TRUE(form.isVisible());
    SetText(form, "txtName", "ebb");
    Click(form, "butOK");
    EXPECT_EQ(*game.UnknownBlocks,
              weather + odd +
                  "define timer <tide>\r\ninterval <30>\r\naction do <~Internal Procedure 0>\r\n"
                  "end define\r\n\r\ndefine timer <ebb>\r\n  interval <60>\r\nend define\r\n\r\n");
    ASSERT_EQ(game.Procedures.Count(), 1);
    EXPECT_EQ(game.Procedures[1].Script, "win\r\nmsg <The water rises.>");
    EXPECT_EQ(door.changes, 1) << "one step";
}

} // namespace
} // namespace zem::test
