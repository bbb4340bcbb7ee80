#include "editors/frmAddNewPlace.h"
#include "editors/frmRoomProperties.h"
#include "forms/NameBox.h"
#include "help/frmHelp.h"
#include "support/Lines.h"
#include "support/RunningProgram.h"
#include "support/ScriptForms.h"

#include <QStackedWidget>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

/// Opens the editor of the room in a row and runs `use` on it.
class RoomEditor : public testing::Test {
protected:
    RoomEditor() {
        p.StartWith(CrLf("define game <x>\nend define\n"
                         "define room <Hall>\nout <Yard> msg <bye>\nnorth msg <Locked.>\nsouth <yard>\n"
                         "place <the; Yard> msg <a>\nplace <Hall> msg <b>\nend define\n"
                         "define room <Yard>\nend define\n"));
        opened = SaveToBytes(p.game);
    }

    void Edit(int row, const std::function<void(frmRoomProperties&)>& use) {
        p.Select("lstRooms", row);
        WhenOpen<frmRoomProperties>(use);
        p.Click("butEditRoom");
    }

    /// What has become of the lines of the game.
    std::string Changes() const { return Difference(opened, SaveToBytes(p.game)); }

    RunningProgram p;
    std::string opened;
};

TEST_F(RoomEditor, OffersTheRoomsAndAnActionWhereTheExitsCanHaveOne) {
    Edit(0, [this](frmRoomProperties& form) {
        std::string exits;
        for (const std::string exit : {"0", "1", "2", "3"}) {
            const auto& box = Find<NameBox>(form, ("cmbRoomNames_" + exit).c_str());
            exits += box.Text() + ' ' + std::to_string(box.count());
            exits += IsEnabled(form, ("butRoomAction_" + exit).c_str()) ? " action|" : "|";
        }
        EXPECT_EQ(exits, "Yard 3 action|[action] 4 action|[not accessible] 4|[not accessible] 4|")
            << "\"yard\" is no room: the case differs";
        auto& north = Find<NameBox>(form, "cmbRoomNames_1");
        const auto& action = Find<QPushButton>(form, "butRoomAction_1");
        north.setCurrentIndex(1);
        EXPECT_FALSE(action.isEnabled());
        north.setEditText("[action]");
        p.dialogs.Message("ZEM: " + *UnstorableCharacter(QStringLiteral(u"\u0394")));
        north.findChild<QLineEdit*>()->insert(QStringLiteral(u"\u0394"));
        EXPECT_TRUE(action.isEnabled()) << "as the text is back";
        north.clearEditText();
        TypeText(form, "cmbRoomNames_1", "hall");
        ASSERT_NE(QApplication::activePopupWidget(), nullptr) << "offers \"Hall\"";
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
        Find<NameBox>(form, "cmbRoomNames_0").setFocus();
        Click(form, "butOK");
    });
    EXPECT_EQ(Changes(), "-north msg <Locked.>|-south <yard>|+north <hall>") << "as it was typed";
    EXPECT_EQ(p.game.Rooms[1].North->Script, "msg <Locked.>") << "for when there is an action again";
}

// It is written at once, and Cancel does not take it back.
TEST_F(RoomEditor, KeepsTheActionOfAnExitWhenItIsCancelled) {
    Edit(0, [](frmRoomProperties& form) {
        SetText(form, "txtRoomAlias", "lost");
        for (const auto& [button, script] :
             {std::pair("butRoomAction_0", "bye"), std::pair("butRoomAction_1", "Locked.")}) {
            CutNextScript(script);
            Click(form, button);
        }
        Click(form, "butCancel");
    });
    EXPECT_EQ(Changes(), "-out <Yard> msg <bye>|-north msg <Locked.>|+out <Yard>|+north ");
    EXPECT_TRUE(p.game.Modified);
}

// The scripts stay where they were when a place goes, and the places after it take them over.
TEST_F(RoomEditor, AddsAndRemovesPlacesAndLeavesTheirScriptsBehind) {
    Edit(0, [](frmRoomProperties& form) {
        Click(form, "butExits");
        Click(form, "butRemovePlace"); // Nothing is selected, so nothing happens.
        Click(form, "butScript");
        SelectRow(form, "lstPlaces", 0);
        Click(form, "butRemovePlace");
        for (const auto& [prefix, room, close] :
             {std::tuple("", "nowhere; yet", "butAdd"), {"the", "Yard", "butAdd"}, {"", "", "butCancel"}}) {
            WhenOpen<frmAddNewPlace>([=, prefix = prefix, room = room, close = close](frmAddNewPlace& place) {
                auto& box = Find<NameBox>(place, "cmbPlaceNames");
                EXPECT_EQ(box.Text(), "");
                EXPECT_EQ(box.count(), 2);
                TypeText(place, "txtPrefix", QLatin1String(prefix));
                SetText(place, "cmbPlaceNames", room);
                Click(place, close);
            });
            PressKey(form, "lstPlaces", Qt::Key_Insert);
        }
        auto& places = Find<QListWidget>(form, "lstPlaces");
        const QPoint nowhere = places.visualItemRect(places.item(1)).center();
        CutNextScript("b");
        QTest::mouseClick(places.viewport(), Qt::LeftButton, {}, nowhere);
        QTest::mouseDClick(places.viewport(), Qt::LeftButton, {}, nowhere);
        Click(form, "butOK");
    });
    EXPECT_EQ(Changes(), "-south <yard>|-place <the; Yard> msg <a>|-place <Hall> msg <b>|"
                         "+place <Hall> msg <a>|+place <nowhere; yet>|+place <the; Yard>");
}

TEST_F(RoomEditor, ShowsOnePageWithItsButtonInBoldAndRemembersItsSize) {
    Edit(0, [](frmRoomProperties& form) {
        const auto shown = [&form] {
            QString text = Find<QStackedWidget>(form, "pages").currentWidget()->objectName();
            for (const char* button : {"butDetails", "butExits", "butActions", "butMisc"})
                if (Find<QPushButton>(form, button).font().bold())
                    text += u' ' + QLatin1String(button);
            return text;
        };
        EXPECT_EQ(shown(), "fraDetails butDetails");
        EXPECT_EQ(form.focusWidget()->objectName(), "txtDescription");
        Click(form, "butExits");
        EXPECT_EQ(shown(), "fraExits butExits");
        Click(form, "butHelp");
        EXPECT_NE(TextOf(*form.findChild<frmHelp*>(), "txtHelp").find("'roomhelp'"), std::string::npos);
        form.resize(711, 613);
    });
    Edit(1, [](frmRoomProperties& form) { EXPECT_EQ(form.size(), QSize(711, 613)); });
}

} // namespace
} // namespace zem::test
