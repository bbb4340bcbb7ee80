#include "model/LineText.h"
#include "script/ShowFormattedText.h"
#include "script/frmConditional.h"
#include "script/frmEditCommand.h"
#include "script/frmScriptEditor.h"
#include "script/frmScriptLines.h"
#include "support/Cases.h"
#include "support/ScriptFixture.h"
#include "support/WhenOpen.h"

#include <QTextEdit>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

using ScriptForms = ScriptFixture;

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
    const auto parameter = Open<frmScriptEditor>("jump <high>");
    EXPECT_EQ(TextOf(*parameter, "cmbCommands"), "(other)");
    EXPECT_EQ(TextOf(*parameter, "txtOther"), "jump");
    EXPECT_FALSE(Find<QCheckBox>(*parameter, "chkNoParameter").isChecked());
    EXPECT_TRUE(IsEnabled(*parameter, "txtParameter"));
    const auto none = Open<frmScriptEditor>("jump");
    EXPECT_TRUE(Find<QCheckBox>(*none, "chkNoParameter").isChecked());
    EXPECT_FALSE(IsEnabled(*none, "txtParameter"));
    PressKey(*none, "chkNoParameter", Qt::Key_Space);
    EXPECT_TRUE(IsEnabled(*none, "txtParameter"));
}

TEST_F(ScriptForms, AskForACommand) {
    const auto form = Open<frmScriptEditor>("");
    EXPECT_EQ(Find<QComboBox>(*form, "cmbFriendly").currentIndex(), -1);
    dialogs.Message("ZEM: No command has been selected.");
    Click(*form, "butOK");
    EXPECT_TRUE(form->isVisible());
    // Letter by letter, through texts that are no command.
    TypeText(*form, "cmbFriendly", "Print a message");
    TypeText(*form, "txtParameter", "Hi");
    EXPECT_EQ(TextOf(*form, "txtSyntax"), "The text to print");
    Click(*form, "butClear");
    EXPECT_EQ(TextOf(*form, "txtParameter"), "");
    dialogs.Message("ZEM: No command has been selected.");
    Click(*form, "butOK");
    TypeText(*form, "cmbFriendly", "print a message");
    TypeText(*form, "txtParameter", "Ho");
    Click(*form, "butOK");
    EXPECT_EQ(form->Line(), "msg <Ho>");
}

TEST_F(ScriptForms, OfferTheCommandsThatContainWhatIsTyped) {
    const auto form = Open<frmScriptEditor>("");
    auto& chooser = Find<QComboBox>(*form, "cmbFriendly");
    QTest::keyClicks(&chooser, QStringLiteral("wins"));
    EXPECT_EQ(chooser.currentText(), QStringLiteral("wins"));
    QWidget* matches = QApplication::activePopupWidget();
    ASSERT_NE(matches, nullptr);
    QTest::keyClick(matches, Qt::Key_Down);
    QTest::keyClick(matches, Qt::Key_Return);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    Click(*form, "butOK");
    EXPECT_EQ(form->Line(), "win <>");
}

TEST_F(ScriptForms, EmptyAndDisableTheParameterOfACommandWithoutOne) {
    for (const bool isFriendly : {true, false}) {
        friendly = isFriendly;
        const auto form = Open<frmScriptEditor>("msg <Hi>");
        auto& chooser = Find<QComboBox>(*form, isFriendly ? "cmbFriendly" : "cmbCommands");
        ASSERT_TRUE(chooser.isVisible());
        chooser.setCurrentIndex(Find<QComboBox>(*form, "cmbCommands").findText("win"));
        EXPECT_FALSE(IsEnabled(*form, "txtParameter"));
        EXPECT_EQ(TextOf(*form, "txtSyntax"),
                  isFriendly ? "There are no parameters for this command." : "Function takes no parameters.");
        Click(*form, "butOK");
        EXPECT_EQ(form->Line(), "win <>");
    }
}

TEST_F(ScriptForms, OfferTheNamesOfTheGameForThePartAtTheCaret) {
    Room& room = game.Rooms.Append();
    room.Name = "Hall";
    room.Objects.Append().Name = "lamp";
    room.Script = "if flag <seen> and more <turns; 9> then set <mood; 1>";
    game.Rooms.Append().Name = "Attic";
    const auto form = Open<frmScriptEditor>("move object <lamp; Cellar>");
    auto& parameter = Find<QLineEdit>(*form, "txtParameter");
    auto& names = Find<QComboBox>(*form, "cmbNames");
    const auto offered = [](const frmScriptEditor& editor) {
        const auto& chooser = Find<QComboBox>(editor, "cmbNames");
        QStringList texts;
        for (int row = 0; row < chooser.count(); ++row)
            texts.append(chooser.itemText(row));
        return chooser.isVisible() ? texts.join(u',') : "nothing";
    };
    parameter.setCursorPosition(2);
    EXPECT_EQ(offered(*form), "lamp");
    parameter.setCursorPosition(8);
    EXPECT_EQ(offered(*form), "Hall,Attic");
    names.setCurrentIndex(1);
    emit names.textActivated("Attic");
    EXPECT_EQ(parameter.text(), "lamp; Attic");
    QTest::keyClicks(&parameter, " 2"); // anything may be typed
    Click(*form, "butOK");
    EXPECT_EQ(form->Line(), "move object <lamp; Attic 2>");

    const auto variables = Open<frmScriptEditor>("add <x; 1>");
    Find<QLineEdit>(*variables, "txtParameter").setCursorPosition(0);
    EXPECT_EQ(offered(*variables), "mood,turns");
    EXPECT_EQ(offered(*Open<frmScriptEditor>("msg <x>")), "nothing");
}

// ---- Several lines

TEST_F(ScriptForms, KeepOneLineAndMakeAProcedureOfTwo) {
    game.NextInternalProcedure = 7;
    const auto form = Open<frmScriptLines>("msg <a>");
    auto& list = Find<QListWidget>(*form, "lstFriendlyLines");
    EXPECT_EQ(Rows(*form, "lstFriendlyLines"), QStringList{"Print \"a\""});
    EXPECT_EQ(list.item(0)->toolTip(), "msg &lt;a&gt;");
    EXPECT_FALSE(Find<QListWidget>(*form, "lstScriptLines").isVisible());
    WhenOpen<frmScriptEditor>([](frmScriptEditor& line) {
        TypeText(line, "cmbFriendly", "Clear the screen");
        Click(line, "butOK");
    });
    QTest::keyClick(&list, Qt::Key_Insert);
    EXPECT_EQ(list.currentRow(), 1);
    QTest::keyClick(&list, Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(list.currentRow(), 0) << "the selection follows the line";
    EXPECT_EQ(Rows(*form, "lstScriptLines"), (QStringList{"clear <>", "msg <a>"}));
    Click(*form, "butOK");
    EXPECT_EQ(form->Value(), "do <~Internal Procedure 7>");
    ASSERT_EQ(game.Procedures.Count(), 1);
    EXPECT_EQ(game.Procedures[1], (Procedure{"~Internal Procedure 7", "clear <>\r\nmsg <a>"}));
    EXPECT_EQ(game.NextInternalProcedure, 8);

    const auto single = Open<frmScriptLines>("msg <a>");
    Click(*single, "butOK");
    EXPECT_EQ(single->Value(), "msg <a>");
    EXPECT_EQ(door.changes.size(), 1u);
    PressKey(*single, "lstFriendlyLines", Qt::Key_Down);
    PressKey(*single, "lstFriendlyLines", Qt::Key_Delete);
    Click(*single, "butOK");
    EXPECT_EQ(single->Value(), "");
}

TEST_F(ScriptForms, EditTheInternalProcedureThatIsCalled) {
    game.Procedures.Append({"~Internal Procedure 1", "msg <a>\r\n\r\nmsg <b>\r\n\r\n  \r\n"});
    const auto form = Open<frmScriptLines>("do <~INTERNAL procedure 1>"); // capitals do not matter here
    auto& list = Find<QListWidget>(*form, "lstFriendlyLines");
    EXPECT_EQ(Rows(*form, "lstFriendlyLines"), (QStringList{"Print \"a\"", "", "Print \"b\""}))
        << "empty lines inside stay";
    list.setCurrentRow(1);
    Click(*form, "butRemove");
    list.setCurrentRow(1);
    Click(*form, "butRemove");
    Click(*form, "butOK");
    EXPECT_EQ(form->Value(), "do <~Internal Procedure 1>") << "the call stays, even for one line";
    EXPECT_EQ(game.Procedures[1].Script, "msg <a>");
    EXPECT_EQ(game.Procedures.Count(), 1);

    EXPECT_EQ(Rows(*Open<frmScriptLines>("do <~nothing>"), "lstScriptLines"), QStringList{"do <~nothing>"});
    EXPECT_EQ(Rows(*Open<frmScriptLines>("do <~broken"), "lstScriptLines"), QStringList{"do <~broken"});
}

TEST_F(ScriptForms, OpenEachLineInItsEditorAndLeaveTheModelAloneOnCancel) {
    game.Procedures.Append({"~Internal Procedure 1", "if has <x> then win\r\nmsg <a>"});
    const GameModel before = game;
    WhenOpen<frmScriptLines>([](frmScriptLines& form) {
        auto& list = Find<QListWidget>(form, "lstFriendlyLines");
        list.setCurrentRow(0);
        WhenOpen<frmConditional>(
            [](frmConditional& line) { EXPECT_EQ(TextOf(line, "txtRaw"), "if has <x> then win"); });
        QTest::keyClick(&list, Qt::Key_Return);
        list.setCurrentRow(1);
        WhenOpen<frmScriptEditor>([](frmScriptEditor& line) {
            SetText(line, "txtParameter", "b");
            Click(line, "butOK");
        });
        Click(form, "butEdit");
        EXPECT_EQ(Rows(form, "lstFriendlyLines").constLast(), "Print \"b\"");
        QTest::keyClick(&form, Qt::Key_Escape);
    });
    EXPECT_EQ(scripts.EditScript(nullptr, "do <~Internal Procedure 1>"), "do <~Internal Procedure 1>");
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
    EXPECT_EQ(scripts.Render("msg", ScriptForm::Plain, InternalProcedures::ShowCall), "msg");
}

TEST_F(ScriptForms, SayWhenTheNumbersOfProceduresRunOut) {
    game.NextInternalProcedure = 32767;
    const auto form = Open<frmScriptLines>("msg <a>\r\nmsg <b>");
    dialogs.Message("ZEM: The command was not carried out: the numbers of internal procedures end at "
                    "32,767.");
    Click(*form, "butOK");
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(game.Procedures.Count(), 0);
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
    QTest::keyClicks(&chooser, "the player is in a room"); // blanks while typing stay
    TypeText(*form, "txtConditionParameter", "Quay");
    PressKey(*form, "chkNot", Qt::Key_Space);
    Find<QComboBox>(*form, "cmbJoiner").setCurrentIndex(1);
    WhenOpen<frmScriptEditor>([](frmScriptEditor& line) {
        TypeText(line, "cmbFriendly", "Print a message");
        TypeText(line, "txtParameter", "Here.");
        Click(line, "butOK");
    });
    Click(*form, "butThen");
    EXPECT_EQ(TextOf(*form, "txtRaw"), "if has <iron key> or not in <Quay> then msg <Here.>");
    EXPECT_EQ(TextOf(*form, "lblEnglish"),
              "If the player has \"iron key\" or it is not so that the player is in \"Quay\", then: Print "
              "\"Here.\"");
    Click(*form, "butConditionUp");
    PressKey(*form, "chkElse", Qt::Key_Space);
    WhenOpen<frmConditional>([](frmConditional& inner) {
        SetText(inner, "txtRaw", "if flag <x> then win");
        Click(inner, "butOK");
    });
    Click(*form, "butElseIf");
    Click(*form, "butOK");
    EXPECT_EQ(form->Line(), "if not in <Quay> and has <iron key> then msg <Here.> else if flag <x> then win");
}

TEST_F(ScriptForms, GiveAnUntouchedConditionalLineBackByteForByte) {
    for (const char* line : {"IF  has <x>  then msg <a>   ELSE die", "if nonsense", "if has <x then y"}) {
        const auto form = Open<frmConditional>(line);
        EXPECT_EQ(IsEnabled(*form, "fraParts"), std::string(line).starts_with("IF"));
        EXPECT_EQ(TextOf(*form, "lblProblem").empty(), std::string(line).starts_with("IF"));
        Click(*form, "butOK");
        EXPECT_EQ(form->result(), QDialog::Accepted) << "what is not understood is kept all the same";
        EXPECT_EQ(form->Line(), line);
    }
}

TEST_F(ScriptForms, FollowTheRawLineAndTellWhyTheyCannot) {
    const auto form = Open<frmConditional>("if has <x> then win");
    auto& raw = Find<QLineEdit>(*form, "txtRaw");
    raw.setText("if has <x> win");
    EXPECT_FALSE(IsEnabled(*form, "fraParts"));
    EXPECT_EQ(TextOf(*form, "lblProblem"),
              "The parts cannot be shown: after a condition comes \"and\", \"or\" or \"then\". The line is "
              "kept as you write it.");
    raw.setText("if strange <y> and empty handed then win else die");
    EXPECT_TRUE(IsEnabled(*form, "fraParts"));
    EXPECT_EQ(Rows(*form, "lstConditions"), (QStringList{"strange <y>", "and the player has no items"}));
    EXPECT_TRUE(Find<QCheckBox>(*form, "chkElse").isChecked());
    PressKey(*form, "chkElse", Qt::Key_Space);
    SelectRow(*form, "lstConditions", 0);
    PressKey(*form, "lstConditions", Qt::Key_Delete);
    EXPECT_EQ(raw.text(), "if empty handed then win");
    EXPECT_FALSE(IsEnabled(*form, "txtConditionParameter"));
    // Parts of which no line can be made are not taken for one.
    Click(*form, "butRemoveCondition");
    dialogs.Message("ZEM: The line is not complete: no line can be made of this: a condition is missing.");
    Click(*form, "butOK");
    EXPECT_TRUE(form->isVisible());
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
        const auto formatAt = [&](int position) {
            QTextCursor cursor(box.document());
            cursor.setPosition(position);
            return cursor.charFormat();
        };
        EXPECT_EQ(formatAt(1).fontWeight(), static_cast<int>(QFont::Normal));
        EXPECT_EQ(formatAt(2).fontWeight(), static_cast<int>(QFont::Bold));
        const int yellow = formatAt(3).foreground().color().lightness();
        EXPECT_GT(std::abs(yellow - palette.color(QPalette::Base).lightness()), 60) << "legible";
        EXPECT_EQ(formatAt(5).foreground().color(), palette.color(QPalette::Text))
            << "black is the text's own colour";
    }
}

TEST_F(ScriptForms, InsertAVariableIntoAPlayerCommand) {
    const QString question =
        "Insert string variable: Enter a name for the string variable to place text in: []";
    for (const auto& [text, start, length, answer, result, caret] :
         Cases<const char*, int, int, std::optional<QString>, const char*, int>{
             {"look at ", 8, 0, "thing", "look at #thing#", 15},
             {"take it", 5, 2, "obj", "take #obj#", 10},
             {"take it", 5, 0, "x", "take #x#it", 8},
             {"take it", 4, 0, std::nullopt, "take it", 4},
             {"take it", 4, 0, QString(), "take it", 4}}) {
        frmEditCommand form(scripts, text, "msg <x>\r\nwin <>");
        form.show();
        const QTextEdit& action = Find<QTextEdit>(form, "txtAction");
        EXPECT_EQ(action.toPlainText(), "Print \"x\";\nThe player wins");
        // The semicolon is red, and what follows it is not.
        const auto colourAt = [&](int position) {
            QTextCursor cursor(action.document());
            cursor.setPosition(position + 1);
            return cursor.charFormat().foreground().color();
        };
        EXPECT_EQ(colourAt(0), colourAt(11));
        EXPECT_NE(colourAt(0), colourAt(9));
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
