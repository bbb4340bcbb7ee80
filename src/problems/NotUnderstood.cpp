// Lines of scripts that are not understood.
#include "base/LineText.h"
#include "model/InternalScripts.h"
#include "model/Texts.h"
#include "problems/Checks.h"
#include "problems/Fixes.h"

#include <algorithm>
#include <utility>

namespace zem::problems {

namespace {

Fix Insert(std::string button, const CheckedLine& line, std::size_t at, std::string text) {
    // A place without bytes is the whole field, so the line is replaced as a whole.
    std::string changed(line.text);
    changed.insert(at, text);
    return ReplaceBytes(std::move(button), line.place, line.text, std::move(changed));
}

Fix ReplaceInLine(std::string button, const CheckedLine& line, TextRange range, std::string_view text) {
    std::string changed(line.text);
    changed.replace(range.begin, range.Size(), text);
    return ReplaceBytes(std::move(button), line.place, line.text, std::move(changed));
}

std::string_view FirstWordOf(std::string_view text) {
    return text.substr(0, text.find_first_of(" <"));
}

bool MakesSense(const CheckedGame& game, const std::string& line) {
    const ScriptLine parsed = TakeApart(line, game.Commands());
    bool isKnown = parsed.problem == LineProblem::None;
    ForEachCall(parsed,
                [&](const ScriptCall& call) { isKnown &= call.entry != nullptr && call.rest.IsEmpty(); });
    return isKnown;
}

/// A bracket that opens inside of brackets: where the ">" before it was forgotten, the rest of the line is
/// read as text.
std::size_t InnerBracket(std::string_view line) {
    for (std::size_t open = line.find('<'); open != std::string_view::npos;) {
        const std::size_t close = line.find('>', open);
        const std::size_t inner = line.find('<', open + 1);
        if (close == std::string_view::npos || inner == std::string_view::npos)
            return std::string_view::npos;
        if (inner < close)
            return inner;
        open = inner;
    }
    return std::string_view::npos;
}

void ReportElse(const CheckedGame& game, const CheckedLine& line, const CheckedLine* above,
                Findings& findings) {
    Problem& problem =
        findings.Add("B04", line.place, "This \"else\" belongs to no \"if\", so the line does nothing.");
    if (above == nullptr || !(above->place.WholeField() == line.place.WholeField()))
        return;
    const std::string joined = std::string(above->text) + ' ' + std::string(line.text);
    if (!BeginsWith(above->text, "if ") || !MakesSense(game, joined))
        return;
    Place both = above->place;
    both.bytes.end = line.place.bytes.end;
    const auto resolved = Resolve(game.Game(), both);
    if (resolved && resolved->text != nullptr)
        problem.fixes = {
            ReplaceBytes("Join with the line above", both, both.bytes.Of(*resolved->text), joined)};
}

void ReportNoThen(const CheckedGame& game, const CheckedLine& line, Findings& findings) {
    const std::size_t at = line.parsed.problemAt;
    Problem& problem =
        findings.Add("B05", line.At({0, line.text.size()}),
                     "This \"if\" has no \"then\" where one belongs, so the line does nothing.");
    const std::string_view word = FirstWordOf(line.text.substr(std::min(at, line.text.size())));
    const std::string_view nearest = NearestOf({"then", "and", "or"}, word);
    if (!nearest.empty()) {
        std::string changed(line.text);
        changed.replace(at, word.size(), nearest);
        if (TakeApart(changed, game.Commands()).problem == LineProblem::None)
            problem.fixes.push_back(ReplaceInLine(ChangeTo(nearest), line, {at, at + word.size()}, nearest));
    }
    std::string changed(line.text);
    changed.insert(at, "then ");
    if (MakesSense(game, changed))
        problem.fixes.push_back(Insert("Insert then", line, at, "then "));
}

void ReportNoSense(const CheckedGame& game, const CheckedLine& line, Findings& findings) {
    switch (line.parsed.problem) {
    case LineProblem::OpenBracket: {
        Problem& problem = findings.Add("B01", line.At({line.parsed.problemAt, line.text.size()}),
                                        "A \"<\" has no \">\" behind it, so the line does nothing.");
        if (TakeApart(std::string(line.text) + '>', game.Commands()).problem == LineProblem::None)
            problem.fixes = {Insert("Add > at the end", line, line.text.size(), ">")};
        break;
    }
    case LineProblem::NoThen:
        ReportNoThen(game, line, findings);
        break;
    case LineProblem::NothingAfterElse: {
        const std::size_t at = Lower(line.text).rfind("else");
        Problem& problem = findings.Add("B09", line.place,
                                        "Nothing stands behind \"else\", so the whole line does nothing.");
        if (at == std::string::npos)
            break;
        const std::string_view rest = Trim(line.text.substr(0, at));
        if (TakeApart(rest, game.Commands()).problem != LineProblem::None)
            break;
        problem.fixes = {ReplaceBytes("Remove the else", line.place, line.text, std::string(rest))};
        problem.fixes.front().needsNoChoice = true;
        break;
    }
    case LineProblem::NothingAfterThen:
        findings.Add("B09", line.place, "Nothing stands behind \"then\", so the line does nothing.");
        break;
    case LineProblem::ElseTooMany:
        findings.Add("B04", line.place, "There is an \"else\" too many, so the line does nothing.");
        break;
    default:
        findings.Add("B05", line.place,
                     std::string("In this \"if\" ") + Explain(line.parsed.problem) +
                         ", so the line does nothing.");
    }
}

void FindLinesWithoutSense(const CheckedGame& game, Findings& findings) {
    const CheckedLine* above = nullptr;
    for (const CheckedLine& line : game.Lines()) {
        const std::size_t inner = InnerBracket(line.text);
        const bool isClear = line.parsed.problem == LineProblem::None;
        if (inner != std::string_view::npos)
            findings
                .Add(
                    "B02", line.At({inner, inner + 1}),
                    isClear
                        ? "A \"<\" stands inside of brackets: it is printed, or a \">\" is missing before it."
                        : "A \"<\" stands inside of brackets: a \">\" is missing before it, and the line "
                          "does "
                          "nothing.")
                .level = isClear ? Level::Warning : Level::Error;
        if (isClear && EqualIgnoringCase(FirstWordOf(line.text), "else"))
            ReportElse(game, line, above, findings);
        else if (!isClear && (inner == std::string_view::npos || line.parsed.problem != LineProblem::NoThen))
            ReportNoSense(game, line, findings);
        if (line.text.size() > 2000)
            findings.Add("B17", line.place,
                         "This line is longer than 2,000 characters; a procedure would be easier "
                         "to read.");
        if (line.text.find_first_of("{}") != std::string_view::npos)
            findings.Add(
                "B16", line.place,
                "A brace stands in this line. In a file a brace begins or ends a script, so the game may "
                "not open again.");
        above = &line;
    }
}

void FindMixedConditions(const CheckedGame& game, Findings& findings) {
    for (const CheckedLine& line : game.Lines())
        for (const ScriptAction& action : line.parsed.actions) {
            bool hasAnd = false;
            bool hasOr = false;
            for (std::size_t k = 1; k < action.conditionCount; ++k) {
                const Joiner joiner = line.parsed.conditions[action.firstCondition + k].joiner;
                (joiner == Joiner::And ? hasAnd : hasOr) = true;
            }
            if (hasAnd && hasOr)
                findings.Add("B06", line.At(action.whole),
                             "\"and\" and \"or\" stand in one \"if\". They are read strictly from left to "
                             "right, as if "
                             "there were brackets around all that stands before each.");
        }
}

bool IsWholeLine(const CheckedCall& call) {
    return !call.line->parsed.actions.empty() && !call.line->parsed.actions.front().IsIf();
}

void ReportRest(const CheckedGame& game, const CheckedCall& call, Findings& findings) {
    const CheckedLine& line = *call.line;
    const std::string_view rest = call.call->rest.Of(line.text);
    Problem& problem = findings.Add("B03", line.At(call.call->rest),
                                    QuoteShortly(rest) +
                                        " stands behind the command on the same line, and nothing reads it.");
    if (!MakesSense(game, std::string(rest)) || rest.find('<') == 0)
        return;
    const std::size_t begin = call.call->keyword.begin;
    const std::string lines = std::string(line.text.substr(begin, call.call->parameter.end + 1 - begin)) +
                              "\r\n" + std::string(rest);
    if (IsWholeLine(call)) {
        problem.fixes = {ReplaceLine("Make it two lines", line.place, line.text, lines)};
        return;
    }
    problem.fixes = {ReplaceWithProcedure("Do both", line.At({begin, call.call->rest.end}),
                                          line.text.substr(begin, call.call->rest.end - begin), lines)};
}

std::vector<std::string_view> Keywords(const CheckedGame& game, bool areConditions) {
    std::vector<std::string_view> keywords;
    for (const CommandDefinition& definition : game.Commands().Catalogue()) {
        const std::string_view keyword = definition.Keyword;
        if (keyword.starts_with("if ") == areConditions && !keyword.starts_with('('))
            keywords.push_back(areConditions ? keyword.substr(3) : keyword);
    }
    return keywords;
}

/// The longest keyword with which the words begin, followed by more words; empty for none.
std::string_view KeywordBefore(const std::vector<std::string_view>& keywords, std::string_view words) {
    std::string_view longest;
    for (const std::string_view keyword : keywords)
        if (keyword.size() > longest.size() && words.size() > keyword.size() &&
            words[keyword.size()] == ' ' && BeginsWith(words, keyword))
            longest = keyword;
    return longest;
}

/// An unknown word that begins with a keyword: what follows it has lost its brackets, or stands before them.
bool ReportLostBrackets(const CheckedGame& game, const CheckedCall& call, std::string_view keyword,
                        Findings& findings) {
    const CheckedLine& line = *call.line;
    const std::string_view words = call.Keyword();
    const std::string_view rest = Trim(words.substr(keyword.size()));
    const CommandEntry* entry =
        game.Commands().FindKeyword((call.isCondition ? "if " : "") + std::string(keyword));
    if (call.call->hasParameter) {
        if (entry == nullptr || entry->syntax.parts.empty())
            return false;
        const std::string inside = std::string(rest) + std::string(call.call->parameter.Of(line.text));
        findings
            .Add("B08", line.At(call.call->keyword),
                 QuoteShortly(rest) + " stands between " + QuoteShortly(keyword) +
                     " and its brackets, so the line does nothing.")
            .fixes = {ReplaceInLine("Put it inside the brackets", line,
                                    {call.call->keyword.begin, call.call->parameter.end + 1},
                                    std::string(keyword) + " <" + inside + '>')};
        return true;
    }
    Problem& problem = findings.Add("B11", line.At(call.call->keyword),
                                    QuoteShortly(rest) + " stands in no brackets, so this does nothing.");
    if (entry != nullptr && !entry->syntax.parts.empty() && rest.find('>') == std::string_view::npos)
        problem.fixes = {ReplaceInLine("Put brackets around it", line, call.call->keyword,
                                       std::string(keyword) + " <" + std::string(rest) + '>')};
    return true;
}

void ReportUnknown(const CheckedGame& game, const CheckedCall& call, Findings& findings) {
    const CheckedLine& line = *call.line;
    const std::string_view keyword = call.Keyword();
    if (EqualIgnoringCase(FirstWordOf(keyword), "else"))
        return; // is told as such
    const char* what = call.isCondition ? "condition " : "command ";
    const char* consequence = call.isCondition ? ", so it is never true." : ", so it does nothing.";
    const std::vector<std::string_view> known = Keywords(game, call.isCondition);
    const std::string_view before = KeywordBefore(known, keyword);
    if (!before.empty() && ReportLostBrackets(game, call, before, findings))
        return;
    const std::string_view nearest = NearestOf(known, keyword);
    if (!nearest.empty()) {
        findings
            .Add("B08", line.At(call.call->keyword),
                 std::string("There is no ") + what + QuoteShortly(keyword) + consequence)
            .fixes = {ReplaceInLine(ChangeTo(nearest), line, call.call->keyword, nearest)};
        return;
    }
    Problem& problem = findings.Add(
        "B07", line.At(call.call->keyword.IsEmpty() ? TextRange{0, line.text.size()} : call.call->keyword),
        std::string("There is no ") + what + QuoteShortly(keyword) + consequence);
    problem.level = game.Softened(problem.level, keyword);
}

void ReportBlank(const CheckedCall& call, Findings& findings) {
    const CheckedLine& line = *call.line;
    const std::size_t open = call.call->parameter.begin - 1;
    const bool isGlued = call.call->keyword.end == open;
    const std::size_t behind = call.call->parameter.end + 1;
    if (isGlued) {
        const bool isInside = call.call->parameter.Size() > 1 && line.text[open + 1] == ' ';
        findings
            .Add("B18", line.At({call.call->keyword.begin, open + 1}),
                 "A blank belongs between " + QuoteShortly(call.Keyword()) + " and its bracket.")
            .fixes = {
            ReplaceInLine("Put the blank there", line, {open, isInside ? open + 2 : open + 1}, " <")};
    } else if ((call.isCondition || call.call->rest.IsEmpty()) && behind < line.text.size() &&
               line.text[behind] != ' ') {
        findings
            .Add("B18", line.At({behind - 1, behind}),
                 "A blank belongs behind the \">\" of " + QuoteShortly(call.Keyword()) + '.')
            .fixes = {Insert("Put the blank there", line, behind, " ")};
    }
}

/// Whether one of several parts is empty. A value may be: it is a text without letters.
bool LacksPart(const CheckedCall& call) {
    const bool mayLastBeEmpty = Trim(call.call->entry->definition->RawSyntax).ends_with("value");
    for (std::size_t part = 0; part < call.parts.size(); ++part)
        if (call.parts[part].range.IsEmpty() && !(mayLastBeEmpty && part + 1 == call.parts.size()))
            return true;
    return false;
}

void ReportParts(const CheckedCall& call, Findings& findings) {
    const CheckedLine& line = *call.line;
    const ParameterSyntax& syntax = call.call->entry->syntax;
    const TextRange all = {call.call->keyword.begin,
                           call.call->hasParameter ? call.call->parameter.end + 1 : call.call->keyword.end};
    const std::string_view inside = Trim(call.call->parameter.Of(line.text));
    const std::string keyword = QuoteShortly(call.Keyword());
    if (syntax.parts.empty()) {
        if (call.call->hasParameter && !inside.empty())
            findings
                .Add("B13", line.At(call.call->parameter),
                     keyword + " takes nothing in brackets, and " + QuoteShortly(inside) +
                         " is read by nobody.")
                .fixes = {ReplaceInLine("Remove it", line, all, call.Keyword())};
        return;
    }
    if (call.call->hasParameter && inside.empty()) {
        Problem& problem = findings.Add("B10", line.At(all), "The brackets of " + keyword + " are empty.");
        if (EqualIgnoringCase(call.Keyword(), "msg"))
            problem.fixes = {ReplaceInLine("Change to line", line, all, "line")};
        return;
    }
    const std::size_t wanted = syntax.lastRepeats ? 1 : syntax.parts.size();
    if (call.parts.size() < wanted || LacksPart(call))
        findings.Add(
            "B12", line.At(all),
            keyword + " wants " + QuoteShortly(Trim(call.call->entry->definition->RawSyntax)) +
                (call.isCondition ? ", so it is never true like this." : ", so it does nothing like this."));
    else if (!syntax.lastRepeats && syntax.parts.back() != NameKind::None &&
             call.Part(call.parts.size() - 1).find(';') != std::string_view::npos)
        findings.Add("B12", line.At(all),
                     keyword + " wants " + QuoteShortly(Trim(call.call->entry->definition->RawSyntax)) +
                         ", and there is a \";\" too many.");
    else if (syntax.lastRepeats && call.parts.size() == 1) {
        Problem& problem = findings.Add("B14", line.At(all), keyword + " chooses among one.");
        problem.fixes = {ReplaceInLine("Change to do", line, call.call->keyword, "do")};
        problem.fixes.front().needsNoChoice = true;
    }
}

void FindOddCalls(const CheckedGame& game, Findings& findings) {
    for (const CheckedCall& call : game.Calls()) {
        if (call.call->entry == nullptr) {
            ReportUnknown(game, call, findings);
            continue;
        }
        if (!call.call->rest.IsEmpty())
            ReportRest(game, call, findings);
        if (call.call->hasParameter)
            ReportBlank(call, findings);
        ReportParts(call, findings);
    }
}

void FindDoubtfulElse(const CheckedGame& game, Findings& findings) {
    for (const CheckedLine& line : game.Lines())
        for (const ScriptAction& outer : line.parsed.actions) {
            if (!outer.IsIf() || outer.elseAction != 0)
                continue;
            const ScriptAction& inner = line.parsed.actions[outer.thenAction];
            if (inner.IsIf() && inner.elseAction != 0)
                findings.Add(
                    "B15", line.At(line.parsed.actions[inner.elseAction].whole),
                    "The \"else\" belongs to the inner \"if\": where the outer one is not true, nothing "
                    "happens. If it was meant for the outer one, put the inner one into a procedure.");
        }
}

} // namespace

std::span<const Check> ScriptChecks() {
    static constexpr Check Rows[] = {
        {"B01", Level::Error, "Brackets that are never closed", FindLinesWithoutSense},
        {"B02", Level::Warning, "Brackets inside of brackets", FindLinesWithoutSense},
        {"B03", Level::Error, "Text behind a command", FindOddCalls},
        {"B04", Level::Error, "An else without an if", FindLinesWithoutSense},
        {"B05", Level::Error, "An if without then", FindLinesWithoutSense},
        {"B06", Level::Warning, "And and or in one line", FindMixedConditions},
        {"B07", Level::Warning, "Commands that nobody knows", FindOddCalls},
        {"B08", Level::Warning, "Misspelt commands and conditions", FindOddCalls},
        {"B09", Level::Error, "Nothing after then or else", FindLinesWithoutSense},
        {"B10", Level::Warning, "Empty brackets", FindOddCalls},
        {"B11", Level::Error, "Missing brackets", FindOddCalls},
        {"B12", Level::Error, "Too few or too many parts in brackets", FindOddCalls},
        {"B13", Level::Warning, "Brackets where none belong", FindOddCalls},
        {"B14", Level::Hint, "A choice of one", FindOddCalls},
        {"B15", Level::Hint, "An else for the inner if", FindDoubtfulElse},
        {"B16", Level::Error, "Braces in commands", FindLinesWithoutSense},
        {"B17", Level::Hint, "Very long lines", FindLinesWithoutSense},
        {"B18", Level::Warning, "Blanks at brackets", FindOddCalls},
    };
    return Rows;
}

} // namespace zem::problems
