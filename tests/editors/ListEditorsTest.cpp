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

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>

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

class ListEditors : public test::ScriptFixture {
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

    void Type(QWidget& form, const char* box, const char* text) {
        Find<QLineEdit>(form, box).setText(QLatin1String(text));
    }
};

// ---- Objects with scripts

TEST_F(ListEditors, KeepsObjectsAndTheirScriptsTogether) {
    frmObjectInteract form(scripts, QStringLiteral("Give-able objects"), QStringLiteral("Given to A&B:"),
                           {{"a", "msg <1>"}, {"b", "msg <2>"}, {"c", "msg <3>"}});
    form.show();
    auto& list = Find<QListWidget>(form, "lstItems");
    Click(form, "butEdit"); // nothing selected, nothing happens
    Click(form, "butRemove");
    list.setCurrentRow(1);
    QTest::keyClick(&list, Qt::Key_Delete);
    dialogs.Text(QStringLiteral("New item: Enter the name of the item to add: []"), QString());
    Click(form, "butAdd");
    dialogs.Text(QStringLiteral("New item: Enter the name of the item to add: []"), QStringLiteral("key"));
    WhenOpen<frmScriptLines>([&list](frmScriptLines& script) {
        EXPECT_EQ(list.currentItem()->text(), QStringLiteral("key"));
        Click(script, "butOK");
    });
    Click(form, "butAdd");
    ASSERT_EQ(form.Objects().size(), 3U);
    EXPECT_EQ(form.Objects()[1], (ScriptPair{"c", "msg <3>"}));
    EXPECT_EQ(form.Objects()[2].Key, "key");
    EXPECT_EQ(Find<QLabel>(form, "lblTitle").text(), QStringLiteral("Given to A&&B:"));

    std::vector<ScriptPair> uses = {{"a", ""}};
    WhenOpen<frmObjectInteract>([](frmObjectInteract& inner) {
        Find<QListWidget>(inner, "lstItems").setCurrentRow(0);
        Click(inner, "butRemove");
        Click(inner, "butCancel");
    });
    EditUses(scripts, QStringLiteral("x"), uses, nullptr);
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
    EXPECT_EQ(Rows(names), (QStringList{"luck", "hp"}));
    EXPECT_EQ(names.currentRow(), 0);
    Click(form, "butRemove");
    Click(form, "butOK");
    ASSERT_EQ(game.Collectables.Count(), 1);
    EXPECT_EQ(game.Collectables[1], (Collectable{"hp p=0 [!]", "hp"}));
}

TEST_F(ListEditors, EditsACollectable) {
    frmEditCollectables form(door, shell, dialogs);
    form.show();
    auto& definitions = Find<QListWidget>(form, "lstCollectables");
    Click(form, "butEdit"); // nothing selected, nothing happens
    WhenOpen<frmEditCollectableSettings>([](frmEditCollectableSettings& edit) { Click(edit, "butCancel"); });
    Click(form, "butAdd");
    EXPECT_EQ(Rows(definitions), QStringList{"Collectable-Name p=0 [Enter display text here]"});

    WhenOpen<frmEditCollectableSettings>([this](frmEditCollectableSettings& edit) {
        auto& type = Find<QComboBox>(edit, "cmbType");
        auto& max = Find<QLineEdit>(edit, "txtMax");
        auto& display = Find<QLineEdit>(edit, "txtDisplay");
        auto& hidden = Find<QCheckBox>(edit, "chkDontDisplay");
        EXPECT_EQ(type.currentText(), QStringLiteral("Positive number"));
        EXPECT_FALSE(max.isEnabled() || hidden.isChecked());
        hidden.click();
        EXPECT_TRUE(display.text().isEmpty() && !display.isEnabled());
        hidden.click();
        EXPECT_TRUE(display.isEnabled());
        QTest::keyClick(&type, Qt::Key_End);
        EXPECT_TRUE(max.isEnabled());
        Type(edit, "txtName", "my temp");
        Type(edit, "txtMin", "0");
        Type(edit, "txtMax", "10");
        Type(edit, "txtInitValue", "11");
        Find<QCheckBox>(edit, "chkDontDisplayZero").click();
        dialogs.Message(QStringLiteral("Error: Collectable name must not have any spaces"));
        dialogs.Message(QStringLiteral("Error: Initial value must be within user-defined range"));
        Click(edit, "butOK"); // stays open
        EXPECT_EQ(edit.focusWidget()->objectName(), QStringLiteral("txtInitValue"));
        Type(edit, "txtInitValue", "10");
        Type(edit, "txtName", "temp");
        Click(edit, "butOK");
    });
    QTest::keyClick(&Find<QListWidget>(form, "lstNames"), Qt::Key_Return);
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
    dialogs.Text(QStringLiteral("New item: Please enter a name for this item: []"), QStringLiteral("lamp"));
    Click(items, "butAdd");
    EXPECT_EQ(list.item(1)->checkState(), Qt::Unchecked);
    QTest::keyClick(&list, Qt::Key_Space); // ticks the row that is selected
    dialogs.Text(QStringLiteral("New item: Please enter a name for this item: []"), {});
    Click(items, "butAdd");
    list.setCurrentRow(0);
    Click(items, "butRemove");
    Click(items, "butOK");
    ASSERT_EQ(game.Items.Count(), 1);
    EXPECT_EQ(game.Items[1], (ItemEntry{"lamp", true}));

    frmIncludedLibraries libraries(door, dialogs);
    libraries.show();
    Click(libraries, "butRemove"); // nothing selected, nothing happens
    dialogs.Text(QStringLiteral("Add library: Enter filename of library (including extension) []"),
                 QStringLiteral("not there.kel"));
    QTest::keyClick(&Find<QListWidget>(libraries, "lstLibs"), Qt::Key_Insert);
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
        EXPECT_EQ(Find<QPushButton>(form, "butRename").isEnabled(), canRename) << row;
    }
    QTest::keyClicks(&box, QStringLiteral("X"));
    EXPECT_EQ(game.TextSections[2].Text, "Xof Intro");
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_EQ(game.TextSections[2].Text, "X\r\nof Intro");
    game.Modified = false;
    QTest::keyClick(&box, Qt::Key_Left);
    EXPECT_TRUE(game.Modified) << "whatever the key does";

    dialogs.Text(
        QStringLiteral("Rename text section: Please enter a new name for this text section: [Intro]"),
        QStringLiteral("win"));
    Click(form, "butRename");
    EXPECT_EQ(game.TextSections[2].Name, "win");
    EXPECT_FALSE(Find<QPushButton>(form, "butRename").isEnabled());
    dialogs.Text(QStringLiteral("New text section: Enter a name for this text section: []"),
                 QStringLiteral("win"));
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
        EXPECT_FALSE(Find<PlainTextBox>(form, "txtText").isEnabled());
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
    EXPECT_EQ(Rows(list), (QStringList{"greet", "~Internal", "greet"}));
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
    dialogs.Text(QStringLiteral("New Procedure: Enter a name for this new procedure: []"),
                 QStringLiteral("wave"));
    expectScript("");
    Click(form, "butAdd");
    EXPECT_EQ(list.currentRow(), 3);
    list.setCurrentRow(0);
    Click(form, "butRemove");
    EXPECT_EQ(Rows(list), (QStringList{"~Internal", "greet", "wave"}));
    dialogs.Text(QStringLiteral("New Procedure: Enter a name for this new procedure: []"),
                 QStringLiteral("~INTERNAL PROCEDURE x"));
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
    WhenOpen<frmSynonymEditor>([this](frmSynonymEditor& editor) {
        auto& words = Find<QListWidget>(editor, "lstWords");
        EXPECT_EQ(Rows(words), (QStringList{"get", "take", "pick up", ""}));
        words.setCurrentRow(3);
        Click(editor, "butRemove");
        words.setCurrentRow(1);
        Click(editor, "butRemove");
        dialogs.Text(
            QStringLiteral("New Word: Please enter a new word that will be converted to this synonym: []"),
            QStringLiteral("seize"));
        Click(editor, "butAdd");
        Type(editor, "txtConvertTo", "hold");
        Click(editor, "butOK");
    });
    Click(form, "butEdit");
    WhenOpen<frmSynonymEditor>([](frmSynonymEditor& editor) {
        Find<QLineEdit>(editor, "txtConvertTo").clear();
        Click(editor, "butCancel");
    });
    QTest::keyClick(&list, Qt::Key_Return);
    WhenOpen<frmSynonymEditor>([this](frmSynonymEditor& editor) {
        dialogs.Message(QStringLiteral("ZEM: You must specify some words to convert to this synonym."));
        Click(editor, "butOK");
        dialogs.Text(
            QStringLiteral("New Word: Please enter a new word that will be converted to this synonym: []"),
            QStringLiteral("x"));
        Click(editor, "butAdd");
        dialogs.Message(QStringLiteral("ZEM: You must specify a word to convert these synonyms to."));
        Click(editor, "butOK");
        Type(editor, "txtConvertTo", "examine");
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
} // namespace zem
