#include "game/GoneNames.h"

#include "game/WhereUsed.h"
#include "support/Catalogue.h"
#include "support/Games.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace zem::test {
namespace {

constexpr const char* UsedNames =
    "define game <G>\nstart <Hall>\nitems <key, oar>\ncollectables <gold 0 [! coins], luck 0 [!]>\n"
    "startscript {\ndo <sing>\nchoose <talk>\ntext <sign>\ngive <key>\ngain <gold; 1>\nshow <cup>\n"
    "reveal <Tom>\n}\nend define\n"
    "define room <Hall>\nscript goto <Hall>\ndefine character <Tom>\nend define\ndefine object <cup>\nend "
    "define\n"
    "define object <pen>\nend define\nend define\n"
    "define room <Attic>\ndefine object <pen>\nend define\nscript do <~Internal Procedure 1>\nend "
    "define\n"
    "define procedure <sing>\nend define\ndefine procedure <~Internal Procedure 1>\nshow <pen>\nmsg <x>\nend "
    "define\n"
    "define selection <talk>\nend define\ndefine text <sign>\nend define\n";

TEST(GoneNames, AreThoseThatAreStillUsed) {
    const CommandCatalogue catalogue = ShippedCatalogue();
    const CommandLookup commands{catalogue};
    const GameModel before = LoadBytes(CrLf(UsedNames));
    const auto after = [&](const std::function<void(GameModel&)>& edit) {
        GameModel game = before;
        edit(game);
        std::string told;
        for (const GoneName& gone : FindGoneNames(before, GameIndex(commands, game)))
            told += std::string(Describe(gone.kind)) + " " + gone.name + " > " + gone.newName + " " +
                    std::to_string(gone.uses) + ", ";
        return told;
    };
    const std::vector<std::pair<std::function<void(GameModel&)>, std::string>> edits = {
        {[](GameModel&) {}, ""},
        {[](GameModel& game) { game.Rooms.Remove(1); },
         "room Hall >  1, character Tom >  1, object cup >  1, "},
        {[](GameModel& game) { game.Rooms.Edit(1).Name = "Parlour"; }, "room Hall > Parlour 2, "},
        {[](GameModel& game) { game.Rooms.Remove(2); }, ""}, // a pen is left in the hall
        {[](GameModel& game) { game.Rooms.Edit(1).Objects.Remove(2); }, ""},
        {[](GameModel& game) { game.Items.Edit(1).Name = "latchkey"; }, "item key > latchkey 1, "},
        {[](GameModel& game) { game.Items.Remove(2); }, ""}, // nothing uses the oar
        {[](GameModel& game) {
             for (int k = game.Procedures.Count(); k > 0; --k)
                 if (game.Procedures[k].Name == "sing")
                     game.Procedures.Remove(k);
         },
         "procedure sing >  1, "},
        {[](GameModel& game) { game.SelectionMenus.Edit(1).Name = "chat"; }, "menu talk > chat 1, "},
        {[](GameModel& game) { game.TextSections.Clear(); }, "text sign >  1, "},
        {[](GameModel& game) { game.Collectables.Remove(1); }, "collectable gold >  1, "},
        {[](GameModel& game) { std::swap(game.Items.Edit(1).Name, game.Items.Edit(2).Name); }, ""},
    };
    for (std::size_t k = 0; k < edits.size(); ++k)
        EXPECT_EQ(after(edits[k].first), edits[k].second) << "edit " << k;
}

} // namespace
} // namespace zem::test
