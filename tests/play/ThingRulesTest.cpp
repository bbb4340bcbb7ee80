// Things and amounts in scripts: the two switches of a thing, which of one name is meant, ranges, loops over
// what is there.
#include "play/PlayedGame.h"

#include <gtest/gtest.h>

namespace zem::test {
namespace {

const char* const AskCup =
    "define procedure <ask>\nif here <cup> then msg <here>\nif exists <cup> then msg <exists>\n"
    "if visible <cup> then msg <visible>\nif object in <cup; Hall> then msg <in hall>\n"
    "if object in <cup; Cave> then msg <in cave>\nmsg <.>\nend define\n"
    "define room <Cave>\nend define\n";
const char* const CupCommands =
    "command <ask> do <ask>\ncommand <hide> hide <cup>\ncommand <show cup> show <cup>\n"
    "command <off> object off <cup>\ncommand <on> object on <cup>\n"
    "command <send> move object <cup; Cave>\ncommand <fetch> bring <cup>\n"
    "command <wrong> reveal <cup>\n";

TEST(ThingRules, AThingMustPassTwoSwitches) {
    ExpectPlayed({
        {"hidden and unavailable",
         CupCommands,
         "define object <cup>\nend define\n",
         AskCup,
         {{"ask", "here\nexists\nvisible\nin hall\n."},
          {"hide", ""},
          {"ask", "exists\n."},
          {"off", ""},
          {"ask", "."},
          {"show cup", ""},
          {"ask", "."},
          {"on", ""},
          {"ask", "here\nexists\nvisible\nin hall\n."}}},
        {"moving changes neither",
         CupCommands,
         "define object <cup>\nhidden\nend define\n",
         AskCup,
         {{"send", ""},
          {"fetch", ""},
          {"ask", "exists\n."},
          {"send", ""},
          {"show cup", ""},
          {"ask", "exists\nin cave\n."},
          {"wrong", ""},
          {"fetch", ""},
          {"ask", "here\nexists\nvisible\nin hall\n."}}},
        {"invisible never changes",
         CupCommands,
         "define object <cup>\ninvisible\nend define\n",
         AskCup,
         {{"ask", "here\nexists\nin hall\n."},
          {"show cup", ""},
          {"on", ""},
          {"ask", "here\nexists\nin hall\n."},
          {"hide", ""},
          {"ask", "exists\n."}}},
        {"a fault does nothing, and not makes it true",
         "command <a> if here <moon> then msg <yes> else msg <no>\ncommand <b> if not here <moon> then msg "
         "<yes>\n"
         "command <c> if not has <moon> and not in <Moon> and not been <Moon> then msg <yes>\n"
         "command <d> {\nshow <moon>\nmove object <cup; Moon>\nmove object <moon; Hall>\ngive <moon>\n}\n"
         "command <e> if here <cup> then msg <yes>\n",
         "define object <cup>\nend define\n",
         "",
         {{"a", "no"}, {"b", "yes"}, {"c", "yes"}, {"d", ""}, {"e", "yes"}}},
    });
}

TEST(ThingRules, ANameMeansOneOfSeveral) {
    ExpectPlayed({
        {"a character before an object, but each by its own commands",
         "command <a> {\nhide <Sam>\nif here <Sam> then msg <he>\nconceal <Sam>\nif not here <Sam> then msg "
         "<nobody>\n}\n"
         "command <b> {\nshow <Sam>\nif here <Sam> then msg <wrong>\nmove character <Sam; Cave>\nbring "
         "<Sam>\nreveal <Sam>\n"
         "if character in <Sam; Hall> then msg <fetched>\n}\n",
         "define object <Sam>\nend define\ndefine character <Sam>\nend define\n",
         "define room <Cave>\nend define\n",
         {{"a", "he\nnobody"}, {"b", "fetched"}}},
        {"capitals count",
         "command <a> if here <sam> then msg <yes> else msg <no>\ncommand <b> if has <Rope> then msg "
         "<yes> else msg <no>\nitems <rope>\nstartitems <ROPE>\ncommand <c> if has <rope> then msg <yes>\n",
         "define character <Sam>\nend define\n",
         "",
         {{"a", "no"}, {"b", "no"}, {"c", "yes"}}},
        {"kinds have names of their own",
         "items <Hall>\ncollectables <Hall p=4 [! h]>\ncommand <a> {\nflag on <Hall>\nset <Hall; v>\ngive "
         "<Hall>\n"
         "timer on <Hall>\nspend <Hall; 1>\n}\ncommand <b> if flag <Hall> and timer <Hall> and has <Hall> "
         "and in <Hall> "
         "and amount <Hall; 3> and not amount <Hall; 4> then msg <#Hall#>\n",
         "",
         "",
         {{"a", ""}, {"b", "v"}}},
        {"of rooms the last, of procedures and texts the first",
         "command <go in> goto <Twin>\ncommand <p> do <p>\ncommand <t> text <t>\n",
         "",
         "define room <Twin>\nlook <One.>\nend define\ndefine room <Twin>\nlook <Two.>\nend define\n"
         "define procedure <p>\nmsg <One.>\nend define\ndefine procedure <p>\nmsg <Two.>\nend define\n"
         "define text <t>\nOne.\nend define\ndefine text <t>\nTwo.\nend define\n",
         {{"p", "One."}, {"t", "One."}, {"go in", "\nTwin\nTwo."}}},
        {"variables are never put into names",
         "command <jump #x#> goto <#x#>\ncommand <say #x#> text <#x#>\n",
         "",
         "define room <Cave>\nend define\ndefine text <t>\nNo.\nend define\n",
         {{"jump Cave", ""}, {"say t", ""}}},
        {"items know only the list",
         "command <a> give <pear>\ncommand <b> if has <pear> then msg <yes> else msg <no>\n"
         "command <c> if empty handed then msg <empty>\n",
         "",
         "",
         {{"a", ""}, {"b", "no"}, {"c", "empty"}}},
    });
}

TEST(ThingRules, AmountsStayInTheirRange) {
    const char* const commands = "command <gain #n#> gain <c; #n#>\ncommand <spend #n#> spend <c; "
                                 "#n#>\ncommand <put #n#> set amount <c; #n#>\n"
                                 "command <least #n#> if amount <c; #n#> then msg <yes> else msg <no>\n";
    const std::string positive = std::string("collectables <c p=3 [!]>\n") + commands;
    const std::string percent = std::string("collectables <c %=150 [!]>\n") + commands;
    const std::string range = std::string("collectables <c 40r-5=0 [!]>\n") + commands;
    const std::string any = std::string("collectables <c n=2147483646 [!]>\n") + commands;
    const char* const nothing = "You are carrying nothing.\n";
    const auto shows = [&](const char* value) { return std::string(nothing) + value; };
    const std::string shown[] = {shows("0"),  shows("3"),          shows("100"),        shows("40"),
                                 shows("-5"), shows("2147483647"), shows("-2147483647")};
    ExpectPlayed({
        {"from 0",
         positive.c_str(),
         "",
         "",
         {{"spend 4", "There is not enough of that."},
          {"i", shown[1].c_str()},
          {"spend 3", ""},
          {"i", shown[0].c_str()},
          {"least 0", "yes"},
          {"least 1", "no"},
          {"put -9", ""},
          {"i", shown[0].c_str()},
          {"gain 3", ""},
          {"gain -9", ""},
          {"i", shown[0].c_str()}}},
        {"per cent",
         percent.c_str(),
         "",
         "",
         {{"i", shown[2].c_str()},
          {"gain 1", ""},
          {"i", shown[2].c_str()},
          {"spend 101", "There is not enough of that."},
          {"put -1", ""},
          {"i", shown[0].c_str()}}},
        {"a range turned round",
         range.c_str(),
         "",
         "",
         {{"put 99", ""},
          {"i", shown[3].c_str()},
          {"put -99", ""},
          {"i", shown[4].c_str()},
          {"spend 1", "There is not enough of that."},
          {"gain 45", ""},
          {"least 40", "yes"}}},
        {"ends of numbers",
         any.c_str(),
         "",
         "",
         {{"gain 5", ""}, {"i", shown[5].c_str()}, {"put -99999999999", ""}, {"i", shown[6].c_str()}}},
        {"the author's words",
         "collectables <c p=0>\nerror <badcollectable; Too poor.>\ncommand <pay> spend <c; 1>\n",
         "",
         "",
         {{"pay", "Too poor."}, {"i", "You are carrying nothing."}}},
    });
}

TEST(ThingRules, AmountsAreShownAsTheyAreDefined) {
    for (const auto& [definition, amount, told] :
         std::vector<std::tuple<const char*, const char*, const char*>>{
             {"c n=1 [! match*es*]", "1", "1 match"},
             {"c n=1 [! match*es*]", "-1", "-1 match"},
             {"c n=1 [! match*es*]", "0", "0 matches"},
             {"c n=1 [! of ! match*es* or *!*]", "6", "6 of 6 matches or 6"},
             {"c n=1 [! of ! match*es* or *!*]", "1", "1 of 1 match or "},
             {"c n=1 [! star * here]", "2", "2 star * here"},
             {"c dn=1 [!]", "0", ""},
             {"c dn=1 [!]", "-3", "-3"},
             {"c n=1 []", "2", ""},
             {"c n=1", "2", ""},
             {"c n=1 [points]", "2", "points"},
         }) {
        play::Session session(WorldOf(TextOfGame({"",
                                                  (std::string("collectables <") + definition +
                                                   ">\ncommand <put> " + "set amount <c; " + amount + ">\n")
                                                      .c_str(),
                                                  "",
                                                  "",
                                                  {}})),
                              1);
        session.Begin();
        session.Type("put");
        EXPECT_EQ(ToldBy(session.Type("i")),
                  std::string("You are carrying nothing.") + (*told == '\0' ? "" : "\n") + told)
            << definition << " at " << amount;
    }
}

TEST(ThingRules, EveryThingThatIsThereHasItsTurn) {
    const char* const things =
        "define object <a>\nend define\ndefine object <b>\ninvisible\nend define\n"
        "define object <c>\nhidden\nend define\ndefine object <d>\nend define\n"
        "define character <E>\nend define\ndefine character <F>\ninvisible\nend define\n";
    ExpectPlayed({
        {"those that are there, by name",
         "command <go> every object <p>\ncommand <call> every character <p>\n",
         things,
         "define procedure <p>\nmsg <#thing#>\nend define\n",
         {{"go", "a\nb\nd"}, {"call", "E\nF"}}},
        {"the list is made before, who is gone is passed over",
         "command <go> every object <p>\n",
         things,
         "define procedure <p>\nmsg <#thing#>\nhide <b>\nshow <c>\nend define\n",
         {{"go", "a\nd"}, {"go", "a\nc\nd"}}},
        {"the name is put back, from inside another, too",
         "startscript set <thing; mine>\n"
         "command <go> {\nevery object <p>\nmsg <#thing#>\n}\n",
         things,
         "define procedure <p>\nevery character <q>\nmsg <#thing#>\nend define\n"
         "define procedure <q>\nif equal <thing; E> then msg <E!>\nend define\n",
         {{"go", "E!\na\nE!\nb\nE!\nd\nmine"}}},
        {"in another room there are others",
         "command <go> {\ngoto <Cave>\nevery object <p>\n}\n",
         things,
         "define procedure <p>\nmsg <#thing#>\nend define\ndefine room <Cave>\nlook <Dark.>\ndefine object "
         "<z>\nend "
         "define\nend define\n",
         {{"go", "\nCave\nDark.\nYou can see z.\nz"}}},
    });
}

} // namespace
} // namespace zem::test
