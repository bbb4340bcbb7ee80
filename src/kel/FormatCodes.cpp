#include "kel/FormatCodes.h"

namespace zem {

namespace {

struct FormatCode {
    std::string_view code; // after the bar
    std::string_view word;
    void (*apply)(TextFormat&); // null for a code without a look in the preview
};

// In this order; the first that matches counts.
constexpr FormatCode Codes[] = {
    {"b", "[BOLD ON]", [](TextFormat& format) { format.bold = true; }},
    {"xb", "[BOLD OFF]", [](TextFormat& format) { format.bold = false; }},
    {"u", "[UNDERLINE ON]", [](TextFormat& format) { format.underline = true; }},
    {"xu", "[UNDERLINE OFF]", [](TextFormat& format) { format.underline = false; }},
    {"i", "[ITALIC ON]", [](TextFormat& format) { format.italic = true; }},
    {"xi", "[ITALIC OFF]", [](TextFormat& format) { format.italic = false; }},
    {"cr", "[RED]", [](TextFormat& format) { format.basicColour = 12; }},
    {"cb", "[BLACK]", [](TextFormat& format) { format.basicColour = 0; }},
    {"cl", "[BLUE]", [](TextFormat& format) { format.basicColour = 9; }},
    {"cy", "[YELLOW]", [](TextFormat& format) { format.basicColour = 14; }},
    {"cg", "[GREEN]", [](TextFormat& format) { format.basicColour = 2; }},
    {"n", "[NEW LINE]", nullptr},
    {"s", "[SIZE ", nullptr}, // and the two characters after it
    {"jc", "[JUSTIFY: CENTER]", nullptr},
    {"jl", "[JUSTIFY: LEFT]2", nullptr}, // the 2 has always been there, and authors know the word by it
    {"jr", "[JUSTIFY: RIGHT]", nullptr},
    {"w", "[WAIT]", nullptr},
    {"c", "[CLEAR]", nullptr},
};

constexpr FormatCode Unknown = {"?", "[UNKNOWN]", nullptr}; // a bar and one character

const FormatCode& FindCode(std::string_view afterBar) {
    for (const FormatCode& code : Codes)
        if (afterBar.starts_with(code.code))
            return code;
    return Unknown;
}

} // namespace

std::string FormatCodesToText(std::string_view text, bool showCodes) {
    std::string rest(text);
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0;;) {
        const std::size_t bar = rest.find('|', at);
        result.append(rest, at, bar - at);
        if (bar == std::string::npos)
            return result;
        at = bar + 1;
        const FormatCode& code = FindCode(std::string_view(rest).substr(at));
        if (showCodes)
            result.append(code.word);
        at = std::min(at + code.code.size(), rest.size());
        if (code.code != "s")
            continue;
        const std::string size = rest.substr(at, 2);
        at += size.size();
        if (!showCodes)
            continue;
        // The end of the word goes back in front of what is left: the two characters may hold a bar
        // themselves.
        at -= size.size() + 1;
        rest.replace(at, size.size() + 1, size + "]");
    }
}

std::size_t detail::ApplyFormatCode(std::string_view text, std::size_t at, TextFormat& format) {
    const FormatCode& code = FindCode(text.substr(at + 1));
    if (code.apply == nullptr)
        return 1;
    code.apply(format);
    return 1 + code.code.size();
}

} // namespace zem
