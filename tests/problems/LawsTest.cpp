#include "game/GameNames.h"
#include "game/NotePlaces.h"
#include "game/Rename.h"
#include "game/Replace.h"
#include "problems/CheckedFile.h"
#include "problems/MadeGame.h"
#include "problems/Seeder.h"
#include "problems/Silenced.h"

#include <gtest/gtest.h>
#include <iostream>

namespace zem::test {
namespace {

using namespace problems;

std::string WordsFor(const CheckedGame& game, const Problem& problem) {
    return std::string(problem.id) + " " + game.Describe(problem.place) + ": " + problem.text;
}

TEST(Problems, OnTheSamplesOnlyTrueOnesAreToldAloud) {
    // Whatever is added here must be looked at: it is told to everybody who opens the sample.
    const std::map<std::string, std::vector<std::string>> known = {
        {"archipelago", {}},
        {"cottage", {}},
        {"gatehouse", {}},
        {"lighthouse",
         {"F01 procedure rattle the bones, script, line 1: There is no file \"bones.wav\" beside the game.",
          "F01 procedure look at the picture, script, line 1: There is no file \"tower-at-dusk.bmp\" beside "
          "the "
          "game.",
          "F01 procedure the band at the caf\xE9, script, line 2, line 1: There is no file "
          "\"the-drowned-bell.mid\" beside the game."}}};
    for (const auto& [name, bytes] : SampleFiles()) {
        const CheckedGame game(InputOfFile(bytes));
        std::vector<std::string> told;
        for (const Problem& problem : FindProblems(game))
            if (problem.level != Level::Hint)
                told.push_back(WordsFor(game, problem));
        EXPECT_EQ(told, known.at(name)) << name;
    }
}

/// Games with one fault each, of every kind that a made game can have in its records.
std::vector<GameModel> FaultyGames() {
    std::vector<GameModel> games;
    std::uint32_t seed = 0;
    for (const FaultKind& kind : FaultKinds()) {
        GameModel game;
        play::NameMessages(game);
        ReadGame(game, CrLf(MadeGame(++seed)));
        Seeder seeder(seed);
        if (kind.inGame != nullptr && kind.inGame(game, seeder))
            games.push_back(std::move(game));
    }
    EXPECT_GT(games.size(), 40U);
    return games;
}

CheckInput InputOf(const GameModel& game) {
    CheckInput input;
    input.game = game;
    input.commands = &ShippedCommands();
    input.files = std::make_shared<RealFiles>(ZEM_SAMPLES);
    return input;
}

Told ErrorsOf(const GameModel& game) {
    Told errors;
    for (const Problem& problem : FindProblems(CheckedGame(InputOf(game))))
        if (problem.level == Level::Error)
            errors.emplace(problem.id, problem.text);
    return errors;
}

TEST(Problems, EveryFixMakesNoNewErrorAndLeavesTheGameItWasFoundIn) {
    int fixes = 0;
    int offers = 0;
    for (const GameModel& game : FaultyGames()) {
        const std::string before = SaveToBytes(game);
        const Told errors = ErrorsOf(game);
        const CheckedGame checked(InputOf(game));
        for (const Problem& problem : FindProblems(checked)) {
            for (const Fix& fix : problem.fixes) {
                const GameModel fixed = fix.apply(game);
                ++fixes;
                ASSERT_EQ(SaveToBytes(game), before) << problem.id << ' ' << fix.button;
                // Applied to a game that is another one by now, it does no harm.
                const GameModel twice = fix.apply(fixed);
                EXPECT_TRUE(twice.Rooms.Count() >= fixed.Rooms.Count()) << problem.id << ' ' << fix.button;
            }
            for (const Fix& fix : OffersOf(checked, problem)) {
                ++offers;
                const Told after = ErrorsOf(fix.apply(game));
                EXPECT_TRUE(std::includes(errors.begin(), errors.end(), after.begin(), after.end()))
                    << problem.id << ' ' << fix.button;
            }
        }
    }
    std::cout << offers << " of " << fixes << " fixes offered\n";
    EXPECT_GT(offers, 20);
}

constexpr NameKind AllKinds[] = {
    NameKind::Room, NameKind::Object,      NameKind::Character, NameKind::Item,     NameKind::Procedure,
    NameKind::Menu, NameKind::TextSection, NameKind::Flag,      NameKind::Variable, NameKind::Collectable};

/// The words for each problem, with one name in the place of another; without those that judge the letters of
/// a name, and rightly say something else of another one.
std::multiset<std::string> ListOf(const GameModel& game, const std::string& name, const std::string& shown) {
    const std::set<std::string> ofLetters = {"T09", "T14", "V09", "U09", "Y01", "K04"};
    std::multiset<std::string> list;
    const CheckedGame checked(InputOf(game));
    for (const Problem& problem : FindProblems(checked)) {
        if (ofLetters.contains(problem.id))
            continue;
        std::string words = WordFor(problem.level) + std::string(" ") + WordsFor(checked, problem);
        for (std::size_t at = 0; (at = words.find(name, at)) != std::string::npos; at += shown.size())
            words.replace(at, name.size(), shown);
        list.insert(words);
    }
    return list;
}

TEST(Problems, AreTheSameAfterARenameButForTheName) {
    const std::string fresh = "Xyzzyqux";
    std::vector<GameModel> games = FaultyGames();
    games.resize(12);
    for (const auto& [name, bytes] : SampleFiles())
        games.push_back(InputOfFile(bytes).game);
    int renames = 0;
    std::size_t turn = 0;
    for (const GameModel& game : games)
        for (int of = 0; of < 3; ++of) {
            const NameKind kind = AllKinds[turn++ % std::size(AllKinds)];
            const std::vector<std::string> names = GameNames(game, kind, ShippedCommands());
            if (names.empty())
                continue;
            const std::string& name = names[turn % names.size()];
            RenameRequest request;
            request.kind = kind;
            request.oldName = name;
            request.newName = fresh;
            const RenamePlan plan = PlanRename(game, ShippedCommands(), request);
            if (!plan.isAllowed)
                continue;
            GameModel renamed = game;
            CarryOut(plan, renamed);
            ++renames;
            EXPECT_EQ(ListOf(renamed, fresh, "IT"), ListOf(game, name, "IT")) << name;
        }
    EXPECT_GT(renames, 30);
}

/// The errors about names, about scripts that are not understood and about what a save loses.
Told BrokenParts(const GameModel& game) {
    Told broken = ErrorsOf(game);
    std::erase_if(broken, [](const auto& error) {
        return std::string_view("ABS").find(error.first[0]) == std::string::npos;
    });
    return broken;
}

TEST(Problems, AreNoMoreAfterAnyReplace) {
    const std::vector<std::string> wanted = {"a", "the", "is", "o", "and", "in", "n", " ", "msg", "1"};
    const std::vector<std::string> words = {"", "x", "<b>", ";", "#", "THE", "{", "if ", "|", "__"};
    std::vector<GameModel> games;
    for (const auto& [name, bytes] : SampleFiles())
        games.push_back(InputOfFile(bytes).game);
    Seeder seeder(14);
    int made = 0;
    for (const GameModel& game : games) {
        const Told before = BrokenParts(game);
        const GameIndex index(ShippedCommands(), game);
        for (int round = 0; round < 2; ++round) {
            const std::string words1 = seeder.PickOf(wanted);
            const std::string words2 = seeder.PickOf(words);
            ReplacePlan plan = PlanReplace(index, {.words = words1}, words2, 2000);
            for (Replacement& replacement : plan.replacements)
                replacement.isTicked = replacement.isTicked && seeder.Pick(4) == 0;
            GameModel replaced = game;
            made += CarryOut(index, plan, replaced).made;
            const Told after = BrokenParts(replaced);
            EXPECT_LE(after.size(), before.size()) << words1 << " -> " << words2;
            const GameModel again = InputOfFile(SaveToBytes(replaced)).game;
            EXPECT_EQ(SaveToBytes(again), SaveToBytes(replaced)) << words1 << " -> " << words2;
        }
    }
    EXPECT_GT(made, 500);
}

TEST(Problems, StaySilencedAcrossARename) {
    int silenced = 0;
    int renames = 0;
    int turn = 0;
    for (const GameModel& game : FaultyGames()) {
        const CheckedGame checked(InputOf(game));
        GameNotes notes;
        for (const Problem& problem : FindProblems(checked))
            notes.SilenceAt(problem.id, NotePlaceOf(checked, problem), "as it is");
        silenced += static_cast<int>(notes.silences.size());
        notes = ReadNotes(WriteNotes(notes));
        ASSERT_TRUE(WithoutSilenced(checked, notes, FindProblems(checked)).empty());
        for (int of = 0; of < 3; ++of) { // all kinds have their turn
            const NameKind kind = AllKinds[static_cast<std::size_t>(turn++) % std::size(AllKinds)];
            const std::vector<std::string> names = GameNames(game, kind, ShippedCommands());
            if (names.empty())
                continue;
            RenameRequest request;
            request.kind = kind;
            request.oldName = names[names.size() / 2];
            request.newName = "Xyzzyqux";
            const RenamePlan plan = PlanRename(game, ShippedCommands(), request);
            if (!plan.isAllowed)
                continue;
            GameModel renamed = game;
            CarryOut(plan, renamed);
            ++renames;
            GameNotes following = notes;
            for (const NameChange& name : plan.names)
                RenameInNotes(following, name.kind, name.from, name.to, ShippedCommands());
            const CheckedGame after(InputOf(renamed));
            for (const Problem& problem : WithoutSilenced(after, following, FindProblems(after)))
                ADD_FAILURE() << request.oldName << ": " << WordsFor(after, problem);
        }
    }
    std::cout << silenced << " silenced, " << renames << " renames\n";
    EXPECT_GT(renames, 100);
}

} // namespace
} // namespace zem::test
