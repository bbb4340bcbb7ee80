#pragma once

#include "commands/Command.h"

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace zem {

/// What the command line asks for: a window, or nothing more because all was done.
struct CommandLineResult {
    int exitStatus = 0;
    std::optional<std::string> editFile; // set when the editor is to be opened; empty for no file
};

/// Parses the arguments, without the program's name, and carries out the verbs that need no window. Exit
/// status 0 when all is well, 1 for a problem with a file, 2 for wrong usage.
/// @param programFolder  where the data files are, without a trailing separator
/// @param painters  what a command that wants a picture asks for; without it the command says so
CommandLineResult RunCommandLine(const std::vector<std::string>& arguments, const std::string& programFolder,
                                 std::ostream& out, std::ostream& err, Painters painters = {});

} // namespace zem
