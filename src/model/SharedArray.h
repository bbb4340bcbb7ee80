#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <utility>

namespace zem {

/// An array whose copies share their elements until one of them is written: what Table is built from. It
/// costs one pointer where it stands and one allocation, eight bytes larger than its elements, where it is
/// not empty.
///
/// Copies may be read and destroyed on other threads; one array object belongs to one thread at a time.
template <class T>
class SharedArray {
public:
    static constexpr std::size_t MaxSize = 65535;

    SharedArray() = default;
    SharedArray(const SharedArray& other) noexcept : block_(other.block_) {
        if (block_ != nullptr)
            block_->owners.fetch_add(1, std::memory_order_relaxed);
    }
    SharedArray(SharedArray&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}
    SharedArray& operator=(SharedArray other) noexcept {
        std::swap(block_, other.block_);
        return *this;
    }
    ~SharedArray() {
        if (block_ != nullptr && block_->owners.fetch_sub(1, std::memory_order_acq_rel) == 1)
            Free(block_);
    }

    std::size_t Size() const { return block_ == nullptr ? 0 : block_->size; }
    bool IsEmpty() const { return block_ == nullptr; }

    /// True when no copy is left that shares the elements.
    bool IsOwn() const { return block_ == nullptr || block_->owners.load(std::memory_order_acquire) == 1; }

    /// True when both are the same elements in memory, or both are empty.
    bool IsSharedWith(const SharedArray& other) const { return block_ == other.block_; }

    const T* begin() const { return block_ == nullptr ? nullptr : Elements(block_); }
    const T* end() const { return begin() + Size(); }

    /// Read access to an element, from 0. The index must be below Size().
    const T& operator[](std::size_t index) const { return Elements(block_)[index]; }
    const T& Back() const { return (*this)[Size() - 1]; }

    /// Write access to an element, from 0. The index must be below Size(). The reference is good until the
    /// array is changed in another way or copied.
    T& Edit(std::size_t index) {
        Own(Size());
        return Elements(block_)[index];
    }

    /// Adds an element at the end. There must be fewer than MaxSize.
    T& Append(T&& element) {
        Own(Size() + 1);
        T* added = new (Elements(block_) + block_->size) T(std::move(element));
        ++block_->size;
        return *added;
    }

    /// Deletes an element, from 0. The index must be below Size().
    void Remove(std::size_t index) {
        if (Size() == 1) {
            *this = SharedArray();
            return;
        }
        Own(Size());
        T* elements = Elements(block_);
        std::move(elements + index + 1, elements + block_->size, elements + index);
        std::destroy_at(elements + --block_->size);
    }

private:
    struct Block {
        std::atomic<std::uint32_t> owners{1};
        std::uint16_t size = 0;
        std::uint16_t capacity = 0;
    };
    static_assert(alignof(T) <= sizeof(Block), "the elements stand directly behind the block");

    struct FreeBlock {
        void operator()(Block* block) const { Free(block); }
    };

    static T* Elements(Block* block) { return std::launder(reinterpret_cast<T*>(block + 1)); }

    static Block* Allocate(std::size_t capacity) {
        auto* block = new (::operator new(sizeof(Block) + capacity * sizeof(T))) Block;
        block->capacity = static_cast<std::uint16_t>(capacity);
        return block;
    }

    static void Free(Block* block) {
        std::destroy_n(Elements(block), block->size);
        std::destroy_at(block);
        ::operator delete(block);
    }

    /// Makes this array the only owner of a block that has room for so many elements.
    void Own(std::size_t needed) {
        const bool isOwn = block_ != nullptr && IsOwn();
        if (isOwn && needed <= block_->capacity)
            return;
        const std::size_t size = Size();
        const std::size_t capacity = needed <= size ? size : std::min(std::max(needed, 2 * size), MaxSize);
        std::unique_ptr<Block, FreeBlock> block(Allocate(capacity));
        if (isOwn)
            std::uninitialized_move_n(Elements(block_), size, Elements(block.get()));
        else if (block_ != nullptr)
            std::uninitialized_copy_n(Elements(block_), size, Elements(block.get()));
        block->size = static_cast<std::uint16_t>(size);
        SharedArray owned;
        owned.block_ = block.release();
        std::swap(block_, owned.block_);
    }

    Block* block_ = nullptr; // null when empty
};

} // namespace zem
