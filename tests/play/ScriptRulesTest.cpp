// What variables hold, what is printed, what runs, and when.
#include "play/PlayedGame.h"

#include <gtest/gtest.h>

namespace zem::test {
namespace {

/// A line of a script and what is told when it runs.
struct ScriptRow {
    const char* script; // lines of a procedure
    const char* told;
};

void ExpectTold(const char* game, const char* more, const std::vector<ScriptRow>& rows) {
    for (const ScriptRow& row : rows) {
        const std::string body =
            std::string(more) + "define procedure <run>\n" + row.script + "\nend define\n";
        play::Session session(
            WorldOf(TextOfGame(
                {"", (std::string(game) + "command <go> do <run>\n").c_str(), "", body.c_str(), {}})),
            1);
        session.Begin();
        EXPECT_EQ(ToldBy(session.Type("go")), row.told) << row.script;
    }
}

TEST(ScriptRules, ValuesAreTextsAndWholeNumbers) {
    ExpectTold("", "",
               {
                   {"set <v;  a ; b  >\nmsg <[#v#]>", "[a ; b]"},
                   {"set <v; 12 apples>\nadd <v; 1>\nmsg <%v% #v#>", "13 13"},
                   {"set <v; apples>\nadd <v; 2>\nmsg <%v%>", "2"},
                   {"set <v; -7>\nmultiply <v; 6>\nmsg <#v#>", "-42"},
                   {"set <v; 2147483640>\nadd <v; 100>\nmsg <%v%>", "2147483647"},
                   {"set <v; -2147483640>\nsubtract <v; 100>\nmsg <%v%>", "-2147483648"},
                   {"set <v; 99999999999>\nadd <v; 0>\nmsg <%v%>", "2147483647"},
                   {"set <v; 65536>\nmultiply <v; 65536>\nmsg <%v%>", "2147483647"},
                   {"set <v; -65536>\nmultiply <v; 65536>\nmsg <%v%>", "-2147483648"},
                   {"append <v; a>\nappend <v; b>\nmsg <#v#>", "ab"},
                   {"set <v; 5>\nappend <v; 5>\nadd <v; 1>\nmsg <#v#>", "56"},
                   {"set <a; x>\nset <b; #a##a#>\nset <a; y>\nmsg <#b##a#>", "xxy"},
                   {"set <a; #b#c>\nset <b; #a#>\nmsg <#b#>", "c"},
                   {"set <n; 3>\nset <m; 4>\nadd <n; %m%>\nmultiply <n; #m#>\nmsg <%n%>", "28"},
                   {"set <v; x>\nmsg <%v%/#v#/##v##/%%/100%/#w#>", "0/x/##v##/%%/100%/#w#"},
                   {"roll <v; -3>\nmsg <%v%>", "1"},
                   {"roll <v; 1>\nmsg <%v%>", "1"},
               });
}

TEST(ScriptRules, ComparisonsTakeNumbersAsNumbersAndFoldTexts) {
    struct Case {
        const char* value;
        const char* condition;
        bool holds;
    };
    for (const Case& one : {
             Case{"7", "equal <v; 007>", true},
             Case{"7", "equal <v; 7.>", true},
             Case{"-0", "equal <v; 0>", true},
             Case{"7x", "equal <v; 7>", false},
             Case{"", "equal <v; 0>", false},
             Case{"", "equal <v; >", true},
             Case{"Tom!", "equal <v; tom>", true},
             Case{"Éloïse", "equal <v; ELOISE>", true},
             Case{"O’Hara – Sr", "equal <v; o'hara sr>", true},
             Case{"a", "differ <v; b>", true},
             Case{"A", "differ <v; a>", false},
             Case{"the ferry", "contains <v; FERRY>", true},
             Case{"the ferry", "contains <v; >", true},
             Case{"", "contains <v; a>", false},
             Case{"café noir", "contains <v; fe n>", true},
             Case{"", "empty <v>", true},
             Case{"0", "empty <v>", false},
             Case{"5", "least <v; 5>", true},
             Case{"5", "more <v; 5>", false},
             Case{"5", "less <v; 5>", false},
             Case{"5 men", "more <v; 4>", true},
             Case{"x", "less <v; 1>", true},
             Case{"-3", "less <v; -2>", true},
             Case{"10", "more <v; 9>", true},
             Case{"10", "less <v; 9>", false},
         }) {
        const std::string script = std::string("set <v; ") + one.value + ">\nif " + one.condition +
                                   " then msg <yes> else msg <no>\nif not " + one.condition +
                                   " then msg <no> else msg <yes>";
        ExpectTold("", "", {{script.c_str(), one.holds ? "yes\nyes" : "no\nno"}});
    }
}

TEST(ScriptRules, WhatIsPrinted) {
    ExpectTold("",
               "define text <t>\n  One.\n\n  Two.\n\nend define\ndefine text <none>\nend define\n"
               "define text <codes>\n|ba|nb\nc\nend define\n",
               {
                   {"msg <a>\nmsg <>\nmsg <b>", "a\n\nb"},
                   {"msg <a>\nline\nmsg <b>", "a\n\nb"},
                   {"say <Hm.>", "“Hm.”"},
                   {"text <t>\nmsg <end>", "One.\n\nTwo.\n\nend"},
                   {"text <none>\nmsg <end>", "end"},
                   {"text <codes>\nmsg <d>", "a\nb\nc\nd"},
                   {"msg <a|nb|qc|>\nmsg <|s1x|s12y|S>", "a\nbc\n1xy"},
                   {"msg <one>\nclear\nmsg <two|cthree>", "one\n[clear]\ntwo\n[clear]\nthree"},
                   {"set <v; |bx>\nmsg <#v#|b!>", "|bx!"},
                   {"picture <a/b.png>\npicture <.x.png>\npicture <x.exe>\nsound <x.mid>\nmsg <end>", "end"},
                   {"picture <Map.JPG>\nsilence\nsound <a.flac>", "[picture: Map.JPG]\n[sound: a.flac]"},
               });
}

TEST(ScriptRules, StylesHoldToTheEndOfTheirText) {
    play::Session session(
        WorldOf(TextOfGame(
            {"",
             "default fontname <Georgia>\ndefault fontsize <11>\ncommand <go> {\nmsg <a|b|crb|xb|s20c|cb>\n"
             "colour <blue>\nfontsize <14>\nmsg <d|cye>\nmsg <f>\ncolour <Black>\nfontname <>\nmsg <g>\n}\n",
             "",
             "",
             {}})),
        1);
    session.Begin();
    std::string styles;
    for (const play::Piece& piece : session.Type("go").pieces)
        for (const char letter : piece.text)
            if (letter != '\n')
                styles += std::string(1, letter) + (piece.style.bold ? "*" : "") + piece.style.colour +
                          std::to_string(piece.style.size) + piece.style.font + " ";
    EXPECT_EQ(
        styles,
        "a11Georgia b*red11Georgia cred20Georgia dblue14Georgia eyellow14Georgia fblue14Georgia g14Georgia ");
}

TEST(ScriptRules, ScriptsRunInOrderAndLoopsHaveTheirNumbers) {
    const char* const procedures =
        "define procedure <inc>\nadd <n; 1>\nend define\ndefine procedure <say n>\nmsg <%n%>\nend define\n"
        "define procedure <stop>\nadd <n; 1>\nif least <n; 3> then flag off <f>\nend define\n"
        "define procedure <deeper>\nadd <n; 1>\nif less <n; 98> then do <deeper>\nend define\n"
        "define procedure <end>\nmsg <Before.>\nwin\nmsg <never>\nend define\n";
    ExpectTold(
        "afterturn msg <After.>\n", procedures,
        {
            {"do <inc>\ndo <say n>\nmsg <x>", "1\nx\nAfter."},
            {"set <n; 3>\nrepeat <%n%; inc>\nmsg <%n%>", "6\nAfter."},
            {"repeat <0; inc>\nrepeat <-2; inc>\nrepeat <x; inc>\nmsg <[%n%]>", "[0]\nAfter."},
            {"while <f; stop>\nmsg <[%n%]>\nflag flip <f>\nwhile <f; stop>\nmsg <[%n%]>", "[0]\n[3]\nAfter."},
            {"pick <none; inc; nobody>\nmsg <%n%>", "1\nAfter."},
            {"pick <none; nobody>\nmsg <x>", "x\nAfter."},
            {"do <deeper>\nmsg <%n%>", "98\nAfter."},
            {"do <end>\nmsg <never>", "Before.\nYou have won.\nPlay again? "},
            {"if flag <x> then msg <a> else if not flag <x> then msg <b> else msg <c>", "b\nAfter."},
            {"if not flag <x> then if flag <x> then msg <a> else msg <b>", "b\nAfter."},
            {"if chance <0> or chance <-5> then msg <a>\nif chance <100> and chance <250> then msg <b>",
             "b\nAfter."},
            {"type <frotz>\ntype <wait>\ntype <save>\nmsg <x>",
             "I do not know that word. “frotz”\nTime passes.\nx\nAfter."},
            {"' nothing\nfrobnicate <x>\nelse msg <y>\nmsg <z>", "z\nAfter."},
        });
}

TEST(ScriptRules, LimitsEndATurnThatTellsIt) {
    const char* const round = "Something in the game goes round in circles here.";
    const std::string many =
        std::string("define procedure <a>\ndo <a>\nend define\ndefine procedure <n>\nend define\n"
                    "define procedure <c>\nadd <n; 1>\nend define\ndefine procedure <deeper>\nadd <n; 1>\nif "
                    "less <n; 99> then "
                    "do <deeper>\nend define\n");
    for (const auto& [script, told] : std::vector<std::pair<std::string, std::string>>{
             {"do <a>\nmsg <never>", round},
             {"repeat <200000; n>\nmsg <never>", round},
             {"repeat <40000; c>\nmsg <%n%>", "40000"},
             {"flag on <f>\nwhile <f; n>", round},
             {"type <go>", round},
             {"do <deeper>", round},
         }) {
        play::Session session(
            WorldOf(TextOfGame({"",
                                "command <go> do <run>\nafterturn msg <never>\n",
                                "",
                                (many + "define procedure <run>\n" + script + "\nend define\n").c_str(),
                                {}})),
            1);
        session.Begin();
        EXPECT_EQ(ToldBy(session.Type("go")), told == round ? told : told + "\nnever") << script;
        EXPECT_EQ(session.TurnCount(), 1) << script;
        EXPECT_TRUE(session.Undo());
        EXPECT_EQ(session.TurnCount(), 0) << script;
    }
}

TEST(ScriptRules, QuestionsArePartOfTheirTurn) {
    ExpectPlayed({
        {"a text, trimmed, with capitals, perhaps none",
         "command <go> {\nask <v; Who?>\nmsg <[#v#]>\n}\n",
         "",
         "",
         {{"go", "Who?"}, {"<  Éva  X ", "[Éva  X]"}, {"go", "Who?"}, {"<", "[]"}}},
        {"yes and no",
         "command <go> if ask <Sure, #v#?> then msg <Y> else msg <N>\nstartscript set <v; Al>\n",
         "",
         "",
         {{"go", "Sure, Al?"},
          {"< maybe", "Please answer yes or no.\nSure, Al?"},
          {"< Y", "Y"},
          {"go", "Sure, Al?"},
          {"< NO.", "N"}}},
        {"no question once the answer is known",
         "command <a> if flag <f> and ask <A?> then msg <x> else msg <y>\n"
         "command <b> if not flag <f> or ask <B?> then msg <x>\n",
         "",
         "",
         {{"a", "y"}, {"b", "x"}}},
        {"a menu by number, by words, by their beginning",
         "command <go> choose <m>\n",
         "",
         "define selection <m>\ninfo <Of #v#:>\nchoice <the |bferry|xb> msg <F>\nchoice <the key> msg <K>\n"
         "choice <12> msg <T>\nend define\n",
         {{"go", "Of #v#:\n1. the ferry\n2. the key\n3. 12\nWhich? "},
          {"< 2", "K"},
          {"go", "Of #v#:\n1. the ferry\n2. the key\n3. 12\nWhich? "},
          {"< The F", "F"},
          {"go", "Of #v#:\n1. the ferry\n2. the key\n3. 12\nWhich? "},
          {"< the", "That is not one of the choices.\nOf #v#:\n1. the ferry\n2. the key\n3. 12\nWhich? "},
          {"< 0", "That is not one of the choices.\nOf #v#:\n1. the ferry\n2. the key\n3. 12\nWhich? "},
          {"< 12", "T"}}},
        {"a question is taken back with its turn",
         "command <go> {\nflag on <f>\nask <v; Who?>\nflag off <f>\n}\n"
         "command <is> if flag <f> then msg <on> else msg <off>\n",
         "",
         "",
         {{"go", "Who?"}, {"< x", ""}, {"undo", ""}, {"is", "off"}}},
        {"a key waits",
         "command <go> {\nmsg <a|wb>\nkey <Press.>\nmsg <c>\n}\n",
         "",
         "",
         {{"go", "a"}, {"<", "b\nPress."}, {"<", "c"}}},
    });
}

TEST(ScriptRules, TimePassesAtThePrompt) {
    const char* const ring = "define procedure <ring>\nmsg <Ring.>\nend define\n"
                             "define procedure <twice>\nmsg <2.>\nafter <1; ring>\nend define\n"
                             "define timer <t>\ninterval <2>\naction msg <Tick.>\nend define\n";
    ExpectPlayed({
        {"what is due runs in its order, without being a turn",
         "command <go> {\nafter <2; ring>\nafter <1; twice>\n}\nbeforeturn msg <B>\nafterturn msg <A>\n",
         "",
         ring,
         {{"go", "B\nA"}, {"@ 1", "2."}, {"@ 1", "Ring.\nRing."}, {"@ 50", ""}}},
        {"no seconds are the next prompt",
         "command <go> {\nafter <0; ring>\nmsg <x>\n}\n",
         "",
         ring,
         {{"go", "x\nRing."}}},
        {"undo takes time back with the turn before",
         "command <go> after <3; ring>\n",
         "",
         ring,
         {{"go", ""}, {"@ 2", ""}, {"undo", ""}, {"@ 9", ""}, {"go", ""}, {"@ 3", "Ring."}}},
        {"a timer",
         "command <go> timer on <t>\ncommand <stop> timer off <t>\n"
         "command <is> if timer <t> then msg <on> else msg <off>\n",
         "",
         ring,
         {{"is", "off"},
          {"go", ""},
          {"is", "on"},
          {"@ 5", "Tick.\nTick."},
          {"go", ""},
          {"@ 1", ""},
          {"@ 1", "Tick."},
          {"stop", ""},
          {"@ 9", ""},
          {"is", "off"}}},
        {"the seconds of a pause count",
         "command <go> {\nafter <5; ring>\npause <5>\nmsg <x>\n}\n",
         "",
         ring,
         {{"go", "x\nRing."}}},
        {"none while a question is open",
         "command <go> {\nafter <1; ring>\nask <v; Who?>\n}\n",
         "",
         ring,
         {{"go", "Who?"}, {"@ 9", ""}, {"< x", ""}, {"@ 1", "Ring."}}},
        {"the end ends time",
         "command <go> {\nafter <1; ring>\ndie\n}\n",
         "",
         ring,
         {{"go", "You have lost.\nPlay again? "}, {"< no", ""}, {"@ 9", ""}, {"undo", ""}, {"@ 9", ""}}},
        {"numbers may be variables",
         "command <in #n#> after <#n#; ring>\n",
         "",
         ring,
         {{"in 3", ""}, {"@ 2", ""}, {"@ 1", "Ring."}}},
    });
}

} // namespace
} // namespace zem::test
