#include "base/LineText.h"
#include "play/Interpreter.h"
#include "play/Limits.h"
#include "play/WorldRecords.h"

/// The commands that change something.
namespace zem::play {

namespace {

/// The switches of a thing after "show", "hide", "object on" and so on.
std::int64_t Switched(Op op, std::int64_t switches) {
    switch (op) {
    case Op::Show:
    case Op::Reveal:
        return switches & ~std::int64_t{Hidden};
    case Op::Hide:
    case Op::Conceal:
        return switches | Hidden;
    case Op::ObjectOn:
    case Op::CharacterOn:
        return switches & ~std::int64_t{Off};
    default:
        return switches | Off;
    }
}

} // namespace

bool Interpreter::ExecuteThings(const Node& node, const Source& source) {
    const Arguments& arguments = node.arguments;
    const Names& names = world_.GetNames();
    if (node.op == Op::LoseAll) {
        for (const WorldItem& item : world_.Items())
            state_.Set(CellOf(Kind::Item, item.number), 0);
        return Spend(world_.Items().size());
    }
    if (node.op == Op::Give || node.op == Op::Lose) {
        if (world_.FindItem(arguments.name) == nullptr)
            return WarnLacks(source, "item", names.Name(Kind::Item, arguments.name));
        state_.Set(CellOf(Kind::Item, arguments.name), node.op == Op::Give ? 1 : 0);
        gaveItem_ = gaveItem_ || node.op == Op::Give;
        return true;
    }
    const bool isCharacter = arguments.character != None && world_.FindThing(arguments.character) != nullptr;
    const Number thing = isCharacter ? arguments.character : arguments.object;
    if (thing == None || world_.FindThing(thing) == nullptr) {
        const bool wantsCharacter = arguments.object == None;
        const Number wanted = wantsCharacter ? arguments.character : arguments.object;
        return WarnLacks(source,
                         wantsCharacter                ? "character"
                         : arguments.character != None ? "character or object"
                                                       : "object",
                         names.Name(Kind::Thing, wanted).substr(1));
    }
    const Cell cell = CellOf(Kind::Thing, thing);
    if (node.op == Op::Bring || node.op == Op::MoveObject || node.op == Op::MoveCharacter) {
        if (node.op != Op::Bring && world_.FindRoom(arguments.room) == nullptr)
            return WarnLacks(source, "room", names.Name(Kind::Room, arguments.room));
        const std::int64_t room =
            node.op == Op::Bring ? state_[PlayerRoom] : static_cast<std::int64_t>(arguments.room) + 1;
        if (room == 0)
            return true;
        state_.Set(cell + Where, room);
        return Spend(state_.ThingsIn(room).size() / 4);
    }
    state_.Set(cell + Switches, Switched(node.op, state_[cell + Switches]));
    return true;
}

bool Interpreter::ExecuteRooms(const Node& node, const Source& source) {
    const Arguments& arguments = node.arguments;
    const Names& names = world_.GetNames();
    if (node.op == Op::Look)
        return Describe();
    if (node.op == Op::Back)
        return state_[RoomBefore] == 0 || Enter(static_cast<Number>(state_[RoomBefore] - 1), Message::BadGo);
    if (world_.FindRoom(arguments.room) == nullptr)
        return WarnLacks(source, "room", names.Name(Kind::Room, arguments.room));
    if (node.op == Op::Goto)
        return Enter(arguments.room, Message::BadGo);
    const Cell room = CellOf(Kind::Room, arguments.room);
    if (node.op == Op::RoomOn || node.op == Op::RoomOff) {
        state_.Set(room + RoomOff, node.op == Op::RoomOff ? 1 : 0);
        return true;
    }
    if (arguments.direction >= DirectionCount)
        return Warn(source, "the line names no direction");
    const Cell exit = room + FirstExit + arguments.direction;
    if (node.op == Op::ExitTo) {
        if (world_.FindRoom(arguments.otherRoom) == nullptr)
            return WarnLacks(source, "room", names.Name(Kind::Room, arguments.otherRoom));
        state_.Set(exit,
                   ((static_cast<std::int64_t>(arguments.otherRoom) + 1) << 1) | (state_[exit] & ExitClosed));
    } else
        state_.Set(exit, node.op == Op::ExitOff ? state_[exit] | ExitClosed : state_[exit] & ~ExitClosed);
    return true;
}

bool Interpreter::ExecuteValues(const Node& node, const Source& source) {
    const Arguments& arguments = node.arguments;
    if (node.op == Op::FlagOn || node.op == Op::FlagOff || node.op == Op::FlagFlip) {
        const Cell flag = CellOf(Kind::Flag, arguments.name);
        state_.Set(flag, node.op == Op::FlagOn ? 1 : node.op == Op::FlagOff ? 0 : 1 - state_[flag]);
        return true;
    }
    if (node.op == Op::Gain || node.op == Op::Spend || node.op == Op::SetAmount)
        return ChangeAmount(node, source);
    const Cell variable = CellOf(Kind::Variable, arguments.name);
    if (node.op == Op::Ask) {
        if (!PrintLine(arguments.text, source))
            return false;
        const std::optional<std::string> answer = NextAnswer(Need::Text);
        if (answer)
            SetVariable(arguments.name, Trim(*answer));
        return answer.has_value();
    }
    const std::string value = PutIn(arguments.text);
    const std::int64_t before = state_.Texts().ToNumber(state_[variable]);
    const std::int64_t number = LeadingInteger(value);
    switch (node.op) {
    case Op::Set:
        SetVariable(arguments.name, value);
        break;
    case Op::Append:
        SetVariable(arguments.name, state_.Text(variable) + value);
        return Spend(Limits::TextInVariable / 16 + value.size());
    case Op::Add:
        state_.Set(variable, FromNumber(Bounded(before + number)));
        break;
    case Op::Subtract:
        state_.Set(variable, FromNumber(Bounded(before - number)));
        break;
    case Op::Multiply:
        state_.Set(variable, FromNumber(Bounded(before * number)));
        break;
    case Op::Roll:
        state_.Set(variable, FromNumber(state_.Roll(number)));
        break;
    default:
        break;
    }
    return stop_ == Stop::None;
}

bool Interpreter::ChangeAmount(const Node& node, const Source& source) {
    const WorldCollectable* collectable = world_.FindCollectable(node.arguments.name);
    if (collectable == nullptr)
        return WarnLacks(source, "collectable",
                         world_.GetNames().Name(Kind::Collectable, node.arguments.name));
    const Cell cell = CellOf(Kind::Collectable, node.arguments.name);
    const std::int64_t amount = RoundedNumber(PutIn(node.arguments.text));
    if (node.op == Op::Spend && state_[cell] - amount < collectable->lowest)
        return PrintMessage(Message::BadCollectable);
    const std::int64_t value = node.op == Op::SetAmount ? amount
                               : node.op == Op::Gain    ? state_[cell] + amount
                                                        : state_[cell] - amount;
    state_.Set(cell, InRange(*collectable, value));
    return stop_ == Stop::None;
}

} // namespace zem::play
