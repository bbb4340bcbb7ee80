#pragma once

#include "game/Find.h"
#include "game/PlaceLine.h"
#include "game/TextChanges.h"

#include <cstddef>
#include <string>
#include <vector>

/// Replacing words all over a game: first a plan, from which the author may take ticks away, then one change.
/// Names and references stay as they are, because only a rename keeps them together; and no text becomes one
/// that the file cannot hold, or a script that does something else.
namespace zem {

struct Replacement {
    TextChange change;
    HitKind kind = HitKind::PrintedText;
    // Why it cannot be made, one sentence; empty when it can.
    std::string refusal;
    bool isName = false;   // it is a name or a reference: rename it instead
    bool isTicked = false; // as proposed: whatever can be made
    LineInContext before;
    LineInContext after; // if nothing else were changed in this line
};

struct ReplacePlan {
    std::vector<Replacement> replacements;
    std::size_t count = 0; // of all hits, of which only the first are in the list
    std::string problem;   // what is wrong with a regular expression, one sentence
};

/// What would be replaced.
/// @param words  what comes there, as it stands; of a regular expression "$1" to "$9" are its groups, "$0"
/// all
///               that matches, and "$$" one "$"
/// @param most   how many hits are wanted
ReplacePlan PlanReplace(const GameIndex& index, const FindQuery& query, const std::string& words,
                        std::size_t most = 1000);

/// What came of it.
struct ReplaceOutcome {
    int made = 0;
    std::vector<Place> left; // ticked, but not possible together
};

/// Makes the ticked replacements that can be made. Throws KelError, and changes nothing, when the game is not
/// the one that the plan was made for.
ReplaceOutcome CarryOut(const GameIndex& index, const ReplacePlan& plan, GameModel& game);

} // namespace zem
