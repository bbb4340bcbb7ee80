#pragma once

#include "model/SharedArray.h"

#include <utility>

namespace zem {

/// A record that costs one pointer while it is as T{} makes it, for records of which most stay empty. Copies
/// share it until one of them is written.
template <class T>
class Shared {
public:
    Shared() = default;
    Shared(T value) { *this = std::move(value); } // NOLINT(google-explicit-constructor): it stands for a T

    Shared& operator=(T value) {
        Edit() = std::move(value);
        return *this;
    }

    const T& operator*() const {
        static const T empty{};
        return box_.IsEmpty() ? empty : box_[0];
    }
    const T* operator->() const { return &**this; }

    /// Write access. The reference is good until this object is copied.
    T& Edit() { return box_.IsEmpty() ? box_.Append({}) : box_.Edit(0); }

    friend bool operator==(const Shared& a, const Shared& b) { return &*a == &*b || *a == *b; }

private:
    SharedArray<T> box_; // of one value, or of none
};

} // namespace zem
