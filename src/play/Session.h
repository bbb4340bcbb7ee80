#pragma once

#include "play/InputLog.h"
#include "play/Interpreter.h"
#include "play/Outcome.h"
#include "play/State.h"
#include "play/World.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zem::play {

class Coverage;

/// A name that has changed in the game, with the state that belongs to it.
struct Renamed {
    Kind kind; // of a thing: the names are its ThingKeys
    std::string before;
    std::string after;
};

/// Where play begins when it does not begin at the beginning.
struct StartingPoint {
    std::string room;
    std::vector<std::string> items; // had besides the start items
    std::vector<std::string> flags; // that are on
    std::vector<std::pair<std::string, std::string>> variables;
    std::vector<std::string> itemsNotHad = {}; // start items among them
};

/// One value of the state, for whoever watches it.
struct WatchedValue {
    Kind kind = Kind::Flag;
    std::string name;        // as scripts have it
    std::string value;       // in plain words: "on", "Hall, hidden", "12"
    bool hasChanged = false; // in the last turn
};

/// One turn that was played.
struct PlayedTurn {
    std::string line; // empty for the beginning
    std::vector<std::string> answers;
};

/// A game being played: all that a window, a page, a terminal or a test needs. It has no clock and touches no
/// file. Texts in and out are Windows-1252.
///
/// Begin() first. Each call gives what is new to show and what the game waits for. While it waits for an
/// answer, Answer() goes on with the turn; at the prompt, Type() and Pass() begin one.
class Session {
public:
    /// @param seed  of chance: the same seed and the same input give the same game everywhere
    Session(std::shared_ptr<const World> world, std::uint64_t seed);

    /// Why the game cannot begin, in the player's words; empty when it can.
    std::string WhyItCannotBegin() const;

    Outcome Begin();
    /// Begins somewhere else, for trying a room out; without the start script and the intro.
    Outcome BeginAt(const StartingPoint& point);

    /// A line typed at the prompt; what is longer than 500 characters is cut.
    Outcome Type(std::string_view line);

    /// The answer to what the outcome before asked for.
    Outcome Answer(std::string_view answer);

    /// Seconds that pass at the prompt. While a question is open they do not count.
    Outcome Pass(std::int64_t seconds);

    /// Takes the last turn back, an unfinished one first. False when there is none.
    bool Undo();
    bool CanUndo() const { return log_.Size() > startLog_ || (pending_.has_value() && !log_.IsEmpty()); }
    /// How many turns can be taken back.
    std::size_t StepCount() const { return steps_.size(); }

    /// Plays the turn again that was taken back last, with its answers, in the game as it is now. Nothing
    /// when there is none; a new turn forgets all of them.
    Outcome Redo();
    bool CanRedo() const { return !undone_.empty() && !pending_; }

    /// Begins the game again; a turn like any other to Undo().
    Outcome Restart();

    /// The bytes of a saved game. Not while a question is open.
    std::string Save() const;
    /// What the player is told after a request to save was carried out, or failed.
    Outcome Saved(bool isSaved);
    /// Opens a saved game, and tells the player; the warnings say what the game has no more. A file that is
    /// damaged is refused and nothing changes.
    Outcome Restore(std::string_view bytes);
    /// What the player is told when there is no saved game to open.
    Outcome NotRestored();

    /// What the game waits for now.
    Need Needs() const { return need_; }
    /// True when turns were made since the game was saved.
    bool IsUnsaved() const { return isUnsaved_; }

    /// Goes on in a changed game, made by Compile(files, GetWorld()): the state is carried over by name, an
    /// open question is asked anew. The warnings of the outcome say what could not be carried over.
    Outcome Reload(std::shared_ptr<const World> world, const std::vector<Renamed>& renamed = {});

    /// Whether outcomes have a trace.
    void SetTrace(bool isOn) { withTrace_ = isOn; }

    /// Where all that turns reach is counted, null for nowhere; it must live as long as the session.
    void SetCoverage(Coverage* coverage) { coverage_ = coverage; }

    const World& GetWorld() const { return *world_; }
    const State& GetState() const { return state_; }
    std::uint64_t Fingerprint() const { return state_.Fingerprint(); }

    /// The room that the player is in; empty before one is entered.
    std::string RoomName() const;
    std::int64_t TurnCount() const { return state_[Turns]; }
    /// The items that the player has and the exits that are open, as the window shows them.
    std::vector<std::string> ItemsHad() const;
    std::vector<std::string> OpenDirections() const;

    /// The values that differ from the start or changed in the last turn, or all of them.
    std::vector<WatchedValue> Watch(bool all) const;
    /// Sets a value by hand, in the words of Watch(); false when the name or the value means nothing. A turn
    /// like any other to Undo().
    bool SetByHand(Kind kind, const std::string& name, const std::string& value);

    /// The turns so far, the beginning first.
    std::vector<PlayedTurn> Played() const;

    /// The turns that Redo() would play, the next one first.
    std::vector<PlayedTurn> Undone() const;

    /// How many bytes the way back takes, for each turn that can be taken back.
    std::size_t BytesForUndo() const;

private:
    /// Where the way back to before a turn begins.
    struct Step {
        std::uint32_t writes;
        std::uint32_t texts;
        std::uint32_t log;
    };

    Outcome Play(Input input);
    void KeepNew(Outcome& outcome);
    void CountNew(const std::vector<Hit>& hits);
    Outcome Say(Message message);
    Outcome Refuse() const;
    Outcome TypeOops(std::string_view words);
    Outcome TypeAgain();
    void NoteLine(const std::string& line, const Meaning& meaning);
    void AddStep(const State::Mark& before);
    void AddToLog(const Input& input, const State::Mark& before, bool beginsAgain);
    bool HasOnlyWaited(const State::Mark& before) const;
    Outcome PlayEntry(const std::vector<std::string>& fields);
    void KeepUndone(std::size_t from);
    std::string Pack(const Input& input, bool beginsAgain) const;
    Input Unpack(const std::vector<std::string>& fields) const;
    std::string PackReference(const Reference& reference) const;
    Reference UnpackReference(const std::string& packed) const;
    void NoteStart();
    void Replay(std::size_t end);
    void ReplayEntry(const std::vector<std::string>& fields);
    void NewState();
    bool RestoreState(std::string_view bytes, std::vector<std::string>& lost);
    bool PutValue(Kind kind, const std::string& name, const std::string& value);
    void ApplyPoint(const StartingPoint& point);

    std::shared_ptr<const World> world_;
    State state_;
    std::uint64_t seed_;
    bool withTrace_ = false;
    Coverage* coverage_ = nullptr;
    bool isUnsaved_ = false;
    Need need_ = Need::Nothing;

    // The turn that waits for an answer, and what of it was shown.
    std::optional<Input> pending_;
    std::size_t shownPieces_ = 0;
    std::size_t shownLength_ = 0; // of the last piece that was shown
    std::size_t shownWarnings_ = 0;
    std::size_t countedHits_ = 0;
    std::vector<Source> told_; // lines that were named to the author once and for all

    // What was ambiguous in the last line, and what may have been meant.
    std::string lastLine_;
    std::vector<Reference> choices_;
    std::string ambiguousPhrase_;
    std::string ambiguousLine_;

    StartingPoint point_;             // where play began; without a room, at the beginning
    InputLog log_;                    // of all input so far
    std::deque<Step> steps_;          // turns that can be taken back
    std::vector<std::string> undone_; // what the log held of the turns that were taken back, the last first
    std::size_t secondsAt_ = 0;       // where in the log the seconds stand with which it ends; 0 for none
    std::int64_t seconds_ = 0;        // how many they are
    std::size_t startLog_ = 0;        // the length of the log when the game had begun
    State::Mark startMark_;
    bool isStartReplayed_ = false; // the way back to the start is to play it again
    std::size_t replayed_ = 0;     // so many of them can only be taken back by playing again
};

} // namespace zem::play
