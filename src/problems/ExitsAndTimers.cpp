// Exits that a room lacks, and timers that nothing defines or starts.
#include "base/LineText.h"
#include "problems/Checks.h"
#include "problems/Directions.h"
#include "problems/Fixes.h"

#include <set>
#include <string>
#include <unordered_map>

namespace zem::problems {

namespace {

std::unordered_map<std::string_view, const Room*> RoomsByName(const CheckedGame& game) {
    std::unordered_map<std::string_view, const Room*> rooms;
    for (const GameModel& library : game.LibraryGames())
        for (const Room& room : library.Rooms)
            rooms.try_emplace(room.Name, &room);
    for (const Room& room : game.Game().Rooms)
        rooms[room.Name] = &room; // the last of several is the one that counts
    return rooms;
}

std::vector<std::string_view> DirectionsOf(const Room& room) {
    std::vector<std::string_view> directions;
    for (const CompassExit& exit : CompassExits)
        if (!(room.*exit.exit)->Key.empty())
            directions.push_back(exit.direction);
    if (!room.Out->Key.empty())
        directions.push_back("out");
    return directions;
}

bool Has(const std::vector<std::string_view>& directions, std::string_view direction) {
    return std::any_of(directions.begin(), directions.end(),
                       [&](std::string_view other) { return EqualIgnoringCase(other, direction); });
}

void FindMissingExits(const CheckedGame& game, Findings& findings) {
    const auto rooms = RoomsByName(game);
    std::set<std::pair<std::string_view, std::string>> made; // by "exit to"
    for (const CheckedCall* call : game.CallsOf("exit to"))
        made.emplace(call->Part(0), Lower(call->Part(1)));
    for (const char* keyword : {"exit on", "exit off", "if exit"})
        for (const CheckedCall* call : game.CallsOf(keyword)) {
            const auto room = rooms.find(call->Part(0));
            const std::string_view direction = call->Part(1);
            if (room == rooms.end() || !IsDirection(direction) ||
                made.contains({call->Part(0), Lower(direction)}))
                continue;
            const std::vector<std::string_view> present = DirectionsOf(*room->second);
            if (Has(present, direction))
                continue;
            Problem& problem =
                findings.Add("A13", call->At(1),
                             QuoteShortly(call->Part(0)) + " has no exit " + std::string(direction) +
                                 (call->isCondition ? ", so this condition is never true."
                                                    : ", so this opens and closes nothing."));
            for (const std::string_view other : present)
                if (present.size() == 1 || other == NearestOf(present, direction))
                    problem.fixes.push_back(
                        ReplaceBytes(ChangeTo(other), call->At(1), direction, std::string(other)));
        }
}

/// The names in the lines "define timer <...>" of the blocks that Zem does not know.
void AddDefinedTimers(const std::string& blocks, std::set<std::string, std::less<>>& timers) {
    for (const std::string_view line : SplitAt(blocks, "\r\n")) {
        const std::string_view trimmed = TrimLeft(line);
        if (BeginsWith(trimmed, "define timer"))
            if (const std::size_t open = trimmed.find('<'); open != std::string_view::npos)
                timers.emplace(trimmed.substr(open + 1, trimmed.find('>') - open - 1));
    }
}

void FindLostTimers(const CheckedGame& game, Findings& findings) {
    std::set<std::string, std::less<>> defined;
    AddDefinedTimers(*game.Game().UnknownBlocks, defined);
    for (const GameModel& library : game.LibraryGames())
        AddDefinedTimers(*library.UnknownBlocks, defined);
    std::set<std::string_view> started;
    std::set<std::string_view> asked;
    for (const CheckedCall* call : game.CallsOf("timer on"))
        started.insert(call->Part(0));
    for (const CheckedCall* call : game.CallsOf("if timer"))
        asked.insert(call->Part(0));
    const std::vector<std::string_view> names(defined.begin(), defined.end());

    for (const CheckedCall* call : game.CallsOf("timer on")) {
        const std::string_view name = call->Part(0);
        if (name.empty() || defined.contains(name) || asked.contains(name) ||
            name.find_first_of("#%") != std::string_view::npos)
            continue;
        Problem& problem = findings.Add("A12", call->At(0),
                                        "Nothing defines a timer " + QuoteShortly(name) +
                                            " and nothing asks for it, so starting it does nothing.");
        problem.level = game.Softened(problem.level, name);
        if (const std::string_view nearest = NearestOf(names, name); !nearest.empty())
            problem.fixes = {ReplaceBytes(ChangeTo(nearest), call->At(0), name, std::string(nearest))};
    }
    for (const char* keyword : {"if timer", "timer off"})
        for (const CheckedCall* call : game.CallsOf(keyword)) {
            const std::string_view name = call->Part(0);
            if (!name.empty() && !started.contains(name) && !game.IsMentionedElsewhere(name))
                findings.Add("A14", call->At(0), "Nothing starts a timer " + QuoteShortly(name) + '.');
        }
}

} // namespace

bool IsDirection(std::string_view text) {
    return std::any_of(std::begin(Directions), std::end(Directions),
                       [&](std::string_view direction) { return EqualIgnoringCase(text, direction); });
}

std::span<const Check> TimerChecks() {
    static constexpr Check Rows[] = {
        {"A12", Level::Warning, "Timers that nothing defines", FindLostTimers},
        {"A13", Level::Warning, "Exits that the room lacks", FindMissingExits},
        {"A14", Level::Hint, "Timers that nothing starts", FindLostTimers},
    };
    return Rows;
}

} // namespace zem::problems
