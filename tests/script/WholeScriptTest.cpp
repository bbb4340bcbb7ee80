// Whole scripts where they stand: branches of several commands, the block that shows them, typed lines.
#include "editors/frmThingProperties.h"
#include "script/LineBox.h"
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
#include <QTextEdit>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

class WholeScripts : public ScriptFixture {
protected:
    /// Types a line and Return.
    static void TypeLine(const QWidget& form, const char* box, const QString& text) {
        TypeText(form, box, text);
        PressKey(form, box, Qt::Key_Return);
    }

    static void SelectBlockRow(const QWidget& form, int row) {
        auto& block = Find<ScriptBlock>(form, "blkWhole");
        block.setCurrentIndex(block.model()->index(row, 0));
    }

    std::vector<std::string> Bodies() const {
        std::vector<std::string> bodies;
        for (const Procedure& procedure : game.Procedures)
            bodies.push_back(procedure.Script);
        return bodies;
    }
};

/// A window used by keys and clicks that are counted; typed text is free.
class Counted {
public:
    explicit Counted(QDialog& form) : form_(form) {}

    Counted& Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(form_.focusWidget(), key, modifiers);
        ++count;
        return *this;
    }
    Counted& Type(const QString& text) {
        QTest::keyClicks(form_.focusWidget(), text);
        return *this;
    }

    int count = 0;

private:
    QDialog& form_;
};

// ---- Branches

TEST_F(WholeScripts, AnIfWithTwoCommandsInEachBranchIsBuiltInOneWindowByTwelveKeysAtMost) {
    game.NextInternalProcedure = 4;
    std::string line;
    WhenOpen<frmConditional>([](frmConditional& form) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(&form)); // Alt and a letter go to the active window.
        Counted keys(form);
        keys.Type("the player has an item").Key(Qt::Key_Tab).Type("iron key");
        keys.Key(Qt::Key_Y, Qt::AltModifier).Type("print You turn the key.").Key(Qt::Key_Return);
        keys.Type("goto Hall").Key(Qt::Key_Return);
        keys.Key(Qt::Key_O, Qt::AltModifier);
        QTRY_VERIFY(
            IsEnabled(form, "txtElseLine")); // A button pressed by its letter stays down for a moment.
        keys.Type("say Locked!").Key(Qt::Key_Return);
        keys.Type("flag on tried").Key(Qt::Key_Return);
        EXPECT_EQ(
            Rows(form, "blkWhole").join(u'/').toStdString(),
            "If the player has \"iron key\":/   Print \"You turn the key.\"/   Move the player to \"Hall\"/"
            "Otherwise:/   Say \"Locked!\"/   Set the flag \"tried\"");
        keys.Key(Qt::Key_Return);
        EXPECT_FALSE(form.isVisible());
        EXPECT_LE(keys.count, 12);
    });
    ASSERT_TRUE(scripts.EditConditional(nullptr, line));
    EXPECT_EQ(line, "if has <iron key> then do <~Internal Procedure 4> else do <~Internal Procedure 5>");
    EXPECT_EQ(Bodies(), (std::vector<std::string>{"msg <You turn the key.>\r\ngoto <Hall>",
                                                  "say <Locked!>\r\nflag on <tried>"}));
    EXPECT_EQ(game.NextInternalProcedure, 6);
}

TEST_F(WholeScripts, CancelTakesBackWhatTheBranchesBecame) {
    game.NextInternalProcedure = 4;
    game.Procedures.Append({"~Internal Procedure 1", "msg <a>\r\nmsg <b>"});
    const GameModel before = game;
    const std::string old = "if has <x> then do <~Internal Procedure 1>";
    const auto change = [](frmConditional& form) {
        TypeLine(form, "txtThenLine", "msg c");
        Click(form, "chkElse");
        TypeLine(form, "txtElseLine", "win");
        TypeLine(form, "txtElseLine", "die");
    };
    // Cancelled in the window itself, and in the one around it.
    for (const bool inner : {true, false}) {
        std::string script = old;
        WhenOpen<frmScriptLines>([&](frmScriptLines& lines) {
            SelectRow(lines, "lstFriendlyLines", 0);
            WhenOpen<frmConditional>([&](frmConditional& form) {
                change(form);
                Click(form, inner ? "butCancel" : "butOK");
            });
            Click(lines, "butEdit");
            Click(lines, inner ? "butOK" : "butCancel");
        });
        EXPECT_EQ(scripts.EditScript(nullptr, script), inner);
        EXPECT_EQ(script, old);
        EXPECT_EQ(game.Procedures, before.Procedures);
        EXPECT_EQ(game.NextInternalProcedure, 4) << "the numbers are free again";
    }
}

TEST_F(WholeScripts, ThenOpensTheScriptAndKeepsOneCommandOnTheLine) {
    const auto form = Open<frmConditional>("if has <x> then win else die");
    WhenOpen<frmScriptLines>([](frmScriptLines& script) {
        SelectRow(script, "lstFriendlyLines", 0);
        Click(script, "butRemove");
        TypeLine(script, "txtLine", "print a message Yes");
        Click(script, "butOK");
    });
    Click(*form, "butThen");
    EXPECT_EQ(TextOf(*form, "txtRaw"), "if has <x> then msg <Yes> else die");
    // An "if" alone would take the "else" for itself, and gets a procedure.
    WhenOpen<frmConditional>([](frmConditional& inner) {
        SetText(inner, "txtRaw", "if flag <y> then back");
        Click(inner, "butOK");
    });
    Click(*form, "butThenIf");
    EXPECT_EQ(TextOf(*form, "txtRaw"), "if has <x> then do <~Internal Procedure 0> else die");
    EXPECT_EQ(Bodies(), std::vector<std::string>{"msg <Yes>\r\nif flag <y> then back"});
    EXPECT_EQ(TextOf(*form, "txtThen"),
              "Print \"Yes\"; If the flag \"y\" is set:; Move the player back to the room before");
}

// The block of the conditional window changes what it shows.
TEST_F(WholeScripts, TheBlockOfAConditionalIsEditedLineByLine) {
    game.Procedures.Append({"~Internal Procedure 1", "msg <a>\r\nmsg <b>"});
    const auto form = Open<frmConditional>("if has <x> then do <~Internal Procedure 1> else win");
    SelectBlockRow(*form, 2);
    PressKey(*form, "blkWhole", Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(game.Procedures[1].Script, "msg <b>\r\nmsg <a>");
    EXPECT_EQ(Find<ScriptBlock>(*form, "blkWhole").currentIndex().row(), 1)
        << "the selection goes with the line";
    PressKey(*form, "blkWhole", Qt::Key_Delete);
    EXPECT_EQ(Rows(*form, "blkWhole"), (QStringList{"If the player has \"x\":", "   Print \"a\"",
                                                    "Otherwise:", "   The player wins"}));
    SelectBlockRow(*form, 3);
    WhenOpen<frmScriptEditor>([](frmScriptEditor& line) {
        Find<QComboBox>(line, "cmbFriendly").setCurrentText("Restart");
        SetText(line, "cmbFriendly", "Start the game again");
        Click(line, "butOK");
    });
    PressKey(*form, "blkWhole", Qt::Key_Return);
    EXPECT_EQ(TextOf(*form, "txtRaw"), "if has <x> then do <~Internal Procedure 1> else restart <>");
    // The last line of a "then" on the line itself cannot go: it is told, and nothing changes.
    SetText(*form, "txtRaw", "if has <x> then win");
    SelectBlockRow(*form, 1);
    dialogs.Message("ZEM: The command was not carried out: no line can be made of this: there is no command "
                    "after \"then\".");
    PressKey(*form, "blkWhole", Qt::Key_Delete);
    EXPECT_EQ(TextOf(*form, "txtRaw"), "if has <x> then win");
}

// ---- The block beside a script

TEST_F(WholeScripts, StandBesideTheirFieldsWhereTheyHaveBranches) {
    game = LoadBytes(CrLf("define game <x>\nend define\ndefine procedure <ring>\nsound <bell>\nend define\n"
                          "define room <Hall>\ndefine object <lamp>\nlook <A lamp.>\n"
                          "take if has <oil> then {\ngive <lamp>\ndo <ring>\n} else msg <No.>\n"
                          "end define\nend define\n"));
    frmThingProperties form(context, ThingKind::Object, 1, 1);
    Click(form, "butActions");
    form.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
    EXPECT_EQ(TextOf(form, "lblWhere"), "Object lamp in Hall");
    EXPECT_FALSE(Find<ScriptBlock>(form, "blkDescription").isVisible()) << "the box says it all";
    auto& block = Find<ScriptBlock>(form, "blkInteract");
    EXPECT_TRUE(block.isVisible());
    EXPECT_EQ(Rows(form, "blkInteract"),
              (QStringList{"If the player has \"oil\":", "   Give the player \"lamp\"",
                           "   Run the procedure \"ring\"", "Otherwise:", "   Print \"No.\""}));
    EXPECT_TRUE(block.model()->index(2, 0).data(Qt::ToolTipRole).toString().contains("Play the sound"));
    block.setCurrentIndex(block.model()->index(2, 0));
    PressKey(form, "blkInteract", Qt::Key_Right);
    EXPECT_EQ(Rows(form, "blkInteract")[3], "      Play the sound \"bell\"");
    PressKey(form, "blkInteract", Qt::Key_Left);

    const auto edit = [&](bool isConfirmed) {
        WhenOpen<frmScriptEditor>([=](frmScriptEditor& line) {
            EXPECT_EQ(TextOf(line, "lblWhere"), "Object lamp in Hall \u203a take");
            SetText(line, "txtParameter", "torch");
            Click(line, isConfirmed ? "butOK" : "butCancel");
        });
        block.setCurrentIndex(block.model()->index(1, 0));
        const QPoint row = block.visualRect(block.currentIndex()).center();
        QTest::mouseClick(block.viewport(), Qt::LeftButton, {}, row);
        QTest::mouseDClick(block.viewport(), Qt::LeftButton, {}, row);
    };
    edit(true);
    EXPECT_EQ(Rows(form, "blkInteract")[1], "   Give the player \"torch\"");
    const int changes = door.changes;
    EXPECT_EQ(changes, 0) << "nothing is stored before OK";
    Click(form, "butOK");
    EXPECT_EQ(game.Procedures[2].Script, "give <torch>\r\ndo <ring>");
    EXPECT_EQ(game.Rooms[1].Objects[1].Take, "if has <oil> then do <~Internal Procedure 0> else msg <No.>");
}

// ---- Typed lines

TEST_F(WholeScripts, ATypedLineIsOfferedUnderstoodOrExplained) {
    game = LoadBytes(CrLf("define game <x>\nitems <iron key; iron ring>\nend define\n"));
    const auto form = Open<frmScriptLines>("win");
    SelectRow(*form, "lstFriendlyLines", 0);
    Find<LineBox>(*form, "txtLine").setFocus();
    // Half a command is finished by Return, its name chosen from the list.
    TypeText(*form, "txtLine", "item pla giv");
    PressKey(*form, "txtLine", Qt::Key_Return);
    EXPECT_EQ(TextOf(*form, "txtLine"), "Give the player an item ");
    TypeText(*form, "txtLine", "ri");
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Return})
        QTest::keyClick(QApplication::activePopupWidget(), key);
    EXPECT_EQ(TextOf(*form, "txtLine"), "Give the player an item iron ring");
    PressKey(*form, "txtLine", Qt::Key_Return);
    EXPECT_EQ(Rows(*form, "lstScriptLines"), (QStringList{"win", "give <iron ring>"}));
    TypeLine(*form, "txtLine", "utter nonsense");
    EXPECT_EQ(TextOf(*form, "txtLine"), "utter nonsense");
    EXPECT_EQ(TextOf(*form, "lblLineProblem"),
              "\"utter nonsense\" begins with no command. Type a word of one, "
              "such as \"print\" or \"move\".");
    SetText(*form, "txtLine", "");
    TypeLine(*form, "txtLine", "if the player has an item iron key then win else die");
    EXPECT_EQ(TextOf(*form, "lblLineProblem"), "");
    EXPECT_EQ(Rows(*form, "blkWhole").last(), "   The player loses");
    PressKey(*form, "txtLine", Qt::Key_Return);
    EXPECT_FALSE(form->isVisible()) << "Return in an empty box is OK";
    EXPECT_EQ(game.Procedures[1].Script, "win\r\ngive <iron ring>\r\nif has <iron key> then win else die");
}

} // namespace
} // namespace zem::test
