#include "play/StoryPlaces.h"

#include "kel/ScriptLine.h"

#include <utility>

namespace zem::play {

namespace {

/// The compass of a record in the order of the directions.
constexpr FieldId ExitFields[DirectionCount] = {
    FieldId::RoomNorth,     FieldId::RoomNorthEast, FieldId::RoomEast,
    FieldId::RoomSouthEast, FieldId::RoomSouth,     FieldId::RoomSouthWest,
    FieldId::RoomWest,      FieldId::RoomNorthWest, FieldId::RoomOut};

Place InGame(const Source& source) {
    switch (source.field) {
    case ScriptField::Start:
        return Place::Of({}, FieldId::GameStartScript);
    case ScriptField::GameDescription:
        return Place::Of({}, FieldId::GameDescription);
    case ScriptField::BeforeTurn:
        return Place::Of({}, FieldId::GameBeforeTurnScript);
    case ScriptField::AfterTurn:
        return Place::Of({}, FieldId::GameAfterTurnScript);
    case ScriptField::Command:
        return Place::Of({{FieldId::GamePlayerCommands, source.index}}, FieldId::CommandScript);
    default:
        return Place::Of({{FieldId::GameUses, source.index}}, FieldId::PairScript);
    }
}

Place InRoom(const PlaceStep& room, const Source& source) {
    switch (source.field) {
    case ScriptField::Enter:
        return Place::Of({room}, FieldId::RoomScript);
    case ScriptField::Description:
        return Place::Of({room}, FieldId::RoomDescription);
    case ScriptField::RoomLook:
        return Place::Of({room}, FieldId::RoomLook);
    case ScriptField::Exit:
        return Place::Of({room, {ExitFields[source.index - 1], 0}}, FieldId::PairScript);
    case ScriptField::Place:
        return Place::Of({room, {FieldId::RoomPlaces, source.index}}, FieldId::PairScript);
    case ScriptField::Command:
        return Place::Of({room, {FieldId::RoomCommands, source.index}}, FieldId::PairScript);
    default:
        return Place::Of({room, {FieldId::RoomUses, source.index}}, FieldId::PairScript);
    }
}

Place InThing(const PlaceStep& room, const PlaceStep& thing, const Source& source) {
    switch (source.field) {
    case ScriptField::Look:
        return Place::Of({room, thing}, FieldId::ThingLook);
    case ScriptField::Speak:
        return Place::Of({room, thing}, FieldId::ThingSpeak);
    case ScriptField::Take:
        return Place::Of({room, thing}, FieldId::ThingTake);
    case ScriptField::Give:
        return Place::Of({room, thing, {FieldId::ThingGives, source.index}}, FieldId::PairScript);
    default:
        return Place::Of({room, thing, {FieldId::ThingUses, source.index}}, FieldId::PairScript);
    }
}

Place InMenu(const PlaceStep& menu, const Source& source) {
    if (source.field == ScriptField::MenuInfo)
        return Place::Of({menu}, FieldId::MenuInfo);
    return Place::Of({menu, {FieldId::MenuChoices, source.index}},
                     source.line == 0 ? FieldId::PairKey : FieldId::PairScript);
}

const char* WordFor(Owner owner) {
    switch (owner) {
    case Owner::Room:
        return "room";
    case Owner::Thing:
        return "character or object";
    case Owner::Procedure:
        return "procedure";
    case Owner::Text:
        return "text";
    case Owner::Menu:
        return "menu";
    default:
        return "script";
    }
}

Kind KindOf(Owner owner) {
    switch (owner) {
    case Owner::Room:
        return Kind::Room;
    case Owner::Thing:
        return Kind::Thing;
    case Owner::Procedure:
        return Kind::Procedure;
    case Owner::Text:
        return Kind::Text;
    default:
        return Kind::Menu;
    }
}

bool IsScript(FieldId field) {
    return field != FieldId::RoomLook && field != FieldId::MenuInfo && field != FieldId::PairKey &&
           field != FieldId::TextText && field != FieldId::GameUnknownBlocks;
}

} // namespace

StoryPlaces::StoryPlaces(std::shared_ptr<const World> world) : world_(std::move(world)) {
    const GameModel& game = world_->Game();
    // The lists of the world begin with the game's own records, in the order of the game.
    for (int k = 1; k <= game.Rooms.Count(); ++k) {
        const WorldRoom& room = *world_->AllRooms()[static_cast<std::size_t>(k) - 1];
        const PlaceStep step{FieldId::GameRooms, k};
        records_.insert({&room.book, {step, {}}});
        int characters = 0;
        int objects = 0;
        for (const WorldThing& thing : room.things)
            records_.insert({&thing.book,
                             {step, thing.isCharacter ? PlaceStep{FieldId::RoomCharacters, ++characters}
                                                      : PlaceStep{FieldId::RoomObjects, ++objects}}});
    }
    const auto add = [this](FieldId list, const auto& made, int count) {
        for (int k = 1; k <= count; ++k)
            records_.insert({&made[static_cast<std::size_t>(k) - 1]->book, {{list, k}, {}}});
    };
    add(FieldId::GameProcedures, world_->AllProcedures(), game.Procedures.Count());
    add(FieldId::GameSelectionMenus, world_->AllMenus(), game.SelectionMenus.Count());
    add(FieldId::GameTextSections, world_->AllTexts(), game.TextSections.Count());
    records_.insert({&world_->GameBlocks().front()->book, {}});
    records_.insert({&world_->TimerBook(), {}});
}

std::optional<Place> StoryPlaces::FieldOf(const Source& source) const {
    const auto found = records_.find(source.book);
    if (source.book == nullptr || found == records_.end())
        return std::nullopt;
    const auto& [first, second] = found->second;
    switch (source.book->owner) {
    case Owner::Game:
        return InGame(source);
    case Owner::Timer:
        return Place::Of({}, FieldId::GameUnknownBlocks);
    case Owner::Room:
        return InRoom(first, source);
    case Owner::Thing:
        return InThing(first, second, source);
    case Owner::Procedure:
        return Place::Of({first}, FieldId::ProcedureScript);
    case Owner::Text:
        return Place::Of({first}, FieldId::TextText);
    case Owner::Menu:
        return InMenu(first, source);
    }
    return std::nullopt;
}

std::optional<Place> StoryPlaces::PlaceOf(const Source& source) const {
    std::optional<Place> place = FieldOf(source);
    if (!place)
        return std::nullopt;
    const std::optional<ResolvedPlace> resolved = Resolve(world_->Game(), *place);
    if (!resolved)
        return std::nullopt;
    if (resolved->text != nullptr && IsScript(place->field))
        ForEachLine(*resolved->text, [&](TextRange line, int number) {
            if (number == source.line)
                place->bytes = line;
        });
    return place;
}

std::optional<Place> StoryPlaces::RecordOf(const Source& source) const {
    const auto found = records_.find(source.book);
    if (source.book == nullptr || found == records_.end())
        return std::nullopt;
    Place place;
    for (const PlaceStep& step : {found->second.first, found->second.second})
        if (step.list != FieldId::None)
            place.steps[place.Depth()] = step;
    return place;
}

std::string StoryPlaces::LineOf(const Source& source) const {
    const std::optional<Place> place = PlaceOf(source);
    if (!place)
        return {};
    const std::string* text = Resolve(world_->Game(), *place)->text;
    if (text == nullptr)
        return {};
    return place->bytes.IsEmpty() ? *text : std::string(place->bytes.Of(*text));
}

std::string StoryPlaces::Describe(const Source& source) const {
    if (const std::optional<Place> place = PlaceOf(source))
        return DescribePlace(world_->Game(), *place);
    if (source.book == nullptr)
        return {};
    const Owner owner = source.book->owner;
    if (owner == Owner::Game || owner == Owner::Timer)
        return "a script of a library";
    const std::string& name = world_->GetNames().Name(KindOf(owner), source.book->number);
    return std::string(WordFor(owner)) + " \"" + (owner == Owner::Thing ? name.substr(1) : name) +
           "\" of a library";
}

Source SourceIn(const World& changed, const Source& source) {
    Source moved = source;
    moved.book = nullptr;
    if (source.book == nullptr)
        return moved;
    const auto take = [&](const auto* record) {
        if (record != nullptr)
            moved.book = &record->book;
    };
    const Number number = source.book->number;
    switch (source.book->owner) {
    case Owner::Game:
        take(changed.GameBlocks().front().get());
        break;
    case Owner::Room:
        take(changed.FindRoom(number));
        break;
    case Owner::Thing:
        take(changed.FindThing(number));
        break;
    case Owner::Procedure:
        take(changed.FindProcedure(number));
        break;
    case Owner::Text:
        take(changed.FindText(number));
        break;
    case Owner::Menu:
        take(changed.FindMenu(number));
        break;
    case Owner::Timer:
        moved.book = &changed.TimerBook();
        break;
    }
    return moved;
}

} // namespace zem::play
