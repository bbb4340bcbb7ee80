#include "support/Cases.h"
#include "support/Games.h"
#include "support/ZemCall.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace zem::test {
namespace {

constexpr const char* House = "define game <The House>\n"       // 1
                              "start <Caf\xE9>\n"               // 2
                              "items <lamp>\n"                  // 3
                              "command <rub lamp> {\n"          // 4
                              "  if has <lamp> then {\n"        // 5
                              "    msg <The lamp is warm.>\n"   // 6
                              "    flag on <warm>\n"            // 7
                              "  }\n"                           // 8
                              "}\n"                             // 9
                              "glow <lamp>\n"                   // 10
                              "end define\n"                    // 11
                              "define room <Caf\xE9>\n"         // 12
                              "look <Lamps, lamps.>\n"          // 13
                              "north if flag <Warm> then win\n" // 14
                              "define object <lamp>\n"          // 15
                              "take give <lamp>\n"              // 16
                              "end define\n"                    // 17
                              "end define\n";                   // 18

class FindAndRename : public testing::Test {
protected:
    const TempFolder folder;
    const std::string file = folder.Write("house.kel", House);
};

TEST_F(FindAndRename, PrintHitsByFileAndLine) {
    const std::string at = file + ":";
    for (const auto& [words, options, status, out] :
         Cases<std::string, std::vector<std::string>, int, std::string>{
             {"warm",
              {},
              0,
              at + "6: player command rub lamp, action, line 1, line 1: msg <The lamp is warm.>\n" + at +
                  "7: player command rub lamp, action, line 1, line 2: flag on <warm>\n" + at +
                  "14: room Caf\xC3\xA9, exit north, action: if flag <Warm> then win\n"},
             {"warm",
              {"--capitals", "--kind", "reference"},
              0,
              at + "7: player command rub lamp, action, line 1, line 2: flag on <warm>\n"},
             {"lamps",
              {"--words"},
              0,
              at + "13: room Caf\xC3\xA9, description: Lamps, lamps.\n" + at +
                  "13: room Caf\xC3\xA9, description: Lamps, lamps.\n"},
             {"^LAMP$",
              {"--regex", "--kind", "name,raw"},
              0,
              at + "3: item lamp, name: lamp\n" + at + "15: object lamp in Caf\xC3\xA9, name: lamp\n"},
             {"CAF\xC3\x89", {"--kind", "name"}, 0, at + "12: room Caf\xC3\xA9, name: Caf\xC3\xA9\n"},
             {"intro", {}, 1, ""}, // every game has it, but not this file
             {"elephant", {}, 1, ""},
             {"\xCE\xA9", {}, 1, ""}, // no game can hold it
         }) {
        std::vector<std::string> arguments = {"find", file, words};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const ZemCall call(arguments);
        EXPECT_EQ(call.result.exitStatus, status) << words;
        EXPECT_EQ(call.out, out) << words;
        EXPECT_EQ(call.err, "");
    }
}

TEST_F(FindAndRename, PrintHitsAsJson) {
    const ZemCall call({"find", file, "--json", "lamp", "--kind", "script,name,raw,text,pattern", "--words"});
    EXPECT_EQ(call.result.exitStatus, 0);
    const auto json = nlohmann::json::parse(call.out);
    EXPECT_EQ(json["file"], file);
    EXPECT_EQ(json["words"], "lamp");
    EXPECT_EQ(json["count"], 5);
    std::string kinds;
    for (const auto& hit : json["hits"]) {
        kinds += std::to_string(hit["line"].get<int>()) + " " + hit["kind"].get<std::string>() + ", ";
        const auto begin = hit["begin"].get<std::size_t>();
        const auto words =
            hit["text"].get<std::string>().substr(begin, hit["end"].get<std::size_t>() - begin);
        EXPECT_EQ(words, "lamp");
        EXPECT_FALSE(hit["place"].get<std::string>().empty());
    }
    EXPECT_EQ(kinds, "3 name, 4 pattern, 6 printed text, 10 raw line, 15 name, ");
    const ZemCall none({"find", file, "elephant", "--json"});
    EXPECT_EQ(none.result.exitStatus, 1);
    EXPECT_EQ(nlohmann::json::parse(none.out)["count"], 0);
}

TEST_F(FindAndRename, TellWrongUseAndFilesThatCannotBeRead) {
    const std::string gone = folder.Path("gone.kel");
    for (const auto& [arguments, status, problem] : Cases<std::vector<std::string>, int, std::string>{
             {{"find", file}, 2, "WORDS"},
             {{"find", file, ""}, 2, "there are no words"},
             {{"find", file, "x", "--kind", "poem"}, 2, "poem"},
             {{"find", file, "(x", "--regex"},
              2,
              "zem find: The expression is not understood at character 3: missing closing parenthesis.\n"},
             {{"find", file, "[\xCE\xA9]", "--regex"}, 2, "no game can hold the character \xCE\xA9"},
             {{"find", gone, "x"}, 1, gone + ": Error - file not found\n"},
             {{"rename", file, "room", "a", "b"}, 2, "--out is required"},
             {{"rename", file, "file", "a", "b", "c"}, 2, "file"},
             {{"rename", gone, "room", "a", "b", "c"}, 1, gone + ": Error - file not found\n"},
         }) {
        const ZemCall call(arguments);
        EXPECT_EQ(call.result.exitStatus, status);
        EXPECT_NE(call.err.find(problem), std::string::npos) << call.err;
        EXPECT_EQ(call.out, "");
    }
}

TEST_F(FindAndRename, RenameAllAndSaveAsAnotherFileOrTheSame) {
    const std::string out = folder.Path("out.kel");
    const ZemCall room({"rename", file, "room", "Caf\xC3\xA9", "Bar", out});
    EXPECT_EQ(room.result.exitStatus, 0) << room.err;
    EXPECT_EQ(room.out, "room Caf\xC3\xA9 is called Bar now: 2 places changed\n");
    EXPECT_EQ(ReadBytes(file), House);
    const std::string saved = ReadBytes(out);
    EXPECT_EQ(saved.find("Caf\xE9"), std::string::npos);
    EXPECT_NE(saved.find("start <Bar>\r\n"), std::string::npos);

    const ZemCall item({"rename", out, "item", "lamp", "\xC3\xA9toile", "-o", out});
    EXPECT_EQ(item.result.exitStatus, 0) << item.err;
    EXPECT_EQ(item.out, "item lamp is called \xC3\xA9toile now: 3 places changed\n"
                        "3 mentions in texts left as they were\n"
                        "there is an object lamp, too, which keeps its name\n");
    const std::string again = ReadBytes(out);
    EXPECT_NE(again.find("items <\xE9toile>\r\n"), std::string::npos);
    EXPECT_NE(again.find("take give <\xE9toile>\r\n"), std::string::npos);
    EXPECT_NE(again.find("if has <\xE9toile> then"), std::string::npos);
    EXPECT_NE(again.find("define object <lamp>\r\n"), std::string::npos);
    EXPECT_TRUE(std::filesystem::exists(out + "~")) << "the version before is kept as by any save";
}

TEST_F(FindAndRename, LeaveTheOutputWhereARenameIsRefused) {
    const std::string out = folder.Write("out.kel", "as it was");
    for (const auto& [kind, oldName, newName, problem] :
         Cases<std::string, std::string, std::string, std::string>{
             {"room", "Cellar", "Attic", "There is no room Cellar."},
             {"room", "", "Attic", "Say which room is to be renamed: its name is empty here."},
             {"item", " ", "Attic", "Say which item is to be renamed: its name is empty here."},
             {"room", "caf\xC3\xA9", "Attic",
              "There is no room caf\xC3\xA9, but one is called Caf\xC3\xA9: capitals count in names."},
             {"procedure", "lamp", "torch", "There is no procedure lamp, but an object of that name."},
             {"room", "Caf\xC3\xA9", " ", "Type the new name."},
             {"room", "Caf\xC3\xA9", "a<b", "A name cannot hold < or >."},
             {"room", "Caf\xC3\xA9", "\xCE\xA9", "A game cannot hold the character \xCE\xA9."},
             {"room", "Caf\xC3\xA9", "Caf\xC3\xA9 ", "This is its name already."},
             {"text", "intro", "begin",
              "The texts intro, win and lose cannot be renamed: every game has them."},
             {"flag", "warm", "Warm",
              "Make them one? Warm is used in 1 place. Say --merge if they are to be one."},
         }) {
        const ZemCall call({"rename", file, kind, oldName, newName, out});
        EXPECT_EQ(call.result.exitStatus, 1);
        EXPECT_EQ(call.err, file + ": " + problem + "\n");
        EXPECT_EQ(ReadBytes(out), "as it was");
    }
    const ZemCall merged({"rename", file, "flag", "warm", "Warm", out, "--merge"});
    EXPECT_EQ(merged.result.exitStatus, 0) << merged.err;
    EXPECT_NE(ReadBytes(out).find("flag on <Warm>"), std::string::npos);
    const std::string nowhere = folder.Path("no/out.kel");
    EXPECT_EQ(ZemCall({"rename", file, "room", "Caf\xC3\xA9", "Bar", nowhere}).result.exitStatus, 1);
}

TEST_F(FindAndRename, TakeTheNotesAlong) {
    const std::string notes = folder.Write("house.kel.notes", "silence E01 at room \"Caf\xC3\xA9\"\n");
    EXPECT_EQ(ZemCall({"rename", file, "room", "Caf\xC3\xA9", "Bar", file}).result.exitStatus, 0);
    EXPECT_EQ(ReadBytes(notes), "silence E01 at room \"Bar\"\n");
    const std::string bad = "silence A01 at room \"x\n";
    folder.Write("house.kel.notes", bad);
    const ZemCall damaged({"rename", file, "room", "Bar", "Inn", file});
    EXPECT_EQ(damaged.result.exitStatus, 0) << "the game itself is renamed and saved";
    EXPECT_TRUE(damaged.err.starts_with(notes + ":1: ")) << damaged.err;
    EXPECT_EQ(ReadBytes(notes), bad);
}

constexpr const char* LitHouse = "define game <G>\r\nstart <Hall>\r\nend define\r\ndefine room <Hall>\r\n"
                                 "look <A hall.>\r\ncommand <sing; hum lamp> msg <La.>\r\n"
                                 "define object <lamp>\r\nlook msg <The lamp is lit.>\r\nend define\r\n"
                                 "end define\r\n";

TEST_F(FindAndRename, TakeTheRecordedRunsAlong) {
    const std::string house = folder.Write("lit.kel", LitHouse);
    const std::string runs =
        folder.Write("lit.kel.tests", "run one seed 1\n\n> look at lamp\n\n> x LAMP\n\nrun two seed 1\n\n"
                                      "> hum lamp\n\nrun three seed 1\n\n> sing\n");
    ASSERT_EQ(ZemCall({"test", house, "--approve"}).result.exitStatus, 0);
    std::string other = ReadBytes(runs);
    other.replace(other.rfind("La."), 3, "Mi.");
    folder.Write("lit.kel.tests", other);
    const ZemCall renamed({"rename", house, "object", "lamp", "torch", house});
    EXPECT_EQ(renamed.result.exitStatus, 0);
    const std::string now = ReadBytes(runs);
    EXPECT_NE(now.find("> look at torch\n"), std::string::npos) << now;
    EXPECT_NE(now.find("> x Torch\n"), std::string::npos) << now;
    EXPECT_NE(now.find("see torch"), std::string::npos) << "the story says what is there: " << now;
    EXPECT_NE(now.find("> hum lamp\n"), std::string::npos) << "a pattern that still says so: " << now;
    EXPECT_NE(now.find("Mi."), std::string::npos) << "not approved, and not by a rename: " << now;
    EXPECT_EQ(renamed.err, runs + ": run \"three\" is told differently in more than the name, and stays as "
                                  "it was there\n");
    const ZemCall tested({"test", house});
    EXPECT_NE(tested.out.find("2 of 3 runs as approved"), std::string::npos) << tested.out;

    folder.Write("lit.kel.tests", "no runs\n");
    const ZemCall damaged({"rename", house, "object", "torch", "lamp", house});
    EXPECT_EQ(damaged.result.exitStatus, 0) << "the game itself is renamed and saved";
    EXPECT_TRUE(damaged.err.starts_with(runs + ":1: ")) << damaged.err;
    EXPECT_EQ(ReadBytes(runs), "no runs\n");
}

} // namespace
} // namespace zem::test
