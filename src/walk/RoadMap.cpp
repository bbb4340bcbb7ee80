#include "walk/RoadMap.h"

#include "play/Meaning.h"

#include <algorithm>

namespace zem::walk {

using namespace zem::play;

namespace {

constexpr std::uint32_t Detour = 12; // what a road costs that is not open
constexpr std::uint32_t NotReached = UINT32_MAX;
constexpr std::uint32_t FarAway = 300; // further than anybody goes for something

} // namespace

std::optional<std::vector<Fact>> EasiestWay(const World& world, const State& state, const NodePlace& line,
                                            bool answer) {
    std::optional<std::vector<Fact>> best;
    std::size_t fewest = SIZE_MAX;
    for (std::vector<Fact>& way : WaysTo(world, *line.book, *line.node, answer)) {
        const auto lacking = static_cast<std::size_t>(std::count_if(
            way.begin(), way.end(), [&](const Fact& fact) { return !Holds(world, state, fact); }));
        if (lacking >= fewest)
            continue;
        fewest = lacking;
        best = std::move(way);
    }
    return best;
}

void AddNeedsOf(const World& world, const CauseMap& causes, const State& state, NodeId node,
                std::vector<Fact>& facts) {
    std::vector<std::vector<Fact>> outwards;
    for (const NodePlace* place = &causes.At(node); place->guard != NoNode; place = &causes.At(place->guard))
        if (auto way = EasiestWay(world, state, causes.At(place->guard), place->answer))
            outwards.push_back(*std::move(way));
    for (auto way = outwards.rbegin(); way != outwards.rend(); ++way)
        facts.insert(facts.end(), way->begin(), way->end());
}

std::vector<Fact> NeedsOfChain(const World& world, const CauseMap& causes, const State& state,
                               const std::vector<NodeId>& chain) {
    std::vector<Fact> facts;
    for (const NodeId node : chain)
        AddNeedsOf(world, causes, state, node, facts);
    return facts;
}

bool RoadMap::IsOpen(const State& state, const ScriptedExit& exit) const {
    if (exit.chain.empty())
        return false; // when it has opened, it is an exit like others
    for (const NodeId node : exit.chain)
        for (const NodePlace* place = &causes_.At(node); place->guard != NoNode;
             place = &causes_.At(place->guard)) {
            const NodePlace& guard = causes_.At(place->guard);
            const auto holds = [&](const Fact& fact) { return Holds(world_, state, fact); };
            if (!OutcomesOf(world_, *guard.book, *guard.node, holds).Can(place->answer))
                return false;
        }
    return true;
}

void RoadMap::AddRoads(const State& state, Number from) {
    roads_.clear();
    const WorldRoom& room = *world_.FindRoom(from);
    for (std::uint8_t k = 0; k < DirectionCount; ++k) {
        if (room.exits[k].hasScript)
            continue;
        const Number to = ExitLeadsTo(world_, state, room, k);
        if (to != None)
            roads_.push_back({from, to, DirectionNames[k], None, nullptr, true});
        else if (room.exits[k].exists && room.exits[k].room != None &&
                 world_.FindRoom(room.exits[k].room) != nullptr)
            roads_.push_back({from, room.exits[k].room, DirectionNames[k], None, nullptr, false});
    }
    for (const WorldPlace& place : room.places)
        if (!place.hasScript && world_.FindRoom(place.room) != nullptr)
            roads_.push_back(
                {from, place.room, {}, place.room, nullptr, IsOpenRoom(world_, state, place.room)});
    for (const ScriptedExit& exit : causes_.ScriptedExitsOf(from)) {
        if (world_.FindRoom(exit.to) == nullptr)
            continue;
        Road road{from, exit.to, {}, None, &exit, IsOpen(state, exit)};
        const Root& root = causes_.Roots()[exit.root];
        if (exit.chain.empty())
            road.direction = DirectionNames[exit.direction];
        else if (root.kind == Root::Exit)
            road.direction = DirectionNames[static_cast<std::size_t>(root.index)];
        else
            road.place = room.places[static_cast<std::size_t>(root.index)].room;
        roads_.push_back(road);
    }
}

std::optional<std::vector<Road>> RoadMap::WayTo(const State& state, Number room) {
    costs_.resize(world_.GetNames().Count(Kind::Room), NotReached);
    ways_.resize(costs_.size());
    for (const Number number : touched_)
        costs_[number] = NotReached;
    touched_.clear();
    queue_.assign(1, {});
    const auto begin = static_cast<Number>(state[PlayerRoom] - 1);
    costs_[begin] = 0;
    touched_.push_back(begin);
    queue_[0].push_back(begin);
    for (std::uint32_t cost = 0; cost < queue_.size() && cost < FarAway; ++cost)
        for (std::size_t k = 0; k < queue_[cost].size(); ++k) {
            const Number from = queue_[cost][k];
            if (costs_[from] != cost)
                continue;
            if (from == room) {
                std::vector<Road> way;
                for (Number at = room; at != begin; at = ways_[at].from)
                    way.push_back(ways_[at]);
                std::reverse(way.begin(), way.end());
                return way;
            }
            ++work_;
            AddRoads(state, from);
            for (const Road& road : roads_) {
                const std::uint32_t longer = cost + (road.isOpen ? 1 : Detour);
                if (longer >= costs_[road.to])
                    continue;
                if (costs_[road.to] == NotReached)
                    touched_.push_back(road.to);
                costs_[road.to] = longer;
                ways_[road.to] = road;
                if (queue_.size() <= longer)
                    queue_.resize(longer + std::size_t{1});
                queue_[longer].push_back(road.to);
            }
        }
    return std::nullopt;
}

std::string RoadMap::LineOf(const Road& road) const {
    return road.direction.empty() ? "go to " + world_.GetNames().Name(Kind::Room, road.place)
                                  : std::string(road.direction);
}

std::vector<Fact> RoadMap::NeedsOf(const State& state, const Road& road) const {
    if (road.scripted != nullptr)
        return NeedsOfChain(world_, causes_, state, road.scripted->chain);
    std::vector<Fact> facts;
    for (std::uint8_t k = 0; k < DirectionCount; ++k)
        if (road.direction == DirectionNames[k])
            facts.push_back({Test::Exit, true, None, road.from, k, {}});
    facts.push_back({Test::RoomOn, true, None, road.to, DirectionCount, {}});
    return facts;
}

} // namespace zem::walk
