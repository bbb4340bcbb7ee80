#include "game/References.h"
#include "kel/ScriptTree.h"
#include "pieces/CopyPiece.h"
#include "pieces/MoveRecords.h"
#include "pieces/PastePiece.h"
#include "readback/ReadBack.h"
#include "support/Catalogue.h"
#include "support/Games.h"
#include "support/RandomGame.h"

#include <algorithm>
#include <random>
#include <set>
#include <utility>

namespace zem::test {
namespace {

const CommandLookup& PieceCommands() {
    static const CommandLookup commands(ShippedCatalogue());
    return commands;
}

/// The places of all that can be copied.
std::vector<Place> AllPlaces(const GameModel& game) {
    std::vector<Place> places;
    ForEachField<GameModel>([&](const auto& field) {
        using Value = std::remove_cvref_t<decltype(game.*field.member)>;
        if constexpr (RecordList<Value>)
            if (field.id != FieldId::GameIncludes && field.id != FieldId::GameErrorMessages)
                for (int k = 1; k <= (game.*field.member).Count(); ++k)
                    places.push_back(Place::Of({{field.id, k}}));
    });
    places.push_back(Place::Of({}, FieldId::GameUnknownBlocks));
    return places;
}

GameModel EmptyGame() {
    GameModel game = GameWithErrorNames();
    NewGame(game);
    return game;
}

std::vector<std::pair<std::string, std::string>> SortedTexts(const GameModel& game) {
    std::vector<std::pair<std::string, std::string>> texts;
    for (const TextSection& text : game.TextSections)
        if (!text.Text.empty())
            texts.emplace_back(text.Name, text.Text);
    std::sort(texts.begin(), texts.end());
    return texts;
}

template <class Record>
void ExpectBeginsWith(const Table<Record>& game, const Table<Record>& before, const char* what) {
    ASSERT_GE(game.Count(), before.Count()) << what;
    for (int k = 1; k <= before.Count(); ++k)
        EXPECT_EQ(game[k], before[k]) << what << " " << k;
}

/// Everything of the game before stands where it stood, as it was.
void ExpectKeeps(const GameModel& game, const GameModel& before) {
    ExpectBeginsWith(game.Rooms, before.Rooms, "room");
    ExpectBeginsWith(game.Items, before.Items, "item");
    ExpectBeginsWith(game.Collectables, before.Collectables, "collectable");
    ExpectBeginsWith(game.Procedures, before.Procedures, "procedure");
    ExpectBeginsWith(game.SelectionMenus, before.SelectionMenus, "menu");
    ExpectBeginsWith(game.Synonyms, before.Synonyms, "synonym");
    ExpectBeginsWith(game.PlayerCommands, before.PlayerCommands, "player command");
    EXPECT_TRUE(game.UnknownBlocks->starts_with(*before.UnknownBlocks));
    const std::vector<std::string> lines = UnfoldScript(game, game.StartScript);
    const std::vector<std::string> linesBefore = UnfoldScript(before, before.StartScript);
    EXPECT_TRUE(lines.size() >= linesBefore.size() &&
                std::equal(linesBefore.begin(), linesBefore.end(), lines.begin()));
    EXPECT_EQ(game.StartRoom, before.StartRoom);
}

std::set<std::pair<NameKind, std::string>> DefinedNames(const GameModel& game) {
    std::set<std::pair<NameKind, std::string>> names;
    ForEachReference(game, PieceCommands(), [&](const zem::Reference& reference) {
        if (reference.role == ReferenceRole::Definition)
            names.emplace(reference.kind, reference.name);
    });
    return names;
}

std::string FirstLost(const GameModel& game) {
    const std::vector<LostPlace> lost = ReadBack(game, GameFile(game), 1);
    return lost.empty() ? "" : lost.front().text;
}

class EverySample : public testing::TestWithParam<std::string> {
protected:
    GameModel game_ = LoadBytes(ReadBytes(std::string(ZEM_SAMPLES "/") + GetParam() + ".kel"));
};

TEST_P(EverySample, ComesOutOfAnEmptyGameAsItWas) {
    const PieceText copied = CopyPiece(game_, AllPlaces(game_));
    const Pasted pasted = PastePiece(EmptyGame(), copied.text, {}, PieceCommands());
    EXPECT_EQ(pasted.game.Rooms, game_.Rooms);
    EXPECT_EQ(pasted.game.Items, game_.Items);
    EXPECT_EQ(pasted.game.Collectables, game_.Collectables);
    EXPECT_EQ(pasted.game.Procedures, game_.Procedures);
    EXPECT_EQ(pasted.game.SelectionMenus, game_.SelectionMenus);
    EXPECT_EQ(pasted.game.Synonyms, game_.Synonyms);
    EXPECT_EQ(pasted.game.PlayerCommands, game_.PlayerCommands);
    EXPECT_EQ(pasted.game.GameUses, game_.GameUses);
    EXPECT_EQ(*pasted.game.UnknownBlocks, *game_.UnknownBlocks);
    EXPECT_EQ(SortedTexts(pasted.game), SortedTexts(game_));
    EXPECT_GE(pasted.game.NextInternalProcedure, game_.NextInternalProcedure - 1);
    EXPECT_TRUE(pasted.renamed.empty());
}

TEST_P(EverySample, MayBePastedIntoItselfAgainAndAgain) {
    const PieceText copied = CopyPiece(game_, AllPlaces(game_));
    const auto names = DefinedNames(game_);
    GameModel before = game_;
    for (int time = 0; time < 2; ++time) {
        const Pasted pasted = PastePiece(before, copied.text, {}, PieceCommands());
        ExpectKeeps(pasted.game, before);
        EXPECT_EQ(FirstLost(pasted.game), "");
        // What was pasted means its own parts, and nothing of the game that it was pasted into.
        ForEachReference(pasted.game, PieceCommands(), [&](const zem::Reference& reference) {
            const PlaceStep record = reference.place.steps.front();
            const bool isAdded =
                (record.list == FieldId::GameRooms && record.entry > before.Rooms.Count()) ||
                (record.list == FieldId::GameProcedures && record.entry > before.Procedures.Count()) ||
                (record.list == FieldId::GameSelectionMenus && record.entry > before.SelectionMenus.Count());
            const bool meansOld = names.contains({reference.kind, std::string(reference.name)});
            EXPECT_FALSE(isAdded && reference.role == ReferenceRole::Use && meansOld)
                << DescribePlace(pasted.game, reference.place) << ": " << reference.name;
        });
        before = pasted.game;
    }
}

TEST_P(EverySample, RecordsByThemselvesBringTheirProceduresAndLeaveTheOthers) {
    for (int k = 1; k <= game_.Rooms.Count(); ++k) {
        const PieceText copied = CopyPiece(game_, {Place::Of({{FieldId::GameRooms, k}})});
        EXPECT_EQ(copied.what, "room " + game_.Rooms[k].Name);
        const Pasted pasted = PastePiece(EmptyGame(), copied.text, {}, PieceCommands());
        ASSERT_EQ(pasted.game.Rooms.Count(), 1);
        EXPECT_EQ(pasted.game.Rooms[1], game_.Rooms[k]);
        for (const Procedure& procedure : pasted.game.Procedures)
            EXPECT_TRUE(procedure.Name.starts_with(InternalProcedure));
        EXPECT_EQ(pasted.added.size(), 1U);
    }
}

INSTANTIATE_TEST_SUITE_P(Samples, EverySample,
                         testing::Values("archipelago", "cottage", "gatehouse", "lighthouse"),
                         [](const auto& test) { return test.param; });

/// Whatever is pasted, the game is refused or reads back as it is, and keeps what it had.
void ExpectRefusedOrWhole(const GameModel& game, const std::string& text, int& pastes) {
    try {
        const Pasted pasted = PastePiece(game, text, {.room = 1, .takesLines = true}, PieceCommands());
        ++pastes;
        ExpectKeeps(pasted.game, game);
        EXPECT_EQ(FirstLost(pasted.game), "") << text;
    } catch (const KelError& error) {
        EXPECT_STRNE(error.what(), "");
    }
}

TEST(PieceLaws, GamesOfAnyTextAreRefusedOrPastedWhole) {
    const GameModel target = LoadBytes(ReadBytes(ZEM_SAMPLES "/cottage.kel"));
    int pastes = 0;
    for (unsigned seed = 1; seed <= 300; ++seed) {
        const GameModel random = RandomGame(seed, seed % 2 == 0 ? 0 : 1).Make();
        try {
            ExpectRefusedOrWhole(target, CopyPiece(random, AllPlaces(random)).text, pastes);
        } catch (const KelError& error) {
            EXPECT_STRNE(error.what(), "");
        }
        ExpectRefusedOrWhole(target, GameFile(random), pastes);
    }
    EXPECT_GT(pastes, 60);
}

TEST(PieceLaws, TextsThatWereCutOrShuffledAreRefusedOrPastedWhole) {
    const GameModel game = LoadBytes(ReadBytes(ZEM_SAMPLES "/gatehouse.kel"));
    const std::string text =
        CopyPiece(game, {Place::Of({{FieldId::GameRooms, 1}}), Place::Of({{FieldId::GameRooms, 2}}),
                         Place::Of({{FieldId::GameProcedures, 1}})})
            .text;
    std::mt19937 random(7);
    const auto at = [&](const std::string& of) { return random() % of.size(); };
    int pastes = 0;
    for (int k = 0; k < 300; ++k) {
        std::string changed = text;
        const std::size_t begin = at(changed);
        if (k % 3 == 0)
            changed.erase(begin);
        else if (k % 3 == 1)
            changed.erase(begin, random() % 40);
        else
            changed.insert(begin, text.substr(at(text), random() % 60));
        ExpectRefusedOrWhole(game, changed, pastes);
    }
    EXPECT_GT(pastes, 20);
}

} // namespace
} // namespace zem::test
