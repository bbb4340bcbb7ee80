#include "script/MissingNames.h"

#include "base/LineText.h"
#include "kel/InternalCall.h"
#include "kel/ScriptLine.h"
#include "script/ScriptEditing.h"

#include <algorithm>

namespace zem {

namespace {

bool CanBeMade(NameKind kind, std::string_view name) {
    const bool isOfKind = kind == NameKind::Procedure || kind == NameKind::Item ||
                          kind == NameKind::TextSection || kind == NameKind::Menu || kind == NameKind::Room;
    return isOfKind && !name.empty() && name.front() != '~' &&
           name.find_first_of("#%|") == std::string_view::npos;
}

bool IsThere(const ScriptEditing& scripts, NameKind kind, std::string_view name) {
    const auto names = scripts.Names(kind);
    return std::any_of(names->begin(), names->end(),
                       [&](const std::string& known) { return EqualIgnoringCase(known, name); });
}

std::optional<NamedThing> MissingInText(const ScriptEditing& scripts, std::string_view text) {
    std::optional<NamedThing> missing;
    ForEachLine(text, [&](TextRange range, int) {
        const std::string_view line = range.Of(text);
        if (missing)
            return;
        ForEachCommandName(line, TakeApart(line, scripts.Commands()), [&](TextRange part, NameKind kind) {
            const std::string_view name = part.Of(line);
            if (!missing && CanBeMade(kind, name) && !IsThere(scripts, kind, name))
                missing = NamedThing{kind, std::string(name)};
        });
    });
    return missing;
}

} // namespace

std::optional<NamedThing> FirstMissingName(const ScriptEditing& scripts, const std::string& script) {
    std::optional<NamedThing> missing = MissingInText(scripts, script);
    const GameModel game = scripts.Game();
    for (const std::string& name : InternalProceduresOf(game, script)) {
        if (missing)
            break;
        const int procedure = CalledInternalProcedure(game, "do <" + name + ">");
        if (procedure != 0)
            missing = MissingInText(scripts, game.Procedures[procedure].Script);
    }
    return missing;
}

} // namespace zem
