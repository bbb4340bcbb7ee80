#pragma once

#include "walk/Facts.h"

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace zem::walk {

/// A command or "if" line of a game, as a number that all its scripts share.
using NodeId = std::uint32_t;
inline constexpr NodeId NoNode = 0xFFFFFFFF;

/// What runs a script.
struct Root {
    enum Kind : std::uint8_t {
        Start,       // of the game, once
        EveryTurn,   // before or after it, or the game's description
        Command,     // in a room, or everywhere
        Use,         // in a room, or everywhere
        UseOn,       // a thing
        Give,        // to a character
        LookAt,      // a thing
        Take,        // a thing
        SpeakTo,     // a thing
        Exit,        // of the compass; its direction is the index
        Place,       // by its index
        Enter,       // a room
        Description, // of a room
        Timer,       // while it is on
        Procedure,   // by a script
        Choice       // of a menu, from 1
    };
    Kind kind = Start;
    const play::Book* book = nullptr;
    std::int32_t first = -1; // node
    Number room = play::None;
    Number thing = play::None;
    Number item = play::None;
    Number name = play::None; // of the timer, procedure or menu
    int index = 0;
    const play::WorldCommand* command = nullptr;
};

/// Where a node stands.
struct NodePlace {
    const play::Book* book = nullptr;
    const play::Node* node = nullptr;
    NodeId guard = NoNode; // the "if" line that leads to it
    bool answer = true;    // of that line
    std::uint32_t root = 0;
};

/// A way from one room to another that a script makes.
struct ScriptedExit {
    Number to = play::None;
    NodeId node = NoNode;       // the "goto", or the "exit to" that must have run
    std::vector<NodeId> chain;  // from the script of the exit to the "goto"; empty for an "exit to"
    std::uint32_t root = 0;     // the exit, for a "goto"
    std::uint8_t direction = 0; // of an "exit to"
};

/// A command of the player that fills a variable.
struct Capture {
    const play::WorldCommand* command = nullptr;
    Number room = play::None; // None for everywhere
};

/// Knows the scripts of a game backwards: what runs each line, what must be so for it, and which lines change
/// what. Nothing of it changes.
class CauseMap {
public:
    explicit CauseMap(const play::World& world);

    std::size_t NodeCount() const { return nodes_.size(); }
    const NodePlace& At(NodeId node) const { return nodes_[node]; }
    const Root& RootOf(NodeId node) const { return roots_[nodes_[node].root]; }
    const std::vector<Root>& Roots() const { return roots_; }

    /// The number of a node of a book.
    NodeId IdOf(const play::Book& book, std::int32_t node) const;

    /// The lines that run a procedure, or ask a menu.
    const std::vector<NodeId>& CallersOf(const Root& root) const;

    /// The lines that write the cell of an item, flag, timer, variable, collectable, exit or room; all that
    /// concern a thing for its first one.
    const std::vector<NodeId>& WritersOf(Cell cell) const;

    /// The lines that take the player to a room.
    const std::vector<NodeId>& GotosTo(Number room) const;
    const std::vector<ScriptedExit>& ScriptedExitsOf(Number room) const;
    const std::vector<Capture>& CapturesOf(Number variable) const;

    /// Whether any command of the player fills a variable.
    bool IsCaptured(Number variable) const { return captured_.contains(variable); }

    /// Whether a condition, a "use" or a "give" asks for the cell.
    bool IsAsked(Cell cell) const { return isAsked_[cell]; }
    /// The comparisons of a variable or collectable, by its cell.
    const std::vector<Fact>& ComparisonsOf(Cell cell) const;

private:
    void AddGame(const play::WorldGame& game, bool isOwn);
    void AddRoom(const play::WorldRoom& room);
    void AddThing(const play::WorldThing& thing);
    void AddCommands(const play::Book& book, const std::vector<play::WorldCommand>& commands, Number room);
    void Add(Root root);
    void AddNode(const Root& root, NodeId base, std::int32_t index, NodeId guard, bool answer);
    void NoteCalls(NodeId id);
    void NoteWrites(NodeId id);
    void NoteConditions(NodeId id);
    void NoteExits(NodeId id);
    void Climb(NodeId from, std::vector<NodeId> chain);

    const play::World& world_;
    std::vector<Root> roots_;
    std::vector<NodePlace> nodes_;
    std::unordered_map<const play::Book*, NodeId> firsts_;
    std::unordered_map<const play::WorldThing*, Number> thingNumbers_;
    std::vector<std::vector<NodeId>> procedureCallers_; // by number
    std::vector<std::vector<NodeId>> menuCallers_;
    std::vector<std::vector<NodeId>> gotos_;
    std::vector<std::vector<ScriptedExit>> exits_;
    std::unordered_map<Cell, std::vector<NodeId>> writers_;
    std::unordered_map<Number, std::vector<Capture>> captures_;
    std::unordered_set<Number> captured_;
    std::unordered_map<Cell, std::vector<Fact>> comparisons_;
    std::vector<bool> isAsked_;
};

} // namespace zem::walk
