#include "game/StepName.h"

#include "support/Cases.h"

#include <functional>
#include <gtest/gtest.h>

namespace zem::test {
namespace {

TEST(NameStep, SaysWhatTheStepWasDoneTo) {
    GameModel game;
    game.Rooms.Append().Name = "Kitchen";
    game.Rooms.Append().Name = "Hall";
    game.Rooms.Edit(2).Objects.Append().Name = "lamp";
    game.Rooms.Edit(2).Script = "do <~Internal Procedure 1>";
    game.Procedures.Append({"~Internal Procedure 1", "win"});
    game.Procedures.Append({"ring", "win"});
    using Change = std::function<void(GameModel&)>;
    for (const auto& [command, change, name] : Cases<std::string, Change, std::string>{
             {"add room", [](GameModel& g) { g.Rooms.Append().Name = "Pantry"; }, "add room Pantry"},
             {"delete room", [](GameModel& g) { g.Rooms.Remove(1); }, "delete room Kitchen"},
             {"edit room", [](GameModel& g) { g.Rooms.Edit(1).Look = "x"; },
              "edit room Kitchen: description"},
             {"edit room",
              [](GameModel& g) {
                  Room& room = g.Rooms.Edit(2);
                  room.Alias = room.Prefix = room.Look = room.InDescription = "x";
              },
              "edit room Hall: alias, prefix, description and more"},
             {"edit room", [](GameModel& g) { g.Procedures.Edit(1).Script = "die"; },
              "edit room Hall: enter action"},
             {"edit object", [](GameModel& g) { g.Rooms.Edit(2).Objects.Edit(1).Hidden = true; },
              "edit object lamp in Hall: unavailable mark"},
             {"add character", [](GameModel& g) { g.Rooms.Edit(1).Characters.Append().Name = "cook"; },
              "add character cook in Kitchen"},
             {"delete object", [](GameModel& g) { g.Rooms.Edit(2).Objects.Remove(1); },
              "delete object lamp in Hall"},
             {"edit procedures",
              [](GameModel& g) {
                  g.Procedures.Edit(1).Script = "die";
                  g.Procedures.Edit(2).Script = "die";
              },
              "edit procedures: ring"},
             {"edit items", [](GameModel& g) { g.Items.Append().Name = "key"; }, "edit items: key"},
             {"edit game properties", [](GameModel& g) { g.GameAuthor = "A"; },
              "edit game properties: game author"},
             {"edit object", [](GameModel& g) { g.GameAuthor = "A"; }, "edit object"},
             {"rename a to b", [](GameModel& g) { g.Rooms.Edit(1).Name = "b"; }, "rename a to b"}}) {
        GameModel after = game;
        change(after);
        EXPECT_EQ(NameStep(command, game, after), name);
    }
}

} // namespace
} // namespace zem::test
