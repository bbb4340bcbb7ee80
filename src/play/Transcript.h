#pragma once

#include "play/Session.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A game as plain text: what was typed, and the story between.
namespace zem::play {

/// The pieces of outcomes as lines of UTF-8 text.
class StoryText {
public:
    /// Adds what an outcome shows.
    void Add(const std::vector<Piece>& pieces);

    /// Ends the line that is being printed, if there is one.
    void EndLine();

    /// The same behind a question, whose last blank goes: it only parts the question from an answer on the
    /// same line, and here answers have lines of their own.
    void EndQuestion();

    /// Takes the text so far, and goes on with an empty one.
    std::string Take();

private:
    void AddEvent(const std::string& words);

    std::string text_;
};

/// One line of input: what is typed, answered, or passes.
struct InputLine {
    enum Kind : std::uint8_t { Typed, Answer, Seconds };
    Kind kind = Typed;
    std::string text; // Windows-1252, without its sign
    std::int64_t seconds = 0;
    std::string written;    // the whole line as it stands, in UTF-8
    std::size_t number = 0; // of the line in its file, from 1
};

/// Reads "> line", "< answer" or "@ seconds" in UTF-8. Nothing for any other line.
std::optional<InputLine> ReadInputLine(std::string_view line, std::size_t number);

/// Plays lines of input and gives the transcript, which repeats them.
class TranscriptPlayer {
public:
    explicit TranscriptPlayer(Session& session) : session_(session) {}

    /// The story up to the first prompt or question.
    std::string Begin();

    /// Plays a line; gives it with its story. Nothing when it is not asked for: Problem() says why.
    std::optional<std::string> Play(const InputLine& line);

    const std::string& Problem() const { return problem_; }
    bool IsOver() const { return isOver_; }

    /// What the author should know of the turns so far, in plain words.
    const std::vector<Warning>& Warnings() const { return warnings_; }

private:
    std::string TakeStory();
    std::optional<std::string> Refuse(const std::string& problem);
    void Take(Outcome outcome);
    void AnswerRequest(Request request);

    Session& session_;
    StoryText story_;
    std::optional<std::string> saved_; // by SAVE, for RESTORE
    bool isOver_ = false;
    std::string problem_;
    std::vector<Warning> warnings_;
};

} // namespace zem::play
