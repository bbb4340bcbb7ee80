// The branches of the game, thing and tag editors that the comparison of saved files does not reach.
#include "editors/frmGameProperties.h"
#include "editors/frmObjectInteract.h"
#include "editors/frmRoomProperties.h"
#include "editors/frmTagEditor.h"
#include "editors/frmThingProperties.h"
#include "forms/NameBox.h"
#include "support/Cases.h"
#include "support/EditorGame.h"
#include "support/Lines.h"
#include "support/RunningProgram.h"
#include "support/ScriptForms.h"

#include <QTextEdit>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

class GameEditors : public testing::Test {
protected:
    GameEditors() {
        p.StartWith(EditorGame());
        p.Select("lstRooms", 0);
    }

    RunningProgram p;
};

TEST_F(GameEditors, RefuseAFontSizeThatIsNoNumber) {
    WhenOpen<frmGameProperties>([this](frmGameProperties& form) {
        EXPECT_EQ(TextOf(form, "txtGameInfo"), "one\ntwo\n");
        auto& size = Find<QLineEdit>(form, "txtFontSize");
        for (const char* text : {"", "big", "12.5", "12pt", "0x10", "32768", "-32769"}) {
            Click(form, "butActions");
            size.setText(QLatin1String(text));
            p.dialogs.Message(
                "Game Properties: The default font size must be a whole number from -32768 to 32767.");
            Click(form, "butOK");
            EXPECT_TRUE(form.isVisible() && size.isVisible() && form.focusWidget() == &size) << text;
        }
        SetText(form, "txtGameName", "Spire");
        size.setText("-32768");
        Click(form, "butOK");
    });
    p.Trigger("mnuViewGameProperties");
    EXPECT_EQ(p.game.DefaultFontSize, -32768);
    EXPECT_EQ(p.Title(), "\"Spire\" [" + p.folder.Path("game.kel") + "] - ZEM 1.0");
}

TEST_F(GameEditors, ShowCharactersAndObjectsWithTheirOwnFields) {
    std::string shown;
    for (const auto& [list, button] :
         {std::pair("lstCharacters", "butEditObj_0"), std::pair("lstObjects", "butEditObj_1")}) {
        p.Select(list, 0);
        WhenOpen<frmThingProperties>([&](frmThingProperties& form) {
            shown += form.windowTitle().toStdString();
            for (const char* control : {"lblInteract", "butMoreTags", "txtSuffix"})
                shown += '|' + TextOf(form, control);
            for (const char* control : {"lblGender", "txtGender", "butEditGive"})
                shown += Find<QWidget>(form, control).isHidden() ? "|-" : "|+";
            SetText(form, "txtThingName", "A&B");
            WhenOpen<frmObjectInteract>([&](frmObjectInteract& uses) {
                shown += '|' + uses.windowTitle().toStdString() + '|' + TextOf(uses, "lblTitle") + '\n';
            });
            Click(form, "butEditUse");
        });
        p.Click(button);
    }
    EXPECT_EQ(
        shown,
        "Character Properties|'&SPEAK' action:|Edit &miscellaneous tags (this 'define character' block)|"
        "the smith|+|+|+|Use-able objects|Objects that can be USEd on A&&B:\n"
        "Object Properties|'&TAKE' action:|Edit &miscellaneous tags (this 'define object' block)|"
        "|-|-|-|Use-able objects|Objects that can be USEd on A&&B:\n");
}

// As long as they are, and with bytes that a box of one line would like to change.
TEST_F(GameEditors, KeepWhatIsNotTouched) {
    const std::string odd = "a\x01\x02 b" + std::string(40000, 'x');
    Room& room = p.game.Rooms.Edit(1);
    room.Alias = odd;
    p.game.Rooms.Edit(2).Name = odd;
    room.Out.Edit().Key = odd;
    WhenOpen<frmRoomProperties>([](frmRoomProperties& form) {
        PressKey(form, "txtRoomAlias", Qt::Key_End);
        TypeText(form, "txtRoomAlias", "y");
        Find<NameBox>(form, "cmbRoomNames_1").setCurrentIndex(2); // Picks the odd name.
        Click(form, "butOK");
    });
    p.Click("butEditRoom");
    EXPECT_TRUE(p.game.Rooms[1].Alias == odd + "y");
    EXPECT_TRUE(p.game.Rooms[1].Out->Key == odd);
    EXPECT_TRUE(p.game.Rooms[1].North->Key == odd);
}

TEST_F(GameEditors, HoldTheScriptsAndTagsOfARoomUntilItsOk) {
    WhenOpen<frmRoomProperties>([](frmRoomProperties& form) {
        auto& script = Find<QTextEdit>(form, "txtScript");
        Click(form, "butActions");
        EXPECT_EQ(script.toPlainText(), "Print \"enter\"");
        CutNextScript();
        QTest::mouseDClick(script.viewport(), Qt::LeftButton);
        EXPECT_EQ(script.toPlainText(), "") << "drawn anew";
        for (const char* held : {"weather <fine>\n", "weather <bad>"}) {
            WhenOpen<frmTagEditor>([held](frmTagEditor& tags) {
                EXPECT_EQ(TextOf(tags, "txtTags"), held);
                SetText(tags, "txtTags", "weather <bad>");
                Click(tags, "butOK");
            });
            Click(form, "butMoreTags");
        }
        Click(form, "butCancel");
    });
    p.Click("butEditRoom");
    EXPECT_EQ(Difference(EditorGame(), SaveToBytes(p.game)), "");
}

TEST_F(GameEditors, RememberTheSizeOfTheTagEditorOnOk) {
    const auto sizeOnOpening = [this](const char* close) {
        QSize size;
        WhenOpen<frmTagEditor>([&](frmTagEditor& form) {
            size = form.size();
            form.resize(500, 450);
            QTest::qWait(0);
            EXPECT_EQ(form.size() - Find<QWidget>(form, "txtTags").size(), QSize(8, 60)) << "grows with it";
            Click(form, close);
        });
        p.Trigger("mnuViewMiscKEL");
        return size;
    };
    for (const char* close : {"butCancel", "butOK"})
        EXPECT_EQ(sizeOnOpening(close), QSize(400, 400));
    EXPECT_EQ(sizeOnOpening("butCancel"), QSize(500, 450));
    // In twips, of which a pixel has 15.
    EXPECT_EQ(p.store.value("Editor/TagEditorWindowWidth"), 7500);
    for (const auto& [stored, width] :
         Cases<const char*, int>{{"wide", 167},
                                 {"-1", 167},
                                 {"9000 or so", 600},
                                 {"99999999999", p.Main()->screen()->availableSize().width()}}) {
        p.store.setValue("Editor/TagEditorWindowWidth", stored);
        EXPECT_EQ(sizeOnOpening("butCancel"), QSize(width, 450)) << stored;
    }
}

} // namespace
} // namespace zem::test
