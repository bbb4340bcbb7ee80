#include "base/KelError.h"
#include "base/LineText.h"
#include "kel/ScriptTree.h"
#include "map/Geometry.h"
#include "map/MapEdits.h"
#include "pieces/ReadyMade.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace zem {

namespace {

constexpr std::string_view EndOfBlock = "end define";
constexpr std::string_view GameBlock = "define game <>";
constexpr std::string_view RoomBlock = "define room <";
constexpr const char* Waiting = "~Piece "; // begins the name of a room that waits to be added to another

const PieceQuestion* FindQuestion(const ReadyMade& piece, std::string_view id) {
    for (const PieceQuestion& question : piece.questions)
        if (question.id == id)
            return &question;
    return nullptr;
}

int FindRoom(const GameModel& game, std::string_view name) {
    int entry = 0;
    for (const Room& room : game.Rooms)
        if (++entry; EqualIgnoringCase(room.Name, name))
            return entry;
    return 0;
}

/// The text of a piece with the answers in it, its blocks of one name brought together.
class Filler {
public:
    Filler(const ReadyMade& piece, const GameModel& game, const PieceAnswers& answers)
        : piece_(piece),
          game_(game),
          answers_(answers) {}

    std::string Fill() {
        bool isLeftOut = false;
        for (const std::string_view line : SplitAt(piece_.body, "\r\n")) {
            constexpr std::string_view Begin = "'when new ";
            if (line.starts_with(Begin))
                isLeftOut = !IsNew(line.substr(Begin.size()));
            else if (line == "'end when")
                isLeftOut = false;
            else if (!isLeftOut && !line.empty())
                AddLine(WithAnswers(line));
        }
        AddDefaults();
        std::string text;
        for (const auto& [head, lines] : blocks_)
            text += head + "\r\n" + lines + std::string(EndOfBlock) + "\r\n";
        return text;
    }

    /// The rooms of the game that the piece adds to, by the names under which they wait.
    const std::vector<std::pair<std::string, int>>& Waiters() const { return waiters_; }

private:
    bool IsNew(std::string_view id) const {
        const PieceQuestion* question = FindQuestion(piece_, id);
        PieceQuestion asked;
        asked.onlyIfNew = id;
        return question == nullptr || IsAsked(piece_, asked, game_, answers_);
    }

    std::string WithAnswers(std::string_view line) const {
        std::string filled;
        for (std::size_t at = line.find('@'); at != std::string_view::npos; at = line.find('@')) {
            const std::size_t end = line.find('@', at + 1);
            if (end == std::string_view::npos)
                break;
            filled.append(line.substr(0, at)).append(Answer(line.substr(at + 1, end - at - 1)));
            line.remove_prefix(end + 1);
        }
        return filled.append(line);
    }

    std::string Answer(std::string_view wanted) const {
        const std::size_t point = wanted.find('.');
        const auto found = answers_.find(wanted.substr(0, point));
        if (found == answers_.end())
            throw KelError("The piece asks for an answer that there is no question for: " +
                           std::string(wanted));
        const std::string_view form = point == std::string_view::npos ? "" : wanted.substr(point + 1);
        if (form == "a")
            return std::string_view("aeiouAEIOU").find(found->second[0]) == std::string_view::npos ? "a"
                                                                                                   : "an";
        if (form == "back")
            return OppositeOf(found->second);
        if (form == "look")
            return LookOf(found->second);
        return found->second;
    }

    static std::string OppositeOf(const std::string& word) {
        for (map::Direction direction = 0; direction < map::DirectionCount; ++direction)
            if (word == map::WordOf(direction))
                return map::WordOf(map::Opposite(direction));
        return word;
    }

    std::string LookOf(const std::string& name) const {
        const int room = FindRoom(game_, name);
        const std::string look = room == 0 ? std::string() : game_.Rooms[room].Look;
        return look.empty() || look.find('>') != std::string::npos ? "Now you can see where you are." : look;
    }

    void AddLine(const std::string& line) {
        if (depth_ == 0) {
            if (!line.starts_with("define "))
                throw KelError("The piece has a line outside of its blocks: " + line);
            current_ = BlockOf(line);
            depth_ = 1;
            return;
        }
        const std::string_view statement = Trim(line);
        depth_ += statement.starts_with("define ") ? 1 : statement == EndOfBlock ? -1 : 0;
        if (depth_ == 1 && (statement.starts_with("look ") || statement.starts_with("description ")))
            described_.push_back(blocks_.at(current_).first);
        if (depth_ > 0)
            blocks_.at(current_).second.append(line).append("\r\n");
    }

    /// Blocks of the game, and of one room, become one block each.
    std::size_t BlockOf(std::string head) {
        if (const std::string name(GetRoomName(head)); !name.empty())
            if (const int room = FindRoom(game_, name); room != 0) {
                const std::string waiter = Waiting + std::to_string(room);
                head = std::string(RoomBlock) + waiter + ">";
                if (std::find(waiters_.begin(), waiters_.end(), std::pair(waiter, room)) == waiters_.end())
                    waiters_.emplace_back(waiter, room);
            }
        const bool isOne = head == GameBlock || head.starts_with(RoomBlock);
        for (std::size_t k = 0; k < blocks_.size(); ++k)
            if (isOne && blocks_[k].first == head)
                return k;
        blocks_.emplace_back(head, std::string());
        return blocks_.size() - 1;
    }

    static std::string_view GetRoomName(std::string_view head) {
        return head.starts_with(RoomBlock) && head.ends_with('>')
                   ? head.substr(RoomBlock.size(), head.size() - RoomBlock.size() - 1)
                   : std::string_view();
    }

    /// A room that the piece makes can be entered and seen.
    void AddDefaults() {
        for (auto& [head, lines] : blocks_) {
            if (!head.starts_with(RoomBlock) || head.find(Waiting) != std::string::npos)
                continue;
            std::string begin = "prefix <the>\r\nindescription <You are in>\r\n";
            if (std::find(described_.begin(), described_.end(), head) == described_.end())
                begin += "look <There is nothing remarkable here yet.>\r\n";
            lines.insert(0, begin);
        }
    }

    const ReadyMade& piece_;
    const GameModel& game_;
    const PieceAnswers& answers_;
    std::vector<std::pair<std::string, std::string>> blocks_; // heads and the lines between them and the end
    std::size_t current_ = 0;                                 // of the blocks
    std::vector<std::string> described_; // heads of rooms that the piece itself describes
    int depth_ = 0;
    std::vector<std::pair<std::string, int>> waiters_;
};

/// Adds what a room of a piece has to a room of the game. Exits that the room has stay as they are, unless
/// the piece has a script for them: the answers allow that only where both lead to the same room.
class RoomMerge {
public:
    RoomMerge(GameModel& game, int into) : game_(game), number_(into) {}

    void Add(const Room& from) {
        Room& room = game_.Rooms.Edit(number_);
        if (!from.Description.empty() && !room.Description.empty())
            throw KelError("The room " + QuoteShortly(room.Name) +
                           " is described by a script of its own already.");
        if (!from.Description.empty()) {
            room.Description = from.Description;
            room.Look.clear(); // Its words stand in that script now.
        }
        for (const CompassExit& exit : CompassExits)
            if ((from.*exit.exit)->Key == ActionExit ||
                ((room.*exit.exit)->Key.empty() && !(from.*exit.exit)->Key.empty()))
                (room.*exit.exit) = from.*exit.exit;
        if (room.Out->Key.empty() && room.Out->Script.empty())
            room.Out = from.Out;
        Append(room.Places, from.Places);
        Append(room.Characters, from.Characters);
        Append(room.Commands, from.Commands);
        Append(room.Uses, from.Uses);
        Append(room.Objects, from.Objects);
        room.MiscTags += from.MiscTags;
        if (!from.Script.empty())
            room.Script = Joined(room.Script, from.Script);
    }

private:
    template <class Record>
    static void Append(List<Record>& into, const List<Record>& from) {
        for (const Record& record : from)
            into.Append(record);
    }

    std::string Joined(const std::string& script, const std::string& more) {
        if (script.empty())
            return more;
        std::vector<std::string> lines = UnfoldScript(game_, script);
        for (std::string& line : UnfoldScript(game_, more))
            lines.push_back(std::move(line));
        return FoldScript(game_, script, lines);
    }

    GameModel& game_;
    int number_;
};

/// The name as the game spells it, whose scripts tell capitals apart.
template <class Records>
void SpellAs(const Records& records, std::string& name) {
    for (const auto& record : records)
        if (EqualIgnoringCase(record.Name, name)) {
            name = record.Name;
            return;
        }
}

PieceAnswers AsSpelled(const ReadyMade& piece, const GameModel& game, PieceAnswers answers) {
    for (const PieceQuestion& question : piece.questions) {
        std::string& answer = answers.at(question.id);
        if (question.kind == AnswerKind::Room || question.kind == AnswerKind::OtherRoom)
            SpellAs(game.Rooms, answer);
        else if (question.kind == AnswerKind::Item)
            SpellAs(game.Items, answer);
        else if (question.kind == AnswerKind::Collectable)
            SpellAs(game.Collectables, answer);
    }
    return answers;
}

void RefuseWrongAnswers(const ReadyMade& piece, const GameModel& game, const PieceAnswers& answers) {
    for (const PieceQuestion& question : piece.questions) {
        if (!IsAsked(piece, question, game, answers))
            continue;
        const std::string whyNot = WhyNotAnswer(question, game, answers);
        if (!whyNot.empty())
            throw KelError(question.text + " " + QuoteShortly(answers.at(question.id)) + ": " + whyNot);
    }
}

/// The texts of an end that the game has are the author's.
void LeaveOutKnownTexts(const GameModel& game, std::string& text) {
    for (const TextSection& known : game.TextSections) {
        const std::string head = "define text <" + Lower(known.Name) + ">\r\n";
        const std::size_t at =
            known.Text.empty() || !IsStandardText(known.Name) ? std::string::npos : text.find(head);
        if (at != std::string::npos)
            text.erase(at, text.find(EndOfBlock, at) + EndOfBlock.size() + 2 - at);
    }
}

} // namespace

Pasted InsertReadyMade(const GameModel& game, const ReadyMade& piece, const PieceAnswers& typed,
                       const CommandLookup& commands) {
    const PieceAnswers answers = AsSpelled(piece, game, typed);
    RefuseWrongAnswers(piece, game, answers);
    Filler filler(piece, game, answers);
    std::string text = filler.Fill();
    LeaveOutKnownTexts(game, text);
    Pasted pasted = PastePiece(game, text, {}, commands);
    for (const auto& [waiter, room] : filler.Waiters()) {
        const int waiting = FindRoom(pasted.game, waiter);
        const Room added = pasted.game.Rooms[waiting];
        RoomMerge(pasted.game, room).Add(added);
        pasted.game.Rooms.Remove(waiting);
    }
    if (pasted.game.StartRoom.empty() && !pasted.game.Rooms.IsEmpty())
        pasted.game.StartRoom = pasted.game.Rooms[1].Name;
    pasted.added.clear(); // their numbers have changed
    pasted.what = Lower(piece.title);
    return pasted;
}

} // namespace zem
