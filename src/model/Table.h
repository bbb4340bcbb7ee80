#pragma once

#include "base/KelError.h"
#include "model/RecordGroup.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <utility>

namespace zem {

/// The one container of the game model: records numbered 1 to Count(), at most 32,767 of them.
///
/// A copy of a table behaves as a deep copy but shares its records with the original until one of the two
/// is written, so undo steps and recovery copies are plain copies. Copying a table copies one pointer,
/// writing a record afterwards copies that record, the pointers of its group and the list of groups.
///
/// Copies may be read and destroyed on other threads; one table object belongs to one thread at a time.
template <class Record>
class Table {
public:
    static constexpr int MaxCount = 32767;

    class Iterator;

    /// How many records there are.
    std::int16_t Count() const {
        if (groups_.IsEmpty())
            return 0;
        return static_cast<std::int16_t>(groups_.Back().first + static_cast<int>(groups_.Back().Size()));
    }
    bool IsEmpty() const { return groups_.IsEmpty(); }

    /// Read access to record k, 1 to Count(). Throws KelError for any other k.
    const Record& operator[](int k) const {
        const Place place = Find(k);
        return groups_[place.group][place.offset];
    }

    /// Write access to record k, 1 to Count(). Throws KelError for any other k. The reference is good until
    /// the table is changed in another way or copied.
    Record& Edit(int k) {
        const Place place = Find(k);
        return groups_.Edit(place.group).Edit(place.offset);
    }

    /// Adds a record at the end and gives write access to it. Throws KelError when the table is full.
    Record& Append(Record&& record) {
        const std::int16_t count = Count();
        if (count == MaxCount)
            throw KelError("a list of the game cannot hold more than 32,767 entries");
        // Where many are appended in a row, more will follow; where one is after each undo step, none will.
        const std::size_t before = groups_.IsOwn() ? static_cast<std::size_t>(count) : 0;
        if (groups_.IsEmpty() || groups_.Back().Size() == RecordGroup<Record>::Capacity) {
            Group group(count);
            group.Append(std::move(record), before);
            return groups_.Append(std::move(group)).Edit(0);
        }
        return groups_.Edit(groups_.Size() - 1).Append(std::move(record), before / 4);
    }

    Record& Append(const Record& record) { return Append(Record(record)); }
    Record& Append() { return Append(Record()); }

    /// Deletes record k, 1 to Count(); later records move down by one. Throws KelError for any other k.
    void Remove(int k) {
        const Place place = Find(k);
        groups_.Edit(place.group).Remove(place.offset);
        for (std::size_t group = place.group + 1; group < groups_.Size(); ++group)
            --groups_.Edit(group).first;
        if (groups_[place.group].IsEmpty())
            groups_.Remove(place.group);
    }

    void Clear() { *this = Table(); }

    /// Replaces all records by those of a range. Throws KelError when they are too many.
    template <class Range>
    void Assign(const Range& records) {
        Clear();
        for (const auto& record : records)
            Append(record);
    }

    Iterator begin() const { return {this, 0, 0}; }
    Iterator end() const { return {this, groups_.Size(), 0}; }

    /// Compares the records, without looking into those that both tables share.
    friend bool operator==(const Table& a, const Table& b) {
        if (a.groups_.IsSharedWith(b.groups_))
            return true;
        if (a.Count() != b.Count())
            return false;
        if (a.HasGroupsLike(b))
            return a.HasSameGroups(b);
        for (Iterator left = a.begin(), right = b.begin(); left != a.end(); ++left, ++right)
            if (&*left != &*right && !(*left == *right))
                return false;
        return true;
    }

private:
    // Never empty. A base leaves its last bytes to what follows, so that the list of groups stays short.
    struct Group : RecordGroup<Record> {
        explicit Group(std::int16_t before) : first(before) {}
        std::int16_t first; // how many records stand in the groups before this one
    };

    struct Place {
        std::size_t group;
        std::size_t offset;
    };

    Place Find(int k) const {
        if (k < 1 || k > Count())
            throw KelError("there is no entry number " + std::to_string(k) + " in a list of " +
                           std::to_string(Count()));
        const Group* after =
            std::upper_bound(groups_.begin(), groups_.end(), k - 1,
                             [](int index, const Group& group) { return index < group.first; });
        const auto group = static_cast<std::size_t>(after - groups_.begin()) - 1;
        return {group, static_cast<std::size_t>(k - 1 - groups_[group].first)};
    }

    bool HasGroupsLike(const Table& other) const {
        return std::equal(groups_.begin(), groups_.end(), other.groups_.begin(), other.groups_.end(),
                          [](const Group& a, const Group& b) { return a.first == b.first; });
    }

    bool HasSameGroups(const Table& other) const {
        return std::equal(
            groups_.begin(), groups_.end(), other.groups_.begin(),
            [](const Group& a, const Group& b) { return static_cast<const RecordGroup<Record>&>(a) == b; });
    }

    SharedArray<Group> groups_; // also tells the count, so that a table moved from is simply empty
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

    reference operator*() const { return table_->groups_[group_][offset_]; }
    pointer operator->() const { return &**this; }

    Iterator& operator++() {
        if (++offset_ == table_->groups_[group_].Size()) {
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
    Iterator(const Table* table, std::size_t group, std::size_t offset)
        : table_(table),
          group_(group),
          offset_(offset) {}

    const Table* table_ = nullptr;
    std::size_t group_ = 0;
    std::size_t offset_ = 0;
};

} // namespace zem
