#include "script/ShowFormattedText.h"
#include "script/frmConditional.h"
#include "script/frmEditCommand.h"
#include "script/frmScriptEditor.h"
#include "script/frmScriptLines.h"
#include "support/ScriptFixture.h"
#include "support/WhenOpen.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTextEdit>

#include <gtest/gtest.h>

namespace zem {
namespace {

using test::Click;
using test::Find;
using test::WhenOpen;

QStringList Rows(const QListWidget& list) {
    QStringList rows;
    for (int row = 0; row < list.count(); ++row)
        rows.append(list.item(row)->text());
    return rows;
}

// ---- One line

class ScriptLineTest : public test::ScriptFixture {
protected:
    /// Opens the editor on a line, without showing it, and returns it.
    std::unique_ptr<frmScriptEditor> Open(const std::string& line) {
        auto form = std::make_unique<frmScriptEditor>(scripts, line);
        form->show();
        return form;
    }
    /// The line that comes back when it is opened and confirmed.
    std::string OpenAndConfirm(const std::string& line) {
        const auto form = Open(line);
        Click(*form, "butOK");
        EXPECT_EQ(form->result(), QDialog::Accepted);
        return form->Line();
    }
};

TEST_F(ScriptLineTest, ComesBackAsItWasOpened) {
    for (const bool isFriendly : {true, false}) {
        friendly = isFriendly;
        for (const char* line :
             {"msg <Hello.>", "flag on <x>", "lose all <>", "MSG <capitals are another command>",
              "jump <high>", "jump", "msg <a> b", "msg <open", "set <a; b>", " msg <x> "})
            EXPECT_EQ(OpenAndConfirm(line), std::string(line) == " msg <x> " ? "msg <x>" : line) << line;
        EXPECT_EQ(OpenAndConfirm("win"), "win <>") << "empty brackets for a command without parameter";
    }
}

TEST_F(ScriptLineTest, OpensUnknownCommandsOnTheOtherEntry) {
    const auto parameter = Open("jump <high>");
    EXPECT_EQ(Find<QComboBox>(*parameter, "cmbCommands").currentText(), QStringLiteral("(other)"));
    EXPECT_EQ(Find<QLineEdit>(*parameter, "txtOther").text(), QStringLiteral("jump"));
    EXPECT_FALSE(Find<QCheckBox>(*parameter, "chkNoParameter").isChecked());
    EXPECT_TRUE(Find<QLineEdit>(*parameter, "txtParameter").isEnabled());
    const auto none = Open("jump");
    EXPECT_TRUE(Find<QCheckBox>(*none, "chkNoParameter").isChecked());
    EXPECT_FALSE(Find<QLineEdit>(*none, "txtParameter").isEnabled());
    QTest::keyClick(&Find<QCheckBox>(*none, "chkNoParameter"), Qt::Key_Space);
    EXPECT_TRUE(Find<QLineEdit>(*none, "txtParameter").isEnabled());
}

TEST_F(ScriptLineTest, AsksForACommand) {
    const auto form = Open("");
    EXPECT_EQ(Find<QComboBox>(*form, "cmbFriendly").currentIndex(), -1);
    dialogs.Message(QStringLiteral("ZEM: No command has been selected."));
    Click(*form, "butOK");
    EXPECT_TRUE(form->isVisible());
    // Letter by letter, through texts that are no command.
    QTest::keyClicks(&Find<QComboBox>(*form, "cmbFriendly"), QStringLiteral("Print a message"));
    QTest::keyClicks(&Find<QLineEdit>(*form, "txtParameter"), QStringLiteral("Hi"));
    EXPECT_EQ(Find<QLabel>(*form, "txtSyntax").text(), QStringLiteral("The text to print"));
    Click(*form, "butClear");
    EXPECT_EQ(Find<QLineEdit>(*form, "txtParameter").text(), QString());
    dialogs.Message(QStringLiteral("ZEM: No command has been selected."));
    Click(*form, "butOK");
    QTest::keyClicks(&Find<QComboBox>(*form, "cmbFriendly"), QStringLiteral("print a message"));
    QTest::keyClicks(&Find<QLineEdit>(*form, "txtParameter"), QStringLiteral("Ho"));
    Click(*form, "butOK");
    EXPECT_EQ(form->Line(), "msg <Ho>");
}

TEST_F(ScriptLineTest, OffersTheCommandsThatContainWhatIsTyped) {
    const auto form = Open("");
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

TEST_F(ScriptLineTest, EmptiesAndDisablesTheParameterOfACommandWithoutOne) {
    for (const bool isFriendly : {true, false}) {
        friendly = isFriendly;
        const auto form = Open("msg <Hi>");
        auto& chooser = Find<QComboBox>(*form, isFriendly ? "cmbFriendly" : "cmbCommands");
        ASSERT_TRUE(chooser.isVisible());
        chooser.setCurrentIndex(Find<QComboBox>(*form, "cmbCommands").findText(QStringLiteral("win")));
        EXPECT_FALSE(Find<QLineEdit>(*form, "txtParameter").isEnabled());
        EXPECT_EQ(Find<QLabel>(*form, "txtSyntax").text(),
                  isFriendly ? QStringLiteral("There are no parameters for this command.")
                             : QStringLiteral("Function takes no parameters."));
        Click(*form, "butOK");
        EXPECT_EQ(form->Line(), "win <>");
    }
}

TEST_F(ScriptLineTest, OffersTheNamesOfTheGameForThePartAtTheCaret) {
    Room& room = game.Rooms.Append();
    room.Name = "Hall";
    room.Objects.Append().Name = "lamp";
    room.Script = "if flag <seen> and more <turns; 9> then set <mood; 1>";
    game.Rooms.Append().Name = "Attic";
    const auto form = Open("move object <lamp; Cellar>");
    auto& parameter = Find<QLineEdit>(*form, "txtParameter");
    auto& names = Find<QComboBox>(*form, "cmbNames");
    const auto offered = [&] {
        QStringList texts;
        for (int row = 0; row < names.count(); ++row)
            texts.append(names.itemText(row));
        return names.isVisible() ? texts.join(u',') : QStringLiteral("nothing");
    };
    parameter.setCursorPosition(2);
    EXPECT_EQ(offered(), QStringLiteral("lamp"));
    parameter.setCursorPosition(8);
    EXPECT_EQ(offered(), QStringLiteral("Hall,Attic"));
    names.setCurrentIndex(1);
    emit names.textActivated(QStringLiteral("Attic"));
    EXPECT_EQ(parameter.text(), QStringLiteral("lamp; Attic"));
    QTest::keyClicks(&parameter, QStringLiteral(" 2")); // anything may be typed
    Click(*form, "butOK");
    EXPECT_EQ(form->Line(), "move object <lamp; Attic 2>");

    const auto variables = Open("add <x; 1>");
    Find<QLineEdit>(*variables, "txtParameter").setCursorPosition(0);
    EXPECT_EQ(Find<QComboBox>(*variables, "cmbNames").itemText(0), QStringLiteral("mood"));
    EXPECT_EQ(Find<QComboBox>(*variables, "cmbNames").itemText(1), QStringLiteral("turns"));
    const auto message = Open("msg <x>");
    EXPECT_FALSE(Find<QComboBox>(*message, "cmbNames").isVisible());
}

// ---- Several lines

class ScriptLinesTest : public test::ScriptFixture {
protected:
    std::unique_ptr<frmScriptLines> Open(const std::string& script) {
        auto form = std::make_unique<frmScriptLines>(scripts, script);
        form->show();
        return form;
    }
};

TEST_F(ScriptLinesTest, KeepsOneLineAndMakesAProcedureOfTwo) {
    game.NextInternalProcedure = 7;
    const auto form = Open("msg <a>");
    auto& list = Find<QListWidget>(*form, "lstFriendlyLines");
    EXPECT_EQ(Rows(list), QStringList{"Print \"a\""});
    EXPECT_EQ(list.item(0)->toolTip(), QStringLiteral("msg &lt;a&gt;"));
    EXPECT_FALSE(Find<QListWidget>(*form, "lstScriptLines").isVisible());
    WhenOpen<frmScriptEditor>([](frmScriptEditor& line) {
        QTest::keyClicks(&Find<QComboBox>(line, "cmbFriendly"), QStringLiteral("Clear the screen"));
        Click(line, "butOK");
    });
    QTest::keyClick(&list, Qt::Key_Insert);
    EXPECT_EQ(list.currentRow(), 1);
    QTest::keyClick(&list, Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(list.currentRow(), 0) << "the selection follows the line";
    EXPECT_EQ(Rows(Find<QListWidget>(*form, "lstScriptLines")), (QStringList{"clear <>", "msg <a>"}));
    Click(*form, "butOK");
    EXPECT_EQ(form->Value(), "do <~Internal Procedure 7>");
    ASSERT_EQ(game.Procedures.Count(), 1);
    EXPECT_EQ(game.Procedures[1], (Procedure{"~Internal Procedure 7", "clear <>\r\nmsg <a>"}));
    EXPECT_EQ(game.NextInternalProcedure, 8);

    const auto single = Open("msg <a>");
    Click(*single, "butOK");
    EXPECT_EQ(single->Value(), "msg <a>");
    EXPECT_EQ(door.changes.size(), 1u);
    QTest::keyClick(&Find<QListWidget>(*single, "lstFriendlyLines"), Qt::Key_Down);
    QTest::keyClick(&Find<QListWidget>(*single, "lstFriendlyLines"), Qt::Key_Delete);
    Click(*single, "butOK");
    EXPECT_EQ(single->Value(), "");
}

TEST_F(ScriptLinesTest, EditsTheInternalProcedureThatIsCalled) {
    game.Procedures.Append({"~Internal Procedure 1", "msg <a>\r\n\r\nmsg <b>\r\n\r\n  \r\n"});
    const auto form = Open("do <~INTERNAL procedure 1>"); // capitals do not matter here
    auto& list = Find<QListWidget>(*form, "lstFriendlyLines");
    EXPECT_EQ(Rows(list), (QStringList{"Print \"a\"", "", "Print \"b\""})) << "empty lines inside stay";
    list.setCurrentRow(1);
    Click(*form, "butRemove");
    list.setCurrentRow(1);
    Click(*form, "butRemove");
    Click(*form, "butOK");
    EXPECT_EQ(form->Value(), "do <~Internal Procedure 1>") << "the call stays, even for one line";
    EXPECT_EQ(game.Procedures[1].Script, "msg <a>");
    EXPECT_EQ(game.Procedures.Count(), 1);

    EXPECT_EQ(Rows(Find<QListWidget>(*Open("do <~nothing>"), "lstScriptLines")),
              QStringList{"do <~nothing>"});
    EXPECT_EQ(Rows(Find<QListWidget>(*Open("do <~broken"), "lstScriptLines")), QStringList{"do <~broken"});
}

TEST_F(ScriptLinesTest, OpensEachLineInItsEditorAndLeavesTheModelAloneOnCancel) {
    game.Procedures.Append({"~Internal Procedure 1", "if has <x> then win\r\nmsg <a>"});
    const GameModel before = game;
    WhenOpen<frmScriptLines>([](frmScriptLines& form) {
        auto& list = Find<QListWidget>(form, "lstFriendlyLines");
        list.setCurrentRow(0);
        WhenOpen<frmConditional>([](frmConditional& line) {
            EXPECT_EQ(Find<QLineEdit>(line, "txtRaw").text(), QStringLiteral("if has <x> then win"));
        });
        QTest::keyClick(&list, Qt::Key_Return);
        list.setCurrentRow(1);
        WhenOpen<frmScriptEditor>([](frmScriptEditor& line) {
            Find<QLineEdit>(line, "txtParameter").setText(QStringLiteral("b"));
            Click(line, "butOK");
        });
        Click(form, "butEdit");
        EXPECT_EQ(Rows(list).constLast(), QStringLiteral("Print \"b\""));
        QTest::keyClick(&form, Qt::Key_Escape);
    });
    EXPECT_EQ(scripts.EditScript(nullptr, "do <~Internal Procedure 1>"), "do <~Internal Procedure 1>");
    EXPECT_EQ(game, before);
}

// One bad line must never close an editor: it is shown as it stands, and comes back unchanged.
TEST_F(ScriptLinesTest, ShowsWhateverAScriptHoldsAndGivesItBack) {
    for (const std::string& script :
         {std::string("msg"), std::string("msg > <"), std::string("a|"), std::string("|||x|s1"),
          std::string("> <"), std::string("if if if"), std::string("do <~"),
          std::string("unheard-of <thing>"), std::string("\x80\x81\xFF"),
          "msg <" + std::string(1'000'000, 'x') + ">"}) {
        const auto form = Open(script);
        ASSERT_EQ(Find<QListWidget>(*form, "lstFriendlyLines").count(), 1) << script.substr(0, 40);
        EXPECT_FALSE(Find<QListWidget>(*form, "lstFriendlyLines").item(0)->text().isEmpty())
            << script.substr(0, 40);
        Click(*form, "butOK");
        EXPECT_EQ(form->Value(), script);
    }
    EXPECT_EQ(scripts.Render("msg", ScriptForm::Plain, InternalProcedures::ShowCall), "msg");
}

TEST_F(ScriptLinesTest, SaysWhenTheNumbersOfProceduresRunOut) {
    game.NextInternalProcedure = 32767;
    const auto form = Open("msg <a>\r\nmsg <b>");
    dialogs.Message(
        QStringLiteral("ZEM: The command was not carried out: the numbers of internal procedures end at "
                       "32,767."));
    Click(*form, "butOK");
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(game.Procedures.Count(), 0);
}

// ---- Conditions

class ConditionalTest : public test::ScriptFixture {
protected:
    std::unique_ptr<frmConditional> Open(const std::string& line) {
        auto form = std::make_unique<frmConditional>(scripts, line);
        form->show();
        return form;
    }
};

TEST_F(ConditionalTest, BuildsALineFromItsParts) {
    const auto form = Open("");
    EXPECT_EQ(
        Find<QLabel>(*form, "lblProblem").text(),
        QStringLiteral("Not complete: no line can be made of this: there is no command after \"then\"."));
    QTest::keyClicks(&Find<QLineEdit>(*form, "txtConditionParameter"), QStringLiteral("iron key"));
    Click(*form, "butAddCondition");
    auto& chooser = Find<QComboBox>(*form, "cmbCondition");
    chooser.lineEdit()->selectAll();
    QTest::keyClicks(&chooser, QStringLiteral("the player is in a room")); // blanks while typing stay
    QTest::keyClicks(&Find<QLineEdit>(*form, "txtConditionParameter"), QStringLiteral("Quay"));
    QTest::keyClick(&Find<QCheckBox>(*form, "chkNot"), Qt::Key_Space);
    Find<QComboBox>(*form, "cmbJoiner").setCurrentIndex(1);
    WhenOpen<frmScriptEditor>([](frmScriptEditor& line) {
        QTest::keyClicks(&Find<QComboBox>(line, "cmbFriendly"), QStringLiteral("Print a message"));
        QTest::keyClicks(&Find<QLineEdit>(line, "txtParameter"), QStringLiteral("Here."));
        Click(line, "butOK");
    });
    Click(*form, "butThen");
    EXPECT_EQ(Find<QLineEdit>(*form, "txtRaw").text(),
              QStringLiteral("if has <iron key> or not in <Quay> then msg <Here.>"));
    EXPECT_EQ(
        Find<QLabel>(*form, "lblEnglish").text(),
        QStringLiteral(
            "If the player has \"iron key\" or it is not so that the player is in \"Quay\", then: Print "
            "\"Here.\""));
    Click(*form, "butConditionUp");
    QTest::keyClick(&Find<QCheckBox>(*form, "chkElse"), Qt::Key_Space);
    WhenOpen<frmConditional>([](frmConditional& inner) {
        Find<QLineEdit>(inner, "txtRaw").setText(QStringLiteral("if flag <x> then win"));
        Click(inner, "butOK");
    });
    Click(*form, "butElseIf");
    Click(*form, "butOK");
    EXPECT_EQ(form->Line(), "if not in <Quay> and has <iron key> then msg <Here.> else if flag <x> then win");
}

TEST_F(ConditionalTest, GivesAnUntouchedLineBackByteForByte) {
    for (const char* line : {"IF  has <x>  then msg <a>   ELSE die", "if nonsense", "if has <x then y"}) {
        const auto form = Open(line);
        EXPECT_EQ(Find<QWidget>(*form, "fraParts").isEnabled(), std::string(line).starts_with("IF"));
        EXPECT_EQ(Find<QLabel>(*form, "lblProblem").text().isEmpty(), std::string(line).starts_with("IF"));
        Click(*form, "butOK");
        EXPECT_EQ(form->result(), QDialog::Accepted) << "what is not understood is kept all the same";
        EXPECT_EQ(form->Line(), line);
    }
}

TEST_F(ConditionalTest, FollowsTheRawLineAndTellsWhyItCannot) {
    const auto form = Open("if has <x> then win");
    auto& raw = Find<QLineEdit>(*form, "txtRaw");
    raw.setText(QStringLiteral("if has <x> win"));
    EXPECT_FALSE(Find<QWidget>(*form, "fraParts").isEnabled());
    EXPECT_EQ(
        Find<QLabel>(*form, "lblProblem").text(),
        QStringLiteral(
            "The parts cannot be shown: after a condition comes \"and\", \"or\" or \"then\". The line is "
            "kept as you write it."));
    raw.setText(QStringLiteral("if strange <y> and empty handed then win else die"));
    EXPECT_TRUE(Find<QWidget>(*form, "fraParts").isEnabled());
    EXPECT_EQ(Rows(Find<QListWidget>(*form, "lstConditions")),
              (QStringList{"strange <y>", "and the player has no items"}));
    EXPECT_TRUE(Find<QCheckBox>(*form, "chkElse").isChecked());
    QTest::keyClick(&Find<QCheckBox>(*form, "chkElse"), Qt::Key_Space);
    Find<QListWidget>(*form, "lstConditions").setCurrentRow(0);
    QTest::keyClick(&Find<QListWidget>(*form, "lstConditions"), Qt::Key_Delete);
    EXPECT_EQ(raw.text(), QStringLiteral("if empty handed then win"));
    EXPECT_FALSE(Find<QLineEdit>(*form, "txtConditionParameter").isEnabled());
    // Parts of which no line can be made are not taken for one.
    Click(*form, "butRemoveCondition");
    dialogs.Message(QStringLiteral(
        "ZEM: The line is not complete: no line can be made of this: a condition is missing."));
    Click(*form, "butOK");
    EXPECT_TRUE(form->isVisible());
}

// ---- Previews and player commands

TEST_F(ScriptLinesTest, PaintsCodesIntoTheBoxOnLightAndDark) {
    for (const bool isDark : {false, true}) {
        QTextEdit box;
        QPalette palette = box.palette();
        palette.setColor(QPalette::Base, isDark ? Qt::black : Qt::white);
        palette.setColor(QPalette::Text, isDark ? Qt::white : Qt::black);
        box.setPalette(palette);
        ShowFormattedText("a|bb|cyc|xb\r\n|cbd|ne", box);
        EXPECT_EQ(box.toPlainText(), QStringLiteral("abc\ndne"));
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

TEST_F(ScriptLinesTest, InsertsAVariableIntoAPlayerCommand) {
    const QString question =
        QStringLiteral("Insert string variable: Enter a name for the string variable to place text in: []");
    struct Case {
        const char* text;
        int start;
        int length;
        std::optional<QString> answer;
        const char* result;
        int caret;
    };
    for (const Case& c : {Case{"look at ", 8, 0, QStringLiteral("thing"), "look at #thing#", 15},
                          {"take it", 5, 2, QStringLiteral("obj"), "take #obj#", 10},
                          {"take it", 5, 0, QStringLiteral("x"), "take #x#it", 8},
                          {"take it", 4, 0, std::nullopt, "take it", 4},
                          {"take it", 4, 0, QString(), "take it", 4}}) {
        frmEditCommand form(scripts, c.text, "msg <x>\r\nwin <>");
        form.show();
        const QTextEdit& action = Find<QTextEdit>(form, "txtAction");
        EXPECT_EQ(action.toPlainText(), QStringLiteral("Print \"x\";\nThe player wins"));
        // The semicolon is red, and what follows it is not.
        const auto colourAt = [&](int position) {
            QTextCursor cursor(action.document());
            cursor.setPosition(position + 1);
            return cursor.charFormat().foreground().color();
        };
        EXPECT_EQ(colourAt(0), colourAt(11));
        EXPECT_NE(colourAt(0), colourAt(9));
        auto& box = Find<QLineEdit>(form, "txtCommand");
        box.setCursorPosition(c.start);
        if (c.length > 0)
            box.setSelection(c.start, c.length);
        dialogs.Text(question, c.answer);
        Click(form, "butInsertVariable");
        EXPECT_EQ(form.Pattern(), c.result);
        EXPECT_EQ(box.cursorPosition(), c.caret);
    }
}

} // namespace
} // namespace zem
