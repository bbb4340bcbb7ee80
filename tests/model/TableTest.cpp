#include "model/Table.h"

#include "model/GameModel.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace zem::test {
namespace {

Table<std::string> MakeTable(const std::vector<std::string>& texts) {
    Table<std::string> table;
    for (const std::string& text : texts)
        table.Append(text);
    return table;
}

// A table and a plain vector go through the same random changes; copies taken on the way must not move.
TEST(Table, BehavesLikeAVectorAndItsCopiesStayAsTheyWere) {
    std::mt19937 random(7);
    Table<std::string> table;
    std::vector<std::string> model;
    std::vector<std::pair<Table<std::string>, std::vector<std::string>>> copies;
    const auto pick = [&](std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
    };
    const auto append = [](auto& records, auto& texts, const std::string& text) {
        records.Append(text);
        texts.push_back(text);
    };

    for (int step = 0; step < 6000; ++step) {
        const std::string text = "step " + std::to_string(step);
        const std::size_t k = model.empty() ? 0 : pick(model.size());
        // Grows for the first half, shrinks afterwards, so that groups fill up, split off and vanish.
        if (model.empty() || pick(10) < (step < 3000 ? 7u : 3u)) {
            append(table, model, text);
        } else if (pick(2) == 0) {
            table.Edit(static_cast<int>(k) + 1) = text;
            model[k] = text;
        } else {
            table.Remove(static_cast<int>(k) + 1);
            model.erase(model.begin() + static_cast<std::ptrdiff_t>(k));
        }
        if (step % 300 == 299) {
            copies.emplace_back(table, model);
            if (step % 600 == 299) { // either of the two may go on first, at the record that both end with
                append(copies.back().first, copies.back().second, "at once");
                table.Edit(table.Count()) = text;
                model.back() = text;
            }
        }
    }
    for (auto& [copy, texts] : copies) {
        append(copy, texts, "later");
        EXPECT_EQ(std::vector<std::string>(copy.begin(), copy.end()), texts);
        for (int k = 1; k <= copy.Count(); ++k)
            ASSERT_EQ(copy[k], texts[static_cast<std::size_t>(k) - 1]);
    }
}

TEST(Table, RefusesPositionsOutsideOneToCount) {
    Table<std::string> table = MakeTable({"a", "b"});
    for (const int k : {-1, 0, 3}) {
        EXPECT_THROW(table[k], KelError) << k;
        EXPECT_THROW(table.Edit(k), KelError) << k;
        EXPECT_THROW(table.Remove(k), KelError) << k;
    }
    EXPECT_EQ(table, MakeTable({"a", "b"}));
    for (const auto& other : {MakeTable({"a"}), MakeTable({"a", "b", "c"}), MakeTable({"a", "c"})})
        EXPECT_FALSE(table == other || other == table);
}

TEST(Table, SharesRecordsBetweenCopiesUntilOneIsWritten) {
    GameModel game;
    for (int k = 1; k <= 200; ++k)
        game.Rooms.Append().Name = "Room " + std::to_string(k);
    GameModel copy = game;
    EXPECT_EQ(&copy.Rooms[100], &game.Rooms[100]);
    copy.Rooms.Edit(100).Objects.Append().Name = "lamp";
    EXPECT_EQ(&copy.Rooms[101], &game.Rooms[101]) << "a neighbour in the same group";
    EXPECT_TRUE(game.Rooms[100].Objects.IsEmpty());
    EXPECT_FALSE(SameGame(copy, game));
    copy.Rooms.Edit(100).Objects.Remove(1);
    EXPECT_TRUE(SameGame(copy, game));
}

TEST(Table, IsEmptyAfterItWasMovedFrom) {
    Table<std::string> table = MakeTable({"a"});
    const Table<std::string> target = std::move(table);
    EXPECT_EQ(table.Count(), 0); // NOLINT(bugprone-use-after-move): the promise under test
    table.Append("b");
    EXPECT_EQ(table[1] + target[1], "ba");
}

} // namespace
} // namespace zem::test
