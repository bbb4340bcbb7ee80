#pragma once

#include "base/LineText.h"
#include "kel/ScriptLine.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace zem {

/// More words than this before or between the commands of a raw line are no keyword of an add-on; looking on
/// would take too long in a hostile file.
inline constexpr int MostWordsBeforeScripts = 64;

/// Calls visit(begin, parsed) for each script in a line that the format does not know: from the byte `begin`
/// on it reads as a command or as an "if". So "action do <the tide comes in>" has one behind its first word.
template <class Visit>
void ForEachScriptInRawLine(std::string_view line, const CommandLookup& commands, Visit visit) {
    std::size_t at = std::min(line.find_first_not_of(" \t"), line.size());
    if (at == line.size() || line[at] == '\'')
        return;
    for (int words = 0; at < line.size() && words < MostWordsBeforeScripts; ++words) {
        const std::string_view rest = line.substr(at);
        std::size_t next = 0; // where to look on, a byte of the rest
        if (rest.front() == '<') {
            next = rest.find('>');
            next = next == std::string_view::npos ? rest.size() : next + 1;
        } else if (const ScriptLine parsed = TakeApart(rest, commands); !parsed.actions.empty()) {
            const ScriptAction& action = parsed.actions.front();
            const bool isCondition =
                action.call.entry != nullptr && BeginsWith(action.call.entry->keyword, "if ");
            if (action.IsIf() || (action.call.entry != nullptr && !isCondition)) {
                visit(at, parsed);
                if (action.IsIf() || !action.call.hasParameter)
                    return;
                next = action.call.parameter.end + 1;
            }
        }
        if (next == 0)
            next = std::min(rest.find_first_of(" \t<"), rest.size());
        at = std::min(line.find_first_not_of(" \t", at + next), line.size());
    }
}

} // namespace zem
