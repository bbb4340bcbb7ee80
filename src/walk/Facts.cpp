#include "walk/Facts.h"

#include "play/Fold.h"
#include "play/NameSearch.h"

#include <algorithm>
#include <utility>

namespace zem::walk {

using namespace zem::play;

namespace {

constexpr std::size_t MostWays = 32;

bool IsAboutThing(Test test) {
    return test == Test::Here || test == Test::Exists || test == Test::Visible || test == Test::ObjectIn ||
           test == Test::CharacterIn;
}

bool HoldsOfRoom(const World& world, const State& state, const Fact& fact) {
    if (fact.test == Test::FirstVisit) {
        const std::int64_t here = state[PlayerRoom];
        return here != 0 &&
               state[world.GetNames().CellOf(Kind::Room, static_cast<Number>(here - 1)) + Visits] == 1;
    }
    const WorldRoom* room = world.FindRoom(fact.room);
    if (room == nullptr)
        return false;
    const Cell cell = world.GetNames().CellOf(Kind::Room, fact.room);
    const bool isIn = state[PlayerRoom] == static_cast<std::int64_t>(fact.room) + 1;
    if (fact.test == Test::In)
        return isIn;
    if (fact.test == Test::Been)
        return state[cell + Visits] > (isIn ? 1 : 0);
    if (fact.test == Test::RoomOn)
        return state[cell + RoomOff] == 0;
    if (fact.direction >= DirectionCount)
        return false;
    const std::int64_t exit = state[cell + FirstExit + fact.direction];
    return (exit & ExitClosed) == 0 && (exit >> 1 != 0 || room->exits[fact.direction].exists);
}

bool HoldsOfThing(const World& world, const State& state, const Fact& fact) {
    const WorldThing* thing = world.FindThing(fact.name);
    if (thing == nullptr)
        return false;
    const Cell cell = world.GetNames().CellOf(Kind::Thing, fact.name);
    switch (fact.test) {
    case Test::Here:
        return IsThere(world, state, fact.name);
    case Test::Exists:
        return (state[cell + Switches] & Off) == 0;
    case Test::Visible:
        return IsThere(world, state, fact.name) && !thing->record->Invisible;
    default:
        return state[cell + Switches] == 0 && state[cell + Where] == static_cast<std::int64_t>(fact.room) + 1;
    }
}

/// Whether a fact is true, whatever is wanted of it.
bool IsTrue(const World& world, const State& state, const Fact& fact) {
    const Names& names = world.GetNames();
    if (IsAboutThing(fact.test))
        return HoldsOfThing(world, state, fact);
    switch (fact.test) {
    case Test::Has:
        return world.FindItem(fact.name) != nullptr && state[names.CellOf(Kind::Item, fact.name)] != 0;
    case Test::Flag:
        return state[names.CellOf(Kind::Flag, fact.name)] != 0;
    case Test::Timer:
        return state[names.CellOf(Kind::Timer, fact.name) + TimerOn] != 0;
    case Test::EmptyHanded:
        return std::none_of(world.Items().begin(), world.Items().end(), [&](const WorldItem& item) {
            return state[names.CellOf(Kind::Item, item.number)] != 0;
        });
    case Test::Turns:
        return state[Turns] >= LeadingInteger(fact.text);
    case Test::In:
    case Test::Been:
    case Test::RoomOn:
    case Test::Exit:
    case Test::FirstVisit:
        return HoldsOfRoom(world, state, fact);
    case Test::Amount:
        return world.FindCollectable(fact.name) != nullptr &&
               Compares(state, fact, state[names.CellOf(Kind::Collectable, fact.name)]);
    case Test::Unknown:
        return false;
    default:
        return Compares(state, fact, state[names.CellOf(Kind::Variable, fact.name)]);
    }
}

/// The ways in which the first conditions come to an answer, and one condition more.
using Ways = std::vector<std::vector<Fact>>;

void AddAnother(Ways& ways, const Fact& fact) {
    ways.push_back({fact});
}

void AddToEach(Ways& ways, const Fact& fact) {
    for (std::vector<Fact>& way : ways)
        way.push_back(fact);
}

} // namespace

Fact FactOf(const World& world, const BookCondition& condition, bool wanted) {
    const Arguments& arguments = condition.arguments;
    Fact fact{condition.test, wanted != condition.isNegated, arguments.name,
              arguments.room, arguments.direction,           arguments.text};
    if (IsAboutThing(fact.test)) {
        const bool isCharacter =
            arguments.character != None && world.FindThing(arguments.character) != nullptr;
        fact.name = isCharacter ? arguments.character : arguments.object;
    }
    return fact;
}

bool Compares(const State& state, const Fact& fact, std::int64_t value) {
    const std::int64_t wanted = LeadingInteger(fact.text);
    switch (fact.test) {
    case Test::Amount:
        return value >= wanted;
    case Test::Empty:
        return TextTable::IsEmpty(value);
    case Test::Least:
        return state.Texts().ToNumber(value) >= wanted;
    case Test::More:
        return state.Texts().ToNumber(value) > wanted;
    case Test::Less:
        return state.Texts().ToNumber(value) < wanted;
    default:
        break;
    }
    const std::string text = Fold(state.Texts().Text(value));
    const std::string other = Fold(std::string(fact.text));
    if (fact.test == Test::Contains)
        return text.find(other) != std::string::npos;
    return (text == other) == (fact.test == Test::Equal);
}

bool Holds(const World& world, const State& state, const Fact& fact) {
    if (fact.test == Test::Chance || fact.test == Test::Ask)
        return true;
    return IsTrue(world, state, fact) == fact.wanted;
}

Cell CellOf(const World& world, const Fact& fact) {
    const Names& names = world.GetNames();
    const auto of = [&](Kind kind, Number number) {
        return number < names.Count(kind) ? names.CellOf(kind, number) : Cell{FirstWait};
    };
    if (IsAboutThing(fact.test))
        return of(Kind::Thing, fact.name);
    switch (fact.test) {
    case Test::Has:
        return of(Kind::Item, fact.name);
    case Test::Flag:
        return of(Kind::Flag, fact.name);
    case Test::Timer:
        return of(Kind::Timer, fact.name);
    case Test::Amount:
        return of(Kind::Collectable, fact.name);
    case Test::RoomOn:
        return fact.room < names.Count(Kind::Room) ? of(Kind::Room, fact.room) + RoomOff : Cell{FirstWait};
    case Test::Exit:
        return fact.room < names.Count(Kind::Room) && fact.direction < DirectionCount
                   ? of(Kind::Room, fact.room) + FirstExit + fact.direction
                   : Cell{FirstWait};
    case Test::Equal:
    case Test::Differ:
    case Test::Contains:
    case Test::Empty:
    case Test::Least:
    case Test::More:
    case Test::Less:
        return of(Kind::Variable, fact.name);
    default:
        return FirstWait;
    }
}

std::vector<std::vector<Fact>> WaysTo(const World& world, const Book& book, const Node& line, bool answer) {
    // From left to right: "or" adds ways to "true", "and" adds facts to each of them; for "false" it is the
    // other way round.
    Ways ways;
    for (std::uint32_t k = 0; k < line.count; ++k) {
        const BookCondition& condition = book.conditions[line.first + k];
        const Fact fact = FactOf(world, condition, answer);
        if (k == 0 || condition.isOr == answer)
            AddAnother(ways, fact);
        else
            AddToEach(ways, fact);
    }
    if (line.count == 0 && answer)
        ways.push_back({});
    if (ways.size() > MostWays)
        ways.resize(MostWays);
    return ways;
}

} // namespace zem::walk
