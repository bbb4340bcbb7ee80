#include "base/LineText.h"
#include "play/Interpreter.h"
#include "play/Limits.h"
#include "play/NameSearch.h"

/// Entering and describing rooms.
namespace zem::play {

namespace {

char Capital(char letter) {
    for (int code = 0; code < 256; ++code) {
        const char capital = static_cast<char>(code);
        if (capital != letter && Lower(capital) == letter)
            return capital;
    }
    return letter;
}

/// The parts with one blank between them, even where an author has put one at an end.
std::string Joined(std::initializer_list<std::string_view> parts) {
    std::string joined;
    for (const std::string_view part : parts)
        if (const std::string_view trimmed = Trim(part); !trimmed.empty())
            joined.append(joined.empty() ? "" : " ").append(trimmed);
    return joined;
}

} // namespace

const WorldRoom* Interpreter::Here() const {
    return state_[PlayerRoom] == 0 ? nullptr : world_.FindRoom(static_cast<Number>(state_[PlayerRoom] - 1));
}

bool Interpreter::Enter(Number room, Message whenClosed) {
    if (!IsOpenRoom(world_, state_, room))
        return PrintMessage(whenClosed);
    if (enterDepth_ > Limits::Entrances)
        return StopAt(Stop::Limit);
    const std::int64_t packed = static_cast<std::int64_t>(room) + 1;
    if (state_[PlayerRoom] != packed)
        state_.Set(RoomBefore, state_[PlayerRoom]);
    state_.Set(PlayerRoom, packed);
    const Cell visits = CellOf(Kind::Room, room) + Visits;
    state_.Set(visits, state_[visits] + 1);
    const WorldRoom* entered = world_.FindRoom(room);
    NoteHit(entered->book);
    if (!Describe())
        return false;
    ++enterDepth_;
    const bool goesOn = Run({&entered->book, entered->enter});
    --enterDepth_;
    return goesOn;
}

bool Interpreter::PrintHeading(const WorldRoom& room) {
    const Room& record = *room.record;
    printer_.Begin({&room.book, ScriptField::RoomLook, 0, 0});
    printer_.NewLine();
    printer_.CurrentStyle().bold = true;
    std::string name = Joined({record.Prefix, record.Alias.empty() ? record.Name : record.Alias});
    if (record.InDescription.empty()) {
        if (!name.empty())
            name.front() = Capital(name.front());
    } else {
        if (!PrintPart(Trim(record.InDescription)))
            return false;
        printer_.Raw(" ");
        name += '.';
    }
    printer_.Raw(name);
    printer_.CurrentStyle().bold = false;
    printer_.NewLine();
    return Spend(name.size());
}

bool Interpreter::Describe() {
    const WorldRoom* room = Here();
    if (room == nullptr)
        return true;
    if (!PrintHeading(*room))
        return false;
    if (room->description >= 0) {
        if (!Run({&room->book, room->description}))
            return false;
    } else if (!room->record->Look.empty() &&
               !PrintLine(room->record->Look, {&room->book, ScriptField::RoomLook, 0, 1}))
        return false;
    const WorldGame& game = *world_.GameBlocks().front();
    if (!Run({&game.book, game.description}))
        return false;
    room = Here(); // a script may have led elsewhere
    std::vector<std::string> objects;
    std::vector<std::string> people;
    for (const Number thing : state_.ThingsIn(state_[PlayerRoom])) {
        if (!Spend(1))
            return false;
        const WorldThing* there = world_.FindThing(thing);
        if (!IsThere(world_, state_, thing))
            continue;
        NoteHit(there->book);
        if (there->record->Invisible)
            continue;
        std::string name = Joined({there->record->Prefix, there->record->Name, there->record->Suffix});
        if (!name.empty()) // of a thing without a name a list can say nothing
            (there->isCharacter ? people : objects).push_back(std::move(name));
    }
    return PrintList(Message::YouCanSee, objects) && PrintList(Message::PeopleHere, people) &&
           PrintList(Message::YouCanGo, OpenExits(*room));
}

std::vector<std::string> Interpreter::OpenExits(const WorldRoom& room) const {
    std::vector<std::string> exits;
    const Cell first = CellOf(Kind::Room, room.number) + FirstExit;
    for (std::uint8_t k = 0; k < DirectionCount; ++k) {
        const std::int64_t cell = state_[first + k];
        const bool isScripted = room.exits[k].exists && room.exits[k].room == None && cell == 0;
        if (isScripted || ExitLeadsTo(world_, state_, room, k) != None)
            exits.emplace_back(DirectionNames[k]);
    }
    for (const WorldPlace& place : room.places)
        if (IsOpenRoom(world_, state_, place.room))
            exits.push_back(Joined({"to", place.prefix, PlaceName(place)}));
    return exits;
}

std::string_view Interpreter::PlaceName(const WorldPlace& place) const {
    return world_.GetNames().Name(Kind::Room, place.room);
}

} // namespace zem::play
