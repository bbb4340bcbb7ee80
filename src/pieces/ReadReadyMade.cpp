#include "base/KelError.h"
#include "base/LineText.h"
#include "pieces/ReadyMade.h"

#include <utility>

namespace zem {

namespace {

constexpr std::pair<const char*, AnswerKind> AnswerKinds[] = {
    {"room", AnswerKind::Room},        {"other room", AnswerKind::OtherRoom},
    {"new room", AnswerKind::NewRoom}, {"item", AnswerKind::Item},
    {"new item", AnswerKind::NewItem}, {"new object", AnswerKind::NewObject},
    {"new name", AnswerKind::NewName}, {"new character", AnswerKind::NewCharacter},
    {"number", AnswerKind::Number},    {"collectable", AnswerKind::Collectable},
    {"word", AnswerKind::Word},        {"text", AnswerKind::Text},
};

bool TakeAway(std::string_view& text, std::string_view begin) {
    if (!text.starts_with(begin))
        return false;
    text = Trim(text.substr(begin.size()));
    return true;
}

/// "room if new Key", "exit of From to To", "choice he, she".
void ReadKind(std::string_view text, PieceQuestion& question, int line) {
    constexpr std::string_view OnlyIf = " if new ";
    if (const std::size_t at = text.find(OnlyIf); at != std::string_view::npos) {
        question.onlyIfNew = text.substr(at + OnlyIf.size());
        text = text.substr(0, at);
    }
    if (TakeAway(text, "exit of ")) {
        constexpr std::string_view To = " to ";
        const std::size_t at = text.find(To);
        question.kind = AnswerKind::Exit;
        question.room = text.substr(0, at);
        if (at != std::string_view::npos)
            question.leadsTo = text.substr(at + To.size());
        return;
    }
    if (TakeAway(text, "choice ")) {
        question.kind = AnswerKind::Choice;
        for (const std::string_view choice : SplitAt(text, ","))
            question.choices.emplace_back(Trim(choice));
        return;
    }
    for (const auto& [name, kind] : AnswerKinds)
        if (text == name) {
            question.kind = kind;
            return;
        }
    throw KelError("line " + std::to_string(line) + ": there is no kind of answer " + QuoteShortly(text));
}

PieceQuestion ReadQuestion(std::string_view text, int line) {
    const std::vector<std::string_view> parts = SplitAt(text, ";");
    if (parts.size() != 4)
        throw KelError("line " + std::to_string(line) +
                       ": a question has a name, a kind, its words and a suggestion");
    PieceQuestion question;
    question.id = Trim(parts[0]);
    question.text = Trim(parts[2]);
    question.suggestion = Trim(parts[3]);
    ReadKind(Trim(parts[1]), question, line);
    return question;
}

bool HasQuestion(const ReadyMade& piece, const std::string& id) {
    for (const PieceQuestion& question : piece.questions)
        if (question.id == id)
            return true;
    return id.empty();
}

} // namespace

ReadyMade ReadReadyMade(std::string_view file) {
    ReadyMade piece;
    int number = 0;
    for (std::string_view line : SplitAt(file, "\n")) {
        ++number;
        line = Trim(line.ends_with('\r') ? line.substr(0, line.size() - 1) : line);
        if (TakeAway(line, "'title "))
            piece.title = line;
        else if (TakeAway(line, "'about "))
            piece.about = line;
        else if (TakeAway(line, "'words "))
            piece.words = line;
        else if (TakeAway(line, "'ask "))
            piece.questions.push_back(ReadQuestion(line, number));
        else if (!line.empty())
            piece.body.append(line).append("\r\n");
    }
    if (piece.title.empty() || piece.body.empty())
        throw KelError("it has no title, or nothing to put into a game");
    for (const PieceQuestion& question : piece.questions)
        if (!HasQuestion(piece, question.room) || !HasQuestion(piece, question.leadsTo) ||
            !HasQuestion(piece, question.onlyIfNew))
            throw KelError("the question " + question.id + " depends on one that is not there");
    return piece;
}

} // namespace zem
