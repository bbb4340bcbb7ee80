#include "merge/MergeGames.h"

#include "merge/Edits.h"
#include "support/Games.h"
#include "support/RandomGame.h"

#include <gtest/gtest.h>
#include <set>

namespace zem::test {
namespace {

using merge::ConflictKind;
using merge::MergeGames;
using merge::MergeResult;
using merge::Take;

std::string Conflicts(const MergeResult& result) {
    std::string text;
    for (const merge::Conflict& conflict : result.conflicts)
        text +=
            conflict.where + ": [" + conflict.base + "] [" + conflict.ours + "] [" + conflict.theirs + "]\n";
    return text;
}

TEST(MergeGames, TakesSmallChangesInDifferentPlacesFromBoth) {
    const GameModel base = Saved(Lighthouse());
    std::set<std::string> kinds;
    int pairs = 0;
    for (unsigned seed = 1; pairs < 300; ++seed) {
        std::mt19937 random(seed);
        const Edit one = RandomEdit(base, random);
        const Edit other = RandomEdit(base, random);
        if (TouchTheSame(one, other))
            continue;
        SCOPED_TRACE("seed " + std::to_string(seed) + ": " + one.kind + " and " + other.kind);
        ++pairs;
        kinds.insert({one.kind, other.kind});
        GameModel both = base;
        one.apply(both);
        other.apply(both);
        const GameModel ours = Changed(base, one);
        const GameModel theirs = Changed(base, other);
        const MergeResult result = MergeGames(base, ours, theirs);
        ASSERT_EQ(Conflicts(result), "");
        ASSERT_EQ(AsSet(result.game), AsSet(both));
        ASSERT_EQ(AsSet(Saved(result.game)), AsSet(both)) << "what the file gives back";
        const MergeResult mirrored = MergeGames(base, theirs, ours);
        ASSERT_EQ(Conflicts(mirrored), "");
        ASSERT_EQ(AsSet(mirrored.game), AsSet(both));
    }
    EXPECT_GE(kinds.size(), 20u);
}

TEST(MergeGames, ReportsEachPairOfChangesOfOneFieldAndLosesNothing) {
    const GameModel base = Saved(Lighthouse());
    for (unsigned seed = 1; seed <= 100; ++seed) {
        std::mt19937 random(seed);
        const Place place = RandomText(base, random);
        GameModel ours = base;
        GameModel theirs = base;
        ChangeText(ours, place, "porpoise");
        ChangeText(theirs, place, "walrus");
        SCOPED_TRACE("seed " + std::to_string(seed) + ": " + DescribePlace(base, place));
        const MergeResult result = MergeGames(base, ours, theirs);
        ASSERT_EQ(result.conflicts.size(), 1u) << Conflicts(result);
        const merge::Conflict& conflict = result.conflicts.front();
        ASSERT_NE(conflict.ours.find("porpoise"), std::string::npos) << Conflicts(result);
        ASSERT_NE(conflict.theirs.find("walrus"), std::string::npos) << Conflicts(result);
        ASSERT_EQ(AsSet(result.game), AsSet(ours));
        ASSERT_TRUE(conflict.inMerged && Exists(result.game, *conflict.inMerged));
        ASSERT_EQ(AsSet(MergeGames(base, ours, theirs, {{conflict.id, Take::Theirs}}).game), AsSet(theirs));
    }
}

TEST(MergeGames, ChangesNothingWhereNobodyOrOnlyOneDid) {
    for (const std::filesystem::path& file : FilesIn(ZEM_SAMPLES)) {
        const GameModel base = LoadBytes(ReadBytes(file));
        GameModel changed = base;
        std::mt19937 random(7);
        for (int k = 0; k < 20; ++k)
            RandomEdit(changed, random).apply(changed);
        for (const auto& [ours, theirs, expected] :
             {std::tuple(&base, &base, &base), {&changed, &changed, &changed}, {&changed, &base, &changed}}) {
            const MergeResult result = MergeGames(base, *ours, *theirs);
            EXPECT_EQ(Conflicts(result), "") << file;
            EXPECT_EQ(SaveToBytes(result.game), SaveToBytes(*expected)) << file;
        }
        EXPECT_EQ(AsSet(MergeGames(base, base, changed).game), AsSet(changed)) << file;
    }
}

constexpr const char* Lamp =
    "define object <lamp>\nlook <It is out.>\ntake {\nmsg <a>\nmsg <b>\nmsg <c>\n}\nend define\n";
constexpr const char* LampEdited =
    "define object <lamp>\nlook <It is lit.>\ntake {\nmsg <a>\nmsg <b>\nmsg <c>\n}\nend define\n";

std::string InRoom(const std::string& name, const std::string& lines) {
    return "define room <" + name + ">\n" + lines + "end define\n";
}

GameModel Parse(const std::string& blocks) {
    return LoadBytes(CrLf("define game <x>\nitems <key>\nend define\n" + blocks));
}

/// Pairs of changes whose outcome is not obvious: base, ours, theirs, what is expected, and the conflicts.
TEST(MergeGames, SettlesWhatTouches) {
    struct Case {
        const char* what;
        std::string base, ours, theirs, merged;
        std::vector<ConflictKind> conflicts;
        std::string withTheirs = {}; // when theirs is taken at each conflict; empty for theirs as it is
    };
    const std::string lamp = Lamp;
    const std::string lit = LampEdited;
    for (const Case& c : std::vector<Case>{
             {"one moves a thing, the other edits it",
              InRoom("A", lamp) + InRoom("B", ""),
              InRoom("A", "") + InRoom("B", lamp),
              InRoom("A", lit) + InRoom("B", ""),
              InRoom("A", "") + InRoom("B", lit),
              {}},
             {"one renames a room, the other edits a thing in it",
              InRoom("A", "look <A long text that stays.>\n" + lamp),
              InRoom("B", "look <A long text that stays.>\n" + lamp),
              InRoom("A", "look <A long text that stays.>\n" + lit),
              InRoom("B", "look <A long text that stays.>\n" + lit),
              {}},
             {"ours deletes a room in which theirs edits",
              InRoom("A", "") + InRoom("B", lamp),
              InRoom("A", ""),
              InRoom("A", "") + InRoom("B", lit),
              InRoom("A", ""),
              {ConflictKind::DeletedByOurs}},
             {"theirs deletes a room in which ours edits",
              InRoom("A", "") + InRoom("B", lamp + "alias <b>\n"),
              InRoom("A", "") + InRoom("B", lit + "alias <b>\n"),
              InRoom("A", ""),
              InRoom("A", "") + InRoom("B", lit + "alias <b>\n"),
              {ConflictKind::DeletedByTheirs}},
             {"both delete", InRoom("A", lamp), InRoom("A", ""), InRoom("A", ""), InRoom("A", ""), {}},
             {"both move to different rooms",
              InRoom("A", lamp) + InRoom("B", "") + InRoom("C", ""),
              InRoom("A", "") + InRoom("B", lamp) + InRoom("C", ""),
              InRoom("A", "") + InRoom("B", "") + InRoom("C", lamp),
              InRoom("A", "") + InRoom("B", lamp) + InRoom("C", ""),
              {ConflictKind::Moved}},
             {"ours moves a thing into the room that theirs deletes",
              InRoom("A", lamp) + InRoom("B", ""),
              InRoom("A", "") + InRoom("B", lamp),
              InRoom("A", lamp),
              InRoom("A", "") + InRoom("B", lamp),
              {ConflictKind::DeletedByTheirs}},
             {"theirs moves a thing out of the room that ours deletes with it",
              InRoom("A", "") + InRoom("B", lamp),
              InRoom("A", ""),
              InRoom("A", lamp) + InRoom("B", ""),
              InRoom("A", ""),
              {ConflictKind::DeletedByOurs},
              InRoom("A", lamp)},
             {"lines of one script, made by number 0 in both",
              InRoom("A", "script {\nmsg <1>\nmsg <2>\nmsg <3>\n}\n"),
              InRoom("A", "script {\nmsg <1!>\nmsg <2>\nmsg <3>\n}\n"),
              InRoom("A", "script {\nmsg <1>\nmsg <2>\nmsg <3>\nmsg <4>\n}\n"),
              InRoom("A", "script {\nmsg <1!>\nmsg <2>\nmsg <3>\nmsg <4>\n}\n"),
              {}},
             {"new scripts of several lines in different fields, both number 0",
              InRoom("A", ""),
              InRoom("A", "script {\nmsg <1>\n}\n"),
              InRoom("A", "description {\nmsg <2>\n}\n"),
              InRoom("A", "script {\nmsg <1>\n}\ndescription {\nmsg <2>\n}\n"),
              {}},
             {"one puts a script in braces, the other changes its line",
              InRoom("A", "script msg <1>\n"),
              InRoom("A", "script {\nmsg <1>\nwait <>\n}\n"),
              InRoom("A", "script msg <2>\n"),
              InRoom("A", "script {\nmsg <2>\nwait <>\n}\n"),
              {}},
             {"scripts inside one another",
              InRoom("A", "script if has <x> then {\nmsg <1>\n} else {\nmsg <2>\n}\n"),
              InRoom("A", "script if has <x> then {\nmsg <1!>\n} else {\nmsg <2>\n}\n"),
              InRoom(
                  "A",
                  "script if has <x> then {\nmsg <1>\n} else {\nmsg <2>\nif has <y> then {\nmsg <3>\n}\n}\n"),
              InRoom("A", "script if has <x> then {\nmsg <1!>\n} else {\nmsg <2>\nif has <y> then {\nmsg "
                          "<3>\n}\n}\n"),
              {}},
             {"an exit: another room and an action",
              InRoom("A", "north <B>\n"),
              InRoom("A", "north <C>\n"),
              InRoom("A", "north msg <No.>\n"),
              InRoom("A", "north <C>\n"),
              {ConflictKind::Field}},
             {"raw lines of the same keyword",
              InRoom("A", ""),
              InRoom("A", "zem-map <1; 2>\n"),
              InRoom("A", "zem-map <3; 4>\n"),
              InRoom("A", "zem-map <1; 2>\n"),
              {ConflictKind::Field}},
             {"raw lines of different keywords",
              InRoom("A", "x <1>\n"),
              InRoom("A", "x <1>\ny <2>\n"),
              InRoom("A", "x <1>\nz <3>\n"),
              InRoom("A", "x <1>\ny <2>\nz <3>\n"),
              {}},
             {"the same room added twice",
              "",
              InRoom("A", "look <a>\n"),
              InRoom("A", "look <a>\n"),
              InRoom("A", "look <a>\n"),
              {}},
             {"rooms in another order and a new one",
              InRoom("A", "") + InRoom("B", "") + InRoom("C", ""),
              InRoom("C", "") + InRoom("A", "") + InRoom("B", ""),
              InRoom("A", "") + InRoom("New", "") + InRoom("B", "") + InRoom("C", ""),
              InRoom("C", "") + InRoom("A", "") + InRoom("New", "") + InRoom("B", ""),
              {}},
             {"two orders",
              InRoom("A", "") + InRoom("B", "") + InRoom("C", ""),
              InRoom("C", "") + InRoom("A", "") + InRoom("B", ""),
              InRoom("B", "") + InRoom("A", "") + InRoom("C", ""),
              InRoom("C", "") + InRoom("A", "") + InRoom("B", ""),
              {ConflictKind::Order}},
             {"blocks of other kinds",
              "define timer <t>\ninterval <5>\nend define\n",
              "define timer <t>\ninterval <6>\nend define\n",
              "define timer <t>\ninterval <5>\naction {\nmsg <x>\n}\nend define\ndefine timer <u>\nend "
              "define\n",
              "define timer <t>\ninterval <6>\naction {\nmsg <x>\n}\nend define\ndefine timer <u>\nend "
              "define\n",
              {}},
         }) {
        SCOPED_TRACE(c.what);
        const MergeResult result = MergeGames(Parse(c.base), Parse(c.ours), Parse(c.theirs));
        std::vector<ConflictKind> kinds;
        for (const merge::Conflict& conflict : result.conflicts)
            kinds.push_back(conflict.kind);
        EXPECT_EQ(kinds, c.conflicts) << Conflicts(result);
        EXPECT_EQ(AsShown(result.game), AsShown(Parse(c.merged)));
        EXPECT_EQ(AsSet(Saved(result.game)), AsSet(result.game)) << "what the file gives back";
        merge::Choices theirs;
        for (const merge::Conflict& conflict : result.conflicts)
            theirs[conflict.id] = Take::Theirs;
        if (!theirs.empty()) {
            EXPECT_EQ(AsSet(MergeGames(Parse(c.base), Parse(c.ours), Parse(c.theirs), theirs).game),
                      AsSet(Parse(c.withTheirs.empty() ? c.theirs : c.withTheirs)));
        }
    }
}

/// Games of all that means something in a file, as files give them, and that a save gives back.
TEST(MergeGames, AlwaysGivesAGameThatLoads) {
    std::vector<GameModel> games;
    for (unsigned seed = 1; games.size() < 60; ++seed) {
        GameModel game = RandomGame(seed, 6).Make();
        if (ProblemOf([&] { game = Saved(Saved(game)); }).empty())
            games.push_back(game);
    }
    for (std::size_t k = 0; k + 2 < games.size(); ++k) {
        const MergeResult result = MergeGames(games[k], games[k + 1], games[k + 2]);
        EXPECT_EQ(ProblemOf([&] { Saved(result.game); }), "") << k;
        for (const merge::Conflict& conflict : result.conflicts)
            EXPECT_TRUE(!conflict.inMerged || Exists(result.game, *conflict.inMerged)) << conflict.where;
        const MergeResult same = MergeGames(games[k], games[k + 1], games[k + 1]);
        EXPECT_EQ(Conflicts(same), "");
        EXPECT_EQ(SaveToBytes(same.game), SaveToBytes(games[k + 1]));
    }
}

TEST(MergeGames, TakesBothSidesOfAConflict) {
    const auto withoutBlanks = [](const GameModel& game) { // a script in braces begins with one in a file
        std::string text = AsShown(game);
        std::erase(text, ' ');
        return text;
    };
    for (const auto& [base, ours, theirs, both] : {
             std::tuple("script msg <1>\n", "script msg <2>\n", "script msg <3>\n",
                        "script {\nmsg <2>\nmsg <3>\n}\n"),
             {"look <1>\n", "look <2>\n", "look <3>\n", "look <2|n3>\n"},
             {"x <1>\n", "x <2>\n", "x <3>\n", "x <2>\nx <3>\n"},
         }) {
        const GameModel games[] = {Parse(InRoom("A", base)), Parse(InRoom("A", ours)),
                                   Parse(InRoom("A", theirs))};
        const MergeResult result = MergeGames(games[0], games[1], games[2]);
        ASSERT_EQ(result.conflicts.size(), 1u);
        EXPECT_TRUE(result.conflicts.front().canTakeBoth);
        const auto taken =
            MergeGames(games[0], games[1], games[2], {{result.conflicts.front().id, Take::Both}});
        EXPECT_EQ(withoutBlanks(taken.game), withoutBlanks(Parse(InRoom("A", both))));
    }
}

} // namespace
} // namespace zem::test
