#pragma once

#include "play/RecordedRuns.h"
#include "play/State.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace zem::walk {

/// One thing that the player of a walk did.
struct WalkStep {
    std::string line;                 // typed; empty for time that passed
    std::int64_t seconds = 0;         // that passed
    std::vector<std::string> answers; // to the questions of the turn
};

/// A state of the game that a walk reached, kept as what differs in it from the state that it was reached
/// from.
struct KeptState {
    struct Change {
        play::Cell cell;
        std::int64_t value;
        std::int32_t text; // its index among the texts; -1 for a value that is no text
    };

    std::uint64_t key = 0;
    std::vector<Change> changes;
    std::vector<std::string> texts;
    int parent = -1;             // in which the steps begin; -1 for the beginning of the game
    std::vector<WalkStep> steps; // from there to here
    std::uint32_t depth = 0;     // turns since the beginning of the game
    struct Trait {
        play::Cell cell;
        std::uint32_t number; // that kept states share
    };
    std::vector<Trait> traits; // the rarest of what is told of it
    std::uint32_t trials = 0;  // so many walks went on from here
    bool isHopeless = false;   // the game can certainly not be won from here
};

/// The states that a walker may go on from, each kind of state once: the first way to it, or the shortest of
/// the ways that came by.
class StateArchive {
public:
    /// @param most       that are kept
    /// @param cellCount  of a state of the game
    StateArchive(std::size_t most, std::size_t cellCount) : most_(most), writtenIn_(cellCount) {}

    /// The state of that key, -1 when there is none.
    int Find(std::uint64_t key) const;

    /// Whether a state of that key, so many turns from the beginning, is worth keeping.
    bool IsWanted(std::uint64_t key, std::uint32_t depth) const;

    /// Keeps a state, in place of the one of the same key. Gives its number.
    int Keep(KeptState kept);

    KeptState& operator[](int number) { return states_[static_cast<std::size_t>(number)]; }
    std::size_t Count() const { return states_.size(); }

    /// Makes the state of a game that which was kept.
    /// @param start  where the game's own start lies in the journal of the state
    void GoTo(int number, play::State& state, const play::State::Mark& start);

    /// All that was done from the beginning of the game to a state.
    std::vector<WalkStep> WayTo(int number) const;

private:
    static constexpr std::size_t MostBytes = std::size_t{256} << 20U;

    std::size_t most_;
    std::size_t bytes_ = 0;                // that the kept states take, roughly
    std::vector<std::uint32_t> writtenIn_; // by cell: the round of GoTo that wrote it last
    std::uint32_t round_ = 0;
    std::vector<KeptState> states_;
    std::unordered_map<std::uint64_t, int> numbers_;
};

/// What of the present state was written since and differs from what it was then.
void NoteChanges(const play::State& state, const play::Names& names, const play::State::Mark& since,
                 KeptState& kept);

} // namespace zem::walk
