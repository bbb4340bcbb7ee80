#pragma once

#include "model/GameModel.h"
#include "reader/SourceText.h"

namespace zem {

/// Replaces every script in braces, outside texts, by a call of a new procedure that is appended to the
/// source as a block of its own; then joins the "else" lines and the lines continued with "__" of rooms and
/// procedures. Runs before the lines are trimmed, in time linear in the size of the source. Throws KelError
/// for a brace that is never closed and when the numbers of procedures run out.
void MakeInternalProcedures(GameModel& game, SourceText& source);

} // namespace zem
