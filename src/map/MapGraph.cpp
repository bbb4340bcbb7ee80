#include "map/MapGraph.h"

#include "base/LineText.h"
#include "kel/ScriptLine.h"
#include "model/GameModel.h"

#include <charconv>
#include <string_view>
#include <unordered_map>

namespace zem::map {

namespace {

/// Reads all of the text, blanks around it aside, as a whole number that can be a place.
std::optional<int> WholeCell(std::string_view text) {
    text = Trim(text);
    if (text.starts_with('+'))
        text.remove_prefix(1);
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || std::abs(value) > MaxPin)
        return std::nullopt;
    return value;
}

std::optional<Cell> PinOfLine(std::string_view line) {
    if (!BeginsWith(line, PinKeyword))
        return std::nullopt;
    const std::size_t open = line.find('<');
    const std::size_t close = line.find('>');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open)
        return std::nullopt;
    const std::vector<std::string_view> parts = SplitAt(line.substr(open + 1, close - open - 1), ";");
    if (parts.size() != 2)
        return std::nullopt;
    const std::optional<int> x = WholeCell(parts[0]);
    const std::optional<int> y = WholeCell(parts[1]);
    if (!x || !y)
        return std::nullopt;
    return Cell{*x, *y};
}

/// The name of a place without its prefix.
std::string_view NameOfPlace(std::string_view key) {
    const std::size_t semicolon = key.find(';');
    return Trim(semicolon == std::string_view::npos ? key : key.substr(semicolon + 1));
}

class GraphReader {
public:
    explicit GraphReader(const GameModel& game) : game_(game) {
        for (const Room& room : game.Rooms) {
            rooms_.insert_or_assign(room.Name, graph_.RoomCount());
            graph_.names.push_back(room.Name);
            graph_.pins.push_back(PinOf(room.MiscTags));
        }
        for (const Procedure& procedure : game.Procedures)
            procedures_.insert_or_assign(procedure.Name, procedure.Script);
    }

    MapGraph Read() {
        graph_.start = Find(game_.StartRoom);
        int from = 0;
        for (const Room& room : game_.Rooms) {
            for (const CompassExit& exit : CompassExits)
                ReadExit(from, exit.direction, *(room.*exit.exit));
            if (!room.Out->Key.empty()) // a room without a name is none that an empty exit leads to
                ReadTie(from, room.Out->Key, room.Out->Key, true);
            for (const ScriptPair& place : room.Places)
                ReadTie(from, NameOfPlace(place.Key), place.Key, false);
            ++from;
        }
        return std::move(graph_);
    }

private:
    int Find(std::string_view name) const {
        const auto found = rooms_.find(name);
        return found == rooms_.end() ? NoRoom : found->second;
    }

    static Direction DirectionOf(std::string_view word) {
        static constexpr std::string_view Words[] = {"north", "northeast", "east", "southeast",
                                                     "south", "southwest", "west", "northwest"};
        return static_cast<Direction>(std::find(std::begin(Words), std::end(Words), word) - Words);
    }

    void ReadExit(int from, const char* direction, const ScriptPair& exit) {
        if (exit.Key.empty())
            return;
        Exit read{from, NoRoom, DirectionOf(direction), exit.Key == ActionExit, exit.Key, {}};
        if (read.scripted) {
            read.targets = RoomsOf(exit.Script);
            read.condition = ConditionOf(exit.Script);
            read.target = read.targets.size() == 1 ? graph_.names[read.targets.front()] : std::string();
        }
        read.to = Find(read.target);
        graph_.exits.push_back(std::move(read));
    }

    void ReadTie(int from, std::string_view name, const std::string& words, bool out) {
        const int to = Find(name);
        if (to != NoRoom && to != from)
            graph_.ties.push_back({from, to, out, words});
    }

    /// The rooms to which the script may go, by itself or by a procedure that it calls.
    std::vector<int> RoomsOf(std::string_view script) const {
        std::vector<int> rooms;
        std::vector<std::string_view> called;
        AddRooms(script, rooms, &called);
        for (const std::string_view procedure : called)
            if (const auto found = procedures_.find(procedure); found != procedures_.end())
                AddRooms(found->second, rooms, nullptr);
        return rooms;
    }

    /// The first condition of the script, or of a procedure that it calls.
    std::string ConditionOf(std::string_view script) const {
        std::string condition = FirstCondition(script);
        std::vector<int> rooms;
        std::vector<std::string_view> called;
        AddRooms(script, rooms, &called);
        for (const std::string_view procedure : called)
            if (const auto found = procedures_.find(procedure);
                condition.empty() && found != procedures_.end())
                condition = FirstCondition(found->second);
        return condition;
    }

    std::string FirstCondition(std::string_view script) const {
        std::string condition;
        ForEachLine(script, [&](TextRange range, int) {
            const std::string_view line = range.Of(script);
            const ScriptLine apart = TakeApart(line, noCatalogue_);
            if (!condition.empty() || apart.actions.empty() || !apart.actions.front().IsIf())
                return;
            const ScriptAction& action = apart.actions.front();
            const ScriptCondition& first = apart.conditions[action.firstCondition];
            condition = (first.isNegated ? "not " : "") + std::string(first.call.keyword.Of(line));
            if (first.call.hasParameter)
                condition += ' ' + std::string(first.call.parameter.Of(line));
            if (action.conditionCount > 1)
                condition += " ...";
        });
        return condition;
    }

    /// @param called  gets the procedures that the script calls
    void AddRooms(std::string_view script, std::vector<int>& rooms,
                  std::vector<std::string_view>* called) const {
        ForEachLine(script, [&](TextRange range, int) {
            const std::string_view line = range.Of(script);
            ForEachCall(TakeApart(line, noCatalogue_), [&](const ScriptCall& call) {
                if (!call.hasParameter)
                    return;
                const std::string_view keyword = call.keyword.Of(line);
                const std::string_view name = call.parameter.Of(line);
                if (EqualIgnoringCase(keyword, "do") && called != nullptr)
                    called->push_back(name);
                const int room = EqualIgnoringCase(keyword, "goto") ? Find(name) : NoRoom;
                if (room != NoRoom && std::find(rooms.begin(), rooms.end(), room) == rooms.end())
                    rooms.push_back(room);
            });
        });
    }

    CommandLookup noCatalogue_{CommandCatalogue()}; // the two words that are asked for are known without one
    const GameModel& game_;
    MapGraph graph_;
    std::unordered_map<std::string_view, int> rooms_;
    std::unordered_map<std::string_view, std::string_view> procedures_;
};

} // namespace

std::optional<Cell> PinOf(const std::string& miscTags) {
    std::optional<Cell> pin;
    if (miscTags.find('<') == std::string::npos)
        return pin;
    for (const std::string_view line : SplitAt(miscTags, "\r\n"))
        if (const std::optional<Cell> read = PinOfLine(line))
            pin = read;
    return pin;
}

std::string WithPin(const std::string& miscTags, std::optional<Cell> pin) {
    std::string tags;
    for (std::size_t begin = 0; begin < miscTags.size();) {
        const std::size_t lineEnd = miscTags.find("\r\n", begin);
        const std::size_t end = lineEnd == std::string::npos ? miscTags.size() : lineEnd + 2;
        const std::string_view line = std::string_view(miscTags).substr(begin, end - begin);
        if (!PinOfLine(Trim(line.substr(0, line.find("\r\n")))))
            tags += line;
        begin = end;
    }
    if (!pin)
        return tags;
    if (!tags.empty() && !tags.ends_with("\r\n"))
        tags += "\r\n";
    return tags + PinKeyword + '<' + std::to_string(pin->x) + "; " + std::to_string(pin->y) + ">\r\n";
}

MapGraph ReadMapGraph(const GameModel& game) {
    return GraphReader(game).Read();
}

} // namespace zem::map
