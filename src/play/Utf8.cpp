#include "play/Utf8.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>

namespace zem::play {

namespace {

/// The characters of the codes 0x80 to 0x9F; all others are those of their codes.
constexpr std::array<char32_t, 32> Codes = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                            0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                            0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                            0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

char FromCharacter(char32_t character) {
    if (character < 0x80 || (character >= 0xA0 && character < 0x100))
        return static_cast<char>(character);
    const auto* found = std::find(Codes.begin(), Codes.end(), character);
    return found == Codes.end() ? '?' : static_cast<char>(0x80 + std::distance(Codes.begin(), found));
}

/// Takes the first character off; what is no UTF-8 is one byte long and becomes U+FFFD.
char32_t TakeCharacter(std::string_view& text) {
    const auto first = static_cast<unsigned char>(text.front());
    std::size_t size = first < 0x80   ? 1
                       : first < 0xC2 ? 0
                       : first < 0xE0 ? 2
                       : first < 0xF0 ? 3
                       : first < 0xF5 ? 4
                                      : 0;
    char32_t character = size == 1 ? first : first & (0x7FU >> size);
    for (std::size_t k = 1; k < size; ++k) {
        const auto next = k < text.size() ? static_cast<unsigned char>(text[k]) : 0U;
        if ((next & 0xC0U) != 0x80U) {
            size = 0;
            break;
        }
        character = (character << 6U) | (next & 0x3FU);
    }
    text.remove_prefix(std::max<std::size_t>(size, 1));
    return size == 0 ? 0xFFFD : character;
}

} // namespace

std::string FromUtf8(std::string_view text) {
    std::string result;
    while (!text.empty())
        result += FromCharacter(TakeCharacter(text));
    return result;
}

std::string ToUtf8(std::string_view text) {
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const char32_t character = byte >= 0x80 && byte < 0xA0 ? Codes[byte - 0x80U] : byte;
        if (character < 0x80)
            result += static_cast<char>(character);
        else if (character < 0x800) {
            result += static_cast<char>(0xC0U | (character >> 6U));
            result += static_cast<char>(0x80U | (character & 0x3FU));
        } else {
            result += static_cast<char>(0xE0U | (character >> 12U));
            result += static_cast<char>(0x80U | ((character >> 6U) & 0x3FU));
            result += static_cast<char>(0x80U | (character & 0x3FU));
        }
    }
    return result;
}

} // namespace zem::play
