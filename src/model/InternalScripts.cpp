#include "model/InternalScripts.h"

#include "base/LineText.h"

#include <charconv>
#include <limits>
#include <set>
#include <string_view>
#include <utility>

namespace zem {

namespace {

// The counter stands behind the last number that was given, so the largest number is never given.
constexpr int LastNumber = std::numeric_limits<std::int16_t>::max() - 1;

/// The numbers that internal procedures have, whatever the capitals of their names: a call finds them so.
std::set<int> NumbersInUse(const GameModel& game) {
    std::set<int> numbers;
    const std::string start = std::string(InternalProcedure) + ' ';
    for (const Procedure& procedure : game.Procedures) {
        const std::string_view name = procedure.Name;
        if (!EqualIgnoringCase(name.substr(0, start.size()), start))
            continue;
        int number = 0;
        const char* end = name.data() + name.size();
        const auto [stop, error] = std::from_chars(name.data() + start.size(), end, number);
        if (error == std::errc() && stop == end)
            numbers.insert(number);
    }
    return numbers;
}

int NextNumber(const GameModel& game) {
    const std::set<int> used = NumbersInUse(game);
    int number = game.NextInternalProcedure;
    if (!used.empty() && *used.rbegin() >= number && *used.rbegin() < LastNumber)
        number = *used.rbegin() + 1;
    while (used.contains(number))
        ++number;
    if (number > LastNumber)
        throw KelError("the numbers of internal procedures end at 32,767");
    return number;
}

} // namespace

std::string AddInternalProcedure(GameModel& game, std::string script) {
    const int number = NextNumber(game);
    std::string name = std::string(InternalProcedure) + ' ' + std::to_string(number);
    game.Procedures.Append({name, std::move(script)});
    game.NextInternalProcedure = static_cast<std::int16_t>(number + 1);
    return name;
}

} // namespace zem
