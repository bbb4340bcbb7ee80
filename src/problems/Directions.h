#pragma once

#include <string_view>

namespace zem::problems {

/// The words that commands about exits know.
inline constexpr std::string_view Directions[] = {"north",     "south",     "east",      "west", "northeast",
                                                  "northwest", "southeast", "southwest", "out"};

/// Whether the text is a direction, whatever its capitals.
bool IsDirection(std::string_view text);

} // namespace zem::problems
