#include "map/MapEdits.h"

#include "base/KelError.h"
#include "base/LineText.h"
#include "map/MapGraph.h"

#include <algorithm>
#include <array>
#include <functional>

namespace zem::map {

namespace {

constexpr std::array<CompassExit, DirectionCount> ByDirection = {{{"north", &Room::North},
                                                                  {"northeast", &Room::NorthEast},
                                                                  {"east", &Room::East},
                                                                  {"southeast", &Room::SouthEast},
                                                                  {"south", &Room::South},
                                                                  {"southwest", &Room::SouthWest},
                                                                  {"west", &Room::West},
                                                                  {"northwest", &Room::NorthWest}}};

const CompassExit& Compass(Direction direction) {
    return ByDirection[static_cast<std::size_t>(direction)];
}

bool IsScript(const GameModel& game, int room, Direction direction) {
    return ExitOf(game.Rooms[room + 1], direction).Key == ActionExit;
}

/// A line of the file holds a name between angle brackets.
void CheckName(const GameModel& game, const std::string& name) {
    if (Trim(name).empty())
        throw KelError("a room needs a name");
    if (name.find_first_of("<>") != std::string::npos)
        throw KelError("the name of a room cannot contain < or >");
    for (const Room& room : game.Rooms)
        if (EqualIgnoringCase(room.Name, name))
            throw KelError("there is a room of this name already: " + room.Name);
}

} // namespace

const ScriptPair& ExitOf(const Room& room, Direction direction) {
    return *(room.*Compass(direction).exit);
}

const char* WordOf(Direction direction) {
    return Compass(direction).direction;
}

void SetExit(GameModel& game, int room, Direction direction, const std::string& target) {
    if (ExitOf(game.Rooms[room + 1], direction) == ScriptPair{target, ""})
        return;
    game.Rooms.Edit(room + 1).*Compass(direction).exit = Shared<ScriptPair>(ScriptPair{target, ""});
}

std::optional<Direction> WayBack(const GameModel& game, int from, Direction direction, int to) {
    const ScriptPair& back = ExitOf(game.Rooms[to + 1], Opposite(direction));
    if (from != to && (back.Key.empty() || back.Key == game.Rooms[from + 1].Name))
        return Opposite(direction);
    return std::nullopt;
}

bool ReplacesScript(const GameModel& game, const Connection& connection) {
    return IsScript(game, connection.from, connection.direction) ||
           (connection.back && IsScript(game, connection.to, *connection.back));
}

void Connect(GameModel& game, const Connection& connection) {
    const std::string from = game.Rooms[connection.from + 1].Name;
    const std::string to = game.Rooms[connection.to + 1].Name;
    SetExit(game, connection.from, connection.direction, to);
    if (connection.back)
        SetExit(game, connection.to, *connection.back, from);
}

int AddRoom(GameModel& game, const std::string& name, Cell cell) {
    CheckName(game, name);
    Room& room = game.Rooms.Append();
    room.Name = name;
    room.MiscTags = WithPin("", cell);
    return game.Rooms.Count() - 1;
}

void PlaceRooms(GameModel& game, const std::vector<Placing>& placings) {
    for (const Placing& placing : placings) {
        const std::string& tags = game.Rooms[placing.room + 1].MiscTags;
        std::string placed = WithPin(tags, placing.cell);
        if (placed != tags)
            game.Rooms.Edit(placing.room + 1).MiscTags = std::move(placed);
    }
}

int ForgetPlaces(GameModel& game) {
    std::vector<Placing> placings;
    int number = 0;
    for (const Room& room : game.Rooms) {
        if (PinOf(room.MiscTags))
            placings.push_back({number, std::nullopt});
        ++number;
    }
    PlaceRooms(game, placings);
    return static_cast<int>(placings.size());
}

void DeleteRooms(GameModel& game, std::vector<int> rooms) {
    std::sort(rooms.begin(), rooms.end(), std::greater<>());
    rooms.erase(std::unique(rooms.begin(), rooms.end()), rooms.end());
    for (const int room : rooms)
        game.Rooms.Remove(room + 1);
}

} // namespace zem::map
