#pragma once

#include "kel/CommandLookup.h"
#include "model/GameModel.h"

#include <string>
#include <string_view>
#include <vector>

namespace zem {

/// Records of a game by themselves, with the internal procedures that their scripts call.
struct Piece {
    GameModel game;                 // nothing but its records and scripts counts
    Room things;                    // has the characters and objects that stand in no room
    std::vector<std::string> lines; // of a script that belongs to no record
};

/// The piece as text: each block and line as a game file has it, with CR LF behind every line.
std::string WritePiece(const Piece& piece);

/// Reads such a text, which may also come from a mail or from a whole game file. Comments outside of scripts
/// are left out, and so are the game's own properties.
///
/// Throws KelError, with the line of the text where one can be named, for a text that is no Kel, holds half a
/// block, or something that a game file would lose.
/// @param game  whose error messages there are
Piece ReadPiece(std::string_view text, const GameModel& game, const CommandLookup& commands);

/// What the piece holds, in a few words: "room Pantry", "2 rooms and 1 item". Empty for nothing.
std::string DescribePiece(const Piece& piece);

} // namespace zem
