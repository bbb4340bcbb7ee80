// What a save would lose is told before the save: the check finds something wherever reading the saved game
// back does, although it looks at most texts only for signs.
#include "model/Texts.h"
#include "problems/FindProblems.h"
#include "readback/ReadBack.h"
#include "support/Catalogue.h"
#include "support/Games.h"
#include "support/RandomGame.h"

#include <gtest/gtest.h>

namespace zem::problems {
namespace {

const CommandLookup& CommandsOfSavable() {
    static const CommandLookup commands(test::ShippedCatalogue());
    return commands;
}

std::string ToldOfSave(const GameModel& game) {
    CheckInput input;
    input.commands = &CommandsOfSavable();
    input.game = game;
    const CheckedGame checked(std::move(input));
    std::string told;
    for (const Problem& problem : FindProblems(checked, {{"S14"}, {}}))
        told += checked.Describe(problem.place) + ": " + problem.text + '\n';
    return told;
}

TEST(Savable, WhatAnAuthorMayTypeIsToldBeforeASave) {
    const GameModel game = test::LoadBytes(
        "define game <G>\r\nstart <R>\r\nend define\r\ndefine room <R>\r\nlook <Here.>\r\nx <1>\r\n"
        "define object <o>\r\nx <1>\r\nend define\r\nend define\r\ndefine procedure <p>\r\nwin\r\nend "
        "define\r\n"
        "define timer <t>\r\ninterval <1>\r\nend define\r\n");
    const Place text = Place::Of({{FieldId::GameTextSections, 1}}, FieldId::TextText);
    const Place room = Place::Of({{FieldId::GameRooms, 1}}, FieldId::RoomMiscTags);
    const Place thing =
        Place::Of({{FieldId::GameRooms, 1}, {FieldId::RoomObjects, 1}}, FieldId::ThingMiscTags);
    const Place script = Place::Of({{FieldId::GameProcedures, 1}}, FieldId::ProcedureScript);
    const Place look = Place::Of({{FieldId::GameRooms, 1}}, FieldId::RoomLook);
    struct Case {
        Place place;
        const char* text;
        bool isLost;
    };
    for (const Case& one : {
             Case{text, "The sea,\r\ndefined by the wind.", true},
             Case{text, "The sea.\r\nEnd define", true},
             Case{text, "A table:\r\n  a\tb", true},
             Case{text, "else\r\n<x> {y} __\r\n\r\n'", false},
             Case{room, "north <R>\r\n", true},
             Case{room, "define object <o>\r\n", true},
             Case{room, "' a note\r\n", true},
             Case{room, "North\r\nweather <wet; cold>\r\n", false},
             Case{thing, "x\r\nhidden\r\n", true},
             Case{thing, "end define\r\n", true},
             Case{thing, "speak <x>\r\n", false},
             Case{script, "msg <a>\r\ndefine x\r\n", true},
             Case{script, "if flag <x> then win\r\nelse die\r\n", true},
             Case{script, "msg <a>\r\n' b\r\nmsg <c, d; e>\r\n", false},
             Case{look, "a > b", true},
             Case{look, "a, b; c = d", false},
         }) {
        GameModel changed = game;
        SetText(changed, one.place, one.text);
        EXPECT_EQ(ToldOfSave(changed) != "", one.isLost) << one.text << '\n' << ToldOfSave(changed);
        EXPECT_EQ(ReadBack(changed, GameFile(changed), 1).empty(), !one.isLost) << one.text;
    }
}

TEST(Savable, WhatRandomGamesLoseIsTold) {
    int lossy = 0;
    for (unsigned seed = 1; seed <= 150; ++seed) {
        const GameModel game = test::RandomGame(seed, seed % 2 == 0 ? 1 : 0).Make();
        const std::vector<LostPlace> lost = ReadBack(game, GameFile(game), 1);
        lossy += lost.empty() ? 0 : 1;
        EXPECT_EQ(ToldOfSave(game).empty(), lost.empty())
            << seed << ": " << (lost.empty() ? "" : lost[0].text);
    }
    EXPECT_GE(lossy, 10);
    EXPECT_LE(lossy, 140);
}

} // namespace
} // namespace zem::problems
