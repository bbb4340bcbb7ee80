#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace zem::play {

/// The number of a name among those of its kind, from 0.
using Number = std::uint32_t;

/// No such name, or nothing.
inline constexpr Number None = 0xFFFFFFFF;

/// The place of a value in the state of a running game.
using Cell = std::uint32_t;

/// Each kind has names of its own: a flag, a variable and a room may be called alike.
enum class Kind : std::uint8_t {
    Room,
    Thing, // characters and objects, by ThingKey
    Item,
    Flag,
    Variable,
    Timer,
    Collectable,
    Procedure,
    Text,
    Menu,
    Word // that a player may type, folded; has no cell
};
inline constexpr std::size_t KindCount = 11;

/// The nine directions in the order in which exits are told.
enum class Direction : std::uint8_t {
    North,
    NorthEast,
    East,
    SouthEast,
    South,
    SouthWest,
    West,
    NorthWest,
    Out
};
inline constexpr std::size_t DirectionCount = 9;
inline constexpr std::array<std::string_view, DirectionCount> DirectionNames = {
    "north", "northeast", "east", "southeast", "south", "southwest", "west", "northwest", "out"};

/// The values of the game as a whole, which have the first cells.
enum FixedCell : Cell {
    PlayerRoom, // its number + 1; 0 before a room is entered
    RoomBefore, // its number + 1; 0 for none
    Turns,
    Chance, // the state of the generator
    Now,    // seconds of waiting so far
    Colour, // a text, empty for the normal one
    FontName,
    FontSize,  // points; 0 for the reader's own
    LastIt,    // what IT means: a thing or item, see Reference; 0 for nothing
    LastHe,    // HIM
    LastShe,   // HER
    LastAny,   // THEM
    Ending,    // see Ended
    Sequence,  // counts what is started in time, so that what starts first runs first
    WaitCount, // how many procedures wait for their time
    FirstWait, // each has the cells of WaitCell
};

/// What a FixedCell::Ending holds.
enum Ended : std::int64_t { Playing, Won, Lost };

inline constexpr Cell MostWaits = 1000;
enum WaitCell : Cell { WaitDue, WaitSequence, WaitProcedure, WaitCells };
inline constexpr Cell FixedCells = FirstWait + MostWaits * WaitCells;

/// The cells of each name, by its kind; kinds that are not here have one, or none.
enum RoomCell : Cell { Visits, RoomOff, FirstExit, RoomCells = FirstExit + DirectionCount };
enum ThingCell : Cell { Where, Switches, ThingCells };
enum TimerCell : Cell { TimerOn, TimerDue, TimerSequence, TimerCells };

/// The bits of ThingCell::Switches.
enum Switch : std::int64_t { Hidden = 1, Off = 2 };

/// The bit of an exit's cell that closes it; the rest is the number + 1 of the room to which a script has
/// redirected it, or 0.
inline constexpr std::int64_t ExitClosed = 1;

/// What a cell holds, as far as the state must know.
enum class CellUse : std::uint8_t { Plain, Text, Where };

/// Turns the names of a game into numbers and gives each its cells. Names are only ever added, so numbers
/// stay what they are when a game is changed while it runs; the state of what is still there stays in place.
class Names {
public:
    Names();

    /// The number of a name, which is added when it is new.
    Number Add(Kind kind, std::string_view name);

    /// The number of a name, None when nothing has it.
    Number Find(Kind kind, std::string_view name) const;

    const std::string& Name(Kind kind, Number number) const { return Of(kind).names[number]; }
    Number Count(Kind kind) const { return static_cast<Number>(Of(kind).names.size()); }

    /// The first cell of a name, of any kind but Word, Procedure, Text and Menu.
    Cell CellOf(Kind kind, Number number) const { return Of(kind).cells[number]; }

    std::size_t CellCount() const { return uses_.size(); }
    CellUse Use(Cell cell) const { return uses_[cell]; }

    /// The thing of a cell that says where a thing is.
    Number ThingOf(Cell cell) const { return owners_[cell]; }

    /// The bytes of memory that this takes, roughly.
    static std::string ThingKey(bool isCharacter, std::string_view name, int occurrence = 1);

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };
    struct Space {
        std::unordered_map<std::string, Number, Hash, std::equal_to<>> numbers;
        std::vector<std::string> names;
        std::vector<Cell> cells;
    };

    const Space& Of(Kind kind) const { return spaces_[static_cast<std::size_t>(kind)]; }
    Space& Of(Kind kind) { return spaces_[static_cast<std::size_t>(kind)]; }
    void AddCells(std::size_t count, CellUse firstUse, Number owner);

    std::array<Space, KindCount> spaces_;
    std::vector<CellUse> uses_;
    std::vector<Number> owners_;
};

} // namespace zem::play
