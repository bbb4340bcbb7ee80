#include "script/ReachedLines.h"

#include "base/KelError.h"
#include "base/LineText.h"
#include "kel/IfLine.h"
#include "kel/InternalCall.h"

#include <algorithm>

namespace zem {

namespace {

const QString NeverRun = QStringLiteral("never run");

ReachedRow RemarkOn(const play::LineHits& hits, bool isIf, bool isOtherwise) {
    ReachedRow row;
    const std::uint64_t count = isOtherwise ? hits.whenFalse : hits.ran;
    if (count == 0)
        row.remark = NeverRun;
    else if (isIf && !isOtherwise && hits.whenTrue == 0)
        row.remark = QStringLiteral("never true");
    else if (isIf && !isOtherwise && hits.whenFalse == 0)
        row.remark = QStringLiteral("never false");
    if (count > 0)
        row.hit = isOtherwise || hits.whenTrue == 0 ? hits.otherHit : hits.hit;
    return row;
}

/// The script of a procedure that is called by name; empty for one that the game has not.
std::string ScriptOfProcedure(const GameModel& game, const std::string& name) {
    const auto found =
        std::find_if(game.Procedures.begin(), game.Procedures.end(),
                     [&](const Procedure& procedure) { return EqualIgnoringCase(procedure.Name, name); });
    return found == game.Procedures.end() ? std::string() : (*found).Script;
}

/// The procedure in which the lines of a script stand; empty for those that a field holds itself.
std::string ProcedureOf(const GameModel& game, const std::string& home) {
    if (const std::string_view called = CalledInternalName(home); !called.empty())
        return std::string(called);
    const auto found = std::find_if(game.Procedures.begin(), game.Procedures.end(),
                                    [&](const Procedure& procedure) { return procedure.Script == home; });
    return found == game.Procedures.end() ? std::string() : (*found).Name;
}

} // namespace

ReachedRow ReachedRowOf(const play::LineCoverage& lines, const GameModel& game, const std::string& script,
                        const std::string& home, const ScriptPath& path, bool isOtherwise) {
    std::string value = script;
    std::string procedure = ProcedureOf(game, home);
    for (const ScriptStep& step : path) {
        if (const std::string_view called = CalledInternalName(value); !called.empty())
            procedure = called;
        const std::vector<std::string> all = UnfoldScript(game, value);
        if (step.line < 0 || static_cast<std::size_t>(step.line) >= all.size())
            return {};
        const std::string& line = all[static_cast<std::size_t>(step.line)];
        const play::LineHits* hits = lines.Find(procedure, line);
        if (step.branch == Branch::None)
            return hits == nullptr ? ReachedRow() : RemarkOn(*hits, BeginsWith(line, "if "), isOtherwise);
        if (step.branch == Branch::Called) {
            procedure = step.procedure;
            value = ScriptOfProcedure(game, step.procedure);
            continue;
        }
        const bool isThen = step.branch == Branch::Then;
        if (hits != nullptr && (isThen ? hits->whenTrue : hits->whenFalse) == 0)
            return {NeverRun, std::nullopt};
        try {
            const IfLine parts = ParseIfLine(line);
            value = isThen ? parts.Then : parts.Else;
        } catch (const KelError&) {
            return {};
        }
        // What stands in the line itself has run whenever its answer was given.
        if (hits != nullptr && CalledInternalName(value).empty())
            return {QString(), isThen ? hits->hit : hits->otherHit};
    }
    return {};
}

} // namespace zem
