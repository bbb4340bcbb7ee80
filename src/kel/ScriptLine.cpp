#include "kel/ScriptLine.h"

#include "base/LineText.h"

#include <utility>

namespace zem {

namespace {

// Deeper lines are no author's; reading them would only use up the stack.
constexpr int DeepestNesting = 100;

enum class TokenKind { Word, Parameter, End };

/// A word, or a parameter with its brackets.
struct Token {
    TokenKind kind = TokenKind::End;
    TextRange range;
};

/// Walks the words and parameters of a line and builds its actions on the way. A function that meets a
/// problem notes it and returns false.
class LineParser {
public:
    LineParser(std::string_view line, const CommandLookup& commands) : line_(line), commands_(commands) {}

    ScriptLine Parse() {
        if (!Advance() || !ParseLine()) {
            parsed_.actions.clear();
            parsed_.conditions.clear();
        }
        return std::move(parsed_);
    }

private:
    bool Fail(LineProblem problem, std::size_t at) {
        parsed_.problem = problem;
        parsed_.problemAt = at;
        return false;
    }
    bool Fail(LineProblem problem) { return Fail(problem, token_.range.begin); }

    /// Goes to the next token. Behind the last one stands an End.
    bool Advance() {
        previousEnd_ = token_.range.end;
        const std::size_t at = std::min(line_.find_first_not_of(' ', previousEnd_), line_.size());
        token_ = {TokenKind::End, {at, at}};
        if (at == line_.size())
            return true;
        if (line_[at] != '<') {
            token_ = {TokenKind::Word, {at, std::min(line_.find_first_of(" <", at), line_.size())}};
            return true;
        }
        const std::size_t close = line_.find('>', at);
        if (close == std::string_view::npos)
            return Fail(LineProblem::OpenBracket, at);
        token_ = {TokenKind::Parameter, {at, close + 1}};
        return true;
    }

    bool IsWord(std::string_view word) const {
        return token_.kind == TokenKind::Word && EqualIgnoringCase(token_.range.Of(line_), word);
    }

    bool ParseLine() {
        if (token_.kind == TokenKind::End || line_[token_.range.begin] == '\'')
            return true;
        parsed_.actions.emplace_back();
        if (!IsWord("if"))
            return ParseCommand(0, TrimmedRange(line_, {0, line_.size()}));
        return ParseIf(0, 1) && (token_.kind == TokenKind::End || Fail(LineProblem::ElseTooMany));
    }

    /// An action's place in the list does not move, but the list does when it grows.
    ScriptAction& Action(std::size_t action) { return parsed_.actions[action]; }

    bool ParseIf(std::size_t action, int depth) {
        if (depth > DeepestNesting)
            return Fail(LineProblem::TooDeep);
        const std::size_t begin = token_.range.begin;
        Action(action).firstCondition = parsed_.conditions.size();
        if (!Advance() || !ParseConditions())
            return false;
        Action(action).conditionCount = parsed_.conditions.size() - Action(action).firstCondition;
        Action(action).thenAction = parsed_.actions.size(); // "then" is the current word
        if (!ParseBranch(LineProblem::NothingAfterThen, depth))
            return false;
        if (IsWord("else")) {
            Action(action).elseAction = parsed_.actions.size();
            if (!ParseBranch(LineProblem::NothingAfterElse, depth))
                return false;
        }
        Action(action).whole = {begin, previousEnd_};
        return true;
    }

    bool ParseConditions() {
        for (Joiner joiner = Joiner::And;;) {
            if (!ParseCondition(joiner))
                return false;
            if (IsWord("then"))
                return true;
            joiner = IsWord("or") ? Joiner::Or : Joiner::And;
            if (!IsWord("and") && !IsWord("or"))
                return Fail(LineProblem::NoThen);
            if (!Advance())
                return false;
        }
    }

    bool IsInKeyword() const {
        return token_.kind == TokenKind::Word && !IsWord("and") && !IsWord("or") && !IsWord("then") &&
               !IsWord("else");
    }

    bool ParseCondition(Joiner joiner) {
        ScriptCondition condition;
        condition.joiner = joiner;
        condition.isNegated = IsWord("not");
        if (condition.isNegated && !Advance())
            return false;
        std::string keyword = "if";
        condition.call.keyword.begin = token_.range.begin;
        while (IsInKeyword()) {
            keyword.append(" ").append(token_.range.Of(line_));
            if (!Advance())
                return false;
        }
        condition.call.keyword.end = previousEnd_;
        if (keyword == "if")
            return Fail(LineProblem::NoCondition);
        condition.call.entry = commands_.FindKeyword(keyword);
        condition.call.hasParameter = token_.kind == TokenKind::Parameter;
        if (condition.call.hasParameter) {
            condition.call.parameter = {token_.range.begin + 1, token_.range.end - 1};
            if (!Advance())
                return false;
        }
        parsed_.conditions.push_back(condition);
        return true;
    }

    /// The action behind a "then" or "else", which is the current word.
    bool ParseBranch(LineProblem nothingThere, int depth) {
        if (!Advance())
            return false;
        const std::size_t action = parsed_.actions.size();
        parsed_.actions.emplace_back();
        if (IsWord("if"))
            return ParseIf(action, depth + 1);
        const std::size_t begin = token_.range.begin;
        if (token_.kind == TokenKind::End || IsWord("else"))
            return Fail(nothingThere);
        while (token_.kind != TokenKind::End && !IsWord("else"))
            if (!Advance())
                return false;
        return ParseCommand(action, {begin, previousEnd_});
    }

    bool ParseCommand(std::size_t action, TextRange whole) {
        ScriptCall& call = Action(action).call;
        Action(action).whole = whole;
        const std::string_view text = line_.substr(0, whole.end);
        const std::size_t open = std::min(text.find('<', whole.begin), whole.end);
        call.keyword = TrimmedRange(text, {whole.begin, open});
        call.entry = commands_.FindKeyword(call.keyword.Of(line_));
        if (open == whole.end)
            return true;
        const std::size_t close = text.find('>', open);
        if (close == std::string_view::npos)
            return Fail(LineProblem::OpenBracket, open);
        call.hasParameter = true;
        call.parameter = {open + 1, close};
        call.rest = TrimmedRange(text, {close + 1, whole.end});
        return true;
    }

    std::string_view line_;
    const CommandLookup& commands_;
    ScriptLine parsed_;
    Token token_;
    std::size_t previousEnd_ = 0; // of the token before the current one
};

} // namespace

const char* Explain(LineProblem problem) {
    switch (problem) {
    case LineProblem::None:
        break;
    case LineProblem::OpenBracket:
        return "a \"<\" is never closed";
    case LineProblem::NoCondition:
        return "a condition is missing";
    case LineProblem::NoThen:
        return "after a condition comes \"and\", \"or\" or \"then\"";
    case LineProblem::NothingAfterThen:
        return "there is no command after \"then\"";
    case LineProblem::NothingAfterElse:
        return "there is no command after \"else\"";
    case LineProblem::ElseTooMany:
        return "there is an \"else\" too many";
    case LineProblem::TooDeep:
        return "too many \"if\" stand inside one another";
    }
    return "";
}

ScriptLine TakeApart(std::string_view line, const CommandLookup& commands) {
    return LineParser(line, commands).Parse();
}

ParameterPart PartAt(std::string_view parameter, const ParameterSyntax& syntax, std::size_t position) {
    const std::string_view before = parameter.substr(0, position);
    const auto wanted = std::count(before.begin(), before.end(), ';');
    ParameterPart found;
    std::ptrdiff_t index = 0;
    ForEachPart(parameter, syntax, [&](TextRange range, NameKind kind) {
        if (index++ <= wanted) // the last part may hold further ";"
            found = {range, kind};
    });
    return found;
}

} // namespace zem
