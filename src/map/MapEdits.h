#pragma once

#include "map/Geometry.h"
#include "model/GameModel.h"

#include <optional>
#include <string>
#include <vector>

/// What an author does to a game on its map. Rooms are numbered from 0 in the order of the game, as on the
/// map. Names of rooms lead to the last room of a name, as in scripts.
namespace zem::map {

/// The exit of the room in the direction.
const ScriptPair& ExitOf(const Room& room, Direction direction);

/// The keyword of a direction: "north".
const char* WordOf(Direction direction);

/// Makes the exit lead to the room of this name; an empty name takes the exit away.
void SetExit(GameModel& game, int room, Direction direction, const std::string& target);

/// A connection as a gesture on the map draws it.
struct Connection {
    int from = 0;
    Direction direction = 0;
    int to = 0;
    std::optional<Direction> back; // nothing for one way
};

/// The direction in which an exit would come back: the wanted one, else the opposite, where that is free or
/// leads back already; nothing where the way back would replace another exit.
std::optional<Direction> WayBack(const GameModel& game, int from, Direction direction, int to);

/// Whether the connection would replace an exit that runs a script.
bool ReplacesScript(const GameModel& game, const Connection& connection);

void Connect(GameModel& game, const Connection& connection);

/// Adds a room at the end of the game, on its cell; gives its number. Throws KelError when there is no room
/// for one more, or the name is taken or cannot be one.
int AddRoom(GameModel& game, const std::string& name, Cell cell);

/// Puts rooms where the author wants them, or lets go of them.
struct Placing {
    int room = 0;
    std::optional<Cell> cell;
};
void PlaceRooms(GameModel& game, const std::vector<Placing>& placings);

/// Takes out all places that the author chose; how many rooms had one.
int ForgetPlaces(GameModel& game);

/// Takes rooms out of the game; exits to them stay, and lead nowhere.
void DeleteRooms(GameModel& game, std::vector<int> rooms);

} // namespace zem::map
