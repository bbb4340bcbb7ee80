#include "base/Html.h"

namespace zem {

std::string HtmlOf(std::string_view text) {
    std::string html;
    for (const char c : text) {
        if (c == '<')
            html += "&lt;";
        else if (c == '>')
            html += "&gt;";
        else if (c == '&')
            html += "&amp;";
        else if (c == '"')
            html += "&quot;";
        else if (c == '\n' || (static_cast<unsigned char>(c) >= ' ' && c != 0x7F))
            html += c;
    }
    return html;
}

} // namespace zem
