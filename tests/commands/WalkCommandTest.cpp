// The command that lets a walker play: what it tells, what it ends with, and the runs that it writes.
#include "support/Cases.h"
#include "support/TempFolder.h"
#include "support/ZemCall.h"

#include <gtest/gtest.h>

namespace zem::test {
namespace {

std::string WalkedGame(const std::string& deeds, const std::string& more = {}) {
    return "define game <G>\n  start <Hall>\n  items <coin>\n  startitems <coin>\nend define\n"
           "define room <Hall>\n" +
           deeds + "end define\n" + more;
}

TEST(WalkCommand, TellsWhatItFoundAndWritesRunsThatPlayAgain) {
    for (const auto& [deeds, more, told, status] : Cases<std::string, std::string, std::string, int>{
             {"  command <sing> win\n", "", "FILE: the game can be won [win 1, 2 turns]\n", 0},
             {"  command <jump> die\n", "", "FILE: the game can be lost [loss 1, 2 turns]\n", 0},
             {"  command <go up> goto <Attic>\n", "", "there is no room \"Attic\" [mistake 1, 2 turns]\n", 1},
             {"  command <spin> do <spin>\n", "define procedure <spin>\n  do <spin>\nend define\n",
              "[circle 1, 2 turns]\n", 1},
             {"  command <pay> if has <coin> then win\n  command <lose coin> lose <coin>\n", "",
              "FILE: the game can no longer be won after \"lose coin\": there is no way left to \"coin\" "
              "[dead end 1, 2 turns]\n",
              0},
             {"", "define room <Attic>\nend define\n",
              "FILE:8: room Attic: never entered: nothing leads there\n", 0},
             {"  command <nap> if ask <Sure?> then win\n", "", "[win 1, 2 turns]\n", 0},
         }) {
        const TempFolder folder;
        const std::string file = folder.Write("game.kel", WalkedGame(deeds, more));
        const std::vector<std::string> arguments = {"walk", file,     "--turns",
                                                    "500",  "--runs", file + ".tests"};
        const ZemCall call(arguments);
        std::string wanted = told;
        if (const std::size_t at = wanted.find("FILE"); at != std::string::npos)
            wanted.replace(at, 4, file);
        EXPECT_NE(call.out.find(wanted), std::string::npos) << wanted << call.out;
        EXPECT_EQ(call.err, "") << deeds;
        EXPECT_EQ(call.result.exitStatus, status) << deeds;
        if (told.find('[') == std::string::npos)
            continue;
        const ZemCall again({"test", file});
        EXPECT_EQ(again.result.exitStatus, 0) << again.out << again.err;

        // What stands in a file may be an author's work.
        const std::string runs = ReadBytes(file + ".tests");
        EXPECT_EQ(ZemCall(arguments).result.exitStatus, 1);
        EXPECT_EQ(ReadBytes(file + ".tests"), runs);
    }
}

TEST(WalkCommand, GoesTheSameWayForTheSameSeedAndNoWayForNoTurns) {
    const std::string file = ZEM_SAMPLES "/cottage.kel";
    const auto walk = [&](const char* turns, const char* seed) {
        return ZemCall({"walk", file, "--turns", turns, "--seed", seed, "--coverage", "--runs", "-"}).out;
    };
    EXPECT_EQ(walk("900", "4"), walk("900", "4"));
    EXPECT_NE(walk("900", "4"), walk("900", "5"));
    EXPECT_EQ(walk("0", "4").rfind("0 turns, 0 walks from 0 states, 0 wins, 0 losses\n", 0), 0U);
    EXPECT_EQ(walk("1", "4").rfind("1 turn, 0 walks from 1 state, 0 wins, 0 losses\n", 0), 0U);
}

TEST(WalkCommand, TellsWhatIsWrongWithItsFiles) {
    const TempFolder folder;
    for (const auto& [text, told] : Cases<std::string, std::string>{
             {"define game G\nend define\n", ":1: a parameter in angle brackets is missing: define game G\n"},
             {"define game <G>\n start <Gone>\nend define\n",
              ": The game cannot begin: its start room, Gone, does not exist.\n"},
         }) {
        const std::string file = folder.Write("game.kel", text);
        const ZemCall call({"walk", file, "--runs", folder.Path("runs")});
        EXPECT_EQ(call.err, file + told);
        EXPECT_EQ(call.result.exitStatus, 1);
    }
    EXPECT_EQ(ZemCall({"walk", folder.Path("none.kel")}).result.exitStatus, 1);
    const std::string file = folder.Write("game.kel", WalkedGame("  command <sing> win\n"));
    EXPECT_EQ(ZemCall({"walk", file, "--turns", "50", "--runs", folder.Path("gone/runs")}).result.exitStatus,
              1);
}

} // namespace
} // namespace zem::test
