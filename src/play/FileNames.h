#pragma once

#include <string_view>

/// The names of files that a game may use: they stand in its own folder, and nowhere else.
namespace zem::play {

/// True for a name without folders in it that does not begin with a dot.
bool IsPlainFileName(std::string_view name);

/// True when the ending is that of a kind of picture that is shown.
bool IsPictureName(std::string_view name);

/// True when the ending is that of a kind of sound that is played.
bool IsSoundName(std::string_view name);

} // namespace zem::play
