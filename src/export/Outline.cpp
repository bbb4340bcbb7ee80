#include "export/Outline.h"

#include "base/LineText.h"
#include "base/TextEncoding.h"
#include "game/References.h"
#include "game/ScriptOwners.h"
#include "kel/FormatCodes.h"
#include "kel/IfLine.h"
#include "map/MapGraph.h"
#include "merge/InlineScripts.h"

#include <algorithm>
#include <map>
#include <set>

namespace zem::exports {

namespace {

using UsedKey = std::pair<NameKind, std::string>; // the name in small letters

UsedKey KeyOf(NameKind kind, std::string_view name) {
    const bool isThing = kind == NameKind::Object || kind == NameKind::Character;
    return {isThing ? NameKind::Thing : kind, Lower(Trim(name))};
}

std::string Anchor(const char* kind, int number) {
    return std::string(kind) + "-" + std::to_string(number);
}

class OutlineMaker {
public:
    OutlineMaker(const GameModel& game, const CommandLookup& commands)
        : original_(game),
          inline_(merge::WithInlineScripts(game, 'x')),
          game_(inline_.game),
          commands_(commands) {
        int number = 0;
        for (const Room& room : game_.Rooms)
            rooms_[Lower(Trim(room.Name))] = ++number; // of several of one name the last, as in scripts
        FindUses();
    }

    Outline Run() {
        outline_.title = ToUtf8(Trim(game_.GameName).empty() ? "A game without a name" : game_.GameName);
        AddProperties();
        for (const int room : RoomsInOrder(original_))
            AddRoom(room);
        AddSections();
        std::sort(outline_.index.begin(), outline_.index.end(), [](const Link& a, const Link& b) {
            return std::pair(Lower(FromUtf8(a.text)), a.anchor) <
                   std::pair(Lower(FromUtf8(b.text)), b.anchor);
        });
        return std::move(outline_);
    }

private:
    // Who uses what

    void FindUses() {
        const ScriptOwners owners(original_); // no page shows internal procedures
        ForEachReference(original_, commands_, [&](const Reference& reference) {
            if (reference.role == ReferenceRole::Use && reference.kind != NameKind::Variable)
                uses_[KeyOf(reference.kind, reference.name)].insert(
                    UserOf(owners.Path(reference.place).front()));
        });
    }

    /// The part of the outline in which a place stands, so that it sorts in the order of the game.
    std::pair<int, int> UserOf(const Place& place) const {
        return {static_cast<int>(place.steps.front().list), place.steps.front().entry};
    }

    std::vector<Link> UsedBy(NameKind kind, std::string_view name) const {
        std::vector<Link> links;
        const auto found = uses_.find(KeyOf(kind, name));
        if (found == uses_.end())
            return links;
        for (const auto& [list, entry] : found->second)
            links.push_back(LinkTo(static_cast<FieldId>(list), entry));
        links.erase(std::unique(links.begin(), links.end()), links.end());
        return links;
    }

    Link LinkTo(FieldId list, int entry) const {
        switch (list) {
        case FieldId::GameRooms:
            return {ToUtf8(game_.Rooms[entry].Name), Anchor("room", entry)};
        case FieldId::GameProcedures:
            if (inline_
                    .inlined[static_cast<std::size_t>(entry)]) // of a script that is no script of the story
                return {"the game itself", "game"};
            return {ToUtf8("procedure " + game_.Procedures[entry].Name), Anchor("procedure", entry)};
        case FieldId::GameSelectionMenus:
            return {ToUtf8("menu " + game_.SelectionMenus[entry].Name), Anchor("menu", entry)};
        case FieldId::GameTextSections:
            return {ToUtf8("text " + game_.TextSections[entry].Name), Anchor("text", entry)};
        default:
            return {"the game itself", "game"};
        }
    }

    Link LinkToRoom(std::string_view name) const {
        const auto found = rooms_.find(Lower(Trim(name)));
        return {ToUtf8(name), found == rooms_.end() ? "" : Anchor("room", found->second)};
    }

    void AddToIndex(const std::string& name, const std::string& anchor) {
        if (!name.empty())
            outline_.index.push_back({name, anchor});
    }

    // Scripts

    std::vector<std::string> Script(const std::string& script) const {
        std::vector<std::string> lines;
        const std::string plain = merge::WithoutMarks(script);
        for (const std::string_view line : SplitAt(plain, "\r\n"))
            if (!Trim(line).empty())
                lines.push_back(
                    ToUtf8(commands_.Catalogue().IsEmpty() || line.ends_with('{') || line.starts_with('}')
                               ? std::string(line)
                               : DescribeLine(std::string(line), commands_)));
        return lines;
    }

    void AddScript(std::vector<Entry>& entries, const std::string& name, const std::string& script) const {
        if (!Trim(script).empty())
            entries.push_back({name, Script(script)});
    }

    template <class Pairs>
    void AddPairs(std::vector<Entry>& entries, const std::string& name, const Pairs& pairs) const {
        for (const ScriptPair& pair : pairs)
            entries.push_back({name + " " + ToUtf8(pair.Key), Script(pair.Script)});
    }

    static void AddText(std::vector<Entry>& entries, const std::string& name, std::string_view text) {
        if (!Trim(text).empty())
            entries.push_back({name, PlainLines(text)});
    }

    // Parts

    void AddProperties() {
        std::vector<Entry>& entries = outline_.properties;
        AddText(entries, "by", game_.GameAuthor);
        AddText(entries, "version", game_.GameVersion);
        AddText(entries, "copyright", game_.GameCopyright);
        AddText(entries, "about", game_.GameInfo);
        AddText(entries, "begins in", game_.StartRoom);
        AddText(entries, "the player starts with", StartItemsToText(game_));
    }

    /// What does not hang on the room.
    void AddAnywhere() {
        std::vector<Entry> entries;
        AddScript(entries, "at the start", game_.StartScript);
        AddScript(entries, "description", game_.GameDescription);
        AddScript(entries, "before each turn", game_.BeforeTurnScript);
        AddScript(entries, "after each turn", game_.AfterTurnScript);
        for (const PlayerCommand& command : game_.PlayerCommands)
            entries.push_back({"command " + ToUtf8(command.Pattern), Script(command.Script)});
        AddPairs(entries, "use", game_.GameUses);
        Section section{"Anywhere", "anywhere", {}};
        for (Entry& entry : entries)
            section.parts.push_back({std::move(entry.name),
                                     "anywhere-" + std::to_string(section.parts.size() + 1),
                                     std::move(entry.lines),
                                     {}});
        if (!section.parts.empty())
            outline_.sections.push_back(std::move(section));
    }

    void AddRoom(int number) {
        const Room& room = game_.Rooms[number];
        RoomPart part;
        part.name = ToUtf8(Trim(room.Name).empty() ? "a room without a name" : room.Name);
        part.anchor = Anchor("room", number);
        part.alias = ToUtf8(room.Alias);
        part.description = Trim(room.Look).empty() ? std::vector<std::string>() : PlainLines(room.Look);
        AddExits(part, room);
        AddScript(part.entries, "on entering", room.Script);
        AddScript(part.entries, "description", room.Description);
        AddPairs(part.entries, "command", room.Commands);
        AddPairs(part.entries, "use", room.Uses);
        part.people = Things("character", number, room.Characters);
        part.things = Things("object", number, room.Objects);
        part.usedBy = UsedBy(NameKind::Room, room.Name);
        AddToIndex(part.name, part.anchor);
        outline_.rooms.push_back(std::move(part));
    }

    void AddExits(RoomPart& part, const Room& room) const {
        if (!room.Out->Key.empty())
            part.exits.push_back({"out", LinkToRoom(room.Out->Key), Script(room.Out->Script)});
        for (const auto& [direction, exit] : CompassExits) {
            const ScriptPair& pair = *(room.*exit);
            if (pair.Key == ActionExit)
                part.exits.push_back({direction, {}, Script(pair.Script)});
            else if (!pair.Key.empty())
                part.exits.push_back({direction, LinkToRoom(pair.Key), {}});
        }
        for (const ScriptPair& place : room.Places) {
            const std::size_t semicolon = place.Key.find(';');
            const std::string_view name =
                std::string_view(place.Key).substr(semicolon == std::string::npos ? 0 : semicolon + 1);
            part.exits.push_back({"place", LinkToRoom(Trim(name)), Script(place.Script)});
        }
    }

    std::vector<ThingPart> Things(const char* kind, int room, const List<Thing>& things) {
        std::vector<ThingPart> parts;
        for (const Thing& thing : things) {
            ThingPart part;
            part.name = ToUtf8(Trim(thing.Name).empty() ? "nameless " + std::string(kind) : thing.Name);
            part.anchor = Anchor(kind, room) + "-" + std::to_string(parts.size() + 1);
            AddScript(part.entries, "look", thing.Look);
            AddScript(part.entries, "speak", thing.Speak);
            AddScript(part.entries, "take", thing.Take);
            AddPairs(part.entries, "use", thing.Uses);
            AddPairs(part.entries, "give", thing.Gives);
            part.usedBy = UsedBy(NameKind::Thing, thing.Name);
            AddToIndex(part.name, part.anchor);
            parts.push_back(std::move(part));
        }
        return parts;
    }

    void AddSections() {
        AddAnywhere();
        AddSection("Items", "items", game_.Items, "item", NameKind::Item,
                   [](const ItemEntry& item) -> std::vector<std::string> {
                       return item.IsStartItem ? std::vector<std::string>{"The player has it from the start."}
                                               : std::vector<std::string>();
                   });
        AddSection("Texts", "texts", game_.TextSections, "text", NameKind::TextSection,
                   [](const TextSection& text) { return PlainLines(text.Text); });
        AddSection("Menus", "menus", game_.SelectionMenus, "menu", NameKind::Menu,
                   [this](const SelectionMenu& menu) {
                       std::vector<std::string> lines = PlainLines(menu.Info);
                       for (const ScriptPair& choice : menu.Choices) {
                           lines.push_back("\xE2\x80\xA2 " + ToUtf8(FormatCodesToText(choice.Key, false)));
                           for (const std::string& line : Script(choice.Script))
                               lines.push_back("  " + line);
                       }
                       return lines;
                   });
        AddSection("Procedures", "procedures", game_.Procedures, "procedure", NameKind::Procedure,
                   [this](const Procedure& procedure) { return Script(procedure.Script); });
    }

    template <class Records, class LinesOf>
    void AddSection(const char* title, const char* anchor, const Records& records, const char* kind,
                    NameKind names, LinesOf linesOf) {
        Section section{title, anchor, {}};
        int number = 0;
        for (const auto& record : records) {
            ++number;
            const bool isInlined =
                names == NameKind::Procedure && inline_.inlined[static_cast<std::size_t>(number)];
            if (isInlined || Trim(record.Name).empty())
                continue;
            section.parts.push_back(
                {ToUtf8(record.Name), Anchor(kind, number), linesOf(record), UsedBy(names, record.Name)});
            AddToIndex(section.parts.back().name, section.parts.back().anchor);
        }
        if (!section.parts.empty())
            outline_.sections.push_back(std::move(section));
    }

    const GameModel& original_;
    merge::InlineGame inline_;
    const GameModel& game_;
    const CommandLookup& commands_;
    std::map<std::string, int> rooms_; // by name in small letters
    std::map<UsedKey, std::set<std::pair<int, int>>> uses_;
    Outline outline_;
};

} // namespace

Outline OutlineOf(const GameModel& game, const CommandLookup& commands) {
    return OutlineMaker(game, commands).Run();
}

std::vector<int> RoomsInOrder(const GameModel& game) {
    const map::MapGraph graph = map::ReadMapGraph(game);
    const auto count = static_cast<std::size_t>(graph.RoomCount());
    std::vector<std::vector<int>> ways(count);
    for (const map::Exit& exit : graph.exits)
        if (exit.to != map::NoRoom)
            ways[static_cast<std::size_t>(exit.from)].push_back(exit.to);
    for (const map::Tie& tie : graph.ties)
        ways[static_cast<std::size_t>(tie.from)].push_back(tie.to);

    std::vector<int> order;
    std::vector<bool> known(count, false);
    const auto visit = [&](int room) {
        if (!known[static_cast<std::size_t>(room)])
            order.push_back(room);
        known[static_cast<std::size_t>(room)] = true;
    };
    std::size_t next = 0;
    const auto follow = [&] {
        for (; next < order.size(); ++next)
            for (const int room : ways[static_cast<std::size_t>(order[next])])
                visit(room);
    };
    if (graph.start != map::NoRoom)
        visit(graph.start);
    follow();
    for (int room = 0; room < graph.RoomCount(); ++room) { // and what no way leads to from there
        visit(room);
        follow();
    }
    for (int& room : order)
        ++room;
    return order;
}

std::vector<std::string> PlainLines(std::string_view text) {
    std::vector<std::string> lines;
    const std::string broken = BarToCrLf(text);
    for (const std::string_view line : SplitAt(broken, "\r\n"))
        lines.push_back(ToUtf8(FormatCodesToText(line, false)));
    return lines;
}

} // namespace zem::exports
