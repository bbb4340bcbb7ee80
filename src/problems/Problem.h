#pragma once

#include "model/GameModel.h"
#include "model/Place.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// What is wrong with a game, told as what a player would meet, and how it can be put right.
namespace zem::problems {

enum class Level : std::uint8_t {
    Error,   // the game surely does not do what is written
    Warning, // very likely a mistake
    Hint     // worth a look
};

/// "error", "warning" or "hint".
const char* WordFor(Level level);

/// One way to put a problem right.
struct Fix {
    std::string button; // what its button says: "Change to Kitchen"

    /// Makes the changed game of the one in which the problem was found, or of a later version of it. Gives
    /// that one back where it has no longer what is to be changed.
    std::function<GameModel(const GameModel&)> apply;

    /// Whether it can be done without asking anybody: there is no other way, and nothing that works changes.
    bool needsNoChoice = false;
};

struct Problem {
    const char* id = ""; // of the check: "A01"
    Level level = Level::Error;
    Place place;              // good for the game in which it was found
    std::size_t fileLine = 0; // from 1, of what stands in the file and in no place of the game; else 0
    std::string text;         // in plain words, one sentence or two; Windows-1252
    std::vector<Fix> fixes;   // the likeliest first
};

} // namespace zem::problems
