#pragma once

#include "model/Place.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace zem {

/// Where internal procedures belong: the editor makes them of scripts of several lines, and authors know them
/// only as the script of an object or a room. Finding all owners takes one walk over the game.
class ScriptOwners {
public:
    /// @param game  is copied, which costs a few pointers
    explicit ScriptOwners(const GameModel& game);

    /// The way to the place as an author goes it: the script that calls the internal procedure, the calls in
    /// between, and the place itself last. Only the place itself where it stands in no internal procedure, or
    /// in one that nothing calls.
    std::vector<Place> Path(const Place& place) const;

    /// The place in plain words, told as its owner's: "object flowerpot in Garden, look, line 2".
    std::string Describe(const Place& place) const;

private:
    const std::string* InternalProcedureOf(const Place& place) const; // its name; null for other places

    GameModel game_;
    std::unordered_map<std::string, Place> callers_; // of each internal procedure, the first call
};

} // namespace zem
