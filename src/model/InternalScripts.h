#pragma once

#include "model/GameModel.h"

#include <string>

namespace zem {

/// Adds the script, several lines joined with CR LF, as an internal procedure and gives its name, so that
/// "do <NAME>" calls it.
///
/// The counter of the game is raised past the numbers in use first: a file that somebody merged or wrote by
/// hand may have procedures that its marker does not know of, and a second procedure of the same name would
/// never be reached. Where that would pass the last number, the first free one from the counter on is taken.
/// Throws KelError, and changes nothing, when there is none.
std::string AddInternalProcedure(GameModel& game, std::string script);

} // namespace zem
