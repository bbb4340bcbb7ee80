#pragma once

#include "kel/CommandLookup.h"
#include "model/GameModel.h"
#include "pieces/PastePiece.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

/// Small puzzles and other parts of games that are ready to be put into any game, after a few questions.
///
/// A file of such a piece begins with lines that say what it is, each an apostrophe and a keyword:
///
///     'title Locked door
///     'about A way that opens only for who has the key.
///     'words door lock key
///     'ask From; room; The way begins in; Hall
///     'ask Way; exit of From to To; It leads; north
///     'ask To; other room; To the room; Cellar
///     'ask Key; item; It opens with; brass key
///     'ask Where; room if new Key; The key lies in; Hall
///
/// Kel follows, in which "@From@" stands for an answer, "@Key.a@" for "a" or "an" before it, "@Way.back@" for
/// the opposite direction, "@Dark.look@" for the description that a room has. What stands between "'when new
/// Key" and "'end when" is there only if the answer is nothing that the game has. A block of a room that the
/// game has is added to that room. An exit that leads there already may be chosen, too: a script takes its
/// place.
namespace zem {

enum class AnswerKind : std::uint8_t {
    Room,      // of the game; in a game without rooms, a new one
    OtherRoom, // of the game or a new one, which is suggested
    NewRoom,
    Exit,    // a direction in which a room has no exit, or one that leads where the piece does
    Item,    // of the game or a new one, which is suggested
    NewItem, // an item together with an object
    NewObject,
    NewCharacter,
    NewName,     // of what the piece does; names procedures and flags
    Collectable, // of the game or a new one
    Number,
    Word,
    Text,
    Choice
};

struct PieceQuestion {
    std::string id;
    AnswerKind kind = AnswerKind::Text;
    std::string room;                 // of an exit: the question that tells the room
    std::string leadsTo;              // of an exit: the question that tells the room behind it
    std::string onlyIfNew;            // the question whose answer must be something new; empty for always
    std::string text;                 // what is asked
    std::string suggestion;           // several with "|" between them, the best first
    std::vector<std::string> choices; // of AnswerKind::Choice
};

struct ReadyMade {
    std::string title;
    std::string about;
    std::string words; // by which it is found besides
    std::vector<PieceQuestion> questions;
    std::string body;
};

/// The answers by the ids of their questions.
using PieceAnswers = std::map<std::string, std::string, std::less<>>;

/// Throws KelError, which names the line, for a file that is no such piece.
ReadyMade ReadReadyMade(std::string_view file);

/// Answers with which the piece can be put into the game.
/// @param room  of the game, in which the author would begin; empty for the first one
PieceAnswers SuggestAnswers(const ReadyMade& piece, const GameModel& game, const std::string& room);

/// What may be chosen for an answer; others may be typed, unless it is a choice or a direction.
std::vector<std::string> PossibleAnswers(const PieceQuestion& question, const GameModel& game,
                                         const PieceAnswers& answers);

/// The room of the game to which the direction that was answered leads already; empty where it is free.
std::string LeadsAlready(const PieceQuestion& question, const GameModel& game, const PieceAnswers& answers);

/// Whether the question makes sense with these other answers.
bool IsAsked(const ReadyMade& piece, const PieceQuestion& question, const GameModel& game,
             const PieceAnswers& answers);

/// Why an answer cannot be used, as a sentence; empty if it can.
std::string WhyNotAnswer(const PieceQuestion& question, const GameModel& game, const PieceAnswers& answers);

/// Puts the piece into a copy of the game. Throws KelError, in words for the author, for an answer that
/// cannot be used, and where something of the piece has no place.
Pasted InsertReadyMade(const GameModel& game, const ReadyMade& piece, const PieceAnswers& answers,
                       const CommandLookup& commands);

} // namespace zem
