#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zem {

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

} // namespace zem
