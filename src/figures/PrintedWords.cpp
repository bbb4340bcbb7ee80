#include "figures/PrintedWords.h"

#include "base/LineText.h"
#include "game/RawScripts.h"
#include "game/ScriptOwners.h"
#include "kel/ProseParts.h"
#include "kel/ScriptLine.h"
#include "model/Texts.h"

#include <optional>
#include <unordered_map>

namespace zem::figures {

namespace {

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

/// Gives bytes of the text of a field.
using Printed = std::function<void(const Place&, PrintKind, TextRange, const std::string&)>;
using Command = std::function<void(const Place&, const FoundCommand&)>;

class PrintedVisitor {
public:
    PrintedVisitor(const CommandLookup& commands, const Printed& printed, const Command& command)
        : commands_(commands),
          printed_(printed),
          command_(command) {}

    void Visit(const Place& place, FieldUse use, const std::string& text) {
        if (use.kind == FieldKind::Script)
            ForEachLine(text, [&](TextRange range, int) {
                VisitScript(place, text, range, TakeApart(range.Of(text), commands_));
            });
        else if (use.kind == FieldKind::RawLines)
            ForEachLine(text, [&](TextRange range, int) {
                ForEachScriptInRawLine(range.Of(text), commands_,
                                       [&](std::size_t begin, const ScriptLine& parsed) {
                                           VisitScript(place, text, {range.begin + begin, range.end}, parsed);
                                       });
            });
        else if (const std::optional<PrintKind> kind = KindOfText(place))
            printed_(place, *kind, {0, text.size()}, text);
    }

private:
    void VisitScript(const Place& place, const std::string& text, TextRange line, const ScriptLine& parsed) {
        for (const ScriptAction& action : parsed.actions)
            if (!action.IsIf() && action.call.entry != nullptr) {
                if (command_)
                    command_(place, {action.call.entry->keyword, action.call.parameter.Of(line.Of(text))});
                VisitCall(place, text, line, action.call);
            }
        for (const ScriptCondition& condition : parsed.conditions)
            if (condition.call.entry != nullptr) // some conditions ask the player
                VisitCall(place, text, line, condition.call);
    }

    void VisitCall(const Place& place, const std::string& text, TextRange line, const ScriptCall& call) {
        const auto [at, isNew] = printedParts_.try_emplace(call.entry, -1);
        if (isNew)
            at->second = PrintedPart(*call.entry);
        if (!call.hasParameter || at->second < 0)
            return;
        const TextRange part = PartOf(call.parameter.Of(line.Of(text)), call.entry->syntax, at->second);
        if (part.IsEmpty())
            return;
        const std::size_t begin = line.begin + call.parameter.begin;
        printed_(place, KindInScript(place, call.entry->keyword), {begin + part.begin, begin + part.end},
                 text);
    }

    const CommandLookup& commands_;
    const Printed& printed_;
    const Command& command_;
    std::unordered_map<const CommandEntry*, int> printedParts_;
};

} // namespace

int PrintedPart(const CommandEntry& entry) {
    int part = 0;
    for (const std::string_view word : SplitAt(entry.definition->RawSyntax, ";")) {
        if (EqualIgnoringCase(Trim(word), "message") || EqualIgnoringCase(Trim(word), "question"))
            return part;
        ++part;
    }
    return -1;
}

TextRange PartOf(std::string_view parameter, const ParameterSyntax& syntax, int part) {
    TextRange found;
    int number = 0;
    ForEachPart(parameter, syntax, [&](TextRange range, NameKind) {
        if (number++ == part)
            found = range;
    });
    return found;
}

std::size_t CountWords(std::string_view text) {
    std::size_t words = 0;
    ForEachProsePart(text, [&](const ProsePart& part) { words += part.kind == ProseKind::Word ? 1 : 0; });
    return words;
}

void VisitPrintedTexts(const GameModel& game, const CommandLookup& commands, const Printed& printed) {
    const Command noCommand;
    PrintedVisitor visitor(commands, printed, noCommand);
    ForEachText(game, [&](const Place& place, FieldUse use, const std::string& text) {
        visitor.Visit(place, use, text);
    });
}

void VisitPrinted(const GameModel& game, const CommandLookup& commands,
                  const std::function<void(const Place&, PrintKind, std::size_t words)>& printed,
                  const Command& command) {
    const Printed count = [&](const Place& place, PrintKind kind, TextRange bytes, const std::string& text) {
        printed(place, kind, CountWords(bytes.Of(text)));
    };
    PrintedVisitor visitor(commands, count, command);
    const ScriptOwners owners(game);
    ForEachText(game, [&](const Place& place, FieldUse use, const std::string& text) {
        if (place.steps.front().list == FieldId::GameProcedures && use.kind == FieldKind::Script)
            visitor.Visit(owners.Path(place).front().WholeField(), use, text);
        else
            visitor.Visit(place, use, text);
    });
}

} // namespace zem::figures
