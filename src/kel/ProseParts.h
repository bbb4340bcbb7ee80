#pragma once

#include "base/TextRange.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

/// A printed text as its reader sees it: words, and the codes and variables between and inside them.
namespace zem {

enum class ProseKind : std::uint8_t {
    Word,    // a run of letters, digits, apostrophes and hyphens with at least one letter or digit
    Code,    // a format code
    Variable // what stands between two "#" or "%", with them
};

/// A part of a printed text.
struct ProsePart {
    ProseKind kind = ProseKind::Word;
    TextRange range;              // of a word from its first letter or digit to its last
    bool hasDigit = false;        // of a word, like the following
    bool hasCode = false;         // a format code stands inside it
    bool touchesVariable = false; // the word goes on in what the variable prints
};

namespace detail {

enum class ProseLetter : std::uint8_t { None, Joiner, Letter };

/// What counts as part of a word in Windows-1252.
constexpr std::array<ProseLetter, 256> MakeProseLetters() {
    std::array<ProseLetter, 256> letters{};
    const auto mark = [&](int from, int to) {
        for (int code = from; code <= to; ++code)
            letters[static_cast<std::size_t>(code)] = ProseLetter::Letter;
    };
    mark('0', '9');
    mark('A', 'Z');
    mark('a', 'z');
    mark(0xC0, 0xFF);
    for (const int code : {0xD7, 0xF7}) // times and divided by
        letters[static_cast<std::size_t>(code)] = ProseLetter::None;
    for (const int code : {0x83, 0x8A, 0x8C, 0x8E, 0x9A, 0x9C, 0x9E, 0x9F, 0xAA, 0xB5, 0xBA})
        letters[static_cast<std::size_t>(code)] = ProseLetter::Letter;
    for (const int code : {0x27, 0x2D, 0x92}) // the apostrophes and the hyphen
        letters[static_cast<std::size_t>(code)] = ProseLetter::Joiner;
    return letters;
}

inline constexpr std::array<ProseLetter, 256> ProseLetters = MakeProseLetters();

/// How many bytes a format code takes, and whether it parts words.
struct ProseCode {
    std::size_t bytes;
    bool parts;
};

/// @param text  from the bar of the code on
constexpr ProseCode ReadProseCode(std::string_view text) {
    const std::string_view code = text.substr(1, 2);
    if (code.starts_with('n') || code.starts_with('w'))
        return {2, true};
    if (code.starts_with('s'))
        return {std::min<std::size_t>(4, text.size()), false};
    if (code.starts_with('j') || code.starts_with('x'))
        return {std::min<std::size_t>(3, text.size()), false};
    if (code.starts_with('c')) {
        const bool isColour =
            code.size() == 2 && std::string_view("rblyg").find(code[1]) != std::string_view::npos;
        return isColour ? ProseCode{3, false} : ProseCode{2, true};
    }
    return {std::min<std::size_t>(2, text.size()), false};
}

} // namespace detail

/// Whether the byte is a letter or a digit.
constexpr bool IsProseLetter(char c) {
    return detail::ProseLetters[static_cast<unsigned char>(c)] == detail::ProseLetter::Letter;
}

/// What may stand between two "#" or "%" so that they and it are taken for a variable where the game is not
/// asked: a name without a blank.
struct WithoutBlanks {
    constexpr bool operator()(std::string_view name) const {
        return name.find(' ') == std::string_view::npos;
    }
};

/// Calls visit(part) for the words, format codes and variables of a printed text. A code inside a word comes
/// before the word.
/// @param isVariable  called with what stands between two equal signs on one line
template <class Visit, class IsVariable = WithoutBlanks>
void ForEachProsePart(std::string_view text, Visit visit, IsVariable isVariable = {}) {
    using detail::ProseLetter;
    ProsePart word;
    bool isOpen = false;                         // a word is being read
    std::size_t codeEnd = 0;                     // of the last code behind the letters of the word
    std::size_t varEnd = std::string_view::npos; // of the last variable
    const auto close = [&] {
        if (isOpen)
            visit(static_cast<const ProsePart&>(word));
        isOpen = false;
    };
    for (std::size_t at = 0; at < text.size();) {
        const char c = text[at];
        const ProseLetter letter = detail::ProseLetters[static_cast<unsigned char>(c)];
        if (letter == ProseLetter::Letter) {
            if (!isOpen) {
                word = {ProseKind::Word, {at, at}, false, false, varEnd == at};
                isOpen = true;
            } else if (codeEnd > word.range.end) {
                word.hasCode = true;
            }
            word.hasDigit = word.hasDigit || (c >= '0' && c <= '9');
            word.range.end = ++at;
        } else if (letter == ProseLetter::Joiner) {
            if (varEnd == at)
                varEnd = at + 1; // "#name#'s"
            ++at;
        } else if (c == '|') {
            const detail::ProseCode code = detail::ReadProseCode(text.substr(at));
            if (code.parts)
                close();
            codeEnd = at + code.bytes;
            visit(ProsePart{ProseKind::Code, {at, codeEnd}});
            if (varEnd == at)
                varEnd = codeEnd;
            at = codeEnd;
        } else {
            const std::size_t end = c == '#' || c == '%'
                                        ? text.find_first_of(c == '#' ? "#\r\n" : "%\r\n", at + 1)
                                        : std::string_view::npos;
            const bool isName = end != std::string_view::npos && end > at + 1 && text[end] == c &&
                                isVariable(text.substr(at + 1, end - at - 1));
            word.touchesVariable = word.touchesVariable || (isName && isOpen);
            close();
            if (isName) {
                visit(ProsePart{ProseKind::Variable, {at, end + 1}});
                varEnd = end + 1;
            }
            at = isName ? end + 1 : at + 1;
        }
    }
    close();
}

} // namespace zem
