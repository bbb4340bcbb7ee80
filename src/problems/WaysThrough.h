#pragma once

#include "problems/CheckedGame.h"

#include <cstddef>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace zem::problems {

/// The nine exits of a room; of the points of the compass, the opposite one is four further on.
struct ExitRow {
    std::string_view direction;
    FieldId field;
    Shared<ScriptPair> Room::*exit;
};

inline constexpr std::size_t CompassCount = 8;
inline constexpr ExitRow ExitRows[] = {
    {"north", FieldId::RoomNorth, &Room::North}, {"northeast", FieldId::RoomNorthEast, &Room::NorthEast},
    {"east", FieldId::RoomEast, &Room::East},    {"southeast", FieldId::RoomSouthEast, &Room::SouthEast},
    {"south", FieldId::RoomSouth, &Room::South}, {"southwest", FieldId::RoomSouthWest, &Room::SouthWest},
    {"west", FieldId::RoomWest, &Room::West},    {"northwest", FieldId::RoomNorthWest, &Room::NorthWest},
    {"out", FieldId::RoomOut, &Room::Out}};

constexpr const ExitRow& OppositeOf(std::size_t compass) {
    return ExitRows[(compass + CompassCount / 2) % CompassCount];
}

/// A way from one room to another that a player can walk: an exit or a place without a script.
struct Way {
    int to = 0;    // the room's number, from 1
    Place place;   // of the name
    int exit = -1; // of ExitRows; -1 for a place
};

/// What a player may meet who is in a room, scripts included.
struct RoomWays {
    std::vector<Way> ways;
    std::unordered_set<std::string_view> gotos; // rooms that its scripts go to
    bool mayLeave = false;                      // its scripts go somewhere, end the game, or type a command
};

/// How the rooms of a game hang together. Of rooms with one name the last counts, as in scripts.
class WaysThrough {
public:
    /// @param game  outlives this object
    explicit WaysThrough(const CheckedGame& game);

    /// The number of a room by its name; 0 when there is none.
    int RoomOf(std::string_view name) const;

    /// @param room  from 1
    const RoomWays& Of(int room) const { return rooms_[static_cast<std::size_t>(room)]; }

    /// Whether anything leads from the start to the room. What scripts go to can always be reached, and so
    /// can everything where the start room is missing.
    bool IsReached(int room) const { return isReached_[static_cast<std::size_t>(room)]; }

    /// Whether a script goes to a room that a variable names.
    bool HasUnknownGoto() const { return hasUnknownGoto_; }

    /// Whether a script of the game as a whole, or of a library, may move a player who is in the room.
    bool MayBeMovedFrom(std::string_view room) const {
        return mayBeMovedAnywhere_ || movedFrom_.contains(room);
    }

private:
    /// What scripts do to where the player is, those that they call included.
    struct Moves {
        std::unordered_set<std::string_view> gotos;
        std::unordered_set<std::string_view> asked; // rooms that "if in" asks for
        std::unordered_set<std::string_view> calls; // procedures, and menus with a mark before their name
        bool ends = false;                          // the game
        bool moves = false;                         // back, or types a command
    };

    void CollectRooms();
    void CollectMoves();
    void AddCall(const CheckedCall& call, Moves& moves);
    Moves WithCalled(const Moves& moves) const;
    void ApplyToRooms();
    void ApplyToGame();
    void Reach();
    void AddWay(int room, const ScriptPair& pair, std::string_view target, const Place& place, int exit);

    const CheckedGame& game_;
    std::unordered_map<std::string_view, int> numbers_;
    std::vector<RoomWays> rooms_; // from 1
    std::vector<Moves> ofRoom_;   // from 1
    Moves ofGame_;
    std::unordered_map<std::string_view, Moves> ofProcedure_;
    std::unordered_map<std::string_view, Moves> ofMenu_;
    std::unordered_set<std::string_view> entrances_; // rooms that scripts go to
    std::unordered_set<std::string_view> movedFrom_;
    std::vector<bool> isReached_;
    bool hasUnknownGoto_ = false;
    bool mayBeMovedAnywhere_ = false;
};

/// The name of the room in the text of a place, "name" or "prefix; name".
std::string_view RoomInTarget(std::string_view target);

} // namespace zem::problems
