#pragma once

#include "kel/CommandLookup.h"
#include "model/GameModel.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// What the printed forms of a game have in common: its parts in the order of reading, all text in UTF-8.
namespace zem::exports {

/// Words that lead to a part of the outline.
struct Link {
    std::string text;
    std::string anchor; // empty where it leads nowhere

    auto operator<=>(const Link&) const = default;
};

/// A field with its lines: an action in plain English, a description.
struct Entry {
    std::string name;
    std::vector<std::string> lines;
};

struct ThingPart {
    std::string name;
    std::string anchor;
    std::vector<Entry> entries;
    std::vector<Link> usedBy;
};

struct ExitPart {
    std::string name; // "north", "out", "place"
    Link to;
    std::vector<std::string> script; // what happens on the way, or instead of it
};

struct RoomPart {
    std::string name;
    std::string anchor;
    std::string alias;
    std::vector<std::string> description; // paragraphs
    std::vector<ExitPart> exits;
    std::vector<Entry> entries;
    std::vector<ThingPart> people;
    std::vector<ThingPart> things;
    std::vector<Link> usedBy;
};

/// A text block, a menu, a procedure or an item.
struct OtherPart {
    std::string name;
    std::string anchor;
    std::vector<std::string> lines;
    std::vector<Link> usedBy;
};

struct Section {
    std::string title;
    std::string anchor;
    std::vector<OtherPart> parts;
};

struct Outline {
    std::string title;
    std::vector<Entry> properties;
    std::vector<RoomPart>
        rooms; // as one comes to them from the start room, the nearest first; then the others
    std::vector<Section> sections;
    std::vector<Link> index; // sorted by their words
};

/// The same for the same game, whatever its file is called.
Outline OutlineOf(const GameModel& game, const CommandLookup& commands);

/// The rooms, from 1, in the order of the outline.
std::vector<int> RoomsInOrder(const GameModel& game);

/// Printed text without format codes; each line break of the game begins a new line.
std::vector<std::string> PlainLines(std::string_view text);

} // namespace zem::exports
