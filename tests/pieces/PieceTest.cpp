#include "kel/ScriptTree.h"
#include "pieces/CopyPiece.h"
#include "pieces/MoveRecords.h"
#include "pieces/PastePiece.h"
#include "support/Catalogue.h"
#include "support/Games.h"

#include <string>
#include <vector>

namespace zem::test {
namespace {

const CommandLookup& PasteCommands() {
    static const CommandLookup commands(ShippedCatalogue());
    return commands;
}

/// Two rooms with things that scripts, exits and items refer to.
GameModel PantryGame() {
    return LoadBytes(CrLf("'ZEM-NIP <3>\n"
                          "define game <Pantry>\n"
                          "start <Kitchen>\n"
                          "items <jam; spoon 2>\n"
                          "startitems <jam>\n"
                          "collectables <gold d 1 [one coin]>\n"
                          "command <shout #what#> do <Answer>\n"
                          "end define\n"
                          "define room <Kitchen>\n"
                          "north <Pantry>\n"
                          "command <cook> msg <You cook.>\n"
                          "define character <Cook>\n"
                          "speak do <~Internal Procedure 0>\n"
                          "end define\n"
                          "define object <jam>\n"
                          "take {\n"
                          "give <jam>\n"
                          "hide <jam>\n"
                          "}\n"
                          "end define\n"
                          "end define\n"
                          "define room <Pantry>\n"
                          "south <Kitchen>\n"
                          "east <Pantry>\n"
                          "script if in <Pantry> then do <Answer> else goto <Kitchen>\n"
                          "zem-map <2; 3>\n"
                          "end define\n"
                          "define procedure <~Internal Procedure 0>\n"
                          "msg <Hello.>\n"
                          "if has <jam> then do <~Internal Procedure 1>\n"
                          "end define\n"
                          "define procedure <~Internal Procedure 1>\n"
                          "say <Jam!>\n"
                          "lose <jam>\n"
                          "end define\n"
                          "define procedure <Answer>\n"
                          "text <Echo>\n"
                          "end define\n"
                          "define text <Echo>\n"
                          "Echo, echo.\n"
                          "end define\n"
                          "define selection <Wares>\n"
                          "info <What do you want?>\n"
                          "choice <Jam> give <jam>\n"
                          "end define\n"
                          "define timer <tide>\n"
                          "interval <60>\n"
                          "end define\n"));
}

Place RoomPlace(int k) {
    return Place::Of({{FieldId::GameRooms, k}});
}

std::string NewNames(const Pasted& pasted) {
    std::string names;
    for (const NameChange& change : pasted.renamed)
        names += (names.empty() ? "" : ", ") + change.from + " > " + change.to;
    return names;
}

struct CopyCase {
    const char* name;
    std::vector<Place> places;
    const char* what;
    const char* text;
};

class Copied : public testing::TestWithParam<CopyCase> {};

TEST_P(Copied, IsWrittenAsAFileHasIt) {
    const PieceText copied = CopyPiece(PantryGame(), GetParam().places);
    EXPECT_EQ(copied.what, GetParam().what);
    EXPECT_EQ(copied.text, CrLf(GetParam().text));
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, Copied,
    testing::Values(
        CopyCase{"Items",
                 {Place::Of({{FieldId::GameItems, 1}}), Place::Of({{FieldId::GameItems, 2}})},
                 "2 items",
                 "items <jam; spoon 2>\nstartitems <jam>\n"},
        CopyCase{"Commands",
                 {Place::Of({{FieldId::GamePlayerCommands, 1}}),
                  Place::Of({{FieldId::GameRooms, 1}, {FieldId::RoomCommands, 1}})},
                 "2 player commands",
                 "command <shout #what#> do <Answer>\ncommand <cook> msg <You cook.>\n"},
        CopyCase{"ThingWithProcedures",
                 {Place::Of({{FieldId::GameRooms, 1}, {FieldId::RoomCharacters, 1}})},
                 "character Cook",
                 "define character <Cook>\nspeak do <~Internal Procedure 0>\n\nend define\n"
                 "define procedure <~Internal Procedure 0>\nmsg <Hello.>\n"
                 "if has <jam> then do <~Internal Procedure 1>\n\nend define\n\n"
                 "define procedure <~Internal Procedure 1>\nsay <Jam!>\nlose <jam>\n\nend define\n"},
        CopyCase{
            "TextAndMenu",
            {Place::Of({{FieldId::GameTextSections, 1}}), Place::Of({{FieldId::GameSelectionMenus, 1}})},
            "text block Echo and menu Wares",
            "define text <Echo>\nEcho, echo.\nend define\n\n"
            "define selection <Wares>\ninfo <What do you want?>\nchoice <Jam> give <jam>\nend define\n"}),
    [](const auto& test) { return test.param.name; });

struct PasteCase {
    const char* name;
    const char* text;
    const char* what;
    const char* renamed;
    std::size_t added;
    const char* lines = "";
};

class PastedText : public testing::TestWithParam<PasteCase> {};

TEST_P(PastedText, GetsFreeNames) {
    const Pasted pasted =
        PastePiece(PantryGame(), CrLf(GetParam().text), {.room = 2, .takesLines = true}, PasteCommands());
    EXPECT_EQ(pasted.what, GetParam().what);
    EXPECT_EQ(NewNames(pasted), GetParam().renamed);
    EXPECT_EQ(pasted.added.size(), GetParam().added);
    std::string lines;
    for (const std::string& line : pasted.lines)
        lines += line + "\n";
    EXPECT_EQ(lines, GetParam().lines);
    for (const Place& place : pasted.added)
        EXPECT_TRUE(Exists(pasted.game, place));
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, PastedText,
    testing::Values(
        PasteCase{"Free", "define room <Cellar>\nend define\n", "room Cellar", "", 1},
        PasteCase{"Taken", "define room <Pantry>\nend define\n", "room Pantry 2", "Pantry > Pantry 2", 1},
        PasteCase{"OtherCapitals", "define room <PANTRY>\nend define\n", "room PANTRY 2", "PANTRY > PANTRY 2",
                  1},
        PasteCase{"CountsOn", "items <spoon 2>", "item spoon 3", "spoon 2 > spoon 3", 1},
        PasteCase{"PassesItsOwn", "items <jam; jam 2>", "2 items", "jam > jam 3", 2},
        PasteCase{"OneThingForThePlayer", "items <jam>\ndefine object <jam>\ntake give <jam>\nend define\n",
                  "object jam 2 and item jam 2", "jam > jam 2, jam > jam 2", 2},
        PasteCase{"FreeTwinOfATakenOne", "items <Cook>\ndefine object <Cook>\nend define\n",
                  "object Cook 2 and item Cook 2", "Cook > Cook 2, Cook > Cook 2", 2},
        PasteCase{"NoBlankInCollectables", "collectables <gold d 1 [one coin]>", "collectable gold2",
                  "gold > gold2", 1},
        PasteCase{"Timer", "define timer <tide>\ninterval <5>\nend define\n", "1 block of another kind",
                  "tide > tide 2", 0},
        PasteCase{"Lines", "msg <Hello>\n\n  if has <jam> then win\nelse lose <jam>", "2 lines", "", 0,
                  "msg <Hello>\nif has <jam> then win else lose <jam>\n"},
        PasteCase{"LinesWithBraces", "if has <jam> then {\nmsg <One.>\nmsg <Two.>\n}", "1 line", "", 0,
                  "if has <jam> then  do <~Internal Procedure 4>\n"},
        PasteCase{"CommandOfAnAddOn", "quake <9; loud>", "1 line", "", 0, "quake <9; loud>\n"},
        PasteCase{"HeadOfAFile",
                  "' pantry.kel created by ZEM\n\n'ZEM-NIP <9>\n!include <x.lib>\nitems <rope>\n",
                  "item rope", "", 1},
        PasteCase{"WholeGame",
                  "define game <Other>\nstart <A>\nitems <rope>\nend define\ndefine room <A>\nend define\n",
                  "room A and item rope", "", 2}),
    [](const auto& test) { return test.param.name; });

struct RefusedCase {
    const char* name;
    const char* text;
    const char* problem;
    PasteTarget target = {};
};

class RefusedText : public testing::TestWithParam<RefusedCase> {};

TEST_P(RefusedText, IsToldInPlainWords) {
    const GameModel game = PantryGame();
    EXPECT_EQ(ProblemOf([&] { PastePiece(game, CrLf(GetParam().text), GetParam().target, PasteCommands()); }),
              GetParam().problem);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, RefusedText,
    testing::Values(
        RefusedCase{"Nothing", "", "There is no Kel in the text."},
        RefusedCase{"Comments", "' just a word\n\n", "There is no Kel in the text."},
        RefusedCase{"Mail", "Hello,\nhere is the room.", "this is no line of Kel: \"Hello,\""},
        RefusedCase{"HalfABlock", "items <a>\ndefine room <Hall>\nnorth <Pantry>\n",
                    "line 2: half a block: its \"end define\" is missing: define room <Hall>"},
        RefusedCase{"OtherHalf", "north <Pantry>\nend define\n",
                    "line 2: this ends a block whose begin is missing: end define"},
        RefusedCase{"OpenBrace", "items <a>\nif has <a> then {\nwin\n",
                    "line 2: the \"{\" on this line is never closed: if has <a> then {"},
        RefusedCase{"OpenBracket", "define room <Hall\nend define\n",
                    "line 1: a parameter in angle brackets is missing: define room <Hall"},
        RefusedCase{
            "MissingProcedure", "define room <Hall>\nscript do <~Internal Procedure 1>\nend define\n",
            "a part of the text is missing: it calls ~Internal Procedure 1, which does not stand in it"},
        RefusedCase{
            "IfWithoutThen",
            "if has <a>",
            "this is no line of Kel: \"if has <a>\" (after a condition comes \"and\", \"or\" or \"then\")",
            {.takesLines = true}},
        RefusedCase{"LostText", "define room <Hall>\nnorth <Pantry> msg <Never seen.>\nend define\n",
                    "line 2: a game would lose a part of this line: \"msg <Never seen.>\": north <Pantry> "
                    "msg <Never seen.>"},
        RefusedCase{"NoRoomForThings", "define object <rope>\nend define\n",
                    "The text holds object rope: select the room that is to get it."},
        RefusedCase{"NoScriptForLines", "msg <Hello>",
                    "The text holds lines of a script; they can be pasted in the window of a script."},
        RefusedCase{"OtherList",
                    "define room <Hall>\nend define\nitems <rope>\n",
                    "The text holds room Hall and item rope, which cannot be pasted here.",
                    {.only = {FieldId::GameItems}}}),
    [](const auto& test) { return test.param.name; });

TEST(PastePiece, ReferencesInsideThePieceFollowAndOthersStay) {
    const GameModel game = PantryGame();
    const PieceText copied = CopyPiece(game, {RoomPlace(2)});
    const Pasted pasted = PastePiece(game, copied.text, {}, PasteCommands());
    const Room& room = pasted.game.Rooms[3];
    EXPECT_EQ(room.Name, "Pantry 2");
    EXPECT_EQ(room.East->Key, "Pantry 2");
    EXPECT_EQ(room.South->Key, "Kitchen");
    EXPECT_EQ(room.Script, "if in <Pantry 2> then do <Answer> else goto <Kitchen>");
    EXPECT_EQ(room.MiscTags, "") << "two rooms on one place of the map";
    EXPECT_EQ(pasted.game.Rooms[1], game.Rooms[1]);
}

TEST(PastePiece, InternalProceduresGetNumbersOfTheirOwn) {
    const GameModel game = PantryGame();
    const PieceText copied = CopyPiece(game, {RoomPlace(1)});
    const Pasted pasted = PastePiece(game, copied.text, {}, PasteCommands());
    const Room& room = pasted.game.Rooms[3];
    EXPECT_EQ(room.Characters[1].Speak, "do <~Internal Procedure 4>");
    EXPECT_EQ(UnfoldScript(pasted.game, room.Characters[1].Speak),
              (std::vector<std::string>{"msg <Hello.>", "if has <jam> then do <~Internal Procedure 5>"}));
    EXPECT_EQ(UnfoldScript(pasted.game, room.Objects[1].Take),
              (std::vector<std::string>{"give <jam>", "hide <jam 2>"}));
    EXPECT_EQ(pasted.game.NextInternalProcedure, 7);
    EXPECT_EQ(pasted.added.size(), 1U);
}

TEST(PastePiece, CommandsGoIntoTheRoomThatAsksForThem) {
    const GameModel game = PantryGame();
    const Pasted pasted =
        PastePiece(game, "command <wait> win", {.room = 2, .commandsIntoRoom = true}, PasteCommands());
    EXPECT_EQ(pasted.game.Rooms[2].Commands[1], (ScriptPair{"wait", "win"}));
    EXPECT_EQ(pasted.game.PlayerCommands, game.PlayerCommands);
}

TEST(PastePiece, StandardTextsAndScriptsOfTheGameAreJoined) {
    const GameModel game = PantryGame();
    const std::string text = CrLf("define game <x>\nstartscript msg <Two.>\nend define\n"
                                  "define text <intro>\nOnce.\nend define\n");
    const Pasted once = PastePiece(game, text, {}, PasteCommands());
    const Pasted twice = PastePiece(once.game, text, {}, PasteCommands());
    EXPECT_EQ(NewNames(once), "");
    EXPECT_EQ(once.game.TextSections.Count(), game.TextSections.Count());
    EXPECT_EQ(NewNames(twice), "intro > intro 2");
    EXPECT_EQ(UnfoldScript(twice.game, twice.game.StartScript),
              (std::vector<std::string>{"msg <Two.>", "msg <Two.>"}));
}

TEST(CopyLines, BringTheirProceduresAlong) {
    const GameModel game = PantryGame();
    const std::vector<std::string> lines = {"do <~Internal Procedure 1>", "if has <jam> then win"};
    const PieceText copied = CopyLines(game, lines);
    const Pasted pasted = PastePiece(game, copied.text, {.takesLines = true}, PasteCommands());
    ASSERT_EQ(pasted.lines.size(), 2U);
    EXPECT_EQ(pasted.lines[1], lines[1]);
    EXPECT_EQ(UnfoldScript(pasted.game, pasted.lines[0]), UnfoldScript(game, lines[0]));
    EXPECT_NE(pasted.lines[0], lines[0]);
}

TEST(CopyPiece, RefusesWhatATextWouldNotGiveBack) {
    GameModel game = PantryGame();
    game.Rooms.Edit(1).Alias = "a > b";
    game.Items.Edit(1).Name = "jam; honey";
    EXPECT_EQ(ProblemOf([&] { CopyPiece(game, {RoomPlace(1)}); }),
              "This cannot be copied as text. Room Kitchen, alias: the \">\" in it ends it early");
    EXPECT_EQ(ProblemOf([&] {
                  CopyPiece(game, {Place::Of({{FieldId::GameItems, 1}})});
              }),
              "This cannot be copied as text. Item jam; honey, name: the semicolon in it ends it early");
    EXPECT_EQ(ProblemOf([&] { CopyPiece(game, {RoomPlace(2)}); }), "");
}

TEST(MoveThings, GoBehindThoseOfTheRoomAndKeepTheirOrder) {
    GameModel game = PantryGame();
    for (const char* name : {"rope", "lamp"})
        game.Rooms.Edit(1).Objects.Append().Name = name;
    const auto object = [](int room, int k) {
        return Place::Of({{FieldId::GameRooms, room}, {FieldId::RoomObjects, k}});
    };
    const std::vector<Place> moved = MoveThings(game, {object(1, 1), object(1, 3)}, 2);
    EXPECT_EQ(moved, (std::vector<Place>{object(2, 1), object(2, 2)}));
    ASSERT_EQ(game.Rooms[1].Objects.Count(), 1);
    EXPECT_EQ(game.Rooms[1].Objects[1].Name, "rope");
    EXPECT_EQ(game.Rooms[2].Objects[1].Name, "jam");
    EXPECT_EQ(game.Rooms[2].Objects[2].Name, "lamp");
    RemoveRecords(game, {object(2, 1), RoomPlace(1), object(2, 2)});
    ASSERT_EQ(game.Rooms.Count(), 1);
    EXPECT_TRUE(game.Rooms[1].Objects.IsEmpty());
}

} // namespace
} // namespace zem::test
