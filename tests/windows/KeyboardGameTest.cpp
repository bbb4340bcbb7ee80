// A game made with key presses alone, each sent to the control that has the focus then.
#include "support/RunningProgram.h"
#include "support/Typist.h"

#include <gtest/gtest.h>

namespace zem::test {
namespace {

TEST(Keyboard, MakesAGameOfThreeRooms) {
    RunningProgram p;
    QtDialogs dialogs;
    Program program(p.game, p.store, dialogs, p.programFolder, p.Path("state"));
    program.Main();

    Typist keys;
    keys.In("frmStart", {"Alt+N"});
    for (const char* room : {"\"Hall\"", "\"Yard\"", "\"Attic\""}) {
        keys.In("frmMain", {"Alt+R", "Ins"});
        keys.In("New room", {room, "Return"});
        keys.In("frmRoomProperties", {"Alt+P", "\"the\"", "Return"});
    }
    const std::pair<const char*, QStringList> exits[] = {
        {"Home", {"Alt+N", "\"Yard\""}}, {"Down", {"Alt+S", "\"Hall\""}}, {"End", {"Alt+O", "\"Hall\""}}};
    for (const auto& [row, exit] : exits) {
        keys.In("frmMain", {row, "Return"});
        keys.In("frmRoomProperties",
                QStringList(7, "Shift+Tab") + QStringList{"Space"}); // Opens the page of the exits.
        keys.In("frmRoomProperties", exit + QStringList{"Return"});
    }
    keys.In("frmMain", {"Alt+C", "Ins"});
    keys.In("New character", {"\"Bob\"", "Return"});
    keys.In("frmThingProperties", {"Alt+G", "\"he\"", "Return"});
    keys.In("frmMain", {"Alt+R", "Home", "Alt+O", "Ins"});
    keys.In("New object", {"\"lamp\"", "Return"});
    keys.In("frmThingProperties", {"Shift+Tab", "Shift+Tab", "Space", "Alt+L", "Return"});
    keys.In("frmScriptLines", {"Ins"});
    keys.In("frmScriptEditor", {"\"Print a message\"", "Alt+P", "\"Brass.\"", "Return"});
    keys.In("frmScriptLines", QStringList(9, "Tab") + QStringList{"Space"});
    keys.In("frmThingProperties", QStringList(4, "Tab") + QStringList{"Space"});
    keys.In("frmMain", {"Alt+E", "G", "P"});
    keys.In("frmGameProperties", {"\"Tower\"", "Tab", "\"Hall\"", "Return"});
    keys.In("frmMain", {"Alt+F", "A"});
    const QString path = p.Path("tower.kel");
    keys.In("Save As", {u'"' + path + u'"', "Return"});
    keys.In("frmMain", {"Alt+F", "X"});
    keys.Type();
    const auto withoutPath = [](const std::string& bytes) { return bytes.substr(bytes.find(" created by")); };
    EXPECT_EQ(withoutPath(ReadBytes(PathFromQt(path))),
              withoutPath(ReadBytes(ZEM_TEST_DATA "/made-by-keyboard.kel")));
}

} // namespace
} // namespace zem::test
