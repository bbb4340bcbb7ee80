#include "reader/BlockReaders.h"
#include "reader/Keywords.h"

#include <span>
#include <string_view>
#include <unordered_map>

namespace zem {

namespace {

/// A text in brackets becomes a script line that prints it, so that the model always holds a script line.
template <auto Field>
constexpr auto ScriptOrText = [](Thing& thing, std::string_view line, std::string_view word) {
    const std::string_view rest = TextAfter(line, word);
    if (rest.starts_with('<'))
        thing.*Field =
            std::string(word == "speak " ? "say <" : "msg <").append(GetParameter(line)).append(">");
    else
        thing.*Field = Trim(rest);
};

constexpr Keyword<Thing> CharacterKeywords[] = {
    {"look ", FieldId::ThingLook, ScriptOrText<&Thing::Look>},
    {"speak ", FieldId::ThingSpeak, ScriptOrText<&Thing::Speak>},
    {"gender ", FieldId::ThingGender, reads::Parameter<&Thing::Gender>},
    {"prefix ", FieldId::ThingPrefix, reads::Parameter<&Thing::Prefix>},
    {"suffix ", FieldId::ThingSuffix, reads::Parameter<&Thing::Suffix>},
    {"give ", FieldId::ThingGives, reads::AppendPair<&Thing::Gives>},
    {"use ", FieldId::ThingUses, reads::AppendPair<&Thing::Uses>},
    {"'", FieldId::None, reads::Nothing},
};

// Objects neither speak nor have a gender, and nothing is given to them: such lines are kept as they are.
constexpr Keyword<Thing> ObjectKeywords[] = {
    {"look ", FieldId::ThingLook, ScriptOrText<&Thing::Look>},
    {"take ", FieldId::ThingTake, reads::Rest<&Thing::Take>},
    {"prefix ", FieldId::ThingPrefix, reads::Parameter<&Thing::Prefix>},
    {"suffix ", FieldId::ThingSuffix, reads::Parameter<&Thing::Suffix>},
    {"use ", FieldId::ThingUses, reads::AppendPair<&Thing::Uses>},
    {"'", FieldId::None, reads::Nothing},
};

using ThingKeywords = std::span<const Keyword<Thing>>;

void ReadThingLine(Thing& thing, ThingKeywords keywords, std::string_view line, const RecordNotes& notes,
                   std::size_t index) {
    if (line == "hidden")
        thing.Hidden = true;
    else if (line == "invisible")
        thing.Invisible = true;
    else if (!ReadByKeyword<Thing>(keywords, thing, line, notes, index) && KeepLine(thing.MiscTags, line))
        notes.Field(FieldId::ThingMiscTags, index);
}

void ReadThingsOfRoom(Room& room, const RecordNotes& roomNotes, const BlockSpan& block) {
    Thing* thing = nullptr; // the one whose lines are being read
    ThingKeywords keywords;
    RecordNotes notes = {roomNotes.source, {}};
    const auto startThing = [&](List<Thing>& things, FieldId list, ThingKeywords itsKeywords,
                                std::string_view line) {
        const std::string_view name = GetParameter(line);
        thing = &things.Append();
        thing->Name = name;
        keywords = itsKeywords;
        notes.record = roomNotes.Entry(list, things.Count());
    };
    roomNotes.source.UseInnerLines(block, [&](std::string_view line, std::size_t index) {
        if (thing != nullptr && BeginsWith(line, "end define")) {
            thing = nullptr;
        } else if (thing != nullptr) {
            ReadThingLine(*thing, keywords, line, notes, index);
        } else if (BeginsWith(line, "define character")) {
            startThing(room.Characters, FieldId::RoomCharacters, CharacterKeywords, line);
            notes.Record(index);
        } else if (BeginsWith(line, "define object")) {
            startThing(room.Objects, FieldId::RoomObjects, ObjectKeywords, line);
            notes.Record(index);
        }
    });
}

} // namespace

void ReadThings(GameModel& game, const SourceText& source) {
    std::unordered_map<std::string_view, int> lastByName;
    int k = 0;
    for (const Room& room : game.Rooms)
        lastByName[room.Name] = ++k;

    source.UseBlocks(RoomWithThingsKind, [&](const BlockSpan& block) {
        const std::string_view name = GetParameter(source.Line(block.FirstLine));
        const int room = lastByName.at(name);
        ReadThingsOfRoom(game.Rooms.Edit(room), {source, Place::Of({{FieldId::GameRooms, room}})}, block);
    });
}

} // namespace zem
