#include "model/Place.h"

#include "model/Texts.h"
#include "support/Cases.h"
#include "support/RandomGame.h"
#include "support/SetField.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace zem::test {
namespace {

using Id = FieldId;

GameModel SomeGame() {
    GameModel game;
    SetFields(game,
              "start room = Hall && room 1, name = Attic && room 2, name = Garden && "
              "room 2, exit out, name = Hall && room 2, exit out, action = msg <x> && "
              "room 2, object 1, name = flowerpot && room 2, object 1, look = a\r\nb && "
              "room 2, object 1, use-able object 1, name = oil && room 2, place 1, name = the; Attic && "
              "library 1 = a.kel && menu 1, name = shop && menu 1, choice 1, name = yes && "
              "player command 1, pattern = sing && blocks of other kinds = define x");
    return game;
}

const PlaceStep Garden{Id::GameRooms, 2};
const PlaceStep Flowerpot{Id::RoomObjects, 1};
const PlaceStep Out{Id::RoomOut, 0};

TEST(Place, IsCheckedAndToldInPlainWords) {
    const GameModel game = SomeGame();
    const std::string flowerpot = "object flowerpot in Garden";
    for (const auto& [place, words] : Cases<Place, std::string>{
             {Place::Of({}, Id::GameStartRoom), "game properties, start room"},
             {Place::Of({}, Id::GameUnknownBlocks, {0, 8}), "game properties, blocks of other kinds"},
             {Place::Of({Garden}), "room Garden"},
             {Place::Of({Garden}, Id::RoomLook), "room Garden, description"},
             {Place::Of({Garden}, Id::RoomOut), "room Garden, exit out"},
             {Place::Of({Garden, Out}, Id::PairKey, {0, 4}), "room Garden, exit out"},
             {Place::Of({Garden, Out}, Id::PairScript), "room Garden, exit out, action"},
             {Place::Of({Garden, {Id::RoomPlaces, 1}}, Id::PairKey), "room Garden, place the; Attic, name"},
             {Place::Of({Garden, Flowerpot}), flowerpot},
             {Place::Of({Garden, Flowerpot}, Id::ThingHidden), flowerpot + ", unavailable mark"},
             {Place::Of({Garden, Flowerpot}, Id::ThingLook, {0, 1}), flowerpot + ", look, line 1"},
             {Place::Of({Garden, Flowerpot}, Id::ThingLook, {3, 4}), flowerpot + ", look, line 2"},
             {Place::Of({Garden, Flowerpot, {Id::ThingUses, 1}}, Id::PairScript),
              flowerpot + ", use-able object oil, action"},
             {Place::Of({{Id::GameIncludes, 1}}), "library a.kel"},
             {Place::Of({{Id::GameSelectionMenus, 1}, {Id::MenuChoices, 1}}, Id::PairKey),
              "menu shop, choice yes, name"},
             {Place::Of({{Id::GamePlayerCommands, 1}}, Id::CommandScript), "player command sing, action"},
         }) {
        EXPECT_TRUE(Exists(game, place)) << words;
        EXPECT_EQ(DescribePlace(game, place), words);
    }
    const std::string gone = "something that is not there any more";
    for (const auto& [place, words] : Cases<Place, std::string>{
             {Place::Of({{Id::GameRooms, 3}}), gone},
             {Place::Of({{Id::GameRooms, 0}}), gone},
             {Place::Of({Garden, {Id::RoomOut, 1}}, Id::PairKey), gone},
             {Place::Of({Garden, {Id::RoomLook, 1}}, Id::PairKey), gone},
             {Place::Of({Garden}, Id::ThingLook), gone},
             {Place::Of({{Id::GameIncludes, 1}}, Id::PairKey), gone},
             {Place::Of({Garden, Flowerpot}, Id::ThingLook, {3, 5}), flowerpot + ", look"},
             {Place::Of({Garden}, Id::RoomOut, {0, 1}), "room Garden, exit out"},
         }) {
        EXPECT_FALSE(Exists(game, place)) << words;
        EXPECT_EQ(DescribePlace(game, place), words);
    }
}

TEST(Texts, AreVisitedInOrderWithWhatStandsInThem) {
    const std::vector<std::tuple<std::string, FieldKind, NameKind>> expected = {
        {"game properties, start room", FieldKind::Reference, NameKind::Room},
        {"game properties, blocks of other kinds", FieldKind::RawLines, NameKind::None},
        {"library a.kel", FieldKind::Reference, NameKind::File},
        {"room Attic, name", FieldKind::Name, NameKind::Room},
        {"room Garden, name", FieldKind::Name, NameKind::Room},
        {"room Garden, exit out", FieldKind::Exit, NameKind::Room},
        {"room Garden, exit out, action", FieldKind::Script, NameKind::None},
        {"room Garden, place the; Attic, name", FieldKind::Target, NameKind::Room},
        {"object flowerpot in Garden, name", FieldKind::Name, NameKind::Object},
        {"object flowerpot in Garden, look", FieldKind::Script, NameKind::None},
        {"object flowerpot in Garden, use-able object oil, name", FieldKind::Reference, NameKind::Item},
        {"menu shop, name", FieldKind::Name, NameKind::Menu},
        {"menu shop, choice yes, name", FieldKind::Text, NameKind::None},
        {"player command sing, pattern", FieldKind::Pattern, NameKind::None},
    };
    const GameModel game = SomeGame();
    std::size_t at = 0;
    ForEachText(game, [&](const Place& place, FieldUse use, const std::string&) {
        ASSERT_LT(at, expected.size());
        EXPECT_EQ(std::tuple(DescribePlace(game, place), use.kind, use.names), expected[at++]);
    });
    EXPECT_EQ(at, expected.size());
}

TEST(Texts, AreReplacedWithoutTouchingOtherRecords) {
    const GameModel before = SomeGame();
    GameModel game = before;
    EXPECT_EQ(
        ReplaceTexts(game,
                     [](const Place& place, FieldUse, const std::string& text) -> std::optional<std::string> {
                         if (place.field == Id::ThingLook)
                             return "c";
                         return text; // the same again is no change
                     }),
        1);
    EXPECT_EQ(game.Rooms[2].Objects[1].Look, "c");
    EXPECT_EQ(before.Rooms[2].Objects[1].Look, "a\r\nb");
    EXPECT_EQ(&game.Rooms[1], &before.Rooms[1]) << "still shared";
    EXPECT_NE(&game.Rooms[2], &before.Rooms[2]);
}

// What holds for every game: each text visited is the one at its place, and marking all of them marks all of
// the game.
TEST(Texts, AreAllThereForRandomGames) {
    for (unsigned seed = 1; seed <= 100; ++seed) {
        const GameModel game = RandomGame(seed, static_cast<int>(seed % 7)).Make();
        int texts = 0;
        ForEachText(game, [&](const Place& place, FieldUse use, const std::string& text) {
            ++texts;
            const auto resolved = Resolve(game, place);
            ASSERT_TRUE(resolved);
            ASSERT_EQ(resolved->text, &text);
            ASSERT_EQ(resolved->use.kind, use.kind);
            ASSERT_EQ(resolved->use.names, use.names);
        });
        GameModel marked = game;
        ASSERT_EQ(ReplaceTexts(marked, [](const Place&, FieldUse,
                                          const std::string& text) { return std::optional(text + "!"); }),
                  texts);
        ASSERT_EQ(ReplaceTexts(marked,
                               [](const Place&, FieldUse, const std::string& text) {
                                   return std::optional(text.substr(0, text.size() - 1));
                               }),
                  texts);
        ASSERT_TRUE(SameGame(marked, game)) << seed;
    }
}

} // namespace
} // namespace zem::test
