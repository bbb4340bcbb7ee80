#pragma once

#include "model/GameModel.h"

#include <tuple>

/// The fields of every record, by name: for whatever treats all fields alike.
namespace zem {

namespace detail {

template <class Member>
struct Field {
    const char* name; // in plain words
    Member member;
};
template <class Member>
Field(const char*, Member) -> Field<Member>;

template <class Record>
inline constexpr auto FieldsOf = std::tuple<>();

template <>
inline constexpr auto FieldsOf<ScriptPair> = std::tuple(Field{"name", &ScriptPair::Key},
                                                        Field{"action", &ScriptPair::Script});

template <>
inline constexpr auto FieldsOf<Thing> = std::tuple(
    Field{"name", &Thing::Name}, Field{"look action", &Thing::Look}, Field{"speak action", &Thing::Speak},
    Field{"gender", &Thing::Gender}, Field{"prefix", &Thing::Prefix}, Field{"suffix", &Thing::Suffix},
    Field{"unavailable mark", &Thing::Hidden}, Field{"invisible mark", &Thing::Invisible},
    Field{"take action", &Thing::Take}, Field{"use-able object", &Thing::Uses},
    Field{"give-able object", &Thing::Gives}, Field{"miscellaneous tags", &Thing::MiscTags});

template <>
inline constexpr auto FieldsOf<Room> = std::tuple(
    Field{"name", &Room::Name}, Field{"alias", &Room::Alias}, Field{"prefix", &Room::Prefix},
    Field{"description", &Room::Look}, Field{"description prefix", &Room::InDescription},
    Field{"exit out", &Room::Out}, Field{"exit north", &Room::North}, Field{"exit south", &Room::South},
    Field{"exit east", &Room::East}, Field{"exit west", &Room::West},
    Field{"exit northeast", &Room::NorthEast}, Field{"exit northwest", &Room::NorthWest},
    Field{"exit southeast", &Room::SouthEast}, Field{"exit southwest", &Room::SouthWest},
    Field{"enter action", &Room::Script}, Field{"print description action", &Room::Description},
    Field{"place", &Room::Places}, Field{"character", &Room::Characters},
    Field{"player command", &Room::Commands}, Field{"use-able object", &Room::Uses},
    Field{"object", &Room::Objects}, Field{"miscellaneous tags", &Room::MiscTags});

template <>
inline constexpr auto FieldsOf<TextSection> = std::tuple(Field{"name", &TextSection::Name},
                                                         Field{"text", &TextSection::Text});

template <>
inline constexpr auto FieldsOf<ItemEntry> = std::tuple(Field{"name", &ItemEntry::Name},
                                                       Field{"start mark", &ItemEntry::IsStartItem});

template <>
inline constexpr auto FieldsOf<Collectable> = std::tuple(Field{"definition", &Collectable::Definition},
                                                         Field{"name", &Collectable::Name});

template <>
inline constexpr auto FieldsOf<Procedure> = std::tuple(Field{"name", &Procedure::Name},
                                                       Field{"script", &Procedure::Script});

template <>
inline constexpr auto FieldsOf<SelectionMenu> = std::tuple(Field{"name", &SelectionMenu::Name},
                                                           Field{"prompt", &SelectionMenu::Info},
                                                           Field{"choice", &SelectionMenu::Choices});

template <>
inline constexpr auto FieldsOf<SynonymEntry> = std::tuple(Field{"words", &SynonymEntry::Words},
                                                          Field{"word", &SynonymEntry::ConvertTo});

template <>
inline constexpr auto FieldsOf<PlayerCommand> = std::tuple(Field{"pattern", &PlayerCommand::Pattern},
                                                           Field{"action", &PlayerCommand::Script});

template <>
inline constexpr auto FieldsOf<ErrorMessage> = std::tuple(Field{"description", &ErrorMessage::Description},
                                                          Field{"name", &ErrorMessage::Name},
                                                          Field{"text", &ErrorMessage::GameText});

// All but the file name and the modified flag, which belong to the session and not to the game.
template <>
inline constexpr auto FieldsOf<GameModel> = std::tuple(
    Field{"number of the next internal procedure", &GameModel::NextInternalProcedure},
    Field{"game name", &GameModel::GameName}, Field{"language version", &GameModel::KelVersion},
    Field{"start room", &GameModel::StartRoom}, Field{"game author", &GameModel::GameAuthor},
    Field{"game version", &GameModel::GameVersion}, Field{"copyright information", &GameModel::GameCopyright},
    Field{"extra info", &GameModel::GameInfo}, Field{"default font name", &GameModel::DefaultFontName},
    Field{"default font size", &GameModel::DefaultFontSize}, Field{"start action", &GameModel::StartScript},
    Field{"print description action", &GameModel::GameDescription},
    Field{"before turn action", &GameModel::BeforeTurnScript},
    Field{"after turn action", &GameModel::AfterTurnScript}, Field{"debug mark", &GameModel::NoDebug},
    Field{"blocks of other kinds", &GameModel::UnknownBlocks},
    Field{"miscellaneous tags", &GameModel::GameMiscTags}, Field{"library", &GameModel::Includes},
    Field{"room", &GameModel::Rooms}, Field{"text block", &GameModel::TextSections},
    Field{"item", &GameModel::Items}, Field{"collectable", &GameModel::Collectables},
    Field{"procedure", &GameModel::Procedures}, Field{"menu", &GameModel::SelectionMenus},
    Field{"synonym", &GameModel::Synonyms}, Field{"player command", &GameModel::PlayerCommands},
    Field{"use-able object", &GameModel::GameUses}, Field{"error message", &GameModel::ErrorMessages});

} // namespace detail

/// Calls visit(name, member) for each field of the record type; `member` is the pointer to the member.
template <class Record, class Visit>
constexpr void ForEachField(Visit visit) {
    std::apply([&](const auto&... field) { (visit(field.name, field.member), ...); },
               detail::FieldsOf<Record>);
}

} // namespace zem
