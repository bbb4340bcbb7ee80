#include "kel/InternalCall.h"

#include "base/KelError.h"
#include "base/LineText.h"

namespace zem {

namespace {

/// Lines behind the call would be lost if the script were shown as the procedure alone.
bool IsOneLine(std::string_view script) {
    const std::size_t end = script.find("\r\n");
    return end == std::string_view::npos || script.find_first_not_of(" \r\n", end) == std::string_view::npos;
}

} // namespace

std::string_view CalledInternalName(std::string_view script) {
    if (!BeginsWith(script, "do ") || !IsOneLine(script))
        return {};
    try {
        const std::string_view name = GetParameter(script);
        return name.starts_with('~') ? name : std::string_view();
    } catch (const KelError&) {
        return {}; // The line lacks a bracket, which its author may still add.
    }
}

int CalledInternalProcedure(const GameModel& game, const std::string& script) {
    const std::string_view name = CalledInternalName(script);
    if (name.empty())
        return 0;
    for (int k = 1; k <= game.Procedures.Count(); ++k)
        if (EqualIgnoringCase(game.Procedures[k].Name, name))
            return k;
    return 0;
}

} // namespace zem
