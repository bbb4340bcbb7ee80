#pragma once

#include "base/TextRange.h"
#include "kel/CommandLookup.h"
#include "model/NameKind.h"

#include <string>
#include <string_view>
#include <vector>

/// Lines of scripts as authors type them: the keyword or the plain English of a command, and behind it what
/// it is about, with or without brackets. "give <iron key>", "give iron key", "Give the player an item iron
/// key" and "Give the player "iron key"" are one line.
namespace zem {

struct TypedLine {
    std::string line;    // as the file has it; empty where the text is none
    std::string problem; // why it is none, in a sentence or two; empty for a line, and for an empty text
};

/// Makes a line of a text. An "if" is understood as well: "if the player has an item key then goto Hall else
/// win".
TypedLine ReadTypedLine(std::string_view text, const CommandLookup& commands);

/// What stands at the end of a text that is being typed, and what could stand there.
struct TypedEnd {
    std::size_t begin = 0;                          // where the command or the condition begins
    std::vector<const CommandDefinition*> commands; // that have all its words, in the catalogue's order
    TextRange part;                                 // of a known command's parameter
    NameKind kind = NameKind::None;                 // of the names that may stand for the part
    const CommandDefinition* command = nullptr;     // the known command; null while none is typed yet
};

TypedEnd EndOfTyped(std::string_view text, const CommandLookup& commands);

} // namespace zem
