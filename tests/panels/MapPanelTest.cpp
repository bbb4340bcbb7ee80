#include "panels/MapPanel.h"

#include "forms/ColourRoles.h"
#include "forms/MessageBar.h"
#include "player/InputLine.h"
#include "support/MapProgram.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QProxyStyle>
#include <QPushButton>
#include <QTest>

namespace zem::test {
namespace {

constexpr const char* ThreeRooms =
    "define game <Map>\r\nstart <Quay>\r\nend define\r\n"
    "define room <Quay>\r\neast <Mole>\r\nend define\r\n"
    "define room <Mole>\r\nwest <Quay>\r\nsouth msg <Too deep.>\r\nend define\r\n"
    "define room <Cliff>\r\nend define\r\n";

TEST(MapPanel, ShowsTheMapWithoutChangingTheGameAndFollowsTheList) {
    MapProgram p(ThreeRooms);
    p.dialogs.OpenFile(PathToQt(p.folder.Write("other.kel", ThreeRooms))); // while the map of a game is shown
    p.Trigger("mnuFileOpen");
    p.Wait();
    EXPECT_EQ(p.Canvas().Current(), p.SelectedRow("lstRooms"));
    EXPECT_FALSE(p.game.Modified);
    EXPECT_EQ(p.CellOf("Mole") - p.CellOf("Quay"), (map::Cell{1, 0}));
    p.Select("lstRooms", 1);
    EXPECT_EQ(p.Canvas().Current(), p.Number("Mole"));
    QTest::mouseClick(&p.Canvas(), Qt::LeftButton, {}, p.Room("Cliff"));
    EXPECT_EQ(p.SelectedRow("lstRooms"), 2);
    p.Key(Qt::Key_Q);
    EXPECT_EQ(p.SelectedRow("lstRooms"), 0) << "a letter finds a room";
    p.Key(Qt::Key_Right);
    EXPECT_EQ(p.SelectedRow("lstRooms"), 1) << "an arrow walks the exit";
    p.Key(Qt::Key_Up);
    EXPECT_EQ(p.SelectedRow("lstRooms"), 1) << "where there is none it stays";
    EXPECT_FALSE(p.game.Modified);
}

TEST(MapPanel, ShowsWhatIsWrongWithARoomAndWhereThePlayerIs) {
    const MapProgram p(ThreeRooms);
    constexpr map::Direction NorthWest = 7;
    constexpr map::Direction SouthWest = 5;
    const auto colour = [&](const char* room, map::Direction corner) {
        const QPoint beside(qRound(8 * p.Canvas().Zoom()), 0);
        return p.Canvas().grab().toImage().pixelColor(p.Port(room, corner) + beside);
    };
    const auto told = [&](const char* room) { return p.Canvas().DescribeRoom(p.Number(room)); };
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return told("Cliff").contains(QLatin1String("Nobody can get here")); }));
    const QColor warning = ColourOf(ColourRole::Warning, p.Canvas().palette());
    EXPECT_EQ(colour("Cliff", SouthWest), warning);
    const auto inkOf = [&](const char* room) { // pixels of a box that are not its ground
        const QRect box(p.Port(room, NorthWest) + QPoint(12, 3), p.Port(room, 3) - QPoint(12, 3));
        const QImage image = p.Canvas().grab(box).toImage();
        int ink = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                ink += image.pixelColor(x, y) != ColourOf(ColourRole::Room, p.Canvas().palette());
        return ink;
    };
    EXPECT_GT(inkOf("Cliff"), 2 * inkOf("Mole")) << "a room that nobody can reach is hatched";

    const QColor player = ColourOf(ColourRole::True, p.Canvas().palette());
    EXPECT_NE(colour("Quay", NorthWest), player);
    p.Trigger("mnuToolsPlay");
    ASSERT_TRUE(QTest::qWaitFor([&] { return colour("Quay", NorthWest) == player; }));
    auto* line = p.Main()->findChild<InputLine*>();
    ASSERT_NE(line, nullptr);
    QTest::keyClicks(line, QStringLiteral("east"));
    QTest::keyClick(line, Qt::Key_Return);
    EXPECT_EQ(colour("Mole", NorthWest), player);
    EXPECT_NE(colour("Quay", NorthWest), player);
}

TEST(MapPanel, DraggingARoomPlacesItAndEscapeAndUndoTakeItBack) {
    const MapProgram p(ThreeRooms);
    const map::Cell before = p.CellOf("Mole");
    const QPoint way = p.Canvas().PointOfCell({0, 2}) - p.Canvas().PointOfCell({0, 0});
    QTest::mousePress(&p.Canvas(), Qt::LeftButton, {}, p.Room("Mole"));
    const QPoint from = p.Room("Mole");
    QTest::mouseMove(&p.Canvas(), from + way / 2);
    QTest::mouseMove(&p.Canvas(), from + way);
    EXPECT_EQ(p.CellOf("Mole"), before + (map::Cell{0, 2})) << "it follows the mouse";
    QTest::keyClick(&p.Canvas(), Qt::Key_Escape);
    QTest::mouseRelease(&p.Canvas(), Qt::LeftButton, {}, from + way);
    EXPECT_EQ(p.CellOf("Mole"), before);
    EXPECT_FALSE(p.game.Modified);

    p.Drag(from, from + way);
    p.Wait();
    const map::Cell after = before + map::Cell{0, 2};
    EXPECT_EQ(p.CellOf("Mole"), after);
    EXPECT_EQ(map::PinOf(p.game.Rooms[2].MiscTags), after);
    EXPECT_EQ(map::PinOf(p.game.Rooms[1].MiscTags), std::nullopt) << "only what was dragged is placed";
    EXPECT_EQ(p.LastStep(), "move Mole on the map");
    p.Trigger("mnuToolsUndo");
    p.Wait();
    EXPECT_EQ(p.CellOf("Mole"), before);
    p.Drag(p.Room("Mole"), p.Room("Quay"));
    p.Wait();
    EXPECT_NE(p.CellOf("Mole"), p.CellOf("Quay")) << "no two rooms share a cell";
}

TEST(MapPanel, DragsFromPortsMakeRoomsAndConnections) {
    MapProgram p(ThreeRooms);
    const map::Cell north = p.CellOf("Quay") + map::Cell{0, -1};
    p.Drag(p.Port("Quay", 0), p.Canvas().PointOfCell(north));
    p.Name("Office");
    EXPECT_EQ(p.Exits(), "Quay north Office, Quay east Mole, Mole south msg <Too deep.>, Mole west Quay, "
                         "Office south Quay");
    EXPECT_EQ(p.CellOf("Office"), north);
    EXPECT_EQ(p.LastStep(), "add room Office");
    EXPECT_EQ(p.SelectedRow("lstRooms"), 3);

    p.Drag(p.Port("Cliff", 6), p.Room("Office"), Qt::ControlModifier);
    p.Wait();
    EXPECT_NE(p.Exits().find("Cliff west Office"), std::string::npos);
    EXPECT_EQ(p.Exits().find("Office east"), std::string::npos) << "with Ctrl one way";
    p.Trigger("mnuToolsUndo");
    p.Wait();
    p.Drag(p.Port("Cliff", 6), p.Port("Office", 1));
    p.Wait();
    EXPECT_NE(p.Exits().find("Office northeast Cliff"), std::string::npos) << "from port to port";

    const QString question = QStringLiteral(
        "Replace script: The exit runs a script. Replace the script by a plain exit to Cliff?");
    const std::string before = p.Exits();
    p.dialogs.Message(question, QMessageBox::No);
    p.Drag(p.Port("Mole", 4), p.Room("Cliff"));
    p.Wait();
    EXPECT_EQ(p.Exits(), before);
    p.dialogs.Message(question, QMessageBox::Yes);
    p.Drag(p.Port("Mole", 4), p.Room("Cliff"));
    p.Wait();
    EXPECT_NE(p.Exits().find("Mole south Cliff"), std::string::npos);
}

TEST(MapPanel, ARoomIsNotAddedTwiceAndEscapeAddsNone) {
    MapProgram p(ThreeRooms);
    p.Canvas().setFocus();
    p.Key(Qt::Key_Q);
    p.Key(Qt::Key_Up, Qt::ControlModifier);
    auto* box = p.Canvas().findChild<QLineEdit*>(QStringLiteral("txtNewRoom"));
    ASSERT_NE(box, nullptr);
    QTest::keyClicks(box, QStringLiteral("Loft"));
    QTest::keyClick(box, Qt::Key_Escape);
    p.Wait();
    EXPECT_EQ(p.game.Rooms.Count(), 3);
    p.Key(Qt::Key_Up, Qt::ControlModifier);
    p.dialogs.Message(
        QStringLiteral("ZEM: The command was not carried out: there is a room of this name already: Mole."));
    p.Name("mole");
    EXPECT_EQ(p.game.Rooms.Count(), 3);
    EXPECT_FALSE(p.game.Modified);
}

TEST(MapPanel, IsDrawnByKeyboardSavedAndFoundAsItWas) {
    MapProgram p("define game <Map>\r\nstart <Hall>\r\nend define\r\ndefine room <Hall>\r\nend define\r\n");
    p.Key(Qt::Key_H);
    for (const auto& [key, name] : {std::pair(Qt::Key_Up, "North"), std::pair(Qt::Key_PageUp, "Corner"),
                                    std::pair(Qt::Key_Right, "East")}) {
        p.Key(key, Qt::ControlModifier);
        p.Name(name);
    }
    p.Key(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(p.Exits(), "Hall north North, North northeast Corner, North south Hall, Corner east East, "
                         "Corner southwest North, East west Corner");
    p.Key(Qt::Key_Insert);
    p.Name("Isle");
    const std::vector<map::Cell> cells = p.Canvas().Map().Cells();
    p.Trigger("mnuFileSave");
    EXPECT_NE(p.Saved().find("zem-map <"), std::string::npos);
    p.program.reset();
    p.Start(p.Path("game.kel"));
    p.ShowMap();
    EXPECT_EQ(p.Canvas().Map().Cells(), cells);
    EXPECT_FALSE(p.game.Modified);
    p.Key(Qt::Key_E);
    p.Key(Qt::Key_Delete);
    EXPECT_EQ(p.game.Rooms.Count(), 4);
    p.Trigger("mnuToolsUndo");
    p.Wait();
    EXPECT_EQ(p.Canvas().Map().Cells(), cells);
    Find<QAction>(p.Panel(), "actForget").trigger();
    p.Wait();
    for (const zem::Room& room : p.game.Rooms)
        EXPECT_EQ(room.MiscTags.find("zem-map"), std::string::npos);
}

TEST(MapPanel, TheMenuTurnsAndRemovesConnections) {
    const MapProgram p(ThreeRooms);
    const auto choose = [&](QPoint at, const char* start) {
        EXPECT_TRUE(p.Choose(at, {QLatin1String(start)})) << start;
    };
    const auto line = [&] { return (p.Room("Quay") + p.Room("Mole")) / 2; };
    choose(line(), "Turn around");
    EXPECT_EQ(p.Exits(), "Quay west Mole, Mole east Quay, Mole south msg <Too deep.>");
    p.Canvas().FitAll();
    choose(line(), "Only west");
    EXPECT_EQ(p.Exits(), "Quay west Mole, Mole south msg <Too deep.>");
    choose(line(), "Add the way back");
    EXPECT_EQ(p.Exits(), "Quay west Mole, Mole east Quay, Mole south msg <Too deep.>");
    choose(line(), "Remove connection");
    EXPECT_EQ(p.Exits(), "Mole south msg <Too deep.>");
    choose(p.Room("Mole"), "Delete room");
    EXPECT_EQ(p.game.Rooms.Count(), 2);
}

TEST(MapPanel, ARoomRemovedThereIsToldWhereItIsStillUsed) {
    MapProgram p("define game <Map>\r\nstart <Quay>\r\nstartscript goto <Isle>\r\nend define\r\n"
                 "define room <Quay>\r\nend define\r\ndefine room <Isle>\r\nend define\r\n");
    p.Key(Qt::Key_I);
    p.Key(Qt::Key_Delete);
    ASSERT_EQ(p.game.Rooms.Count(), 1);
    const auto bar = [&] { return p.Main()->findChild<MessageBar*>(); };
    ASSERT_TRUE(QTest::qWaitFor([&] { return bar() != nullptr; }, 10000));
    EXPECT_EQ(bar()->Text(), "1 place used the room Isle.");
    for (QPushButton* button : bar()->findChildren<QPushButton*>())
        if (button->text() == "U&ndo")
            button->click();
    EXPECT_EQ(p.game.Rooms.Count(), 2);
}

TEST(MapPanel, AClickOnAHollowEndMakesTheRoom) {
    MapProgram p("define game <Map>\r\nstart <Hall>\r\nend define\r\n"
                 "define room <Hall>\r\nnorth <Loft>\r\neast <Yard>\r\nend define\r\n");
    p.Canvas().ZoomTo(1);
    const QPoint port = p.Port("Hall", 0);
    QTest::mouseClick(&p.Canvas(), Qt::LeftButton, {}, port);
    EXPECT_EQ(p.game.Rooms.Count(), 1) << "a click at the port chooses the room";
    QTest::mouseClick(&p.Canvas(), Qt::LeftButton, {}, port - QPoint(0, 20));
    p.Wait();
    ASSERT_EQ(p.game.Rooms.Count(), 2);
    EXPECT_EQ(p.game.Rooms[2].Name, "Loft");
    EXPECT_EQ(p.CellOf("Loft") - p.CellOf("Hall"), (map::Cell{0, -1}));
    EXPECT_EQ(p.Exits(), "Hall north Loft, Hall east Yard");
    EXPECT_EQ(p.LastStep(), "add room Loft");
}

TEST(MapPanel, KeysReachConnectionsAndSelectSeveralRooms) {
    const MapProgram p(ThreeRooms);
    p.Canvas().setFocus();
    p.Key(Qt::Key_Q);
    EXPECT_TRUE(p.Choose({}, {"Connections", "east Mole", "Turn around"}, QContextMenuEvent::Keyboard));
    EXPECT_EQ(p.Exits(), "Quay west Mole, Mole east Quay, Mole south msg <Too deep.>");
    p.Key(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(p.Canvas().Selected(), (std::set<int>{0, 1}));
    const map::Cell quay = p.CellOf("Quay");
    const map::Cell mole = p.CellOf("Mole");
    p.Key(Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(p.CellOf("Quay"), quay + (map::Cell{0, -1}));
    EXPECT_EQ(p.CellOf("Mole"), mole + (map::Cell{0, -1}));
    EXPECT_EQ(p.LastStep(), "move 2 rooms on the map");
}

/// A desktop with or without motion.
class MotionStyle : public QProxyStyle {
public:
    explicit MotionStyle(int duration) : duration_(duration) {}
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override {
        return hint == SH_Widget_Animation_Duration ? duration_
                                                    : QProxyStyle::styleHint(hint, option, widget, data);
    }

private:
    int duration_;
};

TEST(MapPanel, RoomsGlideToTheirPlacesWhereTheDesktopWantsMotion) {
    for (const int duration : {0, 200}) {
        MotionStyle style(duration);
        const MapProgram p(ThreeRooms);
        p.Canvas().setStyle(&style);
        std::vector<map::Cell> cells = p.Canvas().Map().Cells();
        const auto show = [&] {
            p.Canvas().Show(std::make_shared<routing::Router>(p.Canvas().Map().graph, cells), {});
        };
        show();
        EXPECT_FALSE(p.Canvas().IsMoving()) << "nothing has moved";
        cells[1] = cells[1] + map::Cell{0, 3};
        show();
        EXPECT_EQ(p.Canvas().IsMoving(), duration > 0);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !p.Canvas().IsMoving(); })) << "and it ends";
    }
}

TEST(MapPanel, TellsScreenReadersItsRooms) {
    const MapProgram p(ThreeRooms);
    QAccessibleInterface* map = QAccessible::queryAccessibleInterface(&p.Canvas());
    ASSERT_NE(map, nullptr);
    ASSERT_EQ(map->childCount(), 3);
    EXPECT_EQ(map->child(1)->text(QAccessible::Name), QStringLiteral("Mole"));
    // What is wrong with it comes behind that, as soon as it is known.
    const QString description = map->child(1)->text(QAccessible::Description);
    EXPECT_TRUE(description.startsWith(QStringLiteral("south runs a script, west to Quay")))
        << description.toStdString();
    EXPECT_EQ(map->indexOfChild(map->child(2)), 2);
    EXPECT_EQ(map->child(3), nullptr);
    const QPoint middle = p.Canvas().mapToGlobal(p.Room("Cliff"));
    EXPECT_EQ(map->childAt(middle.x(), middle.y()), map->child(2));
}

TEST(MapCommands, ItsKeyBringsTheMapBeforeThePanelOnTopOfIt) {
    RunningProgram p(ThreeRooms);
    p.Main()->resize(1400, 900);
    p.Main()->show();
    p.Trigger("mnuToolsMap");
    p.Trigger("mnuToolsPlay");
    auto& map = *p.Main()->findChild<MapPanel*>();
    ASSERT_TRUE(QTest::qWaitFor([&] { return map.visibleRegion().isEmpty(); }));
    p.Trigger("mnuToolsMap");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !map.visibleRegion().isEmpty(); }));
    EXPECT_TRUE(p.Find<QAction>("mnuToolsMap")->isChecked());
    p.Trigger("mnuToolsMap");
    EXPECT_TRUE(map.isHidden());
    EXPECT_FALSE(p.Find<QAction>("mnuToolsMap")->isChecked());
}

/// What the list of rooms can do with rooms the map can do, too, with the same keys.
TEST(MapCommands, TakesRoomsThroughTheClipboard) {
    MapProgram p(ThreeRooms);
    const std::string before = GameFile(p.game);
    p.Canvas().Select(p.Number("Mole"));
    p.Key(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith("define room <Mole>\nsouth msg"));
    QTest::keyClick(&p.Canvas(), Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(p.LastStep(), "duplicate room Mole 2");
    ASSERT_TRUE(p.Panel().IsBusy());
    p.dialogs.Message("Map: The map is just being laid out; try again in a moment.");
    p.Key(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(p.game.Rooms.Count(), 4) << "its numbers may be those of other rooms";
    p.Key(Qt::Key_A, Qt::ControlModifier);
    p.Key(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(p.LastStep(), "cut 4 rooms");
    EXPECT_EQ(p.game.Rooms.Count(), 0);
    p.dialogs.Message("Map: Select a room on the map first.");
    p.Key(Qt::Key_D, Qt::ControlModifier);
    p.dialogs.ExpectAllAsked();
    p.Key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(p.game.Rooms.Count(), 4);
    p.Trigger("mnuToolsUndo");
    p.Trigger("mnuToolsUndo");
    p.Trigger("mnuToolsUndo");
    EXPECT_EQ(GameFile(p.game), before);
}

TEST(MapCommands, OfAMenuBesideTheRoomsLeaveTheSelectedOnesAlone) {
    const MapProgram p(ThreeRooms);
    QTest::mouseClick(&p.Canvas(), Qt::LeftButton, {}, p.Room("Cliff"));
    const QPoint ground = p.Room("Cliff") + QPoint(0, 150);
    ASSERT_EQ(p.Canvas().RoomAt(ground), map::NoRoom);
    EXPECT_FALSE(p.Choose(ground, {"Delete room"}));
    EXPECT_EQ(p.game.Rooms.Count(), 3);
    EXPECT_TRUE(p.Choose(ground, {"New room here"}));
    p.Name("Tarn");
    EXPECT_EQ(p.game.Rooms.Count(), 4);
    EXPECT_TRUE(p.Choose(p.Room("Tarn"), {"Delete room"}));
    EXPECT_EQ(p.game.Rooms.Count(), 3);
}

TEST(MapCommands, MakesARoomTheFirstOne) {
    MapProgram p(ThreeRooms);
    QTest::mouseClick(&p.Canvas(), Qt::LeftButton, {}, p.Room("Cliff"));
    p.Trigger("actStartHere");
    EXPECT_EQ(p.game.StartRoom, "Cliff");
    EXPECT_EQ(p.LastStep(), "start in Cliff");
    p.Wait();
    EXPECT_EQ(p.Canvas().Map().graph.start, p.Number("Cliff"));
}

} // namespace
} // namespace zem::test
