#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>

namespace zem::play {

struct TerminalOptions {
    std::string file;       // of the game
    std::uint64_t seed = 1; // of chance
    std::optional<std::string>
        linesFile; // whose lines are played; "-" for the input; without it, the terminal
};

/// Plays a game in the terminal, or prints the transcript of a file of lines. Gives the exit status: 0 when
/// all is well, 1 for a problem with a file, which is told on `err`.
int PlayInTerminal(const TerminalOptions& options, std::istream& in, std::ostream& out, std::ostream& err);

} // namespace zem::play
