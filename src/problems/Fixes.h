#pragma once

#include "problems/Problem.h"

#include <string>
#include <string_view>

/// Ways to put things right that several checks share. Each makes a function of the game; the game in which
/// the problem was found stays as it is.
namespace zem::problems {

/// Puts other text in the place of the bytes at the place, which hold `expected` now. Where they hold
/// something else in the meantime, nothing changes.
Fix ReplaceBytes(std::string button, const Place& place, std::string_view expected, std::string replacement);

/// Sets a whole field, which may be empty now.
Fix SetField(std::string button, const Place& field, std::string_view expected, std::string text);

/// Puts several lines in the place of the bytes, which are a whole line of a script. Where the field has room
/// for one line only they become an internal procedure, as in the script editor.
Fix ReplaceLine(std::string button, const Place& line, std::string_view expected, std::string lines);

/// Puts a call of a new internal procedure of these lines in the place of the bytes, which are a command.
Fix ReplaceWithProcedure(std::string button, const Place& command, std::string_view expected,
                         std::string lines);

/// Removes a whole line of a script.
Fix RemoveLine(std::string button, const Place& line, std::string_view expected);

/// Removes the record that the last step of the place leads to; an exit that is a record of its own becomes
/// empty. Nothing changes where there is no such record.
Fix RemoveRecord(std::string button, const Place& record);

/// Any other change, made in a copy of the game.
Fix ChangeGame(std::string button, std::function<void(GameModel&)> change);

/// The words "Change to NAME" for a button.
std::string ChangeTo(std::string_view name);

} // namespace zem::problems
