#pragma once

#include "kel/CommandLookup.h"
#include "model/Fields.h"
#include "model/GameModel.h"
#include "model/NameKind.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace zem {

/// The names that no list of a game holds, but its scripts and patterns alone: variables, flags and timers,
/// each with the number of its uses. Going on to another version of the game reads only the records that
/// differ, so that a large game can be asked after every change.
class UsedNames {
public:
    /// @param commands  outlives this object
    explicit UsedNames(const CommandLookup& commands) : commands_(commands) {}

    /// All names of the kind, sorted; none for a kind that lists hold.
    std::vector<std::string> Of(const GameModel& game, NameKind kind);

private:
    void GoOnTo(const GameModel& game);
    template <class Record>
    void Count(const Record& record, FieldUse use, int change);
    void CountScript(std::string_view script, int change);
    void CountPattern(std::string_view pattern, int change);
    void CountName(NameKind kind, std::string_view name, int change);

    const CommandLookup& commands_;
    GameModel game_; // The version that was counted last.
    std::map<NameKind, std::map<std::string, int, std::less<>>> uses_;
};

} // namespace zem
