#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace zem {

/// Tells why a text of a game does not come back from a file, by trying what would: "the comma in it ends it
/// early".
/// @param text       the text that does not come back
/// @param comesBack  whether another text would, in the place of this one
/// @param noun       what the sentence calls the text
std::string LossReason(const std::string& text, const std::function<bool(const std::string&)>& comesBack,
                       const std::string& noun = "it");

} // namespace zem
