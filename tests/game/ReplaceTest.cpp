#include "game/Replace.h"

#include "model/Texts.h"
#include "readback/ReadBack.h"
#include "support/Cases.h"
#include "support/Catalogue.h"
#include "support/Games.h"
#include "support/NamedGame.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <tuple>
#include <vector>

namespace zem::test {
namespace {

class Replace : public testing::Test {
protected:
    const CommandCatalogue catalogue = ShippedCatalogue();
    const CommandLookup commands{catalogue};
};

constexpr const char* OldHouse =
    "define game <The old House>\nstart <Hall>\nitems <old lamp>\ncollectables "
    "<gold 0r40=20 [! old coin*s*]>\n"
    "command <rub old lamp; polish #old#> if has <old lamp> then msg <The old lamp "
    "is old.> else goto <Hall>\n"
    "command <see> repeat <3; p>\n"
    "startscript if exit <Hall; north> then set <old; 1>\n"
    "glow old\nend define\n"
    "define synonyms\nold; ancient = aged\nworn = old\nend define\n"
    "define room <Hall>\nlook <An old, old hall, #old# years.>\nend define\n";

TEST_F(Replace, ShowsBeforeAndAfterAndRefusesWhatWouldNotDo) {
    const GameModel game = LoadBytes(CrLf(OldHouse));
    const GameIndex index(commands, game);
    const auto told = [&](const FindQuery& query, const std::string& words) {
        std::string text;
        for (const Replacement& one : PlanReplace(index, query, words).replacements) {
            EXPECT_EQ(one.isTicked, one.refusal.empty());
            text += DescribePlace(game, one.change.place) + ": " + one.before.text + " -> " +
                    (one.refusal.empty() ? one.after.text : one.refusal) + "\n";
        }
        return text;
    };
    EXPECT_EQ(told({.words = "old", .wholeWords = true}, "new"),
              "game properties, game name: The old House -> The new House\n"
              "game properties, start action: if exit <Hall; north> then set <old; 1> -> "
              "This is a name: rename it instead.\n"
              "game properties, miscellaneous tags, line 1: glow old -> glow new\n"
              "room Hall, description: An old, old hall, #old# years. -> An new, old hall, #old# years.\n"
              "room Hall, description: An old, old hall, #old# years. -> An old, new hall, #old# years.\n"
              "room Hall, description: An old, old hall, #old# years. -> This is a name: rename it instead.\n"
              "item old lamp, name: old lamp -> This is a name: rename it instead.\n"
              "collectable gold, definition: gold 0r40=20 [! old coin*s*] -> gold 0r40=20 [! new coin*s*]\n"
              "synonym aged, words: old; ancient -> new; ancient\n"
              "synonym old, word: old -> new\n"
              "player command rub old lamp; polish #old#, pattern: rub old lamp; polish #old# -> "
              "rub new lamp; polish #old#\n"
              "player command rub old lamp; polish #old#, pattern: rub old lamp; polish #old# -> "
              "This is a name: rename it instead.\n"
              "player command rub old lamp; polish #old#, action: if has <old lamp> then msg <The old lamp "
              "is old.> "
              "else goto <Hall> -> This is a name: rename it instead.\n"
              "player command rub old lamp; polish #old#, action: if has <old lamp> then msg <The old lamp "
              "is old.> "
              "else goto <Hall> -> if has <old lamp> then msg <The new lamp is old.> else goto <Hall>\n"
              "player command rub old lamp; polish #old#, action: if has <old lamp> then msg <The old lamp "
              "is old.> "
              "else goto <Hall> -> if has <old lamp> then msg <The old lamp is new.> else goto <Hall>\n");

    for (const auto& [words, other, refusal] : Cases<std::string, std::string, std::string>{
             {"hall,", "hall>", "The file cannot hold that: the \">\" in it ends it early."},
             {"hall,", "a\r\nb", "The file cannot hold that: the line break in it ends it early."},
             {"The old House", "{",
              "The file cannot hold that: the \"{\" in it begins a script of several lines."},
             {"The old lamp is", "a<b", ""}, // a bracket that is opened in a message is a letter
             {"The old lamp is", "a> msg <b", "The command \"msg\" would become another."},
             {"then msg", "and msg",
              "The script would make no sense: after a condition comes \"and\", \"or\" or \"then\"."},
             {"msg", "say", ""}, // takes the same
             {"msg", "goto", "The command \"msg\" would become another."},
             {"msg", "megs", "The command \"msg\" would become another."},
             {"has", "had", "The command \"has\" would become another."},
             {"repeat <3", "repeat <5", ""},
             {"3;", "x;", "\"repeat\" could not be carried out any more."},
             {"; north", "; south", ""},
             {"; north", "; down", "\"exit\" could not be carried out any more."},
             {"; north", "", "\"exit\" could not be carried out any more."},
             {"years", "#old# years", "Another name would stand there: rename it instead."},
             {"polish #", "polish #a# #", "Another name would stand there: rename it instead."},
             {"see", "", "Nothing would be left of the pattern."},
             {"see", "a #", "A # would be without a second one."},
             {"see", "rub old lamp; polish #old#", "There is this pattern already."},
             {"ancient", "Worn", "Another synonym has the word \"Worn\" already."},
             {"; ancient", ";", "Nothing would be left of a word of the synonym."},
             {"ancient", "a=b", "The file cannot hold that: the \"=\" in it ends it early."},
             {"glow", "hidden <x> do <p>", "Another name would stand there: rename it instead."},
             {"glow", "start <",
              "The file cannot hold that: the line \"start < old\" means something of its own there."},
             {"=20", "=50", "Initial value must be within user-defined range."},
         }) {
        const ReplacePlan plan = PlanReplace(index, {.words = words, .capitals = true}, other);
        ASSERT_FALSE(plan.replacements.empty()) << words;
        EXPECT_EQ(plan.replacements.back().refusal, refusal) << words << " -> " << other;
    }
}

TEST_F(Replace, PutsGroupsOfAnExpressionIn) {
    GameModel game;
    game.GameInfo = "Zo\xEB met Ann, Bob met Zo\xEB";
    const GameIndex index(commands, game);
    for (const auto& [words, result] : Cases<std::string, std::string>{
             {"$2 saw $1", "Ann saw Zo\xEB, Zo\xEB saw Bob"},
             {"[$0]$3$9", "[Zo\xEB met Ann], [Bob met Zo\xEB]"},
             {"$$1 $", "$1 $, $1 $"},
         }) {
        GameModel changed = game;
        const ReplacePlan plan =
            PlanReplace(index, {.words = "(\\w+) met (\\w+)(x)?", .isRegularExpression = true}, words);
        EXPECT_EQ(CarryOut(index, plan, changed).made, 2);
        EXPECT_EQ(changed.GameInfo, result);
    }
    EXPECT_NE(PlanReplace(index, {.words = "(", .isRegularExpression = true}, "x").problem, "");
    EXPECT_EQ(PlanReplace(index, {.words = "met"}, "$1").replacements[0].after.text,
              "Zo\xEB $1 Ann, Bob met Zo\xEB");
}

TEST_F(Replace, MakesTheTickedOnesAndTellsWhatCannotBeTogether) {
    GameModel game = LoadBytes(CrLf(OldHouse));
    const GameIndex index(commands, game);
    ReplacePlan plan = PlanReplace(index, {.words = "old", .wholeWords = true}, "new");
    EXPECT_EQ(plan.count, 15u);
    plan.replacements[0].isTicked = false;
    plan.replacements[1].isTicked = true; // a name: it stays all the same
    const ReplaceOutcome outcome = CarryOut(index, plan, game);
    EXPECT_EQ(outcome.made, 9);
    EXPECT_TRUE(outcome.left.empty());
    EXPECT_EQ(game.GameName, "The old House");
    EXPECT_EQ(game.Rooms[1].Look, "An new, new hall, #old# years.");
    EXPECT_EQ(game.Items[1].Name, "old lamp");
    EXPECT_NE(ProblemOf([&] { CarryOut(index, plan, game); }), "") << "it is another game now";

    GameModel pair; // each alone leaves something of the word, both together do not
    pair.Synonyms.Append({"aa", "b"});
    const GameIndex other(commands, pair);
    const ReplaceOutcome none = CarryOut(other, PlanReplace(other, {.words = "a"}, ""), pair);
    EXPECT_EQ(none.made, 0);
    EXPECT_EQ(none.left.size(), 2u);
    EXPECT_EQ(pair.Synonyms[1].Words, "aa");
}

/// What is named in a game, whatever the place.
std::vector<std::tuple<NameKind, ReferenceRole, std::string>> NamesOf(const GameModel& game,
                                                                      const CommandLookup& commands) {
    std::vector<std::tuple<NameKind, ReferenceRole, std::string>> names;
    ForEachReference(game, commands, [&](const Reference& reference) {
        names.emplace_back(reference.kind, reference.role, reference.name);
    });
    return names;
}

/// Scripts that make no sense, or hold a command that nobody knows.
int BadScripts(const GameModel& game, const CommandLookup& commands) {
    int bad = 0;
    ForEachText(game, [&](const Place&, FieldUse use, const std::string& text) {
        if (use.kind == FieldKind::Script)
            ForEachLine(text, [&](TextRange range, int) {
                const ScriptLine line = TakeApart(range.Of(text), commands);
                bad += line.problem != LineProblem::None ? 1 : 0;
                ForEachCall(line, [&](const ScriptCall& call) { bad += call.entry == nullptr ? 1 : 0; });
            });
    });
    return bad;
}

// Whatever is replaced by whatever: the game comes back from its file, and its scripts do what they did.
TEST_F(Replace, NeverSpoilsAGame) {
    std::mt19937 random(7);
    const std::vector<std::string> pieces = {"<", ">", ";", ",",      "{",    "\r\n", "#",
                                             "%", "=", "",  "__",     "lamp", "msg",  "if",
                                             " ", "'", "|", "define", "x",    "\t"};
    const std::vector<std::string> wanted = {"a", "e", "lamp", "Hall", "msg", "the",
                                             " ", "5", "end",  "#",    "t"};
    int made = 0;
    int refused = 0;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        GameModel game = NamedGame(seed, OrdinaryNames(), catalogue).Make();
        ASSERT_TRUE(ReadBack(game, GameFile(game)).empty()) << ReadBack(game, GameFile(game)).front().text;
        const auto names = NamesOf(game, commands);
        const int bad = BadScripts(game, commands);
        const GameIndex index(commands, game);
        const std::string words = pieces[random() % pieces.size()] + pieces[random() % pieces.size()];
        const ReplacePlan plan = PlanReplace(index, {.words = wanted[seed % wanted.size()]}, words, 25);
        const auto count = static_cast<int>(plan.replacements.size());
        const int done = CarryOut(index, plan, game).made;
        made += done;
        refused += count - done;
        const auto lost = ReadBack(game, GameFile(game));
        EXPECT_TRUE(lost.empty()) << words << ": " << lost.front().text;
        EXPECT_EQ(NamesOf(game, commands), names) << words;
        EXPECT_LE(BadScripts(game, commands), bad) << words;
    }
    EXPECT_GT(made, 100);
    EXPECT_GT(refused, 100);
}

} // namespace
} // namespace zem::test
