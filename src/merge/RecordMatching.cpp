#include "merge/RecordMatching.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <tuple>
#include <unordered_map>

namespace zem::merge {

namespace {

// A record that was renamed has at least this part of its text in common with what it was.
constexpr double LeastInCommon = 0.5;
// Comparing each with each must not take long where whole lists were replaced.
constexpr std::size_t MostComparisons = 10000;

using ListAndKey = std::pair<FieldId, std::string_view>;

bool SameSubtree(const RecordTree& treeA, int a, const RecordTree& treeB, int b) {
    const std::vector<int>& childrenA = treeA[a].children;
    const std::vector<int>& childrenB = treeB[b].children;
    return SameFields(treeA[a], treeB[b]) && std::equal(childrenA.begin(), childrenA.end(), childrenB.begin(),
                                                        childrenB.end(), [&](int left, int right) {
                                                            return treeA[left].list == treeB[right].list &&
                                                                   SameSubtree(treeA, left, treeB, right);
                                                        });
}

/// How many bytes of text a record has besides its name, and the names of what it holds.
std::size_t Weight(const RecordTree& tree, int record) {
    std::size_t weight = 0;
    for (const TreeField& field : tree[record].fields)
        if (field.number != tree[record].keyNumber)
            weight += field.text.size();
    for (const int child : tree[record].children)
        weight += tree[child].key.size();
    return weight;
}

std::size_t CommonWeight(const RecordTree& treeA, int a, const RecordTree& treeB, int b) {
    std::size_t weight = 0;
    for (const TreeField& field : treeA[a].fields)
        if (field.number != treeA[a].keyNumber && SameText(field.text, treeB[b].Text(field.number)))
            weight += field.text.size();
    std::map<ListAndKey, int> names;
    for (const int child : treeA[a].children)
        ++names[{treeA[child].list, treeA[child].key}];
    for (const int child : treeB[b].children)
        if (--names[{treeB[child].list, treeB[child].key}] >= 0)
            weight += treeB[child].key.size();
    return weight;
}

class Matcher {
public:
    Matcher(const RecordTree& a, const RecordTree& b) : a_(a), b_(b) {
        matching_.toB.assign(static_cast<std::size_t>(a.Count()), -1);
        matching_.toA.assign(static_cast<std::size_t>(b.Count()), -1);
    }

    Matching Run() {
        Pair(0, 0);
        PairWaiting();
        PairMovedThings();
        PairWaiting();
        return std::move(matching_);
    }

private:
    void Pair(int a, int b) {
        matching_.toB[static_cast<std::size_t>(a)] = b;
        matching_.toA[static_cast<std::size_t>(b)] = a;
        waiting_.emplace_back(a, b);
    }

    /// Pairs what stands in the lists of records that have partners.
    void PairWaiting() {
        while (!waiting_.empty()) {
            const auto [a, b] = waiting_.back();
            waiting_.pop_back();
            for (const auto& [left, right] : PairByKey(a_, Unpaired(a_[a].children, matching_.toB), b_,
                                                       Unpaired(b_[b].children, matching_.toA)))
                Pair(left, right);
            PairRenamed(Unpaired(a_[a].children, matching_.toB), Unpaired(b_[b].children, matching_.toA));
        }
    }

    static std::vector<int> Unpaired(std::vector<int> records, const std::vector<int>& partners) {
        std::erase_if(records, [&](int record) { return partners[static_cast<std::size_t>(record)] >= 0; });
        return records;
    }

    /// The closest first, so that of two candidates the better one is the renamed one.
    void PairRenamed(const std::vector<int>& a, const std::vector<int>& b) {
        if (a.size() * b.size() > MostComparisons)
            return;
        std::vector<std::tuple<double, int, int>> candidates;
        for (const int left : a)
            for (const int right : b) {
                if (a_[left].list != b_[right].list || a_[left].list == FieldId::GameUnknownBlocks)
                    continue;
                const std::size_t whole = Weight(a_, left) + Weight(b_, right);
                const double common = whole == 0
                                          ? 0
                                          : 2.0 * static_cast<double>(CommonWeight(a_, left, b_, right)) /
                                                static_cast<double>(whole);
                // What is nothing but a name was renamed where another one stands in its place.
                const bool isNameOnly = whole == 0 && a_[left].entry == b_[right].entry;
                if (common >= LeastInCommon || isNameOnly)
                    candidates.emplace_back(-common, left, right);
            }
        std::sort(candidates.begin(), candidates.end());
        for (const auto& [common, left, right] : candidates)
            if (matching_.toB[static_cast<std::size_t>(left)] < 0 &&
                matching_.toA[static_cast<std::size_t>(right)] < 0)
                Pair(left, right);
    }

    /// Things without a partner in their room that have one elsewhere, if there is no doubt which.
    void PairMovedThings() {
        struct Candidates {
            std::vector<int> a;
            std::vector<int> b;
        };
        std::map<ListAndKey, Candidates> byName;
        const auto collect = [&](const RecordTree& tree, const std::vector<int>& partners,
                                 std::vector<int> Candidates::*side) {
            for (int record = 0; record < tree.Count(); ++record)
                if (partners[static_cast<std::size_t>(record)] < 0 &&
                    (tree[record].list == FieldId::RoomObjects ||
                     tree[record].list == FieldId::RoomCharacters))
                    (byName[{tree[record].list, tree[record].key}].*side).push_back(record);
        };
        collect(a_, matching_.toB, &Candidates::a);
        collect(b_, matching_.toA, &Candidates::b);
        for (const auto& [name, candidates] : byName)
            if (candidates.a.size() == 1 && candidates.b.size() == 1)
                Pair(candidates.a.front(), candidates.b.front());
    }

    const RecordTree& a_;
    const RecordTree& b_;
    Matching matching_;
    std::vector<std::pair<int, int>> waiting_; // whose lists were not looked at yet
};

} // namespace

Matching MatchRecords(const RecordTree& a, const RecordTree& b) {
    return Matcher(a, b).Run();
}

bool SameFields(const TreeRecord& a, const TreeRecord& b) {
    return std::equal(a.fields.begin(), a.fields.end(), b.fields.begin(), b.fields.end(),
                      [](const TreeField& left, const TreeField& right) {
                          return left.number == right.number && SameText(left.text, right.text);
                      });
}

std::vector<std::pair<int, int>> PairByKey(const RecordTree& treeA, const std::vector<int>& a,
                                           const RecordTree& treeB, const std::vector<int>& b) {
    std::vector<std::pair<int, int>> pairs;
    const auto alike = [&](int left, int right) {
        return treeA[left].list == treeB[right].list && treeA[left].key == treeB[right].key;
    };
    std::size_t same = 0; // most lists are the same
    for (; same < a.size() && same < b.size() && alike(a[same], b[same]); ++same)
        pairs.emplace_back(a[same], b[same]);
    if (same == a.size() && same == b.size())
        return pairs;

    pairs.clear(); // an entry that was added may stand before another of its name
    std::map<ListAndKey, std::vector<int>> byKey;
    for (const int right : b)
        byKey[{treeB[right].list, treeB[right].key}].push_back(right);
    std::vector<int> others;
    const auto take = [&](int left, auto isPartner) {
        const auto found = byKey.find({treeA[left].list, treeA[left].key});
        if (found == byKey.end())
            return true; // there is none
        const auto partner = std::find_if(found->second.begin(), found->second.end(), isPartner);
        if (partner == found->second.end())
            return false;
        pairs.emplace_back(left, *partner);
        found->second.erase(partner);
        return true;
    };
    for (const int left : a)
        if (!take(left, [&](int right) { return SameSubtree(treeA, left, treeB, right); }))
            others.push_back(left);
    for (const int left : others)
        take(left, [](int) { return true; });
    return pairs;
}

} // namespace zem::merge
