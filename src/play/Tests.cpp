#include "base/LineText.h"
#include "play/Interpreter.h"
#include "play/Limits.h"
#include "play/NameSearch.h"
#include "play/WorldRecords.h"

#include <utility>

/// The conditions of "if" lines.
namespace zem::play {

bool Interpreter::Holds(const Book& book, const Node& node) {
    const Source source = SourceOf(book, node);
    Trace(source, TraceEntry::Ran);
    bool holds = true;
    for (std::uint32_t k = 0; k < node.count; ++k) {
        const BookCondition& condition = book.conditions[node.first + k];
        // From left to right; what cannot change the answer any more is not asked.
        const bool isOpen = k == 0 || condition.isOr != holds;
        if (!isOpen)
            continue;
        if (!Spend(Limits::PerCondition))
            return false;
        isAsking_ = true;
        holds = Holds(condition, source) != condition.isNegated;
        isAsking_ = false;
        if (stop_ != Stop::None)
            return false;
        Trace(source, holds ? TraceEntry::True : TraceEntry::False, static_cast<std::int32_t>(k),
              std::exchange(fault_, {}));
    }
    return holds;
}

bool Interpreter::Holds(const BookCondition& condition, const Source& source) {
    const Arguments& arguments = condition.arguments;
    switch (condition.test) {
    case Test::Unknown:
        NoteFault("this is no condition");
        Warn(source, "\"if " + arguments.text + "\" is no condition", true);
        return false;
    case Test::Has:
        if (world_.FindItem(arguments.name) == nullptr) {
            WarnLacks(source, "item", world_.GetNames().Name(Kind::Item, arguments.name));
            return false;
        }
        return state_[CellOf(Kind::Item, arguments.name)] != 0;
    case Test::EmptyHanded:
        Spend(world_.Items().size());
        for (const WorldItem& item : world_.Items())
            if (state_[CellOf(Kind::Item, item.number)] != 0)
                return false;
        return true;
    case Test::Flag:
        return state_[CellOf(Kind::Flag, arguments.name)] != 0;
    case Test::Timer:
        return state_[CellOf(Kind::Timer, arguments.name) + TimerOn] != 0;
    case Test::Turns:
        return state_[Turns] >= LeadingInteger(PutIn(arguments.text));
    case Test::Chance: {
        const std::int64_t percent = LeadingInteger(PutIn(arguments.text));
        return percent >= 100 || (percent > 0 && state_.Roll(100) <= percent);
    }
    case Test::Ask:
        return AskYesNo(arguments.text, source, false).value_or(false);
    case Test::Here:
    case Test::Exists:
    case Test::Visible:
    case Test::ObjectIn:
    case Test::CharacterIn:
        return HoldsForThing(condition, source);
    case Test::In:
    case Test::Been:
    case Test::RoomOn:
    case Test::Exit:
    case Test::FirstVisit:
        return HoldsForRoom(condition, source);
    default:
        return HoldsForVariable(condition, source);
    }
}

bool Interpreter::HoldsForThing(const BookCondition& condition, const Source& source) {
    const Arguments& arguments = condition.arguments;
    const Names& names = world_.GetNames();
    const bool isCharacter = arguments.character != None && world_.FindThing(arguments.character) != nullptr;
    const Number thing = isCharacter ? arguments.character : arguments.object;
    if (thing == None || world_.FindThing(thing) == nullptr) {
        const Number wanted = arguments.object == None ? arguments.character : arguments.object;
        WarnLacks(source,
                  arguments.object == None      ? "character"
                  : arguments.character == None ? "object"
                                                : "character or object",
                  names.Name(Kind::Thing, wanted).substr(1));
        return false;
    }
    const Cell cell = CellOf(Kind::Thing, thing);
    switch (condition.test) {
    case Test::Here:
        return IsThere(world_, state_, thing);
    case Test::Exists:
        return (state_[cell + Switches] & Off) == 0;
    case Test::Visible:
        return IsThere(world_, state_, thing) && !world_.FindThing(thing)->record->Invisible;
    default:
        if (world_.FindRoom(arguments.room) == nullptr) {
            WarnLacks(source, "room", names.Name(Kind::Room, arguments.room));
            return false;
        }
        return state_[cell + Switches] == 0 &&
               state_[cell + Where] == static_cast<std::int64_t>(arguments.room) + 1;
    }
}

bool Interpreter::HoldsForRoom(const BookCondition& condition, const Source& source) {
    const Arguments& arguments = condition.arguments;
    if (condition.test == Test::FirstVisit)
        return state_[PlayerRoom] != 0 &&
               state_[CellOf(Kind::Room, static_cast<Number>(state_[PlayerRoom] - 1)) + Visits] == 1;
    const WorldRoom* room = world_.FindRoom(arguments.room);
    if (room == nullptr) {
        WarnLacks(source, "room", world_.GetNames().Name(Kind::Room, arguments.room));
        return false;
    }
    const Cell cell = CellOf(Kind::Room, arguments.room);
    const bool isHere = state_[PlayerRoom] == static_cast<std::int64_t>(arguments.room) + 1;
    switch (condition.test) {
    case Test::In:
        return isHere;
    case Test::Been: // of the room he is in, before this visit
        return state_[cell + Visits] > (isHere ? 1 : 0);
    case Test::RoomOn:
        return state_[cell + RoomOff] == 0;
    default:
        break;
    }
    if (arguments.direction >= DirectionCount) {
        Warn(source, "the condition names no direction");
        return false;
    }
    const std::int64_t exit = state_[cell + FirstExit + arguments.direction];
    return (exit & ExitClosed) == 0 && (exit >> 1 != 0 || room->exits[arguments.direction].exists);
}

bool Interpreter::HoldsForVariable(const BookCondition& condition, const Source& source) {
    const Arguments& arguments = condition.arguments;
    if (condition.test == Test::Amount) {
        if (world_.FindCollectable(arguments.name) == nullptr) {
            WarnLacks(source, "collectable", world_.GetNames().Name(Kind::Collectable, arguments.name));
            return false;
        }
        return state_[CellOf(Kind::Collectable, arguments.name)] >= RoundedNumber(PutIn(arguments.text));
    }
    const Value held = state_[CellOf(Kind::Variable, arguments.name)];
    if (condition.test == Test::Empty)
        return TextTable::IsEmpty(held);
    const std::string wanted = PutIn(arguments.text);
    const std::int64_t number = state_.Texts().ToNumber(held);
    switch (condition.test) {
    case Test::Least:
        return number >= LeadingInteger(wanted);
    case Test::More:
        return number > LeadingInteger(wanted);
    case Test::Less:
        return number < LeadingInteger(wanted);
    default:
        break;
    }
    const std::string text = state_.Texts().Text(held);
    Spend(text.size() + wanted.size());
    if (condition.test == Test::Contains)
        return Fold(text).find(Fold(wanted)) != std::string::npos;
    bool isNumber = false;
    bool wantedIsNumber = false;
    const std::int64_t first = LeadingInteger(text, &isNumber);
    const std::int64_t second = LeadingInteger(wanted, &wantedIsNumber);
    const bool isEqual = isNumber && wantedIsNumber ? first == second : Fold(text) == Fold(wanted);
    return isEqual == (condition.test == Test::Equal);
}

} // namespace zem::play
