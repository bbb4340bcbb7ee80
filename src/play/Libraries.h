#pragma once

#include "play/World.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace zem::play {

/// Stands for the verbs that every game has, where no such file is there.
inline constexpr std::string_view BuiltInVerbs = "standard.kel";

/// Gives the bytes of a file in the folder of the game; nothing when it cannot be read.
using ReadLibrary = std::function<std::optional<std::string>(const std::string& name)>;

/// A game with the libraries that it includes, each once, each before what comes after it in its includer.
/// What is wrong with one is noted for the author, and play goes on without it.
GameFiles WithLibraries(GameModel game, const ReadLibrary& read);

/// Names the messages that a game may replace, as a reader of games must know them.
void NameMessages(GameModel& game);

} // namespace zem::play
