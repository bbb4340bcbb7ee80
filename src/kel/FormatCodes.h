#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

/// The codes in texts that a game prints: a "|" and one to three characters. Capitals count.
namespace zem {

/// Replaces every code of the text by its display word, such as "[BOLD ON]", or removes it.
/// @param showCodes  false removes the codes
std::string FormatCodesToText(std::string_view text, bool showCodes);

/// What the characters from one place of a text on look like in a preview.
struct TextFormat {
    bool bold = false;
    bool underline = false;
    bool italic = false;
    int basicColour = -1; // of the sixteen colours of the PC text modes; -1 for the control's own

    bool operator==(const TextFormat&) const = default;
};

namespace detail {

/// Applies the code that begins at the bar at `at`; returns how many characters the code takes up.
std::size_t ApplyFormatCode(std::string_view text, std::size_t at, TextFormat& format);

} // namespace detail

/// Gives each stretch of the text that has one format, in order, to `show`, without its codes. Codes that
/// have no look of their own lose their bar and are shown as text.
/// @param show  called with a std::string_view and a TextFormat
template <class Show>
void ForEachFormattedRun(std::string_view text, Show show) {
    TextFormat format;
    for (std::size_t at = 0; at < text.size();) {
        if (text[at] == '|')
            at += detail::ApplyFormatCode(text, at, format);
        const std::size_t end = std::min(text.find('|', at), text.size());
        if (at < end)
            show(text.substr(at, end - at), format);
        at = end;
    }
}

} // namespace zem
