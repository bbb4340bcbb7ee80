#pragma once

#include "walk/CauseMap.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zem::walk {

/// A step from one room to another.
struct Road {
    Number from = play::None;
    Number to = play::None;
    std::string_view direction;             // of an exit; empty for a place
    Number place = play::None;              // the room that the place names
    const ScriptedExit* scripted = nullptr; // of whose script the way hangs
    bool isOpen = false;                    // now, as far as can be told
};

/// Finds ways through the rooms of a game as they are now.
class RoadMap {
public:
    RoadMap(const play::World& world, const CauseMap& causes) : world_(world), causes_(causes) {}

    /// The shortest way from where the player is over roads that are open; one that could be opened counts as
    /// a detour. Nothing where there is no way at all, or none in the part of the game that is near.
    std::optional<std::vector<Road>> WayTo(const play::State& state, Number room);

    /// How many rooms were looked at so far.
    std::uint64_t Work() const { return work_; }

    /// The line that takes the player along a road.
    std::string LineOf(const Road& road) const;

    /// The facts that open a road, one of the ways to it.
    std::vector<Fact> NeedsOf(const play::State& state, const Road& road) const;

private:
    void AddRoads(const play::State& state, Number from);
    bool IsOpen(const play::State& state, const ScriptedExit& exit) const;

    const play::World& world_;
    const CauseMap& causes_;
    std::uint64_t work_ = 0;
    std::vector<Road> roads_; // of the room that is looked at
    std::vector<Road> ways_;  // into each room, by number
    std::vector<std::uint32_t> costs_;
    std::vector<Number> touched_;
    std::vector<std::vector<Number>> queue_; // of rooms, by cost
};

/// The facts that a chain of scripts hangs on: of several ways the one that lacks least now.
std::vector<Fact> NeedsOfChain(const play::World& world, const CauseMap& causes, const play::State& state,
                               const std::vector<NodeId>& chain);

/// Those for one line: the answers of the "if" lines that lead to it.
void AddNeedsOf(const play::World& world, const CauseMap& causes, const play::State& state, NodeId node,
                std::vector<Fact>& facts);

/// Of the ways to an answer, the one that lacks least now; nothing when there is none.
std::optional<std::vector<Fact>> EasiestWay(const play::World& world, const play::State& state,
                                            const NodePlace& line, bool answer);

} // namespace zem::walk
