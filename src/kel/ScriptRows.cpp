#include "kel/ScriptRows.h"

#include "base/LineText.h"
#include "kel/FormatCodes.h"
#include "kel/InternalCall.h"
#include "kel/ScriptLine.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace zem {

namespace {

constexpr std::size_t DeepestCalls = 64; // deeper scripts are no author's, and nobody could read them

using Spans = std::vector<RowSpan>;

void AddSpan(Spans& spans, std::string_view text, RowRole role) {
    if (text.empty())
        return;
    if (!spans.empty() && spans.back().role == role && spans.back().procedure.empty())
        spans.back().text += text;
    else
        spans.push_back({std::string(text), role});
}

/// A parameter with its format codes as words; names of the author's procedures are spans of their own.
void AddParameter(Spans& spans, std::string_view parameter, const CommandEntry* entry) {
    std::size_t done = 0;
    const auto addUpTo = [&](std::size_t end) {
        AddSpan(spans, FormatCodesToText(parameter.substr(done, end - done), true), RowRole::Parameter);
        done = end;
    };
    if (entry != nullptr)
        ForEachPart(parameter, entry->syntax, [&](TextRange part, NameKind kind) {
            const std::string_view name = part.Of(parameter);
            if (kind != NameKind::Procedure || name.empty())
                return;
            addUpTo(part.begin);
            done = part.end;
            if (name.starts_with('~'))
                spans.push_back({"what follows", RowRole::Frame});
            else
                spans.push_back({std::string(name), RowRole::Parameter, std::string(name)});
        });
    addUpTo(parameter.size());
}

/// The catalogue's words for a call, with its parameter in them.
Spans Friendly(const std::string& words, std::string_view parameter, const CommandEntry* entry) {
    Spans spans;
    bool isPlaced = false;
    ForEachFormattedRun(words, [&](std::string_view run, const TextFormat& format) {
        const RowRole role = format.basicColour == 9 ? RowRole::Parameter : RowRole::Words;
        const std::size_t place = isPlaced ? std::string_view::npos : run.find('$');
        AddSpan(spans, run.substr(0, place), role);
        if (place == std::string_view::npos)
            return;
        isPlaced = true;
        AddParameter(spans, parameter, entry);
        AddSpan(spans, run.substr(place + 1), role);
    });
    return spans;
}

Spans Raw(std::string_view keyword, bool hasParameter, std::string_view parameter,
          const CommandEntry* entry) {
    Spans spans;
    AddSpan(spans, keyword, RowRole::Words);
    if (!hasParameter)
        return spans;
    AddSpan(spans, " <", RowRole::Words);
    AddParameter(spans, parameter, entry);
    AddSpan(spans, ">", RowRole::Words);
    return spans;
}

/// Takes away "If " and " ...", which frame a condition of the catalogue.
void Unframe(Spans& spans) {
    if (!spans.empty() && BeginsWith(spans.front().text, "if "))
        spans.front().text.erase(0, 3);
    if (!spans.empty() && spans.back().text.ends_with(" ..."))
        spans.back().text.resize(spans.back().text.size() - 4);
    std::erase_if(spans, [](const RowSpan& span) { return span.text.empty(); });
}

class RowMaker {
public:
    RowMaker(const GameModel& game, const CommandLookup& commands, const RowOptions& options)
        : game_(game),
          commands_(commands),
          options_(options) {}

    std::vector<ScriptRow> Make(const std::string& script) {
        AddScript(script, 0, {});
        if (rows_.size() > options_.most) {
            rows_.resize(options_.most);
            rows_.push_back({0, {{"... and more", RowRole::Remark}}, {}});
        }
        return std::move(rows_);
    }

private:
    bool IsFull() const { return rows_.size() > options_.most; }

    void AddRow(int indent, Spans spans, const ScriptPath& path) {
        rows_.push_back({indent, std::move(spans), path});
    }

    const Procedure* Find(std::string_view name) {
        if (procedures_.empty())
            for (const Procedure& procedure : game_.Procedures)
                procedures_.emplace(Lower(procedure.Name), &procedure); // the first of a name counts
        const auto found = procedures_.find(Lower(name));
        return found == procedures_.end() ? nullptr : found->second;
    }

    /// The lines of a field, a branch or a procedure.
    void AddScript(const std::string& script, int indent, const ScriptPath& way) {
        const Procedure* internal = InternalBody(script);
        const bool isOpen = internal != nullptr && std::count(open_.begin(), open_.end(), internal) != 0;
        if (isOpen || open_.size() > DeepestCalls) {
            AddRow(indent, {{isOpen ? "the same again" : "...", RowRole::Remark}}, {});
            return;
        }
        open_.push_back(internal);
        const std::size_t before = rows_.size();
        const std::string& text = internal == nullptr ? script : internal->Script;
        ForEachLine(text, [&](TextRange range, int number) {
            const std::string_view line = range.Of(text);
            if (IsFull() || Trim(line).empty())
                return;
            ScriptPath path = way;
            path.push_back({number - 1});
            AddLine(std::string(line), indent, path);
        });
        if (rows_.size() == before && !way.empty())
            AddRow(indent, {{"nothing", RowRole::Remark}}, {});
        open_.pop_back();
    }

    /// The procedure that is meant by a script which only calls it; null for another script.
    const Procedure* InternalBody(const std::string& script) {
        const std::string_view name = CalledInternalName(script);
        return name.empty() ? nullptr : Find(name);
    }

    void AddLine(const std::string& line, int indent, const ScriptPath& path) {
        const ScriptLine parsed = TakeApart(line, commands_);
        if (parsed.problem != LineProblem::None) {
            AddRow(indent,
                   {{line, RowRole::Problem},
                    {std::string(" (") + Explain(parsed.problem) + ")", RowRole::Remark}},
                   path);
            return;
        }
        if (parsed.actions.empty()) {
            AddRow(indent, {{line, RowRole::Remark}}, path);
            return;
        }
        if (InternalBody(line) != nullptr)
            AddCalled(std::string(GetParameter(line)), indent, path);
        else
            AddAction(line, parsed, 0, indent, path, "If ");
    }

    /// @param opening  of an "if": it goes on an "Otherwise" in a chain of cases
    void AddAction(const std::string& line, const ScriptLine& parsed, std::size_t index, int indent,
                   const ScriptPath& path, const char* opening) {
        const ScriptAction& action = parsed.actions[index];
        if (!action.IsIf()) {
            AddCommand(line, action, indent, path);
            return;
        }
        AddRow(indent, Conditions(line, parsed, action, opening), path);
        AddBranch(line, parsed, action.thenAction, indent + 1, path, Branch::Then);
        if (action.elseAction == 0)
            return;
        ScriptPath inside = path;
        inside.back().branch = Branch::Else;
        inside.push_back({0});
        if (parsed.actions[action.elseAction].IsIf()) {
            AddAction(line, parsed, action.elseAction, indent, inside, "Otherwise, if ");
            return;
        }
        AddRow(indent, {{"Otherwise:", RowRole::Frame}}, path);
        AddBranch(line, parsed, action.elseAction, indent + 1, path, Branch::Else);
    }

    void AddBranch(const std::string& line, const ScriptLine& parsed, std::size_t index, int indent,
                   const ScriptPath& path, Branch branch) {
        ScriptPath way = path;
        way.back().branch = branch;
        const std::string action(parsed.actions[index].whole.Of(line));
        if (InternalBody(action) != nullptr) {
            AddScript(action, indent, way);
            return;
        }
        way.push_back({0});
        AddAction(line, parsed, index, indent, way, "If ");
    }

    Spans Conditions(const std::string& line, const ScriptLine& parsed, const ScriptAction& action,
                     const char* opening) const {
        Spans spans;
        AddSpan(spans, options_.friendly ? opening : opening[0] == 'I' ? "if " : "else if ", RowRole::Frame);
        for (std::size_t k = 0; k < action.conditionCount; ++k) {
            const ScriptCondition& condition = parsed.conditions[action.firstCondition + k];
            if (k > 0)
                AddSpan(spans, condition.joiner == Joiner::And ? " and " : " or ", RowRole::Frame);
            if (condition.isNegated)
                AddSpan(spans, options_.friendly ? "it is not so that " : "not ", RowRole::Frame);
            for (const RowSpan& span : ConditionOf(line, condition.call))
                spans.push_back(span);
        }
        AddSpan(spans, options_.friendly ? ":" : " then", RowRole::Frame);
        return spans;
    }

    Spans ConditionOf(const std::string& line, const ScriptCall& call) const {
        if (!options_.friendly || call.entry == nullptr)
            return RawCall(line, call);
        Spans spans = Friendly(call.entry->definition->FriendlyTemplate, call.parameter.Of(line), call.entry);
        Unframe(spans);
        return spans;
    }

    static Spans RawCall(const std::string& line, const ScriptCall& call) {
        return Raw(call.keyword.Of(line), call.hasParameter, call.parameter.Of(line), call.entry);
    }

    void AddCommand(const std::string& line, const ScriptAction& action, int indent, const ScriptPath& path) {
        const ScriptCall& call = action.call;
        const bool isComplete =
            call.entry != nullptr && (call.hasParameter || call.entry->definition->RawSyntax == "!");
        AddRow(indent,
               options_.friendly && isComplete
                   ? Friendly(call.entry->definition->FriendlyTemplate, call.parameter.Of(line), call.entry)
                   : RawCall(line, call),
               path);
        if (call.entry == nullptr || !call.hasParameter)
            return;
        ForEachPart(call.parameter.Of(line), call.entry->syntax, [&](TextRange part, NameKind kind) {
            const std::string name(part.Of(call.parameter.Of(line)));
            const bool isInternal = name.starts_with('~');
            if (kind == NameKind::Procedure && (isInternal || options_.unfolded.contains(Lower(name))))
                AddCalled(name, indent + 1, path);
        });
    }

    void AddCalled(const std::string& name, int indent, const ScriptPath& path) {
        const Procedure* procedure = Find(name);
        if (procedure == nullptr || IsFull())
            return;
        if (std::count(open_.begin(), open_.end(), procedure) != 0) {
            AddRow(indent, {{"the same again", RowRole::Remark}}, {});
            return;
        }
        ScriptPath way = path;
        way.back().branch = Branch::Called;
        way.back().procedure = name;
        open_.push_back(procedure);
        AddScript(procedure->Script, indent, way);
        open_.pop_back();
    }

    const GameModel& game_;
    const CommandLookup& commands_;
    const RowOptions& options_;
    std::vector<ScriptRow> rows_;
    std::vector<const Procedure*> open_; // those whose lines are being added, the innermost last
    std::unordered_map<std::string, const Procedure*> procedures_;
};

} // namespace

std::string ScriptRow::Text() const {
    std::string text;
    for (const RowSpan& span : spans)
        text += span.text;
    return text;
}

std::vector<ScriptRow> RowsOfScript(const GameModel& game, const std::string& script,
                                    const CommandLookup& commands, const RowOptions& options) {
    return RowMaker(game, commands, options).Make(script);
}

} // namespace zem
