#include "kel/ScriptTree.h"

#include "base/LineText.h"
#include "kel/InternalCall.h"
#include "model/InternalScripts.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string_view>
#include <utility>

namespace zem {

namespace {

/// The lines of a text, without the empty ones at its end.
std::vector<std::string> LinesOfText(std::string_view text) {
    const std::size_t last = text.find_last_not_of(" \r\n");
    if (last == std::string_view::npos)
        return {};
    std::vector<std::string> lines;
    for (const std::string_view line : SplitAt(text.substr(0, text.find("\r\n", last)), "\r\n"))
        lines.emplace_back(line);
    return lines;
}

std::string JoinLines(const std::vector<std::string>& lines) {
    std::string joined;
    for (std::size_t k = 0; k < lines.size(); ++k)
        joined.append(k == 0 ? "" : "\r\n").append(lines[k]);
    return joined;
}

int FindProcedure(const GameModel& game, const std::string& name) {
    for (int k = 1; k <= game.Procedures.Count(); ++k)
        if (EqualIgnoringCase(game.Procedures[k].Name, name))
            return k;
    return 0;
}

[[noreturn]] void FailGone() {
    throw KelError("that line is not there any more");
}

} // namespace

std::vector<std::string> UnfoldScript(const GameModel& game, const std::string& script) {
    const int procedure = CalledInternalProcedure(game, script);
    return LinesOfText(procedure == 0 ? script : game.Procedures[procedure].Script);
}

std::string FoldScript(GameModel& game, const std::string& before, const std::vector<std::string>& lines) {
    const std::string joined = JoinLines(lines);
    if (const int procedure = CalledInternalProcedure(game, before); procedure != 0) {
        if (game.Procedures[procedure].Script != joined)
            game.Procedures.Edit(procedure).Script = joined;
        return "do <" + game.Procedures[procedure].Name + ">";
    }
    return lines.size() < 2 ? joined : "do <" + AddInternalProcedure(game, joined) + ">";
}

std::string WriteWholeIfLine(GameModel& game, IfLine line) {
    try {
        return WriteIfLine(line);
    } catch (const KelError&) {
        GameModel changed = game;
        IfLine folded = line;
        for (std::string* action : {&folded.Then, &folded.Else}) {
            if (Trim(*action).empty())
                continue;
            *action = "do <" + AddInternalProcedure(changed, *action) + ">";
            std::string written;
            try {
                written = WriteIfLine(folded);
            } catch (const KelError&) {
                continue; // the other action may be why
            }
            game = changed;
            return written;
        }
        throw; // as the author wrote it, it says best what is missing
    }
}

std::string LineAt(const GameModel& game, const std::string& script, const ScriptPath& path) {
    std::string value = script;
    for (std::size_t depth = 0; depth < path.size(); ++depth) {
        const ScriptStep& step = path[depth];
        const std::vector<std::string> lines = UnfoldScript(game, value);
        if (step.line < 0 || step.line >= static_cast<int>(lines.size()))
            return {};
        const std::string& line = lines[static_cast<std::size_t>(step.line)];
        if (step.branch == Branch::None)
            return depth + 1 == path.size() ? line : std::string();
        if (step.branch == Branch::Called) {
            const int procedure = FindProcedure(game, step.procedure);
            value = procedure == 0 ? std::string() : game.Procedures[procedure].Script;
            continue;
        }
        try {
            const IfLine parts = ParseIfLine(line);
            value = step.branch == Branch::Then ? parts.Then : parts.Else;
        } catch (const KelError&) {
            return {};
        }
    }
    return {};
}

namespace {

using ChangeLines = std::function<void(std::vector<std::string>& lines, int line)>;

/// Changes the lines around the one at the end of the way.
void ChangeIn(GameModel& game, std::vector<std::string>& all, const ScriptPath& path, std::size_t depth,
              const ChangeLines& change) {
    if (depth >= path.size() || path[depth].line < 0 || path[depth].line >= static_cast<int>(all.size()))
        FailGone();
    const ScriptStep& step = path[depth];
    if (step.branch == Branch::None) {
        change(all, step.line);
        return;
    }
    if (step.branch == Branch::Called) {
        const int procedure = FindProcedure(game, step.procedure);
        if (procedure == 0)
            FailGone();
        const std::string before = game.Procedures[procedure].Script;
        std::vector<std::string> body = UnfoldScript(game, before);
        ChangeIn(game, body, path, depth + 1, change);
        game.Procedures.Edit(procedure).Script =
            CalledInternalProcedure(game, before) != 0 ? FoldScript(game, before, body) : JoinLines(body);
        return;
    }
    std::string& line = all[static_cast<std::size_t>(step.line)];
    IfLine parts = ParseIfLine(line);
    std::string& action = step.branch == Branch::Then ? parts.Then : parts.Else;
    std::vector<std::string> inner = UnfoldScript(game, action);
    ChangeIn(game, inner, path, depth + 1, change);
    action = FoldScript(game, action, inner);
    line = WriteWholeIfLine(game, parts);
}

std::string Change(GameModel& game, const std::string& script, const ScriptPath& path,
                   const ChangeLines& change) {
    GameModel changed = game;
    std::vector<std::string> all = UnfoldScript(changed, script);
    ChangeIn(changed, all, path, 0, change);
    std::string value = FoldScript(changed, script, all);
    game = std::move(changed);
    return value;
}

} // namespace

std::string ReplaceLine(GameModel& game, const std::string& script, const ScriptPath& path,
                        const std::vector<std::string>& lines) {
    return Change(game, script, path, [&](std::vector<std::string>& all, int line) {
        all.insert(all.erase(all.begin() + line), lines.begin(), lines.end());
    });
}

std::string MoveLineAt(GameModel& game, const std::string& script, ScriptPath& path, int by) {
    return Change(game, script, path, [&](std::vector<std::string>& all, int line) {
        const int target = line + by;
        if (target < 0 || target >= static_cast<int>(all.size()))
            return;
        std::swap(all[static_cast<std::size_t>(line)], all[static_cast<std::size_t>(target)]);
        path.back().line = target;
    });
}

std::vector<std::string> InternalProceduresOf(const GameModel& game, const std::string& script) {
    std::vector<std::string> names;
    std::vector<std::string> texts = {script};
    while (!texts.empty()) {
        const std::string text = std::move(texts.back());
        texts.pop_back();
        for (std::size_t at = text.find('~'); at != std::string::npos; at = text.find('~', at + 1)) {
            const std::string_view rest = std::string_view(text).substr(at);
            const std::string name(Trim(rest.substr(0, rest.find_first_of(";>"))));
            const int procedure = FindProcedure(game, name);
            if (procedure == 0 || std::find(names.begin(), names.end(), Lower(name)) != names.end())
                continue;
            names.push_back(Lower(name));
            texts.push_back(game.Procedures[procedure].Script);
        }
    }
    return names;
}

} // namespace zem
