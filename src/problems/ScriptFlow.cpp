#include "problems/ScriptFlow.h"

#include "game/References.h"
#include "problems/NameUses.h"

#include <algorithm>

namespace zem::problems {

namespace {

/// The thing whose script stands there, if it is hidden at the beginning; null for other scripts.
const Thing* HiddenThingOf(const GameModel& game, const Place& place) {
    const PlaceStep room = place.steps[0];
    const PlaceStep step = place.steps[1];
    if (room.list != FieldId::GameRooms ||
        (step.list != FieldId::RoomObjects && step.list != FieldId::RoomCharacters))
        return nullptr;
    const Room& in = game.Rooms[room.entry];
    const Thing& thing =
        step.list == FieldId::RoomObjects ? in.Objects[step.entry] : in.Characters[step.entry];
    return thing.Hidden ? &thing : nullptr;
}

} // namespace

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
    for (const CheckedScript& script : game.Scripts()) {
        const Thing* thing = HiddenThingOf(game.Game(), script.place);
        if (thing != nullptr)
            hidden_[thing->Name].push_back(&script);
        else if (script.place.steps[0].list != FieldId::GameProcedures)
            roots.push_back(&script);
    }
    for (const auto& [name, script] : procedures_)
        if (game.IsMentionedElsewhere(name) || MayMean(NameKind::Procedure, name))
            roots.push_back(script);
    for (const ItemEntry& item : game.Game().Items)
        if (item.IsStartItem || game.IsMentionedElsewhere(item.Name) || MayMean(NameKind::Item, item.Name))
            had_.insert(item.Name);
    for (const auto& [name, scripts] : hidden_)
        if (MayShow(name))
            roots.insert(roots.end(), scripts.begin(), scripts.end());
    while (!roots.empty()) {
        AddAll(roots, live_); // leaves those that are new
        std::vector<const CheckedScript*> shown;
        for (const CheckedScript* script : roots)
            AddShownBy(*script, shown);
        roots = std::move(shown);
    }
}

bool ScriptFlow::MayShow(std::string_view name) const {
    return had_.contains(name) || game_.IsMentionedElsewhere(name) || game_.MayBeUnknown(name) ||
           MayMean(NameKind::Object, name) || MayMean(NameKind::Character, name);
}

void ScriptFlow::AddShownBy(const CheckedScript& script, std::vector<const CheckedScript*>& found) {
    for (const CheckedCall& call : script.calls) {
        const bool isGiven = Is(call, "give");
        if (isGiven)
            had_.insert(call.Part(0)); // dropping an item shows its object
        if (!isGiven && !Is(call, "show") && !Is(call, "reveal"))
            continue;
        if (const auto shown = hidden_.find(call.Part(0)); shown != hidden_.end())
            found.insert(found.end(), shown->second.begin(), shown->second.end());
    }
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

} // namespace zem::problems
