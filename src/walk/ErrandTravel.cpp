#include "play/Meaning.h"
#include "walk/Errand.h"

#include <algorithm>

/// Going somewhere, and doing there what an errand came for.
namespace zem::walk {

using namespace zem::play;

namespace {
constexpr int MostDetours = 4; // where a road is closed, or leads elsewhere
}

bool Errand::Act(const Root& root, const PlannedAnswers& answers, int depth) {
    const auto item = [&] { return world_.FindItem(root.item)->name; };
    if (root.item != None && world_.FindItem(root.item) == nullptr)
        return false;
    switch (root.kind) {
    case Root::Command: {
        const std::vector<std::string> lines = options_.LinesOf(*root.command);
        return !lines.empty() && Do(lines[player_.Draw(lines.size())], answers);
    }
    case Root::Use:
        return Do("use " + item(), answers);
    case Root::UseOn:
        return Do("use " + item() + " on " + NameOfThing(root.thing), answers);
    case Root::Give:
        return Do("give " + item() + " to " + NameOfThing(root.thing), answers);
    case Root::LookAt:
        return Do("look at " + NameOfThing(root.thing), answers);
    case Root::Take:
        return Do("take " + NameOfThing(root.thing), answers);
    case Root::SpeakTo:
        return Do("speak to " + NameOfThing(root.thing), answers);
    case Root::Exit:
        return Do(std::string(DirectionNames[static_cast<std::size_t>(root.index)]), answers);
    case Root::Place: {
        const WorldPlace& place = world_.FindRoom(root.room)->places[static_cast<std::size_t>(root.index)];
        return Do("go to " + world_.GetNames().Name(Kind::Room, place.room), answers);
    }
    case Root::Enter:
        if (Holds(world_, player_.Now(), PlayerIsIn(root.room)) && !Leave())
            return false;
        return Travel(root.room, depth - 1);
    case Root::Description:
        return Do("look", answers);
    case Root::EveryTurn:
        return Do("wait", answers);
    case Root::Timer:
        return Do({}, answers);
    default:
        return false;
    }
}

bool Errand::MakeThingHere(Number thing, int depth) {
    if (world_.FindThing(thing) == nullptr)
        return false;
    const Cell cell = world_.GetNames().CellOf(Kind::Thing, thing);
    const Fact isShown{Test::Exists, true, thing, None, DirectionCount, {}};
    if (player_.Now()[cell + Switches] != 0 && !Change(isShown, depth - 1))
        return false;
    const std::int64_t room = player_.Now()[cell + Where];
    return room != 0 && Travel(static_cast<Number>(room - 1), depth - 1) &&
           Holds(world_, player_.Now(), ThingIsHere(thing));
}

bool Errand::Leave() {
    const std::int64_t here = player_.Now()[PlayerRoom];
    const WorldRoom& room = *world_.FindRoom(static_cast<Number>(here - 1));
    const auto first = static_cast<std::uint8_t>(player_.Draw(DirectionCount));
    for (std::uint8_t k = 0; k < DirectionCount; ++k) {
        const auto direction = static_cast<std::uint8_t>((first + k) % DirectionCount);
        const bool isScripted = room.exits[direction].hasScript;
        if (!isScripted && ExitLeadsTo(world_, player_.Now(), room, direction) == None)
            continue;
        if (!Do(std::string(DirectionNames[direction])))
            return false;
        if (player_.Now()[PlayerRoom] != here)
            return true;
    }
    for (const WorldPlace& place : room.places) {
        if (!Do("go to " + world_.GetNames().Name(Kind::Room, place.room)))
            return false;
        if (player_.Now()[PlayerRoom] != here)
            return true;
    }
    return false;
}

bool Errand::Travel(Number room, int depth) {
    if (depth <= 0 || world_.FindRoom(room) == nullptr)
        return false;
    for (int round = 0; round < MostDetours && GoesOn(); ++round) {
        if (Holds(world_, player_.Now(), PlayerIsIn(room)))
            return true;
        const auto way = roads_.WayTo(player_.Now(), room);
        if (!way)
            break;
        const auto closed =
            std::find_if(way->begin(), way->end(), [](const Road& road) { return !road.isOpen; });
        if (closed != way->end()) {
            const bool isOpened = closed->scripted != nullptr && closed->scripted->chain.empty()
                                      ? RunChain(closed->scripted->node, {}, depth - 1)
                                      : MakeAllHold(roads_.NeedsOf(player_.Now(), *closed), depth - 1);
            if (!isOpened)
                return false;
            continue;
        }
        for (const Road& road : *way) {
            if (!Do(roads_.LineOf(road)))
                return Holds(world_, player_.Now(), PlayerIsIn(room));
            if (!Holds(world_, player_.Now(), PlayerIsIn(road.to)))
                break; // it led elsewhere; the way from there is another
        }
    }
    if (Holds(world_, player_.Now(), PlayerIsIn(room)))
        return true;
    const std::vector<NodeId>& gotos = causes_.GotosTo(room);
    return !gotos.empty() && isRunning_ && RunChain(gotos[player_.Draw(gotos.size())], {}, depth - 1) &&
           Holds(world_, player_.Now(), PlayerIsIn(room));
}

} // namespace zem::walk
