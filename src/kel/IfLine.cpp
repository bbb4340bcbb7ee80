#include "kel/IfLine.h"

#include "base/LineText.h"
#include "kel/FormatCodes.h"
#include "kel/RenderScript.h"

#include <algorithm>
#include <utility>

namespace zem {

namespace {

/// A condition by its words; several blanks between them count as one.
Condition ConditionOf(std::string_view line, const ScriptCondition& part) {
    Condition condition{part.joiner, part.isNegated, "", part.call.hasParameter,
                        std::string(part.call.parameter.Of(line))};
    for (const std::string_view word : SplitAt(part.call.keyword.Of(line), " "))
        if (!word.empty())
            condition.Keyword.append(condition.Keyword.empty() ? "" : " ").append(word);
    return condition;
}

void CheckCanBeWritten(const IfLine& line, const std::string& written) {
    IfLine again;
    try {
        again = ParseIfLine(written);
    } catch (const KelError& error) {
        throw KelError("no line can be made of this: " + error.Problem());
    }
    if (again == line)
        return;
    if (!line.Else.empty() && again.Else.empty())
        throw KelError("the \"else\" would belong to the \"if\" inside the \"then\" part: give that one an "
                       "\"else\" of its own, or put it into a procedure");
    throw KelError("no line can be made of this: it would be read as something else");
}

} // namespace

/// "If the player has "key" ..." without its frame: "the player has "key"".
namespace {

constexpr std::string_view AnyAction = " then back";

}

std::string WriteConditions(std::vector<Condition> conditions) {
    if (!conditions.empty())
        conditions.front().JoinedBy = Joiner::And; // it is joined to nothing
    std::string line = WriteIfLine({std::move(conditions), "back", {}});
    line.resize(line.size() - AnyAction.size());
    return line;
}

std::vector<Condition> ReadConditions(std::string_view text) {
    constexpr std::string_view Blanks = " \t\r\n";
    text.remove_prefix(std::min(text.find_first_not_of(Blanks), text.size()));
    text = text.substr(0, text.find_last_not_of(Blanks) + 1);
    if (text.empty() || text.find_first_of("\r\n") != std::string_view::npos)
        throw KelError("conditions stand in one line, such as \"if has <key> and not in <Hall>\"");
    const std::string line = (BeginsWith(text, "if ") ? "" : "if ") + std::string(text);
    IfLine parsed;
    try {
        parsed = ParseIfLine(line + std::string(AnyAction));
    } catch (const KelError& error) {
        throw KelError("these are no conditions: " + QuoteShortly(text) + " (" + error.Problem() + ")");
    }
    if (parsed.Then != AnyAction.substr(6))
        throw KelError("the line says what is to be done, too; it can be pasted in the window of a script");
    return parsed.Conditions;
}

std::string DescribeCondition(const Condition& condition, const CommandLookup& commands) {
    const std::string raw =
        condition.Keyword + (condition.HasParameter ? " <" + condition.Parameter + ">" : "");
    const CommandEntry* entry = commands.FindKeyword("if " + condition.Keyword);
    std::string text = raw;
    if (entry != nullptr) {
        text = FormatCodesToText(entry->definition->FriendlyTemplate, false);
        if (const std::size_t place = text.find('$'); place != std::string::npos)
            text.replace(place, 1, condition.Parameter);
        if (BeginsWith(text, "if "))
            text.erase(0, 3);
        if (text.ends_with(" ..."))
            text.resize(text.size() - 4);
    }
    return condition.Negated ? "it is not so that " + text : text;
}

IfLine ParseIfLine(std::string_view line) {
    static const CommandLookup noCommands{CommandCatalogue()};
    const ScriptLine parsed = TakeApart(line, noCommands);
    if (parsed.problem != LineProblem::None)
        throw KelError(Explain(parsed.problem));
    if (parsed.actions.empty() || !parsed.actions.front().IsIf())
        throw KelError("the line does not begin with \"if\"");
    const ScriptAction& whole = parsed.actions.front();
    IfLine result;
    for (std::size_t k = 0; k < whole.conditionCount; ++k)
        result.Conditions.push_back(ConditionOf(line, parsed.conditions[k]));
    result.Then = parsed.actions[whole.thenAction].whole.Of(line);
    if (whole.elseAction != 0)
        result.Else = parsed.actions[whole.elseAction].whole.Of(line);
    return result;
}

std::string WriteIfLine(const IfLine& line) {
    std::string text = "if";
    for (std::size_t k = 0; k < line.Conditions.size(); ++k) {
        const Condition& condition = line.Conditions[k];
        if (k > 0)
            text += condition.JoinedBy == Joiner::And ? " and" : " or";
        text += condition.Negated ? " not " : " ";
        text += condition.Keyword;
        if (condition.HasParameter)
            text += " <" + condition.Parameter + ">";
    }
    text += " then " + line.Then;
    if (!line.Else.empty())
        text += " else " + line.Else;
    CheckCanBeWritten(line, text);
    return text;
}

std::string DescribeIfLine(std::string_view line, const CommandLookup& commands) {
    IfLine parsed;
    try {
        parsed = ParseIfLine(line);
    } catch (const KelError&) {
        return std::string(line);
    }
    std::string text = "If ";
    for (std::size_t k = 0; k < parsed.Conditions.size(); ++k) {
        if (k > 0)
            text += parsed.Conditions[k].JoinedBy == Joiner::And ? " and " : " or ";
        text += DescribeCondition(parsed.Conditions[k], commands);
    }
    text += ", then: " + DescribeLine(parsed.Then, commands);
    if (!parsed.Else.empty())
        text += "; otherwise: " + DescribeLine(parsed.Else, commands);
    return text;
}

std::string DescribeLine(const std::string& line, const CommandLookup& commands) {
    if (BeginsWith(line, "if "))
        return DescribeIfLine(line, commands);
    try {
        return RenderScript(line, ScriptForm::Plain, InternalProcedures::ShowCall, {}, commands, true);
    } catch (const KelError&) {
        return line; // a command that lacks its parameter
    }
}

} // namespace zem
