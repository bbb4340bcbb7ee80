#pragma once

#include "play/Meaning.h"
#include "play/Outcome.h"
#include "play/Printer.h"
#include "play/State.h"
#include "play/World.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zem::play {

/// What happens to the game: the beginning, a line of the player, or time that passes at the prompt. LookAt
/// shows a thing to the author and is no turn.
struct Input {
    enum Kind : std::uint8_t { Begin, BeginAt, Line, Seconds, Restart, LookAt };
    Kind kind = Begin;
    std::string line;
    std::optional<Choice> choice; // settles what was ambiguous in the line
    std::int64_t seconds = 0;
    Number room = None;               // where BeginAt enters
    Number thing = None;              // that LookAt shows
    std::vector<std::string> answers; // to the questions of this turn, in order
};

/// What a turn came to, besides its outcome.
struct TurnResult {
    Outcome outcome;
    Verb verb = Verb::NotUnderstood; // of the line
    bool isDone = true;              // false when an answer is missing; the state is then to be taken back
    bool isStep = false;             // something that UNDO takes back
    bool metLimit = false;           // it would have cost more than a turn may
    Meaning notUnderstood;           // with the choices of an ambiguous line
    std::vector<Hit> hits;           // in the order in which they came, if they were asked for
};

struct TurnOptions {
    bool withTrace = false;
    bool askBeforeQuit = false; // turns were made since the last save
    bool withHits = false;
};

/// Plays one turn: a function of state and input. It never waits; when the input has too few answers, the
/// turn ends with what it needs, and is played again from its beginning with one more.
class Interpreter {
public:
    Interpreter(const World& world, State& state, const Input& input, const TurnOptions& options);

    TurnResult Run();

private:
    enum class Stop : std::uint8_t { None, NeedsAnswer, Win, Lose, Restart, Limit };

    // The turn.
    void RunLine();
    void RunUnderstood(Meaning meaning);
    void RunProgramVerb(Verb verb);
    void BeginGame();
    void BeginAgain();
    void SettleEnd();
    void EndGame(bool isWon);
    void TellLimit();

    // Scripts.
    bool Run(const Script& script);
    bool RunProcedure(Number procedure, const Source& from);
    bool RunNode(const Book& book, const Node* node);
    bool Execute(const Book& book, const Node& node);
    bool ExecuteText(const Book& book, const Node& node);
    bool ExecuteThings(const Node& node, const Source& source);
    bool ExecuteRooms(const Node& node, const Source& source);
    bool ExecuteValues(const Node& node, const Source& source);
    bool ChangeAmount(const Node& node, const Source& source);
    bool ExecuteCalls(const Book& book, const Node& node, const Source& source);
    bool Every(bool characters, const Node& node, const Source& source);
    bool Pick(const Book& book, const Node& node, const Source& source);
    bool Repeat(const Node& node, const Source& source);
    bool While(const Node& node, const Source& source);
    bool Type(const Node& node, const Source& source);
    bool StopAt(Stop reason);
    bool Spend(std::size_t characters);
    bool Warn(const Source& source, std::string text, bool isOnce = false);
    bool WarnLacks(const Source& source, std::string_view what, const std::string& name);
    void NoteHit(const Book& book, std::uint32_t part = Hit::Record) {
        if (options_.withHits)
            result_.hits.push_back({&book, part});
    }
    void NoteHit(const Book& book, const Node& node, bool answer = true) {
        NoteHit(book, Hit::OfNode(static_cast<std::size_t>(&node - book.nodes.data()), answer));
    }
    void NoteFault(const std::string& text);
    void Trace(const Source& source, TraceEntry::Result result, std::int32_t condition = -1,
               std::string note = {});

    // Conditions.
    bool Holds(const Book& book, const Node& node);
    bool Holds(const BookCondition& condition, const Source& source);
    bool HoldsForThing(const BookCondition& condition, const Source& source);
    bool HoldsForRoom(const BookCondition& condition, const Source& source);
    bool HoldsForVariable(const BookCondition& condition, const Source& source);

    // Questions. Each gives nothing, or false, when the answer is still missing.
    std::optional<std::string> NextAnswer(Need need);
    std::optional<bool> AskYesNo(std::string_view question, const Source& source, bool isMessage);
    bool Choose(const WorldMenu& menu, const Source& source);
    std::optional<std::size_t> ChoiceMeant(const std::vector<std::string>& choices, std::string_view answer);

    // Printing.
    bool PrintLine(std::string_view text, const Source& source);
    bool PrintPart(std::string_view text);
    bool PrintText(const WorldText& text);
    bool PrintMessage(Message message, std::string_view detail = {});
    bool PrintList(Message message, const std::vector<std::string>& entries);
    bool PlayFile(Piece::Kind kind, const Node& node, const Source& source);

    // Rooms.
    const WorldRoom* Here() const;
    bool Enter(Number room, Message whenClosed);
    bool Describe();
    bool PrintHeading(const WorldRoom& room);
    std::vector<std::string> OpenExits(const WorldRoom& room) const;
    std::string_view PlaceName(const WorldPlace& place) const;

    // Verbs.
    bool CarryOut(const Meaning& meaning);
    bool Go(std::uint8_t direction);
    bool GoToPlace(std::size_t place);
    bool LookAt(const Reference& what);
    bool Take(const Reference& what);
    bool Drop(const Reference& what);
    bool Use(const Reference& item);
    bool UseOn(const Reference& item, const Reference& on);
    bool Give(const Reference& item, const Reference& to);
    bool SpeakTo(const Reference& whom);
    bool TellInventory();
    bool TellAbout();
    void Remember(const Reference& named);

    // Time.
    void PassSeconds(std::int64_t seconds);
    bool RunDue();
    void StartWait(Number procedure, std::int64_t seconds);
    void DropRunWaits();
    void StartTimer(Number timer);
    std::optional<std::int64_t> NextDue() const;

    Cell CellOf(Kind kind, Number number) const { return world_.GetNames().CellOf(kind, number); }
    std::string PutIn(std::string_view text);
    void SetVariable(Number variable, std::string_view text);
    Source SourceOf(const Book& book, const Node& node) const {
        return {&book, node.field, node.index, node.line};
    }

    const World& world_;
    State& state_;
    const Input& input_;
    const TurnOptions& options_;
    Printer printer_;
    TurnResult result_;

    Stop stop_ = Stop::None;
    std::size_t nextAnswer_ = 0;
    std::size_t answerWords_ = 0;
    std::size_t commands_ = 0;
    std::size_t work_ = 0; // about a character made or looked at each
    int typeDepth_ = 0;
    int enterDepth_ = 0;
    int restarts_ = 0;
    bool gaveItem_ = false;
    bool isAsking_ = false;            // a condition
    std::string fault_;                // of the condition that is asked, for the trace
    std::vector<const Book*> running_; // the scripts that run, inside one another
    std::string circle_;               // what ran when a limit was met
};

} // namespace zem::play
