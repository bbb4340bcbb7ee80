#pragma once

#include "merge/RecordTree.h"

#include <utility>
#include <vector>

namespace zem::merge {

/// Which records of two versions are the same: by name and, among equals, by content and then position. One
/// that has another name but the same content was renamed; a thing that is in another room was moved there.
struct Matching {
    std::vector<int> toB; // by record of a; -1 where b lacks it
    std::vector<int> toA;
};

Matching MatchRecords(const RecordTree& a, const RecordTree& b);

/// Whether both records, without what stands in their lists, are the same but for the numbers of internal
/// procedures.
bool SameFields(const TreeRecord& a, const TreeRecord& b);

/// Pairs the records of two lists of children that are called alike: first those of the same content, then
/// the others in their order.
/// @param a, b  records of one tree each, in order
std::vector<std::pair<int, int>> PairByKey(const RecordTree& treeA, const std::vector<int>& a,
                                           const RecordTree& treeB, const std::vector<int>& b);

} // namespace zem::merge
