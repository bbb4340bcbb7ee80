// Laws of sessions over games made by chance, whose scripts have every command and condition: what is taken
// back and done again, saved and opened, reloaded or watched is told the same.
#include "play/Coverage.h"
#include "play/PlayedGame.h"

#include <gtest/gtest.h>
#include <random>

namespace zem::test {
namespace {

/// A game with few names and many scripts.
class ChanceGame {
public:
    explicit ChanceGame(unsigned seed) : random_(seed) {}

    std::string Make() {
        std::string text = "define game <G>\nstart <a>\nitems <a; b; c>\nstartitems <b>\n"
                           "collectables <a p=3 [! x*s*]; b 0r9=4 [!]>\n";
        for (const char* pattern : {"hop", "say #a#", "a #a# b #b#", "take b"})
            text += "command <" + std::string(pattern) + "> " + Script() + "\n";
        text += "startscript " + Script() + "\nbeforeturn " + Condition() + Simple() + "\nafterturn " +
                Condition() + Simple() + "\ndescription " + Condition() + Simple() + "\nuse <a> " + Script() +
                "\nend define\n";
        text += "define synonyms\nleap = hop\nc = a; b\nend define\n";
        for (const char* room : {"a", "b", "c"})
            text += Room(room);
        for (const char* name : {"a", "b", "c"}) {
            text += "define procedure <" + std::string(name) + ">\n";
            for (int k = Any(4); k >= 0; --k)
                text += Script() + "\n";
            text += "end define\ndefine text <" + std::string(name) + ">\nText " + name +
                    " #a# |b%b%.\nend define\n";
        }
        return text + "define selection <a>\ninfo <Which #a#?>\nchoice <one> " + Simple() +
               "\nchoice <two> " + Script() + "\nend define\ndefine timer <a>\ninterval <4>\naction " +
               Simple() + "\nend define\n";
    }

    std::string Line() {
        static constexpr const char* Lines[] = {
            "hop",     "leap",     "say Ann", "a 1 b 2",    "take a",      "take b",     "drop a", "drop b",
            "x a",     "x it",     "look",    "i",          "n",           "s",          "e",      "out",
            "go to b", "go to c",  "use a",   "use a on b", "give a to b", "speak to c", "z",      "g",
            "frotz",   "oops hop", "x them",  "a",          "about",       "@ 3",        "@ 30"};
        return Lines[random_() % std::size(Lines)];
    }

    std::string AnswerFor(play::Need need) {
        static constexpr const char* Choices[] = {"1", "2", "tw", "7"};
        static constexpr const char* Words[] = {"yes", "n", "perhaps", ""};
        return std::string("< ") + (need == play::Need::Choice ? Choices : Words)[random_() % 4];
    }

private:
    int Any(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
    std::string Name() { return std::string(1, "abc"[Any(3)]); }

    std::string Simple() {
        static constexpr const char* Commands[] = {"msg <M #a# %b% |b.>",
                                                   "say <#b#>",
                                                   "text <?>",
                                                   "goto <?>",
                                                   "back",
                                                   "look",
                                                   "give <?>",
                                                   "lose <?>",
                                                   "lose all",
                                                   "show <?>",
                                                   "hide <?>",
                                                   "reveal <?>",
                                                   "conceal <?>",
                                                   "bring <?>",
                                                   "move object <?; ?>",
                                                   "move character <?; ?>",
                                                   "object on <?>",
                                                   "object off <?>",
                                                   "character off <?>",
                                                   "character on <?>",
                                                   "room off <?>",
                                                   "room on <?>",
                                                   "exit off <?; north>",
                                                   "exit on <?; north>",
                                                   "exit to <?; east; ?>",
                                                   "set <?; #?#x>",
                                                   "append <?; %?%>",
                                                   "add <?; 3>",
                                                   "subtract <?; #a#>",
                                                   "multiply <?; -2>",
                                                   "roll <?; 6>",
                                                   "gain <?; 2>",
                                                   "spend <?; 3>",
                                                   "set amount <?; 5>",
                                                   "flag on <?>",
                                                   "flag off <?>",
                                                   "flag flip <?>",
                                                   "do <?>",
                                                   "pick <a; b; c>",
                                                   "repeat <2; ?>",
                                                   "every object <?>",
                                                   "every character <?>",
                                                   "while <?; ?>",
                                                   "after <3; ?>",
                                                   "timer on <a>",
                                                   "timer off <?>",
                                                   "type <x ?>",
                                                   "clear",
                                                   "line",
                                                   "colour <red>",
                                                   "pause <2>",
                                                   "key <Key.>",
                                                   "ask <?; Q?>",
                                                   "choose <a>",
                                                   "die",
                                                   "restart"};
        std::string command = Commands[Any(static_cast<int>(std::size(Commands)))];
        for (std::size_t at = command.find('?'); at != std::string::npos; at = command.find('?', at + 1))
            if (command[at - 1] != 'Q')
                command[at] = Name()[0];
        return command;
    }

    std::string Condition() {
        static constexpr const char* Conditions[] = {
            "has <?>",     "empty handed", "in <?>",           "been <?>",
            "first visit", "here <?>",     "object in <?; ?>", "character in <?; ?>",
            "exists <?>",  "visible <?>",  "room on <?>",      "exit <?; north>",
            "flag <?>",    "timer <a>",    "equal <?; x>",     "contains <?; x>",
            "empty <?>",   "more <?; 2>",  "amount <?; 2>",    "turns <3>",
            "chance <50>", "ask <Q?>"};
        std::string line = "if ";
        for (int k = Any(2); k >= 0; --k) {
            std::string condition = Conditions[Any(static_cast<int>(std::size(Conditions)))];
            for (std::size_t at = condition.find("?"); at != std::string::npos;
                 at = condition.find('?', at + 1))
                if (condition[at - 1] != 'Q')
                    condition[at] = Name()[0];
            line += (Any(3) == 0 ? "not " : "") + condition + (k > 0 ? " and " : " then ");
        }
        return line;
    }

    std::string Script() {
        if (Any(2) == 0)
            return Simple();
        return Condition() + Simple() + (Any(2) == 0 ? "" : " else " + Simple());
    }

    std::string Room(const std::string& name) {
        std::string text = "define room <" + name + ">\nprefix <the>\nlook <Room " + name +
                           " #a#.>\nnorth <" + Name() + ">\neast " + Script() + "\nsouth <" + Name() +
                           ">\nout <" + Name() + ">\nplace <" + Name() + ">\nscript " + Script() + "\nuse <" +
                           Name() + "> " + Simple() + "\n";
        text += "define object <" + name + ">\ntake {\ngive <" + name + ">\nhide <" + name +
                ">\n}\nuse <a> " + Simple() + "\n" + (Any(3) == 0 ? "hidden\n" : "") + "end define\n";
        return text + "define character <" + Name() + ">\ngender <he>\nspeak " + Script() +
               "\ngive <a>\nend define\n" + "end define\n";
    }

    std::mt19937 random_;
};

/// Plays one step by chance: what was done.
std::string NextStep(ChanceGame& game, const play::Session& session) {
    if (session.Needs() == play::Need::Line)
        return game.Line();
    return session.Needs() == play::Need::Nothing ? "restart" : game.AnswerFor(session.Needs());
}

TEST(SessionLaws, WhatIsDoneAgainIsToldAgain) {
    int turns = 0;
    int saves = 0;
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        ChanceGame game(seed);
        const std::shared_ptr<const play::World> world = WorldOf(game.Make());
        play::Session session(world, seed);
        play::Session watched(world, seed);
        play::Coverage coverage(world);
        watched.SetTrace(true);
        watched.SetCoverage(&coverage);
        ASSERT_EQ(ToldBy(session.Begin()), ToldBy(watched.Begin()));
        const std::uint64_t first = session.Fingerprint();
        const bool isAtPrompt = session.Needs() == play::Need::Line;
        for (int k = 0; k < 50; ++k) {
            const std::string step = NextStep(game, session);
            const play::Session before = session;
            const std::string told = ToldBy(PlayLine(session, step));
            ASSERT_EQ(ToldBy(PlayLine(watched, step)), told) << "looking on changes nothing: " << step;
            ASSERT_EQ(watched.Fingerprint(), session.Fingerprint()) << step;
            if (session.Needs() != play::Need::Line || before.Needs() != play::Need::Line)
                continue;
            ++turns;
            if (session.StepCount() > before.StepCount()) {
                play::Session again = session;
                ASSERT_TRUE(again.Undo());
                ASSERT_EQ(again.Fingerprint(), before.Fingerprint()) << step;
                if (!step.starts_with("@") && step != "g" && !step.starts_with("oops") &&
                    step.find(" it") == std::string::npos && step.find("them") == std::string::npos) {
                    ASSERT_EQ(ToldBy(PlayLine(again, step)), told) << step;
                    ASSERT_EQ(again.Fingerprint(), session.Fingerprint()) << step;
                }
            }
            if (k % 5 != 0)
                continue;
            ++saves;
            play::Session opened(world, 99);
            opened.Begin();
            if (opened.Needs() != play::Need::Line && opened.Needs() != play::Need::Nothing)
                continue; // a saved game is opened at the prompt
            ASSERT_EQ(ToldBy(opened.Restore(session.Save())), "Restored.");
            ASSERT_EQ(opened.Fingerprint(), session.Fingerprint()) << step;
            play::Session on = session;
            for (const char* next : {"hop", "look", "i", "n", "@ 9"}) {
                if (on.Needs() != play::Need::Line)
                    break;
                ASSERT_EQ(ToldBy(PlayLine(opened, next)), ToldBy(PlayLine(on, next)))
                    << step << ", then " << next;
            }
        }
        if (!isAtPrompt)
            continue;
        while (session.Undo()) {
        }
        EXPECT_EQ(session.Fingerprint(), first);
    }
    EXPECT_GE(turns, 500);
    EXPECT_GE(saves, 50);
}

TEST(SessionLaws, AGameThatIsReloadedGoesOnTheSame) {
    for (unsigned seed = 101; seed <= 130; ++seed) {
        SCOPED_TRACE(seed);
        ChanceGame game(seed);
        const std::string text = game.Make();
        play::Session plain(WorldOf(text), seed);
        play::Session reloaded(WorldOf(text), seed);
        ASSERT_EQ(ToldBy(plain.Begin()), ToldBy(reloaded.Begin()));
        for (int k = 0; k < 30; ++k) {
            const std::string step = NextStep(game, plain);
            ASSERT_EQ(ToldBy(PlayLine(plain, step)), ToldBy(PlayLine(reloaded, step))) << step;
            if (plain.Needs() != play::Need::Line || k % 4 != 0)
                continue;
            const play::Outcome outcome = reloaded.Reload(WorldOf(text));
            EXPECT_EQ(outcome.warnings.size(), 0U)
                << (outcome.warnings.empty() ? "" : outcome.warnings[0].text);
            ASSERT_EQ(reloaded.Fingerprint(), plain.Fingerprint()) << step;
        }
    }
}

} // namespace
} // namespace zem::test
