#include "script/PrintGame.h"

#include "model/LineText.h"

#include <string_view>

namespace zem {

namespace {

class Listing {
public:
    /// Adds "  name: value" unless the value is empty.
    void Field(int indent, std::string_view name, std::string_view value) {
        if (value.empty())
            return;
        text_.append(static_cast<std::size_t>(indent) * 2, ' ').append(name).append(": ");
        text_.append(Trim(CrLfToBar(value))).append("\n");
    }

    void Line(std::string_view line) { text_.append(line).append("\n"); }

    std::string Take() { return std::move(text_); }

private:
    std::string text_;
};

/// A destination, a script, or "destination, then script".
std::string Describe(const ScriptPair& pair) {
    if (pair.Key == ActionExit)
        return "does " + pair.Script;
    return pair.Script.empty() ? pair.Key : pair.Key + ", then " + pair.Script;
}

void PrintProperties(Listing& listing, const GameModel& game) {
    listing.Line(game.GameName.empty() ? "(a game without a name)" : game.GameName);
    listing.Field(1, "author", game.GameAuthor);
    listing.Field(1, "version", game.GameVersion);
    listing.Field(1, "copyright", game.GameCopyright);
    listing.Field(1, "about", game.GameInfo);
    listing.Field(1, "start room", game.StartRoom);
    if (!(game.Items.Count() == 1 && game.Items[1].Name.empty()))
        listing.Field(1, "items", ItemsToText(game));
    listing.Field(1, "the player starts with", StartItemsToText(game));
    listing.Field(1, "collectables", CollectablesToText(game));
}

void PrintExits(Listing& listing, const Room& room) {
    const auto exit = [&](std::string_view direction, const ScriptPair& pair) {
        if (!pair.Key.empty())
            listing.Field(1, direction, Describe(pair));
    };
    exit("out", *room.Out);
    exit("north", *room.North);
    exit("south", *room.South);
    exit("east", *room.East);
    exit("west", *room.West);
    exit("northwest", *room.NorthWest);
    exit("northeast", *room.NorthEast);
    exit("southwest", *room.SouthWest);
    exit("southeast", *room.SouthEast);
    for (const ScriptPair& place : room.Places)
        listing.Field(1, "place", Describe(place));
}

void PrintThings(Listing& listing, std::string_view kind, const Table<Thing>& things) {
    for (const Thing& thing : things) {
        std::string name = thing.Prefix.empty() ? thing.Name : thing.Prefix + " " + thing.Name;
        if (thing.Name.empty())
            name += "(without a name)";
        name += thing.Hidden ? " (hidden)" : "";
        name += thing.Invisible ? " (invisible)" : "";
        listing.Field(1, kind, name);
        listing.Field(2, "look", thing.Look);
        listing.Field(2, "speak", thing.Speak);
        listing.Field(2, "take", thing.Take);
    }
}

void PrintRoom(Listing& listing, const Room& room) {
    listing.Line("");
    listing.Line("Room " + room.Name + (room.Alias.empty() ? "" : " [" + room.Alias + "]"));
    listing.Field(1, "look", room.Look);
    PrintExits(listing, room);
    PrintThings(listing, "character", room.Characters);
    PrintThings(listing, "object", room.Objects);
}

} // namespace

std::string PrintGame(const GameModel& game) {
    Listing listing;
    PrintProperties(listing, game);
    for (const Room& room : game.Rooms)
        PrintRoom(listing, room);
    return listing.Take();
}

} // namespace zem
