#pragma once

#include "map/Geometry.h"

#include <optional>
#include <string>
#include <vector>

namespace zem {
struct GameModel;
}

/// What the map knows of a game: rooms, numbered from 0 in the order of the game, and what joins them.
namespace zem::map {

/// No room of the game.
inline constexpr int NoRoom = -1;

struct Exit {
    int from = 0;
    int to = NoRoom; // NoRoom for an unknown room, and for a script that does not name exactly one room
    Direction direction = 0;
    bool scripted = false;
    std::string target; // as the exit names it; for a script the room that it goes to, if it names one
    std::vector<int> targets = {}; // for a script all rooms that it may go to, each once
    std::string condition = {};    // on what a script depends first: "not has key"; empty without an "if"
};

/// A way without a direction: "out", or a place.
struct Tie {
    int from = 0;
    int to = 0;
    bool out = false;
    std::string words; // what a place is called: "prefix; name" or "name"
};

struct MapGraph {
    std::vector<std::string> names;
    std::vector<Exit> exits;
    std::vector<Tie> ties;                 // between two different rooms
    std::vector<std::optional<Cell>> pins; // for each room, where the author put it
    int start = NoRoom;

    int RoomCount() const { return static_cast<int>(names.size()); }
};

/// A place chosen by the author is kept as this line among the misc tags of its room.
inline constexpr const char* PinKeyword = "zem-map ";

/// Cells farther than this from the middle are taken for a slip of the pen.
inline constexpr int MaxPin = 9999;

/// The place that the author chose for a room with these misc tags: that of the last line that can be read.
std::optional<Cell> PinOf(const std::string& miscTags);

/// The misc tags with this place and no other, or with none. Lines that cannot be read as a place stay.
std::string WithPin(const std::string& miscTags, std::optional<Cell> pin);

/// Collects what the map needs. A name that several rooms share means the last of them, as in scripts.
MapGraph ReadMapGraph(const GameModel& game);

} // namespace zem::map
