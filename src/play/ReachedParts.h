#pragma once

#include "model/Place.h"
#include "play/Coverage.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// What of a game was reached, in the words and places of its author.
namespace zem::play {

/// One part with where it stands.
struct ReachedPart {
    CoveragePart part;          // its hits are those of runs
    std::uint64_t walked = 0;   // hits of a walker
    std::optional<Place> place; // nothing for what stands in no file of the author
    std::string where;          // in plain words
    std::string text;           // the line of the script; empty for a room, thing or text

    bool IsReached() const { return part.hits > 0 || walked > 0; }
};

/// All parts of a game in its order.
/// @param walked  what a walker has reached, perhaps in an earlier version of the game: it counts where the
/// same line stands in the same place; may be null
std::vector<ReachedPart> PartsWithPlaces(const Coverage& coverage, const Coverage* walked = nullptr);

/// How often a line of a script was reached.
struct LineHits {
    std::uint64_t ran = 0;
    std::uint64_t whenTrue = 0; // of an "if" line
    std::uint64_t whenFalse = 0;
    Hit hit;      // of the line where it ran; of an "if" line, of its answer "yes"
    Hit otherHit; // of an "if" line, of its answer "no"
};

/// The lines of all scripts of a game by what an editor knows of them: the procedure in which they stand, and
/// their text. Lines that fields of records hold themselves are those of no procedure, and those of one text
/// count as one.
class LineCoverage {
public:
    /// @param walked  as for PartsWithPlaces
    LineCoverage(const Coverage& coverage, const Coverage* walked = nullptr);

    /// Null for a line that the game has not.
    const LineHits* Find(std::string_view procedure, std::string_view line) const;

private:
    void Add(const Coverage& coverage, bool isWalk);

    std::unordered_map<std::string, LineHits> lines_;
};

} // namespace zem::play
