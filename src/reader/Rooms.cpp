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

constexpr Keyword<Room> RoomKeywords[] = {
    {"alias ", FieldId::RoomAlias, reads::Parameter<&Room::Alias>},
    {"look ", FieldId::RoomLook, reads::Parameter<&Room::Look>},
    {"out ", FieldId::RoomOut, ReadOutExit},
    {"north ", FieldId::RoomNorth, CompassExit<&Room::North>},
    {"south ", FieldId::RoomSouth, CompassExit<&Room::South>},
    {"east ", FieldId::RoomEast, CompassExit<&Room::East>},
    {"west ", FieldId::RoomWest, CompassExit<&Room::West>},
    {"northeast ", FieldId::RoomNorthEast, CompassExit<&Room::NorthEast>},
    {"northwest ", FieldId::RoomNorthWest, CompassExit<&Room::NorthWest>},
    {"southeast ", FieldId::RoomSouthEast, CompassExit<&Room::SouthEast>},
    {"southwest ", FieldId::RoomSouthWest, CompassExit<&Room::SouthWest>},
    {"place ", FieldId::RoomPlaces, reads::AppendPair<&Room::Places>},
    {"prefix ", FieldId::RoomPrefix, reads::Parameter<&Room::Prefix>},
    {"script ", FieldId::RoomScript, reads::Rest<&Room::Script>},
    {"indescription ", FieldId::RoomInDescription, reads::Parameter<&Room::InDescription>},
    {"description ", FieldId::RoomDescription, reads::Rest<&Room::Description>},
    {"command ", FieldId::RoomCommands, reads::AppendPair<&Room::Commands>},
    {"use ", FieldId::RoomUses, reads::AppendPair<&Room::Uses>},
    {"'", FieldId::None, reads::Nothing},
    {"end define", FieldId::None, reads::Nothing},
};

void ReadRoom(Room& room, const RecordNotes& notes, const BlockSpan& block) {
    bool inThing = false; // the lines of a character or object are for ReadThings
    notes.source.UseInnerLines(block, [&](std::string_view line, std::size_t index) {
        if (inThing)
            inThing = !BeginsWith(line, "end define");
        else if (BeginsWith(line, "define "))
            inThing = true;
        else if (!ReadByKeyword<Room>(RoomKeywords, room, line, notes, index) &&
                 KeepLine(room.MiscTags, line))
            notes.Field(FieldId::RoomMiscTags, index);
    });
}

} // namespace

void ReadRooms(GameModel& game, const SourceText& source) {
    source.UseBlocks(RoomKind, [&](const BlockSpan& block) {
        source.UseLine(block.FirstLine, [&](std::string_view line) {
            Room& room = game.Rooms.Append();
            room.Name = GetParameter(line);
            const RecordNotes notes{source, Place::Of({{FieldId::GameRooms, game.Rooms.Count()}})};
            notes.Record(block.FirstLine);
            ReadRoom(room, notes, block);
        });
    });
}

} // namespace zem
