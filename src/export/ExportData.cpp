// The forms for programs: a table, data, a graph.
#include "base/TextEncoding.h"
#include "export/Export.h"
#include "export/Outline.h"
#include "map/MapGraph.h"
#include "model/Fields.h"

#include <nlohmann/json.hpp>

namespace zem::exports {

namespace {

using Json = nlohmann::ordered_json;

// JSON

Json ValueOf(const std::string& text) {
    return ToUtf8(text);
}
Json ValueOf(bool mark) {
    return mark;
}
Json ValueOf(std::int16_t number) {
    return number;
}
template <class Record>
Json ValueOf(const Shared<Record>& record);
template <RecordList Records>
Json ValueOf(const Records& list);

template <class Record>
Json ValueOf(const Record& record) {
    Json json = Json::object();
    ForEachField<Record>([&](const auto& field) { json[field.name] = ValueOf(record.*field.member); });
    return json;
}

template <class Record>
Json ValueOf(const Shared<Record>& record) {
    return ValueOf(*record);
}

template <RecordList Records>
Json ValueOf(const Records& list) {
    Json json = Json::array();
    for (const auto& record : list)
        json.push_back(ValueOf(record));
    return json;
}

// CSV

std::string Quoted(std::string_view value) {
    std::string quoted = "\"";
    for (const char c : ToUtf8(value))
        quoted.append(c == '"' ? 2 : 1, c);
    return quoted + "\"";
}

template <class Records>
std::string Names(const Records& records) {
    std::string names;
    for (const auto& record : records)
        names.append(names.empty() ? "" : "; ").append(record.Name);
    return names;
}

std::string KeysOf(const List<ScriptPair>& pairs) {
    std::string keys;
    for (const ScriptPair& pair : pairs)
        keys.append(keys.empty() ? "" : " / ").append(pair.Key);
    return keys;
}

// DOT

std::string DotText(std::string_view text) {
    std::string quoted = "\"";
    for (const char c : ToUtf8(text)) {
        if (c == '"' || c == '\\')
            quoted += '\\';
        if (static_cast<unsigned char>(c) >= ' ')
            quoted += c;
    }
    return quoted + "\"";
}

constexpr const char* DirectionNames[] = {"north", "northeast", "east", "southeast",
                                          "south", "southwest", "west", "northwest"};

} // namespace

std::string AsJson(const GameModel& game) {
    const Json json = {{"format", "zem-game"}, {"version", 1}, {"game", ValueOf(game)}};
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string AsCsv(const GameModel& game) {
    std::string csv = "name,alias,prefix,description,out";
    for (const CompassExit& exit : CompassExits)
        csv.append(",").append(exit.direction);
    csv += ",places,characters,objects\r\n";
    for (const int number : RoomsInOrder(game)) {
        const Room& room = game.Rooms[number];
        for (const std::string* value : {&room.Name, &room.Alias, &room.Prefix, &room.Look})
            csv += Quoted(*value) + ",";
        csv += Quoted(room.Out->Key);
        for (const auto& [direction, exit] : CompassExits)
            csv += "," + Quoted((room.*exit)->Key);
        csv += "," + Quoted(KeysOf(room.Places)) + "," + Quoted(Names(room.Characters)) + "," +
               Quoted(Names(room.Objects)) + "\r\n";
    }
    return csv;
}

std::string AsDot(const GameModel& game) {
    const map::MapGraph graph = map::ReadMapGraph(game);
    std::string dot = "digraph " + DotText(game.GameName) + " {\n  node [shape=box];\n";
    for (int room = 0; room < graph.RoomCount(); ++room)
        dot += "  r" + std::to_string(room + 1) +
               " [label=" + DotText(graph.names[static_cast<std::size_t>(room)]) +
               (room == graph.start ? ", penwidth=2" : "") + "];\n";
    const auto way = [&](int from, int to, const std::string& words, bool isScripted) {
        dot += "  r" + std::to_string(from + 1) + " -> r" + std::to_string(to + 1) +
               " [label=" + DotText(words) + (isScripted ? ", style=dashed" : "") + "];\n";
    };
    for (const map::Exit& exit : graph.exits)
        if (exit.to != map::NoRoom)
            way(exit.from, exit.to, DirectionNames[exit.direction], exit.scripted);
    for (const map::Tie& tie : graph.ties)
        way(tie.from, tie.to, tie.out ? "out" : tie.words, false);
    return dot + "}\n";
}

} // namespace zem::exports
