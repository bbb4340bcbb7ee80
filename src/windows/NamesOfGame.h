#pragma once

#include "model/GameModel.h"
#include "model/NameKind.h"
#include "model/Place.h"

#include <string>
#include <vector>

namespace zem {

/// Something that the author has called by a name.
struct NameOfGame {
    NameKind kind = NameKind::None;
    std::string name;
    std::string where = {}; // the room of a thing
    Place place = {};       // of the record; of a variable, a flag or a timer none
};

/// The names of all records, in the order of the game, without internal procedures.
std::vector<NameOfGame> NamesOfRecords(const GameModel& game);

} // namespace zem
