#include "app/frmMenuList.h"
#include "app/frmPlayerCommandEditor.h"
#include "app/frmSelectionWindow.h"
#include "script/frmEditCommand.h"
#include "support/ScriptFixture.h"
#include "support/ScriptForms.h"

#include <gtest/gtest.h>

namespace zem::test {
namespace {

class MenuFormsTest : public ScriptFixture {
protected:
    MenuFormsTest() {
        SelectionMenu& menu = game.SelectionMenus.Append();
        menu.Name = "shop";
        menu.Info = "Buy?";
        menu.Choices.Append({"bread", "msg <b>"});
        menu.Choices.Append({"wine", "msg <w>"});
        menu.Choices.Append({"nothing", ""});
    }
};

TEST_F(MenuFormsTest, EditsAMenuThroughItsWindows) {
    frmMenuList menus(scripts);
    menus.show();
    auto& list = Find<QListWidget>(menus, "lstMenus");
    Click(menus, "butEdit"); // nothing selected, nothing happens
    list.setCurrentRow(0);
    WhenOpen<frmSelectionWindow>([this](frmSelectionWindow& form) {
        EXPECT_EQ(form.windowTitle(), "Menu Editor");
        SetText(form, "txtInfo", "What?");
        auto& choices = Find<QListWidget>(form, "lstMenu");
        choices.setCurrentRow(0);
        QTest::keyClick(&choices, Qt::Key_Up, Qt::ControlModifier); // at the top already
        QTest::keyClick(&choices, Qt::Key_Down, Qt::ControlModifier);
        EXPECT_EQ(choices.currentRow(), 1);
        dialogs.Text("Rename: Enter a new name for this menu choice: [bread]", "loaf");
        Click(form, "butRename");
        choices.setCurrentRow(2);
        QTest::keyClick(&choices, Qt::Key_Delete);
        dialogs.Text("New Menu Choice: Please enter the text to display for this menu choice: []", "cheese");
        ConfirmNextScript();
        Click(form, "butAdd");
        Click(form, "butOK");
    });
    QTest::keyClick(&list, Qt::Key_Return);
    SelectionMenu expected;
    expected.Name = "shop";
    expected.Info = "What?";
    expected.Choices.Append({"wine", "msg <w>"});
    expected.Choices.Append({"loaf", "msg <b>"});
    expected.Choices.Append({"cheese", ""});
    EXPECT_EQ(game.SelectionMenus[1], expected);
    EXPECT_EQ(door.changes, std::vector<std::string>{"edit menu"});
}

TEST_F(MenuFormsTest, KeepsANewMenuWhoseEditorIsCancelledAndAlwaysMarksTheGame) {
    frmMenuList menus(scripts);
    menus.show();
    dialogs.Text("Add menu: Please enter a name for this menu []", {});
    Click(menus, "butAdd");
    EXPECT_FALSE(game.Modified);
    dialogs.Text("Add menu: Please enter a name for this menu []", "inn");
    WhenOpen<frmSelectionWindow>([](frmSelectionWindow& form) {
        SetText(form, "txtInfo", "lost");
        form.close();
    });
    PressKey(menus, "lstMenus", Qt::Key_Insert);
    ASSERT_EQ(game.SelectionMenus.Count(), 2);
    EXPECT_EQ(game.SelectionMenus[2].Name, "inn");
    EXPECT_EQ(game.SelectionMenus[2].Info, "");
    EXPECT_EQ(SelectedRow(menus, "lstMenus"), 1);
    SelectRow(menus, "lstMenus", 0);
    Click(menus, "butRemove");
    EXPECT_EQ(game.SelectionMenus[1].Name, "inn");
    game.Modified = false;
    Click(menus, "butOK");
    EXPECT_TRUE(game.Modified) << "also when nothing was changed";
    EXPECT_FALSE(menus.isVisible());
}

TEST_F(MenuFormsTest, EditsPlayerCommandsInAListOfTheirOwn) {
    const std::string take = "take " + std::string(40000, 'x'); // longer than a box holds by itself
    frmPlayerCommandEditor form(scripts, {{"look", "msg <l>"}, {take, "msg <t>"}});
    form.show();
    auto& list = Find<QListWidget>(form, "lstCommands");
    WhenOpen<frmEditCommand>([](frmEditCommand& command) { Click(command, "butOK"); });
    Click(form, "butAdd"); // an empty pattern, too
    list.setCurrentRow(0);
    QTest::keyClick(&list, Qt::Key_Down, Qt::ControlModifier);
    WhenOpen<frmEditCommand>([](frmEditCommand& command) {
        EXPECT_EQ(command.Pattern(), "look");
        PressKey(command, "txtCommand", Qt::Key_End);
        TypeText(command, "txtCommand", " round");
        CutNextScript();
        PressKey(command, "txtAction", Qt::Key_Return); // as in any script field
        Click(command, "butOK");
    });
    QTest::keyClick(&list, Qt::Key_Return);
    list.setCurrentRow(0);
    WhenOpen<frmEditCommand>([](frmEditCommand& command) { Click(command, "butOK"); });
    Click(form, "butEdit");
    WhenOpen<frmEditCommand>([](frmEditCommand& command) {
        TypeText(command, "txtCommand", " cancelled");
        QTest::keyClick(&command, Qt::Key_Escape);
    });
    Click(form, "butEdit");
    EXPECT_EQ(form.Commands(), (std::vector<ScriptPair>{{take, "msg <t>"}, {"look round", ""}, {"", ""}}));
    for (int k = 0; k < 4; ++k)
        Click(form, "butRemove"); // the next one is selected each time
    EXPECT_TRUE(form.Commands().empty());
    Click(form, "butOK");
    EXPECT_TRUE(door.changes.empty()) << "the caller takes the list, not this window";
}

} // namespace
} // namespace zem::test
