#include "play/SourcePlaces.h"

#include <algorithm>
#include <array>
#include <utility>

namespace zem::play {

namespace {

/// The exits in the order of Direction.
constexpr std::array<FieldId, DirectionCount> ExitFields = {
    FieldId::RoomNorth,     FieldId::RoomNorthEast, FieldId::RoomEast,
    FieldId::RoomSouthEast, FieldId::RoomSouth,     FieldId::RoomSouthWest,
    FieldId::RoomWest,      FieldId::RoomNorthWest, FieldId::RoomOut};

/// The list of pairs in which a script stands, or the exit; None for a script of the record itself.
FieldId ListOf(const Source& source) {
    const Owner owner = source.book->owner;
    switch (source.field) {
    case ScriptField::Command:
        return owner == Owner::Room ? FieldId::RoomCommands : FieldId::GamePlayerCommands;
    case ScriptField::Use:
        return owner == Owner::Room    ? FieldId::RoomUses
               : owner == Owner::Thing ? FieldId::ThingUses
                                       : FieldId::GameUses;
    case ScriptField::Give:
        return FieldId::ThingGives;
    case ScriptField::Exit:
        return ExitFields[static_cast<std::size_t>(source.index - 1) % DirectionCount];
    case ScriptField::Place:
        return FieldId::RoomPlaces;
    case ScriptField::Choice:
        return FieldId::MenuChoices;
    default:
        return FieldId::None;
    }
}

FieldId FieldOf(const Source& source) {
    switch (source.field) {
    case ScriptField::Start:
        return FieldId::GameStartScript;
    case ScriptField::GameDescription:
        return FieldId::GameDescription;
    case ScriptField::BeforeTurn:
        return FieldId::GameBeforeTurnScript;
    case ScriptField::AfterTurn:
        return FieldId::GameAfterTurnScript;
    case ScriptField::Command:
        return source.book->owner == Owner::Room ? FieldId::PairScript : FieldId::CommandScript;
    case ScriptField::Use:
    case ScriptField::Give:
    case ScriptField::Exit:
    case ScriptField::Place:
    case ScriptField::Choice:
        return FieldId::PairScript;
    case ScriptField::Enter:
        return FieldId::RoomScript;
    case ScriptField::Description:
        return FieldId::RoomDescription;
    case ScriptField::RoomLook:
        return FieldId::RoomLook;
    case ScriptField::Look:
        return FieldId::ThingLook;
    case ScriptField::Speak:
        return FieldId::ThingSpeak;
    case ScriptField::Take:
        return FieldId::ThingTake;
    case ScriptField::Body:
        return source.book->owner == Owner::Text ? FieldId::TextText : FieldId::ProcedureScript;
    case ScriptField::MenuInfo:
        return FieldId::MenuInfo;
    case ScriptField::TimerAction:
        return FieldId::GameUnknownBlocks;
    case ScriptField::Message:
        break;
    }
    return FieldId::None;
}

/// The bytes of a line of a text, the whole text where it has but one.
TextRange BytesOfLine(const std::string& text, int line) {
    std::size_t begin = 0;
    for (int k = 1; k < line; ++k) {
        begin = text.find("\r\n", begin);
        if (begin == std::string::npos)
            return {};
        begin += 2;
    }
    const std::size_t end = std::min(text.find("\r\n", begin), text.size());
    return begin == 0 && end == text.size() ? TextRange() : TextRange{begin, end};
}

} // namespace

SourcePlaces::SourcePlaces(std::shared_ptr<const World> world)
    : world_(std::move(world)),
      owners_(world_->Game()) {
    const GameModel& game = world_->Game();
    std::array<int, 8> counts{};
    int characters = 0;
    int things = 0;
    for (const Book* book : world_->OwnBooks()) {
        int& count = counts[static_cast<std::size_t>(book->owner)];
        const auto note = [&](FieldId list) { records_.emplace(book, Place::Of({{list, ++count}})); };
        switch (book->owner) {
        case Owner::Game:
        case Owner::Timer:
            records_.emplace(book, Place());
            break;
        case Owner::Room:
            note(FieldId::GameRooms);
            characters = game.Rooms[count].Characters.Count();
            things = 0;
            break;
        case Owner::Thing: {
            ++things; // the characters of a room come before its objects
            const bool isCharacter = things <= characters;
            records_.emplace(book,
                             Place::Of({{FieldId::GameRooms, counts[static_cast<std::size_t>(Owner::Room)]},
                                        {isCharacter ? FieldId::RoomCharacters : FieldId::RoomObjects,
                                         isCharacter ? things : things - characters}}));
            break;
        }
        case Owner::Procedure:
            note(FieldId::GameProcedures);
            break;
        case Owner::Menu:
            note(FieldId::GameSelectionMenus);
            break;
        case Owner::Text:
            note(FieldId::GameTextSections);
            break;
        }
    }
}

std::optional<Place> SourcePlaces::PlaceOf(const Source& source) const {
    const auto record = records_.find(source.book);
    if (source.book == nullptr || record == records_.end())
        return std::nullopt;
    Place place = record->second;
    if (source.line == 0 && source.field != ScriptField::Choice)
        return place;
    if (const FieldId list = ListOf(source); list != FieldId::None)
        place.steps[place.Depth()] = {list, source.field == ScriptField::Exit ? 0 : source.index};
    place.field = FieldOf(source);
    const std::optional<ResolvedPlace> resolved = Resolve(world_->Game(), place);
    if (!resolved)
        return record->second;
    if (resolved->text != nullptr && source.field != ScriptField::TimerAction)
        place.bytes = BytesOfLine(*resolved->text, source.line);
    return place;
}

std::string SourcePlaces::Describe(const Source& source) const {
    const std::optional<Place> place = PlaceOf(source);
    return place ? owners_.Describe(*place) : std::string();
}

std::size_t SourcePlaces::LineOf(const Source& source, const SourceLines& lines) const {
    const std::optional<Place> place = PlaceOf(source);
    return place ? lines.LineOf(world_->Game(), *place) : 0;
}

} // namespace zem::play
