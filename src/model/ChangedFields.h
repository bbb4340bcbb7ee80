#pragma once

#include "model/Fields.h"

#include <bitset>
#include <cstddef>
#include <tuple>
#include <type_traits>

namespace zem {

/// In which of its own fields, lists above all, a game differs from another, so that whoever shows a game
/// redoes only what has changed. Lists that two games share are told apart from others by a pointer.
class ChangedFields {
public:
    static ChangedFields Between(const GameModel& a, const GameModel& b) {
        ChangedFields changed;
        std::size_t index = 0;
        ForEachField<GameModel>(
            [&](const auto& field) { changed.bits_[index++] = !(a.*field.member == b.*field.member); });
        return changed;
    }

    /// Whether this is one of them: Has(&GameModel::Rooms).
    template <class Member>
    bool Has(Member GameModel::*member) const {
        bool found = false;
        std::size_t index = 0;
        ForEachField<GameModel>([&](const auto& field) {
            if constexpr (std::is_same_v<std::remove_cvref_t<decltype(field.member)>, Member GameModel::*>)
                found = found || (field.member == member && bits_[index]);
            ++index;
        });
        return found;
    }

    bool IsEmpty() const { return bits_.none(); }

private:
    std::bitset<64> bits_; // in the order of Fields.h
};

} // namespace zem
