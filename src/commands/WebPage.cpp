#include "commands/WebPage.h"

#include "base/KelError.h"
#include "base/LineText.h"
#include "base/TextEncoding.h"
#include "commands/Sha256.h"

#include <algorithm>
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

/// What a policy calls a part of the page, so that the browser runs this part and nothing else.
std::string PolicyHash(std::string_view part) {
    return "'sha256-" + Base64(Sha256(part)) + "'";
}

/// A name for what a browser keeps: the beginning of a hash, in letters that mean nothing anywhere.
std::string KeyOf(std::string_view bytes) {
    constexpr std::string_view Digits = "0123456789abcdef";
    std::string key;
    for (const char c : Sha256(bytes).substr(0, 12))
        key.append(1, Digits[static_cast<unsigned char>(c) >> 4U]).append(1, Digits[c & 15]);
    return key;
}

std::string DataAddress(const PageFile& file) {
    return "data:" + std::string(MediaType(file.name)) + ";base64," + Base64(file.bytes);
}

/// Packs by gzip.
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

/// The signs of the frame and what comes in their place.
using Values = std::vector<std::pair<std::string_view, std::string>>;

/// Replaces each sign in one pass, so that nothing that is put in is searched again.
std::string FillIn(std::string_view frame, const Values& values) {
    std::string page;
    while (!frame.empty()) {
        const std::size_t at = std::min(frame.find('@'), frame.size());
        page += frame.substr(0, at);
        frame.remove_prefix(at);
        const auto value = std::find_if(values.begin(), values.end(),
                                        [&](const auto& pair) { return frame.starts_with(pair.first); });
        const std::string_view sign = value == values.end() ? frame.substr(0, 1) : value->first;
        page += value == values.end() ? sign : std::string_view(value->second);
        frame.remove_prefix(sign.size());
    }
    return page;
}

std::string PackedGame(const WebPageParts& parts) {
    std::string counted = Counted(parts.game);
    for (const PageFile& library : parts.libraries)
        counted += Counted(library.name) + Counted(library.bytes);
    return PackGzip(counted);
}

} // namespace

std::string_view MediaType(std::string_view name) {
    constexpr std::array<std::pair<std::string_view, std::string_view>, 11> Types = {
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
         {".flac", "audio/flac"}}};
    const std::string lower = Lower(name);
    for (const auto& [ending, type] : Types)
        if (lower.ends_with(ending))
            return type;
    return {};
}

std::string MakeWebPage(const WebPageParts& parts) {
    std::string files = "{";
    for (const PageFile& file : parts.media)
        files += (files.size() > 1 ? "," : "") + Quoted(ToUtf8(file.name)) + ":\"" + DataAddress(file) + "\"";
    const std::string title = EscapedHtml(parts.title);
    const std::string game = PackedGame(parts);
    const std::string names = parts.title + '\n' + parts.author;
    // What stands between the tags is what counts, so the frame has no white space there.
    return FillIn(parts.frame, {{"@STYLE_HASH@", PolicyHash(parts.style)},
                                {"@SCRIPT_HASH@", PolicyHash(parts.script)},
                                {"@TITLE@", title},
                                {"@AUTHOR@", parts.author.empty() ? "" : "by " + EscapedHtml(parts.author)},
                                {"@COVER@", parts.cover.name.empty()
                                                ? ""
                                                : "<img id=\"cover\" src=\"" + DataAddress(parts.cover) +
                                                      "\" alt=\"Cover of " + title + "\">"},
                                {"@STYLE@", parts.style},
                                {"@SCRIPT@", parts.script},
                                {"@GAME_KEY@", KeyOf(names)},
                                {"@STATE_KEY@", KeyOf(names + '\n' + game + parts.player)},
                                {"@PLAYER@", Base64(parts.player)},
                                {"@GAME@", Base64(game)},
                                {"@FILES@", files + "}"}});
}

} // namespace zem
