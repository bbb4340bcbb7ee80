#pragma once

#include "model/GameModel.h"
#include "model/Place.h"

#include <string>
#include <vector>

namespace zem {

/// Other words for some bytes of a game.
struct TextChange {
    Place place;       // with the bytes that are replaced
    std::string words; // what comes there
};

/// Makes the changes, which may stand in one field but must not overlap, in any order. Records that no change
/// stands in stay shared with other versions. Throws KelError, and changes nothing, when a place is not there
/// or two changes overlap.
void MakeChanges(GameModel& game, std::vector<TextChange> changes);

} // namespace zem
