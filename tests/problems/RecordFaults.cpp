// Faults in records: what is there twice, not at all, or not as it should be.
#include "base/LineText.h"
#include "problems/Planting.h"

#include <algorithm>

namespace zem::test {

std::vector<FaultKind> RecordFaults() {
    using G = GameModel;
    using S = Seeder;
    return {
        {"two rooms of one name",
         [](G& g, S& s) {
             g.Rooms.Append().Name = g.Rooms[PickRoom(g, s)].Name;
             return true;
         },
         nullptr},
        {"two objects of one name",
         [](G& game, S& seeder) {
             const auto all = Objects(game, [](const Thing&) { return true; });
             if (all.empty())
                 return false;
             const auto [room, k] = seeder.PickOf(all);
             AddObject(game, room, game.Rooms[room].Objects[k].Name);
             return true;
         },
         nullptr},
        {"two procedures of one name",
         [](G& game, S& seeder) {
             if (game.Procedures.IsEmpty())
                 return false;
             game.Procedures.Append(
                 {game.Procedures[1 + seeder.Pick(game.Procedures.Count())].Name, "msg <Two.>"});
             return true;
         },
         nullptr},
        {"an item twice",
         [](G& game, S& seeder) {
             if (game.Items.IsEmpty())
                 return false;
             const ItemEntry item = game.Items[1 + seeder.Pick(game.Items.Count())];
             game.Items.Append(item);
             return true;
         },
         nullptr},
        {"a command twice",
         [](G& game, S& seeder) {
             if (game.PlayerCommands.IsEmpty())
                 return false;
             const PlayerCommand command = game.PlayerCommands[1 + seeder.Pick(game.PlayerCommands.Count())];
             game.PlayerCommands.Append({command.Pattern, "msg <Two.>"});
             return true;
         },
         nullptr},
        {"a use rule twice",
         [](G& game, S&) {
             if (game.GameUses.IsEmpty())
                 return false;
             game.GameUses.Append({game.GameUses[1].Key, "msg <Two.>"});
             return true;
         },
         nullptr},
        {"a start room that is not there",
         [](G& game, S& seeder) {
             game.StartRoom = seeder.Pick(2) == 0 ? "" : seeder.Misspelt(game.StartRoom);
             return true;
         },
         nullptr},
        {"a room to which nothing leads", [](G& g, S& s) { return UnlinkRoom(g, s, true); }, nullptr},
        {"a room from which nothing leads", [](G& g, S& s) { return UnlinkRoom(g, s, false); }, nullptr},
        {"an exit to the room itself",
         [](G& game, S& seeder) {
             Room& room = game.Rooms.Edit(PickRoom(game, seeder));
             room.NorthWest = ScriptPair{room.Name, ""};
             return true;
         },
         nullptr},
        {"an item that nothing gives",
         [](G& game, S&) {
             game.Items.Append({"wooden spoon", false});
             game.PlayerCommands.Append(
                 {"stir", "if has <wooden spoon> then msg <You stir.> else msg <With what?>"});
             return true;
         },
         nullptr},
        {"a hidden object that nothing shows",
         [](G& game, S& seeder) {
             AddObject(game, PickRoom(game, seeder), "wooden spoon").Hidden = true;
             return true;
         },
         nullptr},
        {"taking that leaves the object there",
         [](G& game, S& seeder) {
             const auto found = PickFound(game, seeder, LinesWith("hide", "<"));
             return found && Replace(game, *found, "line");
         },
         nullptr},
        {"a room without a description",
         [](G& game, S& seeder) {
             Room& room = game.Rooms.Edit(PickRoom(game, seeder));
             room.Look.clear();
             return room.Description.empty();
         },
         nullptr},
        {"an empty procedure",
         [](G& game, S& seeder) {
             if (game.Procedures.IsEmpty())
                 return false;
             game.Procedures.Edit(1 + seeder.Pick(game.Procedures.Count())).Script.clear();
             return true;
         },
         nullptr},
        {"a menu without choices",
         [](G& game, S& seeder) {
             if (game.SelectionMenus.IsEmpty())
                 return false;
             game.SelectionMenus.Edit(1 + seeder.Pick(game.SelectionMenus.Count())).Choices.Clear();
             return true;
         },
         nullptr},
        {"a procedure that nothing runs",
         [](G& g, S&) {
             g.Procedures.Append({"leftover", "msg <Old.>"});
             return true;
         },
         nullptr},
        {"a text that nothing prints",
         [](G& g, S&) {
             g.TextSections.Append({"leftover", "Old."});
             return true;
         },
         nullptr},
        {"an empty pattern",
         [](G& g, S&) {
             g.PlayerCommands.Append({"", "msg <What?>"});
             return true;
         },
         nullptr},
        {"a pattern with an odd sign",
         [](G& g, S&) {
             g.PlayerCommands.Append({"sing #song", "msg <La.>"});
             return true;
         },
         nullptr},
        {"a pattern that another takes",
         [](G& game, S&) {
             game.PlayerCommands.Append({"murmur #words#", "msg <You murmur: #words#.>"});
             game.PlayerCommands.Append({"murmur a prayer", "msg <Amen.>"});
             return true;
         },
         nullptr},
        {"a word replaced by itself",
         [](G& g, S&) {
             g.Synonyms.Append({"sing; hum", "hum"});
             return true;
         },
         nullptr},
        {"two replacements for a word",
         [](G& game, S&) {
             game.Synonyms.Append({"sing; hum", "whistle"});
             game.Synonyms.Append({"hum", "buzz"});
             return true;
         },
         nullptr},
        {"a place with two semicolons",
         [](G& game, S& seeder) {
             game.Rooms.Edit(PickRoom(game, seeder)).Places.Append({"the; old; " + game.Rooms[1].Name, ""});
             return true;
         },
         nullptr},
        {"a collectable upside down",
         [](G& g, S&) {
             g.Collectables.Append({"heat 40r0=5 [! degrees]", "heat"});
             return true;
         },
         nullptr},
        {"a picture that is not there",
         [](G& g, S&) {
             g.PlayerCommands.Append({"look at map", "picture <no-such-map.png>"});
             return true;
         },
         nullptr},
        {"an unknown format code",
         [](G& g, S& s) { return SpoilText(g, s, [](const std::string& t) { return "|B" + t; }); }, nullptr},
        {"a size of one digit",
         [](G& g, S& s) { return SpoilText(g, s, [](const std::string& t) { return "|s9" + t; }); }, nullptr},
        {"letters spoiled by another encoding",
         [](G& g, S& s) { return SpoilText(g, s, [](const std::string& t) { return t + " Caf\xC3\xA9."; }); },
         nullptr},
        {"a control character",
         [](G& g, S& s) { return SpoilText(g, s, [](const std::string& t) { return t + '\x07'; }); },
         nullptr},
        {"a word twice",
         [](G& g, S& s) {
             return SpoilText(g, s, [](const std::string& t) { return With(t, " the ", " the the "); });
         },
         nullptr},
        {"a name misspelt inside itself",
         [](G& game, S& seeder) {
             const auto all = Objects(game, [](const Thing& thing) {
                 return thing.Name.size() > 5 && thing.Name.find(' ') == std::string::npos;
             });
             if (all.empty())
                 return false;
             const auto [room, k] = seeder.PickOf(all);
             if (!IsInScripts(game, game.Rooms[room].Objects[k].Name))
                 return false;
             Thing& thing = game.Rooms.Edit(room).Objects.Edit(k);
             thing.Name = seeder.Misspelt(thing.Name);
             return true;
         },
         nullptr},
    };
}

} // namespace zem::test
