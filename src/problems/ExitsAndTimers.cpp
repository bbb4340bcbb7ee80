// Exits that a room lacks, and timers that nothing defines or starts.
#include "base/LineText.h"
#include "problems/Checks.h"
#include "problems/Directions.h"
#include "problems/Fixes.h"
#include "problems/TextNumbers.h"
#include "problems/TimerBlocks.h"

#include <optional>
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

bool HasSigns(std::string_view name) {
    return name.find_first_of("#%") != std::string_view::npos;
}

/// What the number of an interval is; nothing where it is none.
std::optional<double> SecondsOf(std::string_view interval) {
    return interval.empty() ? std::nullopt : NumberIn(interval);
}

/// What stands in the blocks of timers. Lines that no player reads may still be the work of a library.
void FindOddTimers(const CheckedGame& game, Findings& findings) {
    const std::string& blocks = *game.Game().UnknownBlocks;
    const auto at = [](TextRange range) { return Place::Of({}, FieldId::GameUnknownBlocks, range); };
    for (const TimerBlock& timer : TimerBlocksIn(blocks)) {
        for (const TextRange range : timer.others) {
            const std::string_view line = range.Of(blocks);
            const std::string_view word = line.substr(0, line.find_first_of(" <"));
            const std::string_view nearest = NearestOf({"interval", "action"}, word);
            if (!nearest.empty())
                findings
                    .Add("S02", at(range),
                         "This line does nothing: " + QuoteShortly(word) + " is not known in a timer, and " +
                             QuoteShortly(nearest) + " is.")
                    .fixes = {ReplaceBytes(ChangeTo(nearest), at({range.begin, range.begin + word.size()}),
                                           word, std::string(nearest))};
        }
        if (timer.others.empty() && (timer.intervals.empty() || timer.scripts.empty()))
            findings.Add("E12", at(timer.name),
                         timer.scripts.empty()
                             ? "This timer has no line \"action\", so it does nothing."
                             : "This timer has no line \"interval\", so nobody can tell how "
                               "often its script runs.");
        for (const TextRange range : timer.intervals) {
            const std::string_view text = range.Of(blocks);
            const auto seconds = SecondsOf(text);
            if (!seconds)
                findings.Add("C01", at(range), QuoteShortly(text) + " is no number of seconds.");
            else if (*seconds < 1)
                findings
                    .Add("C02", at(range),
                         "An interval has at least 1 second, and this is " + std::string(text) + '.')
                    .fixes = {ReplaceBytes(ChangeTo("1"), at(range), text, "1")};
        }
    }
}

/// Timers of the game that nothing starts, as far as that can be told: one with lines of a library may start
/// by itself.
void FindIdleTimers(const CheckedGame& game, const std::set<std::string_view>& started, Findings& findings) {
    const std::string& blocks = *game.Game().UnknownBlocks;
    for (const TimerBlock& timer : TimerBlocksIn(blocks)) {
        const std::string_view name = timer.name.Of(blocks);
        if (timer.others.empty() && !started.contains(name) && !game.IsMentionedElsewhere(name) &&
            std::none_of(started.begin(), started.end(), HasSigns))
            findings.Add("A14", Place::Of({}, FieldId::GameUnknownBlocks, timer.name),
                         "Nothing starts this timer, so its script never runs.");
    }
}

struct TimerNames {
    std::set<std::string_view> defined;
    std::set<std::string_view> mayStart; // by themselves, with lines of a library

    void Add(std::string_view blocks) {
        for (const TimerBlock& timer : TimerBlocksIn(blocks)) {
            defined.insert(timer.name.Of(blocks));
            if (!timer.others.empty())
                mayStart.insert(timer.name.Of(blocks));
        }
    }
};

void FindLostTimers(const CheckedGame& game, Findings& findings) {
    TimerNames timers;
    timers.Add(*game.Game().UnknownBlocks);
    for (const GameModel& library : game.LibraryGames())
        timers.Add(*library.UnknownBlocks);
    std::set<std::string_view> started;
    std::set<std::string_view> asked;
    for (const CheckedCall* call : game.CallsOf("timer on"))
        started.insert(call->Part(0));
    for (const CheckedCall* call : game.CallsOf("if timer"))
        asked.insert(call->Part(0));
    FindIdleTimers(game, started, findings);
    const std::vector<std::string_view> names(timers.defined.begin(), timers.defined.end());

    for (const CheckedCall* call : game.CallsOf("timer on")) {
        const std::string_view name = call->Part(0);
        if (name.empty() || timers.defined.contains(name) || asked.contains(name) || HasSigns(name))
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
            if (!name.empty() && !started.contains(name) && !timers.mayStart.contains(name) &&
                !game.IsMentionedElsewhere(name))
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
        {"C01", Level::Error, "Words where a number belongs", FindOddTimers},
        {"C02", Level::Warning, "Numbers that make no sense", FindOddTimers},
        {"E12", Level::Warning, "Timers that lack a line", FindOddTimers},
        {"S02", Level::Warning, "Misspelt keywords", FindOddTimers},
    };
    return Rows;
}

} // namespace zem::problems
