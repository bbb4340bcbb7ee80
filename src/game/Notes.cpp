#include "game/Notes.h"

#include "base/KelError.h"
#include "base/LineText.h"
#include "base/TextEncoding.h"
#include "base/TextFile.h"
#include "files/ReplaceFile.h"
#include "writer/OutputFile.h"

#include <algorithm>
#include <filesystem>
#include <optional>

namespace zem {

namespace {

constexpr std::string_view Because = " because ";

/// Reads the place of a silence from left to right.
class PlaceReader {
public:
    explicit PlaceReader(std::string_view text) : text_(text) {}

    NotePlace Read() {
        NotePlace place;
        do {
            place.push_back(ReadPart());
        } while (TakeIf(", "));
        return place;
    }

    /// What follows the place.
    std::string_view Rest() const { return text_; }

private:
    bool TakeIf(std::string_view start) {
        const bool isThere = text_.starts_with(start);
        text_.remove_prefix(isThere ? start.size() : 0);
        return isThere;
    }

    NotePart ReadPart() {
        NotePart part;
        const std::size_t end =
            std::min({text_.find('"'), text_.find(','), text_.find(Because), text_.size()});
        part.what = Trim(text_.substr(0, end));
        text_.remove_prefix(end);
        if (part.what.empty())
            throw KelError("a silence must tell its place in words: room \"Kitchen\", exit north");
        part.hasName = TakeIf("\"");
        if (part.hasName)
            part.name = ReadName();
        return part;
    }

    std::string ReadName() {
        std::string name;
        for (std::size_t at = 0; at < text_.size(); ++at) {
            if (text_[at] == '"') {
                text_.remove_prefix(at + 1);
                return name;
            }
            if (text_[at] == '\\' && at + 1 < text_.size()) {
                ++at;
                name += text_[at] == 'n' ? '\n' : text_[at] == 'r' ? '\r' : text_[at];
            } else {
                name += text_[at];
            }
        }
        throw KelError("a quotation mark is not closed");
    }

    std::string_view text_;
};

Silence ReadSilence(std::string_view text) {
    const std::size_t at = text.find(" at ");
    if (at == std::string_view::npos || at == 0)
        throw KelError("a silence must say what it is about: silence A01 at room \"Kitchen\"");
    Silence silence;
    silence.check = text.substr(0, at);
    PlaceReader reader(text.substr(at + 4));
    silence.place = reader.Read();
    const std::string_view rest = reader.Rest();
    if (rest.starts_with(Because))
        silence.reason = Trim(rest.substr(Because.size()));
    else if (!Trim(rest).empty())
        throw KelError("behind the place of a silence stands \"because\" and the reason, or nothing");
    return silence;
}

/// The text behind the word that the line begins with; nothing for another line.
std::optional<std::string_view> Behind(std::string_view word, std::string_view line) {
    if (line.starts_with(word) && line.substr(word.size()).starts_with(' '))
        return Trim(line.substr(word.size()));
    return std::nullopt;
}

bool IsMergeMark(std::string_view line) {
    return line.starts_with("<<<<<<<") || line.starts_with("=======") || line.starts_with(">>>>>>>");
}

void ReadLine(GameNotes& notes, std::string_view line) {
    if (IsMergeMark(line))
        throw KelError("two versions of the notes were not merged");
    if (const auto silenced = Behind("silence", line))
        notes.silences.insert(ReadSilence(*silenced));
    else if (const auto word = Behind("word", line); word && !word->empty())
        notes.words.emplace(*word);
    else if (const auto language = Behind("language", line))
        notes.language = *language;
    else if (!Trim(line).empty())
        notes.others.emplace(line);
}

void RequireUtf8(std::string_view bytes) {
    const TextEncoding encoding = DetectEncoding(bytes);
    const bool isAscii = std::all_of(bytes.begin(), bytes.end(), [](char c) { return c >= 0; });
    if (encoding != TextEncoding::Utf8 && encoding != TextEncoding::Utf8WithMark && !isAscii)
        throw KelError("the notes are not in UTF-8");
    if (bytes.find('\0') != std::string_view::npos)
        throw KelError("the notes are no text");
}

std::string Quoted(const std::string& name) {
    std::string quoted = "\"";
    for (const char c : name) {
        if (c == '"' || c == '\\')
            quoted += '\\';
        if (c == '\r' || c == '\n')
            quoted += c == '\r' ? "\\r" : "\\n";
        else
            quoted += c;
    }
    return quoted + '"';
}

std::string LineOf(const Silence& silence) {
    std::string line = "silence " + silence.check + " at ";
    for (const NotePart& part : silence.place) {
        line += line.ends_with(" at ") ? "" : ", ";
        line += part.what;
        if (part.hasName)
            line += ' ' + Quoted(part.name);
    }
    return silence.reason.empty() ? line : line + std::string(Because) + silence.reason;
}

/// A reason stands on one line.
std::string OnOneLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    return std::string(Trim(text));
}

/// The silence of the check at the place, whatever its reason.
auto FindSilence(const GameNotes& notes, const std::string& check, const NotePlace& place) {
    const auto found = notes.silences.lower_bound({check, place, {}});
    const bool isIt = found != notes.silences.end() && found->check == check && found->place == place;
    return isIt ? found : notes.silences.end();
}

} // namespace

bool GameNotes::IsSilenced(const std::string& check, const NotePlace& place) const {
    return FindSilence(*this, check, place) != silences.end();
}

void GameNotes::SilenceAt(const std::string& check, const NotePlace& place, const std::string& reason) {
    Unsilence(check, place);
    silences.insert({check, place, OnOneLine(reason)});
}

void GameNotes::Unsilence(const std::string& check, const NotePlace& place) {
    for (auto found = FindSilence(*this, check, place); found != silences.end();
         found = FindSilence(*this, check, place))
        silences.erase(found);
}

GameNotes ReadNotes(std::string_view bytes) {
    RequireUtf8(bytes);
    if (bytes.starts_with("\xEF\xBB\xBF"))
        bytes.remove_prefix(3);
    GameNotes notes;
    for (std::size_t number = 1; !bytes.empty(); ++number)
        UseLineOfFile(TakeLine(bytes), number, [&](std::string_view line) { ReadLine(notes, line); });
    return notes;
}

std::string WriteNotes(const GameNotes& notes) {
    std::set<std::string> lines = notes.others;
    if (!notes.language.empty())
        lines.insert("language " + notes.language);
    for (const std::string& word : notes.words)
        lines.insert("word " + word);
    for (const Silence& silence : notes.silences)
        lines.insert(LineOf(silence));
    std::string bytes;
    for (const std::string& line : lines)
        bytes += line + '\n';
    return bytes;
}

std::string NotesPath(const std::string& gamePath) {
    return gamePath + ".notes";
}

GameNotes LoadNotes(const std::string& gamePath) {
    const std::string path = NotesPath(gamePath);
    std::error_code error;
    if (!std::filesystem::exists(path, error) && !error)
        return {};
    return ReadNotes(ReadFile(path));
}

void ChangeNotes(const std::string& gamePath, const std::function<void(GameNotes&)>& change) {
    const GameNotes before = LoadNotes(gamePath);
    GameNotes after = before;
    change(after);
    if (after == before)
        return;
    ReplaceFile(NotesPath(gamePath), [&](const std::string& path) {
        OutputFile file(path);
        file.Write(WriteNotes(after));
        file.Close();
    });
}

} // namespace zem
