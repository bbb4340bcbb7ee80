#pragma once

#include "map/Shifter.h"

namespace zem::map {

/// Draws the group together: shifts by 1, 2, 4 and 8 cells in the eight directions, as long as the drawing
/// becomes cheaper by it, for at most so many rounds.
void Compact(Shifter& shifter, int rounds);

} // namespace zem::map
