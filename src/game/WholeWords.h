#pragma once

#include "base/LineText.h"
#include "base/TextRange.h"

#include <cstddef>
#include <string_view>

namespace zem {

/// Whether the character is part of a word: a letter of Windows-1252, a digit or "_".
constexpr bool IsWordCharacter(char c) {
    const auto code = static_cast<unsigned char>(c);
    if (code < 0x80)
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
    if (code >= 0xC0)
        return code != 0xD7 && code != 0xF7; // the signs of multiplication and division
    constexpr std::string_view Letters = "\x83\x8A\x8C\x8E\x9A\x9C\x9E\x9F\xAA\xB5\xBA";
    return Letters.find(c) != std::string_view::npos;
}

/// Whether no word goes on beyond either end of the range.
constexpr bool IsWholeWord(std::string_view text, TextRange range) {
    const auto goesOn = [&](std::size_t at) {
        return at > 0 && at < text.size() && IsWordCharacter(text[at - 1]) && IsWordCharacter(text[at]);
    };
    return !goesOn(range.begin) && !goesOn(range.end);
}

} // namespace zem
