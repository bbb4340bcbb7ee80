#pragma once

#include "base/LineText.h"
#include "base/TextRange.h"
#include "model/Fields.h"
#include "model/GameModel.h"

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The names of internal procedures wherever they stand in scripts and raw lines. They are looked for as
/// text, so that no line is missed that the language does not understand.
namespace zem {

/// The name of the internal procedure of this number.
std::string InternalNameOf(int number);

/// The number in the name of an internal procedure at the begin of a text, whatever its capitals; -1 for any
/// other text.
/// @param size  becomes how many bytes the name has
int InternalNumberAt(std::string_view text, std::size_t& size);

/// Calls visit(range, number) for each name of an internal procedure in a text.
template <class Visit>
void ForEachInternalName(std::string_view text, Visit visit) {
    std::size_t size = 0;
    for (std::size_t at = text.find('~'); at != std::string_view::npos; at = text.find('~', at + 1))
        if (const int number = InternalNumberAt(text.substr(at), size); number >= 0)
            visit(TextRange{at, at + size}, number);
}

/// Whether such names in the field call procedures, or are their names.
bool MayHoldInternalNames(FieldUse use);

/// Adds the internal procedures to a piece that its scripts need and it lacks, directly or through one
/// another, from the game that it is of.
void AddInternalProcedures(GameModel& piece, const GameModel& game);

/// Gives internal procedures of a piece other numbers where those are taken in a game. Throws KelError when
/// the piece calls one that it does not hold, and when no number is left.
/// @return  the number of the next one
std::int16_t MakeNumbersFree(GameModel& piece, const GameModel& game);

} // namespace zem
