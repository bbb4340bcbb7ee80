#pragma once

#include "base/TextRange.h"
#include "play/Messages.h"
#include "play/Sentence.h"
#include "play/State.h"
#include "play/World.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What a line of the player means in the present state of the game.
namespace zem::play {

/// A thing or an item, as it is remembered for IT, HIM, HER and THEM.
struct Reference {
    enum Kind : std::uint8_t { Nothing, Thing, Item, Player, Room };
    Kind kind = Nothing;
    Number number = None;

    bool operator==(const Reference&) const = default;

    /// For a cell of the state.
    std::int64_t Packed() const { return kind == Nothing ? 0 : number * std::int64_t{8} + kind; }
    static Reference Unpack(std::int64_t packed) {
        return packed == 0 ? Reference()
                           : Reference{static_cast<Kind>(packed & 7), static_cast<Number>(packed >> 3)};
    }
};

/// What is done about a line.
enum class Verb : std::uint8_t {
    NotUnderstood, // the message says why; no turn passes
    Scripted,      // a command of the game's own
    Go,            // in a direction
    GoToPlace,
    NoWay, // up, down and in, which the language has not
    Look,
    LookAt,
    Take,
    Drop,
    Use,
    UseOn,
    Give,
    SpeakTo,
    Inventory,
    Wait,
    Help,
    // About the program; these are never turns.
    Save,
    Restore,
    RestartGame,
    Quit,
    Undo,
    About,
    TranscriptOn,
    TranscriptOff
};

constexpr bool IsAboutProgram(Verb verb) {
    return verb >= Verb::Save;
}

/// Among what a player may have meant when a phrase was ambiguous.
struct Choice {
    std::string phrase; // folded, without articles
    Reference meant;
};

struct Meaning {
    Verb verb = Verb::NotUnderstood;
    Message message = Message::BadCommand; // why it is not understood, or what an action that fails prints
    std::string detail;                    // for messages that add something: a word, a list
    bool fails = false;                    // the action prints the message and nothing else
    Script script;                         // of a command of the game's own
    Captures captures;
    std::uint8_t direction = 0;
    std::size_t place = 0;          // of the room's places, from 0
    Reference first;                // what is looked at, taken, used, given
    Reference second;               // on what, or to whom
    std::vector<Reference> choices; // when the phrase is ambiguous
    std::string phrase;             // the ambiguous one
};

/// Where an open exit leads now: nowhere for one that is absent, closed or scripted, and for one whose room
/// is missing or unavailable.
Number ExitLeadsTo(const World& world, const State& state, const WorldRoom& room, std::uint8_t direction);

/// True when a room exists and is available.
bool IsOpenRoom(const World& world, const State& state, Number room);

/// Finds out what lines mean.
class Recogniser {
public:
    /// @param work  counts what it costs: about a character looked at each
    Recogniser(const World& world, const State& state, std::size_t& work)
        : world_(world),
          state_(state),
          work_(work) {}

    /// @param choice  settles a phrase that was ambiguous before
    Meaning Recognise(const std::string& line, const std::optional<Choice>& choice) const;

    /// The thing or item that an answer to an ambiguous phrase names; nothing when it names none or several.
    std::optional<Reference> AnswerAmong(std::string_view answer,
                                         const std::vector<Reference>& choices) const;

    /// The first word of a line that means nothing in the whole game, as bytes of what was typed.
    std::optional<TextRange> FirstUnknownWord(const Sentence& sentence) const;

private:
    std::optional<Meaning> FindCommand(const Sentence& sentence) const;
    Meaning NotUnderstood(const Sentence& sentence) const;

    const World& world_;
    const State& state_;
    std::size_t& work_;
};

} // namespace zem::play
