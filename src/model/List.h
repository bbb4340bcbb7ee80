#pragma once

#include "base/KelError.h"
#include "model/Shared.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace zem {

/// The most records that a list of the game may hold: counts are signed 16-bit numbers.
inline constexpr int MostRecords = 32767;

/// Both kinds of lists: those inside records and those of the game.
template <class Type>
concept RecordList = requires(const Type& list) {
    { list.Count() } -> std::same_as<std::int16_t>;
    { list[1] } -> std::same_as<const typename Type::RecordType&>;
};

namespace detail {

/// Throws KelError unless there is an entry k, counted from 1.
inline void RequireEntry(int k, int count) {
    if (k < 1 || k > count)
        throw KelError("there is no entry number " + std::to_string(k) + " in a list of " +
                       std::to_string(count));
}

/// Throws KelError when a list of so many entries is full.
inline void RequireRoomForOneMore(int count) {
    if (count >= MostRecords)
        throw KelError("a list of the game cannot hold more than 32,767 entries");
}

} // namespace detail

/// A list inside a record: a vector that copies share until one of them is written. Its records are numbered
/// 1 to Count(), at most MostRecords.
template <class Record>
class List {
public:
    using RecordType = Record;

    std::int16_t Count() const { return static_cast<std::int16_t>(records_->size()); }
    bool IsEmpty() const { return records_->empty(); }

    /// Read access to record k, 1 to Count(). Throws KelError for any other k.
    const Record& operator[](int k) const { return (*records_)[IndexOf(k)]; }

    /// Write access to record k, 1 to Count(). Throws KelError for any other k. The reference is good until
    /// the list is changed in another way or copied.
    Record& Edit(int k) {
        const std::size_t index = IndexOf(k);
        return records_.Edit()[index];
    }

    /// Adds a record at the end and gives write access to it. Throws KelError when the list is full.
    Record& Append(Record record = {}) {
        detail::RequireRoomForOneMore(Count());
        return records_.Edit().emplace_back(std::move(record));
    }

    /// Deletes record k, 1 to Count(); later records move down by one. Throws KelError for any other k.
    void Remove(int k) {
        const std::size_t index = IndexOf(k);
        std::vector<Record>& records = records_.Edit();
        records.erase(records.begin() + static_cast<std::ptrdiff_t>(index));
    }

    void Clear() { *this = List(); }

    /// Replaces all records by those of a range. Throws KelError when they are too many.
    template <class Range>
    void Assign(const Range& records) {
        Clear();
        for (const auto& record : records)
            Append(record);
    }

    auto begin() const { return records_->begin(); }
    auto end() const { return records_->end(); }

    friend bool operator==(const List& a, const List& b) = default;

private:
    std::size_t IndexOf(int k) const {
        detail::RequireEntry(k, Count());
        return static_cast<std::size_t>(k) - 1;
    }

    Shared<std::vector<Record>> records_;
};

} // namespace zem
