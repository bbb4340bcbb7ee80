#include "support/FullDisk.h"
#include "support/Games.h"
#include "support/ZemCall.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace zem::test {
namespace {

namespace fs = std::filesystem;

std::string Version(const std::string& look, const std::string& north) {
    return "' /home/someone/own/folder/game.kel created by ZEM 1.0\r\n\r\ndefine game <x>\r\nstart "
           "<Hall>\r\nend define\r\ndefine room <Hall>\r\nlook <" +
           look + ">\r\nnorth <" + north + ">\r\nend define\r\n";
}

/// A folder with three versions, named as git names its temporary files.
struct Versions {
    TempFolder folder;
    std::string base;
    std::string ours;
    std::string theirs;

    Versions(const std::string& b, const std::string& o, const std::string& t)
        : base(folder.Write(".merge_file_a1", b)),
          ours(folder.Write(".merge_file_b2", o)),
          theirs(folder.Write(".merge_file_c3", t)) {}

    ZemCall Merge(const std::string& out, const std::vector<std::string>& more = {}) const {
        std::vector<std::string> arguments = {"merge", base, ours, theirs, "-o", out};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return ZemCall(arguments);
    }
};

TEST(MergeCommand, MergesIntoOursUnderTheNameOfTheGame) {
    const Versions versions(Version("Dark.", "Attic"), Version("Bright.", "Attic"),
                            Version("Dark.", "Cellar"));
    const std::string old = versions.folder.Write("game.kel.conflicts", "of an earlier merge");
    const ZemCall run = versions.Merge(versions.ours, {"--path", "tales/game.kel", "--conflicts", old});
    EXPECT_EQ(run.result.exitStatus, 0) << run.err;
    EXPECT_EQ(run.out + run.err, "");
    const std::string merged = ReadBytes(versions.ours);
    EXPECT_TRUE(merged.starts_with("' tales/game.kel created by ZEM 1.0\r\n")) << merged;
    EXPECT_NE(merged.find("look <Bright.>\r\nnorth <Cellar>\r\n"), std::string::npos) << merged;
    EXPECT_FALSE(fs::exists(old)) << "a list of conflicts that are settled";
}

TEST(MergeCommand, KeepsOursAtAConflictAndTheOtherSideBesideIt) {
    const Versions versions(Version("Dark.", "Attic"), Version("Caf\xE9.", "Attic"),
                            Version("Grey.", "Cellar"));
    const std::string out = versions.folder.Path("out.kel");
    const ZemCall run = versions.Merge(out);
    EXPECT_EQ(run.result.exitStatus, 1);
    EXPECT_EQ(run.out, out + ": conflict: room Hall, description: both changed it; ours is kept\n" + out +
                           ": 1 conflict; both versions are in " + out + ".conflicts\n");
    EXPECT_NE(ReadBytes(out).find("look <Caf\xE9.>\r\nnorth <Cellar>\r\n"), std::string::npos)
        << ReadBytes(out);
    const auto json = nlohmann::json::parse(ReadBytes(out + ".conflicts"));
    EXPECT_EQ(json["format"], "zem-conflicts");
    EXPECT_EQ(json["game"], out);
    ASSERT_EQ(json["conflicts"].size(), 1u);
    const auto& conflict = json["conflicts"][0];
    EXPECT_EQ(conflict["where"], "room Hall, description");
    EXPECT_EQ(conflict["place"]["steps"][0]["name"], "Hall");
    EXPECT_EQ(conflict["base"], "Dark.");
    EXPECT_EQ(conflict["ours"], "Caf\xC3\xA9.");
    EXPECT_EQ(conflict["theirs"], "Grey.");
    EXPECT_EQ(versions.Merge(out, {"--path", "g.kel"}).out.substr(0, 7), "g.kel: ");
}

TEST(MergeCommand, TakesAnEmptyBaseForNoGame) {
    const Versions versions("", Version("Dark.", "Attic"), Version("Dark.", "Attic"));
    const std::string out = versions.folder.Path("out.kel");
    EXPECT_EQ(versions.Merge(out).result.exitStatus, 0);
    EXPECT_NE(ReadBytes(out).find("north <Attic>"), std::string::npos);
}

TEST(MergeCommand, NamesWhatItCannotMergeAndLeavesTheOutput) {
    const std::string good = Version("Dark.", "Attic");
    const std::string marked = "define game <x>\r\n<<<<<<< ours\r\nend define\r\n";
    struct Case {
        std::string base, ours, theirs;
        const char* file; // that is named
        const char* problem;
    };
    for (const Case& c : std::vector<Case>{
             {good, marked, good, ".merge_file_b2:2: ", "a conflict that git left"},
             {good, good, "plain words", ".merge_file_c3: ", "no Kel game"},
             {good, good, "", ".merge_file_c3: ", "no Kel game"},
             {"define room Hall\r\nend define\r\n", good, good, ".merge_file_a1:1: ", "angle brackets"},
         }) {
        const Versions versions(c.base, c.ours, c.theirs);
        const std::string out = versions.folder.Write("out.kel", "as it was");
        const ZemCall run = versions.Merge(out);
        EXPECT_EQ(run.result.exitStatus, 2);
        EXPECT_NE(run.err.find(c.file), std::string::npos) << run.err;
        EXPECT_NE(run.err.find(c.problem), std::string::npos) << run.err;
        EXPECT_EQ(ReadBytes(out), "as it was");
        EXPECT_FALSE(fs::exists(out + ".conflicts"));
    }
    const Versions versions(good, Version("a", "b"), Version("c", "d"));
    EXPECT_EQ(versions.Merge(versions.folder.Path("gone/out.kel")).result.exitStatus, 2);
    EXPECT_EQ(ZemCall({"merge", versions.base, versions.ours, "-o", "x"}).result.exitStatus, 2);
    EXPECT_EQ(ZemCall({"merge", versions.base, versions.ours, versions.folder.Path("none"), "-o", "x"})
                  .result.exitStatus,
              2);
}

TEST(MergeCommand, TellsWhichNamesTheMergeLeftWithoutAnOwner) {
    const Versions versions(Version("Dark.", "Attic") + "define room <Attic>\r\nend define\r\n",
                            Version("Dark.", "Attic").replace(0, 0, "") +
                                "define room <Attic>\r\nend define\r\n"
                                "define room <Yard>\r\nwest <Attic>\r\nend define\r\n",
                            Version("Dark.", "Loft") + "define room <Loft>\r\nend define\r\n");
    const ZemCall run = versions.Merge(versions.folder.Path("out.kel"));
    EXPECT_EQ(run.result.exitStatus, 0) << run.err;
    EXPECT_NE(run.err.find("room Yard, exit west: there is no room Attic any more"), std::string::npos)
        << run.err;
}

} // namespace
} // namespace zem::test
