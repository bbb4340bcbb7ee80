#include "model/InternalScripts.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace zem::test {
namespace {

TEST(AddInternalProcedure, TakesANumberThatNoProcedureHas) {
    struct Case {
        const char* what;
        std::int16_t counter;
        std::vector<std::string> procedures;
        int number;
    };
    const Case cases[] = {
        {"a new game", 0, {}, 0},
        {"the counter is right", 7, {"~Internal Procedure 6", "greet"}, 7},
        {"a file without a marker", 0, {"~Internal Procedure 4", "~Internal Procedure 0"}, 5},
        {"a merged file", 3, {"~Internal Procedure 12", "~Internal Procedure 3"}, 13},
        {"other capitals", 2, {"~INTERNAL procedure 2"}, 3},
        {"no number of ours",
         2,
         {"~Internal Procedure 9b", "~Internal Procedure", "~Internal Procedures 8"},
         2},
        {"a number from outside at the end", 5, {"~Internal Procedure 32767", "~Internal Procedure 5"}, 6},
        {"numbers beyond all", 5, {"~Internal Procedure 99999", "~Internal Procedure 123456789012"}, 5},
    };
    for (const auto& [what, counter, procedures, number] : cases) {
        GameModel game;
        game.NextInternalProcedure = counter;
        for (const std::string& name : procedures)
            game.Procedures.Append({name, "old"});
        const std::string name = AddInternalProcedure(game, "a\r\nb");
        EXPECT_EQ(name, "~Internal Procedure " + std::to_string(number)) << what;
        EXPECT_EQ(game.NextInternalProcedure, number + 1) << what;
        EXPECT_EQ(game.Procedures[game.Procedures.Count()], (Procedure{name, "a\r\nb"})) << what;
    }
}

TEST(AddInternalProcedure, RefusesWhenTheNumbersHaveRunOut) {
    GameModel game;
    game.NextInternalProcedure = 32766;
    EXPECT_EQ(AddInternalProcedure(game, "x"), "~Internal Procedure 32766");
    const GameModel full = game;
    EXPECT_THROW(AddInternalProcedure(game, "y"), KelError);
    EXPECT_EQ(game, full);
}

} // namespace
} // namespace zem::test
