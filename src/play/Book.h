#pragma once

#include "play/Names.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Scripts taken apart once, so that running them looks nothing up: every name is a number.
namespace zem::play {

/// What a line of a script does.
enum class Op : std::uint8_t {
    Nothing, // a line that is no command, or cannot be read: its text says why
    If,
    Msg,
    Say,
    Text,
    Line,
    Clear,
    Pause,
    Key,
    Colour,
    FontName,
    FontSize,
    Picture,
    Sound,
    Music,
    Silence,
    Goto,
    Back,
    Look,
    Give,
    LoseAll,
    Lose,
    Show,
    Hide,
    Reveal,
    Conceal,
    Bring,
    MoveObject,
    MoveCharacter,
    ObjectOn,
    ObjectOff,
    CharacterOn,
    CharacterOff,
    RoomOn,
    RoomOff,
    ExitOn,
    ExitOff,
    ExitTo,
    SetAmount,
    Set,
    Append,
    Ask,
    Add,
    Subtract,
    Multiply,
    Roll,
    Gain,
    Spend,
    FlagOn,
    FlagOff,
    FlagFlip,
    Do,
    Pick,
    Repeat,
    EveryObject,
    EveryCharacter,
    While,
    Choose,
    Type,
    After,
    TimerOn,
    TimerOff,
    Win,
    Die,
    Restart
};

/// What a condition asks.
enum class Test : std::uint8_t {
    Unknown, // no condition of the language
    Has,
    Here,
    In,
    Been,
    ObjectIn,
    CharacterIn,
    Exists,
    Visible,
    RoomOn,
    Exit,
    EmptyHanded,
    FirstVisit,
    Flag,
    Timer,
    Equal,
    Differ,
    Contains,
    Empty,
    Least,
    More,
    Less,
    Amount,
    Turns,
    Chance,
    Ask
};

/// The names and the text in a parameter. Which of them are set hangs on the command.
struct Arguments {
    Number room = None;
    Number character = None;
    Number object = None;
    Number name = None; // an item, flag, variable, timer, collectable, procedure, text or menu
    Number otherRoom = None;
    Number flag = None;                      // of a "while", whose name is that of its procedure
    std::uint8_t direction = DirectionCount; // that many for a word that is none
    std::string text;                        // what is printed, asked, or counted with; or a name as written
};

struct BookCondition {
    Test test = Test::Unknown;
    bool isNegated = false;
    bool isOr = false; // joined by "or" to the one before
    Arguments arguments;
};

/// Which text of a record a script stands in.
enum class ScriptField : std::uint8_t {
    Start,
    GameDescription,
    BeforeTurn,
    AfterTurn,
    Command, // with an index
    Use,     // with an index
    Exit,    // with a direction as index
    Place,   // with an index
    Enter,
    Description,
    RoomLook,
    Look,
    Speak,
    Take,
    Give,   // with an index
    Body,   // of a procedure or text
    Choice, // with an index
    MenuInfo,
    TimerAction,
    Message // one of the game's messages, or one of our own
};

struct Node {
    Op op = Op::Nothing;
    ScriptField field = ScriptField::Body;
    std::int16_t index = 0; // of the pair in its list, from 1
    std::int32_t line = 1;  // of the script, from 1
    std::int32_t next = -1; // the command after this one
    std::int32_t thenNode = -1;
    std::int32_t elseNode = -1;
    std::uint32_t first = 0; // conditions of an "if", or procedures of a "pick"
    std::uint32_t count = 0;
    Arguments arguments;
};

/// What a record is, for whoever wants to show where a script stands.
enum class Owner : std::uint8_t { Game, Room, Thing, Procedure, Text, Menu, Timer };

/// The scripts of one record.
struct Book {
    Owner owner = Owner::Game;
    Number number = None; // of the owner's name
    int library = 0;      // 0 for the game itself, then its libraries in the order in which they are read
    std::vector<Node> nodes;
    std::vector<BookCondition> conditions;
    std::vector<Number> picks;     // procedures
    std::vector<Number> variables; // used by commands, conditions and patterns
    std::vector<Number> words;     // that a player may type because of this record
};

/// A script in its book; it does nothing when it has no book or its node is -1.
struct Script {
    const Book* book = nullptr;
    std::int32_t node = -1;

    bool IsEmpty() const { return node < 0; }
};

/// A text that a record has, for the places of what it prints.
struct Source {
    const Book* book = nullptr;
    ScriptField field = ScriptField::Body;
    std::int16_t index = 0;
    std::int32_t line = 0;

    bool operator==(const Source&) const = default;
};

/// Takes a script apart and adds it to the book; gives its first node, -1 for a script without lines.
/// Never throws: a line that cannot be read becomes one that does nothing and says why.
std::int32_t AddScript(Book& book, Names& names, std::string_view script, ScriptField field, int index = 0);

/// Notes that the player may type the words of a text.
void AddWords(Book& book, Names& names, std::string_view text);

/// The pieces of a parameter between its ";", without blanks around them.
/// @param most  what is left over stays in the last of so many pieces
std::vector<std::string_view> SplitParts(std::string_view parameter, std::size_t most);

} // namespace zem::play
