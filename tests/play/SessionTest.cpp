// What holds for every game: turns can be taken back to the first, a saved game is the game, the same seed
// plays the same, and every turn ends.
#include "play/Session.h"

#include "base/TextEncoding.h"
#include "base/TextFile.h"
#include "play/InputLog.h"
#include "play/Libraries.h"
#include "play/Transcript.h"
#include "reader/LoadGame.h"
#include "support/OutcomeText.h"

#include <gtest/gtest.h>

namespace zem::play {
namespace {

using test::TextOf;

GameModel Read(const std::string& text) {
    GameModel game;
    NameMessages(game);
    ReadGame(game, text);
    return game;
}

GameFiles FilesOf(GameModel game) {
    GameFiles files;
    files.game = std::move(game);
    return files;
}

const char* const Lines[] = {"n",
                             "s",
                             "e",
                             "w",
                             "out",
                             "look",
                             "i",
                             "g",
                             "take key",
                             "take lantern",
                             "x it",
                             "wait",
                             "speak to yann",
                             "time",
                             "shout hello",
                             "sign Ann",
                             "go to cellar",
                             "dance",
                             "search room",
                             "undo"};

/// A line for the prompt or an answer for a question, by chance.
Outcome PlayByChance(Session& session, std::uint64_t& chance) {
    const std::uint64_t drawn = NextRandom(chance);
    if (session.Needs() == Need::Nothing)
        return session.Type("undo");
    if (session.Needs() != Need::Line)
        return session.Answer(drawn % 2 == 0 ? "1" : "no");
    if (drawn % 11 == 0)
        return session.Pass(static_cast<std::int64_t>(drawn % 40));
    return session.Type(Lines[drawn % std::size(Lines)]);
}

TEST(Session, TurnsAreTakenBackToTheFirstAndPlayedAgainTheSame) {
    const auto world = World::Compile(FilesOf(Read(ReadFile(ZEM_SAMPLES "/lighthouse.kel"))));
    for (std::uint64_t seed = 1; seed <= 8; ++seed) {
        Session session(world, seed);
        const std::string beginning = TextOf(session.Begin());
        const std::uint64_t first = session.Fingerprint();
        std::vector<std::uint64_t> prints;
        std::string told[2];
        for (std::string& story : told) {
            std::uint64_t chance = seed;
            while (session.StepCount() < 60) {
                story += TextOf(PlayByChance(session, chance));
                prints.push_back(session.Fingerprint());
            }
            while (session.Undo()) {
            }
            EXPECT_EQ(session.Fingerprint(), first) << "seed " << seed;
        }
        EXPECT_EQ(told[0], told[1]);
        const auto half = static_cast<std::ptrdiff_t>(prints.size() / 2);
        EXPECT_TRUE(std::equal(prints.begin(), prints.begin() + half, prints.begin() + half, prints.end()));
        EXPECT_FALSE(session.Undo());
    }
}

TEST(Session, ASavedGameIsTheGame) {
    const auto world = World::Compile(FilesOf(Read(ReadFile(ZEM_SAMPLES "/lighthouse.kel"))));
    std::uint64_t chance = 5;
    Session session(world, 3);
    session.Begin();
    for (int k = 0; k < 200; ++k) {
        PlayByChance(session, chance);
        if (k % 10 != 0 || session.Needs() != Need::Line)
            continue;
        Session other(world, 99);
        other.Begin();
        const Outcome restored = other.Restore(session.Save());
        EXPECT_EQ(TextOf(restored), "Restored.\n");
        ASSERT_EQ(other.Fingerprint(), session.Fingerprint());
        EXPECT_EQ(other.Save(), session.Save());
        EXPECT_EQ(TextOf(other.Type("look")), TextOf(Session(session).Type("look")));
    }
}

TEST(Session, ADamagedSavedGameIsRefusedWhole) {
    const auto world = World::Compile(FilesOf(Read(ReadFile(ZEM_SAMPLES "/cottage.kel"))));
    Session session(world, 1);
    session.Begin();
    session.Type("x flowerpot");
    session.Type("take key");
    const std::string saved = session.Save();
    const std::uint64_t before = session.Fingerprint();
    for (std::size_t k = 0; k < saved.size(); ++k) {
        std::string damaged = saved;
        damaged[k] = static_cast<char>(damaged[k] ^ 1);
        EXPECT_EQ(TextOf(session.Restore(damaged)), "That game could not be opened.\n") << k;
        EXPECT_EQ(TextOf(session.Restore(saved.substr(0, k))), "That game could not be opened.\n") << k;
    }
    EXPECT_EQ(session.Fingerprint(), before);
}

TEST(Session, RestoreIntoAChangedGameTakesWhatIsStillThere) {
    const std::string text = ReadFile(ZEM_SAMPLES "/cottage.kel");
    Session session(World::Compile(FilesOf(Read(text))), 1);
    session.Begin();
    for (const char* line : {"x flowerpot", "take key", "n"})
        session.Type(line);
    std::string changed = text;
    for (std::size_t at = changed.find("rusty key; "); at != std::string::npos;
         at = changed.find("rusty key; "))
        changed.erase(at, 11);
    Session other(World::Compile(FilesOf(Read(changed))), 1);
    other.Begin();
    const Outcome outcome = other.Restore(session.Save());
    ASSERT_EQ(outcome.warnings.size(), 1U);
    EXPECT_EQ(outcome.warnings[0].text,
              "the saved game names the item \"rusty key\", which the game has not");
    EXPECT_EQ(other.RoomName(), "Kitchen");
    EXPECT_TRUE(other.Undo());
    EXPECT_EQ(other.RoomName(), "Garden");
}

TEST(Session, AChangedGameGoesOnWhereItWas) {
    const std::string text = ReadFile(ZEM_SAMPLES "/cottage.kel");
    GameModel game = Read(text);
    auto world = World::Compile(FilesOf(game));
    Session session(world, 1);
    session.Begin();
    for (const char* line : {"x flowerpot", "take key", "n", "go to attic"})
        session.Type(line);
    // The cottage gets a new name for its kitchen, a text and a table in it; the trunk goes.
    GameModel changed = game;
    Room& kitchen = changed.Rooms.Edit(2);
    kitchen.Name = "Scullery";
    kitchen.Look = "Tiles.";
    Thing table;
    table.Name = "table";
    kitchen.Objects.Append(table);
    changed.Rooms.Edit(1).North.Edit().Script = "goto <Scullery>";
    changed.Rooms.Edit(3).Out.Edit().Key = "Scullery";
    const Outcome outcome = session.Reload(World::Compile(FilesOf(changed), session.GetWorld()),
                                           {{Kind::Room, "Kitchen", "Scullery"}});
    EXPECT_TRUE(outcome.warnings.empty()) << outcome.warnings.front().text;
    EXPECT_EQ(session.RoomName(), "Attic");
    EXPECT_EQ(session.ItemsHad(), std::vector<std::string>{"rusty key"});
    EXPECT_NE(TextOf(session.Type("out")).find("Tiles.\nYou can see table."), std::string::npos);
    // Taking back goes over the change: the earlier turns are played again in the game as it is now.
    EXPECT_TRUE(session.Undo());
    EXPECT_TRUE(session.Undo());
    EXPECT_EQ(session.StepCount(), 3U);
    EXPECT_EQ(session.RoomName(), "Scullery");
    // A name that is gone is told, and the player is not left in a room that does not exist.
    GameModel smaller = changed;
    smaller.Rooms.Remove(2);
    const Outcome lost = session.Reload(World::Compile(FilesOf(smaller), session.GetWorld()));
    ASSERT_FALSE(lost.warnings.empty());
    EXPECT_EQ(lost.warnings[0].text, "the room \"Scullery\" is gone, and what happened to it with it");
    EXPECT_EQ(session.RoomName(), "Garden");
}

TEST(Session, TwoWaysToAChangedGameAreOne) {
    GameModel game = Read(ReadFile(ZEM_SAMPLES "/lighthouse.kel"));
    const auto world = World::Compile(FilesOf(game));
    for (int k = 1; k <= game.Rooms.Count(); ++k)
        game.Rooms.Edit(k).Look += " Changed.";
    const auto taken = World::Compile(FilesOf(game), *world);
    const auto fresh = World::Compile(FilesOf(game));
    Session first(taken, 7);
    Session second(fresh, 7);
    EXPECT_EQ(TextOf(first.Begin()), TextOf(second.Begin()));
    std::uint64_t chances[2] = {1, 1};
    for (int k = 0; k < 300; ++k)
        ASSERT_EQ(TextOf(PlayByChance(first, chances[0])), TextOf(PlayByChance(second, chances[1])));
}

std::string Game(const std::string& scripts) {
    return "define game <G>\n  start <R>\n" + scripts +
           "end define\ndefine room <R>\n  look <Here.>\nend define\n"
           "define procedure <p>\n  do <body>\nend define\ndefine procedure <nothing>\nend define\n";
}

TEST(Session, EveryTurnEnds) {
    const std::string longText(2000, 'x');
    const std::pair<const char*, std::string> hostile[] = {
        {"while for ever", "while <f; nothing>"},
        {"a billion times", "repeat <1000000000; nothing>"},
        {"itself", "do <body>"},
        {"itself twice", "do <twice>"},
        {"growing text", "repeat <100000; grow>"},
        {"long messages", "repeat <100000; talk>"},
        {"typing itself", "type <go>"},
        {"waits", "repeat <100000; wait>"},
        {"comparing", "repeat <100000; compare>"},
        {"moving", "goto <R>"},
        {"restarting", "restart"},
    };
    for (const auto& [name, body] : hostile) {
        const std::string text =
            Game("  command <go> do <start>\n  startscript if flag <started> then do <start>\n") +
            "define procedure <start>\n  flag on <f>\n  " + body + "\nend define\n" +
            "define procedure <body>\n  do <body>\nend define\n" +
            "define procedure <twice>\n  do <twice>\n  do <twice>\nend define\n" +
            "define procedure <grow>\n  append <t; #t#" + longText + ">\nend define\n" +
            "define procedure <talk>\n  msg <" + longText + ">\nend define\n" +
            "define procedure <wait>\n  after <1; wait>\nend define\n" +
            "define procedure <compare>\n  if contains <t; " + longText + "> then do <nothing>\nend define\n";
        Session session(World::Compile(FilesOf(Read(text))), 1);
        session.Begin();
        const std::string told = TextOf(session.Type("go"));
        EXPECT_LE(told.size(), 66'000U) << name;
        EXPECT_EQ(session.Needs(), Need::Line) << name;
        EXPECT_TRUE(session.Undo()) << name;
    }
}

TEST(Session, ALimitNamesTheScriptThatGoesRoundAndTheTurnCounts) {
    const std::string game = "define game <G>\n  start <R>\n  command <go> while <f; nothing>\n"
                             "  command <menu> choose <m>\n  startscript do <start>\n"
                             "  beforeturn if flag <b> then while <f; nothing>\nend define\n"
                             "define selection <m>\n  choice <a> while <f; nothing>\nend define\n"
                             "define room <R>\n  north while <f; nothing>\n  define object <lamp>\n"
                             "    look while <f; nothing>\n  end define\n  define character <Tim>\n"
                             "    speak while <f; nothing>\n  end define\nend define\n"
                             "define procedure <nothing>\nend define\n"
                             "define procedure <start>\n  flag on <f>\n  timer on <t>\nend define\n"
                             "define timer <t>\n  interval <1>\n  action while <f; nothing>\nend define\n";
    struct Case {
        const char* line;
        const char* owner;
    };
    const std::shared_ptr<const World> world = World::Compile(FilesOf(Read(game)));
    for (const Case& one :
         {Case{"go", "the game"}, Case{"menu", "the game > m"}, Case{"n", "R"}, Case{"x lamp", "lamp"},
          Case{"speak to tim", "Tim"}, Case{"", "a timer"}, Case{"z", "the game"}}) {
        const bool isTurn = *one.line != '\0';
        Session session(world, 1);
        session.Begin();
        session.SetByHand(Kind::Flag, "b", std::string_view(one.line) == "z" ? "on" : "off");
        Outcome outcome = isTurn ? session.Type(one.line) : session.Pass(2);
        if (outcome.need == Need::Choice)
            outcome = session.Answer("1");
        ASSERT_EQ(outcome.warnings.size(), 1U) << one.line;
        EXPECT_EQ(outcome.warnings[0].text, std::string("a limit of the turn was met: ") + one.owner);
        EXPECT_EQ(session.TurnCount(), isTurn ? 1 : 0) << one.line;
    }
}

TEST(Session, WhatCannotBeginSaysWhy) {
    EXPECT_EQ(Session(World::Compile(FilesOf(Read("define game <G>\nend define\n"))), 1).WhyItCannotBegin(),
              "The game cannot begin: it has no start room.");
    EXPECT_EQ(Session(World::Compile(FilesOf(Read("define game <G>\n  start <X>\nend define\n"))), 1)
                  .WhyItCannotBegin(),
              "The game cannot begin: its start room, X, does not exist.");
}

TEST(Session, WarningsTellWhatANameLacksAndWhere) {
    Session session(World::Compile(FilesOf(Read(Game("  command <go> do <list>\n") +
                                                "define procedure <list>\n  give <x>\n  msg <a>\n"
                                                "  if here <Tim> and chance <100> then msg <b>\n"
                                                "  thunder\nend define\n"))),
                    1);
    session.Begin();
    session.SetTrace(true);
    const Outcome outcome = session.Type("go");
    ASSERT_EQ(outcome.warnings.size(), 3U);
    EXPECT_EQ(outcome.warnings[0].text, "there is no item \"x\"");
    EXPECT_EQ(outcome.warnings[0].source.line, 1);
    EXPECT_EQ(outcome.warnings[1].text, "there is no character or object \"Tim\"");
    EXPECT_EQ(outcome.warnings[1].source.line, 3);
    EXPECT_EQ(outcome.warnings[2].text, "the line does nothing: \"thunder\" is no command");
    std::string trace;
    for (const TraceEntry& entry : outcome.trace)
        trace += std::to_string(entry.depth) + ":" + std::to_string(entry.source.line) +
                 (entry.result == TraceEntry::Faulty  ? "!"
                  : entry.result == TraceEntry::False ? "-"
                                                      : "") +
                 " ";
    EXPECT_EQ(trace, "1:1 2:1! 2:2 2:3 2:3- 2:4! ");
    EXPECT_EQ(outcome.trace[4].note, "there is no character or object \"Tim\"") << "of the condition itself";
    // A line that is no command is named once and for all, a name that lacks whenever it is met.
    EXPECT_EQ(session.Type("go").warnings.size(), 2U);
}

TEST(Session, WatchShowsAndSetsValues) {
    Session session(World::Compile(FilesOf(Read(ReadFile(ZEM_SAMPLES "/lighthouse.kel")))), 1);
    session.Begin();
    EXPECT_TRUE(session.SetByHand(Kind::Flag, "fog", "on"));
    EXPECT_TRUE(session.SetByHand(Kind::Thing, "oboathook", "Quay, hidden"));
    EXPECT_TRUE(session.SetByHand(Kind::Collectable, "matches", "99"));
    EXPECT_FALSE(session.SetByHand(Kind::Thing, "oboathook", "Moon"));
    EXPECT_FALSE(session.SetByHand(Kind::Item, "no such", "had"));
    std::string shown;
    for (const WatchedValue& value : session.Watch(false))
        shown += value.name + "=" + value.value + (value.hasChanged ? "!" : "") + "; ";
    EXPECT_EQ(shown, "oboathook=Quay, hidden; fog=on; visitor=stranger; turns=0; matches=12!; ");
    EXPECT_TRUE(session.Undo());
    EXPECT_EQ(session.StepCount(), 2U);
    session.BeginAt({"Sea Cave", {"herring"}, {"low tide"}, {{"visitor", "Ann"}}});
    EXPECT_EQ(session.RoomName(), "Sea Cave");
    EXPECT_NE(TextOf(session.Type("e")).find("The tide is out."), std::string::npos);
}

TEST(Session, WhatWasTakenBackIsPlayedAgainInTheGameAsItIsNow) {
    GameModel game = Read("define game <G>\nstart <R>\nitems <coin>\ncommand <name> do <name>\nend define\n"
                          "define room <R>\nlook <Here.>\nnorth <S>\nend define\n"
                          "define room <S>\nlook <There.>\nend define\n"
                          "define procedure <name>\nask <who; Who?>\nmsg <Hello, #who#.>\nend define\n");
    Session session(World::Compile(FilesOf(game)), 1);
    session.Begin();
    session.Type("name");
    session.Answer("Ann");
    session.Pass(5);
    session.SetByHand(Kind::Item, "coin", "had");
    session.Type("n");
    const std::uint64_t last = session.Fingerprint();
    while (session.Undo()) {
    }
    std::string lines;
    for (const PlayedTurn& turn : session.Undone())
        lines += turn.line + (turn.answers.empty() ? "" : "/" + turn.answers[0]) + "; ";
    EXPECT_EQ(lines, "name/Ann; coin = had; n; ");
    EXPECT_EQ(TextOf(session.Redo()), "Who?\nHello, Ann.\n");
    session.Redo();
    EXPECT_EQ(TextOf(session.Redo()), "\nS\nThere.\n");
    EXPECT_EQ(session.Fingerprint(), last);
    EXPECT_FALSE(session.CanRedo());

    session.Undo();
    game.Rooms.Edit(2).Look = "Elsewhere.";
    session.Reload(World::Compile(FilesOf(game), session.GetWorld()));
    EXPECT_EQ(TextOf(session.Redo()), "\nS\nElsewhere.\n");
    session.Undo();
    session.Type("look");
    EXPECT_FALSE(session.CanRedo()) << "a new turn takes the place of those that were taken back";
}

TEST(Session, ALongGameIsKeptLineByLine) {
    const auto world = World::Compile(FilesOf(Read(ReadFile(ZEM_SAMPLES "/cottage.kel"))));
    Session session(world, 1);
    session.Begin();
    const auto played = [&] {
        std::vector<std::string> lines;
        for (const PlayedTurn& turn : session.Played())
            lines.push_back(turn.line);
        return lines;
    };
    std::vector<std::string> typed = {""};
    for (int k = 1; k <= 3000; ++k) {
        typed.push_back((k % 3 == 0 ? "look" : "x flowerpot") +
                        std::string(static_cast<std::size_t>(k % 40), ' '));
        session.Type(typed.back());
        if (k % 1000 == 0) { // as many bytes as a thousand turns
            ASSERT_FALSE(session.Restore(session.Save()).isRefused);
            EXPECT_TRUE(session.Undo());
        }
    }
    EXPECT_EQ(played(), typed);
    for (; typed.size() > 1500; typed.pop_back())
        ASSERT_TRUE(session.Undo());
    EXPECT_EQ(played(), typed);
    session.Reload(World::Compile(FilesOf(Read(ReadFile(ZEM_SAMPLES "/cottage.kel")))));
    ASSERT_TRUE(session.Undo()); // plays all of it again
    typed.pop_back();
    EXPECT_EQ(played(), typed);
}

TEST(Session, AClockThatTicksWhileNothingHappensCostsNothing) {
    const std::string text = "define game <G>\nstart <R>\ncommand <set> after <100; ring>\nend define\n"
                             "define room <R>\nend define\n"
                             "define procedure <ring>\nmsg <Ring!>\nend define\n";
    Session ticking(World::Compile(FilesOf(Read(text))), 1);
    Session waiting(World::Compile(FilesOf(Read(text))), 1);
    for (Session* session : {&ticking, &waiting}) {
        session->Begin();
        session->Pass(3);
        session->Type("set");
    }
    std::string told;
    std::size_t bytes = 0;
    for (int second = 1; second <= 3000; ++second) {
        told += TextOf(ticking.Pass(1));
        if (second == 200)
            bytes = ticking.BytesForUndo();
    }
    EXPECT_EQ(told, "Ring!\n");
    EXPECT_LE(ticking.BytesForUndo(), bytes + 1) << "the number itself takes a byte more";
    waiting.Pass(3000);
    EXPECT_EQ(ticking.Fingerprint(), waiting.Fingerprint());
    for (Session* session : {&ticking, &waiting}) {
        session->Type("look");
        EXPECT_TRUE(session->Undo());
    }
    EXPECT_EQ(ticking.Fingerprint(), waiting.Fingerprint());
    // The seconds are played again with the turn after which they passed.
    ticking.Reload(World::Compile(FilesOf(Read(text)), ticking.GetWorld()));
    ticking.Type("look");
    EXPECT_TRUE(ticking.Undo());
    EXPECT_TRUE(ticking.Undo());
    EXPECT_EQ(TextOf(ticking.Redo()), "Ring!\n");
    EXPECT_EQ(ticking.Fingerprint(), waiting.Fingerprint());
}

TEST(Libraries, WhatMayNotBeReadIsToldOfAndLeftOut) {
    std::vector<std::string> asked;
    const GameFiles files = WithLibraries(
        Read("!include <a.kel>\n!include <../b.kel>\n!include <standard.kel>\n!include <c.kel>\n!include "
             "<.d>\n!include <bad.kel>\ndefine game <G>\nend define\n"),
        [&](const std::string& name) -> std::optional<std::string> {
            asked.push_back(name);
            if (name == "a.kel")
                return "!include <a.kel>\n!include <inner.kel>\ndefine game <A>\nend define\n";
            if (name == "inner.kel")
                return "define game <I>\nend define\n";
            if (name == "bad.kel")
                return "define game <never closed>\n";
            return std::nullopt;
        });
    EXPECT_EQ(asked, (std::vector<std::string>{"a.kel", "inner.kel", "standard.kel", "c.kel", "bad.kel"}));
    EXPECT_EQ(files.libraryNames, (std::vector<std::string>{"a.kel", "inner.kel"}));
    ASSERT_EQ(files.problems.size(), 4U);
    EXPECT_EQ(files.problems[0], "the library \"../b.kel\" is not in the folder of the game");
    EXPECT_EQ(files.problems[1], "the library \"c.kel\" is missing");
    EXPECT_TRUE(files.problems[3].starts_with("the library \"bad.kel\" cannot be read: "));
}

TEST(Utf8, EveryByteComesBackAndTheRestBecomesAQuestionMark) {
    for (int code = 0; code < 256; ++code) {
        const std::string text(1, static_cast<char>(code));
        EXPECT_EQ(FromUtf8(ToUtf8(text)), text) << code;
    }
    EXPECT_EQ(FromUtf8("a\xE6\x97\xA5z"), "a?z");
    EXPECT_EQ(FromUtf8("\xFF\xC3"), "??");
}

} // namespace
} // namespace zem::play
