#pragma once

#include "kel/CommandLookup.h"
#include "model/GameModel.h"
#include "model/Place.h"

#include <cstddef>
#include <string>
#include <vector>

namespace zem::figures {

/// An entry of the list behind a figure.
struct FigureEntry {
    Place place;
    std::size_t value = 1; // words, or 1 for what is counted
};

/// A number and the list that it comes from.
struct Figure {
    std::string id;   // for programs; stays the same in later versions: "rooms.cutOff"
    std::string name; // in plain words
    std::size_t value = 0;
    bool isEstimate = false;
    std::vector<FigureEntry>
        entries; // the longest and the shortest first; otherwise in the order of the game
};

/// How fast people read, in words a minute.
inline constexpr std::size_t WordsPerMinute = 230;

/// The figures of a game, in the order in which they are shown. Reading time is an estimate: a player reads
/// neither all that the game can print, nor each part of it once.
std::vector<Figure> FiguresOf(const GameModel& game, const CommandLookup& commands,
                              std::size_t wordsPerMinute = WordsPerMinute);

} // namespace zem::figures
