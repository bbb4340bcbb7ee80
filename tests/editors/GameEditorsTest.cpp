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
#include "script/frmScriptLines.h"
#include "support/EditorGame.h"
#include "support/RunningProgram.h"
#include "support/WhenOpen.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTextEdit>

#include <gtest/gtest.h>

namespace zem {
namespace {

using test::Click;
using test::Find;
using test::RunningProgram;
using test::WhenOpen;

class GameEditors : public testing::Test {
protected:
    GameEditors() { p.StartWith(test::EditorGame()); }

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
            p.dialogs.Message(QStringLiteral(
                "Game Properties: The default font size must be a whole number from -32768 to 32767."));
            Click(form, "butOK");
            EXPECT_TRUE(form.isVisible() && size.isVisible()) << text;
            EXPECT_EQ(form.focusWidget(), &size);
        }
        Find<QLineEdit>(form, "txtGameName").setText(QStringLiteral("Spire"));
        size.setText(QStringLiteral("-32768"));
        Click(form, "butOK");
    });
    p.Trigger("mnuViewGameProperties");
    EXPECT_EQ(p.game.DefaultFontSize, -32768);
    EXPECT_EQ(p.Title(), "\"Spire\" [" + p.folder.Path("game.kel") + "] - ZEM 1.0");
}

TEST_F(GameEditors, ShowsBreaksOfTheInfoTextAsLines) {
    p.game.GameInfo = "one|ntwo|N|nthree";
    WhenOpen<frmGameProperties>([](frmGameProperties& form) {
        EXPECT_EQ(Find<PlainTextBox>(form, "txtGameInfo").toPlainText(), QStringLiteral("one\ntwo|N\nthree"));
    });
    p.Trigger("mnuViewGameProperties");
}

TEST_F(GameEditors, ShowsCharactersAndObjectsWithTheirOwnFields) {
    struct Case {
        const char* list;
        const char* button;
        bool isCharacter;
        const char* caption;
        const char* interact;
        const char* tags;
        const char* suffix;
        const char* uses;
    };
    for (const Case& c : {Case{"lstCharacters", "butEditObj_0", true, "Character Properties",
                               "'&SPEAK' action:", "Edit &miscellaneous tags (this 'define character' block)",
                               "the smith", "Objects that can be USEd on Bob:"},
                          {"lstObjects", "butEditObj_1", false, "Object Properties",
                           "'&TAKE' action:", "Edit &miscellaneous tags (this 'define object' block)", "",
                           "Objects that can be USEd on lamp:"}}) {
        p.Select("lstRooms", 0);
        p.Select(c.list, 0);
        WhenOpen<frmThingProperties>([&](frmThingProperties& form) {
            EXPECT_EQ(form.windowTitle(), QLatin1String(c.caption));
            EXPECT_EQ(Find<QLabel>(form, "lblInteract").text(), QLatin1String(c.interact));
            EXPECT_EQ(Find<QPushButton>(form, "butMoreTags").text(), QLatin1String(c.tags));
            EXPECT_EQ(Find<QLineEdit>(form, "txtSuffix").text(), QLatin1String(c.suffix));
            for (const char* control : {"lblGender", "txtGender", "butEditGive"})
                EXPECT_EQ(Find<QWidget>(form, control).isHidden(), !c.isCharacter) << control;
            WhenOpen<frmObjectInteract>([&](frmObjectInteract& uses) {
                EXPECT_EQ(uses.windowTitle(), QStringLiteral("Use-able objects"));
                EXPECT_EQ(Find<QLabel>(uses, "lblTitle").text(), QLatin1String(c.uses));
            });
            Click(form, "butMisc");
            Click(form, "butEditUse");
        });
        p.Click(c.button);
    }
    EXPECT_EQ(p.SelectedRow("lstObjects"), 0);
}

TEST_F(GameEditors, EditsTheThingThatIsShownForRoomsOfOneName) {
    p.game.Rooms.Edit(2).Name = "Hall";
    p.game.Rooms.Edit(2).Objects.Append().Name = "mine";
    p.Select("lstRooms", 1);
    p.Select("lstRooms", 0);
    p.Select("lstObjects", 1);
    WhenOpen<frmThingProperties>([](frmThingProperties& form) {
        Find<QLineEdit>(form, "txtThingName").setText(QStringLiteral("ours"));
        Click(form, "butOK");
    });
    QTest::keyClick(p.Find<QAbstractItemView>("lstObjects"), Qt::Key_Return);
    EXPECT_EQ(p.game.Rooms[2].Objects[1].Name, "ours");
    EXPECT_EQ(p.Rows("lstObjects"), (QStringList{"lamp", "ours"}));
    EXPECT_EQ(p.SelectedRow("lstObjects"), 1);
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
        QTest::keyClicks(&alias, QStringLiteral("y"));
        Find<NameBox>(form, "cmbRoomNames_1").setCurrentIndex(2); // the odd name, picked
        Click(form, "butOK");
    });
    p.Click("butEditRoom");
    EXPECT_TRUE(p.game.Rooms[1].Alias == odd + "y");
    EXPECT_TRUE(p.game.Rooms[1].Out->Key == odd);
    EXPECT_TRUE(p.game.Rooms[1].North->Key == odd);
}

TEST_F(GameEditors, ShowsValueErrorsInTheMessageWindowOfTheOptions) {
    for (const char* special : {"Yes", "No"}) {
        RunningProgram q;
        q.store.setValue(QStringLiteral("Options/SpecialMsgBox"), QLatin1String(special));
        q.StartWith(test::EditorGame());
        WhenOpen<frmEditCollectables>([&](frmEditCollectables& form) {
            WhenOpen<frmEditCollectableSettings>([&](frmEditCollectableSettings& edit) {
                Find<QLineEdit>(edit, "txtName").clear();
                if (std::string(special) == "Yes")
                    WhenOpen<frmOrbMsgBox>([](frmOrbMsgBox& box) { box.close(); });
                else
                    q.dialogs.Message(QStringLiteral("Error: Collectable must have a name"));
                Click(edit, "butOK");
            });
            Click(form, "butAdd");
        });
        q.Trigger("mnuViewCollectables");
    }
}

TEST_F(GameEditors, RedrawsAScriptThatWasEdited) {
    p.Select("lstRooms", 0);
    WhenOpen<frmRoomProperties>([](frmRoomProperties& form) {
        auto& box = Find<QTextEdit>(form, "txtScript");
        EXPECT_TRUE(box.toPlainText().contains(QStringLiteral("enter"))) << "in plain English";
        WhenOpen<frmScriptLines>([](frmScriptLines& script) {
            Find<QListWidget>(script, "lstFriendlyLines").setCurrentRow(0);
            Click(script, "butRemove");
            Click(script, "butOK");
        });
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
                Find<PlainTextBox>(tags, "txtTags").setPlainText(QStringLiteral("weather <bad>"));
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
    const auto stored = [this](const char* key) {
        return p.store.value(QLatin1String("Editor/TagEditorWindow") + QLatin1String(key))
            .toString()
            .toStdString();
    };
    OpenTags([](frmTagEditor& form) {
        EXPECT_EQ(form.size(), QSize(400, 400)); // 6000 twips
        form.resize(500, 450);
        Click(form, "butCancel");
    });
    EXPECT_EQ(stored("Width"), "");
    OpenTags([](frmTagEditor& form) {
        EXPECT_EQ(form.size(), QSize(400, 400));
        form.resize(500, 450);
        Click(form, "butOK");
    });
    EXPECT_EQ(stored("Width"), "7500");
    EXPECT_EQ(stored("Height"), "6750");
    OpenTags([](frmTagEditor& form) { EXPECT_EQ(form.size(), QSize(500, 450)); });
    struct Case {
        const char* width;
        QSize size;
    };
    for (const Case& c :
         {Case{"wide", QSize(167, 450)}, {"-1", QSize(167, 450)}, {"9000 or so", QSize(600, 450)}}) {
        p.store.setValue(QStringLiteral("Editor/TagEditorWindowWidth"), QLatin1String(c.width));
        OpenTags([&](frmTagEditor& form) { EXPECT_EQ(form.size(), c.size) << c.width; });
    }
    p.store.setValue(QStringLiteral("Editor/TagEditorWindowWidth"), QStringLiteral("99999999999"));
    OpenTags([](frmTagEditor& form) { EXPECT_LE(form.width(), form.screen()->availableSize().width()); });
}

TEST_F(GameEditors, LaysTheTagEditorOut) {
    OpenTags([](frmTagEditor& form) {
        for (const QSize& size : {QSize(400, 400), QSize(900, 600), QSize(10, 10)}) {
            form.resize(size);
            QTest::qWait(0);
            const int width = form.width();
            const int height = form.height();
            EXPECT_GE(width * 15, 2500);
            EXPECT_GE(height * 15, 1500);
            const auto at = [&form](const char* control) {
                const auto& widget = Find<QWidget>(form, control);
                return QRect(widget.mapTo(&form, QPoint()), widget.size());
            };
            EXPECT_EQ(at("txtTags").size(), QSize(width - 120 / 15, height - 900 / 15));
            EXPECT_EQ(at("butOK").topLeft(), QPoint(width - 2295 / 15, height - 795 / 15));
            EXPECT_EQ(at("butCancel").topLeft(), QPoint(width - 1215 / 15, height - 795 / 15));
        }
    });
}

} // namespace
} // namespace zem
