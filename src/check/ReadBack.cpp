#include "check/ReadBack.h"

#include "check/LooseComparison.h"
#include "model/Fields.h"
#include "model/LineText.h"
#include "reader/LoadGame.h"
#include "writer/SaveGame.h"

#include <functional>
#include <type_traits>
#include <unordered_map>
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

/// The text in quotes, cut to a length that fits into a message.
std::string Quote(std::string_view text) {
    constexpr std::size_t Longest = 40;
    const std::string shown(text.substr(0, Longest));
    return '"' + shown + (text.size() > Longest ? "..." : "") + '"';
}

/// The first line of the text that means something of its own in a file, wherever it stands.
std::string_view SpecialLine(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = text.find("\r\n");
        const std::string_view line = text.substr(0, length);
        for (const char* word : {"define ", "end define", "!include ", "'ZEM-NIP "})
            if (BeginsWith(line, word))
                return line;
        text.remove_prefix(length == std::string_view::npos ? text.size() : length + 2);
    }
    return {};
}

/// Why a text does not come back, as far as its signs tell.
std::string Reason(std::string_view text, bool isListed) {
    if (isListed && text.find(',') != std::string_view::npos)
        return "the comma in it ends it early";
    if (isListed && text.find(';') != std::string_view::npos)
        return "the semicolon in it ends it early";
    if (const std::string_view line = SpecialLine(text); !line.empty())
        return "the line " + Quote(Trim(line)) + " means something of its own there";
    for (const char* sign : {"{", "}"})
        if (text.find(sign) != std::string_view::npos)
            return std::string("the \"") + sign + "\" in it begins or ends a script of several lines";
    if (text.find(">") != std::string_view::npos)
        return "the \">\" in it ends it early";
    if (text.find('\n') != std::string_view::npos)
        return "the line break in it ends it early";
    if (text.find("__") != std::string_view::npos)
        return "the \"__\" in it joins its line with the next";
    if (text.empty())
        return "it is empty";
    return Quote(text) + " means something else there";
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
        Explore<GameModel>(game, [&game](GameModel part) {
            part.ErrorMessages = WithCatalogue(part.ErrorMessages, game.ErrorMessages);
            return ComesBack(part);
        });
    }

private:
    struct Step {
        const char* list;
        int entry;
        std::string label;
    };

    template <class Record>
    using Try = std::function<bool(Record)>;

    static Table<ErrorMessage> WithCatalogue(const Table<ErrorMessage>& part,
                                             const Table<ErrorMessage>& catalogue) {
        return part.IsEmpty() ? catalogue : part;
    }

    /// Reports the parts of a record that do not come back; the record itself if it is none of them alone.
    template <class Record>
    void Explore(const Record& record, const Try<Record>& comesBack) {
        const std::size_t before = places_.size();
        ForEachField<Record>([&](const char* name, auto field) {
            if (places_.size() < most_)
                TryField(record, name, field, comesBack);
        });
        if (places_.size() == before && !path_.empty())
            Report("", "it does not come back from the file as it is");
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
            if (!comesBack(part))
                Report(name, ReasonFor(value));
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
            path_.push_back({name, k, Label(entry)});
            if constexpr (std::is_same_v<Entry, std::string>)
                Report("", Reason(entry, false));
            else
                Explore<Entry>(entry, entryComesBack);
            path_.pop_back();
        }
    }

    std::string ReasonFor(const std::string& value) const {
        const bool isListed = !path_.empty() && (std::string_view(path_.back().list) == "item" ||
                                                 std::string_view(path_.back().list) == "collectable");
        return Reason(value, isListed);
    }
    std::string ReasonFor(const Shared<std::string>& value) const { return Reason(*value, false); }
    static std::string ReasonFor(const Shared<ScriptPair>& exit) {
        if (exit->Key.empty())
            return "its action is lost, because the exit leads nowhere";
        if (exit->Key == ActionExit && Trim(exit->Script).empty())
            return "it is to run an action, but there is none";
        return Reason(exit->Key + exit->Script, false);
    }
    template <class Value>
    static std::string ReasonFor(const Value& /*value*/) {
        return "it does not come back from the file as it is";
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
                              "Room " + room.Name +
                                  ": its characters and objects move to the last room of the same name"});
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
    if (places.empty())
        places.push_back({"", 0, "", 0, problem});
    return places;
}

} // namespace zem
