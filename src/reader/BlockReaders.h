#pragma once

#include "model/GameModel.h"
#include "reader/SourceText.h"

/// The readers that turn the blocks of a source, its lines trimmed, into the records of a game. Each throws
/// KelError, tied to its line, for a keyword without its brackets and for a table that overflows.
namespace zem {

/// Reads the properties, commands, use lines, flags and miscellaneous tags of the "define game" block.
void ReadGameBlock(GameModel& game, const SourceText& source);

/// Reads the items and start items of the "define game" block.
void ReadItems(GameModel& game, const SourceText& source);

/// Reads the collectables of the "define game" block. A collectable without a blank after its name is an
/// error.
void ReadCollectables(GameModel& game, const SourceText& source);

/// Reads the game's own error messages into the error table, which the catalogue must have filled before. A
/// line for an unknown error goes to the game's miscellaneous tags.
void ReadErrorMessages(GameModel& game, const SourceText& source);

/// Reads the rooms, without the characters and objects in them.
void ReadRooms(GameModel& game, const SourceText& source);

/// Reads the characters and objects of all rooms; runs after ReadRooms. Where several rooms share a name, the
/// last of them gets the things of all.
void ReadThings(GameModel& game, const SourceText& source);

/// Reads the text sections and adds the standard ones that are missing.
void ReadTextSections(GameModel& game, const SourceText& source);

void ReadProcedures(GameModel& game, const SourceText& source);

void ReadSelectionMenus(GameModel& game, const SourceText& source);

/// Reads the synonyms. A line without "=" is an error, an empty line or a comment included.
void ReadSynonyms(GameModel& game, const SourceText& source);

/// Keeps the blocks of unknown types, without their empty lines.
void CollectUnknownBlocks(GameModel& game, const SourceText& source);

} // namespace zem
