#pragma once

#include "model/Place.h"

#include <string>
#include <vector>

/// What a game file would not give back: some values that the forms accept change their meaning in a file.
namespace zem {

/// A place of the game that a file does not give back.
struct LostPlace {
    Place place; // without steps and field where it is the game as a whole
    // A sentence without its full stop: where it is, and what happens to it.
    std::string text;
};

/// The game file of a game, as bytes.
std::string GameFile(const GameModel& game);

/// Reads the bytes that a save of the game has written and compares what comes back with the game. Returns
/// the places that do not come back, at most `most` of them; none when all is well. What the format itself
/// adds or drops and nobody can see, like blank lines in a script, is no difference.
std::vector<LostPlace> ReadBack(const GameModel& game, const std::string& bytes, std::size_t most = 20);

} // namespace zem
