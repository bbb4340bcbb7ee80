#include "app/frmHelp.h"
#include "editors/frmAddNewPlace.h"
#include "editors/frmRoomProperties.h"
#include "forms/NameBox.h"
#include "support/Cases.h"
#include "support/RunningProgram.h"
#include "support/ScriptForms.h"

#include <QStackedWidget>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

/// Opens the editor of the room in a row and runs `use` on it.
class RoomEditor : public testing::Test {
protected:
    explicit RoomEditor(const std::string& bytes = CrLf(
                            "define game <x>\nend define\n"
                            "define room <Hall>\nout <Yard> msg <bye>\nnorth msg <Locked.>\nsouth <yard>\n"
                            "place <the; Yard> msg <a>\nplace <Hall> msg <b>\nend define\n"
                            "define room <Yard>\nend define\n")) {
        p.StartWith(bytes);
    }

    void Edit(int row, const std::function<void(frmRoomProperties&)>& use) {
        p.Select("lstRooms", row);
        WhenOpen<frmRoomProperties>(use);
        p.Click("butEditRoom");
    }

    const Room& Hall() const { return p.game.Rooms[1]; }

    RunningProgram p;
};

TEST_F(RoomEditor, OffersTheRoomsAndAnActionWhereTheExitsCanHaveOne) {
    Edit(0, [this](frmRoomProperties& form) {
        for (const auto& [exit, text, rows, hasAction] : Cases<std::string, const char*, int, bool>{
                 {"0", "Yard", 3, true},
                 {"1", "[action]", 4, true},
                 {"2", "[not accessible]", 4, false}, // "yard" is no room: the case differs
                 {"3", "[not accessible]", 4, false}}) {
            const auto& box = Find<NameBox>(form, ("cmbRoomNames_" + exit).c_str());
            EXPECT_EQ(box.currentText(), text) << exit;
            EXPECT_EQ(box.count(), rows) << exit;
            EXPECT_EQ(IsEnabled(form, ("butRoomAction_" + exit).c_str()), hasAction) << exit;
        }
        auto& north = Find<NameBox>(form, "cmbRoomNames_1");
        const auto& action = Find<QPushButton>(form, "butRoomAction_1");
        north.setCurrentIndex(1);
        EXPECT_EQ(north.currentText(), "Hall");
        EXPECT_FALSE(action.isEnabled());
        north.setEditText("[action]");
        EXPECT_TRUE(action.isEnabled());
        p.dialogs.Message("ZEM: " + *UnstorableCharacter(QStringLiteral(u"\u0394")));
        north.findChild<QLineEdit*>()->insert(QStringLiteral(u"\u0394"));
        EXPECT_TRUE(action.isEnabled()) << "as the text is back";
        north.setEditText("hall"); // typed, and no other case is put in its place
        north.setFocus();
        Find<NameBox>(form, "cmbRoomNames_0").setFocus();
        Click(form, "butOK");
    });
    EXPECT_EQ(Hall().North->Key, "hall");
    EXPECT_EQ(Hall().North->Script, "msg <Locked.>") << "stays in the record";
    EXPECT_EQ(Hall().South->Key, "") << "led nowhere";
    EXPECT_EQ(Hall().Out->Key, "Yard");
}

// It is written at once, and Cancel does not take it back.
TEST_F(RoomEditor, KeepsTheActionOfAnExitWhenItIsCancelled) {
    Edit(0, [](frmRoomProperties& form) {
        SetText(form, "txtAlias", "lost");
        for (const auto& [button, script] :
             {std::pair("butRoomAction_0", "bye"), std::pair("butRoomAction_1", "Locked.")}) {
            CutNextScript(script);
            Click(form, "butExits");
            Click(form, button);
        }
        QTest::keyClick(&form, Qt::Key_Escape);
    });
    EXPECT_EQ(Hall().Out->Script, "");
    EXPECT_EQ(Hall().Out->Key, "Yard");
    EXPECT_EQ(Hall().North->Script, "");
    EXPECT_EQ(Hall().Alias, "");
    EXPECT_TRUE(p.game.Modified);
    EXPECT_EQ(p.SelectedRow("lstRooms"), 0);
}

TEST_F(RoomEditor, AddsPlacesToRoomsThatNeedNotExist) {
    Edit(0, [](frmRoomProperties& form) {
        Click(form, "butExits");
        for (const auto& [prefix, room] : {std::pair("the", "Hall"), std::pair("", "nowhere; yet")}) {
            WhenOpen<frmAddNewPlace>([prefix = prefix, room = room](frmAddNewPlace& place) {
                EXPECT_EQ(Find<NameBox>(place, "cmbPlaceNames").count(), 2);
                TypeText(place, "txtPrefix", QLatin1String(prefix));
                SetText(place, "cmbPlaceNames", room);
                Click(place, "butAdd");
            });
            Click(form, "butAddPlace");
        }
        WhenOpen<frmAddNewPlace>([](frmAddNewPlace& place) { Click(place, "butCancel"); });
        PressKey(form, "lstPlaces", Qt::Key_Insert);
        Click(form, "butOK");
    });
    ASSERT_EQ(Hall().Places.Count(), 4);
    EXPECT_EQ(Hall().Places[3], (ScriptPair{"the; Hall", ""}));
    EXPECT_EQ(Hall().Places[4], (ScriptPair{"nowhere; yet", ""}));
    EXPECT_EQ(Hall().Places[2], (ScriptPair{"Hall", "msg <b>"}));
}

// The scripts stay where they were, also under a place that is added afterwards.
TEST_F(RoomEditor, LeavesTheScriptOfARemovedPlaceBehind) {
    Edit(0, [](frmRoomProperties& form) {
        auto& places = Find<QListWidget>(form, "lstPlaces");
        Click(form, "butExits");
        Click(form, "butRemovePlace"); // nothing selected, nothing happens
        Click(form, "butScript");
        places.setCurrentRow(0);
        Click(form, "butRemovePlace");
        WhenOpen<frmAddNewPlace>([](frmAddNewPlace& place) {
            SetText(place, "cmbPlaceNames", "Attic");
            Click(place, "butAdd");
        });
        Click(form, "butAddPlace");
        CutNextScript("b"); // of the row that is selected now, the new one
        const QPoint attic = places.visualItemRect(places.item(1)).center();
        QTest::mouseClick(places.viewport(), Qt::LeftButton, {}, attic);
        QTest::mouseDClick(places.viewport(), Qt::LeftButton, {}, attic);
        Click(form, "butOK");
    });
    ASSERT_EQ(Hall().Places.Count(), 2);
    EXPECT_EQ(Hall().Places[1], (ScriptPair{"Hall", "msg <a>"}));
    EXPECT_EQ(Hall().Places[2], (ScriptPair{"Attic", ""}));
}

TEST_F(RoomEditor, ShowsOnePageAndItsButtonInBold) {
    Edit(0, [](frmRoomProperties& form) {
        const auto shown = [&form] {
            QString text;
            for (const char* button : {"butDetails", "butExits", "butActions", "butMisc"})
                text += Find<QPushButton>(form, button).font().bold() ? u'1' : u'0';
            return text + u' ' + Find<QStackedWidget>(form, "pages").currentWidget()->objectName();
        };
        EXPECT_EQ(shown(), "1000 fraDetails");
        EXPECT_EQ(form.focusWidget()->objectName(), "txtAlias");
        Click(form, "butMisc");
        EXPECT_EQ(shown(), "0001 fraMisc");
        Click(form, "butExits");
        EXPECT_EQ(shown(), "0100 fraExits");
        Click(form, "butHelp");
        const auto* help = form.findChild<frmHelp*>();
        ASSERT_NE(help, nullptr);
        EXPECT_NE(TextOf(*help, "txtHelp").find("'roomhelp'"), std::string::npos);
        form.resize(711, 613);
    });
    Edit(1, [](frmRoomProperties& form) { EXPECT_EQ(form.size(), QSize(711, 613)) << "remembered"; });
}

TEST_F(RoomEditor, OpensWithADoubleClickAndWithReturn) {
    auto* rooms = p.Find<QAbstractItemView>("lstRooms");
    const auto isOf = [](const char* name) {
        WhenOpen<frmRoomProperties>(
            [name](frmRoomProperties& form) { EXPECT_EQ(TextOf(form, "txtRoomName"), name); });
    };
    isOf("Yard");
    p.Select("lstRooms", 1);
    QTest::mouseDClick(rooms->viewport(), Qt::LeftButton, {},
                       rooms->visualRect(rooms->model()->index(1, 0)).center());
    isOf("Hall");
    QTest::keyClick(rooms, Qt::Key_Up);
    QTest::keyClick(rooms, Qt::Key_Return);
}

TEST(NameBox, OffersTheNamesThatHoldTheTextAndKeepsWhatIsTyped) {
    NameListModel names;
    const QStringList rooms = {"Hall", "Great hall", "Yard"};
    names.Reset(3, [&](int row) { return rooms[row]; });
    ScriptedDialogs dialogs;
    NameBox box;
    box.Offer(names);
    box.RefuseUnstorableText(dialogs);
    box.show();
    EXPECT_EQ(box.Text(), "");
    auto* line = box.findChild<QLineEdit*>();
    QTest::keyClicks(line, "hall");
    const QWidget* popup = QApplication::activePopupWidget();
    ASSERT_NE(popup, nullptr);
    EXPECT_EQ(qobject_cast<const QAbstractItemView*>(popup)->model()->rowCount(), 2);
    QTest::keyClick(line, Qt::Key_Escape);
    QTest::keyClick(line, Qt::Key_Return);
    EXPECT_EQ(box.Text(), "hall");
    dialogs.Message("ZEM: " + *UnstorableCharacter(QStringLiteral(u"\u0394")));
    QTest::keyClick(line, Qt::Key_End);
    line->insert(QStringLiteral(u"\u0394"));
    EXPECT_EQ(box.Text(), "hall");
    box.hidePopup();
}

} // namespace
} // namespace zem::test
