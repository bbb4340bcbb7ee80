#pragma once

#include "model/Place.h"

#include <cstddef>
#include <tuple>

namespace zem {

/// Whether the record of one place comes before that of the other, or its field, in the order of the game's
/// lists.
inline bool FieldComesBefore(const Place& a, const Place& b) {
    for (std::size_t k = 0; k < Place::Deepest; ++k)
        if (!(a.steps[k] == b.steps[k]))
            return std::tie(a.steps[k].list, a.steps[k].entry) < std::tie(b.steps[k].list, b.steps[k].entry);
    return a.field < b.field;
}

/// The same for places with their bytes.
inline bool PlaceComesBefore(const Place& a, const Place& b) {
    if (FieldComesBefore(a, b) || FieldComesBefore(b, a))
        return FieldComesBefore(a, b);
    return std::tie(a.bytes.begin, a.bytes.end) < std::tie(b.bytes.begin, b.bytes.end);
}

} // namespace zem
