#include "merge/DiffGames.h"

#include "base/LineText.h"
#include "merge/Describe.h"

#include <algorithm>

namespace zem::merge {

namespace {

/// Which of these numbers stay when as few as possible are taken out to leave the others growing.
std::vector<char> LongestGrowing(const std::vector<int>& numbers) {
    std::vector<std::size_t> ends; // of the growing rows of each length, the one that ends lowest
    std::vector<std::size_t> previous(numbers.size());
    for (std::size_t k = 0; k < numbers.size(); ++k) {
        const auto at = std::lower_bound(ends.begin(), ends.end(), numbers[k],
                                         [&](std::size_t end, int number) { return numbers[end] < number; });
        previous[k] = at == ends.begin() ? k : *(at - 1);
        if (at == ends.end())
            ends.push_back(k);
        else
            *at = k;
    }
    std::vector<char> stays(numbers.size(), 0);
    for (std::size_t left = ends.size(), k = ends.empty() ? 0 : ends.back(); left > 0;
         --left, k = previous[k])
        stays[k] = 1;
    return stays;
}

} // namespace

GameDiff::GameDiff(const GameModel& before, const GameModel& after)
    : before_(before, 'a'),
      after_(after, 'b'),
      matching_(MatchRecords(before_, after_)) {
    Compare(0, 0);
}

void GameDiff::Compare(int before, int after) {
    CompareFields(before, after);
    for (const int child : before_[before].children)
        if (!IsMovedOut(child) && !IsHidden(before_[child]))
            differences_.push_back({DifferenceKind::Removed, child, -1, {}, "", ""});
    CompareEntries(before, after);
}

void GameDiff::CompareFields(int before, int after) {
    const TreeRecord& a = before_[before];
    const TreeRecord& b = after_[after];
    const auto compare = [&](const TreeField& field, std::string_view from, std::string_view to) {
        if (!SameText(from, to))
            differences_.push_back(
                {DifferenceKind::Changed, before, after, field, WithoutMarks(from), WithoutMarks(to)});
    };
    auto left = a.fields.begin();
    auto right = b.fields.begin();
    while (left != a.fields.end() || right != b.fields.end()) {
        const bool takesLeft =
            right == b.fields.end() || (left != a.fields.end() && left->number <= right->number);
        const bool takesRight =
            left == a.fields.end() || (right != b.fields.end() && right->number <= left->number);
        compare(takesLeft ? *left : *right, takesLeft ? left->text : "", takesRight ? right->text : "");
        left += takesLeft ? 1 : 0;
        right += takesRight ? 1 : 0;
    }
}

/// Which entries of the second version stand in the order of the first.
std::vector<char> GameDiff::KeptInOrder(int before, int after) const {
    std::vector<int> entries; // one row for all lists, because the lists stand in the same order in both
    for (const int child : after_[after].children) {
        const int partner = matching_.toA[static_cast<std::size_t>(child)];
        if (partner >= 0 && before_[partner].parent == before)
            entries.push_back(partner);
    }
    return LongestGrowing(entries);
}

void GameDiff::CompareEntries(int before, int after) {
    const std::vector<char> kept = KeptInOrder(before, after);
    std::size_t number = 0;
    for (const int child : after_[after].children) {
        const int partner = matching_.toA[static_cast<std::size_t>(child)];
        if (IsHidden(after_[child]))
            number += partner >= 0 ? 1 : 0;
        else if (partner < 0) {
            differences_.push_back({DifferenceKind::Added, -1, child, {}, "", ""});
            for (const int inside : after_[child].children)
                if (IsMovedIn(inside)) {
                    const int from = matching_.toA[static_cast<std::size_t>(inside)];
                    differences_.push_back({DifferenceKind::Moved, from, inside, {}, "", ""});
                    Compare(from, inside);
                }
        } else {
            if (before_[partner].parent != before)
                differences_.push_back({DifferenceKind::Moved, partner, child, {}, "", ""});
            else if (kept[number++] == 0)
                differences_.push_back({DifferenceKind::Reordered, partner, child, {}, "", ""});
            Compare(partner, child);
        }
    }
}

std::string GameDiff::Where(const Difference& difference) const {
    const RecordTree& tree = TreeOf(difference);
    const int record = difference.after >= 0 ? difference.after : difference.before;
    return difference.kind == DifferenceKind::Changed ? DescribeField(tree, record, difference.field)
                                                      : DescribeRecord(tree, record);
}

std::string GameDiff::Group(const Difference& difference) const {
    const RecordTree& tree = TreeOf(difference);
    int record = difference.after >= 0 ? difference.after : difference.before;
    while (tree[record].parent > 0)
        record = tree[record].parent;
    return DescribeRecord(tree, record);
}

std::string GameDiff::WhereInGroup(const Difference& difference) const {
    const RecordTree& tree = TreeOf(difference);
    std::string words;
    for (int record = difference.after >= 0 ? difference.after : difference.before; tree[record].parent > 0;
         record = tree[record].parent)
        words = std::string(tree[record].listName) + ' ' + ShowShortly(tree[record].key) +
                (words.empty() ? "" : ", ") + words;
    if (difference.kind == DifferenceKind::Changed)
        words += (words.empty() ? "" : ", ") + FieldName(difference.field);
    return words;
}

std::string GameDiff::Behind(const Difference& difference) const {
    const std::vector<int>& siblings = after_[after_[difference.after].parent].children;
    const auto at = std::find(siblings.begin(), siblings.end(), difference.after);
    if (at == siblings.begin() || after_[*(at - 1)].list != after_[*at].list)
        return "";
    return std::string(after_[*(at - 1)].key);
}

} // namespace zem::merge
