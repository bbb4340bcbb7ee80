#pragma once

#include "base/KelError.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// How a line of Kel is recognised, taken apart and packed. All text is bytes in Windows-1252; a blank is the
/// character 0x20 and nothing else.
namespace zem {

namespace detail {

constexpr std::array<char, 256> MakeLowerTable() {
    std::array<char, 256> table{};
    for (unsigned code = 0; code < 256; ++code) {
        unsigned lower = code;
        if ((code >= 'A' && code <= 'Z') || (code >= 0xC0 && code <= 0xDE && code != 0xD7))
            lower = code + 0x20;
        else if (code == 0x8A || code == 0x8C || code == 0x8E) // S, Z with caron and the OE ligature
            lower = code + 0x10;
        else if (code == 0x9F) // Y with diaeresis
            lower = 0xFF;
        table[code] = static_cast<char>(lower);
    }
    return table;
}

inline constexpr std::array<char, 256> LowerTable = MakeLowerTable();

} // namespace detail

/// The small letter of a Windows-1252 character; any other character as it is.
constexpr char Lower(char c) {
    return detail::LowerTable[static_cast<unsigned char>(c)];
}

/// True for 0 to 9 in any locale.
constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

/// The text in small letters.
std::string Lower(std::string_view text);

/// True when both are the same but for capitals.
constexpr bool EqualIgnoringCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (Lower(a[i]) != Lower(b[i]))
            return false;
    return true;
}

/// The text without its leading blanks.
constexpr std::string_view TrimLeft(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

/// The text without its leading and trailing blanks.
constexpr std::string_view Trim(std::string_view text) {
    text = TrimLeft(text);
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

namespace detail {

/// BeginsWith for a line that is at least as long as the keyword.
constexpr bool LongLineBeginsWith(std::string_view line, std::string_view keyword) {
    if (!line.empty() && line.front() == ' ')
        line = TrimLeft(line);
    return line.size() >= keyword.size() && EqualIgnoringCase(line.substr(0, keyword.size()), keyword);
}

} // namespace detail

/// True when the line, after any leading blanks and whatever its capitals, begins with the keyword. The
/// keyword carries its own trailing blank where one must follow. An empty keyword matches every line.
constexpr bool BeginsWith(std::string_view line, std::string_view keyword) {
    // The size tells most short lines apart, wherever this is called, before anything of them is read.
    return line.size() >= keyword.size() && detail::LongLineBeginsWith(line, keyword);
}

/// What is left of the line when as many characters as the keyword has are cut from its front; nothing is
/// searched for and nothing trimmed. For lines without leading blanks that begin with the keyword.
constexpr std::string_view TextAfter(std::string_view line, std::string_view keyword) {
    return line.size() <= keyword.size() ? std::string_view() : line.substr(keyword.size());
}

/// The text between the first "<" and the first ">" of the line. Brackets do not nest: "<a <b> c>" gives
/// "a <b". Throws KelError when a bracket is missing or the first ">" stands before the first "<".
std::string_view GetParameter(std::string_view line);

/// The text after the first ">" of the line, trimmed; empty when there is no ">".
std::string_view TextAfterParameter(std::string_view line);

/// The text before the first blank. Throws KelError when there is no blank.
std::string_view FirstWord(std::string_view text);

/// The pieces of the text between the separators, as they stand. An empty text is one empty piece.
std::vector<std::string_view> SplitAt(std::string_view text, std::string_view separator);

/// The text on one line, cut to a length that fits into a message.
std::string ShowShortly(std::string_view text);

/// The same in quotes, without the blanks around it.
std::string QuoteShortly(std::string_view text);

/// Replaces every TAB of the line by four blanks.
void ExpandTabs(std::string& line);

/// Packs several lines into one: every CR LF becomes "|n".
std::string CrLfToBar(std::string_view text);

/// Unpacks what CrLfToBar packed: every "|n" becomes CR LF.
std::string BarToCrLf(std::string_view text);

/// "Yes" or "No".
constexpr const char* YesNoText(bool value) {
    return value ? "Yes" : "No";
}

/// True for "yes" in any capitals; false for everything else.
constexpr bool IsYes(std::string_view text) {
    return EqualIgnoringCase(text, "yes");
}

/// True when the 16-bit flag has all its bits set, the stored form of "true".
constexpr bool IsTrueFlag(std::int16_t value) {
    return value == -1;
}

/// True when the 16-bit flag is 1, the checked state of a check box.
constexpr bool IsOneFlag(std::int16_t value) {
    return value == 1;
}

/// Reads the number at the start of the text, after any blanks, and rounds it to the nearest whole number
/// (halves to the even one); 0 when the text does not start with a number.
/// Throws KelError beyond -32,768 to 32,767.
std::int16_t LeadingNumber(std::string_view text);

/// Reads the number at the start of the text, after any blanks; 0 when the text does not start with a number,
/// and infinity for one beyond all bounds.
double LeadingReal(std::string_view text);

/// Converts a text that is a number and nothing else, blanks around it aside, rounding as LeadingNumber does.
/// Throws KelError for any other text and beyond -32,768 to 32,767.
std::int16_t WholeNumber(std::string_view text);

} // namespace zem
