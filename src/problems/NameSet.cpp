#include "problems/NameSet.h"

#include "base/LineText.h"

#include <algorithm>
#include <array>

namespace zem::problems {

namespace {

constexpr std::size_t LongestCompared = 100;

} // namespace

void NameSet::Add(std::string_view name) {
    if (++counts_[name] > 1)
        return;
    names_.push_back(name);
    byLower_.emplace(Lower(name), name);
}

int NameSet::CountOf(std::string_view name) const {
    const auto found = counts_.find(name);
    return found == counts_.end() ? 0 : found->second;
}

std::string_view NameSet::InOtherCapitals(std::string_view name) const {
    const auto found = byLower_.find(Lower(name));
    return found == byLower_.end() || found->second == name ? std::string_view() : found->second;
}

std::string_view NameSet::Nearest(std::string_view name) const {
    return NearestOf(names_, name);
}

int LettersApart(std::string_view a, std::string_view b, int most) {
    const std::size_t difference = a.size() < b.size() ? b.size() - a.size() : a.size() - b.size();
    if (difference > static_cast<std::size_t>(most) || std::max(a.size(), b.size()) > LongestCompared)
        return most + 1;
    std::array<std::array<int, LongestCompared + 1>, 3> rows; // the row of a's letter and the two before it
    for (std::size_t j = 0; j <= b.size(); ++j)
        rows[0][j] = static_cast<int>(j);
    for (std::size_t i = 1; i <= a.size(); ++i) {
        auto& row = rows[i % 3];
        const auto& above = rows[(i - 1) % 3];
        const auto& twoAbove = rows[(i + 1) % 3];
        row[0] = static_cast<int>(i);
        int least = row[0];
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const bool same = Lower(a[i - 1]) == Lower(b[j - 1]);
            row[j] = std::min({above[j] + 1, row[j - 1] + 1, above[j - 1] + (same ? 0 : 1)});
            if (i > 1 && j > 1 && Lower(a[i - 1]) == Lower(b[j - 2]) && Lower(a[i - 2]) == Lower(b[j - 1]))
                row[j] = std::min(row[j], twoAbove[j - 2] + 1);
            least = std::min(least, row[j]);
        }
        if (least > most + 1)
            return most + 1;
    }
    return std::min(rows[a.size() % 3][b.size()], most + 1);
}

std::string_view NearestOf(const std::vector<std::string_view>& words, std::string_view word) {
    const int most = word.size() < 4 ? 1 : 2;
    std::string_view nearest;
    int count = 0;
    int least = most + 1;
    for (const std::string_view other : words) {
        const int apart = LettersApart(other, word, most);
        if (apart > most || apart > least || other == word)
            continue;
        count = apart < least ? 1 : count + 1;
        least = apart;
        nearest = other;
    }
    return count == 1 ? nearest : std::string_view();
}

} // namespace zem::problems
