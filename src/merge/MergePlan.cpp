#include "merge/MergePlan.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace zem::merge {

namespace {

Version Other(Version version) {
    return version == Ours ? Theirs : Ours;
}

/// Puts what only `other` has behind the entry that stands before it there. Where both added something in the
/// same spot, that of the skeleton comes first.
std::vector<int> Interleave(const std::vector<int>& skeleton, const std::vector<int>& other) {
    const std::unordered_set<int> known(skeleton.begin(), skeleton.end());
    std::unordered_map<int, std::vector<int>> behind;
    int anchor = -1;
    for (const int record : other) {
        if (known.contains(record))
            anchor = record;
        else
            behind[anchor].push_back(record);
    }
    const std::unordered_set<int> common(other.begin(), other.end());
    std::vector<int> result;
    const auto flush = [&](int record) {
        if (const auto found = behind.find(record); found != behind.end())
            result.insert(result.end(), found->second.begin(), found->second.end());
    };
    anchor = -1;
    for (const int record : skeleton) {
        if (common.contains(record)) {
            flush(anchor);
            anchor = record;
        }
        result.push_back(record);
    }
    flush(anchor);
    return result;
}

} // namespace

MergePlan::MergePlan(const std::array<const RecordTree*, 3>& trees, const Choices& choices)
    : trees_(trees),
      choices_(choices) {
    PairRecords();
    for (int record = 0; record < Count(); ++record)
        SettleDeleted(record);
    for (int record = 1; record < Count(); ++record)
        ChooseParent(record);
    standing_.assign(records_.size(), Standing::Unknown);
    for (int record = 1; record < Count(); ++record)
        if (Stands(record))
            records_[static_cast<std::size_t>((*this)[record].parent)].children.push_back(record);
    for (int record = 0; record < Count(); ++record)
        if (!(*this)[record].children.empty())
            SortChildren(record);
}

int MergePlan::AddRecord(std::array<int, 3> at) {
    PlannedRecord record;
    record.at = at;
    record.isKept = true;
    for (const Version version : {Base, Ours, Theirs})
        if (at[version] >= 0) {
            recordOf_[version][static_cast<std::size_t>(at[version])] = Count();
            record.list = Tree(version)[at[version]].list;
        }
    records_.push_back(std::move(record));
    return Count() - 1;
}

void MergePlan::PairRecords() {
    for (const Version version : {Base, Ours, Theirs})
        recordOf_[version].assign(static_cast<std::size_t>(Tree(version).Count()), -1);
    const Matching ours = MatchRecords(Tree(Base), Tree(Ours));
    const Matching theirs = MatchRecords(Tree(Base), Tree(Theirs));
    for (int base = 0; base < Tree(Base).Count(); ++base)
        AddRecord(
            {base, ours.toB[static_cast<std::size_t>(base)], theirs.toB[static_cast<std::size_t>(base)]});
    for (int record = 0; record < Count(); ++record) // grows on the way
        PairAdded(record);
}

/// What both added under the same name in the same list is one record.
void MergePlan::PairAdded(int record) {
    const std::array<int, 3> at = (*this)[record].at;
    const auto added = [&](Version version) {
        std::vector<int> records;
        if (at[version] >= 0)
            for (const int child : Tree(version)[at[version]].children)
                if (RecordOf(version, child) < 0)
                    records.push_back(child);
        return records;
    };
    const std::vector<int> ours = added(Ours);
    const std::vector<int> theirs = added(Theirs);
    if (!ours.empty() && !theirs.empty())
        for (const auto& [left, right] : PairByKey(Tree(Ours), ours, Tree(Theirs), theirs))
            AddRecord({-1, left, right});
    for (const int left : ours)
        if (RecordOf(Ours, left) < 0)
            AddRecord({-1, left, -1});
    for (const int right : theirs)
        if (RecordOf(Theirs, right) < 0)
            AddRecord({-1, -1, right});
}

int MergePlan::ParentIn(Version version, int record) const {
    const int inTree = (*this)[record].at[version];
    return inTree <= 0 ? -1 : RecordOf(version, Tree(version)[inTree].parent);
}

std::vector<int> MergePlan::ChildrenIn(Version version, int record, FieldId list) const {
    std::vector<int> children;
    const int inTree = (*this)[record].at[version];
    if (inTree >= 0)
        for (const int child : Tree(version)[inTree].children)
            if (Tree(version)[child].list == list)
                children.push_back(RecordOf(version, child));
    return children;
}

/// Whether a version changed a record that the other one deleted: the record itself, or what stands in it and
/// was deleted with it.
bool MergePlan::IsChangedBy(Version survivor, int record) const {
    const PlannedRecord& planned = (*this)[record];
    const TreeRecord& now = Tree(survivor)[planned.at[survivor]];
    if (!SameFields(Tree(Base)[planned.at[Base]], now) ||
        ParentIn(survivor, record) != ParentIn(Base, record))
        return true;
    return std::any_of(now.children.begin(), now.children.end(), [&](int inTree) {
        const int child = RecordOf(survivor, inTree);
        if ((*this)[child].at[Base] < 0 || ParentIn(Base, child) != record)
            return true;
        return (*this)[child].at[Other(survivor)] < 0 && IsChangedBy(survivor, child);
    });
}

/// A record that one side deleted is gone, unless the other side changed it. What stands in a deleted record
/// shares its fate.
void MergePlan::SettleDeleted(int record) {
    PlannedRecord& planned = records_[static_cast<std::size_t>(record)];
    const bool inOurs = planned.at[Ours] >= 0;
    const bool inTheirs = planned.at[Theirs] >= 0;
    if (planned.at[Base] < 0 || (inOurs && inTheirs))
        return;
    planned.isKept = false;
    if (!inOurs && !inTheirs)
        return;
    const Version survivor = inOurs ? Ours : Theirs;
    const int parent = ParentIn(Base, record);
    const bool goesWithParent =
        (*this)[parent].at[Other(survivor)] < 0 && ParentIn(survivor, record) == parent;
    if (goesWithParent) {
        planned.isKept = (*this)[parent].isKept;
    } else if (IsChangedBy(survivor, record)) {
        Report(record, survivor == Ours ? ConflictKind::DeletedByTheirs : ConflictKind::DeletedByOurs);
        const Take take = ChoiceOf(conflicts_.back().id);
        planned.isKept = take == Take::Both || (take == Take::Ours) == (survivor == Ours);
    }
}

void MergePlan::ChooseParent(int record) {
    PlannedRecord& planned = records_[static_cast<std::size_t>(record)];
    const int base = ParentIn(Base, record);
    const int ours = ParentIn(Ours, record);
    const int theirs = ParentIn(Theirs, record);
    planned.parent = ours < 0 || (ours == base && theirs >= 0) ? theirs : ours;
    const bool isConflict = ours >= 0 && theirs >= 0 && ours != theirs && ours != base && theirs != base;
    if (planned.isKept && isConflict) {
        Report(record, ConflictKind::Moved);
        if (ChoiceOf(conflicts_.back().id) == Take::Theirs)
            planned.parent = theirs;
    }
    for (const int other : {ours, theirs, base})
        if ((planned.parent < 0 || !(*this)[planned.parent].isKept) && other >= 0)
            planned.parent = other; // the room that it was moved to is gone
}

bool MergePlan::Stands(int record) {
    if (record == 0)
        return true;
    Standing& standing = standing_[static_cast<std::size_t>(record)];
    if (standing == Standing::Unknown)
        standing =
            (*this)[record].isKept && Stands((*this)[record].parent) ? Standing::Stands : Standing::Gone;
    return standing == Standing::Stands;
}

void MergePlan::SortChildren(int record) {
    std::vector<FieldId> lists;
    for (const int child : (*this)[record].children)
        if (std::find(lists.begin(), lists.end(), (*this)[child].list) == lists.end())
            lists.push_back((*this)[child].list);
    std::vector<int> sorted;
    for (const FieldId list : lists) {
        const std::vector<int> merged = MergeOrder(record, list);
        sorted.insert(sorted.end(), merged.begin(), merged.end());
    }
    records_[static_cast<std::size_t>(record)].children = std::move(sorted);
}

std::vector<int> MergePlan::MergeOrder(int record, FieldId list) {
    const auto standingIn = [&](Version version) {
        std::vector<int> children = ChildrenIn(version, record, list);
        std::erase_if(children, [&](int child) { return !Stands(child) || (*this)[child].parent != record; });
        return children;
    };
    const std::vector<int> ours = standingIn(Ours);
    const std::vector<int> theirs = standingIn(Theirs);
    if (ours == theirs)
        return ours;
    const auto common = [&](std::vector<int> children) {
        std::erase_if(children, [&](int child) {
            const PlannedRecord& planned = (*this)[child];
            return std::any_of(planned.at.begin(), planned.at.end(), [](int at) { return at < 0; }) ||
                   ParentIn(Base, child) != record || ParentIn(Ours, child) != record ||
                   ParentIn(Theirs, child) != record;
        });
        return children;
    };
    const std::vector<int> orderInBase = common(standingIn(Base));
    const std::vector<int> orderInOurs = common(ours);
    const std::vector<int> orderInTheirs = common(theirs);
    bool oursFirst = orderInTheirs == orderInBase || orderInOurs == orderInTheirs;
    if (!oursFirst && orderInOurs != orderInBase) {
        Report(record, ConflictKind::Order, list);
        oursFirst = ChoiceOf(conflicts_.back().id) != Take::Theirs;
    }
    return oursFirst ? Interleave(ours, theirs) : Interleave(theirs, ours);
}

Take MergePlan::ChoiceOf(const ConflictId& id) const {
    const auto found = choices_.find(id);
    return found == choices_.end() ? Take::Ours : found->second;
}

void MergePlan::Report(int record, ConflictKind kind, FieldId list) {
    // Fields count from 0, so what is about the record as a whole counts below.
    const int field = kind == ConflictKind::Order ? static_cast<int>(list) : 0;
    conflicts_.push_back({{record, field, -1 - static_cast<int>(kind)}, kind, list});
}

} // namespace zem::merge
