#pragma once

#include <cstdint>
#include <string_view>

namespace zem {

/// What a block is to the readers, told by its first line. A block may be of several kinds, or of none.
enum BlockKind : std::uint8_t {
    GameKind = 1,
    RoomKind = 2,
    RoomWithThingsKind = 4, // a room whose characters and objects are read, too
    TextKind = 8,
    ProcedureKind = 16,
    MenuKind = 32,
    SynonymsKind = 64,
    KeptKind = 128 // kept as it is among the blocks that no form knows
};

/// The kinds of a block, as a sum.
/// @param firstLine  trimmed
std::uint8_t KindsOf(std::string_view firstLine);

} // namespace zem
