#pragma once

#include "problems/CheckedGame.h"

#include <array>
#include <string_view>
#include <vector>

namespace zem::problems {

/// Whether a text has one of the signs that variables stand between. Nearly none has.
inline bool HasVariableSign(std::string_view text) {
    return text.find('#') != std::string_view::npos || text.find('%') != std::string_view::npos;
}

/// A text that a player reads.
struct PrintedText {
    Place place; // the bytes of the text, or the whole field
    std::string_view text;
    const CheckedCall* call = nullptr; // null for one that a field holds

    /// The place of bytes of the text.
    Place At(TextRange range) const;
};

/// All printed texts of the game: fields first, in the order of the game, then what scripts print and ask.
std::vector<PrintedText> PrintedTexts(const CheckedGame& game);

/// Whether the texts are English, which some checks know about: what the notes say or, where they say
/// nothing, what the commonest words are.
bool IsEnglish(const CheckedGame& game, const std::vector<PrintedText>& texts);

namespace detail {

constexpr std::array<bool, 256> MakeLetterTable() {
    std::array<bool, 256> table{};
    for (unsigned code = 0; code < 256; ++code)
        table[code] = (code >= 'a' && code <= 'z') || (code >= 'A' && code <= 'Z') ||
                      (code >= 0xC0 && code != 0xD7 && code != 0xF7) || code == 0x8A || code == 0x8C ||
                      code == 0x8E || code == 0x9A || code == 0x9C || code == 0x9E || code == 0x9F;
    return table;
}

inline constexpr std::array<bool, 256> LetterTable = MakeLetterTable();

} // namespace detail

/// Whether a character of the format's encoding is a letter.
constexpr bool IsLetter(char c) {
    return detail::LetterTable[static_cast<unsigned char>(c)];
}

/// Calls visit(range) for each word of a text: letters, with apostrophes between them. Format codes are none.
template <class Visit>
void ForEachWord(std::string_view text, Visit visit) {
    const auto isOfWord = [&](std::size_t at) {
        return IsLetter(text[at]) ||
               ((text[at] == '\'' || text[at] == '\x92') && at > 0 && IsLetter(text[at - 1]) &&
                at + 1 < text.size() && IsLetter(text[at + 1]));
    };
    for (std::size_t at = 0; at < text.size();) {
        if (text[at] == '|') { // the letters of a code
            const std::string_view code = text.substr(at + 1, 2);
            at += code.starts_with('x') || code.starts_with('c') || code.starts_with('j') ? 3 : 2;
            continue;
        }
        std::size_t end = at;
        while (end < text.size() && isOfWord(end))
            ++end;
        if (end > at)
            visit(TextRange{at, end});
        at = end + (end == at ? 1 : 0);
    }
}

} // namespace zem::problems
