#include "game/ScriptOwners.h"

#include "kel/ScriptLine.h"
#include "model/Texts.h"

#include <algorithm>
#include <string_view>

namespace zem {

namespace {

/// Calls visit(name, line) for each call of an internal procedure, with the line of the script that holds it.
/// Such calls look alike everywhere, because only the editor writes them.
template <class Visit>
void ForEachInternalCall(std::string_view script, Visit visit) {
    static constexpr std::string_view Call = "do <~";
    for (std::size_t at = script.find(Call); at != std::string_view::npos; at = script.find(Call, at + 1)) {
        const std::size_t begin = at + Call.size() - 1;
        const std::size_t end = script.find('>', begin);
        const std::size_t before = script.rfind('\n', at);
        const std::size_t lineEnd = std::min(script.find("\r\n", at), script.size());
        if (end < lineEnd)
            visit(script.substr(begin, end - begin),
                  TextRange{before == std::string_view::npos ? 0 : before + 1, lineEnd});
    }
}

} // namespace

ScriptOwners::ScriptOwners(const GameModel& game) : game_(game) {
    ForEachText(game_, [&](const Place& place, FieldUse use, const std::string& text) {
        if (use.kind == FieldKind::Script)
            ForEachInternalCall(text, [&](std::string_view name, TextRange line) {
                Place call = place;
                call.bytes = line;
                callers_.emplace(name, call);
            });
    });
}

const std::string* ScriptOwners::InternalProcedureOf(const Place& place) const {
    const PlaceStep step = place.steps.front();
    if (step.list != FieldId::GameProcedures || step.entry < 1 || step.entry > game_.Procedures.Count())
        return nullptr;
    const std::string& name = game_.Procedures[step.entry].Name;
    return name.starts_with(InternalProcedure) ? &name : nullptr;
}

std::vector<Place> ScriptOwners::Path(const Place& place) const {
    std::vector<Place> path = {place};
    while (const std::string* name = InternalProcedureOf(path.back())) {
        const auto caller = callers_.find(*name);
        if (caller == callers_.end() || std::find(path.begin(), path.end(), caller->second) != path.end())
            break; // nothing calls it, or it calls itself
        path.push_back(caller->second);
    }
    std::reverse(path.begin(), path.end());
    return path;
}

std::string ScriptOwners::Describe(const Place& place) const {
    const std::vector<Place> path = Path(place);
    std::string words = DescribePlace(game_, path.front());
    for (std::size_t k = 1; k < path.size(); ++k) {
        const auto resolved = Resolve(game_, path[k]);
        if (resolved && resolved->text != nullptr && !path[k].bytes.IsEmpty())
            words += ", line " + std::to_string(LineOfByte(*resolved->text, path[k].bytes.begin));
    }
    return words;
}

} // namespace zem
