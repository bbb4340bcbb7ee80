#include "commands/WebPage.h"

#include "base/KelError.h"
#include "base/LineText.h"

#include <array>
#include <cstdint>
#include <zlib.h>

namespace zem {

namespace {

std::string Base64(std::string_view bytes) {
    constexpr std::string_view Letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve(bytes.size() / 3 * 4 + 4);
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        std::uint32_t group = 0;
        for (std::size_t k = 0; k < 3; ++k)
            group = group << 8U | (at + k < bytes.size() ? static_cast<unsigned char>(bytes[at + k]) : 0U);
        for (std::size_t k = 0; k < 4; ++k)
            text += at + k <= bytes.size() ? Letters[group >> (18 - 6 * k) & 63U] : '=';
    }
    return text;
}

std::string EscapedHtml(std::string_view text) {
    std::string escaped;
    for (const char c : text)
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += c;
        }
    return escaped;
}

/// A JSON text that may stand inside a script element.
std::string Quoted(std::string_view text) {
    constexpr std::string_view Digits = "0123456789abcdef";
    std::string quoted = "\"";
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (code < 0x20 || c == '"' || c == '\\' || c == '<' || c == '>' || c == '&')
            quoted.append("\\u00").append(1, Digits[code >> 4U]).append(1, Digits[code & 15U]);
        else
            quoted += c;
    }
    return quoted + "\"";
}

/// A text with its length before it.
std::string Counted(std::string_view bytes) {
    return std::to_string(bytes.size()) + " " + std::string(bytes);
}

/// Only what stands in the page may run there. The number that says so hangs on the game.
std::string Nonce(std::string_view game) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char c : game)
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
    return "z" + std::to_string(hash);
}

} // namespace

std::string PackGzip(std::string_view bytes) {
    constexpr int Gzip = 15 + 16;
    z_stream stream{};
    if (deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, Gzip, 9, Z_DEFAULT_STRATEGY) != Z_OK)
        throw KelError("there is not enough memory to pack the game");
    std::string source(bytes);
    std::string packed(deflateBound(&stream, static_cast<uLong>(source.size())), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(source.data());
    stream.avail_in = static_cast<uInt>(source.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

std::string_view MediaType(std::string_view name) {
    constexpr std::array<std::pair<std::string_view, std::string_view>, 12> Types = {
        {{".png", "image/png"},
         {".jpg", "image/jpeg"},
         {".jpeg", "image/jpeg"},
         {".gif", "image/gif"},
         {".webp", "image/webp"},
         {".bmp", "image/bmp"},
         {".svg", "image/svg+xml"},
         {".wav", "audio/wav"},
         {".mp3", "audio/mpeg"},
         {".ogg", "audio/ogg"},
         {".flac", "audio/flac"},
         {".opus", "audio/ogg"}}};
    const std::string lower = Lower(name);
    for (const auto& [ending, type] : Types)
        if (lower.ends_with(ending))
            return type;
    return {};
}

std::string MakeWebPage(const WebPageParts& parts) {
    std::string packed = Counted(parts.game);
    for (const auto& [name, bytes] : parts.libraries)
        packed += Counted(name) + Counted(bytes);
    std::string files = "{";
    for (const auto& [name, bytes] : parts.media)
        files += (files.size() > 1 ? "," : "") + Quoted(name) + ":\"data:" + std::string(MediaType(name)) +
                 ";base64," + Base64(bytes) + "\"";
    const std::array<std::pair<std::string_view, std::string>, 8> values = {
        {{"@NONCE@", Nonce(parts.game)},
         {"@TITLE@", EscapedHtml(parts.title)},
         {"@AUTHOR@", EscapedHtml(parts.author)},
         {"@CSS@", parts.style},
         {"@JS@", parts.script},
         {"@PLAYER@", Base64(parts.player)},
         {"@GAME@", Base64(PackGzip(packed))},
         {"@FILES@", files + "}"}}};
    // Each sign of the frame in one pass, so that nothing that is put in is searched again.
    std::string page;
    std::string_view rest = parts.frame;
    while (!rest.empty()) {
        const std::size_t at = std::min(rest.find('@'), rest.size());
        page += rest.substr(0, at);
        rest.remove_prefix(at);
        std::string_view sign = rest.substr(0, 1);
        std::string_view value = sign;
        for (const auto& [name, text] : values)
            if (rest.starts_with(name)) {
                sign = name;
                value = text;
            }
        page += value;
        rest.remove_prefix(sign.size());
    }
    return page;
}

} // namespace zem
