#pragma once

#include "problems/CheckedGame.h"
#include "problems/Problem.h"

#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The checks, a row each. To add one:
///
/// 1. A row in the table of its family, at the end of the file that has the family's functions (LostNames.cpp
///    for A). Identifiers are for good: authors and their build scripts name them. One that comes out of
///    two walks has a row for each.
/// 2. Its function, which asks the CheckedGame and calls `findings.Add(ID, place, text)`. Rows that come out
///    of the same walk share a function; it runs once for all of them. Walk `CallsOf`, `Lines` or `Names`,
///    not the whole game, where you can: all checks together have 300 ms for a game of three million words.
/// 3. The text says what a player would meet, without naming the place, which is told beside it. What stands
///    in quotes is the author's own word.
/// 4. Fixes, if there are safe ones: functions of Fixes.h, or one of your own. Whoever shows a problem offers
///    only those that make no new error (`OffersOf`), so that a fix need not check this itself.
/// 5. Cases in tests/data/problems/FAMILY.cases: one that has the problem, and its nearest neighbour that has
///    not. The test tries every fix of every case.
namespace zem::problems {

class Findings;

struct Check {
    const char* id;
    Level level;
    const char* title; // of the group of all problems of this kind: "Exits to rooms that are not there"
    void (*find)(const CheckedGame& game, Findings& findings);
    bool isAskedFor = false; // found only when it is asked for by its id: more often wrong than right
};

/// Collects what the checks find.
class Findings {
public:
    /// @param wanted  the ids of the checks that count
    explicit Findings(const std::set<std::string_view>& wanted) : wanted_(wanted) {}

    /// Adds a problem with the level of its check. Level and fixes may be set in what is given back.
    Problem& Add(const char* id, const Place& place, std::string text);

    /// Adds a problem about a line of the source file.
    Problem& AddAtLine(const char* id, std::size_t line, std::string text);

    std::vector<Problem> Take() { return std::move(problems_); }

private:
    const std::set<std::string_view>& wanted_;
    std::vector<Problem> problems_;
    Problem ignored_;
};

/// The rows of each family.
std::span<const Check> NameChecks();
std::span<const Check> TimerChecks();
std::span<const Check> ScriptChecks();
std::span<const Check> NumberChecks();
std::span<const Check> ColourChecks();
std::span<const Check> CollectableChecks();
std::span<const Check> TwiceChecks();
std::span<const Check> UnusedChecks();
std::span<const Check> ReachChecks();
std::span<const Check> LockedAwayChecks();
std::span<const Check> EmptyChecks();
std::span<const Check> LogicChecks();
std::span<const Check> GameChecks();

std::span<const Check> MapChecks();
std::span<const Check> PatternChecks();
std::span<const Check> SynonymChecks();
std::span<const Check> FlagChecks();
std::span<const Check> VariableChecks();
std::span<const Check> CodeChecks();
std::span<const Check> TextChecks();
std::span<const Check> MisspeltNameChecks();
std::span<const Check> FileChecks();
std::span<const Check> RawLineChecks();
std::span<const Check> SourceChecks();

/// All checks, in the order of their ids.
const std::vector<Check>& AllChecks();

/// The check of an id; null when there is none.
const Check* FindCheck(std::string_view id);

} // namespace zem::problems
