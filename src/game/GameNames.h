#pragma once

#include "kel/CommandCatalogue.h"
#include "model/GameModel.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zem {

/// What a part of a command's parameter names. The catalogue tells by its raw syntax: the parts of a
/// parameter stand there with ";" between them, and a part that is exactly one of these words takes such a
/// name: "room", "object", "character", "thing", "item", "procedure", "text section", "menu", "variable",
/// "collectable", "flag", "timer". The last part may be repeated.
enum class NameKind {
    None,
    Room,
    Object,
    Character,
    Thing,
    Item,
    Procedure,
    TextSection,
    Menu,
    Variable,
    Collectable,
    Flag,
    Timer
};

/// The part of a parameter in which a position stands: the bytes from `begin` up to `end` of the parameter,
/// blanks around it left out, and the kind of name that belongs there.
struct ParameterPart {
    NameKind kind = NameKind::None;
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// @param position  in the parameter, 0 to its size
ParameterPart FindParameterPart(std::string_view syntax, std::string_view parameter, std::size_t position);

/// All names of the kind in the game, each once, in the order of the game. Variables, flags and timers are
/// those that its scripts use, by the catalogue's syntax, sorted.
std::vector<std::string> GameNames(const GameModel& game, NameKind kind, const CommandCatalogue& catalogue);

} // namespace zem
