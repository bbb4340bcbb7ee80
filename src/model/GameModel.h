#pragma once

#include "model/List.h"
#include "model/Shared.h"
#include "model/Table.h"

#include <cstdint>
#include <string>
#include <string_view>

/// The game being edited: plain value records whose text is bytes in Windows-1252.
/// A field of several lines joins them with CR LF.
namespace zem {

/// The name and version of this program, as files and windows have them.
inline constexpr const char* NameAndVersion = "ZEM 1.0";

/// Begins the names of the procedures that the editor makes of scripts; a blank and a number follow.
inline constexpr const char* InternalProcedure = "~Internal Procedure";

/// The key of a compass exit that runs its script instead of leading to a room.
inline constexpr const char* ActionExit = "[action]";

/// A name or pattern together with a script: exits, places, commands, use and give rules, menu choices.
struct ScriptPair {
    std::string Key;
    std::string Script;

    bool operator==(const ScriptPair&) const = default;
};

/// A character or an object; which of the two, only the room's table tells.
struct Thing {
    std::string Name;
    std::string Look;  // a script line
    std::string Speak; // a script line; characters only
    std::string Gender;
    std::string Prefix;
    std::string Suffix;
    bool Hidden = false;
    bool Invisible = false;
    std::string Take; // a script line; objects only
    List<ScriptPair> Uses;
    List<ScriptPair> Gives;
    std::string MiscTags; // lines not understood, each followed by CR LF

    bool operator==(const Thing&) const = default;
};

struct Room {
    std::string Name;
    std::string Alias;
    std::string Prefix;
    std::string Look;          // the description, a text
    std::string InDescription; // what the description begins with: "You are in"
    Shared<ScriptPair> Out;    // destination and script, both at once
    // Each holds a destination, or the key ActionExit and a script.
    Shared<ScriptPair> North, South, East, West, NorthEast, NorthWest, SouthEast, SouthWest;
    std::string Script;      // runs when the player enters
    std::string Description; // a script that prints the description instead
    List<ScriptPair> Places; // Key: "name" or "prefix; name"
    List<Thing> Characters;
    List<ScriptPair> Commands;
    List<ScriptPair> Uses;
    List<Thing> Objects;
    std::string MiscTags; // lines not understood, each followed by CR LF

    bool operator==(const Room&) const = default;
};

/// An exit of the compass by the keyword of its line.
struct CompassExit {
    const char* direction;
    Shared<ScriptPair> Room::*exit;
};

/// In the order of files, listings and the room editor, which is not that of the record.
inline constexpr CompassExit CompassExits[] = {
    {"north", &Room::North},         {"south", &Room::South},         {"east", &Room::East},
    {"west", &Room::West},           {"northwest", &Room::NorthWest}, {"northeast", &Room::NorthEast},
    {"southwest", &Room::SouthWest}, {"southeast", &Room::SouthEast},
};

struct TextSection {
    std::string Name;
    std::string Text; // without a final CR LF

    bool operator==(const TextSection&) const = default;
};

struct ItemEntry {
    std::string Name;
    bool IsStartItem = false; // the player holds it when play begins

    bool operator==(const ItemEntry&) const = default;
};

struct Collectable {
    std::string Definition; // name, blank, settings: as written in the file
    std::string Name;

    bool operator==(const Collectable&) const = default;
};

struct Procedure {
    std::string Name;
    std::string Script;

    bool operator==(const Procedure&) const = default;
};

struct SelectionMenu {
    std::string Name;
    std::string Info;         // the prompt
    List<ScriptPair> Choices; // Key: the text shown

    bool operator==(const SelectionMenu&) const = default;
};

struct SynonymEntry {
    std::string Words; // with ";" between them
    std::string ConvertTo;

    bool operator==(const SynonymEntry&) const = default;
};

struct PlayerCommand {
    std::string Pattern;
    std::string Script;

    bool operator==(const PlayerCommand&) const = default;
};

/// One of the messages that the game-running program prints by itself.
struct ErrorMessage {
    std::string Description; // from the catalogue
    std::string Name;        // from the catalogue; as used in "error <name; text>"
    std::string GameText;    // this game's replacement, empty for the standard message

    bool operator==(const ErrorMessage&) const = default;
};

/// One whole game. Copying it copies its own texts and a pointer a table; the records are shared (see Table).
struct GameModel {
    std::string FileName;                   // path of the file opened or last saved, in the system's encoding
    bool Modified = false;                  // holds changes that are not saved
    std::int16_t NextInternalProcedure = 0; // the number of the next one; survives NewGame

    std::string GameName;
    std::string KelVersion;
    std::string StartRoom;
    std::string GameAuthor;
    std::string GameVersion;
    std::string GameCopyright;
    std::string GameInfo; // its lines packed by CrLfToBar
    std::string DefaultFontName;
    std::int16_t DefaultFontSize = 0; // 0 for the player's own
    std::string StartScript;
    std::string GameDescription; // a script that prints the description of every room
    std::string BeforeTurnScript;
    std::string AfterTurnScript;
    bool NoDebug = false;
    // Shared between copies, because they may be large.
    Shared<std::string> UnknownBlocks; // whole blocks not understood, each followed by an empty line
    Shared<std::string> GameMiscTags;  // lines not understood, each followed by CR LF

    Table<std::string> Includes; // file names of included libraries
    Table<Room> Rooms;
    Table<TextSection> TextSections;
    Table<ItemEntry> Items;
    Table<Collectable> Collectables;
    Table<Procedure> Procedures;
    Table<SelectionMenu> SelectionMenus;
    Table<SynonymEntry> Synonyms;
    Table<PlayerCommand> PlayerCommands;
    Table<ScriptPair> GameUses;
    Table<ErrorMessage> ErrorMessages; // the catalogue, with this game's texts

    bool operator==(const GameModel&) const = default;
};

/// The language version that every loaded and every new game has.
inline constexpr const char* CurrentKelVersion = "217";

/// The names of the texts that the game-running program looks for: every game has them.
inline constexpr const char* StandardTexts[] = {"intro", "win", "lose"};

/// Whether a text of this name is one of them, whatever its capitals.
bool IsStandardText(std::string_view name);

/// Adds the standard texts that the game has under no such name, whatever its capitals; they are empty.
void AddStandardTexts(GameModel& game);

/// Resets the game to the new-game template: no rooms, the standard texts, no file name.
/// The error catalogue and the counter of internal procedures stay.
void NewGame(GameModel& game);

/// True when both hold the same game, whatever their file names and modified flags are.
bool SameGame(const GameModel& a, const GameModel& b);

/// The names of all items joined with "; ", as the "items" line holds them.
std::string ItemsToText(const GameModel& game);

/// The names of the start items joined with ", ": unlike the list of all items, on purpose. Files on authors'
/// disks have it so, and the "startitems" line is split at commas.
std::string StartItemsToText(const GameModel& game);

/// The definitions of all collectables joined with "; ".
std::string CollectablesToText(const GameModel& game);

} // namespace zem
