#include "editors/frmEditErrors.h"
#include "editors/frmMenuList.h"
#include "editors/frmPlayerCommandEditor.h"
#include "editors/frmRoomProperties.h"
#include "editors/frmSelectionWindow.h"
#include "script/frmEditCommand.h"
#include "support/Cases.h"
#include "support/EditorGame.h"
#include "support/RunningProgram.h"
#include "support/ScriptFixture.h"
#include "support/ScriptForms.h"
#include "windows/frmOrbMsgBox.h"

#include <QInputDialog>

#include <functional>
#include <gtest/gtest.h>
#include <optional>

namespace zem::test {
namespace {

TEST(OrbMsgBox, AnswersByButtonKeyAndCloseBox) {
    using Act = std::function<void(frmOrbMsgBox&)>;
    const auto click = [](const char* button) { return [button](frmOrbMsgBox& box) { Click(box, button); }; };
    const auto press = [](Qt::Key key) { return [key](frmOrbMsgBox& box) { PressKey(box, "butOK", key); }; };
    const Act close = [](frmOrbMsgBox& box) { box.close(); };
    const std::optional<MessageResult> staysOpen;
    using Buttons = MessageButtons;
    using Result = MessageResult;
    for (const auto& [buttons, act, result] : Cases<Buttons, Act, std::optional<Result>>{
             {Buttons::Ok, click("butOK"), Result::Ok},
             {Buttons::Ok, press(Qt::Key_Y), Result::Ok},
             {Buttons::Ok, press(Qt::Key_N), staysOpen},
             {Buttons::Ok, close, Result::Ok},
             {Buttons::OkCancel, click("butCancel"), Result::Cancel},
             {Buttons::OkCancel, close, Result::Cancel},
             {Buttons::OkCancel, press(Qt::Key_Escape), staysOpen},
             {Buttons::YesNo, click("butOK"), Result::Yes},
             {Buttons::YesNo, press(Qt::Key_N), Result::No},
             {Buttons::YesNo, close, Result::No},
         }) {
        frmOrbMsgBox box("one\r\ntwo", buttons);
        EXPECT_EQ(TextOf(box, "lblMsg"), "one\ntwo");
        EXPECT_EQ(TextOf(box, "butOK"), buttons == Buttons::YesNo ? "&Yes" : "OK");
        box.show();
        act(box);
        EXPECT_EQ(box.isVisible(), !result.has_value());
        if (result) {
            EXPECT_EQ(box.Result(), *result);
        }
    }
}

TEST(QtDialogs, AskThePlatform) {
    QtDialogs dialogs;
    WhenOpen<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.text(), "<b>\nline");
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        QTest::mouseClick(box.button(QMessageBox::No), Qt::LeftButton);
    });
    EXPECT_EQ(dialogs.ShowMessageBox(nullptr, "<b>\r\nline", "Title", QMessageBox::Yes | QMessageBox::No,
                                     QMessageBox::NoIcon),
              QMessageBox::No);
    for (const auto& [key, answer] :
         {std::pair(Qt::Key_Return, std::optional<QString>("Hall")), {Qt::Key_Escape, std::nullopt}}) {
        WhenOpen<QInputDialog>([end = key](QInputDialog& box) {
            EXPECT_EQ(box.labelText(), "Prompt:");
            QTest::keyClicks(box.findChild<QLineEdit*>(),
                             "Hall"); // Replaces the offered text, which is selected.
            QTest::keyClick(&box, end);
        });
        EXPECT_EQ(dialogs.AskText(nullptr, "Prompt:", {}, "Enter a name here..."), answer);
    }
    const TempFolder folder;
    EXPECT_EQ(dialogs.OpenDocument({}), 2);
    EXPECT_EQ(dialogs.OpenDocument(PathToQt(folder.Path("missing.kel"))), 2);
    EXPECT_EQ(dialogs.OpenDocument(PathToQt(folder.Path("no folder/game.kel"))), 3);
}

using EditErrors = ScriptFixture;

TEST_F(EditErrors, KeepsTheTextsWhileMovingThroughTheList) {
    Table<ErrorMessage> errors;
    errors.Append({"No such command", "badcommand", ""});
    errors.Append({"No such way", "badgo", "Not there."});
    frmEditErrors form(context, errors, true);
    form.show();
    EXPECT_EQ(Rows(form, "lstErrors"), (QStringList{"No such command", "No such way"}));
    EXPECT_FALSE(IsEnabled(form, "txtError"));
    SelectRow(form, "lstErrors", 0);
    TypeText(form, "txtError", "What?");
    SelectRow(form, "lstErrors", 1);
    EXPECT_EQ(TextOf(form, "txtError"), "Not there.");
    SetText(form, "txtError", "");
    SelectRow(form, "lstErrors", 0);
    EXPECT_EQ(TextOf(form, "txtError"), "What?");
    Click(form, "butOK");
    errors.Edit(1).GameText = "What?";
    errors.Edit(2).GameText = "";
    EXPECT_EQ(form.Errors(), errors);

    // Without friendly script, the names are listed; OK needs no selection.
    frmEditErrors names(context, errors, false);
    EXPECT_EQ(Rows(names, "lstErrors"), (QStringList{"badcommand", "badgo"}));
    Click(names, "butOK");
    EXPECT_EQ(names.Errors(), errors);
}

TEST(WhatsThis, TellsAboutTheControlWithTheFocus) {
    RunningProgram p(EditorGame());
    const auto isTold = [](const QWidget& form, const char* control) {
        Find<QWidget>(form, control).setFocus();
        PressKey(form, control, Qt::Key_F1, Qt::ShiftModifier);
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->inherits("QWhatsThat") && window->isVisible())
                return window->close();
        return false;
    };
    p.Select("lstRooms", 0);
    p.Open<frmRoomProperties>("butEditRoom", [&](frmRoomProperties& form) {
        EXPECT_TRUE(isTold(form, "txtRoomAlias"));
        EXPECT_TRUE(isTold(form, "txtDescription"));
        EXPECT_FALSE(isTold(form, "butDetails"));
    });
    EXPECT_TRUE(isTold(*p.Main(), "lstObjects"));
}

// ---- Menus and player commands

using MenuForms = ScriptFixture;
using Pairs = std::vector<ScriptPair>;

TEST_F(MenuForms, EditMenusAndAlwaysMarkTheGame) {
    game.SelectionMenus.Append({"shop", "Buy?", {}})
        .Choices.Assign(Pairs{{"bread", "msg <b>"}, {"wine", "msg <w>"}, {"nothing", ""}});
    frmMenuList menus(context);
    menus.show();
    Click(menus, "butEdit"); // Does nothing without a selected row.
    dialogs.Text("Add menu: Please enter a name for this menu []", {});
    Click(menus, "butAdd");
    EXPECT_FALSE(game.Modified);
    SelectRow(menus, "lstMenus", 0);
    WhenOpen<frmSelectionWindow>([this](frmSelectionWindow& form) {
        SetText(form, "txtInfo", "What?");
        SelectRow(form, "lstMenu", 0);
        PressKey(form, "lstMenu", Qt::Key_Up, Qt::ControlModifier); // Does nothing at the top.
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
        Click(form, "butCancel");
    });
    PressKey(menus, "lstMenus", Qt::Key_Insert);
    EXPECT_EQ(game.SelectionMenus[2], (SelectionMenu{"inn", "", {}})) << "it stays though it is cancelled";
    EXPECT_EQ(SelectedRow(menus, "lstMenus"), 1);
    SelectRow(menus, "lstMenus", 0);
    Click(menus, "butRemove");
    EXPECT_EQ(game.SelectionMenus[1].Name, "inn");
    EXPECT_EQ(door.changes, 3) << "edited, added, removed";
    game.Modified = false;
    Click(menus, "butOK");
    EXPECT_TRUE(game.Modified) << "also when nothing was changed";
    EXPECT_FALSE(menus.isVisible());
}

TEST_F(MenuForms, EditPlayerCommandsInAListOfTheirOwn) {
    const std::string take =
        "take " + std::string(40000, 'x'); // Longer than the default limit of a line edit.
    frmPlayerCommandEditor form(context, {{"look", "msg <l>"}, {take, "msg <t>"}});
    form.show();
    const auto confirm = [](frmEditCommand& command) { Click(command, "butOK"); };
    WhenOpen<frmEditCommand>(confirm);
    Click(form, "butAdd"); // Accepts an empty pattern.
    SelectRow(form, "lstCommands", 0);
    PressKey(form, "lstCommands", Qt::Key_Down, Qt::ControlModifier);
    WhenOpen<frmEditCommand>([](frmEditCommand& command) {
        PressKey(command, "txtCommand", Qt::Key_End);
        TypeText(command, "txtCommand", " round");
        CutNextScript();
        PressKey(command, "txtAction", Qt::Key_Return); // Opens the script editor.
        Click(command, "butOK");
    });
    PressKey(form, "lstCommands", Qt::Key_Return);
    SelectRow(form, "lstCommands", 0);
    WhenOpen<frmEditCommand>(confirm);
    Click(form, "butEdit");
    WhenOpen<frmEditCommand>([](frmEditCommand& command) {
        TypeText(command, "txtCommand", " cancelled");
        Click(command, "butCancel");
    });
    Click(form, "butEdit");
    EXPECT_EQ(form.Commands(), (Pairs{{take, "msg <t>"}, {"look round", ""}, {"", ""}}));
    for (int k = 0; k < 4; ++k)
        Click(form, "butRemove"); // Selects the next one each time.
    EXPECT_TRUE(form.Commands().empty());
    Click(form, "butOK");
    EXPECT_EQ(door.changes, 0) << "the caller takes the list, not this window";
}

} // namespace
} // namespace zem::test
