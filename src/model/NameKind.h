#pragma once

#include <cstdint>

namespace zem {

/// The kinds of things that a game calls by name. Kinds have separate name spaces.
enum class NameKind : std::uint8_t {
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

} // namespace zem
