// Faults in scripts: names, words, signs and numbers.
#include "base/LineText.h"
#include "problems/Planting.h"

#include <algorithm>

namespace zem::test {

using problems::CheckedCall;
using problems::CheckedGame;

std::vector<FaultKind> ScriptFaults() {
    using G = GameModel;
    using S = Seeder;
    return {
        {"exit to a misspelt room",
         [](G& game, S& seeder) {
             const int room = PickRoom(game, seeder);
             for (const auto exit : Exits())
                 if (const std::string key = (game.Rooms[room].*exit)->Key;
                     key.size() > 2 && key != ActionExit) {
                     (game.Rooms.Edit(room).*exit).Edit().Key = seeder.Misspelt(key);
                     return true;
                 }
             return false;
         },
         nullptr},
        {"goto a misspelt room",
         [](G& g, S& s) {
             return MisspellPart(g, s, {"goto", "if in", "if been"}, 0);
         },
         nullptr},
        {"moved to a misspelt room",
         [](G& g, S& s) {
             return MisspellPart(g, s, {"move object", "move character"}, 1);
         },
         nullptr},
        {"misspelt object",
         [](G& g, S& s) {
             return MisspellPart(g, s, {"show", "hide", "move object"}, 0);
         },
         nullptr},
        {"misspelt character",
         [](G& g, S& s) {
             return MisspellPart(g, s, {"reveal", "conceal", "move character"}, 0);
         },
         nullptr},
        {"misspelt thing",
         [](G& g, S& s) {
             return MisspellPart(g, s, {"if here", "if visible", "bring"}, 0);
         },
         nullptr},
        {"misspelt item given",
         [](G& g, S& s) {
             return MisspellPart(g, s, {"give", "lose"}, 0);
         },
         nullptr},
        {"misspelt item asked", [](G& g, S& s) { return MisspellPart(g, s, {"if has"}, 0); }, nullptr},
        {"misspelt procedure", [](G& g, S& s) { return MisspellPart(g, s, {"do"}, 0); }, nullptr},
        {"misspelt procedure later",
         [](G& g, S& s) {
             return MisspellPart(g, s, {"after", "repeat"}, 1);
         },
         nullptr},
        {"misspelt text", [](G& g, S& s) { return MisspellPart(g, s, {"text"}, 0); }, nullptr},
        {"misspelt menu", [](G& g, S& s) { return MisspellPart(g, s, {"choose"}, 0); }, nullptr},
        {"misspelt collectable",
         [](G& g, S& s) {
             return MisspellPart(g, s, {"gain", "spend", "if amount"}, 0);
         },
         nullptr},
        {"misspelt flag asked", [](G& g, S& s) { return MisspellPart(g, s, {"if flag"}, 0); }, nullptr},
        {"misspelt flag set", [](G& g, S& s) { return MisspellPart(g, s, {"flag on"}, 0); }, nullptr},
        {"misspelt variable asked",
         [](G& g, S& s) {
             return MisspellPart(g, s, {"if equal", "if more", "if least"}, 0);
         },
         nullptr},
        {"misspelt variable printed",
         [](G& game, S& seeder) {
             const auto found = PickFound(game, seeder, LinesWith("", "#"));
             if (!found || std::count(found->text.begin(), found->text.end(), '#') != 2)
                 return false;
             const std::size_t begin = found->text.find('#') + 1;
             const std::string name = found->text.substr(begin, found->text.rfind('#') - begin);
             return name.size() > 2 && name.find(' ') == std::string::npos &&
                    Replace(game, *found, With(found->text, name, seeder.Misspelt(name)));
         },
         nullptr},
        {"capitals of a room",
         [](G& g, S& s) {
             return Capitals(g, s, {"goto", "if in"});
         },
         nullptr},
        {"capitals of an item",
         [](G& g, S& s) {
             return Capitals(g, s, {"give", "if has"});
         },
         nullptr},
        {"capitals of a procedure", [](G& g, S& s) { return Capitals(g, s, {"do"}); }, nullptr},
        {"misspelt command",
         [](G& game, S& seeder) {
             const auto found = PickFound(game, seeder, KeywordsOf(false));
             return found && Replace(game, *found, seeder.Misspelt(found->text));
         },
         nullptr},
        {"misspelt condition",
         [](G& game, S& seeder) {
             const auto found = PickFound(game, seeder, KeywordsOf(true));
             return found && Replace(game, *found, seeder.Misspelt(found->text));
         },
         nullptr},
        {"no closing bracket",
         [](G& g, S& s) {
             return SpoilLine(g, s, "msg", ">", [](std::string l) { return With(l, ">", ""); });
         },
         nullptr},
        {"no then",
         [](G& g, S& s) {
             return SpoilLine(g, s, "if", "> then ", [](std::string l) { return With(l, "> then ", "> "); });
         },
         nullptr},
        {"no if",
         [](G& g, S& s) {
             return SpoilLine(g, s, "if", " then ", [](std::string l) { return l.substr(3); });
         },
         nullptr},
        {"nothing after else",
         [](G& g, S& s) {
             return SpoilLine(g, s, "if", " else ",
                              [](std::string l) { return l.substr(0, l.find(" else ") + 5); });
         },
         nullptr},
        {"two commands on a line",
         [](G& g, S& s) {
             return SpoilLine(g, s, "hide", ">", [](std::string l) { return l + " msg <Gone.>"; });
         },
         nullptr},
        {"no brackets",
         [](G& g, S& s) {
             return SpoilLine(g, s, "do", "<", [](std::string l) { return With(With(l, "<", ""), ">", ""); });
         },
         nullptr},
        {"no blank before the bracket",
         [](G& g, S& s) {
             return SpoilLine(g, s, "msg", " <", [](std::string l) { return With(l, " <", "<"); });
         },
         nullptr},
        {"and mixed with or",
         [](G& g, S& s) {
             return SpoilLine(g, s, "if", "> and ",
                              [](std::string l) { return With(l, "> and ", "> or flag <x> and "); });
         },
         nullptr},
        {"a condition twice with not",
         [](G& g, S& s) {
             return SpoilLine(g, s, "if has", "> then ", [](std::string l) {
                 return With(l, "> then ", "> and not " + l.substr(3, l.find('>') - 2) + " then ");
             });
         },
         nullptr},
        {"then and else the same",
         [](G& g, S& s) {
             return SpoilLine(g, s, "if", " else ", [](std::string l) {
                 const std::size_t then = l.find(" then ") + 6;
                 const std::size_t otherwise = l.find(" else ");
                 return then > otherwise ? l : l.substr(0, otherwise + 6) + l.substr(then, otherwise - then);
             });
         },
         nullptr},
        {"a line after win",
         [](G& game, S&) {
             game.Procedures.Append({"the very end", "win\r\nmsg <You have won.>"});
             game.PlayerCommands.Append({"end everything", "do <the very end>"});
             return true;
         },
         nullptr},
        {"a chance above 100",
         [](G& game, S& seeder) {
             const auto found = PickFound(game, seeder, LinesWith("if chance", "<"));
             return found && Replace(game, *found, With(found->text, "<", "<1"));
         },
         nullptr},
        {"no number",
         [](G& game, S& seeder) {
             const auto found =
                 PickFound(game, seeder, [](const CheckedGame& checked, std::vector<Found>& all) {
                     for (const CheckedCall* call : checked.CallsOf("add"))
                         if (call->parts.size() == 2 && call->Part(1) == "1")
                             all.push_back({call->At(1), "1"});
                 });
             return found && Replace(game, *found, "l");
         },
         nullptr},
        {"too few parts",
         [](G& game, S& seeder) {
             const auto found =
                 PickFound(game, seeder, [](const CheckedGame& checked, std::vector<Found>& all) {
                     for (const std::string_view keyword :
                          {"add", "gain", "move object", "if amount", "if more"})
                         for (const CheckedCall* call : checked.CallsOf(keyword))
                             all.push_back(
                                 {call->line->At(call->call->parameter), std::string(call->Part(0))});
                 });
             return found && Replace(game, *found, found->text);
         },
         nullptr},
        {"a procedure that runs itself",
         [](G& game, S& seeder) {
             if (game.Procedures.IsEmpty())
                 return false;
             Procedure& procedure = game.Procedures.Edit(1 + seeder.Pick(game.Procedures.Count()));
             procedure.Script.insert(0, "do <" + procedure.Name + ">\r\n");
             return !procedure.Name.starts_with(InternalProcedure);
         },
         nullptr},
    };
}

} // namespace zem::test
