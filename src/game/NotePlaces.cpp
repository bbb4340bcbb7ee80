#include "game/NotePlaces.h"

#include "base/LineText.h"
#include "base/TextEncoding.h"
#include "kel/ScriptLine.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace zem {

namespace {

constexpr const char* ScriptWord = "script";
constexpr const char* TextWord = "text";

/// What the words that a place means are called, and which words of steps hold a name of the kind.
constexpr std::pair<NameKind, std::string_view> KindWords[] = {
    {NameKind::Room, "room"},
    {NameKind::Object, "object"},
    {NameKind::Character, "character"},
    {NameKind::Thing, "thing"},
    {NameKind::Item, "item"},
    {NameKind::Procedure, "procedure"},
    {NameKind::TextSection, "text block"},
    {NameKind::Menu, "menu"},
    {NameKind::Variable, "variable"},
    {NameKind::Collectable, "collectable"},
    {NameKind::Flag, "flag"},
    {NameKind::Timer, "timer"},
    {NameKind::File, "file"},
    // Steps whose entries are called by a name of something else.
    {NameKind::Item, "use-able object"},
    {NameKind::Item, "give-able object"},
    {NameKind::Room, "place"},
    {NameKind::File, "library"},
};

std::string WordOf(NameKind kind) {
    const auto* row = std::find_if(std::begin(KindWords), std::end(KindWords),
                                   [kind](const auto& entry) { return entry.first == kind; });
    return std::string(row == std::end(KindWords) ? TextWord : row->second);
}

NameKind KindOf(std::string_view word) {
    const auto* row = std::find_if(std::begin(KindWords), std::end(KindWords),
                                   [word](const auto& entry) { return entry.second == word; });
    return row == std::end(KindWords) ? NameKind::None : row->first;
}

/// What stands in exactly these bytes of a script.
std::string WordInScript(std::string_view script, TextRange bytes, const CommandLookup& commands) {
    std::string word = ScriptWord;
    ForEachLine(script, [&](TextRange lineRange, int) {
        if (bytes.begin < lineRange.begin || bytes.end > lineRange.end)
            return;
        ForEachName(lineRange.Of(script), commands, [&](TextRange range, NameKind kind) {
            if (word == ScriptWord && lineRange.begin + range.begin == bytes.begin &&
                range.Size() == bytes.Size())
                word = WordOf(kind);
        });
    });
    return word;
}

bool IsOneName(FieldKind kind) {
    return kind == FieldKind::Name || kind == FieldKind::Reference || kind == FieldKind::Exit ||
           kind == FieldKind::Target;
}

/// The words that are meant, if not all that stands there. What a field refers to always belongs to it: with
/// another name there, it is another problem.
void AddSubject(NotePlace& told, const ResolvedPlace& resolved, TextRange bytes,
                const CommandLookup& commands) {
    if (resolved.text == nullptr)
        return;
    const bool isReference = IsOneName(resolved.use.kind) && resolved.use.kind != FieldKind::Name;
    if (bytes.IsEmpty() && !isReference)
        return;
    if (bytes.IsEmpty())
        bytes = {0, resolved.text->size()};
    const std::string_view meant = bytes.Of(*resolved.text);
    std::string word = TextWord;
    if (resolved.use.kind == FieldKind::Script)
        word = WordInScript(*resolved.text, bytes, commands);
    else if (resolved.use.kind == FieldKind::Target && bytes.Size() == resolved.text->size())
        word = "place";
    else if (IsOneName(resolved.use.kind))
        word = WordOf(resolved.use.names);
    told.push_back({word, true, ToUtf8(meant)});
}

void AddSteps(NotePlace& told, const ResolvedPlace& resolved) {
    for (const ResolvedPlace::Step& step : resolved.steps)
        told.push_back({step.list, step.key != nullptr, step.key == nullptr ? "" : ToUtf8(*step.key)});
    if (resolved.field != nullptr)
        told.push_back({resolved.field, false, ""});
    if (told.empty())
        told.push_back({"game", false, ""});
}

/// The names of a kind in a text, replaced.
class Renamer {
public:
    Renamer(NameKind kind, const std::string& from, const std::string& to, const CommandLookup& commands)
        : kind_(kind),
          from_(from),
          to_(to),
          commands_(commands) {}

    std::string Rename(const NotePart& part) const {
        const std::string name = FromUtf8(part.name);
        if (part.what == ScriptWord)
            return ToUtf8(InScript(name));
        if (part.what == "place")
            return ToUtf8(InTarget(name));
        if (Means(KindOf(part.what)) && name == from_)
            return ToUtf8(to_);
        if (kind_ == NameKind::Collectable && part.what == "definition" && FirstOf(name) == from_)
            return ToUtf8(to_ + name.substr(from_.size()));
        return kind_ == NameKind::Variable ? ToUtf8(InText(name)) : part.name;
    }

private:
    static std::string_view FirstOf(std::string_view text) { return text.substr(0, text.find(' ')); }

    bool Means(NameKind other) const {
        const bool isThing = kind_ == NameKind::Object || kind_ == NameKind::Character;
        return kind_ == other || (isThing && other == NameKind::Thing);
    }

    /// @param ranges  of the names in the text
    std::string Replace(std::string text, std::vector<TextRange> ranges) const {
        std::sort(ranges.begin(), ranges.end(),
                  [](TextRange a, TextRange b) { return a.begin > b.begin; }); // from the end
        for (const TextRange range : ranges)
            text.replace(range.begin, range.Size(), to_);
        return text;
    }

    std::string InScript(const std::string& script) const {
        std::vector<TextRange> ranges;
        ForEachLine(script, [&](TextRange line, int) {
            ForEachName(line.Of(script), commands_, [&](TextRange range, NameKind kind) {
                const bool isIt = Means(kind) && range.Of(line.Of(script)) == from_;
                if (isIt)
                    ranges.push_back({line.begin + range.begin, line.begin + range.end});
                return isIt;
            });
        });
        return Replace(script, std::move(ranges));
    }

    std::string InText(const std::string& text) const {
        std::vector<TextRange> ranges;
        ForEachVariable(text, [&](TextRange range, char) {
            const bool isIt = range.Of(text) == from_;
            if (isIt)
                ranges.push_back(range);
            return isIt;
        });
        return Replace(text, std::move(ranges));
    }

    /// "prefix; room", or the room alone.
    std::string InTarget(const std::string& target) const {
        const std::size_t semicolon = target.find(';');
        const std::size_t begin = semicolon == std::string::npos ? 0 : semicolon + 1;
        const TextRange range = TrimmedRange(target, {begin, target.size()});
        const bool isIt = kind_ == NameKind::Room && range.Of(target) == from_;
        return isIt ? Replace(target, {range}) : InTextOfVariable(target);
    }

    std::string InTextOfVariable(const std::string& text) const {
        return kind_ == NameKind::Variable ? InText(text) : text;
    }

    NameKind kind_;
    const std::string& from_;
    const std::string& to_;
    const CommandLookup& commands_;
};

} // namespace

NotePlace TellByNames(const GameModel& game, const ScriptOwners& owners, const CommandLookup& commands,
                      const Place& place) {
    NotePlace told;
    const std::vector<Place> path = owners.Path(place);
    const auto where = Resolve(game, path.front().WholeField());
    const auto what = Resolve(game, place);
    if (where)
        AddSteps(told, *where);
    if (what)
        AddSubject(told, *what, place.bytes, commands);
    if (told.empty())
        told.push_back({"game", false, ""});
    return told;
}

void RenameInNotes(GameNotes& notes, NameKind kind, const std::string& from, const std::string& to,
                   const CommandLookup& commands) {
    const Renamer renamer(kind, from, to, commands);
    std::set<Silence> renamed;
    for (Silence silence : notes.silences) {
        for (NotePart& part : silence.place)
            if (part.hasName)
                part.name = renamer.Rename(part);
        renamed.insert(std::move(silence));
    }
    notes.silences = std::move(renamed);
}

} // namespace zem
