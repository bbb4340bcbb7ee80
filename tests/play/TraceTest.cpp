// What authors are shown of a game that runs: where its lines stand, what ran in a turn, and how a room
// reads.
#include "play/Libraries.h"
#include "play/Preview.h"
#include "play/Renames.h"
#include "play/Session.h"
#include "play/TraceRows.h"
#include "play/Transcript.h"
#include "reader/LoadGame.h"
#include "support/Catalogue.h"
#include "support/OutcomeText.h"

#include <gtest/gtest.h>

namespace zem::play {
namespace {

using test::TextOf;

/// Every kind of script prints its own line.
constexpr const char* TracedGame = R"(define game <G>
start <Hall>
items <key; rope>
command <sing> msg <command>
use <key> msg <game use>
startscript msg <start>
description msg <game description>
beforeturn msg <before>
afterturn msg <after>
end define
define room <Hall>
look <room look>
script msg <room script>
north msg <exit>
place <the; Attic> msg <place>
command <dance> msg <room command>
use <rope> msg <room use>
define object <chest>
look msg <object look>
take msg <take>
use <key> msg <thing use>
end define
define character <Tim>
look msg <character look>
speak do <talk>
give <key> msg <give>
end define
end define
define room <Yard>
description msg <description>
out msg <out>
end define
define room <Attic>
end define
define procedure <talk>
choose <menu>
msg <one>
msg <two>
text <note>
end define
define text <note>
note
end define
define selection <menu>
info <info>
choice <answer> msg <choice>
end define
define text <intro>
intro
end define
define timer <bell>
interval <1>
action msg <timer>
end define
)";

std::shared_ptr<const World> WorldOf(const std::string& text) {
    GameFiles files;
    NameMessages(files.game);
    ReadGame(files.game, text);
    return World::Compile(std::move(files));
}

/// Where each text of the outcomes was printed, "text: place".
std::string Places(const StoryPlaces& places, const std::vector<Outcome>& outcomes) {
    std::string all;
    for (const Outcome& outcome : outcomes)
        for (const Piece& piece : outcome.pieces) {
            const std::string text = piece.text.substr(0, piece.text.find('\n'));
            if (piece.source.book == nullptr || text.empty())
                continue;
            all += text + ": " + places.Describe(piece.source);
            const std::string line = places.LineOf(piece.source);
            // A heading is made of several fields, and a choice has its number before it.
            const bool isWhole = text.front() < 'a' || line.find(text) != std::string::npos;
            EXPECT_TRUE(isWhole) << text << " is not in " << line;
            all += "\n";
        }
    return all;
}

TEST(StoryPlaces, EveryTextLeadsToWhereItStands) {
    const auto world = WorldOf(TracedGame);
    const StoryPlaces places(world);
    Session session(world, 1);
    std::vector<Outcome> outcomes = {session.Begin()};
    session.SetByHand(Kind::Item, "key", "had");
    session.SetByHand(Kind::Item, "rope", "had");
    session.SetByHand(Kind::Timer, "bell", "on");
    for (const char* line :
         {"sing", "dance", "use key", "use rope", "use key on chest", "x chest", "take chest", "x Tim",
          "give key to Tim", "talk to Tim", "north", "go to attic"}) {
        outcomes.push_back(session.Type(line));
        if (session.Needs() == Need::Choice)
            outcomes.push_back(session.Answer("1"));
    }
    outcomes.push_back(session.Pass(2));
    outcomes.push_back(PreviewRoom(*world, "Yard"));
    const std::string all = Places(places, outcomes);
    const char* expected[] = {"start: game properties, start action\n",
                              "intro: text block intro, text\n",
                              "room look: room Hall, description\n",
                              "game description: game properties, print description action\n",
                              "room script: room Hall, enter action\n",
                              "before: game properties, before turn action\n",
                              "after: game properties, after turn action\n",
                              "command: player command sing, action\n",
                              "room command: room Hall, player command dance, action\n",
                              "game use: use-able object key, action\n",
                              "room use: room Hall, use-able object rope, action\n",
                              "thing use: object chest in Hall, use-able object key, action\n",
                              "object look: object chest in Hall, look\n",
                              "take: object chest in Hall, take\n",
                              "character look: character Tim in Hall, look\n",
                              "give: character Tim in Hall, give-able object key, action\n",
                              "info: menu menu, prompt\n",
                              "1. answer: menu menu, choice answer, name\n",
                              "choice: menu menu, choice answer, action\n",
                              "two: procedure talk, script, line 3\n",
                              "note: text block note, text\n",
                              "exit: room Hall, exit north, action\n",
                              "place: room Hall, place the; Attic, action\n",
                              "description: room Yard, print description action\n"};
    for (const char* line : expected)
        EXPECT_NE(all.find(line), std::string::npos) << line << " is not in\n" << all;
}

TEST(StoryPlaces, AfterAChangeTheSameTextsAreFoundByName) {
    const auto world = WorldOf(TracedGame);
    Session session(world, 1);
    session.Begin();
    const Outcome outcome = session.Type("x chest");
    GameFiles files = world->Files();
    Room& hall = files.game.Rooms.Edit(1);
    hall.Objects.Edit(1).Look = "line\r\nmsg <object look>";
    files.game.Rooms.Append().Name = "Cellar";
    const auto changed = World::Compile(files, *world);
    const StoryPlaces places(changed);
    bool isFound = false;
    for (const Piece& piece : outcome.pieces) {
        if (piece.text != "object look\n")
            continue;
        isFound = true;
        EXPECT_FALSE(places.PlaceOf(piece.source)) << "it is of another version of the game";
        Source moved = SourceIn(*changed, piece.source);
        moved.line = 2;
        EXPECT_EQ(places.LineOf(moved), "msg <object look>");
    }
    EXPECT_TRUE(isFound);
    files.game.Rooms.Edit(1).Objects.Remove(1);
    EXPECT_EQ(SourceIn(*World::Compile(files, *changed), outcome.pieces.front().source).book == nullptr,
              outcome.pieces.front().source.book->owner == Owner::Thing);
}

TEST(StoryPlaces, WhatStandsInALibraryIsTold) {
    GameFiles files;
    NameMessages(files.game);
    ReadGame(files.game, "!include <lib.kel>\ndefine game <G>\nstart <R>\ncommand <x> do <far>\nend define\n"
                         "define room <R>\nend define\n");
    files = WithLibraries(std::move(files.game), [](const std::string&) {
        return "define game <L>\nend define\ndefine procedure <far>\nmsg <far>\nend define\n";
    });
    const auto world = World::Compile(std::move(files));
    Session session(world, 1);
    session.Begin();
    const StoryPlaces places(world);
    const Source source = session.Type("x").pieces.front().source;
    EXPECT_FALSE(places.PlaceOf(source));
    EXPECT_EQ(places.Describe(source), "procedure \"far\" of a library");
}

/// The rows of a turn, indented by level, with their outcome.
std::string TraceOf(const std::string& game, const char* line, const char* answer = nullptr) {
    const CommandLookup commands(test::ShippedCatalogue());
    const auto world = WorldOf(game);
    Session session(world, 1);
    session.SetTrace(true);
    session.Begin();
    Outcome outcome = session.Type(line);
    if (answer != nullptr)
        outcome = session.Answer(answer);
    std::string all;
    for (const TraceRow& row : DescribeTrace(outcome.trace, StoryPlaces(world), commands)) {
        all.append(static_cast<std::size_t>(row.level) * 2, ' ').append(row.text);
        const char* const results[] = {"", "", " = true", " = false", " = not run", " = "};
        all.append(results[row.what]).append(row.what == TraceRow::Faulty ? row.note : "").append("\n");
    }
    return all;
}

TEST(Trace, TellsWhatRanIndentedByCallAndWhyItWentThatWay) {
    const std::string game = "define game <G>\nstart <R>\nitems <wick>\ncommand <go> do <list>\n"
                             "command <ask> choose <m>\ncommand <braces> do <~Internal Procedure 1>\n"
                             "afterturn flag on <done>\nend define\n"
                             "define room <R>\nend define\n"
                             "define procedure <list>\n"
                             "if has <wick> or flag <a> then msg <A> else do <other>\n"
                             "if not has <wick> or flag <a> then if flag <b> then msg <B> else msg <C>\n"
                             "if here <Tim> then msg <D>\n"
                             "give <wik>\n"
                             "end define\n"
                             "define procedure <other>\nmsg <O>\nmsg <P>\nend define\n"
                             "define procedure <~Internal Procedure 1>\nmsg <I>\ndo <other>\nend define\n"
                             "define selection <m>\ninfo <Well?>\nchoice <tea> msg <T>\nend define\n";
    EXPECT_EQ(TraceOf(game, "go"), "player command go, action\n"
                                   "  Run the procedure \"list\"\n"
                                   "    If the player has \"wick\" = false\n"
                                   "    or the flag \"a\" is set = false\n"
                                   "      then: Print \"A\" = not run\n"
                                   "      Run the procedure \"other\"\n"
                                   "        Print \"O\"\n"
                                   "        Print \"P\"\n"
                                   "    If it is not so that the player has \"wick\" = true\n"
                                   "    or the flag \"a\" is set = not run\n"
                                   "      If the flag \"b\" is set = false\n"
                                   "        then: Print \"B\" = not run\n"
                                   "        Print \"C\"\n"
                                   "    If \"Tim\" is here = there is no character or object \"Tim\"\n"
                                   "      then: Print \"D\" = not run\n"
                                   "    Give the player \"wik\" = there is no item \"wik\"\n"
                                   "game properties, after turn action\n"
                                   "  Set the flag \"done\"\n");
    EXPECT_EQ(TraceOf(game, "ask", "tea"), "player command ask, action\n"
                                           "  Show the menu \"m\"\n"
                                           "    chose \"tea\"\n"
                                           "      Print \"T\"\n"
                                           "game properties, after turn action\n"
                                           "  Set the flag \"done\"\n");
    EXPECT_EQ(TraceOf(game, "braces"), "player command braces, action\n"
                                       "  Print \"I\"\n"
                                       "  Run the procedure \"other\"\n"
                                       "    Print \"O\"\n"
                                       "    Print \"P\"\n"
                                       "game properties, after turn action\n"
                                       "  Set the flag \"done\"\n");
}

TEST(Preview, ReadsAsOnAFirstVisitAndChangesNothing) {
    const auto world = WorldOf("define game <G>\nstart <R>\nend define\ndefine room <R>\nlook <Here.>\n"
                               "script if first visit then msg <New!>\n"
                               "define object <lamp>\nhidden\nlook if in <R> then msg <Lit.>\nend define\n"
                               "define character <Tim>\nend define\nend define\n");
    for (int k = 0; k < 2; ++k) {
        EXPECT_EQ(TextOf(PreviewRoom(*world, "R")), "\nR\nHere.\nAlso here: Tim.\nNew!\n");
        EXPECT_EQ(TextOf(PreviewThing(*world, "R", Names::ThingKey(false, "lamp"))), "Lit.\n");
        EXPECT_EQ(TextOf(PreviewThing(*world, "R", Names::ThingKey(true, "Tim"))),
                  "You see nothing special.\n");
    }
    EXPECT_TRUE(PreviewRoom(*world, "Moon").pieces.empty());
    EXPECT_TRUE(PreviewThing(*world, "R", Names::ThingKey(false, "Tim")).pieces.empty());
}

TEST(Renames, AreWhatStandsWhereAnotherNameStood) {
    const GameModel before = WorldOf(TracedGame)->Game();
    GameModel after = before;
    EXPECT_TRUE(FindRenames(before, after).empty());
    after.Rooms.Edit(2).Name = "Garden";
    after.Rooms.Edit(1).Objects.Edit(1).Name = "box";
    after.Items.Edit(2).Name = "string";
    std::string found;
    for (const Renamed& renamed : FindRenames(before, after))
        found += renamed.before + ">" + renamed.after + " ";
    EXPECT_EQ(found, "Yard>Garden rope>string ochest>obox ");
    after.Rooms.Remove(2);
    after.Items.Append().Name = "coin";
    EXPECT_TRUE(FindRenames(before, after).empty()) << "the lists do not stand side by side any more";
}

} // namespace
} // namespace zem::play
