#include "app/frmMenuList.h"
#include "app/frmPlayerCommandEditor.h"
#include "app/frmSelectionWindow.h"
#include "script/frmEditCommand.h"
#include "support/ScriptFixture.h"
#include "support/ScriptForms.h"

#include <gtest/gtest.h>

namespace zem::test {
namespace {

using MenuForms = ScriptFixture;
using Pairs = std::vector<ScriptPair>;

TEST_F(MenuForms, EditMenusAndAlwaysMarkTheGame) {
    game.SelectionMenus.Append({"shop", "Buy?", {}})
        .Choices.Assign(Pairs{{"bread", "msg <b>"}, {"wine", "msg <w>"}, {"nothing", ""}});
    frmMenuList menus(scripts);
    menus.show();
    Click(menus, "butEdit"); // nothing selected, nothing happens
    dialogs.Text("Add menu: Please enter a name for this menu []", {});
    Click(menus, "butAdd");
    EXPECT_FALSE(game.Modified);
    SelectRow(menus, "lstMenus", 0);
    WhenOpen<frmSelectionWindow>([this](frmSelectionWindow& form) {
        SetText(form, "txtInfo", "What?");
        SelectRow(form, "lstMenu", 0);
        PressKey(form, "lstMenu", Qt::Key_Up, Qt::ControlModifier); // at the top already
        PressKey(form, "lstMenu", Qt::Key_Down, Qt::ControlModifier);
        dialogs.Text("Rename: Enter a new name for this menu choice: [bread]", "loaf");
        Click(form, "butRename");
        SelectRow(form, "lstMenu", 2);
        PressKey(form, "lstMenu", Qt::Key_Delete);
        dialogs.Text("New Menu Choice: Please enter the text to display for this menu choice: []", "cheese");
        ConfirmNextScript();
        Click(form, "butAdd");
        EXPECT_EQ(Rows(form, "lstMenu"), (QStringList{"wine", "loaf", "cheese"}));
        Click(form, "butOK");
    });
    PressKey(menus, "lstMenus", Qt::Key_Return);
    SelectionMenu expected{"shop", "What?", {}};
    expected.Choices.Assign(Pairs{{"wine", "msg <w>"}, {"loaf", "msg <b>"}, {"cheese", ""}});
    EXPECT_EQ(game.SelectionMenus[1], expected);

    dialogs.Text("Add menu: Please enter a name for this menu []", "inn");
    WhenOpen<frmSelectionWindow>([](frmSelectionWindow& form) {
        SetText(form, "txtInfo", "lost");
        form.close();
    });
    PressKey(menus, "lstMenus", Qt::Key_Insert);
    EXPECT_EQ(game.SelectionMenus[2], (SelectionMenu{"inn", "", {}})) << "it stays though it is cancelled";
    EXPECT_EQ(SelectedRow(menus, "lstMenus"), 1);
    SelectRow(menus, "lstMenus", 0);
    Click(menus, "butRemove");
    EXPECT_EQ(game.SelectionMenus[1].Name, "inn");
    EXPECT_EQ(door.changes, (std::vector<std::string>{"edit menu", "add menu", "remove menu"}));
    game.Modified = false;
    Click(menus, "butOK");
    EXPECT_TRUE(game.Modified) << "also when nothing was changed";
    EXPECT_FALSE(menus.isVisible());
}

TEST_F(MenuForms, EditPlayerCommandsInAListOfTheirOwn) {
    const std::string take = "take " + std::string(40000, 'x'); // longer than a box holds by itself
    frmPlayerCommandEditor form(scripts, {{"look", "msg <l>"}, {take, "msg <t>"}});
    form.show();
    const auto confirm = [](frmEditCommand& command) { Click(command, "butOK"); };
    WhenOpen<frmEditCommand>(confirm);
    Click(form, "butAdd"); // an empty pattern, too
    SelectRow(form, "lstCommands", 0);
    PressKey(form, "lstCommands", Qt::Key_Down, Qt::ControlModifier);
    WhenOpen<frmEditCommand>([](frmEditCommand& command) {
        PressKey(command, "txtCommand", Qt::Key_End);
        TypeText(command, "txtCommand", " round");
        CutNextScript();
        PressKey(command, "txtAction", Qt::Key_Return); // as in any script field
        Click(command, "butOK");
    });
    PressKey(form, "lstCommands", Qt::Key_Return);
    SelectRow(form, "lstCommands", 0);
    WhenOpen<frmEditCommand>(confirm);
    Click(form, "butEdit");
    WhenOpen<frmEditCommand>([](frmEditCommand& command) {
        TypeText(command, "txtCommand", " cancelled");
        QTest::keyClick(&command, Qt::Key_Escape);
    });
    Click(form, "butEdit");
    EXPECT_EQ(form.Commands(), (Pairs{{take, "msg <t>"}, {"look round", ""}, {"", ""}}));
    for (int k = 0; k < 4; ++k)
        Click(form, "butRemove"); // the next one is selected each time
    EXPECT_TRUE(form.Commands().empty());
    Click(form, "butOK");
    EXPECT_TRUE(door.changes.empty()) << "the caller takes the list, not this window";
}

} // namespace
} // namespace zem::test
