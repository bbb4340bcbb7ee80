#pragma once

#include "walk/CauseMap.h"

#include <cstdint>
#include <vector>

namespace zem::walk {

/// Tells what may still come of a state of a game, by its scripts alone. Whatever cannot be ruled out counts
/// as possible: nothing that is had or open is ever lost, and a value that can change can become any. So what
/// is not possible here never happens, and of the rest nothing is said. A game that begins again is another.
class Outlook {
public:
    Outlook(const play::World& world, const CauseMap& causes);

    /// Looks ahead from a state.
    void Look(const play::State& state);

    // What the last look has told.
    bool CanBeWon() const { return canBeWon_; }
    bool CanRun(NodeId node) const { return isReached_[node]; }
    bool CanBeHad(Number item) const;
    bool CanBeEntered(Number room) const { return rooms_[room]; }

    /// Of all looks, about a line of a script each.
    std::uint64_t Work() const { return work_; }

private:
    /// What lines may have done to a cell.
    enum Done : std::uint8_t { SwitchedOn = 1, SwitchedOff = 2 };

    void Begin(const play::State& state);
    void SpreadThroughRooms();
    void EnterFrom(const play::WorldRoom& room, std::uint8_t direction);
    bool CanRun(const Root& root) const;
    void Run(const Root& root);
    void RunNode(const Root& root, NodeId base, std::int32_t index);
    void Apply(const play::Book& book, const play::Node& node);
    void ApplyToThing(const play::Node& node);
    bool IsPossible(const Fact& fact) const;
    bool IsPossibleThing(Number thing) const;
    bool CanBeDropped(Number thing) const;
    bool IsOpenOrOpens(Number room, std::uint8_t direction) const;
    void Note(Cell cell, Done what);
    void Mark(std::vector<bool>& list, Number number);

    const play::World& world_;
    const CauseMap& causes_;
    std::vector<Number> itemOfThing_; // of the same name

    const play::State* state_ = nullptr;
    std::vector<bool> isReached_; // nodes
    std::vector<bool> rooms_;
    std::vector<bool> procedures_;
    std::vector<bool> menus_;
    std::vector<bool> isAnywhere_;   // things that a script moves
    std::vector<std::uint8_t> done_; // by cell
    std::vector<const play::Node*> exitsMade_;
    bool canGoBack_ = false;
    bool canBeWon_ = false;
    bool isBeforeStart_ = false;
    bool hasChanged_ = false;
    std::uint64_t work_ = 0;
};

} // namespace zem::walk
