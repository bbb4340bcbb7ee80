#include "problems/FindProblems.h"

#include "problems/Checks.h"

#include <algorithm>
#include <set>
#include <tuple>
#include <utility>

namespace zem::problems {

namespace {

std::set<std::string_view> Wanted(const CheckChoice& choice) {
    std::set<std::string_view> wanted;
    for (const Check& check : AllChecks())
        if (choice.only.empty() && !check.isAskedFor)
            wanted.insert(check.id);
    for (const std::string& id : choice.only)
        wanted.insert(id);
    for (const std::string& id : choice.skip)
        wanted.erase(id);
    return wanted;
}

/// What problems are sorted by.
auto OrderOf(const Problem& problem) {
    const auto step = [&](std::size_t k) {
        return std::pair(problem.place.steps[k].list, problem.place.steps[k].entry);
    };
    return std::tuple(step(0), step(1), step(2), problem.place.field, problem.place.bytes.begin,
                      problem.fileLine, problem.level, std::string_view(problem.id));
}

using Errors = std::multiset<std::pair<std::string, std::string>>;

Errors ErrorsOf(const CheckedGame& game) {
    Errors errors;
    for (const Problem& problem : FindProblems(game))
        if (problem.level == Level::Error)
            errors.emplace(problem.id, problem.text);
    return errors;
}

bool IsNoWorse(const Errors& before, const CheckInput& input, const GameModel& after) {
    CheckInput changed = input;
    changed.game = after;
    const Errors now = ErrorsOf(CheckedGame(std::move(changed)));
    return std::includes(before.begin(), before.end(), now.begin(), now.end());
}

} // namespace

std::vector<Problem> FindProblems(const CheckedGame& game, const CheckChoice& choice) {
    const std::set<std::string_view> wanted = Wanted(choice);
    Findings findings(wanted);
    std::set<void (*)(const CheckedGame&, Findings&)> done;
    for (const Check& check : AllChecks())
        if (wanted.contains(check.id) && done.insert(check.find).second)
            check.find(game, findings);
    std::vector<Problem> problems = findings.Take();
    std::stable_sort(problems.begin(), problems.end(),
                     [](const Problem& a, const Problem& b) { return OrderOf(a) < OrderOf(b); });
    return problems;
}

bool HasNoNewError(const CheckedGame& before, const GameModel& after) {
    return IsNoWorse(ErrorsOf(before), before.Input(), after);
}

std::vector<Fix> OffersOf(const CheckedGame& game, const Problem& problem) {
    std::vector<Fix> offers;
    if (problem.fixes.empty())
        return offers;
    const Errors before = ErrorsOf(game);
    for (const Fix& fix : problem.fixes) {
        const GameModel after = fix.apply(game.Game());
        if (!SameGame(after, game.Game()) && IsNoWorse(before, game.Input(), after))
            offers.push_back(fix);
    }
    return offers;
}

GameModel FixAll(const CheckedGame& game, const std::vector<Problem>& problems) {
    // From the last to the first, so that no fix moves the place of the next.
    GameModel fixed = game.Game();
    for (auto problem = problems.rbegin(); problem != problems.rend(); ++problem)
        if (!problem->fixes.empty())
            fixed = problem->fixes.front().apply(fixed);
    if (HasNoNewError(game, fixed))
        return fixed;
    const Errors before = ErrorsOf(game);
    fixed = game.Game();
    for (auto problem = problems.rbegin(); problem != problems.rend(); ++problem) {
        if (problem->fixes.empty())
            continue;
        GameModel next = problem->fixes.front().apply(fixed);
        if (IsNoWorse(before, game.Input(), next))
            fixed = std::move(next);
    }
    return fixed;
}

} // namespace zem::problems
