// Each fault in the smallest game that has it, beside the nearest game that has it not.
#include "base/TextEncoding.h"
#include "problems/CheckedFile.h"
#include "problems/Checks.h"

#include <gtest/gtest.h>

namespace zem::test {
namespace {

using namespace problems;

std::string ToldByCheck(const std::string& text, const char* id) {
    EXPECT_NE(FindCheck(id), nullptr) << id;
    const CheckedGame game(InputOfFile(FromUtf8(CrLf(text))));
    std::string told;
    for (const Problem& problem : FindProblems(game, {{id}, {}}))
        told += game.Describe(problem.place) + ": " + problem.text + '\n';
    return told;
}

/// A game with something of every kind, and a procedure of these lines that a player can run.
std::string GameOfScript(const std::string& lines) {
    return "define game <G>\nstart <Hall>\ngame author <A>\nitems <key>\nstartitems <key>\n"
           "collectables <gold p=5 [!]; health %=50 [!]>\ncommand <go> do <p>\nend define\n"
           "define room <Hall>\nprefix <the>\nlook <A hall.>\nnorth <Yard>\n"
           "define object <lamp>\nlook <A lamp.>\nend define\n"
           "define character <Tom>\ngender <he>\nlook <Tom.>\nspeak <Hm.>\nend define\nend define\n"
           "define room <Yard>\nprefix <the>\nlook <A yard.>\nsouth <Hall>\nend define\n"
           "define procedure <q>\nmsg <Q.>\nend define\ndefine text <t>\nT.\nend define\n"
           "define selection <m>\ninfo <Which?>\nchoice <One> msg <1>\nend define\n"
           "define timer <tide>\ninterval <5>\naction msg <Tide.>\nend define\n"
           "define procedure <p>\n" +
           lines + "\nend define\n";
}

TEST(Neighbours, OfScripts) {
    struct Case {
        const char* id;
        const char* bad;
        const char* good;
    };
    for (const Case& one : {
             Case{"A01", "goto <Kichen>", "goto <Yard>"},
             Case{"A01", "exit to <Hall; east; Moon>", "exit to <Hall; east; Yard>"},
             Case{"A01", "if been <Moon> then msg <x>", "if been <Yard> then msg <x>"},
             Case{"A02", "show <rusty kee>", "show <lamp>"},
             Case{"A03", "reveal <Tomm>", "reveal <Tom>"},
             Case{"A04", "if here <Tim> then msg <x>", "if here <Tom> then msg <x>"},
             Case{"A05", "give <oar>", "give <key>"},
             Case{"A05", "if not has <oar> then msg <x>", "lose all"},
             Case{"A06", "do <row hom>", "do <q>"},
             Case{"A06", "pick <q; r>", "pick <q; q>"},
             Case{"A07", "text <inscripton>", "text <WIN>"},
             Case{"A08", "choose <counter>", "choose <m>"},
             Case{"A09", "gain <scor; 5>", "gain <gold; 5>"},
             Case{"A10", "goto <yard>", "goto <Yard>"},
             Case{"A11", "show <Tom>", "reveal <Tom>"},
             Case{"A11", "conceal <lamp>", "hide <lamp>"},
             Case{"A12", "timer on <tides>", "timer on <tide>"},
             Case{"A13", "exit off <Hall; east>", "exit off <Hall; NORTH>"},
             Case{"A14", "if timer <tide> then msg <x>", "timer on <tide>\nif timer <tide> then msg <x>"},
             Case{"A15", "goto <#where#>", "goto <Yard>"},
             Case{"B01", "msg <Hello", "msg <Hello>"},
             Case{"B02", "if has <key then msg <x>", "if has <key> then msg <x>"},
             Case{"B03", "hide <lamp> msg <x>", "hide <lamp>\nmsg <x>"},
             Case{"B04", "else msg <x>", "if has <key> then msg <y>\nelse msg <x>"},
             Case{"B05", "if has <key> msg <x>", "if has <key> then msg <x>"},
             Case{"B06", "if has <key> and in <Hall> or in <Yard> then msg <x>",
                  "if has <key> and in <Hall> and not in <Yard> then msg <x>"},
             Case{"B07", "thunder <x>", "msg <thunder>"},
             Case{"B08", "mgs <x>", "msg <x>"},
             Case{"B08", "if hsa <key> then msg <x>", "IF HAS <key> THEN MSG <x>"},
             Case{"B09", "if has <key> then", "if has <key> then win"},
             Case{"B09", "if has <key> then win else", "if has <key> then win else die"},
             Case{"B10", "msg <>", "line"},
             Case{"B10", "goto <>", "goto <Yard>"},
             Case{"B11", "goto Yard", "goto <Yard>"},
             Case{"B12", "move object <lamp>", "move object <lamp; Yard>"},
             Case{"B12", "goto <Yard; Hall>", "msg <Yard; Hall>"},
             Case{"B13", "win <well done>", "win <>"},
             Case{"B14", "pick <q>", "do <q>"},
             Case{"B15", "if has <key> then if in <Hall> then msg <c> else msg <d>",
                  "if has <key> then msg <c> else if in <Hall> then msg <d>"},
             Case{"B18", "msg<x>", "msg <x>"},
             Case{"B18", "do< q>", "do <q>"},
             Case{"C01", "add <n; o1>", "add <n; %n%>"},
             Case{"C01", "pause <soon>", "pause <2>"},
             Case{"C02", "if chance <150> then msg <x>", "if chance <50> then msg <x>"},
             Case{"C03", "add <n; 0>", "add <n; -1>"},
             Case{"C03", "repeat <1; q>", "repeat <2; q>"},
             Case{"C04", "exit off <Hall; noth>", "exit off <Hall; north>"},
             Case{"C15", "set amount <health; 101>", "set amount <health; 100>"},
             Case{"C15", "set amount <gold; -1>", "set amount <gold; 0>"},
             Case{"C16", "spend <gold; 1>", "if amount <gold; 1> then spend <gold; 1>"},
             Case{"V01", "flag on <lit>", "flag on <lit>\nif flag <lit> then msg <x>"},
             Case{"V02", "if flag <lit> then msg <x>", "flag flip <lit>\nif flag <lit> then msg <x>"},
             Case{"V03", "flag off <lit>", "flag on <lit>\nflag off <lit>"},
             Case{"V04", "if empty <who> then msg <x>", "ask <who; Who?>\nif empty <who> then msg <x>"},
             Case{"V05", "ask <who; Who?>\nmsg <#who is it?>", "ask <who; Who?>\nmsg <#who# is it?>"},
             Case{"V06", "set <n; Ann>\nmsg <%n%>", "set <n; 12>\nmsg <%n%>"},
             Case{"V06", "set <n; Ann>\nappend <n; e>\nmsg <%n% #n#>", "set <n; Ann>\nmsg <#n#>"},
             Case{"V07", "set <x; 1>", "set <x; 1>\nif equal <x; 1> then msg <x>"},
             Case{"V08", "set <x; Ann>\nadd <x; 1>", "set <x; 1>\nadd <x; 1>"},
             Case{"V09", "flag on <lit>\nif flag <Lit> then msg <x>",
                  "flag on <lit>\nif flag <lit> then msg <x>"},
             Case{"X03", "win\nmsg <x>", "msg <x>\nwin"},
             Case{"X03", "die\nflag on <x>", "if has <key> then die\nmsg <x>"},
             Case{"X04", "if has <key> and has <key> then msg <x>",
                  "if has <key> and in <Hall> then msg <x>"},
             Case{"X04", "if has <key> or not has <key> then msg <x>",
                  "if has <key> or in <Hall> then msg <x>"},
             Case{"X08", "if has <key> then msg <a> else msg <a>", "if has <key> then msg <a> else msg <b>"},
             Case{"T03", "msg <|q>", "msg <|n>"},
             Case{"T03", "msg <at the end|>", "msg <at the end>"},
             Case{"T04", "msg <|s9 x>", "msg <|s09x>"},
             Case{"T05", "msg <|bx>", "msg <|bx|xb>"},
             Case{"T06", "msg <x|xb>", "msg <|bx|xb>"},
             Case{"T07", "msg <|cblue>", "msg <|cb lue>"},
             Case{"T10", "msg <the the cat>", "msg <the cat, the dog>"},
             Case{"T11", "msg <a  b>", "msg <a b>"},
             Case{"T12", "say <\"Hi.\">", "say <Hi, \"you\" there.>"},
             Case{
                 "U05", "msg <x>\nend define\ndefine procedure <~Internal Procedure 7>\nmsg <y>",
                 "do <~Internal Procedure 7>\nend define\ndefine procedure <~Internal Procedure 7>\nmsg <y>"},
             Case{"U01", "msg <x>\nend define\ndefine procedure <r>\nmsg <y>",
                  "after <3; r>\ndo <q>\nend define\ndefine procedure <r>\nmsg <y>"},
             Case{"X01", "do <p>", "if chance <50> then do <p>"},
             Case{"X02", "flag on <f>\nwhile <f; q>",
                  "flag on <f>\nwhile <f; r>\nend define\ndefine procedure <r>\nflag off <f>"},
             Case{"E05", "do <r>\nend define\ndefine procedure <r>", "do <q>"},
         }) {
        EXPECT_NE(ToldByCheck(GameOfScript(one.bad), one.id), "") << one.id << ": " << one.bad;
        EXPECT_EQ(ToldByCheck(GameOfScript(one.good), one.id), "") << one.id << ": " << one.good;
    }
}

TEST(Neighbours, OfRecords) {
    struct Case {
        const char* id;
        const char* what; // "game", "hall" or "more": where the lines stand
        const char* bad;
        const char* good;
    };
    for (const Case& one : {
             Case{"C10", "game", "collectables <score p0>", "collectables <score p=0>"},
             Case{"C11", "game", "collectables <temp 0r40=99>", "collectables <temp 0r40=40>"},
             Case{"C12", "game", "collectables <temp 40r0=5>", "collectables <temp 0r40=5>"},
             Case{"C13", "game", "collectables <score p=0 [! point*s]>",
                  "collectables <score p=0 [! point*s*]>"},
             Case{"C14", "game", "collectables <score p=0 [points]>", "collectables <score p=0 []>"},
             Case{"D01", "more", "define room <Hall>\nend define", "define room <hall>\nend define"},
             Case{"D02", "hall", "define object <a>\nend define\ndefine object <a>\nend define",
                  "define object <a>\nend define\ndefine character <a>\nend define"},
             Case{"D04", "more", "define procedure <a>\nend define\ndefine procedure <a>\nend define",
                  "define procedure <a>\nend define\ndefine text <a>\nend define"},
             Case{"D05", "more", "define text <a>\nend define\ndefine text <a>\nend define",
                  "define text <a>\nend define\ndefine text <A>\nend define"},
             Case{"D07", "game", "items <a; b; a>", "items <a; b; c>"},
             Case{"D08", "game", "collectables <a p=0; a p=1>", "collectables <a p=0; b p=0>"},
             Case{"D09", "game", "command <hop> win\ncommand <HOP> die",
                  "command <hop> win\ncommand <hops> die"},
             Case{"D10", "game", "items <a>\nuse <a> win\nuse <a> die",
                  "items <a; b>\nuse <a> win\nuse <b> die"},
             Case{"D11", "hall", "define object <a>\nend define\ndefine character <a>\nend define",
                  "define object <a>\nend define\ndefine character <b>\nend define"},
             Case{"D15", "more", "define selection <m>\nchoice <a> win\nchoice <a> die\nend define",
                  "define selection <m>\nchoice <a> win\nchoice <b> die\nend define"},
             Case{"E01", "more", "define room <a>\nend define",
                  "define room <a>\ndescription msg <x>\nend define"},
             Case{"E02", "hall", "description msg <x>", "script msg <x>"},
             Case{"E03", "hall", "define object <a>\nend define", "define object <a>\nlook <x>\nend define"},
             Case{"E04", "hall", "define character <a>\nend define",
                  "define character <a>\nspeak <x>\nend define"},
             Case{"E06", "more", "define selection <m>\ninfo <a>\nend define",
                  "define selection <m>\ninfo <a>\nchoice <b> win\nend define"},
             Case{"E07", "more", "define selection <m>\nchoice <b>\nend define",
                  "define selection <m>\nchoice <b>\nchoice <c> win\nend define"},
             Case{"E08", "more", "define selection <m>\nchoice <b> win\nend define",
                  "define selection <m>\ninfo <a>\nchoice <b> win\nend define"},
             Case{"E09", "hall", "define character <a>\ngender <man>\nend define",
                  "define character <a>\ngender <he>\nend define"},
             Case{"E10", "hall", "define object <a>\nhidden\ninvisible\nend define",
                  "define object <a>\nhidden\nend define"},
             Case{"E11", "more", "define room <a>\nalias <inn>\nindescription <You are in>\nend define",
                  "define room <a>\nalias <inn>\nindescription <You are in>\nprefix <the>\nend define"},
             Case{"M04", "hall", "north <Hall>", "north goto <Hall>"},
             Case{"M09", "hall", "place <a; b; Hall>", "place <a; Hall>"},
             Case{"K01", "game", "command <> win", "command <a> win"},
             Case{"K02", "game", "command <shout #words> win", "command <shout #words#> win"},
             Case{"K04", "game", "command <say #x#> win\ncommand <say hello> die",
                  "command <say hello> die\ncommand <say #x#> win"},
             Case{"K05", "game", "command <a #x##y#> win", "command <a #x# #y#> win"},
             Case{"Y02", "more", "define synonyms\ntake = take\nend define",
                  "define synonyms\nget = take\nend define"},
             Case{"Y03", "more", "define synonyms\na = b\na = c\nend define",
                  "define synonyms\na = b\nd = b\nend define"},
             Case{"Y04", "more", "define synonyms\nx = look\nlook = see\nend define",
                  "define synonyms\nx = look\nsee = look\nend define"},
             Case{"Y05", "more", "define synonyms\n= b\nend define", "define synonyms\na = b\nend define"},
             Case{"U02", "more", "define text <a>\nx\nend define", "define text <intro>\nx\nend define"},
             Case{"U03", "more", "define selection <m>\nchoice <a> win\nend define", ""},
             Case{"L02", "hall", "define object <a>\nhidden\nend define",
                  "define object <a>\nhidden\nend define\nscript show <a>"},
             Case{"L03", "game",
                  "items <a>\nend define\ndefine room <R>\ndefine object <a>\ntake give <a>\nend define",
                  "items <a>\nend define\ndefine room <R>\ndefine object <a>\ntake {\ngive <a>\nhide "
                  "<a>\n}\nend define"},
             Case{"X06", "hall", "script if in <Hall> then win", "script if has <x> then win"},
             Case{"X11", "game", "beforeturn goto <Hall>", "beforeturn if turns <9> then goto <Hall>"},
             Case{"G03", "hall", "script win", "script die"},
             Case{"G04", "hall", "script die", "script win"},
             Case{"T08", "more", "define text <a>\nx|ny\nend define", "define text <a>\nx\ny\nend define"},
             Case{"T09", "hall", "define object <apple>\nprefix <a>\nend define",
                  "define object <apple>\nprefix <an>\nend define"},
             Case{"S01", "hall", "north<Hall>", "north <Hall>"},
             Case{"S02", "hall", "alais <x>", "weather <x>"},
             Case{"S04", "game", "items <a; b>\nstartitems <a; b>", "items <a; b>\nstartitems <a, b>"},
             Case{"S05", "hall", "north <Hall> msg <x>", "out <Hall> msg <x>"},
             Case{"S07", "hall", "alias <a>\nalias <b>", "alias <a>"},
             Case{"S08", "more", "define selection <m>\nnonsense\nchoice <a> win\nend define",
                  "define selection <m>\nchoice <a> win\nend define"},
             Case{"S09", "game", "items <a>\nstartitems <b>", "items <a>\nstartitems <A>"},
             Case{"S10", "game", "error <badgoo; x>", "error <BADGO; x>"},
             Case{"S16", "hall", "alias T<he inn>", "alias <The inn>"},
         }) {
        const auto text = [&](const std::string& lines) {
            const std::string what = one.what;
            const auto at = [&](const char* place) { return what == place ? lines + "\n" : ""; };
            return "define game <G>\nstart <Hall>\n" + at("game") +
                   "end define\ndefine room <Hall>\nlook <This is the hall, and you see it.>\n" + at("hall") +
                   "end define\n" + at("more");
        };
        EXPECT_NE(ToldByCheck(text(one.bad), one.id), "") << one.id << ": " << one.bad;
        EXPECT_EQ(ToldByCheck(text(one.good), one.id), "") << one.id << ": " << one.good;
    }
}

} // namespace
} // namespace zem::test
