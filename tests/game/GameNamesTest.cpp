#include "game/GameNames.h"

#include "game/PrintGame.h"
#include "game/ScriptOwners.h"
#include "support/Cases.h"
#include "support/Catalogue.h"
#include "support/Games.h"
#include "support/SetField.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace zem::test {
namespace {

std::string Joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names)
        text += (text.empty() ? "" : ", ") + name;
    return text;
}

class NamesOfAGame : public testing::Test {
protected:
    NamesOfAGame() {
        game = LoadBytes(
            CrLf("define game <x>\nitems <lamp; oil>\nstartscript {\nset <mood; 1>\ntimer on <tide>\n}\n"
                 "command <shout #words#> if ask <Really, or not; yes?> then flag on <loud>\n"
                 "end define\n"
                 "define room <Hall>\nscript if not flag <seen> and more <turns; 9> then flag on <seen>\n"
                 "define object <lamp>\nlook msg <add <x; 1>\nend define\n"
                 "define character <Tom>\nend define\nend define\n"
                 "define room <Attic>\nend define\ndefine room <Hall>\nend define\n"
                 "define procedure <sing>\nmsg <set <no; 1>\nend define\n"));
    }

    GameModel game;
    const CommandLookup commands{ShippedCatalogue()};
};

TEST_F(NamesOfAGame, ArePlainAndEachOnce) {
    for (const auto& [kind, names] : Cases<NameKind, std::string>{
             {NameKind::None, ""},
             {NameKind::Room, "Hall, Attic"},
             {NameKind::Object, "lamp"},
             {NameKind::Character, "Tom"},
             {NameKind::Thing, "Tom, lamp"},
             {NameKind::Item, "lamp, oil"},
             {NameKind::Procedure, "sing"},
             {NameKind::TextSection, "intro, win, lose"},
             {NameKind::Variable, "mood, turns, words"},
             {NameKind::Flag, "loud, seen"},
             {NameKind::Timer, "tide"},
         })
        EXPECT_EQ(Joined(GameNames(game, kind, commands)), names);
}

TEST_F(NamesOfAGame, AreKeptUntilTheGameChanges) {
    NameCache cache(commands);
    EXPECT_EQ(Joined(*cache.Names(game, NameKind::Flag)), "loud, seen");
    const auto variables = cache.Names(game, NameKind::Variable);
    EXPECT_EQ(cache.Names(GameModel(game), NameKind::Variable), variables) << "of a copy, too";
    game.Rooms.Edit(2).Script = "set <age; 7>";
    EXPECT_EQ(Joined(*cache.Names(game, NameKind::Variable)), "age, mood, turns, words");
    game.Rooms.Remove(2);
    EXPECT_EQ(Joined(*cache.Names(game, NameKind::Room)), "Hall");
    EXPECT_EQ(Joined(*cache.Names(game, NameKind::Variable)), "mood, turns, words");
}

TEST(ScriptOwners, TellPlacesInInternalProceduresAsTheirOwners) {
    GameModel game;
    SetFields(
        game,
        "room 1, name = Garden && room 1, object 1, name = flowerpot && "
        "room 1, object 1, look = do <~Internal Procedure 3> && "
        "room 1, enter action = if has <x> then do <~Internal Procedure 5> else win && "
        "procedure 1, name = sing && procedure 1, script = msg <a>\r\ndo <~Internal Procedure 7> && "
        "procedure 2, name = ~Internal Procedure 3 && "
        "procedure 2, script = msg <a>\r\nif flag <x> then do <~Internal Procedure 4> && "
        "procedure 3, name = ~Internal Procedure 4 && procedure 3, script = msg <b>\r\n && "
        "procedure 4, name = ~Internal Procedure 5 && procedure 4, script = msg <c> && "
        "procedure 5, name = ~Internal Procedure 6 && procedure 5, script = do <~Internal Procedure 6> && "
        "procedure 6, name = ~Internal Procedure 7 && procedure 6, script = msg <a>\r\nmsg <b>");
    const ScriptOwners owners(game);
    const auto inProcedure = [](int procedure, TextRange bytes = {}) {
        return Place::Of({{FieldId::GameProcedures, procedure}}, FieldId::ProcedureScript, bytes);
    };
    for (const auto& [place, words] : Cases<Place, std::string>{
             {inProcedure(1, {0, 3}), "procedure sing, script, line 1"},
             {inProcedure(2), "object flowerpot in Garden, look"},
             {inProcedure(2, {9, 10}), "object flowerpot in Garden, look, line 2"},
             {inProcedure(3, {0, 3}), "object flowerpot in Garden, look, line 2, line 1"},
             {inProcedure(4, {0, 3}), "room Garden, enter action, line 1"},
             {inProcedure(5, {0, 3}), "procedure ~Internal Procedure 6, script, line 1"},
             {inProcedure(6, {9, 10}), "procedure sing, script, line 2, line 2"},
             {Place::Of({{FieldId::GameRooms, 1}}, FieldId::RoomScript), "room Garden, enter action"},
         })
        EXPECT_EQ(owners.Describe(place), words);
    EXPECT_EQ(owners.Path(inProcedure(3)).size(), 3u);
}

} // namespace
} // namespace zem::test
