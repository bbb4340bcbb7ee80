#pragma once

#include "kel/CommandLookup.h"
#include "model/Place.h"
#include "spelling/Speller.h"

#include <atomic>
#include <cstddef>
#include <string>
#include <vector>

/// The spelling of a whole game.
namespace zem::spelling {

/// A word of the game that nobody knows.
struct UnknownWord {
    static constexpr std::size_t MostPlaces = 500;

    std::string word;
    std::size_t count = 0;      // of its places
    std::vector<Place> places;  // with its bytes, in the order of the game; at most MostPlaces
    bool looksLikeName = false; // begins with a capital in mid-sentence, and occurs three times or more
};

/// All that is printed, checked.
struct CheckedTexts {
    std::size_t words = 0;            // that were looked at
    std::vector<UnknownWord> unknown; // the most frequent first, then by the alphabet
};

/// Checks everything that a game can print, and the information about it.
/// @param isOutdated  becomes true when the answer is no longer wanted: what is there by then is given; may
/// be null
CheckedTexts CheckTexts(const GameModel& game, const CommandLookup& commands, const Speller& speller,
                        const std::atomic<bool>* isOutdated = nullptr);

/// Whether the word can be put into texts and parameters of any kind: not empty, one line, no sign of a code,
/// a variable or a bracket.
bool CanBeWritten(std::string_view word);

/// Puts another word, or several, in the place of a word wherever it is printed, as one version of the game.
/// Words with format codes inside stay as they are. Returns how many were replaced. Throws KelError where the
/// new word cannot be written.
std::size_t CorrectEverywhere(GameModel& game, const CommandLookup& commands, std::string_view word,
                              std::string_view correct);

} // namespace zem::spelling
