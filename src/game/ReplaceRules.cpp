#include "game/ReplaceRules.h"

#include "base/LineText.h"
#include "kel/ScriptLine.h"
#include "model/CollectableDefinition.h"
#include "model/Texts.h"
#include "readback/ReadBack.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>
#include <tuple>

namespace zem {

namespace {

/// A game that holds nothing but the record that the step leads to, or the field of the game's own.
GameModel Alone(const GameModel& game, PlaceStep record, FieldId ownField) {
    GameModel alone;
    ForEachField<GameModel>([&](const auto& field) {
        using Value = std::remove_cvref_t<decltype(game.*field.member)>;
        if constexpr (RecordList<Value>) {
            if (field.id == record.list)
                (alone.*field.member).Append((game.*field.member)[record.entry]);
        } else if (record.list == FieldId::None && field.id == ownField) {
            alone.*field.member = game.*field.member;
        }
    });
    alone.KelVersion = CurrentKelVersion;
    return alone;
}

Place InAlone(Place place) {
    if (place.steps.front().list != FieldId::None)
        place.steps.front().entry = 1;
    return place;
}

/// What a record names, in order.
using Names = std::vector<std::tuple<NameKind, int, std::string>>;

Names NamesIn(const GameModel& alone, const GameIndex& index) {
    std::vector<RecordText> texts;
    ForEachText(alone, [&](const Place& place, FieldUse use, const std::string& text) {
        texts.push_back({place, use, text});
    });
    const detail::RecordReferences found = detail::FindReferences(texts, index.Commands());
    Names names;
    for (const Reference& reference : found.references)
        names.emplace_back(reference.kind, reference.part, reference.name);
    for (const detail::RecordReferences::Printed& printed : found.printed)
        ForEachVariable(printed.text, [&](TextRange range, char sign) {
            const std::string_view name = range.Of(printed.text);
            if (index.References().IsVariable(name))
                names.emplace_back(NameKind::Variable, sign, name);
            return index.References().IsVariable(name);
        });
    return names;
}

std::string_view PartWord(const CommandEntry& command, std::size_t part) {
    const std::vector<std::string_view> words = SplitAt(command.definition->RawSyntax, ";");
    return Trim(words[std::min(part, words.size() - 1)]);
}

bool IsDirection(std::string_view word) {
    return EqualIgnoringCase(word, "out") ||
           std::any_of(std::begin(CompassExits), std::end(CompassExits),
                       [&](const CompassExit& exit) { return EqualIgnoringCase(word, exit.direction); });
}

bool IsNumber(std::string_view text) {
    return !text.empty() && text.find_first_not_of("-0123456789") == std::string_view::npos;
}

/// Whether a part still is what it has to be.
bool IsPartKept(std::string_view word, std::string_view before, std::string_view after) {
    if (word == "direction")
        return !IsDirection(before) || IsDirection(after);
    if (word == "number" || word == "seconds" || word == "points" || word == "per cent")
        return !IsNumber(before) || IsNumber(after);
    return true;
}

std::string WhyNotCall(const ScriptCall& before, std::string_view lineBefore, const ScriptCall& after,
                       std::string_view lineAfter) {
    if (before.entry == nullptr)
        return {};
    const std::string keyword(before.keyword.Of(lineBefore));
    if (after.entry == nullptr || after.entry->definition->RawSyntax != before.entry->definition->RawSyntax ||
        after.hasParameter != before.hasParameter || after.rest.IsEmpty() != before.rest.IsEmpty())
        return "The command \"" + keyword + "\" would become another.";
    if (!before.hasParameter)
        return {};
    std::vector<std::string_view> parts;
    ForEachPart(before.parameter.Of(lineBefore), before.entry->syntax, [&](TextRange range, NameKind) {
        parts.push_back(range.Of(before.parameter.Of(lineBefore)));
    });
    std::size_t part = 0;
    bool isKept = true;
    ForEachPart(after.parameter.Of(lineAfter), before.entry->syntax, [&](TextRange range, NameKind) {
        isKept =
            isKept && part < parts.size() &&
            IsPartKept(PartWord(*before.entry, part), parts[part], range.Of(after.parameter.Of(lineAfter)));
        ++part;
    });
    return isKept && part == parts.size() ? "" : "\"" + keyword + "\" could not be carried out any more.";
}

std::string WhyNotLine(std::string_view before, std::string_view after, const CommandLookup& commands) {
    const ScriptLine one = TakeApart(before, commands);
    const ScriptLine other = TakeApart(after, commands);
    if (one.problem != LineProblem::None)
        return {}; // it makes no sense anyway
    if (other.problem != LineProblem::None)
        return std::string("The script would make no sense: ") + Explain(other.problem) + ".";
    std::vector<ScriptCall> calls;
    ForEachCall(one, [&](const ScriptCall& call) { calls.push_back(call); });
    std::vector<ScriptCall> others;
    ForEachCall(other, [&](const ScriptCall& call) { others.push_back(call); });
    if (calls.size() != others.size() || one.conditions.size() != other.conditions.size())
        return "The script would be another one.";
    for (std::size_t k = 0; k < calls.size(); ++k)
        if (std::string reason = WhyNotCall(calls[k], before, others[k], after); !reason.empty())
            return reason;
    return {};
}

std::vector<std::string_view> LinesOf(std::string_view script) {
    std::vector<std::string_view> lines;
    ForEachLine(script, [&](TextRange line, int) { lines.push_back(line.Of(script)); });
    return lines;
}

std::string WhyNotScript(std::string_view before, std::string_view after, const CommandLookup& commands) {
    const std::vector<std::string_view> lines = LinesOf(before);
    const std::vector<std::string_view> others = LinesOf(after);
    if (lines.size() != others.size())
        return "A script line would become several.";
    for (std::size_t k = 0; k < lines.size(); ++k)
        if (lines[k] != others[k])
            if (std::string reason = WhyNotLine(lines[k], others[k], commands); !reason.empty())
                return reason;
    return {};
}

/// Whether another pattern of the same list is the same.
bool IsPatternTaken(const GameModel& game, const Place& place, std::string_view pattern) {
    bool isTaken = false;
    const std::size_t last = place.Depth() - 1;
    ForEachText(game, [&](const Place& other, FieldUse use, const std::string& text) {
        if (use.kind != FieldKind::Pattern || other.Depth() != place.Depth() || text != pattern)
            return;
        const bool isSameOwner = last == 0 || other.steps[0] == place.steps[0];
        isTaken = isTaken || (isSameOwner && other.steps[last].list == place.steps[last].list &&
                              other.steps[last].entry != place.steps[last].entry);
    });
    return isTaken;
}

std::string WhyNotPattern(const GameModel& game, const Place& place, std::string_view before,
                          std::string_view after) {
    if (Trim(after).empty())
        return "Nothing would be left of the pattern.";
    const auto isOdd = [](std::string_view text) {
        return std::count(text.begin(), text.end(), '#') % 2 != 0;
    };
    if (isOdd(after) && !isOdd(before))
        return "A # would be without a second one.";
    if (IsPatternTaken(game, place, after))
        return "There is this pattern already.";
    return {};
}

std::string WhyNotWords(const GameModel& game, const Place& place, std::string_view after) {
    const std::vector<std::string_view> pieces = SplitAt(after, ";");
    for (const std::string_view piece : pieces)
        if (Trim(piece).empty())
            return "Nothing would be left of a word of the synonym.";
    if (place.field != FieldId::SynonymWords)
        return {};
    int number = 0;
    for (const SynonymEntry& other : game.Synonyms) {
        if (++number == place.steps.front().entry)
            continue;
        for (const std::string_view word : SplitAt(other.Words, ";"))
            for (const std::string_view piece : pieces)
                if (EqualIgnoringCase(Trim(word), Trim(piece)))
                    return "Another synonym has the word \"" + std::string(Trim(piece)) + "\" already.";
    }
    return {};
}

std::string WhyNotField(const GameIndex& index, const Place& place, const ResolvedPlace& field,
                        std::string_view after) {
    const std::string_view before = *field.text;
    switch (field.use.kind) {
    case FieldKind::Script:
        return WhyNotScript(before, after, index.Commands());
    case FieldKind::Pattern:
        return WhyNotPattern(index.Game(), place, before, after);
    case FieldKind::Words:
        return WhyNotWords(index.Game(), place, after);
    case FieldKind::Definition: {
        const auto problems = CheckCollectable(ParseCollectable(after));
        const bool isWorse = problems.size() > CheckCollectable(ParseCollectable(before)).size();
        return isWorse ? std::string(problems.front().message) + "." : "";
    }
    case FieldKind::Value:
        return place.field == FieldId::ErrorName || place.field == FieldId::GameKelVersion
                   ? "Zem itself gives this value."
                   : "";
    default:
        return {};
    }
}

/// The first thing that the file would not give back, though it did before.
std::string WhyNotInFile(const GameModel& before, const GameModel& after) {
    const auto lost = [](const GameModel& game) { return ReadBack(game, GameFile(game), 1); };
    const std::vector<LostPlace> now = lost(after);
    if (now.empty() || !lost(before).empty())
        return {};
    const std::size_t reason = now.front().text.find(": ");
    return "The file cannot hold that: " +
           (reason == std::string::npos ? now.front().text : now.front().text.substr(reason + 2)) + ".";
}

} // namespace

std::string WhyNot(const GameIndex& index, const std::vector<TextChange>& changes) {
    const Place& first = changes.front().place;
    const GameModel before = Alone(index.Game(), first.steps.front(), first.field);
    std::vector<TextChange> moved = changes;
    for (TextChange& change : moved)
        change.place = InAlone(change.place);
    GameModel after = before;
    MakeChanges(after, moved);
    for (const TextChange& change : changes) {
        const auto field = Resolve(index.Game(), change.place.WholeField());
        const auto changed = Resolve(after, InAlone(change.place.WholeField()));
        if (std::string reason = WhyNotField(index, change.place, *field, *changed->text); !reason.empty())
            return reason;
    }
    if (NamesIn(before, index) != NamesIn(after, index))
        return "Another name would stand there: rename it instead.";
    return WhyNotInFile(before, after);
}

} // namespace zem
