#pragma once

#include "model/KelError.h"

#include <algorithm>
#include <atomic>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace zem {

/// The one container of the game model: records numbered 1 to Count(), at most 32,767 of them.
///
/// A copy of a table behaves as a deep copy but shares its records with the original until one of the two
/// is written, so undo steps and recovery copies are plain copies. Records hang in groups of at most
/// `GroupSize` pointers: copying a table copies a pointer a group, writing a record copies one group of
/// pointers and that record.
///
/// Copies may be read and destroyed on other threads; one table object belongs to one thread at a time.
template <class Record>
class Table {
public:
    static constexpr int MaxCount = 32767;

    class Iterator;

    /// How many records there are.
    std::int16_t Count() const {
        if (groups_.empty())
            return 0;
        return static_cast<std::int16_t>(groups_.back().first + groups_.back().records->size());
    }
    bool IsEmpty() const { return groups_.empty(); }

    /// Read access to record k, 1 to Count(). Throws KelError for any other k.
    const Record& operator[](int k) const {
        const Place place = Find(k);
        return *groups_[place.group].records->at(place.offset);
    }

    /// Write access to record k, 1 to Count(). Throws KelError for any other k. The reference is good until
    /// the table is changed in another way or copied.
    Record& Edit(int k) {
        const Place place = Find(k);
        std::shared_ptr<Record>& record = OwnGroup(place.group)[place.offset];
        if (!IsUnique(record))
            record = std::make_shared<Record>(*record);
        return *record;
    }

    /// Adds a record at the end and gives write access to it. Throws KelError when the table is full.
    Record& Append(Record record = {}) {
        const std::int16_t count = Count();
        if (count == MaxCount)
            throw KelError("a list of the game cannot hold more than 32,767 entries");
        auto added = std::make_shared<Record>(std::move(record));
        if (groups_.empty() || groups_.back().records->size() == GroupSize) {
            groups_.push_back({std::make_shared<Records>(1, std::move(added)), count});
            return *groups_.back().records->back();
        }
        Records& last = OwnGroup(groups_.size() - 1);
        last.push_back(std::move(added));
        return *last.back();
    }

    /// Deletes record k, 1 to Count(); later records move down by one. Throws KelError for any other k.
    void Remove(int k) {
        const Place place = Find(k);
        Records& records = OwnGroup(place.group);
        records.erase(records.begin() + static_cast<std::ptrdiff_t>(place.offset));
        for (std::size_t group = place.group + 1; group < groups_.size(); ++group)
            --groups_[group].first;
        if (records.empty())
            groups_.erase(groups_.begin() + static_cast<std::ptrdiff_t>(place.group));
    }

    void Clear() { *this = Table(); }

    Iterator begin() const { return {this, 0, 0}; }
    Iterator end() const { return {this, groups_.size(), 0}; }

    /// Compares the records, without looking into those that both tables share.
    friend bool operator==(const Table& a, const Table& b) {
        if (a.Count() != b.Count())
            return false;
        for (Iterator left = a.begin(), right = b.begin(); left != a.end(); ++left, ++right)
            if (&*left != &*right && !(*left == *right))
                return false;
        return true;
    }

private:
    using Records = std::vector<std::shared_ptr<Record>>;

    // Small enough to be copied for every undo step, large enough that the list of groups stays short.
    static constexpr std::size_t GroupSize = 64;

    struct Group {
        std::shared_ptr<Records> records; // never empty
        std::int16_t first;               // how many records stand in the groups before this one
    };

    struct Place {
        std::size_t group;
        std::size_t offset;
    };

    Place Find(int k) const {
        if (k < 1 || k > Count())
            throw KelError("there is no entry number " + std::to_string(k) + " in a list of " +
                           std::to_string(Count()));
        const auto after =
            std::upper_bound(groups_.begin(), groups_.end(), k - 1,
                             [](int index, const Group& group) { return index < group.first; });
        const auto group = static_cast<std::size_t>(after - groups_.begin()) - 1;
        return {group, static_cast<std::size_t>(k - 1 - groups_[group].first)};
    }

    template <class Shared>
    static bool IsUnique(const std::shared_ptr<Shared>& shared) {
        if (shared.use_count() != 1)
            return false;
        // The last other owner may have been a copy that another thread has just finished reading.
        std::atomic_thread_fence(std::memory_order_acquire);
        return true;
    }

    Records& OwnGroup(std::size_t group) {
        std::shared_ptr<Records>& records = groups_[group].records;
        if (!IsUnique(records))
            records = std::make_shared<Records>(*records);
        return *records;
    }

    std::vector<Group> groups_; // also tells the count, so that a table moved from is simply empty
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

    reference operator*() const { return *(*table_->groups_[group_].records)[offset_]; }
    pointer operator->() const { return &**this; }

    Iterator& operator++() {
        if (++offset_ == table_->groups_[group_].records->size()) {
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
