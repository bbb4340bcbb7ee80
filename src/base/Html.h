#pragma once

#include <string>
#include <string_view>

namespace zem {

/// The text as a page holds it, between tags or quotation marks: signs of HTML are escaped, and control
/// characters, which a page may not hold, are left out but for line feeds.
/// @param text  UTF-8, as the result
std::string HtmlOf(std::string_view text);

} // namespace zem
