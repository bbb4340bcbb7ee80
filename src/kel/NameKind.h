#pragma once

#include <string_view>
#include <vector>

namespace zem {

/// What a part of a command's parameter names. The catalogue tells by its raw syntax: the parts of a
/// parameter stand there with ";" between them, and a part that is exactly one of these words takes such a
/// name: "room", "object", "character", "thing", "item", "procedure", "text section", "menu", "variable",
/// "collectable", "flag", "timer", "file".
enum class NameKind {
    None,
    Room,
    Object,
    Character,
    Thing, // a character or an object
    Item,
    Procedure,
    TextSection,
    Menu,
    Variable,
    Collectable,
    Flag,
    Timer,
    File
};

/// The parts of the parameter that a command takes.
struct ParameterSyntax {
    std::vector<NameKind> parts; // at least one, unless the command takes no parameter
    // Two last parts that are the same, as in "procedure; procedure", stand for as many as one likes.
    bool lastRepeats = false;
};

/// @param rawSyntax  of the catalogue: "object; room", or "!" for a command without a parameter
ParameterSyntax ReadSyntax(std::string_view rawSyntax);

} // namespace zem
