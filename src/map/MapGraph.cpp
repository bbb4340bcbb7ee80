#include "map/MapGraph.h"

#include "base/LineText.h"
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
        Exit read{from, NoRoom, DirectionOf(direction), exit.Key == ActionExit, exit.Key};
        if (read.scripted)
            read.target = OnlyGoto(exit.Script);
        read.to = Find(read.target);
        graph_.exits.push_back(std::move(read));
    }

    void ReadTie(int from, std::string_view name, const std::string& words, bool out) {
        const int to = Find(name);
        if (to != NoRoom && to != from)
            graph_.ties.push_back({from, to, out, words});
    }

    /// The one room that the script goes to; empty when it goes to none or to several.
    std::string OnlyGoto(std::string_view script) const {
        constexpr std::string_view Do = "do <";
        std::string found = OnlyGotoOf(script);
        const std::string_view line = Trim(script);
        if (!found.empty() || !BeginsWith(line, Do))
            return found;
        const std::size_t close = line.find('>');
        const auto procedure = close == std::string_view::npos
                                   ? procedures_.end()
                                   : procedures_.find(line.substr(Do.size(), close - Do.size()));
        return procedure == procedures_.end() ? found : OnlyGotoOf(procedure->second);
    }

    std::string OnlyGotoOf(std::string_view script) const {
        constexpr std::string_view Goto = "goto <";
        std::string_view only;
        for (std::size_t at = script.find(Goto); at != std::string_view::npos;
             at = script.find(Goto, at + 1)) {
            const std::size_t name = at + Goto.size();
            const std::size_t close = script.find('>', name);
            if (close == std::string_view::npos)
                break;
            const std::string_view target = script.substr(name, close - name);
            if (Find(target) == NoRoom || target == only)
                continue;
            if (!only.empty())
                return "";
            only = target;
        }
        return std::string(only);
    }

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

MapGraph ReadMapGraph(const GameModel& game) {
    return GraphReader(game).Read();
}

} // namespace zem::map
