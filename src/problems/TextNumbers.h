#pragma once

#include <optional>
#include <string_view>

namespace zem::problems {

/// The number that the whole text is, blanks around it aside: digits, perhaps with a sign and a decimal
/// point. Nothing for any other text.
std::optional<double> NumberIn(std::string_view text);

} // namespace zem::problems
