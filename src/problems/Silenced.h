#pragma once

#include "game/Notes.h"
#include "problems/CheckedGame.h"
#include "problems/Problem.h"

#include <vector>

namespace zem::problems {

/// Where the problem is, as notes tell it: by names. One that stands only in the file is told by its line.
NotePlace NotePlaceOf(const CheckedGame& game, const Problem& problem);

/// The problems that the author has not silenced.
std::vector<Problem> WithoutSilenced(const CheckedGame& game, const GameNotes& notes,
                                     std::vector<Problem> problems);

} // namespace zem::problems
