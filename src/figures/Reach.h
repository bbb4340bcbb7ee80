#pragma once

#include "model/GameModel.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace zem::figures {

/// Which rooms a player can come to: by exits and places, and by what scripts do. A script of a room counts
/// when the room is reached, all others always; what it depends on is not asked.
class Reach {
public:
    explicit Reach(const GameModel& game);

    /// A script moves the player to a room.
    /// @param from  the room whose script it is, from 1; 0 for a script of no room
    void AddGoto(int from, std::string_view target);

    /// By room, from 1.
    std::vector<bool> Reached() const;

private:
    void AddWay(int from, std::string_view target);
    void AddExits(int from, const Room& room);

    const GameModel& game_;
    std::unordered_map<std::string, int> rooms_; // by their names in small letters; of several the last
    std::vector<std::vector<int>> ways_;         // by room; 0 for those that are always open
};

} // namespace zem::figures
