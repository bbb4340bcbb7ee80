#pragma once

#include "model/Place.h"

#include <optional>
#include <string>
#include <type_traits>
#include <utility>

/// Every text of a game, with its place and what stands in it: the one walk that all questions to a whole
/// game go by.
namespace zem {

namespace detail {

/// Walks the texts of records. The place is kept up to date on the way, because making one anew for each text
/// would cost more than the walk.
template <class Visit>
class TextWalk {
public:
    explicit TextWalk(Visit& visit) : visit_(visit) {}

    template <class Record>
    void WalkRecord(const Record& record, FieldUse owner) {
        ForEachField<Record>([&](const auto& field) {
            WalkValue(record.*field.member, field.id, UseInside(owner, field.use));
        });
    }

    void WalkValue(bool, FieldId, FieldUse) {}
    void WalkValue(std::int16_t, FieldId, FieldUse) {}

    void WalkValue(const std::string& text, FieldId id, FieldUse use) {
        if (text.empty())
            return;
        place_.field = id;
        visit_(std::as_const(place_), use, text);
    }

    void WalkValue(const Shared<std::string>& text, FieldId id, FieldUse use) { WalkValue(*text, id, use); }

    template <class Record>
    void WalkValue(const Shared<Record>& record, FieldId id, FieldUse use) {
        WalkStep(*record, {id, 0}, use);
    }

    void WalkValue(const RecordList auto& list, FieldId id, FieldUse use) {
        int entry = 0;
        for (const auto& record : list)
            WalkStep(record, {id, ++entry}, use);
    }

private:
    template <class Record>
    void WalkStep(const Record& record, PlaceStep step, FieldUse use) {
        place_.steps[depth_++] = step;
        if constexpr (std::is_same_v<Record, std::string>)
            WalkValue(record, FieldId::None, use);
        else
            WalkRecord(record, use);
        place_.steps[--depth_] = {};
    }

    Visit& visit_;
    Place place_;
    std::size_t depth_ = 0;
};

/// Sets the text at a place below a record.
template <class Record>
void SetText(Record& record, const Place& place, std::size_t depth, std::string&& text) {
    if constexpr (std::is_same_v<Record, std::string>) {
        record = std::move(text);
    } else {
        const bool isHere = depth == Place::Deepest || place.steps[depth].list == FieldId::None;
        const FieldId wanted = isHere ? place.field : place.steps[depth].list;
        ForEachField<Record>([&](const auto& field) {
            if (field.id != wanted)
                return;
            auto& value = record.*field.member;
            using Value = std::remove_cvref_t<decltype(value)>;
            if constexpr (RecordList<Value>)
                SetText(value.Edit(place.steps[depth].entry), place, depth + 1, std::move(text));
            else if constexpr (requires { value.Edit(); })
                SetText(value.Edit(), place, depth + 1, std::move(text));
            else if constexpr (std::is_same_v<Value, std::string>)
                value = std::move(text);
        });
    }
}

} // namespace detail

/// Calls visit(place, use, text) for every text of the game that is not empty, scripts included, in the order
/// of the fields. The place is good during the call only; copy it to keep it.
template <class Visit>
void ForEachText(const GameModel& game, Visit visit) {
    detail::TextWalk<Visit>(visit).WalkRecord(game, {});
}

/// ForEachText for one value of the game or one record of its lists. The places lack the step to it.
/// @param use  of the field in which it stands
template <class Value, class Visit>
void ForEachTextOf(const Value& value, FieldUse use, Visit visit) {
    detail::TextWalk<Visit> walk(visit);
    if constexpr (std::tuple_size_v<std::remove_cvref_t<decltype(detail::FieldsOf<Value>)>> != 0)
        walk.WalkRecord(value, use);
    else
        walk.WalkValue(value, FieldId::None, use);
}

/// Replaces the text at a place that the game has, empty texts included.
inline void SetText(GameModel& game, const Place& place, std::string text) {
    detail::SetText(game, place, 0, std::move(text));
}

/// Calls visit(place, use, text) like ForEachText and puts what it returns, a std::optional<std::string>, in
/// the place of the text. Records without a new text stay shared with other copies of the game. Returns how
/// many texts are new.
template <class Visit>
int ReplaceTexts(GameModel& game, Visit visit) {
    const GameModel before = game; // is walked, while the game is written
    int replaced = 0;
    ForEachText(before, [&](const Place& place, FieldUse use, const std::string& text) {
        std::optional<std::string> other = visit(place, use, text);
        if (!other || *other == text)
            return;
        SetText(game, place, *std::move(other));
        ++replaced;
    });
    return replaced;
}

} // namespace zem
