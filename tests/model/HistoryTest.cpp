#include "model/History.h"

#include "support/Cases.h"

#include <gtest/gtest.h>
#include <string>

namespace zem::test {
namespace {

GameModel Named(const std::string& name) {
    GameModel game;
    game.GameName = name;
    return game;
}

/// All that a history tells: its steps with "|" after those that are done, the game, and "saved".
std::string Told(const History& history) {
    std::string told = history.Done() == 0 ? "| " : "";
    for (std::size_t step = 1; step <= history.Count(); ++step)
        told += history.Name(step) + (step == history.Done() ? "| " : " ");
    told += "at " + history.Game(history.Done()).GameName;
    return told + (history.IsSaved() ? " saved" : "");
}

/// Does what the letters say: a capital records a step of that name, "-" and "+" undo and redo, a digit
/// jumps, "s" saves, "=" records the game as it is.
std::string After(const std::string& actions, bool isSaved = true) {
    History history;
    history.Begin(Named("begin"), isSaved);
    for (const char action : actions) {
        if (action == '-')
            history.GoTo(history.Done() - 1);
        else if (action == '+')
            history.GoTo(history.Done() + 1);
        else if (action == 's')
            history.MarkSaved();
        else if (action == '=')
            EXPECT_FALSE(history.Record("nothing", history.Game(history.Done())));
        else if (action >= '0' && action <= '9')
            history.GoTo(static_cast<std::size_t>(action - '0'));
        else
            EXPECT_TRUE(history.Record(std::string(1, action), Named(std::string("game ") + action)));
    }
    return Told(history);
}

TEST(History, GoesBackAndForthAndKnowsWhatIsSaved) {
    for (const auto& [actions, told] : Cases<const char*, const char*>{
             {"", "| at begin saved"},
             {"A", "A| at game A"},
             {"AB", "A B| at game B"},
             {"AB-", "A| B at game A"},
             {"AB--", "| A B at begin saved"},
             {"AB--+", "A| B at game A"},
             {"ABCD1", "A| B C D at game A"},
             {"ABCD14", "A B C D| at game D"},
             {"=", "| at begin saved"},
             {"A=", "A| at game A"},
             {"AB-=", "A| B at game A"}, // nor does it cut off what was undone
             {"AB-C", "A C| at game C"},
             {"ABC0D", "D| at game D"},
             {"As", "A| at game A saved"},
             {"AsB", "A B| at game B"},
             {"AsB-", "A| B at game A saved"},
             {"As-", "| A at begin"},
             {"As-+", "A| at game A saved"},
             {"AsBC1s-+", "A| B C at game A saved"},
             // The saved step is gone, and a step that looks like it is another one.
             {"ABs-C", "A C| at game C"},
             {"ABs-C-", "A| C at game A"},
             {"ABs-CD0", "| A C D at begin"},
             {"As-A", "A| at game A"},
             {"As-As", "A| at game A saved"},
             {"AsB-C-", "A| C at game A saved"}})
        EXPECT_EQ(After(actions), told) << actions;
    EXPECT_EQ(After("", false), "| at begin");
    EXPECT_EQ(After("A-", false), "| A at begin");
    EXPECT_EQ(After("As", false), "A| at game A saved");
}

TEST(History, TakesNoStepForWhatBelongsToTheSession) {
    History history;
    EXPECT_EQ(Told(history), "| at  saved") << "before anything has begun";
    GameModel game = Named("x");
    history.Begin(game, true);
    game.FileName = "elsewhere.kel";
    game.Modified = true;
    EXPECT_FALSE(history.Record("save as", game));
    // Written, but with what was there.
    game.Rooms.Append().Name = "Hall";
    EXPECT_TRUE(history.Record("add room", game));
    game.Rooms.Edit(1).Name = "Hall";
    EXPECT_FALSE(history.Record("edit room", game));
    history.Begin(Named("other"), false);
    EXPECT_EQ(Told(history), "| at other");
}

} // namespace
} // namespace zem::test
