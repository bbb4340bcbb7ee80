#include "check/ReadBack.h"

#include "check/LooseComparison.h"
#include "check/LossReason.h"
#include "model/Fields.h"
#include "model/LineText.h"
#include "reader/LoadGame.h"
#include "writer/SaveGame.h"

#include <algorithm>
#include <functional>
#include <type_traits>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace zem {

namespace {

class Bytes : public Output {
public:
    std::string text;
    void Write(std::string_view piece) override { text.append(piece); }
    void Close() override {}
};

/// What a file of these bytes holds, for a game with the same catalogue of error messages. Throws KelError.
GameModel Load(const GameModel& game, std::string bytes) {
    GameModel back;
    back.ErrorMessages = game.ErrorMessages; // of which reading empties the game's own texts
    ReadGame(back, std::move(bytes));
    return back;
}

/// Whether the game comes back from its own file.
bool ComesBack(const GameModel& game) {
    try {
        return IsSameInFile(game, Load(game, GameFile(game)));
    } catch (const KelError&) {
        return false;
    }
}

template <class Value>
constexpr bool IsTable = false;
template <class Record>
constexpr bool IsTable<Table<Record>> = true;

/// Takes a game apart to find what does not come back: each part is tried alone, in a game of nothing else.
class Search {
public:
    Search(std::vector<LostPlace>& places, std::size_t most) : places_(places), most_(most) {}

    void Run(const GameModel& game) {
        Explore<GameModel>(game, [](const GameModel& part) { return ComesBack(part); });
    }

private:
    static constexpr std::string_view UnknownBlocksField = "blocks of other kinds";

    struct Step {
        const char* list;
        int entry;
        std::string label;
    };

    template <class Record>
    using Try = std::function<bool(Record)>;

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
        if constexpr (IsTable<Value>) {
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

    template <class Entry, class Record, class Field>
    void TryEntries(const Table<Entry>& table, const char* name, Field field, const Try<Record>& comesBack) {
        int k = 0;
        for (const Entry& entry : table) {
            ++k;
            const Try<Entry> entryComesBack = [&](Entry part) {
                Record whole;
                (whole.*field).Append(std::move(part));
                return comesBack(std::move(whole));
            };
            if (places_.size() == most_ || entryComesBack(entry))
                continue;
            path_.push_back({name, k, LabelOr(Label(entry), k)});
            if constexpr (std::is_same_v<Entry, std::string> || std::is_same_v<Entry, Collectable>)
                Report("", ReasonFor(entry, entryComesBack));
            else if (!entryComesBack({}))
                Report("", "it is not kept there");
            else
                Explore<Entry>(entry, entryComesBack);
            path_.pop_back();
        }
    }

    /// Why a record does not come back, each part of which does.
    template <class Record>
    static std::string JointReason(Record record, const Try<Record>& comesBack) {
        if constexpr (std::is_same_v<Record, Room>) {
            record.MiscTags.clear();
            for (Table<Thing>* things : {&record.Characters, &record.Objects})
                for (int k = 1; k <= things->Count(); ++k)
                    things->Edit(k).MiscTags.clear();
            if (comesBack(record))
                return "an \"else\" line among its tags joins an \"if\" line above it";
        }
        return "it does not come back from the file as it is";
    }

    template <class Value>
    static std::string ReasonFor(const Value& value, const Try<Value>& comesBack) {
        if constexpr (std::is_same_v<Value, std::string>)
            return LossReason(value, comesBack);
        else
            return "it does not come back from the file as it is";
    }
    static std::string ReasonFor(const Shared<std::string>& value,
                                 const Try<Shared<std::string>>& comesBack) {
        return LossReason(*value, [&](const std::string& text) { return comesBack(text); });
    }
    static std::string ReasonFor(const Shared<ScriptPair>& exit, const Try<Shared<ScriptPair>>& comesBack) {
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
    static std::string ReasonFor(const Collectable& collectable, const Try<Collectable>& comesBack) {
        const std::string& definition = collectable.Definition;
        if (definition.find(' ') == std::string::npos)
            return "it has no settings";
        const auto definitionComesBack = [&](const std::string& text) {
            return comesBack({text, text.substr(0, text.find(' '))});
        };
        if (definitionComesBack(definition))
            return "its definition names " + QuoteShortly(FirstWord(definition));
        const std::size_t name = definition.find(' ');
        const std::size_t display = std::min(definition.find('['), definition.size() - 1) + 1;
        const std::size_t displaySize = definition.substr(display).find(']');
        struct Part {
            const char* noun;
            std::size_t start;
            std::size_t size;
        };
        for (const Part& part : {Part{"its display text", display, displaySize},
                                 {"its settings", name + 1, std::string::npos},
                                 {"its name", 0, name}}) {
            const auto partComesBack = [&](const std::string& text) {
                return definitionComesBack(std::string(definition).replace(part.start, part.size, text));
            };
            if (partComesBack("x"))
                return LossReason(definition.substr(part.start, part.size), partComesBack, part.noun);
        }
        return LossReason(
            definition, [&](const std::string& text) { return definitionComesBack("x " + text); },
            "its definition");
    }

    static std::string LabelOr(const std::string& label, int number) {
        return Trim(label).empty() ? "number " + std::to_string(number) : Shorten(label);
    }
    static std::string Label(const std::string& entry) { return entry; }
    static std::string Label(const ScriptPair& pair) { return pair.Key; }
    static std::string Label(const SynonymEntry& entry) { return entry.ConvertTo; }
    static std::string Label(const PlayerCommand& command) { return command.Pattern; }
    template <class Record>
    static std::string Label(const Record& record) {
        return record.Name;
    }

    void Report(const std::string& field, const std::string& reason) {
        LostPlace place;
        std::string where;
        for (const Step& step : path_)
            where += (where.empty() ? "" : ", ") + std::string(step.list) + ' ' + step.label;
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
        if (!field.empty())
            where += (where.empty() ? "game properties, " : ", ") + field;
        where[0] = Upper(where[0]);
        place.text = where + ": " + reason;
        places_.push_back(std::move(place));
    }

    static char Upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

    std::vector<LostPlace>& places_;
    std::size_t most_;
    std::vector<Step> path_;
};

/// Things are read into the last room that has their room's name.
void FindRoomsOfOneName(const GameModel& game, std::vector<LostPlace>& places, std::size_t most) {
    std::unordered_map<std::string_view, int> lastByName;
    int k = 0;
    for (const Room& room : game.Rooms)
        lastByName[room.Name] = ++k;
    k = 0;
    for (const Room& room : game.Rooms) {
        ++k;
        const bool hasThings = !room.Characters.IsEmpty() || !room.Objects.IsEmpty();
        if (hasThings && lastByName[room.Name] != k && places.size() < most)
            places.push_back({"room", k, "", 0,
                              "Room " + Shorten(room.Name) +
                                  ": its characters and objects move to the last room of the same name"});
    }
}

/// Start items are read by their names, in any capitals.
void FindItemsOfOneName(const GameModel& game, std::vector<LostPlace>& places, std::size_t most) {
    std::unordered_set<std::string> startItems;
    for (const ItemEntry& item : game.Items)
        if (item.IsStartItem)
            startItems.insert(Lower(Trim(item.Name)));
    int k = 0;
    for (const ItemEntry& item : game.Items) {
        ++k;
        const std::string name = Lower(Trim(item.Name));
        if (!item.IsStartItem && !name.empty() && startItems.contains(name) && places.size() < most)
            places.push_back(
                {"item", k, "", 0,
                 "Item " + Shorten(item.Name) + ": it becomes a start item like the other of the same name"});
    }
}

} // namespace

std::string GameFile(const GameModel& game) {
    Bytes bytes;
    WriteGame(game, game.FileName, bytes);
    return std::move(bytes.text);
}

std::vector<LostPlace> ReadBack(const GameModel& game, const std::string& bytes, std::size_t most) {
    std::string problem;
    try {
        if (IsSameInFile(game, Load(game, bytes)))
            return {};
        problem = "The file gives back another game than the one that was saved";
    } catch (const KelError& error) {
        problem = std::string("The file cannot be read again: ") + error.what();
    }
    std::vector<LostPlace> places;
    Search(places, most).Run(game);
    FindRoomsOfOneName(game, places, most);
    FindItemsOfOneName(game, places, most);
    if (places.empty())
        places.push_back({"", 0, "", 0, problem});
    return places;
}

} // namespace zem
