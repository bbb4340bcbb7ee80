#include "model/History.h"

#include "support/CaseFile.h"

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

/// Does what the letters of history.cases say.
std::string After(const std::string& actions) {
    History history;
    history.Begin(Named("begin"), true);
    for (const char action : actions) {
        if (action == '!')
            history.Begin(Named("begin"), false);
        else if (action == '-')
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
    for (const auto& [actions, told] : CasesIn<2>("history"))
        EXPECT_EQ(After(actions), told) << actions;
}

TEST(History, TakesNoStepForWhatBelongsToTheSession) {
    History history;
    EXPECT_EQ(Told(history), "| at  saved") << "before anything has begun";
    GameModel game = Named("x");
    history.Begin(game, true);
    game.FileName = "elsewhere.kel";
    game.Modified = true;
    EXPECT_FALSE(history.Record("save as", game));
    // Writing the same value again is no change.
    game.Rooms.Append().Name = "Hall";
    EXPECT_TRUE(history.Record("add room", game));
    game.Rooms.Edit(1).Name = "Hall";
    EXPECT_FALSE(history.Record("edit room", game));
}

} // namespace
} // namespace zem::test
