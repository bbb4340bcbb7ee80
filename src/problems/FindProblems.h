#pragma once

#include "problems/CheckedGame.h"
#include "problems/Problem.h"

#include <string>
#include <string_view>
#include <vector>

namespace zem::problems {

/// Which checks count.
struct CheckChoice {
    std::vector<std::string> only; // ids; empty for all but those that are found only when asked for
    std::vector<std::string> skip;
};

/// What is wrong with the game, in the order of its places; of one place, errors first.
std::vector<Problem> FindProblems(const CheckedGame& game, const CheckChoice& choice = {});

/// Whether every error that the second game has is one of the first. Errors are told apart by what they say
/// and how often, because a fix may move them.
bool HasNoNewError(const CheckedGame& before, const GameModel& after);

/// The fixes of a problem that make no new error; each is tried, which takes a check of the whole game.
std::vector<Fix> OffersOf(const CheckedGame& game, const Problem& problem);

/// A game with all these problems fixed, each by its first fix, and whether every one is gone. Problems whose
/// fix would make a new error stay.
/// @param problems  of this game, in the order of FindProblems
GameModel FixAll(const CheckedGame& game, const std::vector<Problem>& problems);

} // namespace zem::problems
