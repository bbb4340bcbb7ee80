#pragma once

#include "base/TextRange.h"
#include "game/ScriptOwners.h"
#include "model/Place.h"

#include <cstddef>
#include <string>
#include <string_view>

/// How a place is shown in a list of places: under its group, with the line in which it stands.
namespace zem {

/// What stands around some bytes of a text.
struct LineInContext {
    std::string text; // of one line, TABs as blanks, "..." where the line was cut
    TextRange marked; // the bytes, as they stand in it
};

/// The line in which the bytes begin, cut around them to about `most` characters.
/// @param bytes  of the text
LineInContext InContext(std::string_view text, TextRange bytes, std::size_t most = 120);

/// What lists of places are grouped by: a room with all that is in it, or one list of the game.
struct PlaceGroup {
    FieldId list = FieldId::None; // None for the game's own fields
    int room = 0;                 // from 1; 0 for what stands in no room

    bool operator==(const PlaceGroup&) const = default;
};

/// The group of the place. One in an internal procedure belongs to the script that calls it.
PlaceGroup GroupOf(const ScriptOwners& owners, const Place& place);

/// In plain words: "Kitchen" for a room, else "Procedures", "Game properties" and so on.
std::string GroupTitle(const GameModel& game, const PlaceGroup& group);

} // namespace zem
