#pragma once

#include <string>
#include <string_view>

namespace zem {

/// The SHA-256 of bytes, 32 bytes long.
std::string Sha256(std::string_view bytes);

} // namespace zem
