#pragma once

#include "model/List.h"
#include "model/Shared.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <utility>
#include <vector>

namespace zem {

/// A list of the game: its records are numbered 1 to Count(), at most MostRecords.
///
/// A copy of a table behaves as a deep copy but shares its records with the original until one of the two
/// is written, so undo steps and recovery copies are plain copies. Copying a table copies one pointer,
/// writing a record afterwards copies that record, the pointers of its group and the list of groups.
///
/// Copies may be read and destroyed on other threads; one table object belongs to one thread at a time.
template <class Record>
class Table {
public:
    using RecordType = Record;

    class Iterator;

    /// How many records there are.
    std::int16_t Count() const {
        return IsEmpty() ? std::int16_t{0} : static_cast<std::int16_t>(groups_->back().End());
    }
    bool IsEmpty() const { return groups_->empty(); }

    /// Read access to record k, 1 to Count(). Throws KelError for any other k.
    const Record& operator[](int k) const {
        const Position at = Find(k);
        return (*groups_)[at.group][at.offset];
    }

    /// Write access to record k, 1 to Count(). Throws KelError for any other k. The reference is good until
    /// the table is changed in another way or copied.
    Record& Edit(int k) {
        const Position at = Find(k);
        return groups_.Edit()[at.group].records.Edit()[at.offset].Edit();
    }

    /// Adds a record at the end and gives write access to it. Throws KelError when the table is full.
    Record& Append(Record record = {}) {
        const int count = Count();
        detail::RequireRoomForOneMore(count);
        std::vector<Group>& groups = groups_.Edit();
        if (!groups.empty() && groups.back().Size() < GroupSize)
            return groups.back().records.Edit().emplace_back(std::move(record)).Edit();
        std::vector<Shared<Record>> records;
        records.reserve(GroupSize);
        Record& added = records.emplace_back(std::move(record)).Edit();
        groups.push_back({count, std::move(records)});
        return added;
    }

    /// Deletes record k, 1 to Count(); later records move down by one. Throws KelError for any other k.
    void Remove(int k) {
        const Position at = Find(k);
        std::vector<Group>& groups = groups_.Edit();
        const auto group = groups.begin() + static_cast<std::ptrdiff_t>(at.group);
        auto& records = group->records.Edit();
        records.erase(records.begin() + static_cast<std::ptrdiff_t>(at.offset));
        std::for_each(group + 1, groups.end(), [](Group& later) { --later.first; });
        if (records.empty())
            groups.erase(group);
    }

    void Clear() { *this = Table(); }

    /// Replaces all records by those of a range. Throws KelError when they are too many.
    template <class Range>
    void Assign(const Range& records) {
        Clear();
        for (const auto& record : records)
            Append(record);
    }

    Iterator begin() const { return {groups_->data(), 0}; }
    Iterator end() const { return {groups_->data() + groups_->size(), 0}; }

    /// Compares the records, without looking into those that both tables share.
    friend bool operator==(const Table& a, const Table& b) {
        if (a.IsGroupedLike(b))
            return a.groups_ == b.groups_;
        // The same records may stand in other groups after some were removed.
        return a.Count() == b.Count() && std::equal(a.begin(), a.end(), b.begin());
    }

private:
    // Small enough for its pointers to be copied for every undo step, large enough that a table has few
    // groups.
    static constexpr std::size_t GroupSize = 64;

    /// One to GroupSize records that stand one after the other.
    struct Group {
        int first = 0; // How many records stand in the groups before this one.
        Shared<std::vector<Shared<Record>>> records;

        std::size_t Size() const { return records->size(); }
        int End() const { return first + static_cast<int>(Size()); }
        const Record& operator[](std::size_t offset) const { return *(*records)[offset]; }

        friend bool operator==(const Group& a, const Group& b) = default;
    };

    struct Position {
        std::size_t group;
        std::size_t offset;
    };

    Position Find(int k) const {
        detail::RequireEntry(k, Count());
        const auto after =
            std::upper_bound(groups_->begin(), groups_->end(), k - 1,
                             [](int index, const Group& group) { return index < group.first; });
        assert(after != groups_->begin() && k <= (after - 1)->End());
        return {static_cast<std::size_t>(after - groups_->begin()) - 1,
                static_cast<std::size_t>(k - 1 - (after - 1)->first)};
    }

    bool IsGroupedLike(const Table& other) const {
        return std::equal(groups_->begin(), groups_->end(), other.groups_->begin(), other.groups_->end(),
                          [](const Group& a, const Group& b) { return a.first == b.first; });
    }

    Shared<std::vector<Group>> groups_;
};

/// Walks the records in order, read only.
template <class Record>
class Table<Record>::Iterator {
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = Record;
    using difference_type = std::ptrdiff_t;
    using pointer = const Record*;
    using reference = const Record&;

    Iterator() = default;

    reference operator*() const { return (*group_)[offset_]; }
    pointer operator->() const { return &**this; }

    Iterator& operator++() {
        assert(offset_ < group_->Size());
        if (++offset_ == group_->Size()) {
            ++group_;
            offset_ = 0;
        }
        return *this;
    }
    Iterator operator++(int) {
        Iterator before = *this;
        ++*this;
        return before;
    }

    friend bool operator==(const Iterator& a, const Iterator& b) = default;

private:
    friend class Table;
    Iterator(const Group* group, std::size_t offset) : group_(group), offset_(offset) {}

    const Group* group_ = nullptr;
    std::size_t offset_ = 0;
};

} // namespace zem
