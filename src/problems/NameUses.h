#pragma once

#include "problems/CheckedGame.h"

#include <functional>
#include <string_view>
#include <vector>

namespace zem::problems {

/// Where a game calls something by its name.
struct NameUse {
    NameKind kind = NameKind::None;
    std::string_view name;
    Place place;                       // the bytes of the name
    const CheckedCall* call = nullptr; // null for a name that a field holds
    std::size_t part = 0;              // of the call, from 0
};

/// Every use of a name of the kinds that lists hold: rooms, things, items, procedures, texts, menus and
/// collectables. Fields first, in the order of the game, then scripts. Empty names are none.
/// Checks ask CheckedGame::NameUses, which keeps them.
std::vector<NameUse> FindNameUses(const CheckedGame& game);

/// Whether a name has a variable in it, so that nobody can say before the game is played what it will be.
bool IsMadeOfVariables(std::string_view name);

} // namespace zem::problems
