#include "base/LineText.h"
#include "play/FileNames.h"
#include "play/Interpreter.h"
#include "play/Limits.h"

#include <algorithm>

namespace zem::play {

/// Prints the rest of the current text, with its waits.
bool Interpreter::PrintPart(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const bool waits = printer_.Print(text, at);
        if (!Spend(text.size()) || printer_.IsFull())
            return StopAt(Stop::Limit);
        if (waits && !NextAnswer(Need::Key))
            return false;
    }
    return true;
}

bool Interpreter::PrintLine(std::string_view text, const Source& source) {
    printer_.Begin(source);
    if (!PrintPart(text))
        return false;
    printer_.NewLine();
    return !printer_.IsFull() || StopAt(Stop::Limit);
}

bool Interpreter::PrintText(const WorldText& text) {
    // Even an empty text is saved with one empty line, so nothing is printed for it.
    std::string_view rest = text.record->Text;
    if (rest.empty())
        return true;
    NoteHit(text.book);
    printer_.Begin({&text.book, ScriptField::Body, 0, 1});
    while (true) {
        const std::size_t end = rest.find("\r\n");
        if (!PrintPart(rest.substr(0, end)))
            return false;
        printer_.NewLine();
        if (printer_.IsFull())
            return StopAt(Stop::Limit);
        if (end == std::string_view::npos)
            return true;
        rest.remove_prefix(end + 2);
    }
}

bool Interpreter::PrintMessage(Message message, std::string_view detail) {
    printer_.Begin({});
    if (!PrintPart(world_.TextOf(message)))
        return false;
    if (!detail.empty()) {
        printer_.Raw(" ");
        printer_.Raw(detail);
    }
    printer_.NewLine();
    return !printer_.IsFull() || StopAt(Stop::Limit);
}

bool Interpreter::PrintList(Message message, const std::vector<std::string>& entries) {
    // A message that is replaced by format codes alone is how a game does without the list.
    if (entries.empty() || IsMadeOfCodes(world_.TextOf(message)))
        return true;
    std::string list;
    for (std::size_t k = 0; k < entries.size(); ++k)
        list.append(k == 0 ? "" : k + 1 < entries.size() ? ", " : " and ").append(entries[k]);
    return Spend(list.size()) && PrintMessage(message, list + ".");
}

bool Interpreter::ExecuteText(const Book& book, const Node& node) {
    const Source source = SourceOf(book, node);
    const std::string& text = node.arguments.text;
    switch (node.op) {
    case Op::Msg:
        return PrintLine(text, source);
    case Op::Say:
        printer_.Begin(source);
        printer_.Raw("\x93");
        if (!PrintPart(text))
            return false;
        printer_.Raw("\x94\n");
        return !printer_.IsFull() || StopAt(Stop::Limit);
    case Op::Text:
        if (const WorldText* block = world_.FindTextOfScript(node.arguments.name))
            return PrintText(*block);
        return WarnLacks(source, "text", world_.GetNames().Name(Kind::Text, node.arguments.name));
    case Op::Line:
        return PrintLine({}, source);
    case Op::Clear:
        printer_.Begin(source);
        printer_.Add(Piece::Clear);
        return Spend(1);
    case Op::Pause: {
        const std::int64_t seconds = LeadingInteger(PutIn(text));
        if (seconds >= 1) {
            printer_.Add(Piece::Pause, {}, static_cast<int>(seconds));
            state_.Set(Now, state_[Now] + seconds);
        }
        return Spend(1);
    }
    case Op::Key:
        return (text.empty() || PrintLine(text, source)) && NextAnswer(Need::Key);
    case Op::Colour:
        state_.SetText(Colour, EqualIgnoringCase(Trim(text), "black") ? std::string_view() : Trim(text));
        return true;
    case Op::FontName:
        state_.SetText(FontName, Trim(text));
        return true;
    case Op::FontSize:
        state_.Set(FontSize, std::clamp<std::int64_t>(LeadingInteger(text), 0, 400));
        return true;
    case Op::Silence:
        printer_.Add(Piece::Silence);
        return Spend(1);
    case Op::Picture:
        return PlayFile(Piece::Picture, node, source);
    case Op::Sound:
        return PlayFile(Piece::Sound, node, source);
    case Op::Music:
        return PlayFile(Piece::Music, node, source);
    default:
        return true;
    }
}

bool Interpreter::PlayFile(Piece::Kind kind, const Node& node, const Source& source) {
    const std::string_view file = Trim(node.arguments.text);
    const bool isPicture = kind == Piece::Picture;
    if (IsPlainFileName(file) && (isPicture ? IsPictureName(file) : IsSoundName(file))) {
        printer_.Begin(source);
        printer_.Add(kind, file);
        return Spend(file.size());
    }
    const char* word = isPicture ? "picture" : kind == Piece::Sound ? "sound" : "music";
    return Warn(source, "[" + std::string(word) + ": " + std::string(file) + "]");
}

} // namespace zem::play
