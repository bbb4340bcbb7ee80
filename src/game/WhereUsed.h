#pragma once

#include "game/GameIndex.h"
#include "model/NameKind.h"
#include "model/Place.h"

#include <string_view>
#include <vector>

namespace zem {

/// All places that use the name, in the order of the game: what would lead nowhere if it were gone. Of an
/// object with the name of a character, scripts that mean "a character or an object" mean the character; they
/// are told as what may mean the object.
std::vector<Reference> WhereUsed(const GameIndex& index, NameKind kind, std::string_view name);

/// The places where the words of a synonym stand that a player may type: patterns, names of rooms and things,
/// and commands that scripts type.
/// @param synonym  its number, from 1; one that is not there is used nowhere
std::vector<Place> WhereSynonymUsed(const GameIndex& index, int synonym);

/// The word for a kind of name: "room". None and Thing have none of their own: "thing".
const char* Describe(NameKind kind);

} // namespace zem
