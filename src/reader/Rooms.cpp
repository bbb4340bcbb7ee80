#include "reader/BlockReaders.h"
#include "reader/Keywords.h"

#include <string_view>

namespace zem {

namespace {

/// A destination in brackets directly after the keyword, or else a script that runs instead of leading
/// anywhere.
template <auto Exit>
constexpr auto CompassExit = [](Room& room, std::string_view line, std::string_view word) {
    const std::string_view rest = TextAfter(line, word);
    if (rest.starts_with('<'))
        room.*Exit = ScriptPair{std::string(GetParameter(line)), ""};
    else
        room.*Exit = ScriptPair{ActionExit, std::string(rest)};
};

void ReadOutExit(Room& room, std::string_view line, std::string_view /*word*/) {
    room.Out.Edit().Key = GetParameter(line);
    const std::string_view script = TextAfterParameter(line);
    // A further "out" line without a script keeps the script of the one before.
    if (!script.empty())
        room.Out.Edit().Script = script;
}

constexpr Keyword<Room> RoomRows[] = {
    {"alias ", reads::Parameter<&Room::Alias>},
    {"look ", reads::Parameter<&Room::Look>},
    {"out ", ReadOutExit},
    {"north ", CompassExit<&Room::North>},
    {"south ", CompassExit<&Room::South>},
    {"east ", CompassExit<&Room::East>},
    {"west ", CompassExit<&Room::West>},
    {"northeast ", CompassExit<&Room::NorthEast>},
    {"northwest ", CompassExit<&Room::NorthWest>},
    {"southeast ", CompassExit<&Room::SouthEast>},
    {"southwest ", CompassExit<&Room::SouthWest>},
    {"place ", reads::AppendPair<&Room::Places>},
    {"prefix ", reads::Parameter<&Room::Prefix>},
    {"script ", reads::Rest<&Room::Script>},
    {"indescription ", reads::Parameter<&Room::InDescription>},
    {"description ", reads::Rest<&Room::Description>},
    {"command ", reads::AppendPair<&Room::Commands>},
    {"use ", reads::AppendPair<&Room::Uses>},
    {"'", reads::Nothing},
    {"end define", reads::Nothing},
};

void ReadRoom(Room& room, const SourceText& source, const BlockSpan& block) {
    bool inThing = false; // the lines of a character or object are for ReadThings
    source.UseInnerLines(block, [&](std::string_view line) {
        if (inThing)
            inThing = !BeginsWith(line, "end define");
        else if (BeginsWith(line, "define "))
            inThing = true;
        else if (!ReadByKeyword<Room>(RoomRows, room, line))
            KeepLine(room.MiscTags, line);
    });
}

} // namespace

void ReadRooms(GameModel& game, const SourceText& source) {
    source.UseBlocks(RoomKind, [&](const BlockSpan& block) {
        source.UseLine(block.FirstLine, [&](std::string_view line) {
            Room& room = game.Rooms.Append();
            room.Name = GetParameter(line);
            ReadRoom(room, source, block);
        });
    });
}

} // namespace zem
