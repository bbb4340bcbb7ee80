#pragma once

#include "kel/CommandLookup.h"

#include <string>
#include <string_view>
#include <vector>

/// The commands by what they are about, and by the words that an author may remember of them.
namespace zem {

struct CommandGroup {
    const char* name; // in plain words: "Printing"
    std::vector<const CommandDefinition*> commands;
};

/// All commands of the catalogue, conditions left out, each in one group; a group without commands is left
/// out.
std::vector<CommandGroup> GroupsOfCommands(const CommandLookup& commands);

/// Whether each of the words begins a word of the command, in its keyword or in its plain English.
bool HasWords(const CommandDefinition& command, std::string_view words);

} // namespace zem
