#pragma once

#include "game/Notes.h"
#include "game/ScriptOwners.h"
#include "kel/CommandLookup.h"
#include "model/GameModel.h"
#include "model/NameKind.h"
#include "model/Place.h"

#include <string>

/// Places told by names, as notes keep them: numbers would mean another entry after the next change.
namespace zem {

/// The place by names, in UTF-8: the way to its field, and the words that its bytes are with what they are: a
/// name of a kind, a part of a script, a part of a text. A place in an internal procedure is told as its
/// owner's field. Lines are not told, so that the place stays the same when lines are added above it.
NotePlace TellByNames(const GameModel& game, const ScriptOwners& owners, const CommandLookup& commands,
                      const Place& place);

/// Follows a rename: the name in the places of silences becomes the other.
/// @param kind  of the name that is renamed; Object and Character count where either may stand, too
/// @param from, to  as they stand in the game, which is not in UTF-8
void RenameInNotes(GameNotes& notes, NameKind kind, const std::string& from, const std::string& to,
                   const CommandLookup& commands);

} // namespace zem
