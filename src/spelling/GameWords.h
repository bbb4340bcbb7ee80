#pragma once

#include "model/GameModel.h"

#include <set>
#include <string>
#include <string_view>
#include <unordered_set>

namespace zem::spelling {

/// The words that need no dictionary, because somebody has given them: the names of the game, the format's
/// own directions, and what the author spells so.
class GameWords {
public:
    /// What every game knows.
    GameWords();

    /// The same, and the words of names, aliases, prefixes, suffixes, items, synonyms and the author of the
    /// game.
    explicit GameWords(const GameModel& game);

    /// Adds a word as the author spells it: "Kervella" is "KERVELLA", too, but not "kervella".
    void Add(std::string_view word);

    /// Whether the word is known, also as a genitive, behind an article that lost its vowel ("d'Espoir"), and
    /// with a curly apostrophe.
    bool Knows(std::string_view word) const;

    bool operator==(const GameWords&) const = default;

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };

    void AddNames(std::string_view text);
    bool KnowsItself(const std::string& word) const;

    // Those in small letters are known in any capitals.
    std::unordered_set<std::string, Hash, std::equal_to<>> words_;
};

} // namespace zem::spelling
