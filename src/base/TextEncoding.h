#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zem {

/// The characters of the bytes 0x80 to 0x9F in Windows-1252. Five of them are not in it; they stand for the
/// control characters of the same number, so that every byte survives. All other bytes are those of their
/// characters.
inline constexpr std::array<char32_t, 32> UpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

/// How the bytes of a file hold text. Games are Windows-1252; a file in another encoding can be read as such,
/// but not with the letters that its author meant.
enum class TextEncoding {
    Windows1252,  // Or ASCII alone.
    Utf8,         // Valid UTF-8 with characters beyond ASCII, and no mark.
    Utf8WithMark, // Begins with a byte order mark, which hides the first line from the reader.
    Utf16,        // With a byte order mark or without.
    Binary        // No text at all: a program, a picture, a packed file.
};

/// Judges the bytes of a file. Text that could be both is Utf8 and not Windows1252: few texts are valid UTF-8
/// by chance.
TextEncoding DetectEncoding(std::string_view bytes);

/// A character that Windows-1252 lacks, where it stands first, and how often.
struct LackingCharacter {
    char32_t code = 0;
    std::string utf8;     // The character itself.
    std::size_t line = 0; // Counted from 1.
    std::size_t count = 0;
};

/// A text in Windows-1252.
struct ConvertedText {
    std::string bytes;
    std::vector<LackingCharacter> lacking; // Each became a "?"; in the order of the text.
};

/// Converts UTF-8, whose byte order mark is left out. A byte that is no valid UTF-8 counts as a lacking
/// U+FFFD.
ConvertedText Utf8ToWindows1252(std::string_view bytes);

/// The same where nobody asks what is lacking.
std::string FromUtf8(std::string_view bytes);

/// Text of the core, which is Windows-1252, for terminals and all files but games.
std::string ToUtf8(std::string_view text);

} // namespace zem
