#include "model/Place.h"

#include "base/LineText.h"

#include <algorithm>
#include <cassert>
#include <type_traits>

namespace zem {

std::size_t Place::Depth() const {
    const auto unused = std::find_if(steps.begin(), steps.end(),
                                     [](const PlaceStep& step) { return step.list == FieldId::None; });
    return static_cast<std::size_t>(unused - steps.begin());
}

Place Place::WholeField() const {
    Place whole = *this;
    whole.bytes = {};
    return whole;
}

Place Place::Of(std::initializer_list<PlaceStep> steps, FieldId field, TextRange bytes) {
    Place place;
    assert(steps.size() <= Deepest);
    std::copy(steps.begin(), steps.end(), place.steps.begin());
    place.field = field;
    place.bytes = bytes;
    return place;
}

namespace {

/// What the entry of a list is called by.
template <class Entry>
const std::string& KeyOf(const Entry& entry) {
    if constexpr (std::is_same_v<Entry, std::string>)
        return entry;
    else if constexpr (std::is_same_v<Entry, ScriptPair>)
        return entry.Key;
    else if constexpr (std::is_same_v<Entry, SynonymEntry>)
        return entry.ConvertTo;
    else if constexpr (std::is_same_v<Entry, PlayerCommand>)
        return entry.Pattern;
    else
        return entry.Name;
}

/// Follows the steps of a place from the game to its field.
class Resolver {
public:
    explicit Resolver(const Place& place) : place_(place) {}

    std::optional<ResolvedPlace> Run(const GameModel& game) {
        if (!FollowRecord(game, 0, {}))
            return std::nullopt;
        const std::size_t size = result_.text == nullptr ? 0 : result_.text->size();
        if (place_.bytes.begin > place_.bytes.end || place_.bytes.end > size)
            return std::nullopt;
        return std::move(result_);
    }

private:
    template <class Record>
    bool FollowRecord(const Record& record, std::size_t depth, FieldUse owner) {
        const bool isHere = depth == Place::Deepest || place_.steps[depth].list == FieldId::None;
        if (isHere && place_.field == FieldId::None)
            return true;
        const FieldId wanted = isHere ? place_.field : place_.steps[depth].list;
        bool found = false;
        ForEachField<Record>([&](const auto& field) {
            if (field.id != wanted)
                return;
            const FieldUse use = detail::UseInside(owner, field.use);
            found = isHere ? TakeField(record.*field.member, field.name, use)
                           : FollowStep(record.*field.member, field.name, depth, use);
        });
        return found;
    }

    template <class Value>
    bool TakeField(const Value& value, const char* name, FieldUse use) {
        result_.field = name;
        result_.use = use;
        if constexpr (std::is_same_v<Value, std::string>)
            result_.text = &value;
        else if constexpr (std::is_same_v<Value, Shared<std::string>>)
            result_.text = &*value;
        return true;
    }

    template <class Value>
    bool FollowStep(const Value& value, const char* name, std::size_t depth, FieldUse use) {
        const int entry = place_.steps[depth].entry;
        if constexpr (RecordList<Value>) {
            if (entry < 1 || entry > value.Count())
                return false;
            result_.steps.push_back({name, &KeyOf(value[entry]), entry});
            return FollowEntry(value[entry], depth, use);
        } else if constexpr (std::is_same_v<Value, Shared<ScriptPair>>) {
            result_.steps.push_back({name, nullptr, 0});
            return entry == 0 && FollowRecord(*value, depth + 1, use);
        } else {
            return false; // no record stands there
        }
    }

    template <class Entry>
    bool FollowEntry(const Entry& entry, std::size_t depth, FieldUse use) {
        if constexpr (std::is_same_v<Entry, std::string>) {
            result_.use = use;
            result_.text = &entry;
            return place_.field == FieldId::None && place_.Depth() == depth + 1;
        } else {
            return FollowRecord(entry, depth + 1, use);
        }
    }

    const Place& place_;
    ResolvedPlace result_;
};

std::string Words(const ResolvedPlace::Step& step) {
    if (step.key == nullptr)
        return step.list;
    const bool isBlank = Trim(*step.key).empty();
    return std::string(step.list) + ' ' +
           (isBlank ? "number " + std::to_string(step.entry) : ShowShortly(*step.key));
}

bool IsThing(FieldId list) {
    return list == FieldId::RoomCharacters || list == FieldId::RoomObjects;
}

/// "object lamp in Hall, use-able object oil".
std::string DescribeRecord(const Place& place, const ResolvedPlace& resolved) {
    const std::vector<ResolvedPlace::Step>& steps = resolved.steps;
    if (steps.empty())
        return "game properties";
    const bool isThing = steps.size() > 1 && IsThing(place.steps[1].list);
    std::string words = Words(steps.front());
    if (isThing) // "room Hall" becomes "in Hall"
        words = Words(steps[1]) + " in" + words.substr(std::string_view(steps.front().list).size());
    for (std::size_t k = isThing ? 2 : 1; k < steps.size(); ++k)
        words += ", " + Words(steps[k]);
    return words;
}

} // namespace

std::optional<ResolvedPlace> Resolve(const GameModel& game, const Place& place) {
    return Resolver(place).Run(game);
}

std::string_view TextAt(const GameModel& game, const Place& place) {
    const std::optional<ResolvedPlace> resolved = Resolve(game, place);
    return resolved && resolved->text != nullptr ? std::string_view(*resolved->text) : std::string_view();
}

bool Exists(const GameModel& game, const Place& place) {
    return Resolve(game, place).has_value();
}

std::string DescribePlace(const GameModel& game, const Place& place) {
    const std::optional<ResolvedPlace> resolved = Resolve(game, place);
    if (!resolved)
        return place.bytes.IsEmpty() ? "something that is not there any more"
                                     : DescribePlace(game, place.WholeField());
    std::string words = DescribeRecord(place, *resolved);
    const bool isTarget = place.field == FieldId::PairKey && resolved->steps.back().key == nullptr;
    if (resolved->field != nullptr && !isTarget) // an exit is where it leads to
        words.append(", ").append(resolved->field);
    if (!place.bytes.IsEmpty() && resolved->text->find("\r\n") != std::string::npos)
        words += ", line " + std::to_string(LineOfByte(*resolved->text, place.bytes.begin));
    return words;
}

int LineOfByte(std::string_view text, std::size_t byte) {
    const std::string_view before = text.substr(0, byte);
    return 1 + static_cast<int>(std::count(before.begin(), before.end(), '\n'));
}

} // namespace zem
