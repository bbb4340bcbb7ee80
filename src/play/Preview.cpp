#include "play/Preview.h"

#include "play/Interpreter.h"

#include <utility>

namespace zem::play {

namespace {

constexpr std::int64_t Seed = 1; // the same room reads the same each time

Outcome Show(const World& world, Input input) {
    State state(world.NamesOfGame(), world.Start(), world.ThingOrder());
    state.Set(Chance, Seed);
    if (input.kind == Input::LookAt) {
        state.Set(PlayerRoom, static_cast<std::int64_t>(input.room) + 1);
        state.Set(world.GetNames().CellOf(Kind::Room, input.room) + Visits, 1);
    }
    return Interpreter(world, state, input, {}).Run().outcome;
}

} // namespace

Outcome PreviewRoom(const World& world, const std::string& room) {
    Input input;
    input.kind = Input::BeginAt;
    input.room = world.GetNames().Find(Kind::Room, room);
    return world.FindRoom(input.room) == nullptr ? Outcome() : Show(world, std::move(input));
}

Outcome PreviewThing(const World& world, const std::string& room, const std::string& thing) {
    Input input;
    input.kind = Input::LookAt;
    input.room = world.GetNames().Find(Kind::Room, room);
    input.thing = world.GetNames().Find(Kind::Thing, thing);
    const bool isThere = world.FindRoom(input.room) != nullptr && world.FindThing(input.thing) != nullptr;
    return isThere ? Show(world, std::move(input)) : Outcome();
}

} // namespace zem::play
