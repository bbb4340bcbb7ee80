// How the search goes. That a file gives the game back is one question with the answer yes or no: write the
// game, read it, compare. It is asked again and again for smaller games:
//
// - A game that holds one field or one entry of a list, and is empty otherwise, comes back or does not. The
// fields
//   and entries that do not are what is looked for; the others are left out of the further search.
// - An entry that does not come back is taken apart in the same way, down to the single field: a game of one
// room of
//   one object of one text. `Try<Part>` is the question for a part: it puts the part into an otherwise empty
//   record, and hands that to the question for the record, up to the whole game.
// - Where a record does not come back though each of its fields does, two of them act upon each other. There
// is
//   one known way (JointReason); the record as a whole is the place then.
// - A record that is lost even when it is empty stands where the format has no room for it ("it is not kept
//   there").
// - Why a single text does not come back is a search of the same kind, through other texts in its place: see
//   LossReason.cpp.
//
// A question costs as much as writing and reading the part, so the whole takes little longer than reading the
// game once, and it stops at the number of places that were asked for.
#include "readback/LostParts.h"

#include "base/LineText.h"
#include "model/Fields.h"
#include "readback/LossReason.h"

#include <algorithm>
#include <array>
#include <string>
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

class Search {
public:
    Search(const GameModel& game, std::size_t most) : game_(game), most_(most) {}

    std::vector<LostPlace> Run(const Try<GameModel>& comesBack) {
        Explore(game_, comesBack);
        return std::move(places_);
    }

private:
    /// Reports the parts of a record that do not come back; the record itself if it is none of them alone.
    template <class Record>
    void Explore(const Record& record, const Try<Record>& comesBack) {
        const std::size_t before = places_.size();
        ForEachField<Record>([&](const auto& field) {
            if (places_.size() < most_)
                TryField(record, field, comesBack);
        });
        if (places_.size() == before && depth_ > 0)
            Report(FieldId::None, JointReason(record, comesBack));
    }

    template <class Record, class Field>
    void TryField(const Record& record, const Field& field, const Try<Record>& comesBack) {
        const auto& value = record.*field.member;
        using Value = std::remove_cvref_t<decltype(value)>;
        if (value == Value())
            return;
        if constexpr (RecordList<Value>) {
            TryEntries(value, field, comesBack);
        } else {
            Record part;
            part.*field.member = value;
            const Try<Value> valueComesBack = [&](const Value& other) {
                part.*field.member = other;
                return comesBack(part);
            };
            if (!valueComesBack(value))
                Report(field.id, ReasonFor(value, valueComesBack));
        }
    }

    template <RecordList Entries, class Field, class Record>
    void TryEntries(const Entries& entries, const Field& field, const Try<Record>& comesBack) {
        using Entry = typename Entries::RecordType;
        int k = 0;
        for (const Entry& entry : entries) {
            ++k;
            const Try<Entry> entryComesBack = [&](Entry part) {
                Record whole;
                (whole.*field.member).Append(std::move(part));
                return comesBack(std::move(whole));
            };
            if (places_.size() == most_ || entryComesBack(entry))
                continue;
            path_.steps[depth_++] = {field.id, k};
            if constexpr (std::is_same_v<Entry, std::string> || std::is_same_v<Entry, Collectable>)
                Report(FieldId::None, ReasonFor(entry, entryComesBack));
            else if (!entryComesBack({}))
                Report(FieldId::None, "it is not kept there");
            else
                Explore(entry, entryComesBack);
            path_.steps[--depth_] = {};
        }
    }

    void Report(FieldId field, const std::string& reason) {
        Place place = path_;
        place.field = field;
        places_.push_back(Lost(game_, place, reason));
    }

    const GameModel& game_;
    std::vector<LostPlace> places_;
    std::size_t most_;
    Place path_; // to the record that is explored
    std::size_t depth_ = 0;
};

} // namespace

LostPlace Lost(const GameModel& game, const Place& place, const std::string& reason) {
    std::string where = DescribePlace(game, place);
    where[0] = static_cast<char>(where[0] - 'a' + 'A'); // descriptions begin with a word of ours
    return {place, where + ": " + reason};
}

std::vector<LostPlace> FindLostParts(const GameModel& game, const std::function<bool(GameModel)>& comesBack,
                                     std::size_t most) {
    return Search(game, most).Run(comesBack);
}

} // namespace zem
