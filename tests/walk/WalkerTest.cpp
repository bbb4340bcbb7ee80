// The walker finds what was hidden for it, by runs that show it again.
#include "walk/Walker.h"

#include "base/TextFile.h"
#include "play/Libraries.h"
#include "reader/LoadGame.h"
#include "support/Cases.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace zem::walk {
namespace {

using play::CoveragePart;
using play::World;
using test::Cases;

std::shared_ptr<const World> Compile(std::string text) {
    play::GameFiles files;
    play::NameMessages(files.game);
    ReadGame(files.game, std::move(text));
    return World::Compile(std::move(files));
}

bool IsWhole(const play::CoverageCount& count) {
    return count.reached == count.all;
}

const WalkFinding* Find(const Walker& walker, WalkFinding::Kind kind) {
    const auto found = std::find_if(walker.Findings().begin(), walker.Findings().end(),
                                    [&](const WalkFinding& finding) { return finding.kind == kind; });
    return found == walker.Findings().end() ? nullptr : &*found;
}

TEST(Walker, ReachesAllOfTheSmallSamplesAndWinsThem) {
    for (const char* name : {"gatehouse", "cottage"}) {
        const auto world = Compile(ReadFile(ZEM_SAMPLES "/" + std::string(name) + ".kel"));
        Walker walker(world, {5'000, 1, {}});
        walker.Run();
        EXPECT_TRUE(IsWhole(walker.Reached().Count(CoveragePart::Command))) << name;
        EXPECT_TRUE(IsWhole(walker.Reached().Count(CoveragePart::Branch))) << name;
        EXPECT_TRUE(IsWhole(walker.Reached().Count(CoveragePart::Room))) << name;
        const WalkFinding* win = Find(walker, WalkFinding::Win);
        ASSERT_NE(win, nullptr) << name;
        const play::RecordedRun run = walker.AsRun(*win, "win");
        EXPECT_NE(run.steps.back().story.find("You have won.\n"), std::string::npos) << name;
        EXPECT_FALSE(FirstDifference(run, PlayRun(world, run).played));
        EXPECT_EQ(play::ReadRuns(play::WriteRuns({run})).problem, "");
    }
}

/// A game in which each thing wants another first; what the last one does is put in.
std::string Puzzle(const std::string& deed, const std::string& more = {}) {
    return "define game <G>\n start <Hall>\n items <key; coin; lamp>\nend define\n"
           "define room <Hall>\n north if has <key> then goto <Vault> else msg <Locked.>\n east <Yard>\n"
           " define character <porter>\n  speak choose <talk>\n  give <coin> { give <key>; lose <coin> }\n"
           " end define\nend define\n"
           "define room <Yard>\n west <Hall>\n command <dig> if flag <told> then give <coin> else msg "
           "<Why?>\n"
           "end define\n"
           "define room <Vault>\n south <Hall>\n command <say #word#> if equal <word; sesame> then " +
           deed +
           "\nend define\n"
           "define selection <talk>\n info <Ask about>\n choice <the rain> msg <Wet.>\n"
           " choice <the yard> flag on <told>\nend define\n" +
           more;
}

TEST(Walker, FindsWhatIsHiddenBehindThingsThatWantOneAnother) {
    struct Case {
        std::string deed;
        std::string more;
        WalkFinding::Kind kind;
        const char* told;
    };
    for (const Case& one : {
             Case{"win", "", WalkFinding::Win, "the game can be won"},
             Case{"die", "", WalkFinding::Loss, "the game can be lost"},
             Case{"goto <Nowhere>", "", WalkFinding::Mistake, "there is no room \"Nowhere\""},
             Case{"do <a>",
                  "define procedure <a>\n do <b>\nend define\ndefine procedure <b>\n do <a>\nend define\n",
                  WalkFinding::Circle, "a > b"},
             Case{"after <30; late>", "define procedure <late>\n win\nend define\n", WalkFinding::Win,
                  "the game can be won"},
             Case{"if ask <Sure?> then do <again>",
                  "define procedure <again>\n if ask <Really?> then msg <Oh.> else win\nend define\n",
                  WalkFinding::Win, "the game can be won"},
         }) {
        const auto world = Compile(Puzzle(one.deed, one.more));
        Walker walker(world, {20'000, 3, {}});
        walker.Run();
        const WalkFinding* found = Find(walker, one.kind);
        ASSERT_NE(found, nullptr) << one.deed;
        EXPECT_NE(found->text.find(one.told), std::string::npos) << found->text;
        EXPECT_EQ(walker.Findings().size(), 1U) << one.deed;

        // The run shows it again: it ends in it, or warns of it.
        const play::RecordedRun run = walker.AsRun(*found, "found");
        const play::RunResult again = PlayRun(world, run);
        EXPECT_EQ(again.problem, "");
        EXPECT_LE(run.steps.size(), 11U) << one.deed; // of which seven are turns; the rest answers and time
        const bool hasEnded = again.need == play::Need::YesNo;
        EXPECT_EQ(hasEnded, one.kind == WalkFinding::Win || one.kind == WalkFinding::Loss) << one.deed;
        EXPECT_EQ(again.warnings.empty(), hasEnded) << one.deed;
    }
}

TEST(Walker, FindsNothingWhereNothingIs) {
    const auto world = Compile(Puzzle("msg <Open.>", "define room <Attic>\nend define\n"));
    Walker walker(world, {20'000, 1, {}});
    walker.Run();
    EXPECT_TRUE(walker.Findings().empty());
    EXPECT_TRUE(IsWhole(walker.Reached().Count(CoveragePart::Command)));
    const play::CoverageCount rooms = walker.Reached().Count(CoveragePart::Room);
    EXPECT_EQ(rooms.reached, 3U);
    EXPECT_EQ(rooms.all, 4U);
}

TEST(Walker, GoesTheSameWayForTheSameSeed) {
    const std::string text = ReadFile(ZEM_SAMPLES "/archipelago.kel");
    const auto walk = [&](std::uint64_t seed) {
        Walker walker(Compile(text), {4'000, seed, {}});
        walker.Run();
        std::string told = std::to_string(walker.Figures().walks) + " " +
                           std::to_string(walker.Figures().states) + " " +
                           std::to_string(walker.Reached().ReachedCount()) + "\n";
        for (const WalkFinding& finding : walker.Findings())
            told += play::WriteRuns({walker.AsRun(finding, finding.text)});
        return told;
    };
    const std::string first = walk(5);
    EXPECT_EQ(first, walk(5));
    EXPECT_NE(first, walk(6));
}

/// Wins only where the way is: a plot of fifty turns, each of which wants another first, against the clock.
TEST(Walker, WinsTheLighthouseFromNothing) {
    const auto world = Compile(ReadFile(ZEM_SAMPLES "/lighthouse.kel"));
    Walker walker(world, {40'000, 1, {}});
    walker.Run();
    EXPECT_TRUE(IsWhole(walker.Reached().Count(CoveragePart::Room)));
    const play::CoverageCount commands = walker.Reached().Count(CoveragePart::Command);
    EXPECT_GE(commands.reached * 100, commands.all * 90);
    const WalkFinding* win = Find(walker, WalkFinding::Win);
    ASSERT_NE(win, nullptr);
    const play::RecordedRun run = walker.AsRun(*win, "win");
    EXPECT_NE(run.steps.back().story.find("The No\xC3\xABlle passed"), std::string::npos);
    EXPECT_EQ(Find(walker, WalkFinding::Mistake), nullptr);
}

/// A game with a room to win in; its hall has the lines that are given.
std::string Errands(const std::string& game, const std::string& hall, const std::string& more) {
    return "define game <G>\n start <Hall>\n items <coin; rope>\n startitems <coin>\n" + game +
           "end define\ndefine room <Hall>\n" + hall + "end define\n" + more;
}

TEST(Walker, TellsWhenAGameCanNoLongerBeWonAndOnlyThen) {
    struct Case {
        const char* name;
        std::string game;
        std::string hall;
        std::string more;
        std::string told; // the beginning of it; empty for nothing
    };
    const std::string guard = " define character <guard>\n  give <coin> win\n end define\n";
    const std::string beggar = " define character <beggar>\n  give <coin> lose <coin>\n end define\n";
    const std::string cannot = "the game can no longer be won after ";
    for (const Case& one : {
             Case{"the only coin is given away", "", guard + beggar, "",
                  cannot + "\"give coin to beggar\": there is no way left to \"coin\""},
             Case{"the coin comes back", "",
                  guard + beggar + " define object <purse>\n  take give <coin>\n end define\n", "", ""},
             Case{"a dropped coin can be taken", "",
                  guard + " define object <coin>\n  hidden\n  take {\n   give <coin>\n   hide <coin>\n  }\n"
                          " end define\n",
                  "", ""},
             Case{"a way of no return", "", guard + " north <Cliff>\n", "define room <Cliff>\nend define\n",
                  cannot + "\"north\": there is no way left to \"Hall\""},
             Case{"a way round", "", guard + " north <Cliff>\n",
                  "define room <Cliff>\n east <Shore>\nend define\n"
                  "define room <Shore>\n command <swim> goto <Hall>\nend define\n",
                  ""},
             Case{"a door that falls shut", "", " north <Vault>\n command <slam> exit off <Hall; north>\n",
                  "define room <Vault>\n out <Hall>\n command <sing> win\nend define\n",
                  cannot + "\"slam\": there is no way left to \"Vault\""},
             Case{"a door that opens again", "",
                  " north <Vault>\n command <slam> exit off <Hall; north>\n command <open> exit on <Hall; "
                  "north>\n",
                  "define room <Vault>\n out <Hall>\n command <sing> win\nend define\n", ""},
             Case{"something breaks", "",
                  " command <break> flag on <broken>\n command <pull> if not flag <broken> then win\n", "",
                  cannot + "\"break\""},
             Case{"it is mended by time", "",
                  " command <break> {\n  flag on <broken>\n  after <9; mend>\n }\n"
                  " command <pull> if not flag <broken> then win\n",
                  "define procedure <mend>\n flag off <broken>\nend define\n", ""},
             Case{"a thing is gone", "", guard + " command <scare> conceal <guard>\n", "",
                  cannot + "\"scare\""},
             Case{"a thing is moved", "",
                  guard + " east <Yard>\n command <scare> move character <guard; Yard>\n",
                  "define room <Yard>\nend define\n", cannot + "\"east\": there is no way left to \"Hall\""},
             Case{"a word that nobody guesses", "",
                  " command <say #word#> if equal <word; #secret#> then win\n", "", ""},
             Case{"an amount that can rise", " collectables <gold p=3>\n",
                  " command <lose> spend <gold; 3>\n command <dig> gain <gold; 1>\n"
                  " command <buy> if amount <gold; 3> then win\n",
                  "", ""},
             Case{"an amount that cannot", " collectables <gold p=3>\n",
                  " command <buy> if has <rope> and amount <gold; 3> then win\n", "",
                  "the game cannot be won: nothing leads to any \"win\""},
             Case{"a win that nothing calls", "", "", "define procedure <end>\n win\nend define\n",
                  "the game cannot be won: nothing leads to any \"win\""},
             Case{"no win at all", "", beggar, "", ""},
         }) {
        const auto world = Compile(Errands(one.game, one.hall, one.more));
        Walker walker(world, {3'000, 1, {}});
        walker.Run();
        const WalkFinding* found = Find(walker, WalkFinding::Hopeless);
        EXPECT_EQ(found != nullptr, !one.told.empty()) << one.name << ": " << (found ? found->text : "");
        if (found == nullptr || one.told.empty())
            continue;
        EXPECT_EQ(found->text.substr(0, one.told.size()), one.told) << one.name;
        EXPECT_LE(found->way.size(), 2U) << one.name;
        const play::RunResult again = PlayRun(world, walker.AsRun(*found, "dead end"));
        EXPECT_EQ(again.problem, "") << one.name;
        EXPECT_EQ(again.need, play::Need::Line) << one.name;
    }
}

TEST(Walker, KnowsWhatCanNeverBeReached) {
    struct Case {
        const char* hall;
        const char* more;
        bool isCertain;
    };
    for (const Case& one : {
             Case{"", "", true},
             Case{" north if flag <never> then goto <Attic>\n", "", true},
             Case{" command <climb> if has <rope> then goto <Attic>\n", "", true},
             Case{" command <climb> if chance <1> and turns <900000> then goto <Attic>\n", "", false},
             Case{"", "define procedure <fly>\n exit to <Hall; north; Attic>\nend define\n", true},
         }) {
        Walker walker(
            Compile(Errands("", one.hall,
                            std::string("define room <Attic>\n script die\nend define\n") + one.more)),
            {1'000, 1, {}});
        walker.Run();
        const std::vector<WalkUnreached> unreached = walker.NeverReached();
        ASSERT_EQ(unreached.size(), 2U) << one.hall;
        EXPECT_EQ(unreached[0].part.kind, CoveragePart::Room);
        EXPECT_EQ(unreached[1].part.kind, CoveragePart::Ending);
        for (const WalkUnreached& part : unreached)
            EXPECT_EQ(part.isCertain, one.isCertain) << one.hall;
    }
}

TEST(Walker, MakesNoTurnWhenItMayMakeNone) {
    Walker walker(Compile(Puzzle("win")), {0, 1, {}});
    walker.Run();
    EXPECT_EQ(walker.Figures().turns, 0U);
    EXPECT_EQ(walker.Figures().states, 0U);
    EXPECT_TRUE(walker.Findings().empty());
    for (const WalkUnreached& part : walker.NeverReached())
        EXPECT_FALSE(part.isCertain); // nothing was looked at
}

TEST(Walker, EndsWhenItIsToldTo) {
    int asked = 0;
    Walker walker(Compile(Puzzle("win")), {UINT64_MAX, 1, [&] { return ++asked < 5; }});
    walker.Run();
    EXPECT_GT(walker.Figures().turns, 100U);
    EXPECT_LT(walker.Figures().turns, 5'000U);
}

TEST(Walker, GamesThatEndOrStopAtOnceAreNoTrouble) {
    for (const char* start : {"win", "die", "restart", "goto <Hall>", "do <again>", "choose <none>"}) {
        Walker walker(Compile("define game <G>\n start <Hall>\n startscript " + std::string(start) +
                              "\nend define\ndefine room <Hall>\nend define\n"
                              "define procedure <again>\n if ask <What?> then do <again> else do <again>\n"
                              "end define\n"),
                      {200, 1, {}});
        walker.Run();
        EXPECT_LE(walker.Figures().turns, 200U) << start;
    }
}

} // namespace
} // namespace zem::walk
