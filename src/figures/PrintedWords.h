#pragma once

#include "kel/CommandLookup.h"
#include "model/GameModel.h"
#include "model/Place.h"

#include <functional>
#include <string_view>

/// The words that a game can print.
namespace zem::figures {

/// What is told by whom.
enum class PrintKind {
    Description, // of a room or a thing
    Speech,      // what "say" says, and what a character speaks
    Menu,        // prompts and choices
    Text,        // text blocks
    Message      // whatever else scripts print, and the answers of the game to what it does not understand
};

/// How many words a printed text has: runs of letters, digits, apostrophes and hyphens with at least one
/// letter or digit, after format codes and variables are taken out.
std::size_t CountWords(std::string_view text);

/// A command of a script.
struct FoundCommand {
    std::string_view keyword; // as the catalogue has it
    std::string_view parameter;
};

/// Which part of the parameter of a command or condition the player reads, from 0; -1 for none.
int PrintedPart(const CommandEntry& entry);

/// The bytes of that part of a parameter; empty where the parameter has no so many.
TextRange PartOf(std::string_view parameter, const ParameterSyntax& syntax, int part);

/// Calls `printed` with each text that the game can print: its field, its kind, its bytes and the whole text
/// of the field. What stands in an internal procedure is told there. The arguments are good during the call
/// only.
void VisitPrintedTexts(
    const GameModel& game, const CommandLookup& commands,
    const std::function<void(const Place&, PrintKind, TextRange bytes, const std::string& text)>& printed);

/// Calls `printed` with the place, the kind and the number of words of each text that the game can print, and
/// `command` with each command of a script that the catalogue knows. What stands in an internal procedure is
/// told as its owner's.
///
/// Names, aliases, prefixes and what the properties of the game tell of it are no part of the story.
void VisitPrinted(const GameModel& game, const CommandLookup& commands,
                  const std::function<void(const Place&, PrintKind, std::size_t words)>& printed,
                  const std::function<void(const Place&, const FoundCommand&)>& command);

} // namespace zem::figures
