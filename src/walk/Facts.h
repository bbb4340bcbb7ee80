#pragma once

#include "play/State.h"
#include "play/World.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zem::walk {

using play::Cell;
using play::Number;

/// What a condition asks about a game, with the answer that is wanted of it.
struct Fact {
    play::Test test = play::Test::Unknown;
    bool wanted = true;
    Number name = play::None; // an item, flag, timer, collectable, variable, or a thing
    Number room = play::None;
    std::uint8_t direction = play::DirectionCount;
    std::string_view text; // that it compares with, as it stands in the game
};

Fact FactOf(const play::World& world, const play::BookCondition& condition, bool wanted);

/// The fact that the player has an item, is in a room, or that a thing is there for him.
inline Fact ItemIsHad(Number item) {
    return {play::Test::Has, true, item, play::None, play::DirectionCount, {}};
}
inline Fact PlayerIsIn(Number room) {
    return {play::Test::In, true, play::None, room, play::DirectionCount, {}};
}
inline Fact ThingIsHere(Number thing) {
    return {play::Test::Here, true, thing, play::None, play::DirectionCount, {}};
}

/// Whether a fact holds. What hangs on chance or on an answer always may, so it does.
bool Holds(const play::World& world, const play::State& state, const Fact& fact);

/// Whether a comparison of a variable or collectable comes out true for a value, a variable's as it is held.
bool Compares(const play::State& state, const Fact& fact, std::int64_t value);

/// The cells on which a fact hangs: the first of one name; FirstWait where there is no single one.
Cell CellOf(const play::World& world, const Fact& fact);

/// Which answers an "if" line may have, going by which facts may hold, each for itself.
struct Outcomes {
    bool canBeTrue = false;
    bool canBeFalse = false;
    bool Can(bool answer) const { return answer ? canBeTrue : canBeFalse; }
};

template <class Possible>
Outcomes OutcomesOf(const play::World& world, const play::Book& book, const play::Node& line,
                    Possible possible) {
    Outcomes all{true, line.count > 0};
    for (std::uint32_t k = 0; k < line.count; ++k) {
        const play::BookCondition& condition = book.conditions[line.first + k];
        const bool canBeTrue = possible(FactOf(world, condition, true));
        const bool canBeFalse = possible(FactOf(world, condition, false));
        if (k == 0)
            all = {canBeTrue, canBeFalse};
        else if (condition.isOr)
            all = {all.canBeTrue || canBeTrue, all.canBeFalse && canBeFalse};
        else
            all = {all.canBeTrue && canBeTrue, all.canBeFalse || canBeFalse};
    }
    return all;
}

/// The ways in which an "if" line comes to an answer, each a list of facts that must hold together. No ways
/// where there are too many of them to look at.
std::vector<std::vector<Fact>> WaysTo(const play::World& world, const play::Book& book,
                                      const play::Node& line, bool answer);

} // namespace zem::walk
