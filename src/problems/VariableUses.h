#pragma once

#include "problems/CheckedGame.h"
#include "problems/PrintedTexts.h"

#include <map>
#include <string_view>
#include <vector>

namespace zem::problems {

/// What is done with a flag. Places are those of its name.
struct FlagUses {
    std::vector<Place> set; // or flipped
    std::vector<Place> cleared;
    std::vector<Place> asked;
    std::size_t Count() const { return set.size() + cleared.size() + asked.size(); }
};

struct AllFlags {
    std::map<std::string_view, FlagUses> uses;
    bool areSomeMadeOfVariables = false; // "flag on <#which#>": any flag may be meant
};

AllFlags CollectFlags(const CheckedGame& game);

/// A name between two signs in a text or a parameter.
struct VariablePrint {
    Place place; // of the name, without the signs
    char sign = '#';
};

/// What is done with a variable. Places are those of its name.
struct VariableUses {
    std::vector<Place> set;            // by a command
    std::vector<Place> typed;          // by what a player types, in a pattern
    std::vector<Place> asked;          // by a condition
    std::vector<VariablePrint> prints; // in a text or a parameter
    std::vector<Place> asText;         // where only a text makes sense
    std::vector<Place> asNumber;       // where only a number makes sense
    bool mayBeNumber = false;          // by what is put into it, as far as that can be told
    bool isPlayers = true;             // nothing but a player's own words is put into it

    bool IsKnown() const { return !set.empty() || !typed.empty() || !asked.empty(); }
};

/// All variables, and all other words between two signs that could be one.
std::map<std::string_view, VariableUses> CollectVariables(const CheckedGame& game,
                                                          const std::vector<PrintedText>& texts);

} // namespace zem::problems
