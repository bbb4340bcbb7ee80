#include "qt/OpenEdits.h"

#include "qt/ChangeDoor.h"

#include <gtest/gtest.h>
#include <memory>

namespace zem::test {
namespace {

class Door : public ChangeDoor {
public:
    GameModel game;
    const GameModel& Game() const override { return game; }
    void Change(const std::function<void(GameModel&)>& change) override { change(game); }
    void MarkModified() override {}
};

// A form with a name, which OK trims, and with tags, which another form edits.
TEST(OpenEdits, PreviewWhatConfirmingAllOfThemWouldMake) {
    Door door;
    door.game.GameName = "Tower";
    OpenEdits edits(door);
    int opened = 0;
    QObject::connect(&edits, &OpenEdits::Opened, [&] { ++opened; });
    std::string name = "Tower";
    std::string tags = "old";
    const GameEdit outer(edits, [&](GameModel& game) {
        game.DefaultFontName = "Serif"; // a value that OK tidies up
        game.GameName = name;
        game.GameMiscTags = tags;
        if (name == "bad")
            throw KelError("refused");
    });
    EXPECT_FALSE(outer.HasChanges());
    EXPECT_TRUE(SameGame(edits.Preview(), door.game));
    name = "Castle";
    EXPECT_TRUE(outer.HasChanges());
    EXPECT_EQ(edits.Preview().GameName, "Castle");

    std::string typed = "old";
    auto inner = std::make_unique<ValueEdit<std::string>>(edits, tags, [&typed](GameModel& game) {
        game.Includes.Append("made on the way");
        return typed;
    });
    EXPECT_FALSE(inner->HasChanges());
    typed = "new";
    EXPECT_EQ(opened, 2);
    const GameModel both = edits.Preview();
    EXPECT_EQ(both.GameName, "Castle");
    EXPECT_EQ(*both.GameMiscTags, "new");
    EXPECT_EQ(both.Includes.Count(), 1);
    EXPECT_EQ(tags, "old") << "the other form has it only after OK";
    EXPECT_EQ(door.game.GameName, "Tower");
    inner.reset();
    EXPECT_EQ(*edits.Preview().GameMiscTags, "old");

    name = "bad";
    EXPECT_TRUE(outer.HasChanges()) << "typed, and to be asked about";
    EXPECT_TRUE(SameGame(edits.Preview(), door.game)) << "half of it must not come back";
}

} // namespace
} // namespace zem::test
