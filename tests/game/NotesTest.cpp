#include "game/NotePlaces.h"
#include "support/Cases.h"
#include "support/Catalogue.h"
#include "support/Games.h"

#include <gtest/gtest.h>

namespace zem::test {
namespace {

/// A game with a place of every kind that notes tell.
const std::string GameWithAll =
    "define game <g>\nstart <Kitchen>\nitems <key>\ncollectables <score p=0 [!]>\n"
    "command <shout #what#> msg <#what#!>\nend define\n"
    "define room <Kitchen>\nlook <The the \"hearth\".>\nnorth <Atic>\nplace <the; Cellar>\n"
    "script {\nflag on <lit>\nif here <Tom> then {\ngoto <Kichen>\nsay <Go.>\n}\n}\n"
    "define object <lamp>\nuse <key> show <lmap>\nend define\n"
    "define character <Tom>\nend define\nend define\n"
    "define procedure <p>\nhide <lamp> msg <x>\nend define\n";

struct ToldPlace {
    GameModel game = LoadBytes(CrLf(GameWithAll));
    CommandLookup commands{ShippedCatalogue()};
    ScriptOwners owners{game};

    std::string operator()(Place place, std::string_view words = {}) const {
        if (!words.empty()) {
            const std::string* text = Resolve(game, place)->text;
            const std::size_t at = text->find(words);
            EXPECT_NE(at, std::string::npos) << words;
            place.bytes = {at, at + words.size()};
        }
        GameNotes notes;
        notes.SilenceAt("A01", TellByNames(game, owners, commands, place), "");
        return WriteNotes(notes).substr(sizeof("silence A01 at ") - 1);
    }
};

Place InRoom(FieldId field) {
    return Place::Of({{FieldId::GameRooms, 1}}, field);
}

TEST(Notes, TellPlacesByNamesAndFollowARename) {
    const ToldPlace told;
    const Place lamp = Place::Of(
        {{FieldId::GameRooms, 1}, {FieldId::RoomObjects, 1}, {FieldId::ThingUses, 1}}, FieldId::PairScript);
    const Place made = Place::Of({{FieldId::GameProcedures, 2}}, FieldId::ProcedureScript);
    const Place inner = Place::Of({{FieldId::GameProcedures, 3}}, FieldId::ProcedureScript);
    struct Case {
        Place place;
        const char* words;
        const char* line;
        NameKind kind;
        const char* from;
        const char* renamed; // to "New"
    };
    const Case cases[] = {
        {{}, "", "game", NameKind::Room, "game", "game"},
        {InRoom(FieldId::None), "", "room \"Kitchen\"", NameKind::Room, "Kitchen", "room \"New\""},
        {InRoom(FieldId::None), "", "room \"Kitchen\"", NameKind::Item, "Kitchen", "room \"Kitchen\""},
        {Place::Of({{FieldId::GameRooms, 1}, {FieldId::RoomNorth, 0}}, FieldId::PairKey), "",
         "room \"Kitchen\", exit north, name, room \"Atic\"", NameKind::Room, "Atic",
         "room \"Kitchen\", exit north, name, room \"New\""},
        {Place::Of({{FieldId::GameRooms, 1}, {FieldId::RoomPlaces, 1}}, FieldId::PairKey), "",
         "room \"Kitchen\", place \"the; Cellar\", name, place \"the; Cellar\"", NameKind::Room, "Cellar",
         "room \"Kitchen\", place \"the; New\", name, place \"the; New\""},
        {InRoom(FieldId::RoomLook), "The the \"hearth\"",
         "room \"Kitchen\", description, text \"The the \\\"hearth\\\"\"", NameKind::Object, "lamp",
         "room \"Kitchen\", description, text \"The the \\\"hearth\\\"\""},
        {lamp, "lmap", "room \"Kitchen\", object \"lamp\", use-able object \"key\", action, object \"lmap\"",
         NameKind::Item, "key",
         "room \"Kitchen\", object \"lamp\", use-able object \"New\", action, object \"lmap\""},
        {lamp, "lmap", "room \"Kitchen\", object \"lamp\", use-able object \"key\", action, object \"lmap\"",
         NameKind::Object, "lamp",
         "room \"Kitchen\", object \"New\", use-able object \"key\", action, object \"lmap\""},
        {made, "lit", "room \"Kitchen\", enter action, flag \"lit\"", NameKind::Flag, "lit",
         "room \"Kitchen\", enter action, flag \"New\""},
        {made, "Tom", "room \"Kitchen\", enter action, thing \"Tom\"", NameKind::Character, "Tom",
         "room \"Kitchen\", enter action, thing \"New\""},
        {inner, "Kichen", "room \"Kitchen\", enter action, room \"Kichen\"", NameKind::Room, "Kitchen",
         "room \"New\", enter action, room \"Kichen\""},
        {Place::Of({{FieldId::GameProcedures, 1}}, FieldId::ProcedureScript), "hide <lamp> msg <x>",
         "procedure \"p\", script, script \"hide <lamp> msg <x>\"", NameKind::Object, "lamp",
         "procedure \"p\", script, script \"hide <New> msg <x>\""},
        {Place::Of({{FieldId::GamePlayerCommands, 1}}, FieldId::CommandPattern), "#what#",
         "player command \"shout #what#\", pattern, text \"#what#\"", NameKind::Variable, "what",
         "player command \"shout #New#\", pattern, text \"#New#\""},
        {Place::Of({{FieldId::GameCollectables, 1}}), "", "collectable \"score\"", NameKind::Collectable,
         "score", "collectable \"New\""},
    };
    for (const Case& c : cases) {
        const std::string line = told(c.place, c.words);
        EXPECT_EQ(line, std::string(c.line) + '\n');
        GameNotes notes = ReadNotes("silence A01 at " + line);
        EXPECT_EQ(WriteNotes(notes), "silence A01 at " + line) << "reads what it writes";
        RenameInNotes(notes, c.kind, c.from, "New", told.commands);
        EXPECT_EQ(WriteNotes(notes), std::string("silence A01 at ") + c.renamed + '\n') << c.from;
        RenameInNotes(notes, c.kind, "New", c.from, told.commands);
        EXPECT_EQ(WriteNotes(notes), "silence A01 at " + line) << "there and back";
    }
}

TEST(Notes, AreSortedLinesThatKeepWhatALaterVersionAdds) {
    const std::string file = "word zo\xC3\xA9\nword Kerl\xC3\xA9van\n\nlanguage fr\n"
                             "silence E01 at room \"Cellar\\\\\", exit north because later, \"maybe\"\n"
                             "colour \xCE\xB1\nlanguage en_GB\r\n";
    const std::string sorted = "colour \xCE\xB1\nlanguage en_GB\n"
                               "silence E01 at room \"Cellar\\\\\", exit north because later, \"maybe\"\n"
                               "word Kerl\xC3\xA9van\nword zo\xC3\xA9\n";
    GameNotes notes = ReadNotes("\xEF\xBB\xBF" + file);
    EXPECT_EQ(WriteNotes(notes), sorted);
    const NotePlace cellar = {{"room", true, "Cellar\\"}, {"exit north", false, ""}};
    EXPECT_TRUE(notes.IsSilenced("E01", cellar));
    EXPECT_FALSE(notes.IsSilenced("E02", cellar));
    EXPECT_FALSE(notes.IsSilenced("E01", {cellar.front()}));
    notes.SilenceAt("E01", cellar, "two\r\nlines");
    EXPECT_EQ(notes.silences.size(), 1U);
    EXPECT_EQ(notes.silences.begin()->reason, "two  lines");
    notes.Unsilence("E01", cellar);
    EXPECT_TRUE(notes.silences.empty());
}

TEST(Notes, DamagedOnesAreToldWithTheirLineAndLeftAlone) {
    for (const auto& [bytes, line, problem] : Cases<std::string, std::size_t, std::string>{
             {"word a\nsilence A01 room \"x\"\n", 2, "what it is about"},
             {"silence A01 at room \"x\n", 1, "not closed"},
             {"silence A01 at room \"x\" why not\n", 1, "because"},
             {"silence A01 at , exit north\n", 1, "its place"},
             {"word a\n<<<<<<< ours\nword b\n", 2, "not merged"},
             {"word caf\xE9\n", 0, "UTF-8"},
             {std::string("word \0", 6), 0, "no text"},
         }) {
        const TempFolder folder;
        const std::string game = folder.Path("g.kel");
        const std::string path = folder.Write("g.kel.notes", bytes);
        try {
            ChangeNotes(game, [](GameNotes& notes) { notes.words.insert("new"); });
            ADD_FAILURE() << "not told: " << bytes;
        } catch (const KelError& error) {
            EXPECT_EQ(error.Line(), line) << bytes;
            EXPECT_NE(error.Problem().find(problem), std::string::npos) << error.Problem();
        }
        EXPECT_EQ(ReadBytes(path), bytes);
    }
}

TEST(Notes, AFileIsWrittenOnlyWhenSomethingIsNew) {
    const TempFolder folder;
    const std::string game = folder.Path("g.kel");
    EXPECT_EQ(LoadNotes(game), GameNotes());
    ChangeNotes(game, [](GameNotes& notes) { notes.Unsilence("A01", {{"game", false, ""}}); });
    EXPECT_FALSE(std::filesystem::exists(NotesPath(game))) << "nothing to note";
    ChangeNotes(game, [](GameNotes& notes) { notes.words.insert("Kerl\xC3\xA9van"); });
    EXPECT_EQ(ReadBytes(NotesPath(game)), "word Kerl\xC3\xA9van\n");
    const std::string unsorted = folder.Write("g.kel.notes", "word b\nword a\n");
    ChangeNotes(game, [](GameNotes& notes) { notes.words.insert("a"); });
    EXPECT_EQ(ReadBytes(unsorted), "word b\nword a\n") << "nothing new";
}

} // namespace
} // namespace zem::test
