#pragma once

#include "kel/CommandLookup.h"
#include "model/GameModel.h"
#include "model/NameKind.h"
#include "model/Place.h"

#include <string>
#include <vector>

namespace zem::merge {

/// A place of a merged game that uses a name which one version has deleted or renamed.
struct LostName {
    Place place;
    NameKind kind = NameKind::None;
    std::string name;
};

/// The uses of names that stood for something in one of the versions and stand for nothing in the merged
/// game: each version alone may be whole, and the merged game is not.
std::vector<LostName> FindLostNames(const GameModel& ours, const GameModel& theirs, const GameModel& merged,
                                    const CommandLookup& commands);

} // namespace zem::merge
