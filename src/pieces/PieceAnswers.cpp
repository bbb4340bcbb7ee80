// What may be answered to the questions of a ready-made piece.
#include "base/LineText.h"
#include "map/Geometry.h"
#include "map/MapEdits.h"
#include "pieces/ReadyMade.h"

#include <algorithm>

namespace zem {

namespace {

bool IsSameName(std::string_view a, std::string_view b) {
    return EqualIgnoringCase(a, b);
}

template <class Records>
bool HasNamed(const Records& records, std::string_view name) {
    return std::any_of(records.begin(), records.end(),
                       [&](const auto& record) { return IsSameName(record.Name, name); });
}

bool HasThing(const GameModel& game, std::string_view name) {
    return std::any_of(game.Rooms.begin(), game.Rooms.end(), [&](const Room& room) {
        return HasNamed(room.Characters, name) || HasNamed(room.Objects, name);
    });
}

/// Whether the game has what such an answer names.
bool Has(const GameModel& game, AnswerKind kind, std::string_view name) {
    switch (kind) {
    case AnswerKind::Room:
    case AnswerKind::OtherRoom:
    case AnswerKind::NewRoom:
        return HasNamed(game.Rooms, name);
    case AnswerKind::Item:
        return HasNamed(game.Items, name);
    case AnswerKind::NewItem:
        return HasNamed(game.Items, name) || HasThing(game, name);
    case AnswerKind::NewObject:
    case AnswerKind::NewCharacter:
        return HasThing(game, name);
    case AnswerKind::NewName:
        return std::any_of(game.Procedures.begin(), game.Procedures.end(), [&](const Procedure& procedure) {
            return Lower(procedure.Name).find(Lower(name)) != std::string::npos;
        });
    case AnswerKind::Collectable:
        return HasNamed(game.Collectables, name);
    default:
        return false;
    }
}

/// "brass key 2" where there is a brass key.
std::string FreeAnswer(const GameModel& game, AnswerKind kind, const std::string& wanted) {
    std::string name = wanted;
    for (int number = 2; Has(game, kind, name) || (kind == AnswerKind::Item && HasThing(game, name));
         ++number)
        name = wanted + ' ' + std::to_string(number);
    return name;
}

const Room* RoomCalled(const GameModel& game, std::string_view name) {
    for (const Room& room : game.Rooms)
        if (IsSameName(room.Name, name))
            return &room;
    return nullptr;
}

/// Where the exit leads, if it does so without a script; empty if it does not.
std::string PlainTarget(const GameModel& game, const Room* room, map::Direction direction) {
    const ScriptPair none;
    const ScriptPair& exit = room == nullptr ? none : map::ExitOf(*room, direction);
    const Room* target = exit.Key == ActionExit ? nullptr : RoomCalled(game, exit.Key);
    return target == nullptr ? std::string() : target->Name;
}

/// The directions in which a room has no exit; the others that can be chosen, too, if the piece goes on in
/// the room behind them.
std::vector<std::string> Directions(const GameModel& game, std::string_view roomName, bool withPlain) {
    const Room* room = RoomCalled(game, roomName);
    std::vector<std::string> directions;
    for (map::Direction direction = 0; direction < map::DirectionCount; ++direction)
        if (room == nullptr || map::ExitOf(*room, direction).Key.empty() ||
            (withPlain && !PlainTarget(game, room, direction).empty()))
            directions.emplace_back(map::WordOf(direction));
    return directions;
}

template <class Records>
std::vector<std::string> NamesOf(const Records& records) {
    std::vector<std::string> names;
    for (const auto& record : records)
        names.push_back(record.Name);
    return names;
}

/// Whether a synonym of the game turns a part of the name into something else when a player types it.
bool IsTurned(const GameModel& game, std::string_view name) {
    const std::string typed = ' ' + Lower(name) + ' ';
    for (const SynonymEntry& synonym : game.Synonyms)
        for (const std::string_view words : SplitAt(synonym.Words, ";"))
            if (!Trim(words).empty() && typed.find(' ' + Lower(Trim(words)) + ' ') != std::string::npos)
                return true;
    return false;
}

/// The first of the suggestions that a player can type; the first one where there is none.
std::string TypeableSuggestion(const GameModel& game, std::string_view suggestions) {
    const std::vector<std::string_view> all = SplitAt(suggestions, "|");
    const auto found =
        std::find_if(all.begin(), all.end(), [&](std::string_view one) { return !IsTurned(game, one); });
    return std::string(found == all.end() ? all.front() : *found);
}

std::string Suggest(const PieceQuestion& question, const GameModel& game, const std::string& room,
                    const PieceAnswers& answers) {
    switch (question.kind) {
    case AnswerKind::Room:
        return room.empty() ? question.suggestion : room;
    case AnswerKind::Exit: {
        const std::vector<std::string> free = Directions(game, answers.at(question.room), false);
        const bool isFree = std::find(free.begin(), free.end(), question.suggestion) != free.end();
        return isFree || free.empty() ? question.suggestion : free.front();
    }
    case AnswerKind::Word:
        return TypeableSuggestion(game, question.suggestion);
    case AnswerKind::OtherRoom:
    case AnswerKind::NewRoom:
    case AnswerKind::Item:
    case AnswerKind::NewItem:
    case AnswerKind::NewObject:
    case AnswerKind::NewCharacter:
    case AnswerKind::NewName:
        return FreeAnswer(game, question.kind, TypeableSuggestion(game, question.suggestion));
    default:
        return question.suggestion;
    }
}

std::string WhyNoName(const PieceQuestion& question, const GameModel& game, const std::string& answer) {
    const bool isNewOnly = question.kind == AnswerKind::NewRoom || question.kind == AnswerKind::NewItem ||
                           question.kind == AnswerKind::NewObject ||
                           question.kind == AnswerKind::NewCharacter || question.kind == AnswerKind::NewName;
    if (isNewOnly && Has(game, question.kind, answer))
        return "The game has " + QuoteShortly(answer) + " already; choose another name.";
    if (question.kind == AnswerKind::Room && !game.Rooms.IsEmpty() && RoomCalled(game, answer) == nullptr)
        return "The game has no room " + QuoteShortly(answer) + ".";
    const bool isWord = question.kind == AnswerKind::Collectable || question.kind == AnswerKind::Word;
    if (isWord && answer.find(' ') != std::string::npos)
        return "This must be one word, without blanks.";
    if (answer.find_first_of(";,#%@|~") != std::string::npos && question.kind != AnswerKind::Text)
        return "A name here cannot hold any of ; , # % @ | ~";
    return {};
}

/// An exit that leads somewhere else would be lost.
std::string WhyNotThere(const PieceQuestion& question, const GameModel& game, const PieceAnswers& answers) {
    const std::string there = LeadsAlready(question, game, answers);
    return there.empty() || IsSameName(there, answers.at(question.leadsTo))
               ? ""
               : "This exit leads to " + QuoteShortly(there) + " already.";
}

} // namespace

PieceAnswers SuggestAnswers(const ReadyMade& piece, const GameModel& game, const std::string& room) {
    const std::string begin = RoomCalled(game, room) != nullptr ? room
                              : game.Rooms.IsEmpty()            ? std::string()
                                                                : game.Rooms[1].Name;
    PieceAnswers answers;
    for (const PieceQuestion& question : piece.questions)
        answers[question.id] = Suggest(question, game, begin, answers);
    return answers;
}

std::vector<std::string> PossibleAnswers(const PieceQuestion& question, const GameModel& game,
                                         const PieceAnswers& answers) {
    switch (question.kind) {
    case AnswerKind::Room:
    case AnswerKind::OtherRoom:
        return NamesOf(game.Rooms);
    case AnswerKind::Item:
        return NamesOf(game.Items);
    case AnswerKind::Collectable:
        return NamesOf(game.Collectables);
    case AnswerKind::Exit:
        return Directions(game, answers.at(question.room), !question.leadsTo.empty());
    case AnswerKind::Choice:
        return question.choices;
    default:
        return {};
    }
}

std::string LeadsAlready(const PieceQuestion& question, const GameModel& game, const PieceAnswers& answers) {
    const Room* room = RoomCalled(game, answers.at(question.room));
    for (map::Direction direction = 0; direction < map::DirectionCount; ++direction)
        if (answers.at(question.id) == map::WordOf(direction))
            return PlainTarget(game, room, direction);
    return {};
}

bool IsAsked(const ReadyMade& piece, const PieceQuestion& question, const GameModel& game,
             const PieceAnswers& answers) {
    for (const PieceQuestion& other : piece.questions)
        if (other.id == question.onlyIfNew)
            return !Has(game, other.kind, answers.at(other.id));
    return true;
}

std::string WhyNotAnswer(const PieceQuestion& question, const GameModel& game, const PieceAnswers& answers) {
    const std::string& answer = answers.at(question.id);
    if (Trim(answer).empty())
        return "This is still to be answered.";
    if (answer.find_first_of("<>{}\r\n") != std::string::npos)
        return "An answer cannot hold any of < > { }";
    if (question.kind == AnswerKind::Text)
        return answer.find('@') != std::string::npos ? "An answer cannot hold a @." : "";
    if (question.kind == AnswerKind::Number) {
        const bool isNumber = answer.size() <= 6 && std::all_of(answer.begin(), answer.end(), IsDigit);
        return isNumber ? "" : "This must be a number from 0 to 999999.";
    }
    if (question.kind == AnswerKind::Exit || question.kind == AnswerKind::Choice) {
        const std::vector<std::string> possible = PossibleAnswers(question, game, answers);
        if (std::find(possible.begin(), possible.end(), answer) != possible.end())
            return question.kind == AnswerKind::Exit ? WhyNotThere(question, game, answers) : "";
        return question.kind == AnswerKind::Exit
                   ? "The room " + QuoteShortly(answers.at(question.room)) + " has an exit there already."
                   : "This must be one of the choices.";
    }
    return WhyNoName(question, game, answer);
}

} // namespace zem
