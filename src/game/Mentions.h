#pragma once

#include "game/GameIndex.h"
#include "model/NameKind.h"
#include "model/Place.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zem {

/// Places where words stand that are a name but do not refer to anything: in what players read or type, and,
/// of every kind of name, as a whole part in the brackets of commands and lines that nobody knows.
/// @param taken  places that are something else, sorted by PlaceComesBefore
/// @param most   how many are enough
std::vector<Place> FindMentions(const GameIndex& index, NameKind kind, std::string_view name,
                                const std::vector<Place>& taken, std::size_t most);

/// The new name in the capitals in which the old one is mentioned: "the Old Hall" for "The old hall".
std::string InCapitalsOf(std::string_view mention, std::string_view oldName, std::string_view newName);

} // namespace zem
