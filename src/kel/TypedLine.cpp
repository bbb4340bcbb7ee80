#include "kel/TypedLine.h"

#include "base/LineText.h"
#include "kel/CommandGroups.h"
#include "kel/FormatCodes.h"
#include "kel/IfLine.h"
#include "kel/ProseParts.h"

#include <algorithm>
#include <optional>

namespace zem {

namespace {

constexpr std::size_t MostSuggestions = 4;

/// A command or a condition at the beginning of a text.
struct Match {
    const CommandDefinition* command = nullptr;
    std::size_t size = 0;      // of the words that name it
    std::string_view argument; // without blanks around it
};

bool IsCondition(const CommandDefinition& command) {
    return BeginsWith(command.Keyword, "if ");
}

/// How the text may name the command, without the "if" of a condition.
std::string_view KeywordOf(const CommandDefinition& command) {
    return std::string_view(command.Keyword).substr(IsCondition(command) ? 3 : 0);
}

void TakeLonger(Match& best, const Match& match) {
    if (match.command != nullptr && match.size > best.size)
        best = match;
}

/// The words, and something else behind them or nothing.
Match MatchWords(std::string_view text, std::string_view words, const CommandDefinition& command) {
    const bool begins = !words.empty() && BeginsWith(text, words) &&
                        (text.size() == words.size() || text[words.size()] == ' ');
    if (!begins)
        return {};
    return {&command, words.size(), Trim(text.substr(words.size()))};
}

constexpr std::size_t FewestLetters = 3; // of words that name a command

/// The text without the quotation marks around it.
std::string_view Unquoted(std::string_view text) {
    const bool isQuoted = text.size() > 1 && text.front() == '"' && text.back() == '"';
    return isQuoted ? text.substr(1, text.size() - 2) : text;
}

/// The line as scripts are shown: words before the parameter, and behind it. Quotation marks may be left out.
Match MatchShown(std::string_view text, const CommandDefinition& command) {
    std::string shown = FormatCodesToText(command.FriendlyTemplate, false);
    if (IsCondition(command) && BeginsWith(shown, "if ") && shown.ends_with(" ..."))
        shown = shown.substr(3, shown.size() - 7);
    const std::size_t place = shown.find('$');
    if (place == std::string::npos)
        return EqualIgnoringCase(text, shown) ? Match{&command, text.size(), {}} : Match{};
    const std::size_t wordsEnd = std::string_view(shown).substr(0, place).find_last_not_of(" \"") + 1;
    const std::size_t behindBegin = std::min(shown.find_first_not_of(" \"", place + 1), shown.size());
    const std::string_view behind = std::string_view(shown).substr(behindBegin);
    // "available" is not the end of "unavailable".
    const auto endsWord = [&](std::size_t at) {
        return behind.empty() || text[at] == ' ' || text[at] == '"';
    };
    const bool fits = wordsEnd >= FewestLetters && text.size() > wordsEnd + behind.size() &&
                      BeginsWith(text, std::string_view(shown).substr(0, wordsEnd)) &&
                      (text[wordsEnd] == ' ' || text[wordsEnd] == '"') &&
                      EqualIgnoringCase(text.substr(text.size() - behind.size()), behind) &&
                      endsWord(text.size() - behind.size() - 1);
    if (!fits)
        return {};
    return {&command, wordsEnd,
            Unquoted(Trim(text.substr(wordsEnd, text.size() - wordsEnd - behind.size())))};
}

/// The command that the text names by the most characters.
Match FindCommand(std::string_view text, bool conditions, const CommandLookup& commands) {
    Match best;
    for (const CommandDefinition& command : commands.Catalogue()) {
        if (IsCondition(command) != conditions || &command == commands.Other())
            continue;
        // As it is shown comes first: where the name begins alike, the quotation marks belong to neither.
        TakeLonger(best, MatchShown(text, command));
        TakeLonger(best, MatchWords(text, KeywordOf(command), command));
        TakeLonger(best, MatchWords(text, command.FriendlyName, command));
    }
    return best;
}

std::string Quote(std::string_view text) {
    return '"' + ShowShortly(text) + '"';
}

/// "goblin" is no command. Commands with "go": ...
std::string UnknownProblem(std::string_view text, bool conditions, const CommandLookup& commands) {
    std::string problem = Quote(text) + (conditions ? " is no condition." : " begins with no command.");
    const std::string_view first = text.substr(0, text.find(' '));
    std::string names;
    std::size_t count = 0;
    for (const CommandDefinition& command : commands.Catalogue())
        if (IsCondition(command) == conditions && HasWords(command, first) && ++count <= MostSuggestions)
            names += (names.empty() ? "" : ", ") + command.FriendlyName;
    if (!names.empty())
        return problem + " With " + Quote(first) + " there are: " + names +
               (count > MostSuggestions ? " ..." : ".");
    return problem + (conditions ? " Type a word of one, such as \"has\"."
                                 : " Type a word of one, such as \"print\" or \"move\".");
}

/// A name or a text that begins with its bracket and does not end with it.
bool IsHalfBracketed(std::string_view argument) {
    return argument.front() == '<' && argument.size() > 1 && IsProseLetter(argument[1]) &&
           argument.find('>') == std::string_view::npos;
}

std::string ArgumentProblem(const Match& match, const CommandLookup& commands) {
    const CommandDefinition& command = *match.command;
    const std::string name = '"' + command.FriendlyName + '"';
    if (command.RawSyntax == "!")
        return match.argument.empty() ? "" : name + " takes nothing behind it: " + Quote(match.argument);
    if (match.argument.empty())
        return name + " needs something behind it: " + command.FriendlyPrompt + ".";
    if (match.argument == "<" || IsHalfBracketed(match.argument))
        return "The \">\" that ends what begins with \"<\" is missing.";
    if (match.argument.find('>') != std::string_view::npos)
        return "A \">\" would end the text early: nothing behind it would be read.";
    const CommandEntry* entry = commands.FindKeyword(command.Keyword);
    const std::size_t wanted = entry == nullptr || entry->syntax.lastRepeats ? 1 : entry->syntax.parts.size();
    const auto parts = std::count(match.argument.begin(), match.argument.end(), ';') + 1;
    if (static_cast<std::size_t>(parts) < wanted)
        return name + " takes " + std::to_string(wanted) +
               " parts with \";\" between them: " + command.FriendlyPrompt + ".";
    return "";
}

/// A parameter may be typed with its brackets.
void StripBrackets(std::string_view& argument) {
    const bool isWhole = argument.size() > 1 && argument.front() == '<' && argument.back() == '>' &&
                         argument.find('>') == argument.size() - 1;
    if (isWhole)
        argument = argument.substr(1, argument.size() - 2);
}

/// Where the word stands in the text, outside brackets and quotes, with blanks around it.
std::size_t FindWord(std::string_view text, std::string_view word, std::size_t from = 0) {
    bool isQuoted = false;
    bool isBracketed = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        isQuoted = text[at] == '"' ? !isQuoted : isQuoted;
        isBracketed = text[at] == '<' || (isBracketed && text[at] != '>');
        const std::size_t end = at + 1 + word.size();
        if (at >= from && !isQuoted && !isBracketed && text[at] == ' ' && end < text.size() &&
            text[end] == ' ' && EqualIgnoringCase(text.substr(at + 1, word.size()), word))
            return at;
    }
    return std::string_view::npos;
}

TypedLine ReadCommand(std::string_view text, const CommandLookup& commands) {
    Match match = FindCommand(text, false, commands);
    if (match.command == nullptr)
        return {"", UnknownProblem(text, false, commands)};
    const bool isEmptyBrackets = match.argument == "<>";
    StripBrackets(match.argument);
    const std::string problem = isEmptyBrackets ? "" : ArgumentProblem(match, commands);
    if (!problem.empty())
        return {"", problem};
    return {match.command->Keyword + " <" + std::string(match.argument) + ">", ""};
}

class IfReader {
public:
    IfReader(std::string_view text, const CommandLookup& commands) : text_(text), commands_(commands) {}

    TypedLine Read() {
        const std::size_t then = FindWord(text_, "then");
        if (then == std::string_view::npos)
            return {"", "Behind the condition type \"then\" and what happens."};
        std::string_view actions = Trim(text_.substr(then + 6));
        const std::size_t otherwise = FindElse(actions);
        std::string_view elseAction;
        if (otherwise != std::string_view::npos) {
            elseAction = Trim(actions.substr(actions.find(' ', otherwise + 1)));
            actions = Trim(actions.substr(0, otherwise));
        }
        if (!ReadConditions(Trim(text_.substr(3, then - 3))) || !ReadAction(actions, parts_.Then) ||
            (!elseAction.empty() && !ReadAction(elseAction, parts_.Else)))
            return {"", problem_};
        try {
            return {WriteIfLine(parts_), ""};
        } catch (const KelError& error) {
            return {"", "No line can be made of this: " + error.Problem() + "."};
        }
    }

private:
    /// An inner "if" takes the first "else" for itself.
    static std::size_t FindElse(std::string_view actions) {
        std::size_t found = std::string_view::npos;
        for (const char* word : {"else", "otherwise"}) {
            std::size_t at = FindWord(actions, word);
            if (BeginsWith(actions, "if ") && at != std::string_view::npos)
                at = FindWord(actions, word, at + 1);
            found = std::min(found, at);
        }
        return found;
    }

    bool ReadConditions(std::string_view text) {
        for (Joiner joiner = Joiner::And;;) {
            const std::size_t conjunction = FindWord(text, "and");
            const std::size_t disjunction = FindWord(text, "or");
            const std::size_t end = std::min(conjunction, disjunction);
            if (!ReadCondition(Trim(text.substr(0, end)), joiner))
                return false;
            if (end == std::string_view::npos)
                return true;
            joiner = end == conjunction ? Joiner::And : Joiner::Or;
            text = TrimLeft(text.substr(text.find(' ', end + 1)));
        }
    }

    bool ReadCondition(std::string_view text, Joiner joiner) {
        Condition condition;
        condition.JoinedBy = joiner;
        for (const std::string_view negation : {"not ", "it is not so that "})
            if (BeginsWith(text, negation)) {
                condition.Negated = true;
                text = TrimLeft(text.substr(negation.size()));
            }
        Match match = FindCommand(text, true, commands_);
        StripBrackets(match.argument);
        problem_ = match.command == nullptr ? UnknownProblem(text, true, commands_)
                                            : ArgumentProblem(match, commands_);
        if (!problem_.empty())
            return false;
        condition.Keyword = KeywordOf(*match.command);
        condition.HasParameter = match.command->RawSyntax != "!";
        condition.Parameter = match.argument;
        parts_.Conditions.push_back(condition);
        return true;
    }

    bool ReadAction(std::string_view text, std::string& action) {
        const TypedLine read = ReadTypedLine(text, commands_);
        action = read.line;
        problem_ = text.empty() ? "Behind \"then\" and \"else\" type what happens." : read.problem;
        return problem_.empty();
    }

    std::string_view text_;
    const CommandLookup& commands_;
    IfLine parts_;
    std::string problem_;
};

/// Whether the text is a line already, of known commands and conditions alone.
bool IsLine(std::string_view text, const CommandLookup& commands) {
    const ScriptLine parsed = TakeApart(text, commands);
    bool isKnown = parsed.problem == LineProblem::None && !parsed.actions.empty();
    ForEachCall(parsed, [&](const ScriptCall& call) {
        isKnown = isKnown && call.entry != nullptr && call.rest.IsEmpty() &&
                  call.hasParameter == (call.entry->definition->RawSyntax != "!");
    });
    return isKnown;
}

} // namespace

TypedLine ReadTypedLine(std::string_view text, const CommandLookup& commands) {
    text = Trim(text);
    if (text.empty() || text.front() == '\'' || IsLine(text, commands))
        return {std::string(text), ""};
    if (BeginsWith(text, "if "))
        return IfReader(text, commands).Read();
    return ReadCommand(text, commands);
}

namespace {

/// Where the command or condition begins that the text ends with, and which of the two it is.
std::pair<std::size_t, bool> BeginOfLast(std::string_view text) {
    std::size_t begin = text.size() - TrimLeft(text).size();
    bool isCondition = false;
    while (BeginsWith(text.substr(begin), "if ")) {
        begin += 3;
        isCondition = true;
        const std::size_t then = FindWord(text, "then", begin);
        for (const char* word : {"and", "or"})
            for (std::size_t at = FindWord(text, word, begin); at < then; at = FindWord(text, word, begin))
                begin = text.find(' ', at + 1) + 1;
        if (then == std::string_view::npos)
            break;
        isCondition = false;
        begin = then + 6;
        for (const char* word : {"else", "otherwise"})
            for (std::size_t at = FindWord(text, word, begin); at != std::string_view::npos;
                 at = FindWord(text, word, begin))
                begin = text.find(' ', at + 1) + 1;
    }
    return {std::min(begin, text.size()), isCondition};
}

} // namespace

TypedEnd EndOfTyped(std::string_view text, const CommandLookup& commands) {
    const auto [begin, isCondition] = BeginOfLast(text);
    TypedEnd end;
    end.begin = begin;
    const std::string_view last = text.substr(begin);
    for (const CommandDefinition& command : commands.Catalogue())
        if (IsCondition(command) == isCondition && &command != commands.Other() && HasWords(command, last))
            end.commands.push_back(&command);
    const Match match = FindCommand(last, isCondition, commands);
    if (match.command == nullptr || match.size >= last.size() || match.command->RawSyntax == "!")
        return end;
    end.command = match.command;
    std::size_t argument = begin + match.size;
    argument = std::min(text.find_first_not_of(" <", argument), text.size());
    if (const CommandEntry* entry = commands.FindKeyword(match.command->Keyword)) {
        const ParameterPart part = PartAt(text.substr(argument), entry->syntax, text.size() - argument);
        end.kind = part.kind;
        end.part = {argument + part.range.begin, argument + part.range.end};
    }
    return end;
}

} // namespace zem
