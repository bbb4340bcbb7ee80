// The editors that work on one list of the game.
#include "editors/frmEditCollectableSettings.h"
#include "editors/frmEditCollectables.h"
#include "editors/frmEditItems.h"
#include "editors/frmIncludedLibraries.h"
#include "editors/frmObjectInteract.h"
#include "editors/frmProcedureEditor.h"
#include "editors/frmSynonymEditor.h"
#include "editors/frmSynonyms.h"
#include "editors/frmTextSectionEdit.h"
#include "support/RunningProgram.h"
#include "support/ScriptFixture.h"
#include "support/ScriptForms.h"
#include "windows/frmOrbMsgBox.h"

#include <QLabel>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

using ListEditors = ScriptFixture;

TEST_F(ListEditors, KeepObjectsAndTheirScriptsTogether) {
    const char* const question = "New item: Enter the name of the item to add: []";
    std::vector<ScriptPair> gives = {{"a", "msg <1>"}, {"b", "msg <2>"}, {"c", "msg <3>"}};
    const auto edit = [&](const char* close) {
        WhenOpen<frmObjectInteract>([&](frmObjectInteract& form) {
            EXPECT_EQ(TextOf(form, "lblTitle"), "Given to A&&B:");
            Click(form, "butEdit"); // Nothing is selected, so nothing happens.
            Click(form, "butRemove");
            SelectRow(form, "lstItems", 1);
            PressKey(form, "lstItems", Qt::Key_Delete);
            dialogs.Text(question, QString());
            Click(form, "butAdd");
            dialogs.Text(question, "key");
            WhenOpen<frmScriptLines>([&form](frmScriptLines& script) {
                EXPECT_EQ(SelectedRow(form, "lstItems"), 2);
                Click(script, "butOK");
            });
            Click(form, "butAdd");
            Click(form, close);
        });
        EditGives(context, "Given to A&B:", gives, nullptr);
        return gives;
    };
    EXPECT_EQ(edit("butCancel").size(), 3U);
    EXPECT_EQ(edit("butOK"), (std::vector<ScriptPair>{{"a", "msg <1>"}, {"c", "msg <3>"}, {"key", ""}}));
}

TEST_F(ListEditors, RegisterItemsAndLibrariesUnderAnyName) {
    game.Items.Append({"lamp", false});
    game.Includes.Append("a.kel");
    frmEditItems items(context);
    items.show();
    for (const std::optional<QString>& name : {std::optional<QString>("lamp"), std::optional<QString>()}) {
        dialogs.Text("New item: Please enter a name for this item: []", name);
        Click(items, "butAdd");
    }
    PressKey(items, "lstItems", Qt::Key_Space); // Ticks the selected row.
    Click(items, "butOK");
    ASSERT_EQ(game.Items.Count(), 2);
    EXPECT_EQ(game.Items[2], (ItemEntry{"lamp", true}));

    frmIncludedLibraries libraries(context);
    libraries.show();
    Click(libraries, "butRemove"); // Nothing is selected, so nothing happens.
    dialogs.Text("Add library: Enter filename of library (including extension) []", "not there.kel");
    PressKey(libraries, "lstLibs", Qt::Key_Insert); // Adding needs no selection.
    Click(libraries, "butOK");
    ASSERT_EQ(game.Includes.Count(), 2);
    EXPECT_EQ(game.Includes[2], "not there.kel");
}

TEST_F(ListEditors, WriteTextsAtOnceAndRenameAllButThreeOfThem) {
    for (const char* name : {"intro", "Intro", "lose", "win"})
        game.TextSections.Append({name, "of " + std::string(name)});
    frmTextSectionEdit form(context);
    form.show();
    std::string shown;
    for (const int row : {0, 2, 3, 1}) {
        SelectRow(form, "cmbTextSections", row);
        shown += TextOf(form, "txtText") + (IsEnabled(form, "butRename") ? ", can be renamed\n" : "\n");
    }
    EXPECT_EQ(shown, "of intro\nof lose\nof win\nof Intro, can be renamed\n");
    EXPECT_EQ(door.changes, 0) << "showing a text changes nothing";
    PressKey(form, "txtText", Qt::Key_Return);
    EXPECT_EQ(game.TextSections[2].Text, "\r\nof Intro");
    game.Modified = false;
    PressKey(form, "txtText", Qt::Key_Left);
    EXPECT_TRUE(game.Modified) << "whatever the key does";

    dialogs.Text("Rename text section: Please enter a new name for this text section: [Intro]", "win");
    Click(form, "butRename");
    EXPECT_EQ(game.TextSections[2].Name, "win");
    EXPECT_FALSE(IsEnabled(form, "butRename"));
    dialogs.Text("New text section: Enter a name for this text section: []", "win");
    Click(form, "butAdd");
    EXPECT_EQ(SelectedRow(form, "cmbTextSections"), 4);
    EXPECT_EQ(TextOf(form, "txtText"), "Enter text here...");
    EXPECT_EQ(game.TextSections[5], (TextSection{"win", "Enter text here..."}));
    Click(form, "butDelete");
    EXPECT_EQ(game.TextSections.Count(), 5) << "they cannot be deleted here";
}

TEST_F(ListEditors, MarkTheGameAsChangedHoweverTheTextsAreClosed) {
    for (const bool byKey : {true, false}) {
        game.Modified = false;
        frmTextSectionEdit form(context); // of no text at all
        form.show();
        EXPECT_FALSE(IsEnabled(form, "txtText"));
        if (byKey)
            QTest::keyClick(&form, Qt::Key_Escape);
        else
            Click(form, "butClose");
        EXPECT_FALSE(form.isVisible());
        EXPECT_TRUE(game.Modified);
    }
}

TEST_F(ListEditors, HideTheProceduresThatTheEditorMakes) {
    for (const char* name : {"~internal procedure 2", "greet", "~Internal", "greet"})
        game.Procedures.Append({name, "msg <" + std::to_string(game.Procedures.Count()) + ">"});
    frmProcedureEditor form(context);
    form.show();
    EXPECT_EQ(Rows(form, "cmbProcedures"), (QStringList{"greet", "~Internal", "greet"}));
    Click(form, "butEdit"); // Nothing is selected, so nothing happens.
    Click(form, "butRemove");
    SelectRow(form, "cmbProcedures", 2);
    CutNextScript("3"); // The other procedure of this name holds a 1.
    PressKey(form, "cmbProcedures", Qt::Key_Return);
    const auto add = [&](const char* name) {
        dialogs.Text("New Procedure: Enter a name for this new procedure: []", name);
        Click(form, "butAdd");
    };
    for (const char* name : {"wave", "~INTERNAL PROCEDURE 3"}) { // The second is hidden only the next time.
        ConfirmNextScript();
        add(name);
    }
    EXPECT_EQ(SelectedRow(form, "cmbProcedures"), 4);
    SelectRow(form, "cmbProcedures", 0);
    Click(form, "butRemove");
    EXPECT_EQ(Rows(form, "cmbProcedures"),
              (QStringList{"~Internal", "greet", "wave", "~INTERNAL PROCEDURE 3"}));
    SelectRow(form, "cmbProcedures", 3);
    ConfirmNextScript();
    Click(form, "butEdit");
    std::string left;
    for (const Procedure& procedure : game.Procedures)
        left += procedure.Name + ": " + procedure.Script + '\n';
    EXPECT_EQ(left, "~internal procedure 2: msg <0>\n~Internal: msg <2>\ngreet: \nwave: \n"
                    "~INTERNAL PROCEDURE 3: \n");
    EXPECT_EQ(Rows(frmProcedureEditor(context), "cmbProcedures"),
              (QStringList{"~Internal", "greet", "wave"}));
}

TEST_F(ListEditors, EditSynonyms) {
    const char* const question =
        "New Word: Please enter a new word that will be converted to this synonym: []";
    game.Synonyms.Append({"get;take ; pick up;", "grab"});
    game.Synonyms.Append({"l", "look"});
    frmSynonyms form(context);
    form.show();
    Click(form, "butEdit"); // Nothing is selected, so nothing happens.
    SelectRow(form, "lstSynonyms", 0);
    WhenOpen<frmSynonymEditor>([&](frmSynonymEditor& editor) {
        EXPECT_EQ(Rows(editor, "lstWords"), (QStringList{"get", "take", "pick up", ""}));
        for (const int row : {3, 1}) {
            SelectRow(editor, "lstWords", row);
            Click(editor, "butRemove");
        }
        dialogs.Text(question, "seize");
        Click(editor, "butAdd");
        SetText(editor, "txtConvertTo", "hold");
        Click(editor, "butOK");
    });
    Click(form, "butEdit");
    WhenOpen<frmSynonymEditor>([](frmSynonymEditor& editor) {
        SetText(editor, "txtConvertTo", "");
        Click(editor, "butCancel");
    });
    PressKey(form, "lstSynonyms", Qt::Key_Return);
    WhenOpen<frmSynonymEditor>([&](frmSynonymEditor& editor) {
        dialogs.Message("ZEM: You must specify some words to convert to this synonym.");
        Click(editor, "butOK");
        dialogs.Text(question, "x");
        Click(editor, "butAdd");
        dialogs.Message("ZEM: You must specify a word to convert these synonyms to.");
        Click(editor, "butOK");
        SetText(editor, "txtConvertTo", "examine");
        Click(editor, "butOK");
    });
    Click(form, "butAdd");
    WhenOpen<frmSynonymEditor>([](frmSynonymEditor& editor) { editor.close(); });
    Click(form, "butAdd");
    SelectRow(form, "lstSynonyms", 1);
    Click(form, "butRemove");
    EXPECT_EQ(game.Synonyms[2].ConvertTo, "look") << "until OK";
    Click(form, "butOK");
    ASSERT_EQ(game.Synonyms.Count(), 2);
    EXPECT_EQ(game.Synonyms[1], (SynonymEntry{"get; pick up; seize", "hold"}));
    EXPECT_EQ(game.Synonyms[2], (SynonymEntry{"x", "examine"}));
}

TEST(Collectables, AreShownByNameOrWithTheirDefinitions) {
    RunningProgram p;
    p.StartWith(CrLf("define game <x>\ncollectables <gold p=0 [!]; luck p=0 [!]; hp p=0 [!]>\nend define\n"));
    WhenOpen<frmEditCollectables>([](frmEditCollectables& form) {
        const auto& names = Find<QListWidget>(form, "lstNames");
        const auto& definitions = Find<QListWidget>(form, "lstCollectables");
        EXPECT_TRUE(names.isVisible() && !definitions.isVisible());
        SelectRow(form, "lstNames", 1);
        EXPECT_EQ(definitions.currentRow(), 1);
        Click(form, "optExtended");
        EXPECT_TRUE(!names.isVisible() && definitions.isVisible());
        EXPECT_EQ(Find<QLabel>(form, "lblCollectables").buddy(), &definitions);
        SelectRow(form, "lstCollectables", 2);
        EXPECT_EQ(names.currentRow(), 2);
        SelectRow(form, "lstCollectables", 0);
        PressKey(form, "lstCollectables", Qt::Key_Delete);
        EXPECT_EQ(Rows(form, "lstNames"), (QStringList{"luck", "hp"}));
        EXPECT_EQ(names.currentRow(), 0);
        Click(form, "butRemove");
        Click(form, "butOK");
    });
    p.Trigger("mnuViewCollectables");
    ASSERT_EQ(p.game.Collectables.Count(), 1);
    EXPECT_EQ(p.game.Collectables[1], (Collectable{"hp p=0 [!]", "hp"}));
}

TEST(Collectables, AreStoredOnceTheirSettingsAreRight) {
    RunningProgram p;
    p.store.setValue("Options/SpecialMsgBox", "Yes");
    p.StartWith(CrLf("define game <x>\nend define\n"));
    std::string told;
    const auto tell = [&told](frmOrbMsgBox& box) { told += TextOf(box, "lblMsg") + '\n'; };
    WhenOpen<frmEditCollectables>([&](frmEditCollectables& form) {
        Click(form, "butEdit"); // Nothing is selected, so nothing happens.
        WhenOpen<frmEditCollectableSettings>([](auto& edit) { Click(edit, "butCancel"); });
        Click(form, "butAdd");
        EXPECT_EQ(Rows(form, "lstCollectables"),
                  QStringList{"Collectable-Name p=0 [Enter display text here]"});
        WhenOpen<frmEditCollectableSettings>([&](frmEditCollectableSettings& edit) {
            const auto boxes = [&edit] {
                std::string on;
                for (const char* box : {"txtMin", "txtMax", "txtDisplay"})
                    on += IsEnabled(edit, box) ? std::string(box) + ' ' : "";
                return on + TextOf(edit, "txtDisplay");
            };
            EXPECT_EQ(boxes(), "txtDisplay Enter display text here");
            Click(edit, "chkDontDisplay");
            EXPECT_EQ(boxes(), "");
            Click(edit, "chkDontDisplay");
            PressKey(edit, "cmbType", Qt::Key_End); // Chooses "Range".
            EXPECT_EQ(boxes(), "txtMin txtMax txtDisplay ");
            for (const auto& [box, text] :
                 {std::pair("txtName", "my temp"), {"txtMin", "0"}, {"txtMax", "10"}, {"txtInitValue", "11"}})
                SetText(edit, box, text);
            Click(edit, "chkDontDisplayZero");
            WhenOpen<frmOrbMsgBox>([&](frmOrbMsgBox& box) {
                tell(box);
                WhenOpen<frmOrbMsgBox>(tell, 1000);
            });
            Click(edit, "butOK"); // The form stays open.
            EXPECT_EQ(edit.focusWidget()->objectName(), "txtInitValue");
            SetText(edit, "txtInitValue", "10");
            SetText(edit, "txtName", "temp");
            Click(edit, "butOK");
        });
        PressKey(form, "lstNames", Qt::Key_Return);
        Click(form, "butOK");
    });
    p.Trigger("mnuViewCollectables");
    EXPECT_EQ(told, "Collectable name must not have any spaces\n"
                    "Initial value must be within user-defined range\n");
    ASSERT_EQ(p.game.Collectables.Count(), 1);
    EXPECT_EQ(p.game.Collectables[1], (Collectable{"temp d0r10=10", "temp"}));
}

} // namespace
} // namespace zem::test
