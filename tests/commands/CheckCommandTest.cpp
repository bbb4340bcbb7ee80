#include "support/Cases.h"
#include "support/Games.h"
#include "support/ZemCall.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace zem::test {
namespace {

constexpr const char* Broken = "define game <Caf\xE9>\n"            // 1
                               "  start <Hall>\n"                   // 2
                               "  game author <Ann>\n"              // 3
                               "  afterturn {\n"                    // 4
                               "    msg <x>\n"                      // 5
                               "    if flag <f> then win else\n"    // 6
                               "    goto <Hal>\n"                   // 7
                               "  }\n"                              // 8
                               "end define\n"                       // 9
                               "define text <intro>\n"              // 10
                               "x\nend define\n"                    // 12
                               "define text <win>\nx\nend define\n" // 15
                               "define room <Hall>\n"               // 16
                               "  look <x>\n"                       // 17
                               "  north <hall>\n"                   // 18
                               "  south <hal>\n"                    // 19
                               "end define\n";                      // 20

TEST(CheckCommand, TellsAProblemALineInTheOrderOfTheFile) {
    const TempFolder folder;
    const std::string file = folder.Write("broken.kel", CrLf(Broken));
    const ZemCall run({"check", file, "--only", "A01,A10,B09,E03"});
    EXPECT_EQ(run.result.exitStatus, 1);
    EXPECT_EQ(
        run.out,
        file +
            ":6: error: game properties, after turn action, line 2: Nothing stands behind \"else\", so the "
            "whole line does nothing. [B09]\n" +
            file +
            ":7: error: game properties, after turn action, line 3: There is no room \"Hal\", so \"goto\" "
            "does nothing here. [A01]\n" +
            file +
            ":18: error: room Hall, exit north: \"hall\" is written \"Hall\" elsewhere, and capitals count "
            "in names, so the player cannot go there. The OK of the room's editor would drop the exit. "
            "[A10]\n" +
            file +
            ":19: error: room Hall, exit south: There is no room \"hal\", so the player cannot go there. "
            "The OK of the room's editor would drop the exit. [A01]\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(ReadBytes(file), CrLf(Broken));
}

TEST(CheckCommand, EndsAsBuildScriptsExpectAndTellsHintsWhenAsked) {
    const TempFolder folder;
    const std::string hints = folder.Write(
        "hints.kel",
        CrLf("define game <g>\nstart <Hall>\ngame author <a>\nafterturn if flag <f> then win\n"
             "startscript if chance <5> then flag on <f>\nend define\ndefine text <intro>\nx\nend define\n"
             "define text <win>\nx\nend define\ndefine room <Hall>\nlook <x>\nend define\n"
             "define procedure <unused>\nlook\nend define\n"));
    const std::string broken = folder.Write("broken.kel", CrLf(Broken));
    const std::string gone = folder.Path("gone.kel");
    const std::string refused = folder.Write("refused.kel", "define room <x>\n");
    for (const auto& [arguments, status, isSaid] : Cases<std::vector<std::string>, int, bool>{
             {{"check", hints, "--only", "U01"}, 0, false},
             {{"check", hints, "--hints", "--only", "U01"}, 0, true},
             {{"check", hints, "--hints", "--only", "U01", "--skip", "U01"}, 0, false},
             {{"check", broken}, 1, true},
             {{"check", broken, "--only", "E06"}, 0, false},
             {{"check", gone}, 1, false},
             {{"check", refused}, 1, false},
             {{"check", hints, "--only", "Q99"}, 2, false},
             {{"check"}, 2, false},
         }) {
        const ZemCall run(arguments);
        EXPECT_EQ(run.result.exitStatus, status) << run.out << run.err;
        EXPECT_EQ(!run.out.empty(), isSaid) << run.out;
        EXPECT_EQ(run.err.empty(),
                  arguments.size() > 1 && arguments[1] != gone && arguments[1] != refused && status != 2)
            << run.err;
    }
    EXPECT_TRUE(ZemCall({"check", refused}).err.starts_with(refused + ":1: "));
}

TEST(CheckCommand, LeavesOutWhatIsSilencedAndTellsOfDamagedNotes) {
    const TempFolder folder;
    const std::string file = folder.Write("broken.kel", CrLf(Broken));
    folder.Write("broken.kel.notes",
                 "silence A01 at room \"Hall\", exit south, name, room \"hal\" because later\n");
    const ZemCall silenced({"check", file, "--only", "A01", "--json"});
    const auto json = nlohmann::json::parse(silenced.out);
    EXPECT_EQ(json["silenced"], 1);
    ASSERT_EQ(json["problems"].size(), 1U);
    EXPECT_EQ(json["problems"][0]["line"], 7);
    folder.Write("broken.kel.notes", "silence A01 room \"x\"\n");
    const ZemCall damaged({"check", file, "--only", "A01"});
    EXPECT_TRUE(damaged.err.starts_with(file + ".notes:1: ")) << damaged.err;
    EXPECT_NE(damaged.out.find(":19: error"), std::string::npos) << damaged.out;
    EXPECT_EQ(ReadBytes(file + ".notes"), "silence A01 room \"x\"\n");
}

TEST(CheckCommand, PutsRightWhatNeedsNoChoiceAndNothingElse) {
    const TempFolder folder;
    const std::string file = folder.Write("broken.kel", CrLf(Broken));
    const ZemCall run({"check", file, "--fix", "--json", "--only", "A01,A10,B09"});
    const auto json = nlohmann::json::parse(run.out);
    EXPECT_EQ(run.result.exitStatus, 1) << "the room \"Hal\" may be any room";
    ASSERT_EQ(json["fixed"].size(), 2U) << run.out;
    EXPECT_EQ(json["fixed"][0]["id"], "B09");
    EXPECT_EQ(json["fixed"][0]["line"], 6);
    EXPECT_EQ(json["fixed"][1]["id"], "A10");
    EXPECT_EQ(json["fixed"][1]["fix"], "Change to Hall");
    EXPECT_EQ(json["problems"].size(), 2U);
    EXPECT_EQ(json["errors"], 2);
    const std::string saved = ReadBytes(file);
    EXPECT_NE(saved.find("\r\nnorth <Hall>\r\n"), std::string::npos);
    EXPECT_NE(saved.find("\r\nif flag <f> then win\r\n"), std::string::npos);
    EXPECT_NE(saved.find("\r\nsouth <hal>\r\n"), std::string::npos);
    EXPECT_EQ(ReadBytes(file + "~"), CrLf(Broken)) << "the save keeps what it replaces";
    EXPECT_TRUE(nlohmann::json::parse(ZemCall({"check", file, "--fix", "--json"}).out)["fixed"].empty());
    EXPECT_EQ(ReadBytes(file), saved) << "a second time there is nothing to fix";
}

} // namespace
} // namespace zem::test
