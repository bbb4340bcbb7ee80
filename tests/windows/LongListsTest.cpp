// Lists of many rows, and rooms that all have one name: what is done to a row is done to that record.
#include "editors/frmRoomProperties.h"
#include "forms/ListRows.h"
#include "panels/frmRename.h"
#include "support/Cases.h"
#include "support/MapProgram.h"
#include "support/Panels.h"
#include "support/UndoLaw.h"

#include <gtest/gtest.h>

namespace zem::test {
namespace {

/// Rooms with a thing each; the description says which is which.
std::string ManyRooms(int count, bool haveOneName) {
    std::string bytes = "define game <Many>\nstart <Cell>\nend define\n";
    for (int k = 0; k < count; ++k) {
        const std::string number = std::to_string(k);
        bytes += "define room <Cell" + (haveOneName ? std::string() : ' ' + number) + ">\nlook <Look " +
                 number + ".>\ndefine object <thing " + number + ">\nend define\nend define\n";
    }
    return CrLf(bytes);
}

TEST(LongLists, WhatIsDoneToARoomOfACommonNameIsDoneToThatOne) {
    RunningProgram p(ManyRooms(200, true));
    p.dialogs.CancelTheRest(); // of the editor, which may not like the common name
    const std::string before = GameFile(p.game);
    for (const int row : {0, 199}) {
        SCOPED_TRACE(row);
        p.Select("lstRooms", row);
        EXPECT_EQ(p.Rows("lstObjects").size(), 200) << "things of all rooms of the name";
        p.Open<frmRoomProperties>("butEditRoom", [&](frmRoomProperties& form) {
            EXPECT_EQ(TextOf(form, "txtDescription"), "Look " + std::to_string(row) + ".");
            SetText(form, "txtRoomAlias", "changed");
            Click(form, "butOK");
        });
        EXPECT_EQ(p.game.Rooms[row + 1].Alias, "changed");
        EXPECT_EQ(LineChanges(before, GameFile(p.game)), "+alias <changed>");
        EXPECT_EQ(p.SelectedRow("lstRooms"), row) << "the author stays where he was";
        ExpectOneStep(p, before);
        p.Trigger("mnuToolsUndo");

        p.Select("lstRooms", row);
        PressKey(*p.Main(), "lstRooms", Qt::Key_D, Qt::ControlModifier);
        ASSERT_EQ(p.game.Rooms.Count(), 201);
        EXPECT_EQ(p.game.Rooms[201].Look, "Look " + std::to_string(row) + ".");
        p.Trigger("mnuToolsUndo");
        p.Select("lstRooms", row);
        PressKey(*p.Main(), "lstRooms", Qt::Key_Delete);
        ASSERT_EQ(p.game.Rooms.Count(), 199);
        for (const Room& room : p.game.Rooms)
            EXPECT_NE(room.Look, "Look " + std::to_string(row) + ".");
        ExpectOneStep(p, before);
        p.Trigger("mnuToolsUndo");
        EXPECT_EQ(LineChanges(before, GameFile(p.game)), "");
    }
}

TEST(LongLists, TheMapTellsRoomsOfOneNameApart) {
    MapProgram p(ManyRooms(60, true));
    const std::string before = GameFile(p.game);
    for (const int row : {0, 31, 59}) {
        SCOPED_TRACE(row);
        p.Select("lstRooms", row);
        EXPECT_EQ(p.Canvas().Current(), row);
        p.Key(Qt::Key_Delete);
        ASSERT_EQ(p.game.Rooms.Count(), 59);
        for (const Room& room : p.game.Rooms)
            EXPECT_NE(room.Look, "Look " + std::to_string(row) + ".");
        p.Trigger("mnuToolsUndo");
        p.Wait();
        EXPECT_EQ(LineChanges(before, GameFile(p.game)), "");
        QTest::mouseClick(&p.Canvas(), Qt::LeftButton, {}, p.Canvas().PointOfRoom(row));
        EXPECT_EQ(p.SelectedRow("lstRooms"), row);
    }
}

TEST(LongLists, KeysGoThroughAThousandRowsAndTheSelectionIsSeen) {
    RunningProgram p(ManyRooms(1000, false));
    p.Main()->show();
    auto& list = *p.Find<QAbstractItemView>("lstRooms");
    list.setFocus();
    for (const auto& [key, row] : Cases<Qt::Key, int>{{Qt::Key_End, 999},
                                                      {Qt::Key_Down, 999},
                                                      {Qt::Key_Up, 998},
                                                      {Qt::Key_Home, 0},
                                                      {Qt::Key_Up, 0},
                                                      {Qt::Key_Down, 1}}) {
        PressKey(*p.Main(), "lstRooms", key);
        EXPECT_EQ(p.SelectedRow("lstRooms"), row);
        EXPECT_TRUE(list.viewport()->rect().intersects(list.visualRect(list.currentIndex()))) << row;
        EXPECT_EQ(p.Rows("lstObjects"), QStringList{QStringLiteral("thing %1").arg(row)});
    }
    TypeText(*p.Main(), "lstRooms", QStringLiteral("Cell 731"));
    EXPECT_EQ(p.SelectedRow("lstRooms"), 731);
    // A delete in the middle leaves the author there.
    PressKey(*p.Main(), "lstRooms", Qt::Key_Delete);
    EXPECT_EQ(p.game.Rooms.Count(), 999);
    const int row = p.SelectedRow("lstRooms");
    EXPECT_TRUE(row == 731 || row == 730) << row;
    EXPECT_TRUE(list.viewport()->rect().intersects(list.visualRect(list.currentIndex())));
    p.Trigger("mnuToolsUndo");
    EXPECT_EQ(p.game.Rooms.Count(), 1000);
    EXPECT_TRUE(list.viewport()->rect().intersects(list.visualRect(list.currentIndex())));

    // While a filter hides the others, keys and commands mean the rows that are seen.
    p.Find<QLineEdit>("txtRoomFilter")->setText(QStringLiteral("99"));
    PressKey(*p.Main(), "lstRooms", Qt::Key_Home);
    EXPECT_EQ(p.Rows("lstObjects"), QStringList{QStringLiteral("thing 99")});
    PressKey(*p.Main(), "lstRooms", Qt::Key_Down);
    EXPECT_EQ(p.Rows("lstObjects"), QStringList{QStringLiteral("thing 199")});
    PressKey(*p.Main(), "lstRooms", Qt::Key_End);
    EXPECT_EQ(p.Rows("lstObjects"), QStringList{QStringLiteral("thing 999")});
    p.Find<QLineEdit>("txtRoomFilter")->setText(QStringLiteral("88"));
    p.dialogs.Message("Rooms: The filter hides the selected room.");
    PressKey(*p.Main(), "lstRooms", Qt::Key_Delete);
    EXPECT_EQ(p.game.Rooms.Count(), 1000);
    p.Find<QLineEdit>("txtRoomFilter")->setText(QStringLiteral("99"));
    list.selectAll();
    PressKey(*p.Main(), "lstRooms", Qt::Key_Delete);
    EXPECT_EQ(p.game.Rooms.Count(), 1000 - 19) << "19 numbers have two nines beside each other";
    p.Trigger("mnuToolsUndo");
    EXPECT_EQ(p.game.Rooms.Count(), 1000);
}

} // namespace
} // namespace zem::test
