// What is wrong with a game does not depend on where its records stand in the file, on how often it is asked,
// or on which other checks run.
#include "problems/CheckedFile.h"
#include "problems/Checks.h"
#include "problems/MadeGame.h"
#include "problems/Planting.h"
#include "problems/Seeder.h"

#include <gtest/gtest.h>

namespace zem::test {
namespace {

using namespace problems;

CheckInput InputOfOrder(const GameModel& game) {
    CheckInput input;
    input.game = game;
    input.commands = &ShippedCommands();
    const auto files = std::make_shared<RealFiles>(ZEM_SAMPLES);
    input.files = files;
    input.libraries = std::make_shared<Libraries>(ReadLibraries(game, *files));
    return input;
}

template <class Records>
void Reverse(Records& records) {
    Records reversed;
    for (int k = records.Count(); k >= 1; --k)
        reversed.Append(records[k]);
    records = reversed;
}

std::string WordsOf(const Told& told, const Told& other) {
    std::string words;
    for (const auto& one : told)
        if (!other.contains(one))
            words += one.first + " " + one.second + "\n";
    return words;
}

/// The samples, and a game for each fault that can be planted in records, but for two records of one
/// name, of which the order tells which is meant.
std::vector<std::pair<std::string, GameModel>> GamesToOrder() {
    std::vector<std::pair<std::string, GameModel>> games;
    for (const auto& [name, bytes] : SampleFiles())
        games.emplace_back(name, InputOfFile(bytes).game);
    std::uint32_t seed = 500;
    for (const FaultKind& kind : FaultKinds()) {
        GameModel game;
        play::NameMessages(game);
        ReadGame(game, CrLf(MadeGame(++seed)));
        Seeder seeder(seed);
        const bool isOfOrder = std::string_view(kind.name).find("of one name") != std::string_view::npos;
        if (!isOfOrder && kind.inGame != nullptr && kind.inGame(game, seeder))
            games.emplace_back(kind.name, std::move(game));
    }
    return games;
}

TEST(ProblemLaws, DoNotDependOnTheOrderOfRecords) {
    for (const auto& [name, game] : GamesToOrder()) {
        GameModel other = game;
        Reverse(other.Rooms);
        Reverse(other.Procedures);
        Reverse(other.TextSections);
        Reverse(other.SelectionMenus);
        Reverse(other.Items);
        Reverse(other.Collectables);
        for (int room = 1; room <= other.Rooms.Count(); ++room) {
            Reverse(other.Rooms.Edit(room).Characters);
            Reverse(other.Rooms.Edit(room).Objects);
        }
        const Told before = ToldOf(FindProblems(CheckedGame(InputOfOrder(game))));
        const Told after = ToldOf(FindProblems(CheckedGame(InputOfOrder(other))));
        EXPECT_EQ(WordsOf(before, after), "") << name;
        EXPECT_EQ(WordsOf(after, before), "") << name;
    }
}

TEST(ProblemLaws, EachCheckAloneTellsWhatItTellsAmongAll) {
    const GameModel game = InputOfFile(SampleFiles().at("lighthouse")).game;
    std::vector<GameModel> games = {game};
    std::uint32_t seed = 700;
    for (const FaultKind& kind : FaultKinds()) {
        Seeder seeder(++seed);
        if (kind.inGame != nullptr)
            kind.inGame(games.back(), seeder);
    }
    const CheckedGame checked(InputOfOrder(games.back()));
    Told all;
    for (const Problem& problem : FindProblems(checked))
        all.emplace(problem.id, problem.text);
    EXPECT_GE(all.size(), 30U);
    Told alone;
    for (const Check& check : AllChecks()) {
        for (const Problem& problem : FindProblems(checked, {{check.id}, {}})) {
            EXPECT_STREQ(problem.id, check.id);
            alone.emplace(problem.id, problem.text);
        }
    }
    EXPECT_EQ(WordsOf(all, alone), "");
    for (const char* skipped : {"A01", "E03", "G02"})
        for (const Problem& problem : FindProblems(checked, {{}, {skipped}}))
            EXPECT_STRNE(problem.id, skipped);
}

} // namespace
} // namespace zem::test
