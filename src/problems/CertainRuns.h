#pragma once

#include "problems/CheckedGame.h"

#include <vector>

namespace zem::problems {

/// The lines of the script that run whenever it does, up to the one that ends it.
std::vector<const CheckedCall*> CertainCalls(const CheckedScript& script);

/// The calls by which a procedure is sure to run itself again before the player is asked anything, one for
/// each procedure that does. Takes time in proportion to the scripts.
std::vector<const CheckedCall*> CallsThatComeBack(const CheckedGame& game);

} // namespace zem::problems
