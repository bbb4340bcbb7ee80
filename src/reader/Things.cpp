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

constexpr Keyword<Thing> CharacterRows[] = {
    {"look ", ScriptOrText<&Thing::Look>},         {"speak ", ScriptOrText<&Thing::Speak>},
    {"gender ", reads::Parameter<&Thing::Gender>}, {"prefix ", reads::Parameter<&Thing::Prefix>},
    {"suffix ", reads::Parameter<&Thing::Suffix>}, {"give ", reads::AppendPair<&Thing::Gives>},
    {"use ", reads::AppendPair<&Thing::Uses>},     {"'", reads::Nothing},
};

// Objects neither speak nor have a gender, and nothing is given to them: such lines are kept as they are.
constexpr Keyword<Thing> ObjectRows[] = {
    {"look ", ScriptOrText<&Thing::Look>},         {"take ", reads::Rest<&Thing::Take>},
    {"prefix ", reads::Parameter<&Thing::Prefix>}, {"suffix ", reads::Parameter<&Thing::Suffix>},
    {"use ", reads::AppendPair<&Thing::Uses>},     {"'", reads::Nothing},
};

using ThingKeywords = std::span<const Keyword<Thing>>;

void ReadThingLine(Thing& thing, ThingKeywords keywords, std::string_view line) {
    if (line == "hidden")
        thing.Hidden = true;
    else if (line == "invisible")
        thing.Invisible = true;
    else if (!ReadByKeyword<Thing>(keywords, thing, line))
        KeepLine(thing.MiscTags, line);
}

void ReadThingsOfRoom(Room& room, const SourceText& source, const BlockSpan& block) {
    Thing* thing = nullptr; // the one whose lines are being read
    ThingKeywords keywords;
    const auto startThing = [&](List<Thing>& things, ThingKeywords itsKeywords, std::string_view line) {
        const std::string_view name = GetParameter(line);
        thing = &things.Append();
        thing->Name = name;
        keywords = itsKeywords;
    };
    source.UseInnerLines(block, [&](std::string_view line) {
        if (thing != nullptr && BeginsWith(line, "end define"))
            thing = nullptr;
        else if (thing != nullptr)
            ReadThingLine(*thing, keywords, line);
        else if (BeginsWith(line, "define character"))
            startThing(room.Characters, CharacterRows, line);
        else if (BeginsWith(line, "define object"))
            startThing(room.Objects, ObjectRows, line);
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
        ReadThingsOfRoom(game.Rooms.Edit(lastByName.at(name)), source, block);
    });
}

} // namespace zem
