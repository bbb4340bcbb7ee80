#pragma once

#include <cstddef>
#include <string_view>

namespace zem {

/// The bytes of a text from `begin` up to `end`.
struct TextRange {
    std::size_t begin = 0;
    std::size_t end = 0;

    bool IsEmpty() const { return begin == end; }
    std::size_t Size() const { return end - begin; }

    /// These bytes of the text, which must be as long as the range says.
    std::string_view Of(std::string_view text) const { return text.substr(begin, end - begin); }

    bool operator==(const TextRange&) const = default;
};

/// The range without the blanks at its ends.
constexpr TextRange TrimmedRange(std::string_view text, TextRange range) {
    while (range.begin < range.end && text[range.begin] == ' ')
        ++range.begin;
    while (range.begin < range.end && text[range.end - 1] == ' ')
        --range.end;
    return range;
}

} // namespace zem
