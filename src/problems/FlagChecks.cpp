// Flags: set and never asked, asked and never set, two that are one.
#include "base/LineText.h"
#include "model/Texts.h"
#include "problems/Checks.h"
#include "problems/Fixes.h"
#include "problems/VariableUses.h"

#include <algorithm>
#include <set>
#include <unordered_map>
#include <utility>

namespace zem::problems {

namespace {

/// The flags that a command sets, the only ones that a misspelt name can have meant.
std::vector<std::string_view> NamesThatAreSet(const AllFlags& flags) {
    std::vector<std::string_view> names;
    for (const auto& [name, uses] : flags.uses)
        if (!uses.set.empty())
            names.push_back(name);
    return names;
}

void FindOneSided(const CheckedGame& game, const AllFlags& flags, Findings& findings) {
    const std::vector<std::string_view> setNames = NamesThatAreSet(flags);
    for (const auto& [name, uses] : flags.uses) {
        if (game.IsMentionedElsewhere(name))
            continue;
        if (!uses.set.empty() && uses.asked.empty()) {
            findings.Add("V01", uses.set.front(),
                         "The flag " + QuoteShortly(name) + " is set, but nothing ever asks for it.");
        } else if (uses.set.empty() && !uses.asked.empty()) {
            for (const Place& place : uses.asked) {
                Problem& problem = findings.Add("V02", place,
                                                "Nothing ever sets the flag " + QuoteShortly(name) +
                                                    ", so this is never true, whatever the player does.");
                problem.level = game.Softened(problem.level, name);
                const std::string_view nearest = NearestOf(setNames, name);
                if (!nearest.empty())
                    problem.fixes = {ReplaceBytes(ChangeTo(nearest), place, name, std::string(nearest))};
            }
        } else if (uses.set.empty()) {
            findings.Add("V03", uses.cleared.front(),
                         "The flag " + QuoteShortly(name) + " is cleared, but nothing ever sets it.");
        }
    }
}

/// Puts a name in the place of another wherever it is the name of a flag.
Fix RenameFlag(const FlagUses& uses, std::string_view from, std::string_view to) {
    std::vector<Place> places = uses.set;
    places.insert(places.end(), uses.cleared.begin(), uses.cleared.end());
    places.insert(places.end(), uses.asked.begin(), uses.asked.end());
    std::sort(places.begin(), places.end(),
              [](const Place& a, const Place& b) { return a.bytes.begin > b.bytes.begin; }); // from the end
    return ChangeGame("Make both " + QuoteShortly(to),
                      [places, from = std::string(from), to = std::string(to)](GameModel& game) {
                          for (const Place& place : places)
                              game = ReplaceBytes({}, place, from, to).apply(game);
                      });
}

std::string WithoutDigits(std::string_view text) {
    std::string rest;
    for (const char c : text)
        if (!IsDigit(c))
            rest += Lower(c);
    return rest;
}

constexpr std::size_t ShortestAlike = 4; // of shorter names any two look alike, unless only capitals differ

/// Whether the names look like one that was spelt in two ways, and not like "lamp 1" and "lamp 2".
bool LookLikeOne(std::string_view a, std::string_view b) {
    if (std::min(a.size(), b.size()) < ShortestAlike)
        return EqualIgnoringCase(a, b);
    const bool isNumbered =
        std::any_of(a.begin(), a.end(), IsDigit) || std::any_of(b.begin(), b.end(), IsDigit);
    if (isNumbered && WithoutDigits(a) == WithoutDigits(b) && !EqualIgnoringCase(a, b))
        return false;
    return LettersApart(a, b, 1) <= 1;
}

void FindNeighbours(const AllFlags& flags, Findings& findings) {
    // Names that are one letter apart give the same text when a letter is left out of one or of both.
    std::unordered_map<std::string, std::vector<std::string_view>> byRest;
    std::set<std::pair<std::string_view, std::string_view>> told;
    for (const auto& [name, uses] : flags.uses) {
        const std::string lower = Lower(name);
        std::set<std::string> rests = {lower};
        for (std::size_t k = 0; k < lower.size() && name.size() >= ShortestAlike; ++k)
            rests.insert(lower.substr(0, k) + lower.substr(k + 1));
        for (const std::string& rest : rests) {
            std::vector<std::string_view>& others = byRest[rest];
            for (const std::string_view other : others) {
                if (!LookLikeOne(other, name) || !told.insert({other, name}).second)
                    continue;
                const FlagUses& otherUses = flags.uses.at(other);
                const bool isRarer = uses.Count() <= otherUses.Count();
                const auto& [rareName, rare, usual] =
                    isRarer ? std::tuple(name, &uses, other) : std::tuple(other, &otherUses, name);
                const Place place = !rare->set.empty()     ? rare->set.front()
                                    : !rare->asked.empty() ? rare->asked.front()
                                                           : rare->cleared.front();
                findings
                    .Add("V09", place,
                         "There are two flags, " + QuoteShortly(rareName) + " and " + QuoteShortly(usual) +
                             ". If one is meant, one of the names is misspelt.")
                    .fixes = {RenameFlag(*rare, rareName, usual)};
            }
            others.push_back(name);
        }
    }
}

void FindInFlags(const CheckedGame& game, Findings& findings) {
    const AllFlags flags = CollectFlags(game);
    if (!flags.areSomeMadeOfVariables)
        FindOneSided(game, flags, findings);
    FindNeighbours(flags, findings);
}

} // namespace

std::span<const Check> FlagChecks() {
    static constexpr Check Rows[] = {
        {"V01", Level::Hint, "Flags that nothing asks for", FindInFlags},
        {"V02", Level::Warning, "Flags that nothing sets", FindInFlags},
        {"V03", Level::Hint, "Flags that are only cleared", FindInFlags},
        {"V09", Level::Hint, "Flags with almost the same name", FindInFlags},
    };
    return Rows;
}

} // namespace zem::problems
