#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace zem::problems {

/// The names of one kind. They are views: the texts outlive the set.
class NameSet {
public:
    void Add(std::string_view name);

    bool Has(std::string_view name) const { return counts_.contains(name); }

    /// How many records have the name.
    int CountOf(std::string_view name) const;

    /// The name that differs from this one by its capitals alone; empty when there is none.
    std::string_view InOtherCapitals(std::string_view name) const;

    /// The one name that is at most two letters away; empty when there is none, or more than one. Of short
    /// names, all of whose letters could be changed so, one letter away.
    std::string_view Nearest(std::string_view name) const;

    /// Each name once, in the order in which they were added.
    const std::vector<std::string_view>& All() const { return names_; }

private:
    std::unordered_map<std::string_view, int> counts_;
    std::unordered_map<std::string, std::string_view> byLower_;
    std::vector<std::string_view> names_;
};

/// How many letters must be added, left out, changed or swapped with their neighbour to get from one text to
/// the other, whatever their capitals; more than `most` for any larger number.
int LettersApart(std::string_view a, std::string_view b, int most);

/// Of several words, the one that is nearest, as NameSet::Nearest tells it.
std::string_view NearestOf(const std::vector<std::string_view>& words, std::string_view word);

} // namespace zem::problems
