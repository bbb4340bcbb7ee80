// Variables: printed or asked and never set, set and never used, signs that do not fit.
#include "base/LineText.h"
#include "problems/Checks.h"
#include "problems/Fixes.h"
#include "problems/VariableUses.h"

#include <algorithm>
#include <utility>

namespace zem::problems {

namespace {

using Variables = std::map<std::string_view, VariableUses>;

/// The variables that get a value somewhere, the only ones that a misspelt name can have meant.
std::vector<std::string_view> NamesThatAreSet(const Variables& variables) {
    std::vector<std::string_view> names;
    for (const auto& [name, uses] : variables)
        if (!uses.set.empty() || !uses.typed.empty())
            names.push_back(name);
    return names;
}

/// Whether what stands between two signs was meant as a variable: "#visitor#", but not "#1 and the #" or
/// "5% of the 10%".
bool LooksLikeVariable(std::string_view name, char sign) {
    const bool isOneWord = name.find(' ') == std::string_view::npos;
    return IsLetter(name.front()) && (isOneWord || sign == '#') &&
           std::count(name.begin(), name.end(), ' ') < 3 && std::all_of(name.begin(), name.end(), [](char c) {
               return IsLetter(c) || (c >= '0' && c <= '9') || c == ' ' || c == '_' || c == '-';
           });
}

void AddNearest(Problem& problem, std::string_view nearest, const Place& place, std::string_view name) {
    if (!nearest.empty())
        problem.fixes = {ReplaceBytes(ChangeTo(nearest), place, name, std::string(nearest))};
}

void FindNeverSet(const CheckedGame& game, const Variables& variables, Findings& findings) {
    const std::vector<std::string_view> setNames = NamesThatAreSet(variables);
    for (const auto& [name, uses] : variables) {
        if (!uses.set.empty() || !uses.typed.empty() || game.IsMentionedElsewhere(name))
            continue;
        const std::string_view nearest = NearestOf(setNames, name);
        for (const Place& place : uses.asked) {
            Problem& problem = findings.Add("V04", place,
                                            "Nothing ever puts anything into the variable " +
                                                QuoteShortly(name) + ", so it is empty.");
            problem.level = game.Softened(problem.level, name);
            AddNearest(problem, nearest, place, name);
        }
        for (const VariablePrint& print : uses.prints) {
            if (!uses.IsKnown() && !LooksLikeVariable(name, print.sign))
                continue;
            const std::string shown = print.sign + std::string(name) + print.sign;
            Problem& problem = findings.Add(
                "V04", print.place,
                "Nothing ever puts anything into the variable " + QuoteShortly(name) +
                    (uses.IsKnown() ? ", so nothing is printed for " + QuoteShortly(shown) + '.'
                                    : ", so " + QuoteShortly(shown) + " is printed as it stands."));
            problem.level = game.Softened(problem.level, name);
            AddNearest(problem, nearest, print.place, name);
        }
    }
}

void FindNeverUsed(const CheckedGame& game, const Variables& variables, Findings& findings) {
    for (const auto& [name, uses] : variables)
        if (!uses.set.empty() && uses.asked.empty() && uses.prints.empty() &&
            !game.IsMentionedElsewhere(name))
            findings.Add("V07", uses.set.front(),
                         "The variable " + QuoteShortly(name) + " is set, but never printed nor asked for.");
}

/// Whether nothing counts with what a player has said, and some text prints it as a text.
bool IsPrintedAsText(const VariableUses& uses) {
    return uses.isPlayers && uses.asNumber.empty() && (!uses.set.empty() || !uses.typed.empty()) &&
           std::any_of(uses.prints.begin(), uses.prints.end(),
                       [](const VariablePrint& print) { return print.sign == '#'; });
}

void FindMixedUse(const Variables& variables, Findings& findings) {
    for (const auto& [name, uses] : variables) {
        if (!uses.asText.empty() && !uses.asNumber.empty())
            findings.Add("V08", uses.asText.front(),
                         "The variable " + QuoteShortly(name) +
                             " holds a text here and is counted with elsewhere.");
        const bool isText = (!uses.mayBeNumber && !uses.asText.empty()) || IsPrintedAsText(uses);
        if (!isText)
            continue;
        for (const VariablePrint& print : uses.prints) {
            if (print.sign != '%')
                continue;
            Place whole = print.place; // with its signs
            --whole.bytes.begin;
            ++whole.bytes.end;
            const std::string text(name);
            findings
                .Add("V06", whole,
                     "The variable " + QuoteShortly(name) +
                         " holds a text, and \"%\" prints numbers: this prints 0 for words.")
                .fixes = {
                ReplaceBytes(ChangeTo('#' + text + '#'), whole, '%' + text + '%', '#' + text + '#')};
        }
    }
}

/// The end of the word that begins at the byte.
std::size_t EndOfWord(std::string_view text, std::size_t at) {
    while (at < text.size() && (IsLetter(text[at]) || text[at] == '_' || text[at] == '-'))
        ++at;
    return at;
}

/// The known variable behind a sign that stands alone, as long as possible; empty for none.
std::string_view VariableBehind(std::string_view text, std::size_t sign, const Variables& variables) {
    std::string_view longest;
    for (std::size_t end = EndOfWord(text, sign + 1); end > sign + 1 && end - sign < 40;) {
        const std::string_view name = text.substr(sign + 1, end - sign - 1);
        const auto found = variables.find(name);
        if (found != variables.end() && found->second.IsKnown())
            longest = name;
        if (end == text.size() || text[end] != ' ')
            break;
        end = EndOfWord(text, end + 1);
    }
    return longest;
}

void FindLoneSigns(const PrintedText& printed, const Variables& variables, Findings& findings) {
    const std::string_view text = printed.text;
    std::vector<bool> isPaired(text.size(), false);
    ForEachVariable(text, [&](TextRange range, char) {
        const auto found = variables.find(range.Of(text));
        const bool isOne = found != variables.end() && found->second.IsKnown();
        if (isOne)
            isPaired[range.begin - 1] = isPaired[range.end] = true;
        return isOne;
    });
    for (std::size_t at = 0; at < text.size(); ++at) {
        if ((text[at] != '#' && text[at] != '%') || isPaired[at])
            continue;
        const std::string_view name = VariableBehind(text, at, variables);
        if (name.empty() && (text[at] == '%' || at + 1 == text.size() || !IsLetter(text[at + 1]) ||
                             std::count(text.begin(), text.end(), '#') % 2 == 0))
            continue;
        const std::string sign(1, text[at]);
        Problem& problem =
            findings.Add("V05", printed.At({at, at + 1 + name.size()}),
                         "A " + QuoteShortly(sign) + " has no second one, so it is printed as it stands.");
        if (!name.empty())
            problem.fixes = {ReplaceBytes(ChangeTo(sign + std::string(name) + sign),
                                          printed.At({at, at + 1 + name.size()}), sign + std::string(name),
                                          sign + std::string(name) + sign)};
    }
}

void FindInVariables(const CheckedGame& game, Findings& findings) {
    const std::vector<PrintedText>& texts = game.Prints();
    const Variables variables = CollectVariables(game, texts);
    FindNeverSet(game, variables, findings);
    FindNeverUsed(game, variables, findings);
    FindMixedUse(variables, findings);
    for (const PrintedText& text : texts)
        if (HasVariableSign(text.text))
            FindLoneSigns(text, variables, findings);
}

} // namespace

std::span<const Check> VariableChecks() {
    static constexpr Check Rows[] = {
        {"V04", Level::Warning, "Variables that nothing sets", FindInVariables},
        {"V05", Level::Hint, "A sign of a variable without its second one", FindInVariables},
        {"V06", Level::Warning, "Texts printed as numbers", FindInVariables},
        {"V07", Level::Hint, "Variables that nothing uses", FindInVariables},
        {"V08", Level::Hint, "Variables that are texts and numbers", FindInVariables},
    };
    return Rows;
}

} // namespace zem::problems
