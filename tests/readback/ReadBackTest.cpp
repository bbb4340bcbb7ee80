#include "readback/ReadBack.h"

#include "readback/LooseComparison.h"
#include "readback/LostParts.h"
#include "support/CaseFile.h"
#include "support/Games.h"
#include "support/RandomGame.h"
#include "support/SetField.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace zem::test {
namespace {

std::vector<LostPlace> Places(const GameModel& game) {
    return ReadBack(game, GameFile(game));
}

/// The places as one text, joined with "|": "2, 1; sentence" with the entries on the way, as DescribePlace
/// tells names only.
std::string PlaceTexts(const GameModel& game) {
    std::string texts;
    for (const LostPlace& lost : Places(game)) {
        EXPECT_TRUE(Exists(game, lost.place)) << lost.text;
        texts += texts.empty() ? "" : "|";
        for (std::size_t k = 0; k < lost.place.Depth(); ++k)
            texts += (k == 0 ? "" : ", ") + std::to_string(lost.place.steps[k].entry);
        texts += (lost.place.Depth() == 0 ? "" : "; ") + lost.text;
    }
    return texts;
}

TEST(ReadBack, NamesWhatDoesNotComeBackAndWhy) {
    const GameModel whole = LoadBytes(
        CrLf("define game <>\nitems <lamp>\nstartitems <lamp>\ncollectables <luck n=3 []>\nend define\n"
             "define room <Attic>\nlook <A low <b|xb roof>\nend define\n"
             "define room <Hall>\ndefine character <clerk>\nend define\ndefine object <rug>\nend define\n"
             "define object <key>\nend define\nend define\n"));
    for (const auto& [fields, places] : CasesIn<2>("lost-parts")) {
        GameModel game = whole;
        SetFields(game, fields);
        EXPECT_EQ(PlaceTexts(game), places) << fields;
    }
}

TEST(ReadBack, ComparesTheWholeFileAndNotOnlyItsParts) {
    GameModel game = LoadBytes("define game <>\r\nend define\r\n");
    game.NextInternalProcedure = 7;
    const std::string bytes = GameFile(game);
    EXPECT_EQ(PlaceTexts(game), "");
    // The file is cut off: each part of the game would come back, and yet the file is bad.
    EXPECT_EQ(ReadBack(game, bytes.substr(0, bytes.size() / 2)).at(0).text,
              "The file cannot be read again: line 7: this block has no \"end define\": define game <>");
    EXPECT_EQ(ReadBack(game, "define game <x>\r\nend define\r\n").at(0).text,
              "The file gives back another game than the one that was saved");
    SetFields(game, "room 1, alias = > && room 1, description = > && room 2, alias = >");
    EXPECT_EQ(ReadBack(game, GameFile(game), 1).size(), 1u) << "no more places than were asked for";
}

bool ComesBack(const GameModel& game) {
    GameModel back = game;
    return ProblemOf([&] { ReadGame(back, GameFile(game)); }).empty() && IsSameInFile(game, back);
}

/// What holds for every game: no place is named if, and only if, the game comes back, and each is explained.
TEST(ReadBack, NamesPlacesIfAndOnlyIfAGameDoesNotComeBack) {
    int lost = 0;
    for (unsigned seed = 1; seed <= 600; ++seed) {
        const GameModel game = RandomGame(seed, seed % 3 == 0 ? 0 : static_cast<int>(seed % 7)).Make();
        SCOPED_TRACE("seed " + std::to_string(seed) + "\n" + GameFile(game));
        const std::vector<LostPlace> places = Places(game);
        ASSERT_EQ(places.empty(), ComesBack(game));
        lost += places.empty() ? 0 : 1;
        for (const LostPlace& place : places)
            for (const char* vague :
                 {"as it is", "something else together", "something else there", "kept apart there"})
                ASSERT_FALSE(place.text.starts_with("The file") || place.text.ends_with(vague)) << place.text;
    }
    EXPECT_GT(lost, 50);
    EXPECT_LT(lost, 550);
}

// Each room comes back alone but not all of them together, so every room is tried.
TEST(ReadBack, TriesEachPartInAGameOfNothingElse) {
    GameModel game;
    for (int k = 1; k <= 1000; ++k) {
        Room& room = game.Rooms.Append();
        room.Name = "Room " + std::to_string(k);
        room.Alias = k % 100 == 0 ? ">" : "a room";
        room.Objects.Append().Name = "lamp";
    }
    std::size_t bytes = 0;
    const auto comesBack = [&](const GameModel& part) {
        bytes += GameFile(part).size();
        return ComesBack(part);
    };
    EXPECT_EQ(FindLostParts(game, comesBack, 20).size(), 10u);
    EXPECT_LT(bytes, 10 * GameFile(game).size());
}

} // namespace
} // namespace zem::test
