#pragma once

#include <atomic>
#include <cstdint>
#include <utility>

namespace zem {

/// A value that copies share until one of them is written. It costs one pointer where it stands, and nothing
/// more as long as it is T{}.
///
/// Copies may be read and destroyed on other threads; one object belongs to one thread at a time.
template <class T>
class Shared {
public:
    Shared() = default;
    // NOLINTBEGIN(google-explicit-constructor): it stands for a T.
    Shared(const T& value) : Shared(T(value)) {}
    Shared(T&& value) : box_(new Box(std::move(value))) {}
    // NOLINTEND(google-explicit-constructor)
    Shared(const Shared& other) noexcept : box_(other.box_) {
        if (box_ != nullptr)
            box_->owners.fetch_add(1, std::memory_order_relaxed);
    }
    Shared(Shared&& other) noexcept : box_(std::exchange(other.box_, nullptr)) {}
    Shared& operator=(Shared other) noexcept {
        std::swap(box_, other.box_);
        return *this;
    }
    ~Shared() {
        if (box_ != nullptr && box_->owners.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete box_;
    }

    const T& operator*() const {
        static const T empty{};
        return box_ == nullptr ? empty : box_->value;
    }
    const T* operator->() const { return &**this; }

    /// Write access. Copies the value first when others share it. The reference is good until this object is
    /// copied.
    T& Edit() {
        if (box_ == nullptr || box_->owners.load(std::memory_order_acquire) != 1)
            *this = Shared(T(**this));
        return box_->value;
    }

    friend bool operator==(const Shared& a, const Shared& b) { return a.box_ == b.box_ || *a == *b; }

private:
    struct Box {
        explicit Box(T&& initial) : value(std::move(initial)) {}
        std::atomic<std::uint32_t> owners{1};
        T value;
    };

    Box* box_ = nullptr; // Null stands for T{}.
};

} // namespace zem
