#include "kel/InternalCall.h"

#include "base/KelError.h"
#include "base/LineText.h"

namespace zem {

int CalledInternalProcedure(const GameModel& game, const std::string& script) {
    if (!BeginsWith(script, "do "))
        return 0;
    std::string_view name;
    try {
        name = GetParameter(script);
    } catch (const KelError&) {
        return 0; // The line lacks a bracket, which its author may still add.
    }
    if (!name.starts_with('~'))
        return 0;
    for (int k = 1; k <= game.Procedures.Count(); ++k)
        if (EqualIgnoringCase(game.Procedures[k].Name, name))
            return k;
    return 0;
}

} // namespace zem
