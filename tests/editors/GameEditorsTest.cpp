// The branches of the game, thing and tag editors that the comparison of saved files does not reach.
#include "app/frmOrbMsgBox.h"
#include "editors/frmEditCollectableSettings.h"
#include "editors/frmEditCollectables.h"
#include "editors/frmGameProperties.h"
#include "editors/frmObjectInteract.h"
#include "editors/frmRoomProperties.h"
#include "editors/frmTagEditor.h"
#include "editors/frmThingProperties.h"
#include "forms/NameBox.h"
#include "forms/PlainTextBox.h"
#include "support/Cases.h"
#include "support/EditorGame.h"
#include "support/RunningProgram.h"
#include "support/ScriptForms.h"

#include <QTextEdit>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

class GameEditors : public testing::Test {
protected:
    GameEditors() { p.StartWith(EditorGame()); }

    void OpenTags(const std::function<void(frmTagEditor&)>& use) {
        WhenOpen<frmTagEditor>(use);
        p.Trigger("mnuViewMiscKEL");
    }

    RunningProgram p;
};

TEST_F(GameEditors, RefusesAFontSizeThatIsNoNumber) {
    WhenOpen<frmGameProperties>([this](frmGameProperties& form) {
        auto& size = Find<QLineEdit>(form, "txtFontSize");
        for (const char* text : {"", "big", "12.5", "12pt", "32768", "-32769"}) {
            Click(form, "butActions");
            size.setText(QLatin1String(text));
            p.dialogs.Message(
                "Game Properties: The default font size must be a whole number from -32768 to 32767.");
            Click(form, "butOK");
            EXPECT_TRUE(form.isVisible() && size.isVisible()) << text;
            EXPECT_EQ(form.focusWidget(), &size);
        }
        SetText(form, "txtGameName", "Spire");
        size.setText("-32768");
        Click(form, "butOK");
    });
    p.Trigger("mnuViewGameProperties");
    EXPECT_EQ(p.game.DefaultFontSize, -32768);
    EXPECT_EQ(p.Title(), "\"Spire\" [" + p.folder.Path("game.kel") + "] - ZEM 1.0");
}

TEST_F(GameEditors, ShowsBreaksOfTheInfoTextAsLines) {
    p.game.GameInfo = "one|ntwo|N|nthree";
    WhenOpen<frmGameProperties>(
        [](frmGameProperties& form) { EXPECT_EQ(TextOf(form, "txtGameInfo"), "one\ntwo|N\nthree"); });
    p.Trigger("mnuViewGameProperties");
}

TEST_F(GameEditors, ShowsCharactersAndObjectsWithTheirOwnFields) {
    const auto texts = [](const QWidget& form) {
        std::string all = form.windowTitle().toStdString();
        for (const char* control : {"lblInteract", "butMoreTags", "txtSuffix"})
            all += '|' + TextOf(form, control);
        for (const char* control : {"lblGender", "txtGender", "butEditGive"})
            all += Find<QWidget>(form, control).isHidden() ? "|-" : "|+";
        return all;
    };
    for (const auto& [list, button, expected, uses] :
         Cases<const char*, const char*, std::string, std::string>{
             {"lstCharacters", "butEditObj_0",
              "Character Properties|'&SPEAK' action:|"
              "Edit &miscellaneous tags (this 'define character' block)|the smith|+|+|+",
              "Use-able objects|Objects that can be USEd on Bob:"},
             {"lstObjects", "butEditObj_1",
              "Object Properties|'&TAKE' action:|Edit &miscellaneous tags (this 'define object' "
              "block)||-|-|-",
              "Use-able objects|Objects that can be USEd on lamp:"}}) {
        p.Select("lstRooms", 0);
        p.Select(list, 0);
        std::string shown;
        std::string shownUses;
        WhenOpen<frmThingProperties>([&](frmThingProperties& form) {
            shown = texts(form);
            WhenOpen<frmObjectInteract>([&](frmObjectInteract& inner) {
                shownUses = inner.windowTitle().toStdString() + '|' + TextOf(inner, "lblTitle");
            });
            Click(form, "butMisc");
            Click(form, "butEditUse");
        });
        p.Click(button);
        EXPECT_EQ(shown, expected);
        EXPECT_EQ(shownUses, uses);
    }
    EXPECT_EQ(p.SelectedRow("lstObjects"), 0);
}

// As long as they are, and with bytes that a box of one line would like to change.
TEST_F(GameEditors, KeepsWhatIsNotTouched) {
    const std::string odd = "a\x01\x02 b" + std::string(40000, 'x');
    Room& room = p.game.Rooms.Edit(1);
    room.Alias = odd;
    p.game.Rooms.Edit(2).Name = odd;
    room.Out.Edit().Key = odd;
    p.Select("lstRooms", 0);
    WhenOpen<frmRoomProperties>([](frmRoomProperties& form) {
        auto& alias = Find<QLineEdit>(form, "txtAlias");
        QTest::keyClick(&alias, Qt::Key_End);
        QTest::keyClicks(&alias, "y");
        Find<NameBox>(form, "cmbRoomNames_1").setCurrentIndex(2); // the odd name, picked
        Click(form, "butOK");
    });
    p.Click("butEditRoom");
    EXPECT_TRUE(p.game.Rooms[1].Alias == odd + "y");
    EXPECT_TRUE(p.game.Rooms[1].Out->Key == odd);
    EXPECT_TRUE(p.game.Rooms[1].North->Key == odd);
}

TEST_F(GameEditors, ShowsValueErrorsInTheMessageWindowOfTheOptions) {
    RunningProgram q;
    q.store.setValue("Options/SpecialMsgBox", "Yes");
    q.StartWith(EditorGame());
    WhenOpen<frmEditCollectables>([](frmEditCollectables& form) {
        WhenOpen<frmEditCollectableSettings>([](frmEditCollectableSettings& edit) {
            SetText(edit, "txtName", "");
            WhenOpen<frmOrbMsgBox>([](frmOrbMsgBox& box) {
                EXPECT_EQ(TextOf(box, "lblMsg"), "Collectable must have a name");
                box.close();
            });
            Click(edit, "butOK");
        });
        Click(form, "butAdd");
    });
    q.Trigger("mnuViewCollectables");
}

TEST_F(GameEditors, RedrawsAScriptThatWasEdited) {
    p.Select("lstRooms", 0);
    WhenOpen<frmRoomProperties>([](frmRoomProperties& form) {
        auto& box = Find<QTextEdit>(form, "txtScript");
        EXPECT_TRUE(box.toPlainText().contains("enter")) << "in plain English";
        CutNextScript();
        Click(form, "butActions");
        QTest::mouseDClick(box.viewport(), Qt::LeftButton);
        EXPECT_EQ(box.toPlainText(), QString());
    });
    p.Click("butEditRoom");
    EXPECT_EQ(p.game.Rooms[1].Script, "msg <enter>");
}

// ---- Tags

TEST_F(GameEditors, HoldsTagsInTheRoomEditorUntilItsOk) {
    p.Select("lstRooms", 0);
    WhenOpen<frmRoomProperties>([](frmRoomProperties& form) {
        Click(form, "butMisc");
        for (const char* expected : {"weather <fine>\r\n", "weather <bad>"}) { // and again with what it holds
            WhenOpen<frmTagEditor>([expected](frmTagEditor& tags) {
                EXPECT_EQ(Find<PlainTextBox>(tags, "txtTags").Text(), expected);
                Find<PlainTextBox>(tags, "txtTags").setPlainText("weather <bad>");
                Click(tags, "butOK");
            });
            Click(form, "butMoreTags");
        }
        Click(form, "butCancel");
    });
    p.Click("butEditRoom");
    EXPECT_EQ(p.game.Rooms[1].MiscTags, "weather <fine>\r\n");
}

TEST_F(GameEditors, RemembersTheSizeOfTheTagEditorOnOk) {
    const auto stored = [this] {
        return (p.store.value("Editor/TagEditorWindowWidth").toString() + u' ' +
                p.store.value("Editor/TagEditorWindowHeight").toString())
            .toStdString();
    };
    for (const auto& [button, kept] :
         Cases<const char*, const char*>{{"butCancel", " "}, {"butOK", "7500 6750"}}) {
        OpenTags([close = button](frmTagEditor& form) {
            EXPECT_EQ(form.size(), QSize(400, 400)); // 6000 twips
            form.resize(500, 450);
            Click(form, close);
        });
        EXPECT_EQ(stored(), kept);
    }
    OpenTags([](frmTagEditor& form) { EXPECT_EQ(form.size(), QSize(500, 450)); });
    for (const auto& [width, pixels] :
         Cases<const char*, int>{{"wide", 167}, {"-1", 167}, {"9000 or so", 600}}) {
        p.store.setValue("Editor/TagEditorWindowWidth", width);
        OpenTags([pixels = pixels](frmTagEditor& form) { EXPECT_EQ(form.size(), QSize(pixels, 450)); });
    }
    p.store.setValue("Editor/TagEditorWindowWidth", "99999999999");
    OpenTags([](frmTagEditor& form) { EXPECT_LE(form.width(), form.screen()->availableSize().width()); });
}

// The box takes all the room that is there; the buttons stay in the corner.
TEST_F(GameEditors, LaysTheTagEditorOut) {
    OpenTags([](frmTagEditor& form) {
        for (const auto& [size, box, ok] : Cases<QSize, QSize, QPoint>{
                 {{400, 400}, {392, 340}, {247, 347}}, {{900, 600}, {892, 540}, {747, 547}}}) {
            form.resize(size);
            QTest::qWait(0);
            EXPECT_EQ(Find<QWidget>(form, "txtTags").size(), box);
            EXPECT_EQ(Find<QWidget>(form, "butOK").mapTo(&form, QPoint()), ok);
            EXPECT_EQ(Find<QWidget>(form, "butCancel").mapTo(&form, QPoint()), ok + QPoint(72, 0));
        }
    });
}

} // namespace
} // namespace zem::test
