#pragma once

#include "base/TextRange.h"
#include "kel/CommandLookup.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

/// A line of a script, taken apart: the one place that knows how commands and "if"s stand in a line.
/// "if not has <key> and in <Hall> then goto <Garden> else msg <The door is locked.>"
///
/// Nothing here throws. All ranges are bytes of the line that was taken apart.
namespace zem {

/// A command or a condition: its keyword, and its parameter if it has one.
struct ScriptCall {
    // The entry of exactly this keyword; null when the catalogue has none. A condition's is that of "if has".
    const CommandEntry* entry = nullptr;
    TextRange keyword; // all words before the parameter; of a condition without "if" and "not"
    bool hasParameter = false;
    TextRange parameter; // what stands between its brackets
    TextRange rest;      // what stands behind them, without blanks around it; nothing reads it
};

/// How a condition is joined to the one before it.
enum class Joiner { And, Or };

struct ScriptCondition {
    Joiner joiner = Joiner::And; // nothing for the first condition of an "if"
    bool isNegated = false;
    ScriptCall call;
};

/// What a line does, or the "then" or "else" of an "if": a command, or an "if" with its own actions.
struct ScriptAction {
    TextRange whole; // without blanks around it
    ScriptCall call; // of a command; nothing of an "if"

    std::size_t firstCondition = 0; // in ScriptLine::conditions
    std::size_t conditionCount = 0;
    std::size_t thenAction = 0; // in ScriptLine::actions
    std::size_t elseAction = 0; // the same; 0 when there is none

    bool IsIf() const { return conditionCount != 0; }
};

/// Why a line is not understood.
enum class LineProblem {
    None,
    OpenBracket, // a "<" without a ">" behind it
    NoCondition,
    NoThen,
    NothingAfterThen,
    NothingAfterElse,
    ElseTooMany,
    TooDeep // more than 100 "if"s inside one another
};

/// In plain words, without a full stop: "a condition is missing". Empty for None.
const char* Explain(LineProblem problem);

/// The parts of one line. Blank lines, comments and lines with a problem have no actions.
struct ScriptLine {
    std::vector<ScriptAction> actions; // the first is that of the whole line
    std::vector<ScriptCondition> conditions;
    LineProblem problem = LineProblem::None;
    std::size_t problemAt = 0; // the byte where the line stops making sense
};

/// Takes a line apart. An "else" belongs to the nearest "if" before it that has none yet. A line that does
/// not begin with "if" is a command, known or not.
ScriptLine TakeApart(std::string_view line, const CommandLookup& commands);

/// Calls visit(range, kind) for the parts of a parameter, without blanks around them, and with the kind of
/// name that the syntax wants there. The last part that the syntax has takes all that is left, ";" included,
/// unless it may be repeated. A parameter may have fewer parts than its syntax, but always has one.
template <class Visit>
void ForEachPart(std::string_view parameter, const ParameterSyntax& syntax, Visit visit) {
    const std::size_t count = syntax.parts.size();
    std::size_t begin = 0;
    for (std::size_t index = 0;; ++index) {
        const bool isLast = index + 1 >= count && !syntax.lastRepeats;
        const std::size_t end =
            isLast ? parameter.size() : std::min(parameter.find(';', begin), parameter.size());
        const NameKind kind = count == 0 ? NameKind::None : syntax.parts[std::min(index, count - 1)];
        visit(TrimmedRange(parameter, {begin, end}), kind);
        if (end == parameter.size())
            return;
        begin = end + 1;
    }
}

/// A part of a parameter, and the kind of name that belongs there.
struct ParameterPart {
    TextRange range; // of the parameter, without blanks around the part
    NameKind kind = NameKind::None;
};

/// The part in which a position stands, 0 to the parameter's size.
ParameterPart PartAt(std::string_view parameter, const ParameterSyntax& syntax, std::size_t position);

/// Calls visit(range, sign) for the names between two "#", or two "%": the variables that a printed text
/// shows. Not every such sign stands for one: where `visit` returns false ("5% of the 10% in the cellar"),
/// the search goes on behind the first sign and not behind the second one.
template <class Visit>
void ForEachVariable(std::string_view text, Visit visit) {
    for (std::size_t at = text.find_first_of("#%"); at < text.size(); at = text.find_first_of("#%", at)) {
        const std::size_t close = text.find(text[at], at + 1);
        const bool isName = close != std::string_view::npos && close > at + 1;
        at = isName && visit(TextRange{at + 1, close}, text[at]) ? close + 1 : at + 1;
    }
}

/// Calls visit(range, number) for each line of a script, number from 1. The ranges are bytes of the script.
template <class Visit>
void ForEachLine(std::string_view script, Visit visit) {
    std::size_t begin = 0;
    for (int number = 1;; ++number) {
        const std::size_t end = std::min(script.find("\r\n", begin), script.size());
        visit(TextRange{begin, end}, number);
        if (end == script.size())
            return;
        begin = end + 2;
    }
}

/// Calls visit(call) for every command and condition of the line, in no particular order.
template <class Visit>
void ForEachCall(const ScriptLine& parsed, Visit visit) {
    for (const ScriptCondition& condition : parsed.conditions)
        visit(condition.call);
    for (const ScriptAction& action : parsed.actions)
        if (!action.IsIf())
            visit(action.call);
}

namespace detail {

/// The answer of a visitor; one that returns nothing takes every name for one.
template <class Visit>
bool IsAccepted(Visit& visit, TextRange range, NameKind kind) {
    if constexpr (std::is_void_v<decltype(visit(range, kind))>) {
        visit(range, kind);
        return true;
    } else
        return visit(range, kind);
}

} // namespace detail

/// Calls visit(range, kind) for every part of the line that the syntax of its command or condition calls a
/// name, inner "if"s included.
/// @param parsed  the line taken apart
template <class Visit>
void ForEachCommandName(std::string_view line, const ScriptLine& parsed, Visit visit) {
    ForEachCall(parsed, [&](const ScriptCall& call) {
        if (!call.hasParameter || call.entry == nullptr)
            return;
        const std::size_t at = call.parameter.begin;
        ForEachPart(call.parameter.Of(line), call.entry->syntax, [&](TextRange part, NameKind kind) {
            if (kind != NameKind::None && !part.IsEmpty())
                visit(TextRange{at + part.begin, at + part.end}, kind);
        });
    });
}

/// Calls visit(range, kind) for every name in the line: those of ForEachCommandName, and the variables
/// between
/// "#" or "%" in any parameter. `visit` may return false for a variable that is none (see ForEachVariable). A
/// part that is made of a variable ("goto <#where#>") is visited both as a room and as a variable. A line
/// with a problem has no names.
template <class Visit>
void ForEachName(std::string_view line, const CommandLookup& commands, Visit visit) {
    const ScriptLine parsed = TakeApart(line, commands);
    ForEachCommandName(line, parsed, visit);
    ForEachCall(parsed, [&](const ScriptCall& call) {
        const std::size_t at = call.parameter.begin;
        ForEachVariable(call.parameter.Of(line), [&](TextRange range, char) {
            return detail::IsAccepted(visit, {at + range.begin, at + range.end}, NameKind::Variable);
        });
    });
}

} // namespace zem
