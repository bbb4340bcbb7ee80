// Scripts that make sense line by line and yet cannot do what was meant.
#include "base/LineText.h"
#include "model/Texts.h"
#include "play/Fold.h"
#include "play/Sentence.h"
#include "problems/CertainRuns.h"
#include "problems/Checks.h"
#include "problems/Fixes.h"
#include "problems/NameUses.h"
#include "problems/ScriptFlow.h"
#include "problems/TextNumbers.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_map>

namespace zem::problems {

namespace {

/// The calls that come for certain when the script runs, those of procedures that it runs included.
std::vector<const CheckedCall*> CertainCallsFrom(const CheckedScript& script, const ScriptFlow& flow) {
    std::vector<const CheckedCall*> certain;
    std::vector<const CheckedScript*> scripts = {&script};
    for (std::size_t k = 0; k < scripts.size(); ++k)
        for (const CheckedCall* call : CertainCalls(*scripts[k])) {
            certain.push_back(call);
            const CheckedScript* called = Is(*call, "do") ? flow.Procedure(call->Part(0)) : nullptr;
            if (called != nullptr && std::find(scripts.begin(), scripts.end(), called) == scripts.end())
                scripts.push_back(called);
        }
    return certain;
}

void FindEndlessProcedures(const CheckedGame& game, Findings& findings) {
    for (const CheckedCall* call : CallsThatComeBack(game))
        findings.Add(
            "X01", call->line->place,
            "This runs the procedure again in which it stands, with nothing that could end it, until "
            "the turn is broken off.");
}

void FindEndlessLoops(const CheckedGame& game, Findings& findings) {
    const ScriptFlow& flow = game.Flow();
    for (const CheckedCall* loop : game.CallsOf("while")) {
        const std::string_view flag = loop->Part(0);
        const CheckedScript* body = flow.Procedure(loop->Part(1));
        if (body == nullptr || flag.empty() || IsMadeOfVariables(flag) || IsMadeOfVariables(loop->Part(1)))
            continue;
        bool canEnd = false;
        for (const CheckedScript* script : flow.RunBy(*body))
            for (const CheckedCall& call : script->calls)
                canEnd |= EndsGame(call) || Is(call, "type") || Is(call, "goto") ||
                          ((Is(call, "flag off") || Is(call, "flag flip")) &&
                           (call.Part(0) == flag || IsMadeOfVariables(call.Part(0))));
        if (canEnd)
            continue;
        const int entry = body->place.steps[0].entry;
        const std::string line = "flag off <" + std::string(flag) + '>';
        findings
            .Add("X02", loop->line->At(loop->call->keyword),
                 "Nothing in " + QuoteShortly(loop->Part(1)) + " clears the flag " + QuoteShortly(flag) +
                     ", so this goes on until the turn is broken off.")
            .fixes = {ChangeGame("Add " + line, [entry, line](GameModel& changed) {
            if (entry > changed.Procedures.Count())
                return;
            std::string& script = changed.Procedures.Edit(entry).Script;
            script += (script.empty() || script.ends_with("\r\n") ? "" : "\r\n") + line;
        })};
    }
}

void FindLinesBehindTheEnd(const CheckedGame& game, Findings& findings) {
    for (const CheckedScript& script : game.Scripts()) {
        const auto end = std::find_if(script.calls.begin(), script.calls.end(), [](const CheckedCall& call) {
            return EndsGame(call) && IsUnconditional(call);
        });
        if (end == script.calls.end())
            continue;
        for (const CheckedLine& line : script.lines)
            if (&line > end->line)
                findings
                    .Add("X03", line.place,
                         "The game ends with the " + QuoteShortly(end->Keyword()) +
                             " above, so this never runs.")
                    .fixes = {RemoveLine("Remove it", line.place, line.text)};
    }
}

/// What is asked, "not" left out.
std::string Question(const CheckedLine& line, const ScriptCondition& condition) {
    std::string question = Lower(condition.call.keyword.Of(line.text));
    if (condition.call.hasParameter)
        for (const std::string_view part : SplitAt(condition.call.parameter.Of(line.text), ";"))
            question.append(";").append(Trim(part));
    return question;
}

/// Whether the second answer may be another one than the first.
bool MayChange(std::string_view question) {
    return question.starts_with("chance") || question.starts_with("ask");
}

void FindConditionsTwice(const CheckedGame& game, Findings& findings) {
    for (const CheckedLine& line : game.Lines())
        for (const ScriptAction& action : line.parsed.actions) {
            std::map<std::string, bool> asked;
            for (std::size_t k = 0; k < action.conditionCount; ++k) {
                const ScriptCondition& condition = line.parsed.conditions[action.firstCondition + k];
                const std::string question = Question(line, condition);
                if (MayChange(question))
                    continue;
                const auto [first, isNew] = asked.emplace(question, condition.isNegated);
                if (isNew)
                    continue;
                findings.Add("X04", line.At(condition.call.keyword),
                             first->second == condition.isNegated ? "This \"if\" asks the same twice."
                             : condition.joiner == Joiner::And
                                 ? "This \"if\" asks for something and for its contrary, so it is never true."
                                 : "This \"if\" asks for something or its contrary, so it is always true.");
            }
        }
}

/// What the "if"s around an "if" have answered already, by the question.
using Answers = std::map<std::string, bool>;

/// The answers that hold in one branch: where one branch needs all conditions, the other tells of none.
Answers AnswersIn(const CheckedLine& line, const ScriptAction& action, bool isThen, Answers answers) {
    for (std::size_t k = 0; k < action.conditionCount; ++k) {
        const ScriptCondition& condition = line.parsed.conditions[action.firstCondition + k];
        const Joiner needed = isThen ? Joiner::And : Joiner::Or;
        if (k > 0 && condition.joiner != needed)
            return answers;
    }
    for (std::size_t k = 0; k < action.conditionCount; ++k) {
        const ScriptCondition& condition = line.parsed.conditions[action.firstCondition + k];
        if (!MayChange(Question(line, condition)))
            answers.emplace(Question(line, condition), isThen != condition.isNegated);
    }
    return answers;
}

/// Conditions whose answer an "if" around them has told. Nothing happens between the two.
void FindAnsweredIn(const CheckedLine& line, std::size_t index, const Answers& answers, Findings& findings) {
    const ScriptAction& action = line.parsed.actions[index];
    if (!action.IsIf())
        return;
    for (std::size_t k = 0; k < action.conditionCount; ++k) {
        const ScriptCondition& condition = line.parsed.conditions[action.firstCondition + k];
        const auto answer = answers.find(Question(line, condition));
        if (answer != answers.end())
            findings.Add("X04", line.At(condition.call.keyword),
                         std::string("An \"if\" before it in this line has asked for the same, so this is ") +
                             (answer->second != condition.isNegated ? "always true." : "never true."));
    }
    if (action.thenAction != 0)
        FindAnsweredIn(line, action.thenAction, AnswersIn(line, action, true, answers), findings);
    if (action.elseAction != 0)
        FindAnsweredIn(line, action.elseAction, AnswersIn(line, action, false, answers), findings);
}

void FindAnswered(const CheckedGame& game, Findings& findings) {
    for (const CheckedLine& line : game.Lines()) {
        const auto ifs = std::count_if(line.parsed.actions.begin(), line.parsed.actions.end(),
                                       [](const ScriptAction& action) { return action.IsIf(); });
        if (ifs > 1)
            FindAnsweredIn(line, 0, {}, findings);
    }
}

/// Whether the field of a room runs only while the player is in it.
bool RunsInRoom(const Place& place) {
    return place.steps[0].list == FieldId::GameRooms && place.steps[1].list != FieldId::RoomObjects &&
           place.steps[1].list != FieldId::RoomCharacters;
}

bool MovesPlayer(const CheckedScript& script) {
    return std::any_of(script.calls.begin(), script.calls.end(), [](const CheckedCall& call) {
        return Is(call, "goto") || Is(call, "back") || Is(call, "type") || Is(call, "do");
    });
}

/// Without the condition, where it is the only one of its line.
std::vector<Fix> Simplify(const CheckedLine& line, bool isTrue) {
    const ScriptAction& whole = line.parsed.actions.front();
    if (!whole.IsIf() || whole.conditionCount != 1 || line.parsed.conditions.size() != 1)
        return {};
    const std::size_t action = isTrue ? whole.thenAction : whole.elseAction;
    if (action == 0)
        return {RemoveLine("Remove the line", line.place, line.text)};
    return {ReplaceBytes("Leave out the condition", line.place, line.text,
                         std::string(line.parsed.actions[action].whole.Of(line.text)))};
}

void FindOwnRoomAsked(const CheckedGame& game, Findings& findings) {
    for (const CheckedScript& script : game.Scripts()) {
        const Place way = game.Owners().Path(script.place).front();
        if (!RunsInRoom(way) || MovesPlayer(script))
            continue;
        const std::string& room = game.Game().Rooms[way.steps[0].entry].Name;
        for (const CheckedCall& call : script.calls) {
            if (!Is(call, "if in") || !game.OwnNames(NameKind::Room).Has(call.Part(0)))
                continue;
            const bool isTrue = (call.Part(0) == room) != call.isNegated;
            findings
                .Add("X06", call.line->At(call.call->keyword),
                     std::string("This script runs in ") + room + " only, so this condition is " +
                         (isTrue ? "always true." : "never true."))
                .fixes = Simplify(*call.line, isTrue);
        }
    }
}

void FindSameBranches(const CheckedGame& game, Findings& findings) {
    for (const CheckedLine& line : game.Lines())
        for (const ScriptAction& action : line.parsed.actions) {
            if (action.elseAction == 0)
                continue;
            const std::string_view then = line.parsed.actions[action.thenAction].whole.Of(line.text);
            if (then != line.parsed.actions[action.elseAction].whole.Of(line.text))
                continue;
            findings.Add("X08", line.At(action.whole), "\"then\" and \"else\" do the same.").fixes = {
                ReplaceBytes("Do it in any case", line.At(action.whole), action.whole.Of(line.text),
                             std::string(then))};
        }
}

/// The room to which the player is sent by entering one; empty when he stays.
std::string_view SentTo(const CheckedScript& script, const ScriptFlow& flow) {
    std::set<const CheckedScript*> seen;
    const CheckedScript* next = &script;
    while (next != nullptr && seen.insert(next).second) {
        const CheckedScript* called = nullptr;
        for (const CheckedCall* call : CertainCalls(*next)) {
            if (Is(*call, "goto"))
                return call->Part(0);
            if (called == nullptr && Is(*call, "do"))
                called = flow.Procedure(call->Part(0));
        }
        next = called;
    }
    return {};
}

void FindRoundTrips(const CheckedGame& game, Findings& findings) {
    const ScriptFlow& flow = game.Flow();
    std::map<std::string_view, std::string_view> sent;
    std::map<std::string_view, Place> places;
    for (const CheckedScript& script : game.Scripts())
        if (script.place.field == FieldId::RoomScript) {
            const std::string_view room = game.Game().Rooms[script.place.steps[0].entry].Name;
            if (const std::string_view to = SentTo(script, flow); !to.empty()) {
                sent[room] = to;
                places[room] = script.place;
            }
        }
    for (const auto& [room, first] : sent) {
        std::set<std::string_view> seen;
        std::string_view at = first;
        while (at != room && sent.contains(at) && seen.insert(at).second)
            at = sent[at];
        if (at == room)
            findings.Add("X09", places[room],
                         first == room
                             ? "Entering this room enters it again, until the turn is broken off."
                             : "Entering this room sends the player to " + QuoteShortly(first) +
                                   ", and from there he is sent back, until the turn is broken off.");
    }
}

/// The line that a "type" makes, with a word in the place of each variable.
std::string TypedLine(std::string_view line) {
    std::string typed;
    std::size_t from = 0;
    ForEachVariable(line, [&](TextRange range, char) {
        typed.append(line.substr(from, range.begin - 1 - from)).append("something");
        from = range.end + 1;
        return true;
    });
    return typed.append(line.substr(from));
}

/// The patterns of all commands, by the field in which they stand.
class AllPatterns {
public:
    explicit AllPatterns(const GameModel& game) {
        play::Names names;
        ForEachText(game, [&](const Place& place, FieldUse use, const std::string& text) {
            if (use.kind == FieldKind::Pattern)
                patterns_.emplace_back(place, play::ReadPatterns(names, text));
        });
    }

    /// Whether this command takes the line, and no other one does.
    bool IsTakenBy(const Place& script, const std::string& line) const {
        const play::Sentence sentence(line);
        bool isTaken = false;
        for (const auto& [place, patterns] : patterns_) {
            const bool isOwn = place.steps == script.steps;
            const bool matches =
                std::any_of(patterns.begin(), patterns.end(), [&](const play::Pattern& pattern) {
                    return !pattern.IsEmpty() && play::MatchPattern(pattern, sentence).has_value();
                });
            if (matches && !isOwn)
                return false;
            isTaken |= matches;
        }
        return isTaken;
    }

private:
    std::vector<std::pair<Place, std::vector<play::Pattern>>> patterns_;
};

void FindTypingItself(const CheckedGame& game, Findings& findings) {
    if (game.CallsOf("type").empty())
        return;
    const ScriptFlow& flow = game.Flow();
    const AllPatterns patterns(game.Game());
    for (const CheckedScript& script : game.Scripts()) {
        const std::size_t depth = script.place.Depth();
        const FieldId list = depth == 0 ? FieldId::None : script.place.steps[depth - 1].list;
        if (list != FieldId::GamePlayerCommands && list != FieldId::RoomCommands)
            continue;
        for (const CheckedCall* call : CertainCallsFrom(script, flow))
            if (Is(*call, "type") && patterns.IsTakenBy(script.place, TypedLine(call->Part(0))))
                findings.Add("X10", call->line->place,
                             "This types the command to which it belongs, until the turn is broken off.");
    }
}

void FindEndsOfEveryTurn(const CheckedGame& game, Findings& findings) {
    const ScriptFlow& flow = game.Flow();
    for (const CheckedScript& script : game.Scripts()) {
        if (script.place.field != FieldId::GameBeforeTurnScript &&
            script.place.field != FieldId::GameAfterTurnScript)
            continue;
        for (const CheckedCall* call : CertainCallsFrom(script, flow))
            if (EndsGame(*call) || Is(*call, "goto"))
                findings.Add(
                    "X11", call->line->place,
                    "This happens in every turn, the first included, because nothing stands before it that "
                    "asks for anything.");
    }
}

/// All that a variable can be; nothing where that cannot be told.
class Values {
public:
    explicit Values(const CheckedGame& game) : game_(game) {
        for (const CheckedCall& call : game.Calls())
            if (!call.isCondition && !call.parts.empty() && call.parts[0].kind == NameKind::Variable)
                Add(call);
        ForEachText(game.Game(), [&](const Place&, FieldUse use, const std::string& text) {
            if (use.kind == FieldKind::Pattern)
                ForEachVariable(text, [&](TextRange range, char) {
                    open_.insert(std::string(range.Of(text)));
                    return true;
                });
        });
    }

    /// Whether the variable is set, and never to this text.
    bool CanNeverBe(std::string_view variable, std::string_view text) const {
        const auto found = texts_.find(std::string(variable));
        return found != texts_.end() && !open_.contains(std::string(variable)) && variable != "thing" &&
               !game_.IsMentionedElsewhere(variable) && !found->second.contains(play::Fold(text));
    }

private:
    void Add(const CheckedCall& call) {
        const std::string name(call.Part(0));
        if (Is(call, "set") && call.Part(1).find_first_of("#%") == std::string_view::npos)
            texts_[name].insert(play::Fold(call.Part(1)));
        else
            open_.insert(name);
    }

    const CheckedGame& game_;
    std::map<std::string, std::set<std::string>> texts_;
    std::set<std::string> open_;
};

void FindImpossibleTexts(const CheckedGame& game, Findings& findings) {
    const Values values(game);
    for (const CheckedCall* call : game.CallsOf("if equal")) {
        const std::string_view text = call->Part(1);
        if (!text.empty() && text.find_first_of("#%") == std::string_view::npos &&
            values.CanNeverBe(call->Part(0), text))
            findings.Add("X12", call->At(1),
                         "No script ever sets " + QuoteShortly(call->Part(0)) + " to " + QuoteShortly(text) +
                             '.');
    }
}

} // namespace

std::span<const Check> LogicChecks() {
    static constexpr Check Rows[] = {
        {"X01", Level::Error, "Procedures that run themselves", FindEndlessProcedures},
        {"X02", Level::Error, "Loops that never end", FindEndlessLoops},
        {"X03", Level::Warning, "Lines behind the end", FindLinesBehindTheEnd},
        {"X04", Level::Warning, "Conditions that are asked twice", FindConditionsTwice},
        {"X04", Level::Warning, "Conditions that are asked twice", FindAnswered},
        {"X06", Level::Hint, "Rooms that ask for themselves", FindOwnRoomAsked},
        {"X08", Level::Warning, "Then and else that do the same", FindSameBranches},
        {"X09", Level::Error, "Rooms that send the player to and fro", FindRoundTrips},
        {"X10", Level::Error, "Commands that type themselves", FindTypingItself},
        {"X11", Level::Warning, "Ends in every turn", FindEndsOfEveryTurn},
        {"X12", Level::Hint, "Texts that a variable never gets", FindImpossibleTexts},
    };
    return Rows;
}

} // namespace zem::problems
