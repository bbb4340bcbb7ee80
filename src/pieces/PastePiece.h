#pragma once

#include "game/Rename.h"
#include "kel/CommandLookup.h"
#include "model/GameModel.h"
#include "model/Place.h"

#include <string>
#include <string_view>
#include <vector>

namespace zem {

/// Where the parts of a pasted text go that may stand in several places.
struct PasteTarget {
    int room = 0;                   // gets characters and objects that stand in no room, from 1; 0 for none
    bool commandsIntoRoom = false;  // player commands go to that room and not to the game
    bool takesLines = false;        // whether there is a script for lines that belong to no record
    std::vector<FieldId> only = {}; // the lists that take something; empty for all
};

struct Pasted {
    GameModel game;                  // with what was pasted
    std::vector<Place> added;        // the records, without internal procedures
    std::vector<std::string> lines;  // for the caller to put into a script; their procedures are in the game
    std::vector<NameChange> renamed; // what has another name than in the text
    std::string what;                // what was pasted, by its new name: "room Pantry 2"
};

/// Puts a text of CopyPiece, or any other Kel, into a game. Where a name is taken, the pasted record gets a
/// free one ("Pantry 2"), and so does every reference to it inside the text; what stood in the game before
/// is not changed, but for a standard text that was empty and the game's own scripts, to which those of a
/// "define game" block are added. Internal procedures get free numbers.
///
/// Throws KelError, in words for the author, for a text that is no Kel, has half a block, calls an internal
/// procedure that it does not hold, or has something for which the target has no place.
Pasted PastePiece(const GameModel& game, std::string_view text, const PasteTarget& target,
                  const CommandLookup& commands);

} // namespace zem
