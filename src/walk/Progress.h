#pragma once

#include "walk/CauseMap.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace zem::walk {

/// Tells how far a game has come: what of its state matters for what can happen, as one number, and the items
/// that are had. What no condition asks for does not matter, and of a value only what it compares as.
class Progress {
public:
    Progress(const play::World& world, const play::State& state, const CauseMap& causes);

    /// Takes what was written since into account.
    void FollowWrites(const play::State::Mark& since);

    /// Takes the whole state anew, after a jump.
    /// @param start  of the game, with nothing played
    void ReadAll(const play::State::Mark& start);

    /// The same for states in which the same can happen, but for the time and chance.
    std::uint64_t Key() const;
    /// The same without the room.
    std::uint64_t KeyWithoutRoom() const { return key_; }

    /// The items that are had, by number.
    const std::vector<Number>& Had() const { return had_; }

    /// What a value of a cell adds to the key; 0 for one that does not matter.
    std::uint64_t PartOfKey(Cell cell, std::int64_t value) const;

private:
    enum class Role : std::uint8_t { Ignored, Item, Plain, Compared };

    void NoteRoles();
    void FollowWrite(Cell cell, std::int64_t before, std::int64_t now);

    const play::World& world_;
    const play::State& state_;
    const CauseMap& causes_;
    std::vector<Role> roles_;
    std::vector<Number> owners_; // of the cells of items
    std::vector<Number> had_;
    std::uint64_t key_ = 0;
    std::vector<std::pair<Cell, std::int64_t>> writes_;
};

/// Both numbers in one, the same on every machine.
std::uint64_t Mix(std::uint64_t a, std::uint64_t b);

} // namespace zem::walk
