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
#include "forms/PlainTextBox.h"
#include "script/frmScriptLines.h"
#include "support/Games.h"
#include "support/ScriptFixture.h"
#include "support/WhenOpen.h"

#include <QLabel>
#include <QRadioButton>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

class ListEditors : public ScriptFixture {
protected:
    /// Of what the shell does, these editors only show messages.
    class Shell : public EditorShell {
    public:
        explicit Shell(Dialogs& dialogs) : dialogs_(dialogs) {}
        void ShowMessage(const QString& text, const QString& title) override {
            dialogs_.ShowMessageBox(nullptr, text, title);
        }
        void ShowHelp(const QString&, QWidget*) override {}
        void EditPlayerCommands(QWidget*, std::vector<ScriptPair>&) override {}
        QSize TagEditorSize() const override { return {}; }
        void StoreTagEditorSize(const QSize&) override {}

    private:
        Dialogs& dialogs_;
    };

    Shell shell{dialogs};
};

// ---- Objects with scripts

TEST_F(ListEditors, KeepsObjectsAndTheirScriptsTogether) {
    frmObjectInteract form(scripts, "Give-able objects",
                           "Given to A&B:", {{"a", "msg <1>"}, {"b", "msg <2>"}, {"c", "msg <3>"}});
    form.show();
    auto& list = Find<QListWidget>(form, "lstItems");
    Click(form, "butEdit"); // nothing selected, nothing happens
    Click(form, "butRemove");
    list.setCurrentRow(1);
    QTest::keyClick(&list, Qt::Key_Delete);
    dialogs.Text("New item: Enter the name of the item to add: []", QString());
    Click(form, "butAdd");
    dialogs.Text("New item: Enter the name of the item to add: []", "key");
    WhenOpen<frmScriptLines>([&list](frmScriptLines& script) {
        EXPECT_EQ(list.currentItem()->text(), "key");
        Click(script, "butOK");
    });
    Click(form, "butAdd");
    ASSERT_EQ(form.Objects().size(), 3U);
    EXPECT_EQ(form.Objects()[1], (ScriptPair{"c", "msg <3>"}));
    EXPECT_EQ(form.Objects()[2].Key, "key");
    EXPECT_EQ(TextOf(form, "lblTitle"), "Given to A&&B:");

    std::vector<ScriptPair> uses = {{"a", ""}};
    WhenOpen<frmObjectInteract>([](frmObjectInteract& inner) {
        SelectRow(inner, "lstItems", 0);
        Click(inner, "butRemove");
        Click(inner, "butCancel");
    });
    EditUses(scripts, "x", uses, nullptr);
    EXPECT_EQ(uses.size(), 1U);
}

// ---- Collectables

TEST_F(ListEditors, ShowsCollectablesByNameOrWithTheirDefinitions) {
    for (const char* name : {"gold", "luck", "hp"})
        game.Collectables.Append({std::string(name) + " p=0 [!]", name});
    frmEditCollectables form(door, shell, dialogs);
    form.show();
    auto& names = Find<QListWidget>(form, "lstNames");
    auto& definitions = Find<QListWidget>(form, "lstCollectables");
    EXPECT_TRUE(names.isVisible() && !definitions.isVisible());
    names.setCurrentRow(1);
    EXPECT_EQ(definitions.currentRow(), 1);
    QTest::mouseClick(&Find<QRadioButton>(form, "optExtended"), Qt::LeftButton);
    EXPECT_TRUE(!names.isVisible() && definitions.isVisible());
    EXPECT_EQ(Find<QLabel>(form, "lblCollectables").buddy(), &definitions);
    definitions.setCurrentRow(2);
    EXPECT_EQ(names.currentRow(), 2);
    definitions.setCurrentRow(0);
    QTest::keyClick(&definitions, Qt::Key_Delete);
    EXPECT_EQ(Rows(form, "lstNames"), (QStringList{"luck", "hp"}));
    EXPECT_EQ(names.currentRow(), 0);
    Click(form, "butRemove");
    Click(form, "butOK");
    ASSERT_EQ(game.Collectables.Count(), 1);
    EXPECT_EQ(game.Collectables[1], (Collectable{"hp p=0 [!]", "hp"}));
}

TEST_F(ListEditors, EditsACollectable) {
    frmEditCollectables form(door, shell, dialogs);
    form.show();
    Click(form, "butEdit"); // nothing selected, nothing happens
    WhenOpen<frmEditCollectableSettings>([](frmEditCollectableSettings& edit) { Click(edit, "butCancel"); });
    Click(form, "butAdd");
    EXPECT_EQ(Rows(form, "lstCollectables"), QStringList{"Collectable-Name p=0 [Enter display text here]"});

    WhenOpen<frmEditCollectableSettings>([this](frmEditCollectableSettings& edit) {
        auto& type = Find<QComboBox>(edit, "cmbType");
        auto& max = Find<QLineEdit>(edit, "txtMax");
        auto& display = Find<QLineEdit>(edit, "txtDisplay");
        auto& hidden = Find<QCheckBox>(edit, "chkDontDisplay");
        EXPECT_EQ(type.currentText(), "Positive number");
        EXPECT_FALSE(max.isEnabled() || hidden.isChecked());
        hidden.click();
        EXPECT_TRUE(display.text().isEmpty() && !display.isEnabled());
        hidden.click();
        EXPECT_TRUE(display.isEnabled());
        QTest::keyClick(&type, Qt::Key_End);
        EXPECT_TRUE(max.isEnabled());
        SetText(edit, "txtName", "my temp");
        SetText(edit, "txtMin", "0");
        SetText(edit, "txtMax", "10");
        SetText(edit, "txtInitValue", "11");
        Find<QCheckBox>(edit, "chkDontDisplayZero").click();
        dialogs.Message("Error: Collectable name must not have any spaces");
        dialogs.Message("Error: Initial value must be within user-defined range");
        Click(edit, "butOK"); // stays open
        EXPECT_EQ(edit.focusWidget()->objectName(), "txtInitValue");
        SetText(edit, "txtInitValue", "10");
        SetText(edit, "txtName", "temp");
        Click(edit, "butOK");
    });
    PressKey(form, "lstNames", Qt::Key_Return);
    Click(form, "butOK");
    ASSERT_EQ(game.Collectables.Count(), 1);
    EXPECT_EQ(game.Collectables[1], (Collectable{"temp d0r10=10", "temp"}));
}

// ---- Items and libraries

TEST_F(ListEditors, RegistersItemsAndLibrariesUnderAnyName) {
    game.Items.Append({"lamp", true});
    game.Includes.Append("a.kel");
    frmEditItems items(door, dialogs);
    items.show();
    auto& list = Find<QListWidget>(items, "lstItems");
    dialogs.Text("New item: Please enter a name for this item: []", "lamp");
    Click(items, "butAdd");
    EXPECT_EQ(list.item(1)->checkState(), Qt::Unchecked);
    QTest::keyClick(&list, Qt::Key_Space); // ticks the row that is selected
    dialogs.Text("New item: Please enter a name for this item: []", {});
    Click(items, "butAdd");
    list.setCurrentRow(0);
    Click(items, "butRemove");
    Click(items, "butOK");
    ASSERT_EQ(game.Items.Count(), 1);
    EXPECT_EQ(game.Items[1], (ItemEntry{"lamp", true}));

    frmIncludedLibraries libraries(door, dialogs);
    libraries.show();
    Click(libraries, "butRemove"); // nothing selected, nothing happens
    dialogs.Text("Add library: Enter filename of library (including extension) []", "not there.kel");
    PressKey(libraries, "lstLibs", Qt::Key_Insert);
    Click(libraries, "butOK");
    EXPECT_EQ(game.Includes.Count(), 2);
    EXPECT_EQ(game.Includes[2], "not there.kel");
}

// ---- Text sections

TEST_F(ListEditors, WritesTextsAtOnceAndRenamesAllButThreeOfThem) {
    for (const char* name : {"intro", "Intro", "lose", "win"})
        game.TextSections.Append({name, "of " + std::string(name)});
    frmTextSectionEdit form(door, dialogs);
    form.show();
    auto& list = Find<QListWidget>(form, "cmbTextSections");
    auto& box = Find<PlainTextBox>(form, "txtText");
    EXPECT_EQ(list.currentRow(), 0);
    EXPECT_TRUE(door.changes.empty()) << "showing a text changes nothing";
    for (const auto& [row, canRename] : {std::pair(0, false), {2, false}, {3, false}, {1, true}}) {
        list.setCurrentRow(row);
        EXPECT_EQ(box.Text(), game.TextSections[row + 1].Text);
        EXPECT_EQ(IsEnabled(form, "butRename"), canRename) << row;
    }
    QTest::keyClicks(&box, "X");
    EXPECT_EQ(game.TextSections[2].Text, "Xof Intro");
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_EQ(game.TextSections[2].Text, "X\r\nof Intro");
    game.Modified = false;
    QTest::keyClick(&box, Qt::Key_Left);
    EXPECT_TRUE(game.Modified) << "whatever the key does";

    dialogs.Text("Rename text section: Please enter a new name for this text section: [Intro]", "win");
    Click(form, "butRename");
    EXPECT_EQ(game.TextSections[2].Name, "win");
    EXPECT_FALSE(IsEnabled(form, "butRename"));
    dialogs.Text("New text section: Enter a name for this text section: []", "win");
    Click(form, "butAdd");
    EXPECT_EQ(list.currentRow(), 4);
    EXPECT_EQ(box.Text(), "Enter text here...");
    EXPECT_EQ(game.TextSections[5], (TextSection{"win", "Enter text here..."}));
    Click(form, "butDelete");
    EXPECT_EQ(game.TextSections.Count(), 5) << "they cannot be deleted here";
}

TEST_F(ListEditors, MarksTheGameAsChangedHoweverTheTextsAreClosed) {
    for (const auto& close : {+[](QDialog& form) { Click(form, "butClose"); },
                              +[](QDialog& form) { QTest::keyClick(&form, Qt::Key_Escape); },
                              +[](QDialog& form) { form.close(); }}) {
        game.Modified = false;
        frmTextSectionEdit form(door, dialogs); // of no text at all
        form.show();
        EXPECT_FALSE(IsEnabled(form, "txtText"));
        Click(form, "butRename");
        close(form);
        EXPECT_FALSE(form.isVisible());
        EXPECT_TRUE(game.Modified);
        EXPECT_TRUE(door.changes.empty());
    }
}

// ---- Procedures

TEST_F(ListEditors, HidesTheProceduresThatTheEditorMakes) {
    for (const char* name : {"~internal procedure 2", "greet", "~Internal", "greet"})
        game.Procedures.Append({name, "msg <" + std::to_string(game.Procedures.Count()) + ">"});
    frmProcedureEditor form(scripts);
    form.show();
    auto& list = Find<QListWidget>(form, "cmbProcedures");
    EXPECT_EQ(Rows(form, "cmbProcedures"), (QStringList{"greet", "~Internal", "greet"}));
    Click(form, "butEdit"); // nothing selected, nothing happens
    Click(form, "butRemove");
    list.setCurrentRow(2);
    const auto expectScript = [](const char* value) {
        WhenOpen<frmScriptLines>([value](frmScriptLines& script) {
            Click(script, "butOK");
            EXPECT_EQ(script.Value(), value);
        });
    };
    expectScript("msg <3>"); // of this one, not of the other with its name
    QTest::keyClick(&list, Qt::Key_Return);
    dialogs.Text("New Procedure: Enter a name for this new procedure: []", "wave");
    expectScript("");
    Click(form, "butAdd");
    EXPECT_EQ(list.currentRow(), 3);
    list.setCurrentRow(0);
    Click(form, "butRemove");
    EXPECT_EQ(Rows(form, "cmbProcedures"), (QStringList{"~Internal", "greet", "wave"}));
    dialogs.Text("New Procedure: Enter a name for this new procedure: []", "~INTERNAL PROCEDURE x");
    Click(form, "butAdd"); // which hides it
    Click(form, "butClose");
    std::vector<std::string> names;
    for (const Procedure& procedure : game.Procedures)
        names.push_back(procedure.Name + procedure.Script);
    EXPECT_EQ(names, (std::vector<std::string>{"~internal procedure 2msg <0>", "~Internalmsg <2>",
                                               "greetmsg <3>", "wave", "~INTERNAL PROCEDURE x"}));
}

// ---- Synonyms

TEST_F(ListEditors, EditsSynonyms) {
    game.Synonyms.Append({"get;take ; pick up;", "grab"});
    game.Synonyms.Append({"l", "look"});
    frmSynonyms form(door, dialogs);
    form.show();
    auto& list = Find<QListWidget>(form, "lstSynonyms");
    Click(form, "butEdit"); // nothing selected, nothing happens
    list.setCurrentRow(0);
    WhenOpen<frmSynonymEditor>([&](frmSynonymEditor& editor) {
        auto& words = Find<QListWidget>(editor, "lstWords");
        EXPECT_EQ(Rows(editor, "lstWords"), (QStringList{"get", "take", "pick up", ""}));
        words.setCurrentRow(3);
        Click(editor, "butRemove");
        words.setCurrentRow(1);
        Click(editor, "butRemove");
        dialogs.Text("New Word: Please enter a new word that will be converted to this synonym: []", "seize");
        Click(editor, "butAdd");
        SetText(editor, "txtConvertTo", "hold");
        Click(editor, "butOK");
    });
    Click(form, "butEdit");
    WhenOpen<frmSynonymEditor>([](frmSynonymEditor& editor) {
        SetText(editor, "txtConvertTo", "");
        Click(editor, "butCancel");
    });
    QTest::keyClick(&list, Qt::Key_Return);
    WhenOpen<frmSynonymEditor>([&](frmSynonymEditor& editor) {
        dialogs.Message("ZEM: You must specify some words to convert to this synonym.");
        Click(editor, "butOK");
        dialogs.Text("New Word: Please enter a new word that will be converted to this synonym: []", "x");
        Click(editor, "butAdd");
        dialogs.Message("ZEM: You must specify a word to convert these synonyms to.");
        Click(editor, "butOK");
        SetText(editor, "txtConvertTo", "examine");
        Click(editor, "butOK");
    });
    Click(form, "butAdd");
    WhenOpen<frmSynonymEditor>([](frmSynonymEditor& editor) { editor.close(); });
    Click(form, "butAdd");
    list.setCurrentRow(1);
    Click(form, "butRemove");
    EXPECT_EQ(game.Synonyms.Count(), 2) << "until OK";
    Click(form, "butOK");
    ASSERT_EQ(game.Synonyms.Count(), 2);
    EXPECT_EQ(game.Synonyms[1], (SynonymEntry{"get; pick up; seize", "hold"}));
    EXPECT_EQ(game.Synonyms[2], (SynonymEntry{"x", "examine"}));
}

} // namespace
} // namespace zem::test
