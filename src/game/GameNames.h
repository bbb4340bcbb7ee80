#pragma once

#include "game/UsedNames.h"
#include "kel/CommandLookup.h"
#include "model/GameModel.h"
#include "model/NameKind.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace zem {

/// All names of the kind in the game, each once. Those of lists come in the order of the game, without
/// internal procedures, which are no author's. Variables, flags and timers are those that its scripts and
/// patterns use, sorted.
std::vector<std::string> GameNames(const GameModel& game, NameKind kind, const CommandLookup& commands);

/// The names of a game that changes seldom: collected when they are first asked for after a change.
class NameCache {
public:
    /// @param commands  outlives this object
    explicit NameCache(const CommandLookup& commands) : commands_(commands), used_(commands) {}

    /// As GameNames has them. There may be 32,767, so that whoever shows them shares the list.
    std::shared_ptr<const std::vector<std::string>> Names(const GameModel& game, NameKind kind);

private:
    const CommandLookup& commands_;
    UsedNames used_;
    GameModel game_; // whose names these are
    std::map<NameKind, std::shared_ptr<const std::vector<std::string>>> names_;
};

} // namespace zem
