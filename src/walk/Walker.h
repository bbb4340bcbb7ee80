#pragma once

#include "play/Coverage.h"
#include "play/Interpreter.h"
#include "play/RecordedRuns.h"
#include "walk/StateArchive.h"
#include "walk/WalkOptions.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zem::walk {

/// Something that an author should see, with the way to it.
struct WalkFinding {
    enum Kind : std::uint8_t {
        Win,     // the shortest way that was found
        Loss,    // the same
        Mistake, // a warning of the player program
        Circle,  // a turn that would never have ended
        Hopeless // after the last turn the game can certainly not be won any more
    };
    Kind kind = Win;
    std::string text;    // in plain words, Windows-1252
    play::Source source; // where the mistake stands
    std::vector<WalkStep> way;
};

/// A room or ending that no walk has reached.
struct WalkUnreached {
    play::CoveragePart part;
    bool isCertain = false; // whatever the player does, it cannot be reached
};

struct WalkLimits {
    std::uint64_t turns = 100'000;
    std::uint64_t seed = 1;
    std::function<bool()> goesOn; // asked now and then; false ends the walk
};

struct WalkFigures {
    std::uint64_t turns = 0;
    std::uint64_t walks = 0; // begun in a state that was kept
    std::uint64_t wins = 0;
    std::uint64_t losses = 0;
    std::size_t states = 0; // that were kept
};

/// Plays a game by itself to find out what can happen in it. It keeps each new kind of state that it reaches,
/// goes on from the states in which the most was done or the least was tried, prefers what it has not tried
/// there, and takes back what loses the game. The same seed gives the same walk everywhere, unless the limits
/// end it by a clock.
class Walker {
public:
    Walker(std::shared_ptr<const play::World> world, WalkLimits limits);
    ~Walker();

    void Run();

    const play::Coverage& Reached() const;
    const WalkFigures& Figures() const;
    const std::vector<WalkFinding>& Findings() const;

    /// The rooms and endings that were never reached, in the order of the game.
    std::vector<WalkUnreached> NeverReached() const;

    /// A finding as a run that can be played again, told as it is told now.
    play::RecordedRun AsRun(const WalkFinding& finding, const std::string& name) const;

private:
    class Walk;
    std::unique_ptr<Walk> walk_;
};

} // namespace zem::walk
