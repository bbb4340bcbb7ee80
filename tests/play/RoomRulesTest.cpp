// How rooms are entered and described, which ways are open, and how a game begins.
#include "play/PlayedGame.h"

#include <gtest/gtest.h>

namespace zem::test {
namespace {

TEST(RoomRules, TheBeginningHasItsOrder) {
    struct Case {
        const char* what;
        const char* game;
        const char* hall;
        const char* more;
        const char* told;
    };
    for (const Case& one : {
             Case{"script, intro, room, its script", "startscript msg <First.>\ndescription msg <Rain.>\n",
                  "script msg <Entered.>\n", "define text <INTRO>\nOnce.\nend define\n",
                  "First.\nOnce.\n\nHall\nHere.\nRain.\nEntered."},
             Case{"what the script clears is not the intro", "startscript clear\n", "",
                  "define text <intro>\nOnce.\nend define\n", "[clear]\nOnce.\n\nHall\nHere."},
             Case{"before and after are for turns", "beforeturn msg <B>\nafterturn msg <A>\n", "", "",
                  "\nHall\nHere."},
             Case{"a script that goes somewhere has begun the game", "startscript goto <Cave>\n", "",
                  "define room <Cave>\nlook <Dark.>\nend define\n", "\nCave\nDark."},
             Case{"nothing is here before a room is entered",
                  "startscript if in <Hall> or here <cup> or visible <cup> or first visit then msg <a> else "
                  "msg <b>\n",
                  "define object <cup>\ninvisible\nend define\n", "", "b\n\nHall\nHere."},
             Case{"neither look nor back do anything then", "startscript {\nlook\nback\n}\n", "", "",
                  "\nHall\nHere."},
             Case{"things exist before", "startscript if exists <cup> and not has <cup> then msg <yes>\n",
                  "define object <cup>\nhidden\nend define\n", "", "yes\n\nHall\nHere."},
             Case{"the game may end at once", "startscript die\n", "",
                  "define text <lose>\nOh.\nend define\n", "You have lost.\nOh.\nPlay again? "},
         }) {
        play::Session session(WorldOf(TextOfGame({"", one.game, one.hall, one.more, {}})), 1);
        EXPECT_EQ(ToldBy(session.Begin()), one.told) << one.what;
    }
}

TEST(RoomRules, ADescriptionHasItsParts) {
    struct Case {
        const char* what;
        const char* game;
        const char* hall;
        const char* told;
    };
    for (const Case& one : {
             Case{"prefix and name with a capital", "", "prefix <the great>\n", "\nThe great Hall\nHere."},
             Case{"accents have capitals, too", "", "prefix <École>\nalias <élan>\n", "\nÉcole élan\nHere."},
             Case{"words before it make it a sentence", "", "prefix <the>\nindescription <You are in>\n",
                  "\nYou are in the Hall.\nHere."},
             Case{"the alias in place of the name", "", "alias <lobby>\nindescription <You are in>\n",
                  "\nYou are in lobby.\nHere."},
             Case{"a script in place of the look", "description msg <Rain.>\n", "description msg <Dusk.>\n",
                  "\nHall\nDusk.\nRain."},
             Case{"things with prefix and suffix in the order of the file", "",
                  "define object <b>\nprefix <a>\nsuffix <c>\nend define\ndefine object <a>\nend define\n"
                  "define character <Z>\nprefix <old>\nend define\ndefine object <i>\ninvisible\nend define\n"
                  "define character <Y>\nend define\ndefine character <H>\nhidden\nend define\n"
                  "define object <x>\nend define\n",
                  "\nHall\nHere.\nYou can see a b c, a and x.\nAlso here: old Z and Y."},
             Case{"ways round the compass, out, places", "",
                  "place <Cave>\nout <Cave>\nnorthwest <Cave>\nwest <Cave>\nsouthwest <Cave>\nsouth <Cave>\n"
                  "southeast <Cave>\neast <Cave>\nnortheast <Cave>\nnorth <Cave>\nplace <the; Hall>\n",
                  "\nHall\nHere.\nYou can go north, northeast, east, southeast, south, southwest, west, "
                  "northwest, "
                  "out, to Cave and to the Hall."},
             Case{"ways to nowhere are not listed, scripts are", "",
                  "north <Moon>\neast msg <No.>\nplace <Moon>\n", "\nHall\nHere.\nYou can go east."},
             Case{"a message of codes alone drops its list",
                  "error <youcansee; |xb>\nerror <youcango; Ways:>\n",
                  "south <Cave>\ndefine object <a>\nend define\n", "\nHall\nHere.\nWays: south."},
             Case{"one way", "", "south <Cave>\n", "\nHall\nHere.\nYou can go south."},
         }) {
        play::Session session(
            WorldOf(
                TextOfGame({"", one.game, one.hall, "define room <Cave>\nlook <Dark.>\nend define\n", {}})),
            1);
        EXPECT_EQ(ToldBy(session.Begin()), one.told) << one.what;
    }
}

TEST(RoomRules, EnteringCountsAndScriptsGoOn) {
    const char* const cave = "define room <Cave>\nlook <Dark.>\nout <Hall>\n"
                             "script if been <Cave> then msg <Again.> else if first visit then msg <New.>\n"
                             "end define\n";
    ExpectPlayed({
        {"visits",
         "",
         "north <Cave>\nscript if first visit then msg <One.> else msg <More.>\n",
         cave,
         {{"n", "\nCave\nDark.\nYou can go out.\nNew."},
          {"out", "\nHall\nHere.\nYou can go north.\nMore."},
          {"n", "\nCave\nDark.\nYou can go out.\nAgain."}}},
        {"looking is no visit",
         "command <new> if first visit then msg <yes> else msg <no>\n",
         "north <Cave>\n",
         cave,
         {{"look", "\nHall\nHere.\nYou can go north."}, {"new", "yes"}}},
        {"what stands behind goes on in the new room",
         "command <fall> {\ngoto <Cave>\nif in <Cave> then msg <Ouch.>\n}\n",
         "",
         cave,
         {{"fall", "\nCave\nDark.\nYou can go out.\nNew.\nOuch."}}},
        {"back goes to the room before",
         "command <back> back\ncommand <here> goto <Hall>\n",
         "north <Cave>\n",
         cave,
         {{"back", ""},
          {"n", "\nCave\nDark.\nYou can go out.\nNew."},
          {"back", "\nHall\nHere.\nYou can go north."},
          {"here", "\nHall\nHere.\nYou can go north."},
          {"back", "\nCave\nDark.\nYou can go out.\nAgain."}}},
        {"a room that is closed lets nobody in and nobody out",
         "command <shut> room off <Cave>\ncommand <open> room on <Cave>\ncommand <jump> goto <Cave>\ncommand "
         "<back> back\n",
         "north <Cave>\n",
         cave,
         {{"shut", ""},
          {"n", "You cannot go that way."},
          {"jump", "You cannot go that way."},
          {"open", ""},
          {"n", "\nCave\nDark.\nYou can go out.\nNew."},
          {"shut", ""},
          {"look", "\nCave\nDark.\nYou can go out."},
          {"out", "\nHall\nHere."},
          {"back", "You cannot go that way."}}},
    });
}

TEST(RoomRules, ScriptsChangeWays) {
    const char* const cave = "define room <Cave>\nlook <Dark.>\nend define\n";
    const char* const inCave = "\nCave\nDark.";
    const char* const no = "You cannot go that way.";
    ExpectPlayed({
        {"a scripted way, closed and open",
         "command <shut> exit off <Hall; NORTH>\ncommand <open> exit on <Hall; north>\n",
         "north msg <Push.>\n",
         "",
         {{"n", "Push."}, {"shut", ""}, {"n", no}, {"open", ""}, {"n", "Push."}}},
        {"redirected, a scripted way is a plain one",
         "command <dig> exit to <Hall; north; Cave>\n",
         "north msg <Push.>\n",
         cave,
         {{"dig", ""}, {"n", inCave}}},
        {"redirected, a closed way stays closed",
         "command <dig> exit to <Hall; north; Cave>\ncommand <shut> exit off <Hall; north>\n"
         "command <open> exit on <Hall; north>\n",
         "north <Hall>\n",
         cave,
         {{"shut", ""}, {"dig", ""}, {"n", no}, {"open", ""}, {"n", inCave}}},
        {"out with a script, then without",
         "command <dig> exit to <Hall; out; Cave>\n",
         "out <Hall> msg <Locked.>\n",
         cave,
         {{"out", "Locked."}, {"dig", ""}, {"leave", inCave}}},
        {"a way that leads nowhere is nothing",
         "command <dig> exit to <Hall; north; Moon>\ncommand <is> "
         "if exit <Hall; east> then msg <yes> else msg <no>\n",
         "north <Cave>\n",
         cave,
         {{"dig", ""}, {"is", "no"}, {"n", inCave}}},
        {"taken back",
         "command <dig> exit to <Hall; west; Cave>\n",
         "",
         cave,
         {{"dig", ""}, {"look", "\nHall\nHere.\nYou can go west."}, {"undo", ""}, {"undo", ""}, {"w", no}}},
    });
}

} // namespace
} // namespace zem::test
