#pragma once

#include "play/Book.h"

#include <cstddef>
#include <string>

namespace zem::play {

class World;

/// What a turn may cost, whatever the author wrote: so every turn ends.
struct Limits {
    static constexpr std::size_t Commands = 100'000;
    static constexpr std::size_t Work = 4'000'000; // characters made or looked at
    static constexpr std::size_t Scripts = 100;    // inside one another
    static constexpr int Types = 8;                // "type" inside one another
    static constexpr int Entrances = 10;           // of rooms, inside the scripts of rooms
    static constexpr int Restarts = 10;
    static constexpr std::size_t AnswerWords = 1'000;
    static constexpr std::size_t TextInVariable = 4'000;
    static constexpr std::size_t Line = 500; // of the player

    // What things cost that are no characters.
    static constexpr std::size_t PerCommand = 8;
    static constexpr std::size_t PerScript = 20;
    static constexpr std::size_t PerCondition = 8;
};

/// What the author calls a record: "procedure a", "room Hall", "the game".
std::string NameOfOwner(const World& world, const Book& book);

} // namespace zem::play
