#include "game/References.h"

#include "game/ScriptOwners.h"
#include "support/Cases.h"
#include "support/Catalogue.h"
#include "support/Games.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

namespace zem::test {
namespace {

std::string Lines(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += line + '\n';
    return text;
}

const char* Word(NameKind kind) {
    static constexpr const char* Words[] = {"none",        "room",      "object", "character", "thing",
                                            "item",        "procedure", "text",   "menu",      "variable",
                                            "collectable", "flag",      "timer",  "file"};
    return Words[static_cast<std::size_t>(kind)];
}

std::string Told(const GameModel& game, const Reference& reference) {
    const auto resolved = Resolve(game, reference.place);
    EXPECT_TRUE(resolved && resolved->text != nullptr) << reference.name;
    if (resolved && resolved->text != nullptr) {
        EXPECT_EQ(reference.place.bytes.Of(*resolved->text), reference.name);
    }
    const char* role = reference.role == ReferenceRole::Definition ? " is "
                       : reference.role == ReferenceRole::MayMean  ? " may be "
                                                                   : " ";
    return DescribePlace(game, reference.place) + ":" + role + Word(reference.kind) + " " +
           std::string(reference.name);
}

class ReferencesOf : public testing::Test {
protected:
    std::vector<std::string> All(const GameModel& game) const {
        std::vector<std::string> all;
        ForEachReference(game, commands,
                         [&](const Reference& reference) { all.push_back(Told(game, reference)); });
        std::sort(all.begin(), all.end());
        return all;
    }

    std::vector<std::string> Of(const GameModel& game, NameKind kind, std::string_view name) const {
        ReferenceIndex index(commands);
        index.GoOnTo(game);
        std::vector<std::string> all;
        for (const Reference& reference : index.Of(kind, name))
            all.push_back(Told(game, reference));
        return all;
    }

    const CommandLookup commands{ShippedCatalogue()};
};

// One line of a script, and every name in it.
TEST_F(ReferencesOf, ScriptsComeFromEveryPartOfEveryCommand) {
    for (const auto& [script, names] : Cases<std::string, std::vector<std::string>>{
             {"goto <Hall>", {"room Hall"}},
             {"goto < Hall > msg <goto <X>>", {"room Hall"}},
             {"move object <lamp; Hall>", {"object lamp", "room Hall"}},
             {"move character <Tom; Hall>", {"character Tom", "room Hall"}},
             {"room off <Hall>", {"room Hall"}},
             {"exit on <Hall; north>", {"room Hall"}},
             {"exit to <Hall; north; Attic>", {"room Attic", "room Hall"}},
             {"if in <Hall> or been <Attic> then win", {"room Attic", "room Hall"}},
             {"if object in <lamp; Hall> then win", {"object lamp", "room Hall"}},
             {"if not character in <Tom; Hall> then win", {"character Tom", "room Hall"}},
             {"if room on <Hall> and exit <Attic; north> then win", {"room Attic", "room Hall"}},
             {"object on <lamp>", {"object lamp"}},
             {"reveal <Tom>", {"character Tom"}},
             {"bring <Tom>", {"thing Tom"}},
             {"if here <a> and exists <b> and visible <c> then win", {"thing a", "thing b", "thing c"}},
             {"give <key>", {"item key"}},
             {"lose all", {}},
             {"if has <key> then lose <key>", {"item key", "item key"}},
             {"pick <a; b; c>", {"procedure a", "procedure b", "procedure c"}},
             {"repeat <3; a>", {"procedure a"}},
             {"while <lit; a>", {"flag lit", "procedure a"}},
             {"after <2; a>", {"procedure a"}},
             {"every object <a>", {"procedure a"}},
             {"text <intro>", {"text intro"}},
             {"choose <menu>", {"menu menu"}},
             {"if amount <gold; 1> then spend <gold; 1>", {"collectable gold", "collectable gold"}},
             {"set amount <gold; 1>", {"collectable gold"}},
             {"flag flip <lit>", {"flag lit"}},
             {"timer on <tide>", {"timer tide"}},
             {"if timer <tide> then timer off <tide>", {"timer tide", "timer tide"}},
             {"picture <a.png>", {"file a.png"}},
             {"set <x; %x% and 5% of it>", {"variable x", "variable x"}},
             {"set <x; goto <Hall>", {"variable x"}},
             {"ask <x; Who?>", {"variable x"}},
             {"if ask <set <x; 1>> then win", {}},
             {"if empty <x> then add <x; 1> else type <take #x#>",
              {"variable x", "variable x", "variable x"}},
             {"msg <#y# and %y%>", {}},
             {"thunder <#x#> goto <Hall>", {}},
             {"if flag <a> then if flag <b> then if flag <c> then flag on <d> else flag on <e>",
              {"flag a", "flag b", "flag c", "flag d", "flag e"}},
             {"' goto <Hall>", {}},
             {"if in <Hall> goto <Attic>", {}},
             {"every object <a> msg <#thing#>", {"procedure a"}},
             {"if flag <a> then every object <a> else msg <#thing#>",
              {"flag a", "procedure a", "variable thing"}},
         }) {
        GameModel game;
        game.StartScript = script;
        std::vector<std::string> found;
        ForEachReference(game, commands, [&](const Reference& reference) {
            EXPECT_EQ(reference.role, ReferenceRole::Use) << game.StartScript;
            found.push_back(std::string(Word(reference.kind)) + " " + std::string(reference.name));
        });
        std::sort(found.begin(), found.end());
        EXPECT_EQ(found, names) << script;
    }
}

constexpr const char* Every =
    "!include <lib.kel>\n"
    "define game <G #v#>\n"
    "start <Hall>\n"
    "items <lamp>\n"
    "collectables <gold p=0 [! #v#]>\n"
    "command <say #v#; #v# it 5%> do <p>\n"
    "use <lamp> do <p>\n"
    "error <badgo; No #v#.>\n"
    "game info <%v%>\n"
    "weather do <p> or if flag <f> then goto <Hall>\n"
    "'kept do <p>\n"
    "end define\n"
    "define room <Hall>\n"
    "alias <#v# hall>\nprefix <#w#>\nlook <#v# #w# 5% of %v%>\n"
    "north <Attic>\n"
    "south do <p>\n"
    "out <Attic> do <p>\n"
    "place <the #v#; Attic> do <p>\n"
    "command <x #v#> do <p>\n"
    "use <lamp> do <p>\n"
    "glow if flag <f> then {\ndo <p>\nflag off <f>\n}\n"
    "define object <lamp>\nlook <#v#>\ntake give <lamp>\nuse <lamp> hide <lamp>\n"
    "weight <9> do <p>\nend define\n"
    "define character <Tom>\nspeak say <#v#>\ngive <lamp> lose <lamp>\nend define\n"
    "end define\n"
    "define procedure <p>\nif in <Hall> then { goto <Hall> }\nend define\n"
    "define text <t>\na\n#v#\nend define\n"
    "define selection <m>\ninfo <#v#>\nchoice <#v#> text <t>\nend define\n"
    "define timer <tide>\ninterval <1>\naction if timer <tide> then do <p>\nend define\n";

TEST_F(ReferencesOf, FieldsRawLinesAndUnknownBlocksAreTheirOwn) {
    const GameModel game = LoadBytes(CrLf(Every));
    std::vector<std::string> expected = {
        "game properties, game name: variable v",
        "game properties, start room: room Hall",
        "game properties, extra info: variable v",
        "game properties, miscellaneous tags, line 1: procedure p",
        "game properties, miscellaneous tags, line 1: flag f",
        "game properties, miscellaneous tags, line 1: room Hall",
        "game properties, blocks of other kinds, line 1: is timer tide",
        "game properties, blocks of other kinds, line 3: timer tide",
        "game properties, blocks of other kinds, line 3: procedure p",
        "library lib.kel: file lib.kel",
        "item lamp, name: is item lamp",
        "collectable gold, definition: is collectable gold",
        "collectable gold, name: is collectable gold",
        "collectable gold, definition: variable v",
        "player command say #v#; #v# it 5%, pattern: variable v",
        "player command say #v#; #v# it 5%, pattern: variable v",
        "player command say #v#; #v# it 5%, action: procedure p",
        "use-able object lamp, name: item lamp",
        "use-able object lamp, action: procedure p",
        "error message badgo, text: variable v",
        "room Hall, name: is room Hall",
        "room Hall, alias: variable v",
        "room Hall, description: variable v",
        "room Hall, description: variable v",
        "room Hall, exit north: room Attic",
        "room Hall, exit south, action: procedure p",
        "room Hall, exit out: room Attic",
        "room Hall, exit out, action: procedure p",
        "room Hall, place the #v#; Attic, name: room Attic",
        "room Hall, place the #v#; Attic, name: variable v",
        "room Hall, place the #v#; Attic, action: procedure p",
        "room Hall, player command x #v#, name: variable v",
        "room Hall, player command x #v#, action: procedure p",
        "room Hall, use-able object lamp, name: item lamp",
        "room Hall, use-able object lamp, action: procedure p",
        "room Hall, miscellaneous tags, line 1: flag f",
        "room Hall, miscellaneous tags, line 1: procedure ~Internal Procedure 0",
        "object lamp in Hall, name: is object lamp",
        "object lamp in Hall, look: variable v",
        "object lamp in Hall, take: item lamp",
        "object lamp in Hall, use-able object lamp, name: item lamp",
        "object lamp in Hall, use-able object lamp, action: object lamp",
        "object lamp in Hall, miscellaneous tags, line 1: procedure p",
        "character Tom in Hall, name: is character Tom",
        "character Tom in Hall, speak: variable v",
        "character Tom in Hall, give-able object lamp, name: item lamp",
        "character Tom in Hall, give-able object lamp, action: item lamp",
        "procedure p, name: is procedure p",
        "procedure p, script, line 1: room Hall",
        "procedure p, script, line 1: procedure ~Internal Procedure 1",
        "procedure ~Internal Procedure 0, name: is procedure ~Internal Procedure 0",
        "procedure ~Internal Procedure 0, script, line 1: procedure p",
        "procedure ~Internal Procedure 0, script, line 2: flag f",
        "procedure ~Internal Procedure 1, name: is procedure ~Internal Procedure 1",
        "procedure ~Internal Procedure 1, script, line 1: room Hall",
        "text block t, name: is text t",
        "text block t, text, line 2: variable v",
        "text block intro, name: is text intro",
        "text block win, name: is text win",
        "text block lose, name: is text lose",
        "menu m, name: is menu m",
        "menu m, prompt: variable v",
        "menu m, choice #v#, name: variable v",
        "menu m, choice #v#, action: text t",
    };
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(Lines(All(game)), Lines(expected));
}

TEST_F(ReferencesOf, OneNameAreTheExactOnesAndWhatMayMeanIt) {
    const GameModel game = LoadBytes(
        CrLf("define game <G>\nstartscript {\nset <n; 1>\ngoto <#n#>\ngoto <Room #n#>\ngoto <room 1>\n"
             "goto <Room 1>\ngoto <Hall #n#>\ngoto <#m#>\nhide <Room 1>\nbring <Room 1>\n}\nend define\n"
             "define room <Room 1>\nend define\ndefine room <#n#>\nend define\n"));
    EXPECT_EQ(
        Of(game, NameKind::Room, "Room 1"),
        (std::vector<std::string>{"room Room 1, name: is room Room 1",
                                  "procedure ~Internal Procedure 0, script, line 2: may be room #n#",
                                  "procedure ~Internal Procedure 0, script, line 3: may be room Room #n#",
                                  "procedure ~Internal Procedure 0, script, line 5: room Room 1"}));
    EXPECT_EQ(Of(game, NameKind::Room, "#n#"),
              (std::vector<std::string>{"room #n#, name: is room #n#",
                                        "procedure ~Internal Procedure 0, script, line 2: room #n#"}));
    EXPECT_EQ(Of(game, NameKind::Character, "Room 1"),
              (std::vector<std::string>{"procedure ~Internal Procedure 0, script, line 9: thing Room 1"}));
    ReferenceIndex index(commands);
    index.GoOnTo(game);
    EXPECT_EQ(index.InOtherCapitals(NameKind::Room, "Room 1").size(), 1u);
    EXPECT_EQ(index.WouldBeVariable("m").size(), 1u);
    EXPECT_EQ(index.WouldBeVariable("n").size(), 0u);
}

TEST(CanBecome, AsksForWhatStandsOutsideOfTheVariables) {
    for (const auto& [made, name, can] : Cases<std::string, std::string, bool>{
             {"#a#", "Hall", true},
             {"Room #a#", "Room 1", true},
             {"Room #a#", "Hall 1", false},
             {"#a# Room", "East Room", true},
             {"#a# Room", "East Rooms", false},
             {"a#x#b%y%a", "a b a", true},
             {"a#x#a", "a", false},
             {"a", "a", false}, // made of no variable
         })
        EXPECT_EQ(CanBecome(made, name), can) << made << " " << name;
}

// Whatever happens to a game, the index that went along says what a new one says.
TEST_F(ReferencesOf, AChangedGameAreThoseOfANewIndex) {
    GameModel game = LoadBytes(CrLf(Every));
    ReferenceIndex kept(commands);
    const auto expectSame = [&](const char* what) {
        kept.GoOnTo(game);
        std::vector<std::string> found;
        kept.ForEach([&](const Reference& reference) { found.push_back(Told(game, reference)); });
        std::sort(found.begin(), found.end());
        EXPECT_EQ(Lines(found), Lines(All(game))) << what;
    };
    expectSame("as loaded");
    game.Rooms.Append().Name = "Attic";
    expectSame("a room more");
    game.Rooms.Edit(1).Objects.Edit(1).Take = "set <w; %v%>";
    expectSame("w is a variable now");
    const Room last = game.Rooms[2];
    game.Rooms.Edit(2) = game.Rooms[1];
    game.Rooms.Edit(1) = last;
    expectSame("other order");
    game.Procedures.Remove(1);
    expectSame("a procedure less");
    game.Procedures.Remove(1);
    game.Procedures.Append({"q", "goto <Hall>"});
    expectSame("another procedure");
    game.StartScript = "goto <#v#>";
    game.UnknownBlocks = std::string("action do <q>\r\n");
    game.PlayerCommands.Clear();
    expectSame("own fields");
    game = GameModel();
    expectSame("nothing");
}

// Of a sample no name is overlooked that stands behind a known keyword, wherever that is.
TEST_F(ReferencesOf, EverySampleHaveNoneMissing) {
    for (const auto& path : FilesIn(ZEM_SAMPLES)) {
        const GameModel game = LoadBytes(ReadBytes(path));
        std::multiset<std::string> searched;
        ForEachText(game, [&](const Place&, FieldUse use, const std::string& text) {
            if (use.kind != FieldKind::Script && use.kind != FieldKind::RawLines)
                return;
            for (const char* keyword : {"goto <", "give <", "flag on <", "flag off <", "text <", "choose <"})
                for (std::size_t at = text.find(keyword); at != std::string::npos;
                     at = text.find(keyword, at + 1)) {
                    const std::size_t begin = text.find('<', at) + 1;
                    if (at == 0 || text[at - 1] == ' ' || text[at - 1] == '\n')
                        searched.insert(text.substr(begin, text.find('>', begin) - begin));
                }
        });
        std::multiset<std::string> found;
        ForEachReference(game, commands, [&](const Reference& reference) {
            const std::string word = reference.command == nullptr ? "" : reference.command->keyword;
            if (reference.part == 0 && (word == "goto" || word == "give" || word == "flag on" ||
                                        word == "flag off" || word == "text" || word == "choose"))
                found.insert(std::string(reference.name));
        });
        EXPECT_EQ(found, searched) << path;
        EXPECT_FALSE(found.empty()) << path;
    }
}

} // namespace
} // namespace zem::test
