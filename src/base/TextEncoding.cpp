#include "base/TextEncoding.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <unordered_map>

namespace zem {

namespace {

constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";
constexpr char32_t Invalid = 0xFFFD;

std::optional<char> ToByte(char32_t code) {
    if (code < 0x80 || (code >= 0xA0 && code <= 0xFF))
        return static_cast<char>(code);
    const auto* found = std::find(UpperControls.begin(), UpperControls.end(), code);
    if (found == UpperControls.end())
        return std::nullopt;
    return static_cast<char>(0x80 + std::distance(UpperControls.begin(), found));
}

struct Character {
    char32_t code = Invalid;
    std::size_t size = 1; // In bytes.
};

/// The character that the text, which is not empty, begins with. Overlong forms, surrogates and numbers
/// beyond Unicode are invalid, as in every strict reader.
Character FirstCharacter(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    if (lead < 0x80)
        return {lead, 1};
    const std::size_t size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < size)
        return {};
    char32_t code = lead & (0xFFU >> (size + 1));
    for (std::size_t k = 1; k < size; ++k) {
        const auto next = static_cast<unsigned char>(text[k]);
        if ((next & 0xC0U) != 0x80)
            return {};
        code = code << 6U | (next & 0x3FU);
    }
    constexpr std::array<char32_t, 5> Least = {0, 0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    return code < Least[size] || code > 0x10FFFF || isSurrogate ? Character{} : Character{code, size};
}

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        const Character character = FirstCharacter(text);
        if (character.code == Invalid && character.size == 1)
            return false;
        text.remove_prefix(character.size);
    }
    return true;
}

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// Whether every second byte of what is mostly Latin text is NUL, and hardly any other.
bool LooksLikeUtf16(std::string_view bytes) {
    std::array<std::size_t, 2> zeros{};
    for (std::size_t k = 0; k < bytes.size(); ++k)
        zeros[k % 2] += bytes[k] == '\0' ? 1 : 0;
    const std::size_t more = std::max(zeros[0], zeros[1]);
    const std::size_t less = std::min(zeros[0], zeros[1]);
    return bytes.size() % 2 == 0 && more * 4 > bytes.size() && less * 50 < bytes.size();
}

/// Whether more than one byte in thirty is a control character that no text has.
bool LooksBinary(std::string_view bytes) {
    const auto isControl = [](char c) {
        return static_cast<unsigned char>(c) < 0x20 &&
               std::string_view("\t\n\v\f\r\x1A").find(c) == std::string_view::npos;
    };
    return std::count_if(bytes.begin(), bytes.end(), isControl) * 30 > std::ssize(bytes);
}

} // namespace

TextEncoding DetectEncoding(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF") || LooksLikeUtf16(bytes))
        return TextEncoding::Utf16;
    if (LooksBinary(bytes))
        return TextEncoding::Binary;
    if (bytes.starts_with(Utf8Mark))
        return TextEncoding::Utf8WithMark;
    return !IsAscii(bytes) && IsUtf8(bytes) ? TextEncoding::Utf8 : TextEncoding::Windows1252;
}

ConvertedText Utf8ToWindows1252(std::string_view bytes) {
    if (bytes.starts_with(Utf8Mark))
        bytes.remove_prefix(Utf8Mark.size());
    ConvertedText text;
    text.bytes.reserve(bytes.size());
    std::unordered_map<char32_t, std::size_t> found; // Indices in `lacking`.
    std::size_t line = 1;
    while (!bytes.empty()) {
        const auto [code, size] = FirstCharacter(bytes);
        const std::optional<char> byte = ToByte(code);
        text.bytes += byte.value_or('?');
        if (!byte) {
            const auto [entry, isNew] = found.emplace(code, text.lacking.size());
            if (isNew)
                text.lacking.push_back(
                    {code, code == Invalid ? "\xEF\xBF\xBD" : std::string(bytes.substr(0, size)), line, 0});
            ++text.lacking[entry->second].count;
        }
        line += code == '\n' ? 1 : 0;
        bytes.remove_prefix(size);
    }
    return text;
}

std::string FromUtf8(std::string_view bytes) {
    return Utf8ToWindows1252(bytes).bytes;
}

std::string ToUtf8(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const char32_t code = byte >= 0x80 && byte < 0xA0 ? UpperControls[byte - 0x80U] : byte;
        if (code < 0x80) {
            result += c;
            continue;
        }
        if (code < 0x800) {
            result += static_cast<char>(0xC0U | (code >> 6U));
        } else {
            result += static_cast<char>(0xE0U | (code >> 12U));
            result += static_cast<char>(0x80U | ((code >> 6U) & 0x3FU));
        }
        result += static_cast<char>(0x80U | (code & 0x3FU));
    }
    return result;
}

} // namespace zem
