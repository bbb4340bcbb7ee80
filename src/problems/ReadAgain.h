#pragma once

#include "model/GameModel.h"
#include "model/Place.h"
#include "problems/CheckedGame.h"
#include "problems/Problem.h"

#include <memory>
#include <string>

namespace zem::problems {

/// Writes the room of the place, or the game's own block, and reads it again, so that mended lines among its
/// miscellaneous tags come to what they say. Returns false, and leaves the game as it is, when that cannot be
/// done.
bool ReadAgain(GameModel& game, const Place& place);

/// The game that the file holds when one of its lines is another; nothing when that cannot be read.
/// @param game  whose error messages count
/// @param line  counted from 1; 0 for the file as it is
std::optional<GameModel> ReadWithLine(const SourceFile& source, const GameModel& game, std::size_t line,
                                      const std::string& text);

/// Reads the file with another line, as long as the game is still what was read from it.
Fix ChangeFileLine(std::string button, std::shared_ptr<const SourceFile> source, std::size_t line,
                   std::string text);

/// The line of the file, without the blanks around it; empty when it has none of this number.
std::string_view FileLine(const SourceFile& source, std::size_t line);

} // namespace zem::problems
