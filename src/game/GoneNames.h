#pragma once

#include "game/GameIndex.h"
#include "model/GameModel.h"
#include "model/NameKind.h"

#include <string>
#include <vector>

namespace zem {

/// A name that nothing has any more, though the game uses it.
struct GoneName {
    NameKind kind = NameKind::None;
    std::string name;
    std::string newName; // of what stands in its place; empty where it was removed
    int uses = 0;

    bool operator==(const GoneName&) const = default;
};

/// Which names an edit has left behind: those that the version before it had and the one of the index has
/// not.
std::vector<GoneName> FindGoneNames(const GameModel& before, const GameIndex& after);

} // namespace zem
