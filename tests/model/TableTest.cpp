#include "model/GameModel.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace zem::test {
namespace {

template <class Records>
class RecordLists : public testing::Test {
protected:
    static Records Make(const std::vector<std::string>& texts) {
        Records records;
        records.Assign(texts);
        return records;
    }
};

using BothKinds = testing::Types<List<std::string>, Table<std::string>>;
TYPED_TEST_SUITE(RecordLists, BothKinds);

// A list and a plain vector go through the same random changes; copies taken on the way must not move.
TYPED_TEST(RecordLists, BehaveLikeAVectorAndTheirCopiesStayAsTheyWere) {
    std::mt19937 random(7);
    TypeParam list;
    std::vector<std::string> model;
    std::vector<std::pair<TypeParam, std::vector<std::string>>> copies;
    const auto pick = [&](std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
    };

    for (int step = 0; step < 6000; ++step) {
        const std::string text = "step " + std::to_string(step);
        const std::size_t k = model.empty() ? 0 : pick(model.size());
        // The list grows for half of the steps and shrinks afterwards, so that groups of a table fill and
        // vanish.
        if (model.empty() || pick(10) < (step < 3000 ? 7u : 3u)) {
            list.Append(text);
            model.push_back(text);
        } else if (pick(2) == 0) {
            list.Edit(static_cast<int>(k) + 1) = text;
            model[k] = text;
        } else {
            list.Remove(static_cast<int>(k) + 1);
            model.erase(model.begin() + static_cast<std::ptrdiff_t>(k));
        }
        if (step % 300 == 299)
            copies.emplace_back(list, model);
    }
    for (auto& [copy, texts] : copies) {
        EXPECT_EQ(copy, this->Make(texts)) << "grouped anew";
        copy.Append("later");
        texts.emplace_back("later");
        EXPECT_EQ(std::vector<std::string>(copy.begin(), copy.end()), texts);
        for (int k = 1; k <= copy.Count(); ++k)
            ASSERT_EQ(copy[k], texts[static_cast<std::size_t>(k) - 1]);
    }
}

TYPED_TEST(RecordLists, RefusePositionsOutsideOneToCountAndMoreThanTheyHold) {
    TypeParam list = this->Make({"a", "b"});
    for (const int k : {-1, 0, 3}) {
        EXPECT_THROW(list[k], KelError) << k;
        EXPECT_THROW(list.Edit(k), KelError) << k;
        EXPECT_THROW(list.Remove(k), KelError) << k;
    }
    EXPECT_EQ(list, this->Make({"a", "b"}));
    for (const auto& other : {this->Make({"a"}), this->Make({"a", "b", "c"}), this->Make({"a", "c"})})
        EXPECT_FALSE(list == other || other == list);
    while (list.Count() < MostRecords)
        list.Append();
    EXPECT_THROW(list.Append("one more"), KelError);
    EXPECT_EQ(list.Count(), 32767);
}

TYPED_TEST(RecordLists, AreEmptyAfterTheyWereMovedFrom) {
    TypeParam list = this->Make({"a"});
    const TypeParam target = std::move(list);
    EXPECT_TRUE(list.IsEmpty()); // NOLINT(bugprone-use-after-move): This is the promise under test.
    list.Append("b");
    EXPECT_EQ(list[1], "b");
    EXPECT_EQ(target[1], "a");
}

// Whoever writes while copies are read and destroyed elsewhere must not change what they read.
TYPED_TEST(RecordLists, HaveCopiesThatOtherThreadsRead) {
    TypeParam list = this->Make(std::vector<std::string>(100, "old"));
    std::vector<std::thread> readers;
    for (int step = 0; step < 50; ++step) {
        readers.emplace_back([copy = list, step] {
            for (int k = 1; k <= copy.Count(); ++k)
                EXPECT_EQ(copy[k], k <= step ? "new" : "old");
        });
        list.Edit(step + 1) = "new";
    }
    for (std::thread& reader : readers)
        reader.join();
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

} // namespace
} // namespace zem::test
