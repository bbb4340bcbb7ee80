// What each verb does with what is there, had, hidden or nowhere, and which lines are turns.
#include "play/PlayedGame.h"

#include <gtest/gtest.h>

namespace zem::test {
namespace {

TEST(VerbRules, GoingToAPlaceByName) {
    const char* const house =
        "define room <Yard>\nalias <back yard>\nprefix <the>\nlook <Mud.>\nwest <Hall>\n"
        "end define\ndefine room <Attic>\nlook <Dust.>\nout <Hall>\nend define\n"
        "define room <Shed>\nlook <Spiders.>\nout <Hall>\nend define\n";
    const char* const ways = "east <Yard>\nplace <the dusty; Attic>\nplace <Shed> msg <Locked.>\n";
    const char* const yard = "\nThe back yard\nMud.\nYou can go west.";
    const char* const attic = "\nAttic\nDust.\nYou can go out.";
    const char* const hall = "\nHall\nHere.\nYou can go east, to the dusty Attic and to Shed.";
    const char* const none = "There is no such place to go to.";
    ExpectPlayed({
        {"every way to say it",
         "",
         ways,
         house,
         {{"go to attic", attic},
          {"out", hall},
          {"walk to the dusty attic", attic},
          {"exit", hall},
          {"run to attic", attic},
          {"leave", hall},
          {"to attic", attic},
          {"o", hall},
          {"enter ATTIC", attic},
          {"go out", hall},
          {"go to dusty", none},
          {"go to shed", "Locked."},
          {"attic", "I do not understand that."}}},
        {"the compass leads to a room of that name, by name and by alias",
         "",
         ways,
         house,
         {{"go to yard", yard}, {"w", hall}, {"enter the back yard", yard}, {"go west", hall}}},
        {"a way that is closed, a room that is closed",
         "command <shut> exit off <Hall; east>\ncommand <close> room off <Attic>\n",
         ways,
         house,
         {{"shut", ""},
          {"go to yard", none},
          {"e", "You cannot go that way."},
          {"close", ""},
          {"go to attic", none},
          {"look", "\nHall\nHere.\nYou can go to Shed."}}},
        {"without a name, and what the language has no way for",
         "",
         ways,
         house,
         {{"go to", "You must say what."},
          {"enter", "You must say what."},
          {"up", "You cannot go that way."},
          {"go down", "You cannot go that way."},
          {"in", "You cannot go that way."},
          {"nw", "You cannot go that way."},
          {"walk", "You must say what."}}},
    });
}

TEST(VerbRules, LookingAtThings) {
    ExpectPlayed({
        {"by every verb",
         "",
         "define object <book>\nlook <Old.>\nend define\n",
         "",
         {{"look at book", "Old."},
          {"examine book", "Old."},
          {"x book", "Old."},
          {"read book", "Old."},
          {"inspect the book", "Old."},
          {"x", "You must say what."},
          {"look around", "\nHall\nHere.\nYou can see book."},
          {"l", "\nHall\nHere.\nYou can see book."}}},
        {"nothing listed to look at",
         "",
         "define object <air>\ninvisible\nend define\n",
         "",
         {{"x", "There is nothing to look at."},
          {"look at", "There is nothing to look at."},
          {"x air", "You see nothing special."}}},
        {"an item has the look of its object, wherever that is",
         "items <gem; rope; box>\nstartitems <gem, rope>\n",
         "",
         "define room <Cave>\ndefine object <gem>\nhidden\nlook <Red.>\nend define\n"
         "define object <box>\nlook <Square.>\nend define\nend define\n",
         {{"x gem", "Red."}, {"x rope", "You see nothing special."}, {"x box", "You see no such thing."}}},
        {"a thing that is there goes before an item",
         "items <gem>\nstartitems <gem>\n",
         "define object <gem>\nlook <Here it lies.>\nend define\n",
         "",
         {{"x gem", "Here it lies."}}},
        {"hidden, off, elsewhere",
         "command <off> object off <cup>\ncommand <on> object on <cup>\n",
         "define object <ghost>\nhidden\nend define\ndefine object <cup>\nlook <Tin.>\nend define\n",
         "define room <Cave>\ndefine object <box>\nend define\nend define\n",
         {{"x ghost", "You see no such thing."},
          {"x box", "You see no such thing."},
          {"off", ""},
          {"x cup", "You see no such thing."},
          {"on", ""},
          {"x cup", "Tin."}}},
    });
}

TEST(VerbRules, TakingAndDropping) {
    ExpectPlayed({
        {"taking",
         "items <cup; coin; hat>\nstartitems <hat>\n",
         "define object <cup>\ntake {\ngive <cup>\nhide <cup>\n}\nend define\n"
         "define object <coin>\ntake {\ngive <coin>\nmsg <Clink.>\n}\nend define\n"
         "define object <rock>\nend define\ndefine object <door>\ntake lose <hat>\nend define\n"
         "define character <Tom>\nend define\n",
         "",
         {{"take rock", "You cannot take that."},
          {"get tom", "You cannot take that."},
          {"pick up cup", "Taken."},
          {"take cup", "You have it already."},
          {"take coin", "Clink."},
          {"take coin", "Clink."},
          {"take hat", "You have it already."},
          {"take moon", "There is nothing of that name here."},
          {"take door", ""},
          {"take hat", "There is nothing of that name here."},
          {"take", "You must say what."}}},
        {"dropping",
         "items <cup; hat>\nstartitems <hat>\n",
         "east <Yard>\ndefine object <cup>\nprefix <a>\ntake {\ngive <cup>\nobject off <cup>\nhide "
         "<cup>\n}\nend define\n"
         "define object <rock>\nend define\n",
         "define room <Yard>\nlook <Mud.>\nend define\n",
         {{"drop cup", "You do not have that."},
          {"take cup", "Taken."},
          {"e", "\nYard\nMud."},
          {"put down cup", "Dropped."},
          {"look", "\nYard\nMud.\nYou can see a cup."},
          {"i", "You are carrying hat."},
          {"drop hat", "You had better keep that."},
          {"drop rock", "You do not have that."},
          {"drop cup", "You do not have that."},
          {"take the cup", "Taken."}}},
        {"the words of an object need not be those of its item",
         "items <Cup>\nstartitems <Cup>\n",
         "define object <cup>\nend define\n",
         "",
         {{"drop cup", "You had better keep that."}}},
    });
}

TEST(VerbRules, UsingGivingSpeaking) {
    const char* const things =
        "use <rope> msg <In the hall.>\n"
        "define object <post>\nuse <rope> msg <Tied.>\nend define\n"
        "define character <Tom>\nuse <rope> msg <He ducks.>\ngive <coin> msg <Thanks.>\n"
        "give <pie>\nspeak msg <Hm.>\nend define\n"
        "define character <Mute>\nend define\n";
    const char* const items = "items <rope; coin; pie; saw; axe>\nstartitems <rope, coin, pie, saw>\n"
                              "use <rope> msg <In the game.>\nuse <saw> msg <Bzz.>\n";
    ExpectPlayed({
        {"using",
         items,
         things,
         "",
         {{"use rope", "In the hall."},
          {"use saw", "Bzz."},
          {"use coin", "That is of no use here."},
          {"use axe", "You do not have that."},
          {"use post", "That is of no use here."},
          {"use moon", "There is nothing of that name here."},
          {"use", "You must say what."}}},
        {"using on",
         items,
         things,
         "",
         {{"use rope on post", "Tied."},
          {"use rope with tom", "He ducks."},
          {"use saw on post", "Nothing happens."},
          {"use axe on post", "You do not have that."},
          {"use rope on moon", "There is nothing of that name here."}}},
        {"giving",
         items,
         things,
         "",
         {{"give coin to tom", "Thanks."},
          {"offer tom coin", "Thanks."},
          {"show the coin to Tom", "Thanks."},
          {"give tom the coin", "Thanks."},
          {"give pie to tom", "Given."},
          {"give pie to tom", "You do not have that."},
          {"give rope to tom", "That is not wanted."},
          {"give coin to post", "That is not wanted."},
          {"give coin to moon", "There is nobody of that name here."},
          {"give axe to tom", "You do not have that."},
          {"give coin", "To whom? Say GIVE ... TO ..."},
          {"i", "You are carrying rope, coin and saw."}}},
        {"speaking",
         items,
         things,
         "",
         {{"speak to tom", "Hm."},
          {"talk with tom", "Hm."},
          {"ask tom", "Hm."},
          {"greet tom", "Hm."},
          {"speak to mute", "There is no answer."},
          {"speak to post", "It does not answer."},
          {"speak to moon", "There is nobody of that name to speak to."},
          {"speak to", "You must say what."}}},
        {"what is carried, in the order of the list; amounts, a line for each",
         "items <b; a; c>\nstartitems <c, b>\ncollectables <gold p=2 [! coin*s*]; luck dn=0 [! luck]; age "
         "n=9 []; "
         "hp %=50 [*! of *!]>\ncommand <drop it> lose all\ncommand <lucky> gain <luck; -1>\n",
         "",
         "",
         {{"inv", "You are carrying b and c.\n2 coins\n50 of 50"},
          {"drop it", ""},
          {"lucky", ""},
          {"items", "You are carrying nothing.\n2 coins\n-1 luck\n50 of 50"}}},
    });
}

TEST(VerbRules, WhatIsATurn) {
    play::Session session(
        WorldOf(TextOfGame({"",
                            "items <pie>\nstartitems <pie>\nafterturn add <n; 1>\ncommand <nothing>\n",
                            "define object <cup>\nend define\ndefine character <Tom>\nend define\n",
                            "",
                            {}})),
        1);
    session.Begin();
    for (const auto& [line, isTurn] : std::vector<std::pair<const char*, bool>>{{"n", true},
                                                                                {"up", true},
                                                                                {"take cup", true},
                                                                                {"take tom", true},
                                                                                {"drop pie", true},
                                                                                {"use pie", true},
                                                                                {"speak to tom", true},
                                                                                {"look", true},
                                                                                {"i", true},
                                                                                {"z", true},
                                                                                {"nothing", true},
                                                                                {"x me", true},
                                                                                {"frotz", false},
                                                                                {"cup", false},
                                                                                {"take", false},
                                                                                {"x moon", false},
                                                                                {"take moon", false},
                                                                                {"speak to moon", false},
                                                                                {"give pie", false},
                                                                                {"go to moon", false},
                                                                                {"about", false},
                                                                                {"version", false},
                                                                                {"transcript on", false},
                                                                                {"transcript off", false},
                                                                                {"save", false},
                                                                                {"oops", false},
                                                                                {"", false},
                                                                                {"help", false}}) {
        const std::int64_t before = session.TurnCount();
        const play::Outcome outcome = PlayLine(session, line);
        if (std::string_view(line) == "help")
            continue; // a page; whether it took time nobody minds
        EXPECT_EQ(outcome.wasTurn, isTurn) << line;
        EXPECT_EQ(session.TurnCount() - before, isTurn ? 1 : 0) << line;
    }
}

TEST(VerbRules, WhatRunsBeforeATurnMayChangeWhatIsMeant) {
    ExpectPlayed({
        {"a thing goes away first",
         "beforeturn if flag <thief> then hide <cup>\nafterturn msg <Tick.>\n"
         "command <call> flag on <thief>\n",
         "define object <cup>\nlook <Tin.>\nend define\n",
         "",
         {{"x cup", "Tin.\nTick."},
          {"call", "Tick."},
          {"x cup", "You see no such thing.\nTick."},
          {"x cup", "You see no such thing."}}},
        {"a thing comes too late",
         "beforeturn show <cup>\nafterturn msg <Tick.>\n",
         "define object <cup>\nhidden\nlook <Tin.>\nend define\n",
         "",
         {{"x cup", "You see no such thing."}, {"z", "Time passes.\nTick."}, {"x cup", "Tin.\nTick."}}},
        {"the player is carried off first",
         "beforeturn if turns <1> then goto <Cave>\n",
         "command <sing> msg <Hall!>\n",
         "define room <Cave>\nlook <Dark.>\ncommand <sing> msg <Cave!>\nend define\n",
         {{"sing", "Hall!"}, {"sing", "\nCave\nDark.\nCave!"}}},
        {"the end comes first",
         "beforeturn if turns <1> then die\nafterturn msg <Tick.>\n",
         "",
         "",
         {{"z", "Time passes.\nTick."}, {"z", "You have lost.\nPlay again? "}}},
    });
}

} // namespace
} // namespace zem::test
