#pragma once

#include "map/Layout.h"
#include "support/Games.h"

#include <set>
#include <string>
#include <vector>

namespace zem::test {

/// The map's view of the rooms of a game, given as the lines of its room blocks.
inline map::MapGraph GraphOf(const std::string& rooms) {
    GameModel game;
    ReadGame(game, CrLf("define game <x>\nstart <A>\nend define\n" + rooms));
    return map::ReadMapGraph(game);
}

/// A room block: "A" and "north <B>\nplace <C>".
inline std::string RoomBlock(const std::string& name, const std::string& lines = "") {
    return "define room <" + name + ">\n" + lines + (lines.empty() ? "" : "\n") + "end define\n";
}

/// How many rooms share a cell with one before them.
inline int Overlaps(const std::vector<map::Cell>& cells) {
    const std::set<map::Cell> taken(cells.begin(), cells.end());
    return static_cast<int>(cells.size() - taken.size());
}

} // namespace zem::test
