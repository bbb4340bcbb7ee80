#include "problems/Checks.h"

#include <algorithm>
#include <utility>

namespace zem::problems {

namespace {

constexpr auto Families = {
    NameChecks,         TimerChecks,   ScriptChecks,  NumberChecks,   CollectableChecks, TwiceChecks,
    UnusedChecks,       ReachChecks,   EmptyChecks,   LogicChecks,    GameChecks,        MapChecks,
    PatternChecks,      SynonymChecks, FlagChecks,    VariableChecks, CodeChecks,        TextChecks,
    MisspeltNameChecks, FileChecks,    RawLineChecks, SourceChecks,   ColourChecks,      LockedAwayChecks,
};

std::vector<Check> Collect() {
    std::vector<Check> checks;
    for (const auto& family : Families)
        for (const Check& check : family())
            checks.push_back(check);
    std::sort(checks.begin(), checks.end(),
              [](const Check& a, const Check& b) { return std::string_view(a.id) < b.id; });
    return checks;
}

} // namespace

const std::vector<Check>& AllChecks() {
    static const std::vector<Check> checks = Collect();
    return checks;
}

const Check* FindCheck(std::string_view id) {
    const auto& checks = AllChecks();
    const auto found =
        std::lower_bound(checks.begin(), checks.end(), id,
                         [](const Check& check, std::string_view wanted) { return check.id < wanted; });
    return found == checks.end() || found->id != id ? nullptr : &*found;
}

Problem& Findings::Add(const char* id, const Place& place, std::string text) {
    if (!wanted_.contains(id))
        return ignored_ = {};
    Problem problem;
    problem.id = id;
    problem.level = FindCheck(id)->level;
    problem.place = place;
    problem.text = std::move(text);
    problems_.push_back(std::move(problem));
    return problems_.back();
}

Problem& Findings::AddAtLine(const char* id, std::size_t line, std::string text) {
    Problem& problem = Add(id, {}, std::move(text));
    problem.fileLine = line;
    return problem;
}

} // namespace zem::problems
