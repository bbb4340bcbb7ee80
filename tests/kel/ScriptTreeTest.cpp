#include "kel/ScriptTree.h"

#include "base/LineText.h"
#include "kel/CommandGroups.h"
#include "kel/ScriptRows.h"
#include "kel/TypedLine.h"
#include "support/CaseFile.h"
#include "support/Cases.h"
#include "support/Catalogue.h"

#include <gtest/gtest.h>
#include <set>

namespace zem::test {
namespace {

GameModel TreeGame() {
    GameModel game;
    game.NextInternalProcedure = 9;
    game.Procedures.Append({"~Internal Procedure 1", "msg <a>\r\nmsg <b>\r\n"});
    game.Procedures.Append({"~Internal Procedure 2", "msg <again>\r\ndo <~Internal Procedure 2>"});
    game.Procedures.Append({"~Internal Procedure 3", ""});
    game.Procedures.Append({"ring", "sound <bell>\r\nif has <x> then do <~Internal Procedure 1>\r\n"});
    return game;
}

std::string WayOf(const ScriptPath& path) {
    std::string way = "@";
    for (const ScriptStep& step : path)
        way.append(std::to_string(step.line))
            .append(std::string(step.branch != Branch::None, " tec"[static_cast<int>(step.branch)]));
    return way;
}

std::string RowsText(const std::vector<ScriptRow>& rows) {
    std::string text;
    for (const ScriptRow& row : rows)
        text.append(text.empty() ? "" : "\n")
            .append(static_cast<std::size_t>(row.indent) * 2, ' ')
            .append(row.Text())
            .append(" ")
            .append(WayOf(row.path));
    return text;
}

TEST(ScriptTree, ShowsWholeScriptsAsRows) {
    const GameModel game = TreeGame();
    const CommandLookup commands(ShippedCatalogue());
    for (const auto& [script, rows] : CasesIn<2>("script-rows")) {
        const std::vector<ScriptRow> made = RowsOfScript(game, script, commands);
        EXPECT_EQ(RowsText(made), rows) << script;
        // Every row that has a way leads to a line of the script.
        for (const ScriptRow& row : made)
            EXPECT_NE(LineAt(game, script, row.path).empty(), !row.path.empty()) << script;
    }
    RowOptions raw;
    raw.friendly = false;
    raw.unfolded = {"ring"};
    EXPECT_EQ(RowsText(RowsOfScript(game, "if has <a> then do <ring> else if b then win", commands, raw)),
              "if has <a> then @0\n  do <ring> @0t0\n    sound <bell> @0t0c0\n    if has <x> then @0t0c1\n"
              "      msg <a> @0t0c1t0\n      msg <b> @0t0c1t1\nelse if b then @0e0\n  win @0e0t0");
    const auto rows = RowsOfScript(game, "do <ring>", commands);
    EXPECT_EQ(rows[0].spans[1], (RowSpan{"ring", RowRole::Parameter, "ring"}));
}

// A hostile file must not make a window wait for ever.
TEST(ScriptTree, EndsForProceduresThatCallEachOtherManyTimes) {
    GameModel game;
    for (int k = 1; k <= 300; ++k) {
        const std::string call = "do <~p" + std::to_string(k + 1) + ">";
        game.Procedures.Append({"~p" + std::to_string(k), call + "\r\n" + call + "\r\n"});
    }
    const CommandLookup commands(ShippedCatalogue());
    RowOptions options;
    options.most = 50;
    const auto rows = RowsOfScript(game, "do <~p1>", commands, options);
    ASSERT_EQ(rows.size(), 51U);
    EXPECT_EQ(rows.back().Text(), "... and more");
}

TEST(ScriptTree, ReplacesALineWhereverItStands) {
    const std::string two = "if has <x> then do <~Internal Procedure 1>";
    for (const auto& [script, way, lines, result, changed] :
         Cases<std::string, ScriptPath, std::vector<std::string>, std::string, std::string>{
             {"msg <a>", {{0}}, {"win"}, "win", ""},
             {"msg <a>", {{0}}, {"win", "die"}, "do <~Internal Procedure 9>", "win\r\ndie"},
             {"do <~Internal Procedure 1>", {{1}}, {}, "do <~Internal Procedure 1>", "msg <a>"},
             {two, {{0, Branch::Then}, {1}}, {"win"}, two, "msg <a>\r\nwin"},
             {"if has <x> then win",
              {{0, Branch::Then}, {0}},
              {"win", "die"},
              "if has <x> then do <~Internal Procedure 9>",
              "win\r\ndie"},
             {"if has <x> then win else if has <y> then die else back",
              {{0, Branch::Else}, {0, Branch::Else}, {0}},
              {"look"},
              "if has <x> then win else if has <y> then die else look",
              ""},
             // An "if" alone before an "else" would take that for itself.
             {"if has <x> then win else die",
              {{0, Branch::Then}, {0}},
              {"if has <y> then win"},
              "if has <x> then do <~Internal Procedure 9> else die",
              "if has <y> then win"},
             {"do <ring>",
              {{0, Branch::Called, "RING"}, {0}},
              {"music <x>"},
              "do <ring>",
              "music <x>\r\nif has <x> then do <~Internal Procedure 1>"}}) {
        GameModel game = TreeGame();
        EXPECT_EQ(ReplaceLine(game, script, way, lines), result) << script;
        const GameModel before = TreeGame();
        std::string found; // the one procedure that is new or different
        for (int k = 1; k <= game.Procedures.Count(); ++k)
            if (k > before.Procedures.Count() || game.Procedures[k] != before.Procedures[k])
                found += game.Procedures[k].Script;
        EXPECT_EQ(found, changed) << script;
        EXPECT_EQ(game.NextInternalProcedure, game.Procedures.Count() > 4 ? 10 : 9);
    }
    for (const ScriptPath& nowhere :
         {ScriptPath{}, {{1}}, {{0, Branch::Then}, {0}}, {{0, Branch::Called, "x"}, {0}}}) {
        GameModel game = TreeGame();
        EXPECT_THROW(ReplaceLine(game, "msg <a>", nowhere, {"win"}), KelError);
        EXPECT_EQ(LineAt(game, "msg <a>", nowhere), "");
    }
    GameModel game = TreeGame();
    EXPECT_THROW(ReplaceLine(game, "if has <x> then win", {{0, Branch::Then}, {0}}, {}), KelError);
    EXPECT_EQ(game, TreeGame());
}

TEST(TypedLine, IsALineOrSaysWhyNot) {
    const CommandLookup commands(ShippedCatalogue());
    for (const auto& [text, result] : CasesIn<2>("typed-lines")) {
        const TypedLine typed = ReadTypedLine(text, commands);
        EXPECT_EQ(typed.problem.empty() ? typed.line : "!" + typed.problem, result);
    }
    // The plain English of every command with a name of one word behind it is that command.
    for (const CommandDefinition& command : commands.Catalogue()) {
        if (BeginsWith(command.Keyword, "if") || command.Keyword == "(other)")
            continue;
        const CommandEntry* entry = commands.FindKeyword(command.Keyword);
        std::string argument;
        for (std::size_t k = 0; k < entry->syntax.parts.size(); ++k)
            argument += k == 0 ? "x" : "; x";
        EXPECT_EQ(ReadTypedLine(command.FriendlyName + ' ' + argument, commands).line,
                  command.Keyword + " <" + argument + ">");
    }
}

TEST(TypedLine, TellsWhatCouldStandAtTheEnd) {
    const CommandLookup commands(ShippedCatalogue());
    for (const auto& [text, first, kind, part] : Cases<std::string, std::string, NameKind, std::string>{
             {"scr cle", "clear", NameKind::None, ""},
             {"pr mes", "msg", NameKind::None, ""},
             {"give ir", "-", NameKind::Item, "ir"},
             {"give the pl", "give", NameKind::Item, "the pl"},
             {"Move an object lamp; Ha", "-", NameKind::Room, "Ha"},
             {"move object <lamp; Ha", "-", NameKind::Room, "Ha"},
             {"if the play", "if has", NameKind::None, ""},
             {"if has key and i", "if has", NameKind::None, ""},
             {"if has key and in Ha", "if been", NameKind::Room, "Ha"},
             {"if has key then goto Ki", "-", NameKind::Room, "Ki"},
             {"if has key then goto Kitchen else los", "lose all", NameKind::None, ""},
             {"clear x", "-", NameKind::None, ""}}) {
        const TypedEnd end = EndOfTyped(text, commands);
        EXPECT_EQ(end.commands.empty() ? "-" : end.commands.front()->Keyword, first) << text;
        EXPECT_EQ(end.kind, kind) << text;
        EXPECT_EQ(end.part.Of(text), part) << text;
    }
}

TEST(CommandGroups, HoldEveryCommandOnce) {
    const CommandLookup commands(ShippedCatalogue());
    std::set<std::string> seen;
    for (const CommandGroup& group : GroupsOfCommands(commands))
        for (const CommandDefinition* command : group.commands) {
            EXPECT_TRUE(seen.insert(command->Keyword).second) << command->Keyword;
            EXPECT_TRUE(group.name != std::string("Other commands") || command->Keyword == "(other)")
                << command->Keyword << " needs a group";
        }
    int wanted = 0;
    for (const CommandDefinition& command : commands.Catalogue())
        wanted += BeginsWith(command.Keyword, "if") ? 0 : 1;
    EXPECT_EQ(static_cast<int>(seen.size()), wanted);
}

} // namespace
} // namespace zem::test
