#pragma once

#include <string>
#include <string_view>

/// The text of terminals and files of tests is UTF-8, that of games Windows-1252.
namespace zem::play {

/// What Windows-1252 lacks becomes "?", and so does what is no UTF-8.
std::string FromUtf8(std::string_view text);

/// Bytes that Windows-1252 leaves free become the control characters of their code.
std::string ToUtf8(std::string_view text);

} // namespace zem::play
