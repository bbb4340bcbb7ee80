// What an author does a hundred times a day, counted in presses of keys; typed text costs nothing.
#include "panels/MapPanel.h"
#include "panels/PlayPanel.h"
#include "panels/WhereUsedPanel.h"
#include "support/Cases.h"
#include "support/RunningProgram.h"
#include "support/Typist.h"

#include <gtest/gtest.h>

namespace zem::test {
namespace {

constexpr const char* SmallHouse =
    "define game <House>\r\nstart <Hall>\r\nitems <lamp; key>\r\nend define\r\n"
    "define room <Hall>\r\nzem-map <0; 0>\r\nnorth do <greet>\r\n"
    "define object <jar>\r\nlook <A jar.>\r\nend define\r\nend define\r\n"
    "define room <Pantry>\r\nzem-map <1; 0>\r\nend define\r\n"
    "define procedure <greet>\r\ngoto <Hall>\r\nend define\r\n";

struct Task {
    const char* name;
    int most;                                                 // presses
    std::vector<std::pair<const char*, QStringList>> presses; // by window
    const char* result;                                       // stands in the saved game afterwards
};

/// Presses that a task takes, text not counted.
int CountPresses(const Task& task) {
    int count = 0;
    for (const auto& [window, keys] : task.presses)
        for (const QString& key : keys)
            count += key.startsWith(u'"') ? 0 : 1;
    return count;
}

/// Opens the game with the focus in a list or box of the main window.
class House {
public:
    explicit House(const char* focus = "lstRooms") {
        p.folder.Write("game.kel", SmallHouse);
        program = std::make_unique<Program>(p.game, p.store, dialogs, p.programFolder, p.Path("state"));
        program->Main(p.Path("game.kel"));
        main().findChild<QWidget*>(QLatin1String(focus))->setFocus();
    }
    frmMain& main() const { return *program->MainWindow(); }

    void Do(const Task& task) {
        Typist keys;
        for (const auto& [window, pressed] : task.presses)
            keys.In(window, pressed);
        keys.Type();
    }

    RunningProgram p;
    QtDialogs dialogs;
    std::unique_ptr<Program> program;
};

TEST(EverydayTasks, TakeFewPresses) {
    for (const Task& task : std::vector<Task>{
             {"a description",
              2,
              {{"frmMain", {"Return"}}, {"frmRoomProperties", {"\"Warm and dry.\"", "Ctrl+Return"}}},
              "look <Warm and dry.>"},
             {"rename", 2, {{"frmMain", {"F2"}}, {"frmRename", {"\"Lobby\"", "Return"}}}, "goto <Lobby>"},
             {"undo", 1 + 1, {{"frmMain", {"Del", "Ctrl+Z"}}}, "define room <Hall>"},
         }) {
        EXPECT_LE(CountPresses(task), task.most) << task.name;
        House house;
        house.Do(task);
        const std::string saved = GameFile(house.p.game);
        EXPECT_NE(saved.find(task.result), std::string::npos) << task.name << ":\n" << saved;
    }
}

TEST(EverydayTasks, WriteAScriptAndABranchInOneWindow) {
    const Task lines = {
        "a script of two lines",
        6,
        {{"frmScriptLines", {"Alt+T", "\"print Good day.\"", "Return", "\"give lamp\"", "Return", "Return"}}},
        ""};
    const Task branch = {"if with else",
                         12,
                         {{"frmScriptLines", {"Alt+C"}},
                          {"frmConditional",
                           {"\"the player has an item\"", "Alt+P", "\"lamp\"", "Alt+Y",
                            "\"print It is light.\"", "Return", "\"goto Pantry\"", "Return", "Alt+B",
                            "\"print It is dark.\"", "Return", "\"give lamp\"", "Return", "Ctrl+Return"}}},
                         ""};
    EXPECT_LE(CountPresses(lines) + 1, lines.most) << "with the press that opens the window";
    EXPECT_LE(CountPresses(branch), branch.most);
    House house;
    Typist keys;
    keys.In("frmMain", {"Ctrl+P"});
    keys.In("frmProcedureEditor", {"\"greet\"", "Alt+E"});
    for (const auto& [window, pressed] : lines.presses)
        keys.In(window, pressed);
    keys.In("frmProcedureEditor", {"Alt+E"});
    for (const auto& [window, pressed] : branch.presses)
        keys.In(window, pressed);
    keys.In("frmScriptLines", {"Ctrl+Return"});
    keys.In("frmProcedureEditor", {"Escape"});
    keys.Type();
    const std::string saved = GameFile(house.p.game);
    for (const char* line : {"msg <Good day.>\r\n", "if has <lamp> then do <~Internal Procedure",
                             "goto <Pantry>\r\n", "msg <It is dark.>\r\n"})
        EXPECT_NE(saved.find(line), std::string::npos) << line << " in:\n" << saved;
}

TEST(EverydayTasks, DeleteAnObjectWithAClickAndAKey) {
    House house;
    auto& objects = Find<QAbstractItemView>(house.main(), "lstObjects");
    QTest::mouseClick(objects.viewport(), Qt::LeftButton, {},
                      objects.visualRect(objects.model()->index(0, 0)).center());
    QTest::keyClick(&objects, Qt::Key_Delete);
    EXPECT_TRUE(house.p.game.Rooms[1].Objects.IsEmpty());
}

TEST(EverydayTasks, AskAndPlayWithOnePress) {
    House house;
    Typist keys;
    keys.In("frmMain", {"Shift+F12"});
    keys.Type();
    const auto* used = house.main().findChild<WhereUsedPanel*>();
    ASSERT_NE(used, nullptr);
    EXPECT_TRUE(used->isVisible());
    Typist more;
    more.In("frmMain", {"F5"});
    more.Type();
    const auto* player = house.main().findChild<PlayPanel*>();
    ASSERT_NE(player, nullptr);
    EXPECT_TRUE(player->isVisible());
}

TEST(EverydayTasks, AddAndConnectRoomsOnTheMap) {
    for (const Task& task : std::vector<Task>{
             {"add a room", 2, {{"frmMain", {"Ins", "\"Attic\"", "Return"}}}, "define room <Attic>"},
             {"connect two rooms", 4, {{"frmMain", {"H", "Ctrl+Right"}}}, "west <Hall>"}}) {
        EXPECT_LE(CountPresses(task), task.most) << task.name;
        House house;
        house.main().findChild<QAction*>("mnuToolsMap")->trigger();
        auto* map = house.main().findChild<MapPanel*>();
        ASSERT_NE(map, nullptr);
        ASSERT_TRUE(QTest::qWaitFor([map] { return !map->IsBusy(); }));
        map->Canvas().setFocus();
        house.Do(task);
        ASSERT_TRUE(QTest::qWaitFor([map] { return !map->IsBusy(); }));
        const std::string saved = GameFile(house.p.game);
        EXPECT_NE(saved.find(task.result), std::string::npos) << task.name << ":\n" << saved;
    }
}

} // namespace
} // namespace zem::test
