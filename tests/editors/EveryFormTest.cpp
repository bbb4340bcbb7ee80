// Opens every editor from the main window, on a game in which everything is filled, and compares the file
// that would be saved before and after.
#include "support/EditorGame.h"
#include "support/Lines.h"
#include "support/RunningProgram.h"
#include "support/ScriptForms.h"

#include <gtest/gtest.h>

namespace zem::test {
namespace {

using Change = std::function<void(RunningProgram&, QDialog&)>;

Change Set(const char* box, const char* text) {
    return [=](RunningProgram&, QDialog& form) { SetText(form, box, text); };
}

Change Toggle(const char* box) {
    return [=](RunningProgram&, QDialog& form) { Find<QCheckBox>(form, box).click(); };
}

/// Empties the script that a button edits.
Change ClearScript(const char* button) {
    return [=](RunningProgram&, QDialog& form) {
        CutNextScript();
        Click(form, button);
    };
}

/// Removes the first row of a list.
Change RemoveRow(const char* list, const char* button = "butRemove") {
    return [=](RunningProgram&, QDialog& form) {
        SelectRow(form, list, 0);
        Click(form, button);
    };
}

/// Presses a button that opens another form, makes a change there and closes it with OK.
Change Within(const char* button, const Change& change, const char* close = "butOK") {
    return [=](RunningProgram& p, QDialog& form) {
        WhenOpen<QDialog>([=, &p](QDialog& inner) {
            change(p, inner);
            Click(inner, close);
        });
        Click(form, button);
    };
}

Change Answering(const char* question, const char* answer, const Change& change) {
    return [=](RunningProgram& p, QDialog& form) {
        p.dialogs.Text(question, QString(answer));
        change(p, form);
    };
}

Change Press(const char* button) {
    return [=](RunningProgram&, QDialog& form) { Click(form, button); };
}

struct Edit {
    const char* what;
    Change change;
    const char* difference; // in the saved file
};

struct EditorCase {
    const char* caption;
    std::function<void(RunningProgram&)> open;
    std::vector<Edit> edits;
};

std::function<void(RunningProgram&)> Menu(const char* action) {
    return [=](RunningProgram& p) { p.Trigger(action); };
}

std::function<void(RunningProgram&)> Row(const char* list, const char* button) {
    return [=](RunningProgram& p) {
        p.Select("lstRooms", 0);
        if (std::string(list) != "lstRooms")
            p.Select(list, 0);
        p.Click(button);
    };
}

void PrintTo(const EditorCase& c, std::ostream* out) {
    *out << c.caption;
}

const Change NewTags = Set("txtTags", "new\nlines\n");

const std::vector<EditorCase> Editors = {
    {"Room Properties",
     Row("lstRooms", "butEditRoom"),
     {{"alias", Set("txtAlias", "x"), "-alias <the hall>|+alias <x>"},
      {"prefix", Set("txtPrefix", ""), "-prefix <the>"},
      {"look", Set("txtDescription", "Wide."), "-look <A\xA0long hall.\r>|+look <Wide.>"},
      {"indescription", Set("txtInDescription", "On"), "-indescription  <You are in>|+indescription  <On>"},
      {"out", Set("cmbRoomNames_0", "Hall"), "-out <Yard> msg <bye>|+out <Hall> msg <bye>"},
      {"north", Set("cmbRoomNames_1", "[not accessible]"), "-north msg <Locked.>"},
      {"south", Set("cmbRoomNames_2", "no such room"), "-south <Yard>|+south <no such room>"},
      {"east", Set("cmbRoomNames_3", "Hall"), "+east <Hall>"},
      {"west", Set("cmbRoomNames_4", "Hall"), "+west <Hall>"},
      {"northwest", Set("cmbRoomNames_5", "Hall"), "+northwest <Hall>"},
      {"northeast", Set("cmbRoomNames_6", "Hall"), "+northeast <Hall>"},
      {"southwest", Set("cmbRoomNames_7", "Hall"), "+southwest <Hall>"},
      {"southeast", Set("cmbRoomNames_8", "Hall"), "+southeast <Hall>"},
      {"enter script", ClearScript("butEditScript"), "-script msg <enter>"},
      {"description script", ClearScript("butEditDescriptionScript"), "-description msg <describe>"},
      {"commands", Within("butCommands", RemoveRow("lstCommands")), "-command <sing> msg <La.>"},
      {"uses", Within("butEditUse", RemoveRow("lstItems")), "-use <rope> msg <x>"},
      {"tags", Within("butMoreTags", NewTags), "-weather <fine>|+new|+lines"}}},
    {"Character Properties",
     Row("lstCharacters", "butEditObj_0"),
     {{"name", Set("txtThingName", "Rob"), "-define character <Bob>|+define character <Rob>"},
      {"prefix", Set("txtPrefix", "x"), "-prefix <old>|+prefix <x>"},
      {"suffix", Set("txtSuffix", "x"), "-suffix <the smith>|+suffix <x>"},
      {"gender", Set("txtGender", "she"), "-gender <he>|+gender <she>"},
      {"look", ClearScript("butLookAction"), "-look msg <A man.>"},
      {"speak", ClearScript("butSpeakAction"), "-speak msg <Hi.>"},
      {"hidden", Toggle("chkHidden"), "+hidden"},
      {"invisible", Toggle("chkInvisible"), "-invisible"},
      {"gives", Within("butEditGive", RemoveRow("lstItems")), "-give <coin> msg <Thanks.>"},
      {"uses", Within("butEditUse", RemoveRow("lstItems")), "-use <hammer> msg <Ouch.>"},
      {"tags", Within("butMoreTags", NewTags), "-weight <80>|+new|+lines"}}},
    {"Object Properties",
     Row("lstObjects", "butEditObj_1"),
     {{"name", Set("txtThingName", "lantern"), "-define object <lamp>|+define object <lantern>"},
      {"prefix", Set("txtPrefix", "x"), "-prefix <a>|+prefix <x>"},
      {"suffix, which is not written", Set("txtSuffix", "x"), ""},
      {"look", ClearScript("butLookAction"), "-look msg <Bright.>"},
      {"take", ClearScript("butSpeakAction"), "-take msg <Taken.>"},
      {"hidden", Toggle("chkHidden"), "-hidden"},
      {"invisible", Toggle("chkInvisible"), "+invisible"},
      {"a grey box",
       [](RunningProgram&, QDialog& form) {
           auto& box = Find<QCheckBox>(form, "chkHidden");
           box.setTristate(true);
           box.setCheckState(Qt::PartiallyChecked);
       },
       "-hidden"},
      {"uses", Within("butEditUse", RemoveRow("lstItems")), "-use <oil> msg <It burns.>"},
      {"tags", Within("butMoreTags", NewTags), "-colour <red>|+new|+lines"}}},
    {"Game Properties",
     Menu("mnuViewGameProperties"),
     {{"name", Set("txtGameName", "x"), "-define game <To\xA0wer>|+define game <x>"},
      {"start", Set("cmbRoomNames", "Yard"), "-start <Nowhere>|+start <Yard>"},
      {"author", Set("txtGameAuthor", "x"), "-game author <A\x81>|+game author <x>"},
      {"version", Set("txtGameVersion", "3"), "-game version <2>|+game version <3>"},
      {"copyright", Set("txtGameCopyright", "x"), "-game copyright <2026>|+game copyright <x>"},
      {"info", Set("txtGameInfo", "a\nb|nc"), "-game info <one|ntwo|n>|+game info <a|nb|nc>"},
      {"font", Set("txtFontName", ""), "-default fontname <Arial>|+default fontname <>"},
      {"font size", Set("txtFontSize", " 12 "), "-default fontsize <-10>|+default fontsize <12>"},
      {"start script", ClearScript("butEditStartScript"), "-startscript msg <go>"},
      {"description", ClearScript("butEditDescriptionScript"), "-description msg <look>"},
      {"before turn", ClearScript("Command1"), "-beforeturn msg <before>"},
      {"after turn", ClearScript("Command2"), "-afterturn msg <after>"},
      {"no debug", Toggle("chkNoDebug"), "-nodebug"},
      {"commands", Within("butCommands", RemoveRow("lstCommands")), "-command <wait> msg <Later.>"},
      {"uses", Within("butUseableObjects", RemoveRow("lstItems")), "-use <rope> msg <No.>"},
      {"tags", Within("butMiscTags", NewTags), "-tag <one>|-t\xA0g\r <two>|+new|+lines"}}},
    {"Items",
     Menu("mnuViewItems"),
     {{"remove", RemoveRow("lstItems"),
       "-items <lamp; key; coin>|-startitems <lamp, coin>|"
       "+items <key; coin>|+startitems <coin>"},
      {"tick",
       [](RunningProgram&, QDialog& form) {
           Find<QListWidget>(form, "lstItems").item(1)->setCheckState(Qt::Checked);
       },
       "-startitems <lamp, coin>|+startitems <lamp, key, coin>"},
      {"add", Answering("New item: Please enter a name for this item: []", "oar", Press("butAdd")),
       "-items <lamp; key; coin>|+items <lamp; key; coin; oar>"}}},
    {"Collectables",
     Menu("mnuViewCollectables"),
     {{"remove", RemoveRow("lstNames"),
       "-collectables <score p=0 [! points]; temp d0r40=20 []>|+collectables <temp d0r40=20 []>"}}},
    {"Misc Kel Editor",
     Menu("mnuViewMiscKEL"),
     {{"text", Set("txtTags", "define x\nend define\n"),
       "-define timer <fog>|-interval <5>|-end define|-|+define x|+end define"}}},
    {"Included Libraries",
     Menu("mnuViewLibraries"),
     {{"remove", RemoveRow("lstLibs"), "-!include <one.kel>"},
      {"add",
       Answering("Add library: Enter filename of library (including extension) []", "b.kel", Press("butAdd")),
       "+!include <b.kel>"}}},
    {"Edit Error Messsages",
     Menu("mnuEditErrorMessages"),
     {{"text",
       [](RunningProgram&, QDialog& form) {
           auto& list = Find<QListWidget>(form, "lstErrors");
           list.setCurrentItem(list.findItems("The player cannot go that way", Qt::MatchExactly).value(0));
           SetText(form, "txtError", "No.");
       },
       "-error <badgo;Not there.>|+error <badgo;No.>"}}},
    {"Synonyms", Menu("mnuViewSynonyms"), {{"remove", RemoveRow("lstSynonyms"), "-get; take = grab"}}},
};

class EveryForm : public testing::TestWithParam<EditorCase> {
protected:
    /// Opens the editor, makes the change and presses the button; returns what the saved file shows of it.
    std::string DifferenceAfter(const Change& change, const char* button) {
        RunningProgram p;
        p.StartWith(EditorGame());
        WhenOpen<QDialog>([&](QDialog& form) {
            EXPECT_EQ(form.windowTitle(), QLatin1String(GetParam().caption));
            change(p, form);
            Click(form, button);
            EXPECT_FALSE(form.isVisible());
        });
        GetParam().open(p);
        EXPECT_EQ(p.game.Modified, std::string(button) == "butOK");
        p.game.Modified = false;
        return Difference(EditorGame(), SaveToBytes(p.game));
    }
};

TEST_P(EveryForm, ChangesNothingByItself) {
    const Change none = [](RunningProgram&, QDialog&) {};
    EXPECT_EQ(DifferenceAfter(none, "butOK"), "");
    EXPECT_EQ(DifferenceAfter(none, "butCancel"), "");
}

TEST_P(EveryForm, ChangesOnOkJustWhatWasChangedAndNothingOnCancel) {
    for (const Edit& edit : GetParam().edits) {
        SCOPED_TRACE(edit.what);
        EXPECT_EQ(DifferenceAfter(edit.change, "butOK"), edit.difference);
        EXPECT_EQ(DifferenceAfter(edit.change, "butCancel"), "");
    }
}

INSTANTIATE_TEST_SUITE_P(Editors, EveryForm, testing::ValuesIn(Editors), [](const auto& info) {
    std::string name = info.param.caption;
    std::erase(name, ' ');
    return name;
});

} // namespace
} // namespace zem::test
