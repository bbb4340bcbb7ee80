#pragma once

#include "merge/LineMerge.h"
#include "merge/RecordMatching.h"

#include <array>
#include <compare>
#include <map>
#include <vector>

namespace zem::merge {

enum Version { Base, Ours, Theirs };

enum class ConflictKind {
    Field,           // both changed it, in different ways
    DeletedByOurs,   // and they changed it
    DeletedByTheirs, // and we changed it
    Moved,           // to different rooms
    Order            // both put the entries of a list in another order
};

/// Names a conflict among those of the same three games.
struct ConflictId {
    int record = 0;
    int field = 0; // of the record, or its list in whose order the conflict is
    int part = 0;

    auto operator<=>(const ConflictId&) const = default;
};

using Choices = std::map<ConflictId, Take>;

/// A record of the versions that have it.
struct PlannedRecord {
    std::array<int, 3> at = {-1, -1, -1}; // in the tree of each version
    FieldId list = FieldId::None;
    bool isKept = false;
    int parent = -1;
    std::vector<int> children; // of the merged game, list by list
};

struct RecordConflict {
    ConflictId id;
    ConflictKind kind = ConflictKind::Moved;
    FieldId list = FieldId::None; // of an order
};

/// Which records the merged game has, where they stand and in which order.
class MergePlan {
public:
    /// @param trees  by version; outlive the plan
    MergePlan(const std::array<const RecordTree*, 3>& trees, const Choices& choices);

    const PlannedRecord& operator[](int record) const { return records_[static_cast<std::size_t>(record)]; }
    int Count() const { return static_cast<int>(records_.size()); }
    const std::vector<RecordConflict>& Conflicts() const { return conflicts_; }

    /// The record of a tree's record.
    int RecordOf(Version version, int inTree) const {
        return recordOf_[version][static_cast<std::size_t>(inTree)];
    }

    /// Where the record stands in a version; -1 for nowhere.
    int ParentIn(Version version, int record) const;

    /// What stands in a list of the record in one version, in order.
    std::vector<int> ChildrenIn(Version version, int record, FieldId list) const;

private:
    enum class Standing : char { Unknown, Gone, Stands };

    int AddRecord(std::array<int, 3> at);
    void PairRecords();
    void PairAdded(int record);
    void SettleDeleted(int record);
    bool IsChangedBy(Version survivor, int record) const;
    void ChooseParent(int record);
    bool Stands(int record);
    void SortChildren(int record);
    std::vector<int> MergeOrder(int record, FieldId list);
    Take ChoiceOf(const ConflictId& id) const;
    void Report(int record, ConflictKind kind, FieldId list = FieldId::None);

    const RecordTree& Tree(Version version) const { return *trees_[version]; }

    std::array<const RecordTree*, 3> trees_;
    const Choices& choices_;
    std::vector<PlannedRecord> records_;
    std::array<std::vector<int>, 3> recordOf_;
    std::vector<Standing> standing_;
    std::vector<RecordConflict> conflicts_;
};

} // namespace zem::merge
