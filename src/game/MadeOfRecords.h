#pragma once

#include "model/Fields.h"
#include "model/Place.h"
#include "model/Texts.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <vector>

namespace zem {

/// A text of a record that a list of the game holds, or a field of the game's own.
struct RecordText {
    Place place; // without the step that leads to the record: that changes when entries come and go
    FieldUse use;
    std::string_view text;
};

/// The place in the whole game of what stands at a place of a record.
/// @param record  the step to the record; its list is None for a field of the game's own
inline Place InGame(PlaceStep record, const Place& place) {
    if (record.list == FieldId::None)
        return place;
    Place whole = place;
    whole.steps = {record, place.steps[0], place.steps[1]};
    return whole;
}

/// Something that is made of the texts of every record of a game, and kept as long as the record stays
/// shared: going on to another version of the game makes anew only what belongs to the records that differ.
///
/// What is made may hold views of the texts that it is made of; they are good until the next GoOnTo.
template <class Made>
class MadeOfRecords {
public:
    using Maker = std::function<Made(const std::vector<RecordText>&)>;

    explicit MadeOfRecords(Maker make) : make_(std::move(make)) {}
    MadeOfRecords(const MadeOfRecords&) = delete; // the views are of this very object's game
    MadeOfRecords& operator=(const MadeOfRecords&) = delete;

    void GoOnTo(const GameModel& game) {
        const GameModel before = std::exchange(game_, game); // keeps the addresses alive to compare with
        ForEachField<GameModel>([&](const auto& field) {
            using Value = std::remove_cvref_t<decltype(game_.*field.member)>;
            const FieldUse use = detail::UseInside({}, field.use);
            if constexpr (RecordList<Value>)
                GoOnToTable(game_.*field.member, field.id, use);
            else if constexpr (std::is_same_v<Value, std::string>)
                MakeOwn(game_.*field.member, field.id, use);
            else if constexpr (std::is_same_v<Value, Shared<std::string>>)
                if (&*(before.*field.member) != &*(game_.*field.member) || !own_.contains(field.id))
                    MakeOwn(*(game_.*field.member), field.id, use);
        });
    }

    /// The version that was gone on to last.
    const GameModel& Game() const { return game_; }

    /// Calls visit(step, made) for every record, in the order of the fields. The list of the step is None for
    /// the fields of the game's own.
    template <class Visit>
    void ForEach(Visit visit) const {
        for (const auto& [field, made] : own_)
            visit(PlaceStep{}, made);
        for (const auto& [list, entries] : tables_) {
            int number = 0;
            for (const Entry& entry : entries)
                visit(PlaceStep{list, ++number}, *entry.made);
        }
    }

private:
    struct Entry {
        const void* record = nullptr;
        std::shared_ptr<const Made> made;
    };

    void MakeOwn(const std::string& text, FieldId id, FieldUse use) {
        std::vector<RecordText> texts;
        if (!text.empty())
            texts.push_back({Place::Of({}, id), use, text});
        own_.insert_or_assign(id, make_(texts));
    }

    /// Records are compared by their addresses. What stands between the first and the last difference is
    /// looked up, as it may have moved.
    template <class Record>
    void GoOnToTable(const Table<Record>& table, FieldId id, FieldUse use) {
        std::vector<Entry>& kept = tables_[id];
        std::vector<const Record*> records;
        records.reserve(static_cast<std::size_t>(table.Count()));
        for (const Record& record : table)
            records.push_back(&record);
        const std::size_t common = std::min(kept.size(), records.size());
        std::size_t first = 0;
        while (first < common && kept[first].record == records[first])
            ++first;
        std::size_t same = 0; // entries at the end
        while (same < common - first &&
               kept[kept.size() - 1 - same].record == records[records.size() - 1 - same])
            ++same;

        std::unordered_map<const void*, const Entry*> moved;
        for (std::size_t k = first; k < kept.size() - same; ++k)
            moved.emplace(kept[k].record, &kept[k]);
        std::vector<Entry> between;
        for (std::size_t k = first; k < records.size() - same; ++k) {
            const auto found = moved.find(records[k]);
            between.push_back(found != moved.end() ? *found->second
                                                   : Entry{records[k], MakeOne(*records[k], use)});
        }
        const auto begin = kept.begin() + static_cast<std::ptrdiff_t>(first);
        const auto after = kept.erase(begin, kept.end() - static_cast<std::ptrdiff_t>(same));
        kept.insert(after, std::make_move_iterator(between.begin()), std::make_move_iterator(between.end()));
    }

    template <class Record>
    std::shared_ptr<const Made> MakeOne(const Record& record, FieldUse use) {
        std::vector<RecordText> texts;
        ForEachTextOf(record, use, [&](const Place& place, FieldUse textUse, const std::string& text) {
            texts.push_back({place, textUse, text});
        });
        return std::make_shared<const Made>(make_(texts));
    }

    Maker make_;
    GameModel game_;
    std::map<FieldId, Made> own_;
    std::map<FieldId, std::vector<Entry>> tables_;
};

} // namespace zem
