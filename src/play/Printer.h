#pragma once

#include "play/Outcome.h"
#include "play/State.h"
#include "play/World.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zem::play {

/// Turns texts of the game into pieces: puts in the variables and follows the format codes. A code holds to
/// the end of the text in which it stands; then the style that the commands have set holds again.
class Printer {
public:
    Printer(const World& world, const State& state) : world_(world), state_(state) {}

    /// The pieces so far; new ones are added at the end.
    std::vector<Piece>& Pieces() { return pieces_; }

    /// Begins a text. Its codes hold until the next one begins.
    void Begin(const Source& source);

    /// Prints a text from `at` up to its end or to a code that waits, and moves `at` there. True when there
    /// is a wait, which the caller sees to.
    bool Print(std::string_view text, std::size_t& at);

    /// Prints letters as they are: names, and what variables hold.
    void Raw(std::string_view text);

    void NewLine() { Raw("\n"); }

    /// An event: a clear, a picture and so on.
    void Add(Piece::Kind kind, std::string_view text = {}, int seconds = 0);

    /// The style of the current text, for headings.
    Style& CurrentStyle() { return style_; }

    /// How many characters were printed.
    std::size_t Count() const { return count_; }

    /// True when a turn has printed all that it may; more is not printed.
    bool IsFull() const { return count_ >= limit_; }
    /// For the last words of a turn that has printed all that it may.
    void RaiseLimit() { limit_ = count_ + MostPrinted; }

    /// So many characters a turn may print.
    static constexpr std::size_t MostPrinted = 64 * 1024;

private:
    Style BaseStyle() const;
    std::size_t FollowCode(std::string_view text, std::size_t bar);
    std::size_t PrintVariable(std::string_view text, std::size_t at);

    const World& world_;
    const State& state_;
    std::vector<Piece> pieces_;
    Style style_;
    Source source_;
    std::size_t count_ = 0;
    std::size_t limit_ = MostPrinted;
};

/// The text with its variables put in: "#name#" as text, "%name%" as number. What is put in is not looked
/// through again. Signs that stand for no variable stay.
std::string PutVariablesIn(std::string_view text, const World& world, const State& state);

/// The end of the variable that begins at `at`, and what it prints: nothing when none begins there.
/// @return  the place behind it; `at` when there is none
std::size_t ReadVariable(std::string_view text, std::size_t at, const World& world, const State& state,
                         std::string& value);

/// The text without its format codes, for what is compared with an answer.
std::string PlainText(std::string_view text);

/// True when a text prints nothing: it is made of format codes alone.
bool IsMadeOfCodes(std::string_view text);

} // namespace zem::play
