// Words that players must type and that look misspelt: nothing that they read has them.
#include "base/LineText.h"
#include "model/Texts.h"
#include "play/Fold.h"
#include "problems/Checks.h"
#include "problems/PrintedTexts.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace zem::problems {

namespace {

constexpr std::size_t ShortestWord = 4; // of shorter ones any two look alike

/// A word of a name or a pattern.
struct TypedWord {
    Place place;
    int count = 0;
};

using TypedWords = std::unordered_map<std::string, TypedWord>;

void AddWords(const Place& place, std::string_view text, TypedWords& words) {
    ForEachWord(text, [&](TextRange range) {
        if (range.Size() < ShortestWord)
            return;
        Place at = place;
        at.bytes = range;
        TypedWord& word = words[play::Fold(range.Of(text))];
        ++word.count;
        word.place = at;
    });
}

/// The pattern with its variables blanked out, which players do not type.
std::string WithoutVariables(std::string_view pattern) {
    std::string words(pattern);
    ForEachVariable(pattern, [&](TextRange range, char sign) {
        if (sign == '#')
            std::fill(words.begin() + static_cast<std::ptrdiff_t>(range.begin),
                      words.begin() + static_cast<std::ptrdiff_t>(range.end), '#');
        return sign == '#';
    });
    return words;
}

TypedWords CollectTyped(const CheckedGame& game) {
    TypedWords words;
    ForEachText(game.Game(), [&](const Place& place, FieldUse use, const std::string& text) {
        const bool isName = use.kind == FieldKind::Name &&
                            (use.names == NameKind::Object || use.names == NameKind::Character ||
                             use.names == NameKind::Item || use.names == NameKind::Room);
        if (isName)
            AddWords(place, text, words);
        else if (use.kind == FieldKind::Pattern)
            AddWords(place, WithoutVariables(text), words);
    });
    return words;
}

/// All words that players read, and those of synonyms, which the author knows to be typed.
std::unordered_set<std::string> CollectRead(const CheckedGame& game) {
    std::unordered_set<std::string> words;
    std::string lower;
    const auto add = [&](std::string_view text) {
        ForEachWord(text, [&](TextRange range) {
            if (range.Size() + 1 < ShortestWord)
                return;
            lower.clear();
            bool isPlain = true;
            for (const char c : range.Of(text)) {
                lower += Lower(c);
                isPlain = isPlain && c >= 0;
            }
            words.insert(isPlain ? lower : play::Fold(lower));
        });
    };
    for (const PrintedText& text : PrintedTexts(game))
        add(text.text);
    for (const SynonymEntry& synonym : game.Game().Synonyms) {
        add(synonym.Words);
        add(synonym.ConvertTo);
    }
    return words;
}

/// A word that players read and that differs by one letter; empty for none.
std::string_view NeighbourOf(std::string_view word, const std::unordered_set<std::string>& read) {
    for (const std::string& other : read) {
        const bool isForm = other.starts_with(word) || word.starts_with(other); // "lamp" and "lamps"
        if (!isForm && LettersApart(other, word, 1) <= 1)
            return other;
    }
    return {};
}

void FindMisspelt(const CheckedGame& game, Findings& findings) {
    const TypedWords typed = CollectTyped(game);
    const std::unordered_set<std::string> read = CollectRead(game);
    constexpr int MostAsked = 300; // a game that has more has a language of its own
    int asked = 0;
    for (const auto& [word, use] : typed) {
        if (use.count > 1 || read.contains(word) || ++asked > MostAsked)
            continue;
        const std::string_view neighbour = NeighbourOf(word, read);
        if (!neighbour.empty())
            findings.Add("T14", use.place,
                         "No text has the word " + QuoteShortly(word) +
                             ", which players must type here, but one has " + QuoteShortly(neighbour) + '.');
    }
}

constexpr Check Rows[] = {
    {"T14", Level::Hint, "Words to type that look misspelt", FindMisspelt},
};

} // namespace

std::span<const Check> MisspeltNameChecks() {
    return Rows;
}

} // namespace zem::problems
