#pragma once

#include "model/GameModel.h"
#include "model/Place.h"

#include <string>
#include <vector>

namespace zem {

/// A part of a game as text, to be pasted into a mail, an editor or a game.
struct PieceText {
    std::string text; // CR LF behind every line
    std::string what; // in a few words: "room Pantry", "2 rooms and 1 item"
};

/// The records at the places, with all internal procedures that their scripts need.
/// @param places  of rooms, characters, objects, items, collectables, procedures, texts, menus, synonyms,
///                player commands of the game or of a room, use rules of the game; or of the field of the
///                blocks that no form knows
/// Throws KelError for other places, and where a text would not be read back as it is.
PieceText CopyPiece(const GameModel& game, const std::vector<Place>& places);

/// The same for lines of a script, which need not stand in the game.
/// @param game  has the procedures that the lines call
PieceText CopyLines(const GameModel& game, const std::vector<std::string>& lines);

} // namespace zem
