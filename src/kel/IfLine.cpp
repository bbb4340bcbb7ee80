#include "kel/IfLine.h"

#include "base/LineText.h"
#include "kel/FormatCodes.h"
#include "kel/RenderScript.h"

#include <algorithm>

namespace zem {

namespace {

// Deeper lines are no author's; reading them would only use up the stack.
constexpr int DeepestNesting = 100;

/// A word, or a parameter with its brackets, by its place in the line.
struct Token {
    bool isParameter = false;
    std::size_t begin = 0;
    std::size_t end = 0;
};

std::vector<Token> Tokenize(std::string_view line) {
    std::vector<Token> tokens;
    for (std::size_t at = 0; at < line.size();) {
        if (line[at] == ' ') {
            ++at;
        } else if (line[at] == '<') {
            const std::size_t close = line.find('>', at);
            if (close == std::string_view::npos)
                throw KelError("a \"<\" is never closed");
            tokens.push_back({true, at, close + 1});
            at = close + 1;
        } else {
            const std::size_t end = std::min(line.find_first_of(" <", at), line.size());
            tokens.push_back({false, at, end});
            at = end;
        }
    }
    return tokens;
}

class IfParser {
public:
    explicit IfParser(std::string_view line) : line_(line), tokens_(Tokenize(line)) {}

    IfLine ParseWhole() {
        IfLine parsed = ParseIf(1);
        if (at_ < tokens_.size())
            throw KelError("there is an \"else\" too many");
        return parsed;
    }

private:
    bool IsWord(std::string_view word) const {
        return at_ < tokens_.size() && !tokens_[at_].isParameter &&
               EqualIgnoringCase(Text(tokens_[at_]), word);
    }

    bool Skip(std::string_view word) {
        if (!IsWord(word))
            return false;
        ++at_;
        return true;
    }

    std::string_view Text(const Token& token) const {
        return line_.substr(token.begin, token.end - token.begin);
    }

    IfLine ParseIf(int depth) {
        if (depth > DeepestNesting)
            throw KelError("too many \"if\" stand inside one another");
        if (!Skip("if"))
            throw KelError("the line does not begin with \"if\"");
        IfLine parsed;
        Joiner joiner = Joiner::And;
        do {
            parsed.Conditions.push_back(ParseCondition(joiner));
            joiner = IsWord("or") ? Joiner::Or : Joiner::And;
        } while (Skip("and") || Skip("or"));
        if (!Skip("then"))
            throw KelError("after a condition comes \"and\", \"or\" or \"then\"");
        parsed.Then = ParseAction("then", depth);
        if (Skip("else"))
            parsed.Else = ParseAction("else", depth);
        return parsed;
    }

    Condition ParseCondition(Joiner joiner) {
        Condition condition;
        condition.JoinedBy = joiner;
        condition.Negated = Skip("not");
        while (at_ < tokens_.size() && !tokens_[at_].isParameter && !IsWord("and") && !IsWord("or") &&
               !IsWord("then") && !IsWord("else")) {
            condition.Keyword.append(condition.Keyword.empty() ? "" : " ").append(Text(tokens_[at_]));
            ++at_;
        }
        if (condition.Keyword.empty())
            throw KelError("a condition is missing");
        condition.HasParameter = at_ < tokens_.size() && tokens_[at_].isParameter;
        if (condition.HasParameter) {
            const std::string_view parameter = Text(tokens_[at_++]);
            condition.Parameter = parameter.substr(1, parameter.size() - 2);
        }
        return condition;
    }

    std::string ParseAction(std::string_view after, int depth) {
        const std::size_t first = at_;
        if (IsWord("if"))
            ParseIf(depth + 1);
        else
            while (at_ < tokens_.size() && !IsWord("else"))
                ++at_;
        if (at_ == first)
            throw KelError("there is no command after \"" + std::string(after) + "\"");
        const std::size_t begin = tokens_[first].begin;
        return std::string(line_.substr(begin, tokens_[at_ - 1].end - begin));
    }

    std::string_view line_;
    std::vector<Token> tokens_;
    std::size_t at_ = 0;
};

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

/// "If the player has "key" ..." without its frame: "the player has "key"".
std::string DescribeCondition(const Condition& condition, const CommandLookup& commands) {
    const std::string raw =
        condition.Keyword + (condition.HasParameter ? " <" + condition.Parameter + ">" : "");
    const CommandDefinition* entry = commands.FindKeyword("if " + condition.Keyword);
    std::string text = raw;
    if (entry != nullptr) {
        text = FormatCodesToText(entry->FriendlyTemplate, false);
        if (const std::size_t place = text.find('$'); place != std::string::npos)
            text.replace(place, 1, condition.Parameter);
        if (BeginsWith(text, "if "))
            text.erase(0, 3);
        if (text.ends_with(" ..."))
            text.resize(text.size() - 4);
    }
    return condition.Negated ? "it is not so that " + text : text;
}

} // namespace

IfLine ParseIfLine(std::string_view line) {
    return IfParser(line).ParseWhole();
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
