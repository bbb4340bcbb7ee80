#include "base/LineText.h"
#include "forms/ToolTip.h"
#include "script/ShowFormattedText.h"
#include "script/frmConditional.h"
#include "script/frmEditCommand.h"
#include "script/frmScriptEditor.h"
#include "script/frmScriptLines.h"
#include "support/Cases.h"
#include "support/Games.h"
#include "support/ScriptFixture.h"
#include "support/WhenOpen.h"

#include <QTextEdit>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

using ScriptForms = ScriptFixture;

QTextCharFormat FormatAt(const QTextEdit& box, int position) {
    QTextCursor cursor(box.document());
    cursor.setPosition(position + 1);
    return cursor.charFormat();
}

// ---- One line

TEST_F(ScriptForms, GiveALineBackAsItWasOpened) {
    for (const bool isFriendly : {true, false}) {
        friendly = isFriendly;
        for (const std::string line :
             {"msg <Hello.>", "flag on <x>", "lose all <>", "MSG <capitals are another command>",
              "jump <high>", "jump", "msg <a> b", "msg <open", "set <a; b>", " msg <x> ", "win"}) {
            const auto form = Open<frmScriptEditor>(line);
            Click(*form, "butOK");
            EXPECT_EQ(form->result(), QDialog::Accepted);
            // Without the blanks around it, and with empty brackets for a command without parameter.
            EXPECT_EQ(form->Line(), line == "win" ? "win <>" : std::string(Trim(line)));
        }
    }
}

TEST_F(ScriptForms, OpenUnknownCommandsOnTheOtherEntry) {
    for (const bool hasParameter : {true, false}) {
        const auto form = Open<frmScriptEditor>(hasParameter ? "jump <high>" : "jump");
        EXPECT_EQ(TextOf(*form, "cmbCommands") + ' ' + TextOf(*form, "txtOther"), "(other) jump");
        EXPECT_EQ(IsEnabled(*form, "txtParameter"), hasParameter);
        PressKey(*form, "chkNoParameter", Qt::Key_Space);
        EXPECT_EQ(IsEnabled(*form, "txtParameter"), !hasParameter);
    }
}

TEST_F(ScriptForms, AskForACommand) {
    const auto form = Open<frmScriptEditor>("");
    dialogs.Message("ZEM: No command has been selected.");
    Click(*form, "butOK");
    // Letter by letter, through texts that are no command.
    TypeText(*form, "cmbFriendly", "Print a message");
    TypeText(*form, "txtParameter", "Hi");
    EXPECT_EQ(TextOf(*form, "txtSyntax"), "The text to print");
    Click(*form, "butClear");
    dialogs.Message("ZEM: No command has been selected.");
    Click(*form, "butOK");
    TypeText(*form, "cmbFriendly", "print a message");
    PressKey(*form, "cmbFriendly", Qt::Key_Backspace);
    TypeText(*form, "cmbFriendly", "e");
    TypeText(*form, "txtParameter", "Ho");
    Click(*form, "butOK");
    EXPECT_EQ(form->Line(), "msg <Ho>");
}

TEST_F(ScriptForms, OfferTheCommandsThatContainWhatIsTypedAndDropAParameterThatIsNotTaken) {
    const auto form = Open<frmScriptEditor>("msg <Hi>");
    Find<QComboBox>(*form, "cmbFriendly").lineEdit()->selectAll();
    TypeText(*form, "cmbFriendly", "wins");
    EXPECT_EQ(TextOf(*form, "cmbFriendly"), "wins");
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Return}) {
        ASSERT_NE(QApplication::activePopupWidget(), nullptr);
        QTest::keyClick(QApplication::activePopupWidget(), key);
    }
    EXPECT_FALSE(IsEnabled(*form, "txtParameter"));
    EXPECT_EQ(TextOf(*form, "txtSyntax"), "There are no parameters for this command.");
    Click(*form, "butOK");
    EXPECT_EQ(form->Line(), "win <>");
}

TEST_F(ScriptForms, ChooseByTheKeywordWhereScriptsAreShownRaw) {
    friendly = false;
    const auto form = Open<frmScriptEditor>("msg <Hi>");
    auto& chooser = Find<QComboBox>(*form, "cmbCommands");
    ASSERT_TRUE(chooser.isVisible());
    chooser.setCurrentIndex(chooser.findText("win"));
    EXPECT_EQ(TextOf(*form, "txtSyntax"), "Function takes no parameters.");
    Click(*form, "butOK");
    EXPECT_EQ(form->Line(), "win <>");
}

/// Chooses the entry of the list of matches that is open.
void ChooseMatch(int row) {
    QWidget* matches = QApplication::activePopupWidget();
    ASSERT_NE(matches, nullptr);
    for (int down = 0; down <= row; ++down)
        QTest::keyClick(matches, Qt::Key_Down);
    QTest::keyClick(matches, Qt::Key_Return);
}

TEST_F(ScriptForms, TellApartWhatReadsAlike) {
    CommandCatalogue catalogue = ShippedCatalogue();
    for (int k = 1; k <= catalogue.Count(); ++k)
        for (const auto& [keyword, name] :
             {std::pair("say", "Print a message"), {"if flag", "the player has an item"}})
            if (catalogue[k].Keyword == keyword)
                catalogue.Edit(k).FriendlyName = name;
    const CommandLookup twins(catalogue);
    ScriptEditing alike(door, edits, dialogs, shell, twins, [] { return true; });
    const EditorContext twinContext{door, edits, dialogs, shell, alike};
    for (const bool byTyping : {false, true}) {
        frmScriptEditor line(twinContext, "");
        line.show();
        auto& names = Find<QComboBox>(line, "cmbFriendly");
        if (byTyping) {
            TypeText(line, "cmbFriendly", "print a mess");
            ChooseMatch(1);
        } else {
            names.setCurrentIndex(0);
            names.setCurrentIndex(1);
        }
        Click(line, "butOK");
        EXPECT_EQ(line.Line(), "say <>");

        frmConditional condition(twinContext, "if has <x> then win");
        condition.show();
        auto& conditions = Find<QComboBox>(condition, "cmbCondition");
        conditions.lineEdit()->selectAll();
        if (byTyping) {
            TypeText(condition, "cmbCondition", "AN ITEM");
            EXPECT_EQ(conditions.currentText(), "AN ITEM") << "what is typed stays as typed";
            ChooseMatch(1);
        } else {
            conditions.setCurrentIndex(conditions.findData("flag"));
        }
        EXPECT_EQ(TextOf(condition, "txtRaw"), "if flag <x> then win");
    }
}

TEST_F(ScriptForms, OfferTheNamesOfTheGameForThePartAtTheCaret) {
    game = LoadBytes(CrLf("define game <x>\nend define\n"
                          "define room <Hall>\nscript if flag <seen> and more <turns; 9> then set <zeal; 1>\n"
                          "define object <lamp>\nend define\nend define\n"
                          "define room <Attic>\nscript set <mood; 1>\nend define\n"));
    const auto offered = [](const frmScriptEditor& editor, int caret) {
        Find<QLineEdit>(editor, "txtParameter").setCursorPosition(caret);
        const auto& chooser = Find<QComboBox>(editor, "cmbNames");
        QStringList texts;
        for (int row = 0; row < chooser.count(); ++row)
            texts.append(chooser.itemText(row));
        return chooser.isVisible() ? texts.join(u',') : "nothing";
    };
    const auto form = Open<frmScriptEditor>("move object <lamp; Cellar>");
    EXPECT_EQ(offered(*form, 2), "lamp");
    EXPECT_EQ(offered(*form, 8), "Hall,Attic");
    emit Find<QComboBox>(*form, "cmbNames").textActivated("Attic");
    TypeText(*form, "txtParameter", " 2"); // A name that was picked can be typed on.
    Click(*form, "butOK");
    EXPECT_EQ(form->Line(), "move object <lamp; Attic 2>");
    EXPECT_EQ(offered(*Open<frmScriptEditor>("add <x; 1>"), 0), "mood,turns,zeal");
    EXPECT_EQ(offered(*Open<frmScriptEditor>("msg <x>"), 0), "nothing");
}

TEST_F(ScriptForms, LettersInTheClosedListOfNamesChooseOneNameAndStayThere) {
    game = LoadBytes(CrLf("define game <x>\nitems <coin; iron key; rope>\nend define\n"));
    const auto form = Open<frmScriptEditor>("give <x>");
    auto& names = Find<QComboBox>(*form, "cmbNames");
    names.setFocus();
    for (const char letter : {'i', 'r', 'o', 'n'})
        QTest::keyClick(form->focusWidget(), letter);
    EXPECT_EQ(TextOf(*form, "txtParameter"), "iron key");
    EXPECT_EQ(form->focusWidget(), &names);
    QTest::keyClick(&names, Qt::Key_Down);
    EXPECT_EQ(TextOf(*form, "txtParameter"), "rope");
    names.showPopup();
    QTest::keyClick(names.view(), Qt::Key_Up);
    QTest::keyClick(names.view(), Qt::Key_Return);
    EXPECT_EQ(TextOf(*form, "txtParameter"), "iron key");
    EXPECT_EQ(form->focusWidget()->objectName(), "txtParameter")
        << "chosen from the list: it can be typed on";
}

TEST_F(ScriptForms, AnArrowKeyOpensTheCommandsAndTakesNoneInPlaceOfTheTypedOne) {
    const auto form = Open<frmScriptEditor>("msg <Hi>");
    auto& box = Find<QComboBox>(*form, "cmbFriendly");
    box.lineEdit()->selectAll();
    TypeText(*form, "cmbFriendly", "Clear the screen");
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up}) {
        PressKey(*form, "cmbFriendly", key);
        EXPECT_TRUE(box.view()->isVisible());
        EXPECT_EQ(box.currentText(), "Clear the screen");
        box.hidePopup();
    }
    Click(*form, "butOK");
    EXPECT_EQ(form->Line(), "clear <>");
}

// ---- Several lines

TEST_F(ScriptForms, MakeAProcedureOfTwoLines) {
    game.NextInternalProcedure = 7;
    const auto form = Open<frmScriptLines>("msg <a>");
    EXPECT_EQ(Rows(*form, "lstFriendlyLines"), QStringList{"Print \"a\""});
    EXPECT_EQ(Find<QListWidget>(*form, "lstFriendlyLines").item(0)->toolTip(), ToolTipOf("msg <a>"));
    WhenOpen<frmScriptEditor>([](frmScriptEditor& line) {
        TypeText(line, "cmbFriendly", "Clear the screen");
        Click(line, "butOK");
    });
    PressKey(*form, "lstFriendlyLines", Qt::Key_Insert);
    EXPECT_EQ(SelectedRow(*form, "lstFriendlyLines"), 1);
    PressKey(*form, "lstFriendlyLines", Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(SelectedRow(*form, "lstFriendlyLines"), 0) << "the selection follows the line";
    EXPECT_EQ(Rows(*form, "lstScriptLines"), (QStringList{"clear <>", "msg <a>"}));
    Click(*form, "butOK");
    EXPECT_EQ(form->Value(), "do <~Internal Procedure 7>");
    ASSERT_EQ(game.Procedures.Count(), 1);
    EXPECT_EQ(game.Procedures[1], (Procedure{"~Internal Procedure 7", "clear <>\r\nmsg <a>"}));
    EXPECT_EQ(game.NextInternalProcedure, 8);

    game.NextInternalProcedure = 32767;
    const auto last = Open<frmScriptLines>("msg <a>\r\nmsg <b>");
    dialogs.Message("ZEM: The command was not carried out: the numbers of internal procedures end at "
                    "32,767.");
    Click(*last, "butOK");
    EXPECT_TRUE(last->isVisible());
    EXPECT_EQ(game.Procedures.Count(), 1);
    PressKey(*last, "lstFriendlyLines", Qt::Key_Delete);
    Click(*last, "butOK");
    EXPECT_EQ(last->Value(), "msg <b>") << "one line needs none";
}

TEST_F(ScriptForms, EditTheInternalProcedureThatIsCalled) {
    game.Procedures.Append({"~Internal Procedure 1", "msg <a>\r\n\r\nmsg <b>\r\n\r\n  \r\n"});
    const auto form =
        Open<frmScriptLines>("do <~INTERNAL procedure 1>"); // A call is found whatever its capitals.
    EXPECT_EQ(Rows(*form, "lstFriendlyLines"), (QStringList{"Print \"a\"", "", "Print \"b\""}))
        << "empty lines inside stay";
    for (int lines = 0; lines < 2; ++lines) {
        SelectRow(*form, "lstFriendlyLines", 1);
        Click(*form, "butRemove");
    }
    Click(*form, "butOK");
    EXPECT_EQ(form->Value(), "do <~Internal Procedure 1>") << "the call stays, even for one line";
    EXPECT_EQ(game.Procedures[1].Script, "msg <a>");
    EXPECT_EQ(Rows(*Open<frmScriptLines>("do <~nothing>"), "lstScriptLines"), QStringList{"do <~nothing>"});
}

TEST_F(ScriptForms, OpenEachLineInItsEditorAndLeaveTheModelAloneOnCancel) {
    game.Procedures.Append({"~Internal Procedure 1", "if has <x> then win\r\nmsg <a>"});
    const GameModel before = game;
    WhenOpen<frmScriptLines>([](frmScriptLines& form) {
        SelectRow(form, "lstFriendlyLines", 0);
        WhenOpen<frmConditional>(
            [](frmConditional& line) { EXPECT_EQ(TextOf(line, "txtRaw"), "if has <x> then win"); });
        PressKey(form, "lstFriendlyLines", Qt::Key_Return);
        SelectRow(form, "lstFriendlyLines", 1);
        WhenOpen<frmScriptEditor>([](frmScriptEditor& line) {
            SetText(line, "txtParameter", "b");
            Click(line, "butOK");
        });
        Click(form, "butEdit");
        EXPECT_EQ(Rows(form, "lstFriendlyLines").constLast(), "Print \"b\"");
        Click(form, "butCancel");
    });
    std::string script = "do <~Internal Procedure 1>";
    EXPECT_FALSE(scripts.EditScript(nullptr, script));
    EXPECT_EQ(script, "do <~Internal Procedure 1>");
    EXPECT_EQ(game, before);
}

// One bad line must never close an editor: it is shown as it stands, and comes back unchanged.
TEST_F(ScriptForms, ShowWhateverAScriptHoldsAndGiveItBack) {
    const std::string endless = "msg <" + std::string(1'000'000, 'x') + ">";
    for (const std::string script : {"msg", "msg > <", "a|", "|||x|s1", "> <", "if if if", "do <~",
                                     "unheard-of <thing>", "\x80\x81\xFF", endless.c_str()}) {
        const auto form = Open<frmScriptLines>(script);
        const QStringList shown = Rows(*form, "lstFriendlyLines");
        EXPECT_TRUE(shown.size() == 1 && !shown[0].isEmpty()) << script.substr(0, 40);
        Click(*form, "butOK");
        EXPECT_EQ(form->Value(), script);
    }
}

// ---- Conditions

TEST_F(ScriptForms, BuildAConditionalLineFromItsParts) {
    const auto form = Open<frmConditional>("");
    EXPECT_EQ(TextOf(*form, "lblProblem"),
              "Not complete: no line can be made of this: there is no command after \"then\".");
    TypeText(*form, "txtConditionParameter", "iron key");
    Click(*form, "butAddCondition");
    auto& chooser = Find<QComboBox>(*form, "cmbCondition");
    chooser.lineEdit()->selectAll();
    QTest::keyClicks(&chooser, "the player is in a room"); // Blanks must stay while one types.
    TypeText(*form, "txtConditionParameter", "Quay");
    PressKey(*form, "chkNot", Qt::Key_Space);
    Find<QComboBox>(*form, "cmbJoiner").setCurrentIndex(1);
    WhenOpen<frmScriptLines>([](frmScriptLines& script) {
        WhenOpen<frmScriptEditor>([](frmScriptEditor& line) {
            TypeText(line, "cmbFriendly", "Print a message");
            TypeText(line, "txtParameter", "Here.");
            Click(line, "butOK");
        });
        Click(script, "butAdd");
        Click(script, "butOK");
    });
    Click(*form, "butThen");
    EXPECT_EQ(Rows(*form, "blkWhole"),
              (QStringList{"If the player has \"iron key\" or it is not so that the player is in \"Quay\":",
                           "   Print \"Here.\""}));
    Click(*form, "butConditionUp");
    PressKey(*form, "chkElse", Qt::Key_Space);
    WhenOpen<frmConditional>([](frmConditional& inner) {
        SetText(inner, "txtRaw", "if flag <x> then win");
        Click(inner, "butOK");
    });
    Click(*form, "butElseIf");
    WhenOpen<frmScriptLines>([](frmScriptLines& script) {
        EXPECT_EQ(Rows(script, "lstScriptLines"), QStringList{"if flag <x> then win"});
    });
    Click(*form, "butElse");
    Click(*form, "butOK");
    EXPECT_EQ(form->Line(), "if not in <Quay> and has <iron key> then msg <Here.> else if flag <x> then win");
}

TEST_F(ScriptForms, GiveAnUntouchedConditionalLineBackByteForByte) {
    for (const std::string line :
         {"IF  has <x>  then msg <a>   ELSE die", "if nonsense", "if has <x then y"}) {
        const auto form = Open<frmConditional>(line);
        EXPECT_EQ(IsEnabled(*form, "fraParts"), line.starts_with("IF"));
        EXPECT_EQ(TextOf(*form, "lblProblem").empty(), line.starts_with("IF"));
        Click(*form, "butOK");
        EXPECT_EQ(form->Line(), line) << "what is not understood is kept all the same";
    }
}

TEST_F(ScriptForms, FollowTheRawLineAndTellWhyTheyCannot) {
    const auto form = Open<frmConditional>("if has <x> then win");
    SetText(*form, "txtRaw", "if has <x> win");
    EXPECT_FALSE(IsEnabled(*form, "fraParts"));
    EXPECT_EQ(TextOf(*form, "lblProblem"),
              "The parts cannot be shown: after a condition comes \"and\", \"or\" or \"then\". The line is "
              "kept as you write it.");
    SetText(*form, "txtRaw", "if strange <y> and empty handed then win else die");
    EXPECT_EQ(Rows(*form, "lstConditions"), (QStringList{"strange <y>", "and the player has no items"}));
    PressKey(*form, "chkElse", Qt::Key_Space);
    SelectRow(*form, "lstConditions", 0);
    SetText(*form, "cmbCondition", " very  strange ");
    EXPECT_EQ(TextOf(*form, "txtRaw"), "if very strange <y> and empty handed then win");
    PressKey(*form, "lstConditions", Qt::Key_Delete);
    EXPECT_EQ(TextOf(*form, "txtRaw"), "if empty handed then win");
    EXPECT_FALSE(IsEnabled(*form, "txtConditionParameter"));
    // Parts of which no line can be made are not taken for one, but any line that is typed is.
    Click(*form, "butRemoveCondition");
    dialogs.Message("ZEM: The line is not complete: no line can be made of this: a condition is missing.");
    Click(*form, "butOK");
    EXPECT_TRUE(form->isVisible());
    SetText(*form, "txtRaw", "if nonsense");
    Click(*form, "butOK");
    EXPECT_EQ(form->Line(), "if nonsense");
}

// ---- Previews and player commands

TEST_F(ScriptForms, PaintCodesIntoTheBoxOnLightAndDark) {
    for (const bool isDark : {false, true}) {
        QTextEdit box;
        QPalette palette = box.palette();
        palette.setColor(QPalette::Base, isDark ? Qt::black : Qt::white);
        palette.setColor(QPalette::Text, isDark ? Qt::white : Qt::black);
        box.setPalette(palette);
        ShowFormattedText("a|bb|cyc|xb\r\n|cbd|ne", box);
        EXPECT_EQ(box.toPlainText(), "abc\ndne");
        EXPECT_EQ(FormatAt(box, 0).fontWeight(), static_cast<int>(QFont::Normal));
        EXPECT_EQ(FormatAt(box, 1).fontWeight(), static_cast<int>(QFont::Bold));
        const int yellow = FormatAt(box, 2).foreground().color().lightness();
        EXPECT_GT(std::abs(yellow - palette.color(QPalette::Base).lightness()), 100) << "legible";
        EXPECT_EQ(FormatAt(box, 4).foreground().color(), palette.color(QPalette::Text))
            << "black is the text's own colour";
    }
}

TEST_F(ScriptForms, ShowAPlayerCommandAndInsertAVariable) {
    const QString question =
        "Insert string variable: Enter a name for the string variable to place text in: []";
    for (const auto& [start, length, answer, result, caret] :
         Cases<int, int, std::optional<QString>, const char*, int>{{7, 0, "thing", "take it#thing#", 14},
                                                                   {5, 2, "obj", "take #obj#", 10},
                                                                   {5, 0, "x", "take #x#it", 8},
                                                                   {4, 0, std::nullopt, "take it", 4}}) {
        frmEditCommand form(context, "take it", "msg <x>\r\nwin <>");
        form.show();
        const auto& action = Find<QTextEdit>(form, "txtAction");
        EXPECT_EQ(action.toPlainText(), "Print \"x\";\nThe player wins");
        // The semicolon is red, and what follows it is not.
        EXPECT_NE(FormatAt(action, 0).foreground(), FormatAt(action, 9).foreground());
        EXPECT_EQ(FormatAt(action, 0).foreground(), FormatAt(action, 11).foreground());
        auto& box = Find<QLineEdit>(form, "txtCommand");
        box.setCursorPosition(start);
        if (length > 0)
            box.setSelection(start, length);
        dialogs.Text(question, answer);
        Click(form, "butInsertVariable");
        EXPECT_EQ(form.Pattern(), result);
        EXPECT_EQ(box.cursorPosition(), caret);
    }
}

} // namespace
} // namespace zem::test
