#include "figures/PrintedWords.h"

#include "base/LineText.h"
#include "game/RawScripts.h"
#include "game/ScriptOwners.h"
#include "kel/ScriptLine.h"
#include "model/Texts.h"

#include <array>
#include <optional>
#include <unordered_map>

namespace zem::figures {

namespace {

enum class Letter : unsigned char { None, Joiner, Letter };

/// What counts as part of a word in Windows-1252.
constexpr std::array<Letter, 256> MakeLetters() {
    std::array<Letter, 256> letters{};
    const auto mark = [&](int from, int to) {
        for (int code = from; code <= to; ++code)
            letters[static_cast<std::size_t>(code)] = Letter::Letter;
    };
    mark('0', '9');
    mark('A', 'Z');
    mark('a', 'z');
    mark(0xC0, 0xFF);
    for (const int code : {0xD7, 0xF7}) // times and divided by
        letters[static_cast<std::size_t>(code)] = Letter::None;
    for (const int code : {0x83, 0x8A, 0x8C, 0x8E, 0x9A, 0x9C, 0x9E, 0x9F, 0xAA, 0xB5, 0xBA})
        letters[static_cast<std::size_t>(code)] = Letter::Letter;
    for (const int code : {0x27, 0x2D, 0x92}) // the apostrophes and the hyphen
        letters[static_cast<std::size_t>(code)] = Letter::Joiner;
    return letters;
}

constexpr std::array<Letter, 256> Letters = MakeLetters();

/// How many bytes a variable between two of the sign at the front takes; 0 when there is none.
std::size_t VariableSize(std::string_view text) {
    const std::size_t end = text.find_first_of(text.front() == '#' ? "# \r\n" : "% \r\n", 1);
    return end == std::string_view::npos || end == 1 || text[end] != text.front() ? 0 : end + 1;
}

/// How many bytes a format code takes, and whether it parts words.
struct CodeSize {
    std::size_t bytes;
    bool parts;
};

CodeSize SizeOfCode(std::string_view text) {
    const std::string_view code = text.substr(1, 2);
    if (code.starts_with('n') || code.starts_with('w'))
        return {2, true};
    if (code.starts_with('s'))
        return {std::min<std::size_t>(4, text.size()), false};
    if (code.starts_with('j') || code.starts_with('x'))
        return {std::min<std::size_t>(3, text.size()), false};
    if (code.starts_with('c')) {
        const bool isColour =
            code.size() == 2 && std::string_view("rblyg").find(code[1]) != std::string_view::npos;
        return isColour ? CodeSize{3, false} : CodeSize{2, true};
    }
    return {std::min<std::size_t>(2, text.size()), false};
}

std::optional<PrintKind> KindOfText(const Place& place) {
    switch (place.field) {
    case FieldId::RoomLook:
    case FieldId::RoomInDescription:
        return PrintKind::Description;
    case FieldId::TextText:
        return PrintKind::Text;
    case FieldId::MenuInfo:
        return PrintKind::Menu;
    case FieldId::PairKey:
        if (place.steps.front().list == FieldId::GameSelectionMenus)
            return PrintKind::Menu;
        return std::nullopt;
    case FieldId::ErrorGameText:
        return PrintKind::Message;
    default:
        return std::nullopt;
    }
}

PrintKind KindInScript(const Place& place, std::string_view keyword) {
    if (keyword == "say" || place.field == FieldId::ThingSpeak)
        return PrintKind::Speech;
    const bool describes = place.field == FieldId::ThingLook || place.field == FieldId::RoomDescription ||
                           place.field == FieldId::GameDescription;
    return describes ? PrintKind::Description : PrintKind::Message;
}

/// Which part of the parameter the player reads; -1 for none.
int PrintedPart(const CommandEntry& entry) {
    int part = 0;
    for (const std::string_view word : SplitAt(entry.definition->RawSyntax, ";")) {
        if (EqualIgnoringCase(Trim(word), "message") || EqualIgnoringCase(Trim(word), "question"))
            return part;
        ++part;
    }
    return -1;
}

class Visitor {
public:
    Visitor(const CommandLookup& commands,
            const std::function<void(const Place&, PrintKind, std::size_t)>& printed,
            const std::function<void(const Place&, const FoundCommand&)>& command)
        : commands_(commands),
          printed_(printed),
          command_(command) {}

    void Visit(const Place& place, FieldUse use, const std::string& text) {
        if (use.kind == FieldKind::Script)
            ForEachLine(text, [&](TextRange range, int) {
                const std::string_view line = range.Of(text);
                VisitScript(place, line, TakeApart(line, commands_));
            });
        else if (use.kind == FieldKind::RawLines)
            ForEachLine(text, [&](TextRange range, int) {
                const std::string_view line = range.Of(text);
                ForEachScriptInRawLine(line, commands_, [&](std::size_t begin, const ScriptLine& parsed) {
                    VisitScript(place, line.substr(begin), parsed);
                });
            });
        else if (const std::optional<PrintKind> kind = KindOfText(place))
            printed_(place, *kind, CountWords(text));
    }

private:
    void VisitScript(const Place& place, std::string_view line, const ScriptLine& parsed) {
        for (const ScriptAction& action : parsed.actions)
            if (!action.IsIf() && action.call.entry != nullptr) {
                command_(place, {action.call.entry->keyword, action.call.parameter.Of(line)});
                VisitCall(place, line, action.call);
            }
        for (const ScriptCondition& condition : parsed.conditions)
            if (condition.call.entry != nullptr) // some conditions ask the player
                VisitCall(place, line, condition.call);
    }

    void VisitCall(const Place& place, std::string_view line, const ScriptCall& call) {
        const auto [at, isNew] = printedParts_.try_emplace(call.entry, -1);
        if (isNew)
            at->second = PrintedPart(*call.entry);
        const int printed = at->second;
        if (!call.hasParameter || printed < 0)
            return;
        const std::string_view parameter = call.parameter.Of(line);
        int part = 0;
        ForEachPart(parameter, call.entry->syntax, [&](TextRange range, NameKind) {
            if (part++ == printed)
                printed_(place, KindInScript(place, call.entry->keyword), CountWords(range.Of(parameter)));
        });
    }

    const CommandLookup& commands_;
    const std::function<void(const Place&, PrintKind, std::size_t)>& printed_;
    const std::function<void(const Place&, const FoundCommand&)>& command_;
    std::unordered_map<const CommandEntry*, int> printedParts_;
};

} // namespace

std::size_t CountWords(std::string_view text) {
    std::size_t words = 0;
    bool counted = false; // the run that is being read
    for (std::size_t at = 0; at < text.size();) {
        const Letter letter = Letters[static_cast<unsigned char>(text[at])];
        if (letter == Letter::Letter) {
            words += counted ? 0 : 1;
            counted = true;
            ++at;
        } else if (letter == Letter::Joiner) {
            ++at;
        } else if (text[at] == '|') {
            const CodeSize code = SizeOfCode(text.substr(at));
            counted = counted && !code.parts;
            at += code.bytes;
        } else {
            const bool isSign = text[at] == '#' || text[at] == '%';
            counted = false;
            at += isSign ? std::max<std::size_t>(VariableSize(text.substr(at)), 1) : 1;
        }
    }
    return words;
}

void VisitPrinted(const GameModel& game, const CommandLookup& commands,
                  const std::function<void(const Place&, PrintKind, std::size_t words)>& printed,
                  const std::function<void(const Place&, const FoundCommand&)>& command) {
    Visitor visitor(commands, printed, command);
    const ScriptOwners owners(game);
    ForEachText(game, [&](const Place& place, FieldUse use, const std::string& text) {
        if (place.steps.front().list == FieldId::GameProcedures && use.kind == FieldKind::Script)
            visitor.Visit(owners.Path(place).front().WholeField(), use, text);
        else
            visitor.Visit(place, use, text);
    });
}

} // namespace zem::figures
