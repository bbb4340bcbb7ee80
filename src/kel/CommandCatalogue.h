#pragma once

#include "model/Table.h"

#include <string>

namespace zem {

/// One entry of the command catalogue: a script command or a condition of the Kel language.
struct CommandDefinition {
    std::string Keyword;        // as it begins a script line; conditions begin with "if"
    std::string RawSyntax;      // "!" when the command takes no parameter
    std::string FriendlyName;   // in plain English
    std::string FriendlyPrompt; // what the parameter is; "!" when there is none
    // The line in plain English, with format codes; the first "$" stands for the parameter.
    std::string FriendlyTemplate;

    bool operator==(const CommandDefinition&) const = default;
};

/// In file order: where several keywords match a line, the first counts.
using CommandCatalogue = Table<CommandDefinition>;

/// Reads the catalogue file, one entry a line with "%" between its fields.
/// Throws KelError when the file cannot be read, is empty, or has a line with fewer than four "%"; the
/// entries before that line are in the catalogue then.
void LoadCommandCatalogue(CommandCatalogue& catalogue, const std::string& path);

} // namespace zem
