#pragma once

#include "model/SharedArray.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace zem {

/// A record that copies share. It stands alone in memory or in a pool: room for several records in one piece,
/// which is given back when the last of them is gone.
///
/// Copies may be read and destroyed on other threads.
template <class T>
class SharedRecord {
public:
    SharedRecord(const SharedRecord& other) noexcept : slot_(other.slot_) {
        if (slot_ != nullptr)
            slot_->owners.fetch_add(1, std::memory_order_relaxed);
    }
    SharedRecord(SharedRecord&& other) noexcept : slot_(std::exchange(other.slot_, nullptr)) {}
    SharedRecord& operator=(SharedRecord other) noexcept {
        std::swap(slot_, other.slot_);
        return *this;
    }
    ~SharedRecord() {
        // The only owner needs no lock to find out that it is the last.
        if (slot_ != nullptr && (IsOwn() || slot_->owners.fetch_sub(1, std::memory_order_acq_rel) == 1))
            Free(slot_);
    }

    /// A record alone in memory.
    static SharedRecord Alone(T&& value) {
        return SharedRecord(new (::operator new(sizeof(Slot))) Slot(std::move(value), 0));
    }

    /// The first record of a new pool for so many.
    static SharedRecord InPool(T&& value, std::size_t size) {
        auto* pool = new (::operator new(sizeof(Pool) + size * sizeof(Slot))) Pool{1};
        return SharedRecord(new (pool + 1) Slot(std::move(value), 1));
    }

    /// Keeps room in the pool of this record for as many others; each is to be taken or given up later.
    void KeepRoom(std::size_t count) {
        PoolOf(slot_)->inUse.fetch_add(static_cast<std::uint32_t>(count), std::memory_order_relaxed);
    }
    void GiveUpRoom(std::size_t count) const { Leave(PoolOf(slot_), static_cast<std::uint32_t>(count)); }

    /// Takes the room behind this record in its pool.
    SharedRecord Next(T&& value) const {
        return SharedRecord(new (slot_ + 1) Slot(std::move(value), slot_->number + 1));
    }

    const T& operator*() const { return slot_->value; }
    bool IsSharedWith(const SharedRecord& other) const { return slot_ == other.slot_; }
    /// True when no copy is left that shares the record.
    bool IsOwn() const { return slot_->owners.load(std::memory_order_acquire) == 1; }
    /// Write access, for the only owner.
    T& Edit() { return slot_->value; }

private:
    static_assert(std::is_nothrow_move_constructible_v<T>, "room that was taken must be filled");

    struct Slot {
        Slot(T&& record, std::uint32_t place) : number(place), value(std::move(record)) {}
        std::atomic<std::uint32_t> owners{1};
        std::uint32_t number; // in its pool, from 1; 0 for a record alone
        T value;
    };
    struct alignas(Slot) Pool {
        std::atomic<std::uint32_t> inUse; // records, and room that somebody may still take
    };

    explicit SharedRecord(Slot* slot) : slot_(slot) {}

    static Pool* PoolOf(Slot* slot) {
        return std::launder(reinterpret_cast<Pool*>(slot - (slot->number - 1)) - 1);
    }

    static void Leave(Pool* pool, std::uint32_t count) {
        if (pool->inUse.fetch_sub(count, std::memory_order_acq_rel) == count) {
            std::destroy_at(pool);
            ::operator delete(pool);
        }
    }

    static void Free(Slot* slot) {
        Pool* pool = slot->number == 0 ? nullptr : PoolOf(slot);
        std::destroy_at(slot);
        if (pool == nullptr)
            ::operator delete(slot);
        else
            Leave(pool, 1);
    }

    Slot* slot_; // null only after a move
};

/// Up to Capacity records of a table, which stand side by side in memory where they are appended one after
/// the other. Copies share them; a record that is written moves into memory of its own first, unless nobody
/// shares it.
template <class T>
class RecordGroup {
public:
    // Small enough for its pointers to be copied for every undo step, large enough that a table has few
    // groups.
    static constexpr std::size_t Capacity = 64;

    RecordGroup() = default;
    RecordGroup(const RecordGroup& other) noexcept : records_(other.records_) {} // the room stays the other's
    RecordGroup(RecordGroup&& other) noexcept
        : records_(std::move(other.records_)),
          room_(std::exchange(other.room_, std::uint16_t{0})) {}
    RecordGroup& operator=(RecordGroup other) noexcept {
        std::swap(records_, other.records_);
        std::swap(room_, other.room_);
        return *this;
    }
    ~RecordGroup() { GiveUpRoom(); }

    std::size_t Size() const { return records_.Size(); }
    bool IsEmpty() const { return records_.IsEmpty(); }

    /// Read access to a record, from 0. The index must be below Size().
    const T& operator[](std::size_t index) const { return *records_[index]; }

    /// Write access to a record, from 0. The index must be below Size().
    T& Edit(std::size_t index) {
        SharedRecord<T>& record = records_.Edit(index); // which makes the pointers this group's own first
        if (!record.IsOwn()) {
            GiveUpRoom();
            record = SharedRecord<T>::Alone(T(*record));
        }
        return record.Edit();
    }

    /// Adds a record at the end. There must be fewer than Capacity.
    /// @param expected  how many more will probably follow
    T& Append(T&& record, std::size_t expected) {
        if (room_ != 0) {
            --room_;
            return records_.Append(records_.Back().Next(std::move(record))).Edit();
        }
        const std::size_t room = std::min(expected, Capacity - 1 - Size());
        if (room == 0)
            return records_.Append(SharedRecord<T>::Alone(std::move(record))).Edit();
        SharedRecord<T>& added = records_.Append(SharedRecord<T>::InPool(std::move(record), 1 + room));
        added.KeepRoom(room);
        room_ = static_cast<std::uint16_t>(room);
        return added.Edit();
    }

    /// Deletes a record, from 0. The index must be below Size().
    void Remove(std::size_t index) {
        GiveUpRoom();
        records_.Remove(index);
    }

    friend bool operator==(const RecordGroup& a, const RecordGroup& b) {
        const auto same = [](const SharedRecord<T>& x, const SharedRecord<T>& y) {
            return x.IsSharedWith(y) || *x == *y;
        };
        return a.records_.IsSharedWith(b.records_) ||
               std::equal(a.records_.begin(), a.records_.end(), b.records_.begin(), b.records_.end(), same);
    }

private:
    void GiveUpRoom() {
        if (room_ != 0)
            records_.Back().GiveUpRoom(room_);
        room_ = 0;
    }

    SharedArray<SharedRecord<T>> records_;
    std::uint16_t room_ = 0; // behind the last record in its pool, which only this group may take
};

} // namespace zem
