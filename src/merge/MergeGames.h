#pragma once

#include "merge/MergePlan.h"
#include "model/Place.h"

#include <optional>
#include <string>
#include <vector>

/// One game made of two that began as the same one.
namespace zem::merge {

struct Conflict {
    ConflictId id;
    ConflictKind kind = ConflictKind::Field;
    std::string where; // in plain words
    int line = 0;      // of the merged text, from 1; 0 where there are no lines
    // What stands there in each version: the lines, or all of a record that the other version deleted, or the
    // name of the room, or the names in their order. Scripts are shown with their internal procedures.
    std::string base;
    std::string ours;
    std::string theirs;
    bool canTakeBoth = false;
    // Where it is in the merged game and in each version; nothing where it is not.
    std::optional<Place> inMerged;
    std::optional<Place> inBase;
    std::optional<Place> inOurs;
    std::optional<Place> inTheirs;
};

/// Three versions of one game.
struct MergeVersions {
    GameModel base; // what both others began as; an empty game where nobody knows
    GameModel ours;
    GameModel theirs;
};

struct MergeResult {
    GameModel game; // has our file name
    std::vector<Conflict> conflicts;
};

/// Takes the changes of both versions. Where both changed the same in different ways, the merged game has
/// what `choices` say, ours without a choice.
///
/// Throws KelError when the lists or the numbers of internal procedures of the merged game run over.
MergeResult MergeGames(const GameModel& base, const GameModel& ours, const GameModel& theirs,
                       const Choices& choices = {});
inline MergeResult MergeGames(const MergeVersions& versions, const Choices& choices = {}) {
    return MergeGames(versions.base, versions.ours, versions.theirs, choices);
}

} // namespace zem::merge
