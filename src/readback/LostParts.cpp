#include "readback/LostParts.h"

#include "base/LineText.h"
#include "model/Fields.h"
#include "readback/LossReason.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace zem {

namespace {

/// Whether a game that holds this record and nothing else comes back from its file.
template <class Record>
using Try = std::function<bool(Record)>;

constexpr const char* NoReason = "it does not come back from the file as it is";

template <class Value>
std::string ReasonFor(const Value& /*value*/, const Try<Value>& /*comesBack*/) {
    return NoReason;
}

std::string ReasonFor(const std::string& value, const Try<std::string>& comesBack) {
    return LossReason(value, comesBack);
}

std::string ReasonFor(const Shared<std::string>& value, const Try<Shared<std::string>>& comesBack) {
    return LossReason(*value, comesBack);
}

std::string ReasonFor(const Shared<ScriptPair>& exit, const Try<Shared<ScriptPair>>& comesBack) {
    if (exit->Key.empty())
        return "its action is lost, because the exit leads nowhere";
    if (exit->Key == ActionExit && Trim(exit->Script).empty())
        return "it is to run an action, but there is none";
    if (comesBack(ScriptPair{exit->Key, "x"}))
        return LossReason(
            exit->Script,
            [&](const std::string& script) {
                return comesBack(ScriptPair{exit->Key, script});
            },
            "its action");
    return LossReason(exit->Key, [&](const std::string& key) { return comesBack(ScriptPair{key, ""}); });
}

/// A stretch of a collectable's definition.
struct DefinitionPart {
    const char* noun;
    std::size_t start;
    std::size_t size;
};

std::array<DefinitionPart, 3> PartsOf(const std::string& definition) {
    const std::size_t name = definition.find(' ');
    const std::size_t display = std::min(definition.find('['), definition.size() - 1) + 1;
    const std::size_t displaySize = definition.substr(display).find(']');
    return {{{"its display text", display, displaySize},
             {"its settings", name + 1, std::string::npos},
             {"its name", 0, name}}};
}

std::string ReasonFor(const Collectable& collectable, const Try<Collectable>& comesBack) {
    const std::string& definition = collectable.Definition;
    if (definition.find(' ') == std::string::npos)
        return "it has no settings";
    const auto definitionComesBack = [&](const std::string& text) {
        return comesBack({text, text.substr(0, text.find(' '))});
    };
    if (definitionComesBack(definition))
        return "its definition names " + QuoteShortly(FirstWord(definition));
    for (const auto& [noun, start, size] : PartsOf(definition)) {
        const auto partComesBack = [&, start = start, size = size](const std::string& text) {
            return definitionComesBack(std::string(definition).replace(start, size, text));
        };
        if (partComesBack("x"))
            return LossReason(definition.substr(start, size), partComesBack, noun);
    }
    return LossReason(
        definition, [&](const std::string& text) { return definitionComesBack("x " + text); },
        "its definition");
}

/// Why a record does not come back, each part of which does.
template <class Record>
std::string JointReason(Record record, const Try<Record>& comesBack) {
    if constexpr (std::is_same_v<Record, Room>) {
        record.MiscTags.clear();
        for (List<Thing>* things : {&record.Characters, &record.Objects})
            for (int k = 1; k <= things->Count(); ++k)
                things->Edit(k).MiscTags.clear();
        if (comesBack(record))
            return "an \"else\" line among its tags joins an \"if\" line above it";
    }
    return NoReason;
}

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

/// How a place calls the entry.
std::string Label(const std::string& key, int number) {
    return Trim(key).empty() ? "number " + std::to_string(number) : Shorten(key);
}

class Search {
public:
    explicit Search(std::size_t most) : most_(most) {}

    std::vector<LostPlace> Run(const GameModel& game, const Try<GameModel>& comesBack) {
        Explore(game, comesBack);
        return std::move(places_);
    }

private:
    static constexpr std::string_view UnknownBlocksField = "blocks of other kinds";

    struct Step {
        const char* list;
        int entry;
        std::string label;
    };

    /// Reports the parts of a record that do not come back; the record itself if it is none of them alone.
    template <class Record>
    void Explore(const Record& record, const Try<Record>& comesBack) {
        const std::size_t before = places_.size();
        ForEachField<Record>([&](const char* name, auto field) {
            if (places_.size() < most_)
                TryField(record, name, field, comesBack);
        });
        if (places_.size() == before && !path_.empty())
            Report("", JointReason(record, comesBack));
    }

    template <class Record, class Field>
    void TryField(const Record& record, const char* name, Field field, const Try<Record>& comesBack) {
        const auto& value = record.*field;
        using Value = std::remove_cvref_t<decltype(value)>;
        if (value == Value())
            return;
        if constexpr (RecordList<Value>) {
            TryEntries(value, name, field, comesBack);
        } else {
            Record part;
            part.*field = value;
            const Try<Value> valueComesBack = [&](const Value& other) {
                part.*field = other;
                return comesBack(part);
            };
            if (!valueComesBack(value))
                Report(name, ReasonFor(value, valueComesBack));
        }
    }

    template <RecordList Entries, class Record, class Field>
    void TryEntries(const Entries& entries, const char* name, Field field, const Try<Record>& comesBack) {
        using Entry = typename Entries::RecordType;
        int k = 0;
        for (const Entry& entry : entries) {
            ++k;
            const Try<Entry> entryComesBack = [&](Entry part) {
                Record whole;
                (whole.*field).Append(std::move(part));
                return comesBack(std::move(whole));
            };
            if (places_.size() == most_ || entryComesBack(entry))
                continue;
            path_.push_back({name, k, Label(KeyOf(entry), k)});
            if constexpr (std::is_same_v<Entry, std::string> || std::is_same_v<Entry, Collectable>)
                Report("", ReasonFor(entry, entryComesBack));
            else if (!entryComesBack({}))
                Report("", "it is not kept there");
            else
                Explore(entry, entryComesBack);
            path_.pop_back();
        }
    }

    void Report(const std::string& field, const std::string& reason) {
        LostPlace place;
        if (!path_.empty()) {
            place.list = path_[0].list;
            place.entry = path_[0].entry;
        }
        if (path_.empty() && field == UnknownBlocksField)
            place.list = field; // which has an editor of its own
        if (path_.size() > 1) {
            place.innerList = path_[1].list;
            place.innerEntry = path_[1].entry;
        }
        place.text = Where(field) + ": " + reason;
        places_.push_back(std::move(place));
    }

    /// "Room Hall, object lamp, suffix".
    std::string Where(const std::string& field) const {
        std::string where;
        for (const Step& step : path_)
            where += (where.empty() ? "" : ", ") + std::string(step.list) + ' ' + step.label;
        if (!field.empty())
            where += (where.empty() ? "game properties, " : ", ") + field;
        if (where[0] >= 'a' && where[0] <= 'z')
            where[0] = static_cast<char>(where[0] - 'a' + 'A');
        return where;
    }

    std::vector<LostPlace> places_;
    std::size_t most_;
    std::vector<Step> path_; // to the record that is explored
};

} // namespace

std::vector<LostPlace> FindLostParts(const GameModel& game, const std::function<bool(GameModel)>& comesBack,
                                     std::size_t most) {
    return Search(most).Run(game, comesBack);
}

} // namespace zem
