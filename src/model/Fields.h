#pragma once

#include "model/GameModel.h"
#include "model/NameKind.h"

#include <cstdint>
#include <tuple>

/// The fields of every record: for whatever treats all fields alike.
namespace zem {

/// Names a field in the program. What people read is the word beside it in the table below.
enum class FieldId : std::uint8_t {
    None,
    PairKey,
    PairScript,
    ThingName,
    ThingLook,
    ThingSpeak,
    ThingGender,
    ThingPrefix,
    ThingSuffix,
    ThingHidden,
    ThingInvisible,
    ThingTake,
    ThingUses,
    ThingGives,
    ThingMiscTags,
    RoomName,
    RoomAlias,
    RoomPrefix,
    RoomLook,
    RoomInDescription,
    RoomOut,
    RoomNorth,
    RoomSouth,
    RoomEast,
    RoomWest,
    RoomNorthEast,
    RoomNorthWest,
    RoomSouthEast,
    RoomSouthWest,
    RoomScript,
    RoomDescription,
    RoomPlaces,
    RoomCharacters,
    RoomCommands,
    RoomUses,
    RoomObjects,
    RoomMiscTags,
    TextName,
    TextText,
    ItemName,
    ItemIsStartItem,
    CollectableDefinition,
    CollectableName,
    ProcedureName,
    ProcedureScript,
    MenuName,
    MenuInfo,
    MenuChoices,
    SynonymWords,
    SynonymConvertTo,
    CommandPattern,
    CommandScript,
    ErrorDescription,
    ErrorName,
    ErrorGameText,
    GameNextInternalProcedure,
    GameName,
    GameKelVersion,
    GameStartRoom,
    GameAuthor,
    GameVersion,
    GameCopyright,
    GameInfo,
    GameDefaultFontName,
    GameDefaultFontSize,
    GameStartScript,
    GameDescription,
    GameBeforeTurnScript,
    GameAfterTurnScript,
    GameNoDebug,
    GameUnknownBlocks,
    GameMiscTags,
    GameIncludes,
    GameRooms,
    GameTextSections,
    GameItems,
    GameCollectables,
    GameProcedures,
    GameSelectionMenus,
    GameSynonyms,
    GamePlayerCommands,
    GameUses,
    GameErrorMessages
};

/// What stands in a field.
enum class FieldKind : std::uint8_t {
    Name,       // what scripts call the record
    Reference,  // the name of something else
    Exit,       // the name of a room, or ActionExit
    Target,     // the name of a room, or "prefix; name"
    Definition, // of a collectable: its name, a blank, its settings
    Script,     // lines with CR LF between them
    Text,       // printed; may hold format codes and variables
    Pattern,    // what a player may type; a word between two "#" is a variable
    Words,      // what a player may type, without variables
    RawLines,   // kept as they are
    Value,      // a setting, or a word of the catalogue
    Number,
    Mark,
    Records,  // a list of records, or one record of its own
    OwnersKey // what the field says in which the pair stands
};

struct FieldUse {
    FieldKind kind = FieldKind::Value;
    NameKind names = NameKind::None; // of a name or a reference; of a list, the kind of its records
};

namespace detail {

/// @param use  of a list of pairs, or of a pair, that of its keys
template <class Member>
struct Field {
    FieldId id;
    const char* name; // in plain words
    FieldUse use;
    Member member;
};
template <class Member>
Field(FieldId, const char*, FieldUse, Member) -> Field<Member>;

constexpr FieldUse Script{FieldKind::Script};
constexpr FieldUse Text{FieldKind::Text};
constexpr FieldUse Value{FieldKind::Value};
constexpr FieldUse Number{FieldKind::Number};
constexpr FieldUse Mark{FieldKind::Mark};
constexpr FieldUse RawLines{FieldKind::RawLines};
constexpr FieldUse Words{FieldKind::Words};
constexpr FieldUse Pattern{FieldKind::Pattern};
constexpr FieldUse Exit{FieldKind::Exit, NameKind::Room};
constexpr FieldUse Target{FieldKind::Target, NameKind::Room};
constexpr FieldUse NameOf(NameKind kind) {
    return {FieldKind::Name, kind};
}
constexpr FieldUse ReferenceTo(NameKind kind) {
    return {FieldKind::Reference, kind};
}
constexpr FieldUse Records(NameKind kind) {
    return {FieldKind::Records, kind};
}

template <class Record>
inline constexpr auto FieldsOf = std::tuple<>();

template <>
inline constexpr auto FieldsOf<ScriptPair> =
    std::tuple(Field{FieldId::PairKey, "name", FieldUse{FieldKind::OwnersKey}, &ScriptPair::Key},
               Field{FieldId::PairScript, "action", Script, &ScriptPair::Script});

template <>
inline constexpr auto FieldsOf<Thing> =
    std::tuple(Field{FieldId::ThingName, "name", NameOf(NameKind::Thing), &Thing::Name},
               Field{FieldId::ThingLook, "look", Script, &Thing::Look},
               Field{FieldId::ThingSpeak, "speak", Script, &Thing::Speak},
               Field{FieldId::ThingGender, "gender", Value, &Thing::Gender},
               Field{FieldId::ThingPrefix, "prefix", Text, &Thing::Prefix},
               Field{FieldId::ThingSuffix, "suffix", Text, &Thing::Suffix},
               Field{FieldId::ThingHidden, "unavailable mark", Mark, &Thing::Hidden},
               Field{FieldId::ThingInvisible, "invisible mark", Mark, &Thing::Invisible},
               Field{FieldId::ThingTake, "take", Script, &Thing::Take},
               Field{FieldId::ThingUses, "use-able object", ReferenceTo(NameKind::Item), &Thing::Uses},
               Field{FieldId::ThingGives, "give-able object", ReferenceTo(NameKind::Item), &Thing::Gives},
               Field{FieldId::ThingMiscTags, "miscellaneous tags", RawLines, &Thing::MiscTags});

template <>
inline constexpr auto FieldsOf<Room> =
    std::tuple(Field{FieldId::RoomName, "name", NameOf(NameKind::Room), &Room::Name},
               Field{FieldId::RoomAlias, "alias", Text, &Room::Alias},
               Field{FieldId::RoomPrefix, "prefix", Text, &Room::Prefix},
               Field{FieldId::RoomLook, "description", Text, &Room::Look},
               Field{FieldId::RoomInDescription, "description prefix", Text, &Room::InDescription},
               Field{FieldId::RoomOut, "exit out", Exit, &Room::Out},
               Field{FieldId::RoomNorth, "exit north", Exit, &Room::North},
               Field{FieldId::RoomSouth, "exit south", Exit, &Room::South},
               Field{FieldId::RoomEast, "exit east", Exit, &Room::East},
               Field{FieldId::RoomWest, "exit west", Exit, &Room::West},
               Field{FieldId::RoomNorthEast, "exit northeast", Exit, &Room::NorthEast},
               Field{FieldId::RoomNorthWest, "exit northwest", Exit, &Room::NorthWest},
               Field{FieldId::RoomSouthEast, "exit southeast", Exit, &Room::SouthEast},
               Field{FieldId::RoomSouthWest, "exit southwest", Exit, &Room::SouthWest},
               Field{FieldId::RoomScript, "enter action", Script, &Room::Script},
               Field{FieldId::RoomDescription, "print description action", Script, &Room::Description},
               Field{FieldId::RoomPlaces, "place", Target, &Room::Places},
               Field{FieldId::RoomCharacters, "character", Records(NameKind::Character), &Room::Characters},
               Field{FieldId::RoomCommands, "player command", Pattern, &Room::Commands},
               Field{FieldId::RoomUses, "use-able object", ReferenceTo(NameKind::Item), &Room::Uses},
               Field{FieldId::RoomObjects, "object", Records(NameKind::Object), &Room::Objects},
               Field{FieldId::RoomMiscTags, "miscellaneous tags", RawLines, &Room::MiscTags});

template <>
inline constexpr auto FieldsOf<TextSection> =
    std::tuple(Field{FieldId::TextName, "name", NameOf(NameKind::TextSection), &TextSection::Name},
               Field{FieldId::TextText, "text", Text, &TextSection::Text});

template <>
inline constexpr auto FieldsOf<ItemEntry> =
    std::tuple(Field{FieldId::ItemName, "name", NameOf(NameKind::Item), &ItemEntry::Name},
               Field{FieldId::ItemIsStartItem, "start mark", Mark, &ItemEntry::IsStartItem});

template <>
inline constexpr auto FieldsOf<Collectable> =
    std::tuple(Field{FieldId::CollectableDefinition, "definition",
                     FieldUse{FieldKind::Definition, NameKind::Collectable}, &Collectable::Definition},
               Field{FieldId::CollectableName, "name", NameOf(NameKind::Collectable), &Collectable::Name});

template <>
inline constexpr auto FieldsOf<Procedure> =
    std::tuple(Field{FieldId::ProcedureName, "name", NameOf(NameKind::Procedure), &Procedure::Name},
               Field{FieldId::ProcedureScript, "script", Script, &Procedure::Script});

template <>
inline constexpr auto FieldsOf<SelectionMenu> =
    std::tuple(Field{FieldId::MenuName, "name", NameOf(NameKind::Menu), &SelectionMenu::Name},
               Field{FieldId::MenuInfo, "prompt", Text, &SelectionMenu::Info},
               Field{FieldId::MenuChoices, "choice", Text, &SelectionMenu::Choices});

template <>
inline constexpr auto FieldsOf<SynonymEntry> =
    std::tuple(Field{FieldId::SynonymWords, "words", Words, &SynonymEntry::Words},
               Field{FieldId::SynonymConvertTo, "word", Words, &SynonymEntry::ConvertTo});

template <>
inline constexpr auto FieldsOf<PlayerCommand> =
    std::tuple(Field{FieldId::CommandPattern, "pattern", Pattern, &PlayerCommand::Pattern},
               Field{FieldId::CommandScript, "action", Script, &PlayerCommand::Script});

template <>
inline constexpr auto FieldsOf<ErrorMessage> =
    std::tuple(Field{FieldId::ErrorDescription, "description", Value, &ErrorMessage::Description},
               Field{FieldId::ErrorName, "name", Value, &ErrorMessage::Name},
               Field{FieldId::ErrorGameText, "text", Text, &ErrorMessage::GameText});

// All but the file name and the modified flag, which belong to the session and not to the game.
template <>
inline constexpr auto FieldsOf<GameModel> = std::tuple(
    Field{FieldId::GameNextInternalProcedure, "number of the next internal procedure", Number,
          &GameModel::NextInternalProcedure},
    Field{FieldId::GameName, "game name", Text, &GameModel::GameName},
    Field{FieldId::GameKelVersion, "language version", Value, &GameModel::KelVersion},
    Field{FieldId::GameStartRoom, "start room", ReferenceTo(NameKind::Room), &GameModel::StartRoom},
    Field{FieldId::GameAuthor, "game author", Text, &GameModel::GameAuthor},
    Field{FieldId::GameVersion, "game version", Text, &GameModel::GameVersion},
    Field{FieldId::GameCopyright, "copyright information", Text, &GameModel::GameCopyright},
    Field{FieldId::GameInfo, "extra info", Text, &GameModel::GameInfo},
    Field{FieldId::GameDefaultFontName, "default font name", Value, &GameModel::DefaultFontName},
    Field{FieldId::GameDefaultFontSize, "default font size", Number, &GameModel::DefaultFontSize},
    Field{FieldId::GameStartScript, "start action", Script, &GameModel::StartScript},
    Field{FieldId::GameDescription, "print description action", Script, &GameModel::GameDescription},
    Field{FieldId::GameBeforeTurnScript, "before turn action", Script, &GameModel::BeforeTurnScript},
    Field{FieldId::GameAfterTurnScript, "after turn action", Script, &GameModel::AfterTurnScript},
    Field{FieldId::GameNoDebug, "debug mark", Mark, &GameModel::NoDebug},
    Field{FieldId::GameUnknownBlocks, "blocks of other kinds", RawLines, &GameModel::UnknownBlocks},
    Field{FieldId::GameMiscTags, "miscellaneous tags", RawLines, &GameModel::GameMiscTags},
    Field{FieldId::GameIncludes, "library", ReferenceTo(NameKind::File), &GameModel::Includes},
    Field{FieldId::GameRooms, "room", Records(NameKind::Room), &GameModel::Rooms},
    Field{FieldId::GameTextSections, "text block", Records(NameKind::TextSection), &GameModel::TextSections},
    Field{FieldId::GameItems, "item", Records(NameKind::Item), &GameModel::Items},
    Field{FieldId::GameCollectables, "collectable", Records(NameKind::Collectable), &GameModel::Collectables},
    Field{FieldId::GameProcedures, "procedure", Records(NameKind::Procedure), &GameModel::Procedures},
    Field{FieldId::GameSelectionMenus, "menu", Records(NameKind::Menu), &GameModel::SelectionMenus},
    Field{FieldId::GameSynonyms, "synonym", Records(NameKind::None), &GameModel::Synonyms},
    Field{FieldId::GamePlayerCommands, "player command", Records(NameKind::None), &GameModel::PlayerCommands},
    Field{FieldId::GameUses, "use-able object", ReferenceTo(NameKind::Item), &GameModel::GameUses},
    Field{FieldId::GameErrorMessages, "error message", Records(NameKind::None), &GameModel::ErrorMessages});

/// What stands in a field of a record that stands in another field.
constexpr FieldUse UseInside(FieldUse owner, FieldUse use) {
    if (use.kind == FieldKind::OwnersKey)
        return owner;
    return use.names == NameKind::Thing ? FieldUse{use.kind, owner.names} : use;
}

} // namespace detail

/// Calls visit(field) for each field of the record type. `field` has an `id`, a `name`, a `use` and the
/// pointer to the member, `member`.
template <class Record, class Visit>
constexpr void ForEachField(Visit visit) {
    std::apply([&](const auto&... field) { (visit(field), ...); }, detail::FieldsOf<Record>);
}

} // namespace zem
