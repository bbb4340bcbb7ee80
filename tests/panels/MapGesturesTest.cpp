// Every gesture of mouse and keys on the map: what it makes of the game, that it is one step, and that a
// gesture which is given up leaves everything as it was.
#include "editors/frmRoomProperties.h"
#include "support/Cases.h"
#include "support/MapProgram.h"
#include "support/UndoLaw.h"

#include <functional>

namespace zem::test {
namespace {

/// Each room that a gesture begins at stands where the author placed it, so that points are known.
const std::string Harbour =
    CrLf("define game <Harbour>\nstart <Quay>\nend define\n"
         "define room <Quay>\nnorth msg <Too high.>\neast <Mole>\nnorthwest <Nowhere>\n"
         "zem-map <0; 0>\nend define\n"
         "define room <Mole>\nwest <Quay>\nzem-map <2; 0>\nend define\n"
         "define room <Cliff>\nzem-map <0; 2>\nend define\n"
         "define room <Cave>\nsouth <Cave>\nzem-map <2; 2>\nend define\n"
         "define room <Shed>\nout <Cave>\nend define\n");

constexpr map::Direction PortNorth = 0;
constexpr map::Direction PortEast = 2;
constexpr map::Direction PortSouthEast = 3;
constexpr map::Direction PortSouth = 4;
constexpr map::Direction PortWest = 6;

using MapAct = std::function<void(MapProgram&)>;

QPoint CellPoint(const MapProgram& p, int x, int y) {
    const map::Cell quay = p.CellOf("Quay");
    return p.Canvas().PointOfCell({quay.x + x, quay.y + y});
}

/// A drag that is given up on its way.
void DragAndGiveUp(const MapProgram& p, QPoint from, QPoint to, Qt::KeyboardModifiers keys = {}) {
    QTest::mousePress(&p.Canvas(), Qt::LeftButton, keys, from);
    QTest::mouseMove(&p.Canvas(), (from + to) / 2);
    QTest::mouseMove(&p.Canvas(), to);
    QTest::keyClick(&p.Canvas(), Qt::Key_Escape);
    QTest::mouseRelease(&p.Canvas(), Qt::LeftButton, keys, to);
}

/// Types a name for the new room that is asked for, and a key.
void AnswerName(const MapProgram& p, const QString& name, Qt::Key key) {
    auto* box = p.Canvas().findChild<QLineEdit*>(QStringLiteral("txtNewRoom"));
    ASSERT_NE(box, nullptr) << "no name is asked for";
    QTest::keyClicks(box, name);
    QTest::keyClick(box, key);
}

std::string Cells(const MapProgram& p) {
    std::string told;
    for (const map::Cell cell : p.Canvas().Map().Cells())
        told += std::to_string(cell.x) + "," + std::to_string(cell.y) + " ";
    return told;
}

TEST(MapGestures, ThatAreGivenUpOrLeadNowhereChangeNothing) {
    const QPoint outside(-60, 300);
    for (const auto& [what, act] : Cases<const char*, MapAct>{
             {"a click at a room",
              [](MapProgram& p) { QTest::mouseClick(&p.Canvas(), Qt::LeftButton, {}, p.Room("Mole")); }},
             {"a click at a port",
              [](MapProgram& p) {
                  QTest::mouseClick(&p.Canvas(), Qt::LeftButton, {}, p.Port("Cliff", PortEast));
              }},
             {"a hand that trembles",
              [](MapProgram& p) { p.Drag(p.Room("Cliff"), p.Room("Cliff") + QPoint(1, 1)); }},
             {"a room and back",
              [](MapProgram& p) {
                  QTest::mousePress(&p.Canvas(), Qt::LeftButton, {}, p.Room("Cliff"));
                  const QPoint home = p.Room("Cliff");
                  QTest::mouseMove(&p.Canvas(), CellPoint(p, 1, 2));
                  QTest::mouseMove(&p.Canvas(), home);
                  QTest::mouseRelease(&p.Canvas(), Qt::LeftButton, {}, home);
              }},
             {"the ground", [](MapProgram& p) { p.Drag(CellPoint(p, 1, 1), CellPoint(p, 2, 1)); }},
             {"a frame",
              [](MapProgram& p) { p.Drag(CellPoint(p, -1, 1), CellPoint(p, 3, 3), Qt::ShiftModifier); }},
             {"a room, Escape", [](MapProgram& p) { DragAndGiveUp(p, p.Room("Cliff"), CellPoint(p, 1, 1)); }},
             {"a port to a room, Escape",
              [](MapProgram& p) { DragAndGiveUp(p, p.Port("Cliff", PortEast), p.Room("Cave")); }},
             {"a port to the ground, Escape",
              [](MapProgram& p) { DragAndGiveUp(p, p.Port("Cliff", PortEast), CellPoint(p, 1, 2)); }},
             {"a frame, Escape",
              [](MapProgram& p) {
                  DragAndGiveUp(p, CellPoint(p, -1, 1), CellPoint(p, 3, 3), Qt::ShiftModifier);
              }},
             {"a port to itself",
              [](MapProgram& p) {
                  const QPoint port = p.Port("Cliff", PortEast);
                  QTest::mousePress(&p.Canvas(), Qt::LeftButton, {}, port);
                  QTest::mouseMove(&p.Canvas(), CellPoint(p, 1, 2));
                  QTest::mouseMove(&p.Canvas(), port);
                  QTest::mouseRelease(&p.Canvas(), Qt::LeftButton, {}, port);
              }},
             {"a port out of the window",
              [outside](MapProgram& p) { p.Drag(p.Port("Cliff", PortEast), outside); }},
             {"a room out of the window", [outside](MapProgram& p) { p.Drag(p.Room("Cliff"), outside); }},
             {"several rooms, Escape",
              [](MapProgram& p) {
                  QTest::mouseClick(&p.Canvas(), Qt::LeftButton, {}, p.Room("Cliff"));
                  QTest::mouseClick(&p.Canvas(), Qt::LeftButton, Qt::ControlModifier, p.Room("Cave"));
                  DragAndGiveUp(p, p.Room("Cliff"), CellPoint(p, 0, 3));
              }},
             {"a name, Escape",
              [](MapProgram& p) {
                  p.Drag(p.Port("Cliff", PortEast), CellPoint(p, 1, 2));
                  AnswerName(p, "Loft", Qt::Key_Escape);
              }},
             {"no name",
              [](MapProgram& p) {
                  p.Drag(p.Port("Cliff", PortEast), CellPoint(p, 1, 2));
                  AnswerName(p, "", Qt::Key_Return);
              }},
             {"an exit with a script, No",
              [](MapProgram& p) {
                  p.dialogs.Message(
                      "Replace script: The exit runs a script. Replace the script by a plain exit "
                      "to Cave?",
                      QMessageBox::No);
                  p.Drag(p.Port("Quay", PortNorth), p.Room("Cave"));
              }},
             {"an exit with a script to a new room, No",
              [](MapProgram& p) {
                  p.dialogs.Message(
                      "Replace script: The exit runs a script. Replace the script by a plain exit "
                      "to Loft?",
                      QMessageBox::No);
                  p.Drag(p.Port("Quay", PortNorth), CellPoint(p, 0, -2));
                  AnswerName(p, "Loft", Qt::Key_Return);
              }},
             {"an editor that is cancelled",
              [](MapProgram& p) {
                  WhenOpen<frmRoomProperties>([](frmRoomProperties& form) { Click(form, "butCancel"); });
                  QTest::mouseDClick(&p.Canvas(), Qt::LeftButton, {}, p.Room("Cave"));
              }},
             {"the panel goes in the middle of a drag",
              [](MapProgram& p) {
                  QTest::mousePress(&p.Canvas(), Qt::LeftButton, {}, p.Room("Cliff"));
                  QTest::mouseMove(&p.Canvas(), CellPoint(p, 1, 1));
                  p.Trigger("mnuToolsMap");
                  p.Trigger("mnuToolsMap");
                  QTest::mouseRelease(&p.Canvas(), Qt::LeftButton, {}, CellPoint(p, 1, 1));
              }},
             {"walking and finding",
              [](MapProgram& p) {
                  for (const Qt::Key key : {Qt::Key_C, Qt::Key_Q, Qt::Key_Right, Qt::Key_Up, Qt::Key_Home})
                      p.Key(key);
              }},
         }) {
        SCOPED_TRACE(what);
        MapProgram p(Harbour);
        const std::string before = GameFile(p.game);
        const std::string cells = Cells(p);
        act(p);
        p.Wait();
        p.dialogs.ExpectAllAsked();
        EXPECT_EQ(Difference(before, GameFile(p.game)), "");
        EXPECT_FALSE(p.game.Modified);
        EXPECT_EQ(Cells(p), cells);
        // No gesture is left over: the mouse does no more than move over the rooms.
        p.Canvas().FitAll();
        QTest::mouseMove(&p.Canvas(), p.Room("Mole"));
        QTest::mouseMove(&p.Canvas(), CellPoint(p, 1, 1));
        EXPECT_EQ(Cells(p), cells);
        EXPECT_EQ(p.Canvas().findChild<QLineEdit*>(QStringLiteral("txtNewRoom")), nullptr)
            << "no name is asked for";
        QTest::mouseClick(&p.Canvas(), Qt::LeftButton, {}, CellPoint(p, 1, 1)); // lets go of a selection
        p.Drag(p.Room("Cliff"), CellPoint(p, 1, 2));
        p.Wait();
        EXPECT_EQ(p.CellOf("Cliff") - p.CellOf("Quay"), (map::Cell{1, 2})) << "and the next drag works";
        EXPECT_EQ(p.LastStep(), "move Cliff on the map");
    }
}

struct MapChange {
    const char* what;
    MapAct act;
    const char* difference; // of the game files
    const char* step;
};

TEST(MapGestures, AreOneStepEachThatComesAndGoesWithUndoAndRedo) {
    for (const MapChange& change : std::vector<MapChange>{
             {"a port to a room", [](MapProgram& p) { p.Drag(p.Port("Cliff", PortEast), p.Room("Cave")); },
              "+east <Cave>|+west <Cliff>", "connect Cliff east to Cave"},
             {"a port to a room, one way",
              [](MapProgram& p) { p.Drag(p.Port("Cliff", PortEast), p.Room("Cave"), Qt::ControlModifier); },
              "+east <Cave>", ""},
             {"a port to a port",
              [](MapProgram& p) { p.Drag(p.Port("Cliff", PortSouth), p.Port("Cave", PortNorth)); },
              "+south <Cave>|+north <Cliff>", ""},
             {"a port to a room whose other port is taken",
              [](MapProgram& p) { p.Drag(p.Port("Cliff", PortNorth), p.Room("Cave")); }, "+north <Cave>", ""},
             {"an unknown exit to a room", [](MapProgram& p) { p.Drag(p.Port("Quay", 7), p.Room("Cliff")); },
              "-northwest <Nowhere>|+northwest <Cliff>|+southeast <Quay>", ""},
             {"a port to the ground",
              [](MapProgram& p) {
                  p.Drag(p.Port("Cliff", PortEast), CellPoint(p, 1, 2));
                  AnswerName(p, "Loft", Qt::Key_Return);
              },
              "+east <Loft>|+define room <Loft>|+west <Cliff>|+zem-map <1; 2>|+|+end define|+",
              "add room Loft"},
             {"a room", [](MapProgram& p) { p.Drag(p.Room("Cliff"), CellPoint(p, 0, 3)); },
              "-zem-map <0; 2>|+zem-map <0; 3>", "move Cliff on the map"},
             {"several rooms",
              [](MapProgram& p) {
                  QTest::mouseClick(&p.Canvas(), Qt::LeftButton, {}, p.Room("Cliff"));
                  QTest::mouseClick(&p.Canvas(), Qt::LeftButton, Qt::ControlModifier, p.Room("Cave"));
                  p.Drag(p.Room("Cave"), CellPoint(p, 2, 3));
              },
              "-zem-map <0; 2>|+zem-map <0; 3>|-zem-map <2; 2>|+zem-map <2; 3>", "move 2 rooms on the map"},
             {"rooms in a frame by key",
              [](MapProgram& p) {
                  p.Drag(CellPoint(p, -1, 1), CellPoint(p, 3, 3), Qt::ShiftModifier);
                  p.Key(Qt::Key_Delete);
              },
              nullptr, "delete 3 rooms"},
             {"Ctrl and an arrow to a room",
              [](MapProgram& p) {
                  p.Key(Qt::Key_M);
                  p.Key(Qt::Key_Down, Qt::ControlModifier);
              },
              nullptr, ""},
             {"Alt and an arrow",
              [](MapProgram& p) {
                  p.Key(Qt::Key_M);
                  p.Key(Qt::Key_PageUp, Qt::AltModifier);
              },
              "-zem-map <2; 0>|+zem-map <3; -1>", "move Mole on the map"},
             {"Insert",
              [](MapProgram& p) {
                  p.Key(Qt::Key_Insert);
                  AnswerName(p, "Isle", Qt::Key_Return);
              },
              nullptr, "add room Isle"},
             {"Del", [](MapProgram& p) { p.Key(Qt::Key_M), p.Key(Qt::Key_Delete); }, nullptr,
              "delete room Mole"},
             {"Del at a line",
              [](MapProgram& p) {
                  QTest::mouseClick(&p.Canvas(), Qt::LeftButton, {}, CellPoint(p, 1, 0));
                  p.Key(Qt::Key_Delete);
              },
              "-east <Mole>|-west <Quay>", ""},
             {"Forget", [](MapProgram& p) { Find<QAction>(p.Panel(), "actForget").trigger(); }, nullptr, ""},
         }) {
        SCOPED_TRACE(change.what);
        MapProgram p(Harbour);
        const std::string before = GameFile(p.game);
        const std::string cells = Cells(p);
        change.act(p);
        p.Wait();
        p.dialogs.ExpectAllAsked();
        if (change.difference != nullptr) {
            EXPECT_EQ(LineChanges(before, GameFile(p.game)), change.difference);
        }
        if (*change.step != '\0') {
            EXPECT_EQ(p.LastStep(), change.step);
        }
        ExpectOneStep(p, before);
        p.Wait();
        const std::string after = Cells(p);
        p.Trigger("mnuToolsUndo");
        p.Wait();
        EXPECT_EQ(Cells(p), cells);
        p.Trigger("mnuToolsRedo");
        p.Wait();
        EXPECT_EQ(Cells(p), after);
    }
}

/// Begins something on the map, lets the game become another one, and ends what was begun.
TEST(MapGestures, EndWhenTheGameUnderThemBecomesAnother) {
    const std::string one =
        CrLf("define game <One>\nstart <Cell>\nend define\ndefine room <Cell>\nend define\n");
    const auto from = [](const MapProgram& p, const std::string& begin) {
        if (begin == "port")
            return p.Port("Shed", PortWest);
        return begin == "end" ? p.Port("Quay", 7) - QPoint(14, 14)
                              : p.Room(begin == "room" ? "Shed" : "Cave");
    };
    for (const char* begin : {"port", "room", "several", "end", "frame", "name", "name by key"})
        for (const char* command : {"mnuFileNew", "mnuFileOpen", "mnuToolsUndo"})
            for (const bool waits : {false, true}) {
                SCOPED_TRACE(std::string(begin) + ", " + command + (waits ? ", later" : ""));
                MapProgram p(Harbour);
                // So that Undo takes a room away: the first one, and all numbers change.
                auto& session = p.program->Session();
                session.AsOneStep(QStringLiteral("add"), [&] {
                    session.Change([](GameModel& game) {
                        const GameModel before = game;
                        game.Rooms = {};
                        game.Rooms.Append().Name = "First";
                        for (const Room& room : before.Rooms)
                            game.Rooms.Append(room);
                    });
                });
                p.Wait();
                p.game.Modified = false;
                const Qt::KeyboardModifiers keys =
                    begin == std::string("frame") ? Qt::ShiftModifier : Qt::NoModifier;
                QPoint at = from(p, begin);
                if (begin == std::string("several"))
                    p.Drag(CellPoint(p, -1, 1), CellPoint(p, 3, 3), Qt::ShiftModifier);
                if (begin == std::string("name")) {
                    p.Drag(p.Port("Shed", PortEast), CellPoint(p, 4, 4));
                } else if (begin == std::string("name by key")) {
                    p.Key(Qt::Key_Insert);
                } else {
                    QTest::mousePress(&p.Canvas(), Qt::LeftButton, keys, at);
                    at += begin == std::string("end") ? QPoint() : QPoint(40, 40);
                    QTest::mouseMove(&p.Canvas(), at - QPoint(5, 5));
                    QTest::mouseMove(&p.Canvas(), at);
                }
                p.dialogs.CancelTheRest();
                if (command == std::string("mnuFileOpen"))
                    p.dialogs.OpenFile(PathToQt(p.folder.Write("one.kel", one)));
                p.Trigger(command);
                const std::string after = GameFile(p.game);
                if (waits)
                    p.Wait();
                if (auto* box = p.Canvas().findChild<QLineEdit*>(QStringLiteral("txtNewRoom"))) {
                    QTest::keyClicks(box, begin == std::string("name") ? "Late" : "");
                    QTest::keyClick(box, Qt::Key_Return); // It has no room to lead from.
                }
                QTest::mouseMove(&p.Canvas(), at + QPoint(3, 3));
                QTest::mouseRelease(&p.Canvas(), Qt::LeftButton, keys, at + QPoint(3, 3));
                p.Wait();
                EXPECT_EQ(LineChanges(after, GameFile(p.game)), "");
            }
}

} // namespace
} // namespace zem::test
