#pragma once

#include "play/Outcome.h"
#include "play/State.h"
#include "play/World.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace zem::walk {

using play::Cell;
using play::Number;

/// A line that a player may type with a chance that it does something.
struct WalkOption {
    enum Kind : std::uint8_t {
        Act,
        Move,
        Drop // seldom leads anywhere, and makes states without end
    };

    std::string line;
    std::uint64_t hash = 0;
    Kind kind = Act;
    Number item = play::None; // that must be had

    // What trying it has taught.
    std::uint32_t triedCount = 0;
    std::uint32_t usefulCount = 0;       // so often it led to something new
    std::array<play::Hit, 4> openHits{}; // answers of "if" lines that were never given, met while it ran
};

/// The same on every machine.
std::uint64_t HashOfLine(std::string_view line);

/// Knows what may be tried in the states of a game: exits, places, the author's commands, and what can be
/// done with the things that are there and the items that are had. It looks into the game for what has a
/// script, so it never tries what every game answers with a message.
class WalkOptions {
public:
    explicit WalkOptions(const play::World& world);

    /// Adds what may be tried now.
    /// @param had  the items that the player has
    void Collect(const play::State& state, const std::vector<Number>& had, std::vector<WalkOption*>& options);

    /// The lines that a command of the author's takes, its variables filled with words that the game compares
    /// them with, and with any other.
    std::vector<std::string> LinesOf(const play::WorldCommand& command) const;

    /// The line of a command in which one variable gets that text.
    std::string LineOf(const play::WorldCommand& command, Number variable, std::string_view text) const;

    /// What may be answered to a question for a text: the texts that the game compares with.
    const std::vector<std::string>& Answers() const { return answers_; }

private:
    using List = std::vector<std::unique_ptr<WalkOption>>;

    WalkOption& Add(List& list, std::string line, WalkOption::Kind kind = WalkOption::Act,
                    Number item = play::None) const;
    static std::string LineWith(const play::Pattern& pattern, std::size_t chosen, std::string_view word);
    void AddCommand(List& list, const play::WorldCommand& command) const;
    void CollectWords();
    List MakeGameOptions() const;
    List MakeRoomOptions(const play::WorldRoom& room) const;
    List MakeThingOptions(const play::WorldThing& thing) const;
    List MakeItemOptions(Number item) const;
    void AddExits(const play::State& state, const play::WorldRoom& room, std::vector<WalkOption*>& options);

    const play::World& world_;
    std::unordered_map<Number, std::vector<std::string>> words_; // that a variable is compared with
    std::vector<std::string> answers_;
    List game_;
    std::array<std::unique_ptr<WalkOption>, play::DirectionCount> exits_;
    // Made when they are first wanted, by number.
    std::vector<std::unique_ptr<List>> rooms_;
    std::vector<std::unique_ptr<List>> things_;
    std::vector<std::unique_ptr<List>> items_;
};

} // namespace zem::walk
