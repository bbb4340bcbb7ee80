#pragma once

#include "model/NameKind.h"

#include <string_view>
#include <vector>

namespace zem {

/// The parts of the parameter that a command takes. The catalogue tells them by its raw syntax: they stand
/// there with ";" between them, and a part that is exactly one of these words takes such a name: "room",
/// "object", "character", "thing", "item", "procedure", "text section", "menu", "variable", "collectable",
/// "flag", "timer", "file".
struct ParameterSyntax {
    std::vector<NameKind> parts; // at least one, unless the command takes no parameter
    // Two last parts that are the same, as in "procedure; procedure", stand for as many as one likes.
    bool lastRepeats = false;
};

/// @param rawSyntax  of the catalogue: "object; room", or "!" for a command without a parameter
ParameterSyntax ReadSyntax(std::string_view rawSyntax);

} // namespace zem
