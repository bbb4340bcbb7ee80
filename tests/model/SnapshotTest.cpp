#include "model/Snapshot.h"

#include "support/Games.h"
#include "support/RandomGame.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace zem::test {
namespace {

std::string Problem(const std::string& bytes) {
    return ProblemOf([&] { ReadSnapshot(bytes); });
}

TEST(Snapshot, GivesEveryGameBackExactly) {
    std::vector<GameModel> games(1);
    for (const auto& sample : FilesIn(ZEM_SAMPLES))
        games.push_back(LoadBytes(ReadBytes(sample)));
    games.back().FileName = "caf\xE9/a\nb.kel";
    games.back().Modified = true;
    for (unsigned seed = 1; seed <= 300; ++seed)
        games.push_back(RandomGame(seed, 5).Make());
    // The last game holds values that no game file can.
    games.push_back(games.back());
    games.back().GameName = std::string("\0\r\n>", 4);
    games.back().Rooms.Append().North = ScriptPair{"", "kept"};
    games.back().KelVersion = "1";
    for (const GameModel& game : games)
        ASSERT_EQ(ReadSnapshot(WriteSnapshot(game)), game);
}

TEST(Snapshot, RefusesEveryDamage) {
    GameModel game = GameWithErrorNames();
    game.GameName = "Tower";
    game.Rooms.Append().Out = ScriptPair{"Hall", ""};
    const std::string whole = WriteSnapshot(game);
    EXPECT_EQ(Problem(whole), "");
    EXPECT_EQ(Problem(""), "this is no copy of a game");
    EXPECT_EQ(Problem("define game <x>\r\nend define\r\n"), "this is no copy of a game");
    EXPECT_EQ(Problem(whole + '\0'), "the copy of the game is damaged");
    for (std::size_t size = 0; size < whole.size(); ++size)
        ASSERT_NE(Problem(whole.substr(0, size)), "") << size;
    for (std::size_t at = 0; at < whole.size(); ++at)
        for (int change = 1; change < 256; ++change) {
            std::string damaged = whole;
            damaged[at] = static_cast<char>(damaged[at] ^ change);
            ASSERT_NE(Problem(damaged), "") << at << " changed by " << change;
        }
}

// A copy by another release, or one made to do harm, has a checksum that fits.
TEST(Snapshot, RefusesWhatFitsItsChecksumAndYetIsNoGame) {
    for (const auto& file : FilesIn(ZEM_TEST_DATA "/fuzz/snapshots", ""))
        EXPECT_TRUE(Problem(ReadBytes(file)).starts_with("the copy of the game is damaged: "))
            << file << ": " << Problem(ReadBytes(file));
}

} // namespace
} // namespace zem::test
