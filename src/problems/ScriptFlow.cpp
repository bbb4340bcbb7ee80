#include "problems/ScriptFlow.h"

#include "game/References.h"
#include "problems/NameUses.h"

#include <algorithm>

namespace zem::problems {

ScriptFlow::ScriptFlow(const CheckedGame& game) : game_(game) {
    for (const CheckedScript& script : game.Scripts()) {
        const PlaceStep step = script.place.steps[0];
        if (step.list == FieldId::GameProcedures)
            procedures_.emplace(game.Game().Procedures[step.entry].Name, &script);
        else if (step.list == FieldId::GameSelectionMenus)
            choices_[game.Game().SelectionMenus[step.entry].Name].push_back(&script);
    }
    for (const CheckedCall& call : game.Calls())
        for (const ParameterPart& part : call.parts)
            if (part.kind != NameKind::None && IsMadeOfVariables(part.range.Of(call.line->text)))
                made_.emplace_back(part.kind, part.range.Of(call.line->text));

    std::vector<const CheckedScript*> roots;
    for (const CheckedScript& script : game.Scripts())
        if (script.place.steps[0].list != FieldId::GameProcedures)
            roots.push_back(&script);
    for (const auto& [name, script] : procedures_)
        if (game.IsMentionedElsewhere(name) || MayMean(NameKind::Procedure, name))
            roots.push_back(script);
    AddAll(roots, live_);
}

const CheckedScript* ScriptFlow::Procedure(std::string_view name) const {
    const auto found = procedures_.find(name);
    return found == procedures_.end() ? nullptr : found->second;
}

void ScriptFlow::AddCallees(const CheckedScript& script, std::vector<const CheckedScript*>& found) const {
    for (const CheckedCall& call : script.calls)
        for (const ParameterPart& part : call.parts) {
            const std::string_view name = part.range.Of(call.line->text);
            if (part.kind == NameKind::Procedure) {
                if (const CheckedScript* procedure = Procedure(name))
                    found.push_back(procedure);
            } else if (part.kind == NameKind::Menu) {
                if (const auto choices = choices_.find(name); choices != choices_.end())
                    found.insert(found.end(), choices->second.begin(), choices->second.end());
            }
        }
}

void ScriptFlow::AddAll(std::vector<const CheckedScript*>& found,
                        std::unordered_set<const CheckedScript*>& seen) const {
    std::vector<const CheckedScript*> waiting;
    waiting.swap(found);
    while (!waiting.empty()) {
        const CheckedScript* script = waiting.back();
        waiting.pop_back();
        if (!seen.insert(script).second)
            continue;
        found.push_back(script);
        AddCallees(*script, waiting);
    }
}

std::vector<const CheckedScript*> ScriptFlow::RunBy(const CheckedScript& script) const {
    std::vector<const CheckedScript*> found = {&script};
    std::unordered_set<const CheckedScript*> seen;
    AddAll(found, seen);
    return found;
}

bool ScriptFlow::MayMean(NameKind kind, std::string_view name) const {
    return std::any_of(made_.begin(), made_.end(), [&](const auto& made) {
        return MeansKind(made.first, kind) && CanBecome(made.second, name);
    });
}

bool IsUnconditional(const CheckedCall& call) {
    return !call.isCondition && !call.line->parsed.actions.front().IsIf();
}

bool Is(const CheckedCall& call, std::string_view keyword) {
    return call.call->entry != nullptr && call.call->entry->keyword == keyword;
}

bool EndsGame(const CheckedCall& call) {
    return Is(call, "win") || Is(call, "die") || Is(call, "restart");
}

std::set<std::string_view> ItemsToBeHad(const CheckedGame& game, const ScriptFlow& flow) {
    std::set<std::string_view> had;
    for (const CheckedScript& script : game.Scripts()) {
        if (!flow.CanRun(script))
            continue;
        for (const CheckedCall& call : script.calls)
            if (Is(call, "give"))
                had.insert(call.Part(0));
    }
    for (const ItemEntry& item : game.Game().Items)
        if (item.IsStartItem || game.IsMentionedElsewhere(item.Name) ||
            flow.MayMean(NameKind::Item, item.Name))
            had.insert(item.Name);
    return had;
}

} // namespace zem::problems
