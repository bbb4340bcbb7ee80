#include "play/Transcript.h"

#include "base/LineText.h"
#include "base/TextEncoding.h"

#include <utility>

namespace zem::play {

void StoryText::Add(const std::vector<Piece>& pieces) {
    for (const Piece& piece : pieces)
        switch (piece.kind) {
        case Piece::Text:
            text_ += ToUtf8(piece.text);
            break;
        case Piece::Clear:
            AddEvent("[clear]");
            break;
        case Piece::Picture:
            AddEvent("[picture: " + ToUtf8(piece.text) + "]");
            break;
        case Piece::Sound:
            AddEvent("[sound: " + ToUtf8(piece.text) + "]");
            break;
        case Piece::Music:
            AddEvent("[music: " + ToUtf8(piece.text) + "]");
            break;
        case Piece::Pause:
        case Piece::Silence:
            break;
        }
}

void StoryText::AddEvent(const std::string& words) {
    EndLine();
    text_ += words + "\n";
}

void StoryText::EndLine() {
    if (!text_.empty() && text_.back() != '\n')
        text_ += '\n';
}

void StoryText::EndQuestion() {
    EndLine();
    if (text_.ends_with(" \n"))
        text_.erase(text_.size() - 2, 1);
}

std::string StoryText::Take() {
    return std::exchange(text_, {});
}

std::optional<InputLine> ReadInputLine(std::string_view line, std::size_t number) {
    InputLine input;
    input.number = number;
    // Some editors begin a UTF-8 file with a mark that nobody sees.
    const std::string_view mark = "\xEF\xBB\xBF";
    const std::string_view trimmed =
        Trim(number == 1 && line.starts_with(mark) ? line.substr(mark.size()) : line);
    if (trimmed.empty())
        return std::nullopt;
    const std::string_view rest = Trim(trimmed.substr(1));
    input.text = FromUtf8(rest);
    input.written = trimmed;
    switch (trimmed.front()) {
    case '>':
        input.kind = InputLine::Typed;
        return input;
    case '<':
        input.kind = InputLine::Answer;
        return input;
    case '@': {
        bool isAll = false;
        input.kind = InputLine::Seconds;
        input.seconds = LeadingInteger(rest, &isAll);
        if (!isAll || input.seconds < 0)
            return std::nullopt;
        return input;
    }
    default:
        return std::nullopt;
    }
}

std::string TranscriptPlayer::Begin() {
    Take(session_.Begin());
    return TakeStory();
}

std::string TranscriptPlayer::TakeStory() {
    if (session_.Needs() == Need::Line)
        story_.EndLine();
    else
        story_.EndQuestion();
    return story_.Take();
}

std::optional<std::string> TranscriptPlayer::Refuse(const std::string& problem) {
    problem_ = problem;
    return std::nullopt;
}

std::optional<std::string> TranscriptPlayer::Play(const InputLine& line) {
    const Need need = session_.Needs();
    const bool isQuestion = need != Need::Line && need != Need::Nothing;
    if (isOver_)
        return Refuse("the game has ended");
    if (line.kind == InputLine::Answer && !isQuestion)
        return Refuse("nothing is asked here");
    if (line.kind == InputLine::Typed && isQuestion)
        return Refuse("a question is open, which a line with \"<\" answers");
    if (line.kind == InputLine::Seconds && need == Need::Nothing)
        return Refuse("the game has ended");
    Outcome outcome = line.kind == InputLine::Typed    ? session_.Type(line.text)
                      : line.kind == InputLine::Answer ? session_.Answer(line.text)
                                                       : session_.Pass(line.seconds);
    if (outcome.isRefused)
        return Refuse("the game has ended");
    Take(std::move(outcome));
    // One empty line stands before the prompt; an answer follows its question.
    return (isQuestion ? "" : "\n") + line.written + "\n" + TakeStory();
}

void TranscriptPlayer::Take(Outcome outcome) {
    story_.Add(outcome.pieces);
    warnings_.insert(warnings_.end(), outcome.warnings.begin(), outcome.warnings.end());
    AnswerRequest(outcome.request);
}

void TranscriptPlayer::AnswerRequest(Request request) {
    switch (request) {
    case Request::Save:
        saved_ = session_.Save();
        Take(session_.Saved(true));
        break;
    case Request::Restore:
        Take(saved_ ? session_.Restore(*saved_) : session_.NotRestored());
        break;
    case Request::Quit:
        isOver_ = true;
        break;
    default:
        break;
    }
}

} // namespace zem::play
