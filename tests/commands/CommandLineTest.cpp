#include "commands/CommandLine.h"

#include "routing/RoutedMap.h"
#include "support/Cases.h"
#include "support/Games.h"
#include "support/ZemCall.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace zem::test {
namespace {

TEST(CommandLine, OpensTheEditorExplainsItselfAndRefusesWhatIsWrong) {
    EXPECT_EQ(ZemCall({}).result.editFile, "");
    EXPECT_EQ(ZemCall({"two words.kel"}).result.editFile, "two words.kel");
    EXPECT_EQ(ZemCall({"--version"}).out, "ZEM 1.0\n");
    const ZemCall help({"--help"});
    EXPECT_EQ(help.result.exitStatus, 0);
    for (const char* verb : {"format", "print", "check", "find", "rename", "map", "test", "walk", "FILE"})
        EXPECT_NE(help.out.find(verb), std::string::npos) << verb;
    for (const std::vector<std::string>& wrong : {std::vector<std::string>{"format"},
                                                  {"format", "one.kel"},
                                                  {"--nonsense"},
                                                  {"print"},
                                                  {"a.kel", "b.kel"},
                                                  {"map", "a.kel"},
                                                  {"map", "--positions", "-"},
                                                  {"a.kel", "print", "b.kel"},
                                                  {"walk", "a.kel", "--turns", "-1"},
                                                  {"walk", "a.kel", "--seed", "-1"},
                                                  {"format", "a.kel", "b.kel", "print", "c.kel"}}) {
        const ZemCall run(wrong);
        EXPECT_EQ(run.result.exitStatus, 2);
        EXPECT_FALSE(run.result.editFile);
        EXPECT_FALSE(run.err.empty());
    }
}

TEST(CommandLine, FormatsAGameAndTakesTheOutputPathAsGiven) {
    const TempFolder folder;
    const std::string in =
        folder.Write("in.kel", "define game <x>\nstart <Hall>\nerror <badgo; No.>\nend define");
    const std::string out = std::filesystem::relative(folder.Path("out.txt")).string();
    const ZemCall run({"format", in, out});
    EXPECT_EQ(run.result.exitStatus, 0);
    EXPECT_EQ(run.err, "");
    const std::string saved = ReadBytes(out);
    EXPECT_TRUE(saved.starts_with("' " + out + " created by ZEM 1.0\r\n")) << saved;
    EXPECT_NE(saved.find("\r\nerror <badgo;No.>\r\n"), std::string::npos)
        << "the error names are known here, too";
}

TEST(CommandLine, ReportsProblemsByFileAndLineAndLeavesTheOutput) {
    const TempFolder folder;
    const std::string out = folder.Write("out.kel", "as it was");
    const std::string gone = folder.Path("gone/out.kel");
    const std::string bad =
        folder.Write("bad.kel", "define game <x>\nend define\ndefine room Caf\xE9\nend define\n");
    const std::string good = folder.Write("good.kel", "define game <x>\nstart <Hall>\nend define\n");
    for (const auto& [arguments, problem] : Cases<std::vector<std::string>, std::string>{
             {{"format", bad, out},
              bad + ":3: a parameter in angle brackets is missing: define room Caf\xC3\xA9\n"},
             {{"print", gone}, gone + ": Error - path not found\n"},
             {{"format", good, gone},
              gone + ": the file cannot be written: its folder or the file itself is not there\n"},
         }) {
        const ZemCall run(arguments);
        EXPECT_EQ(run.result.exitStatus, 1);
        EXPECT_EQ(run.err, problem);
    }
    EXPECT_EQ(ReadBytes(out), "as it was");
}

TEST(CommandLine, WarnsOfWhatALoadMakesOfAFileAndGoesOn) {
    const TempFolder folder;
    const std::string odd =
        folder.Write("odd.kel", "define game <\xC3\xA9>\nend define\ndefine room<r>\nend define\n");
    const std::string broken =
        folder.Write("broken.kel", "define synonyms\n<<<<<<< ours\na = b\nend define\n");
    for (const auto& [file, status, warning] : Cases<std::string, int, std::string>{
             {odd, 0, odd + ": warning: the text is UTF-8"},
             {odd, 0, odd + ":3: warning: a room must begin"},
             {broken, 1, broken + ":2: warning: this line begins a conflict"},
         }) {
        const ZemCall run({"print", file});
        EXPECT_EQ(run.result.exitStatus, status);
        EXPECT_NE(run.err.find(warning), std::string::npos) << run.err;
    }
}

TEST(CommandLine, PrintsGames) {
    for (const std::filesystem::path& game : FilesIn(ZEM_TEST_DATA "/print"))
        EXPECT_EQ(ZemCall({"print", game.string()}).out,
                  ReadBytes(std::filesystem::path(game).replace_extension(".printed")))
            << game;
}

TEST(CommandLine, WritesThePlacesOfTheRoomsOnTheMap) {
    const TempFolder folder;
    const std::string game =
        folder.Write("game.kel", "define game <x>\nend define\n"
                                 "define room <Caf\xE9>\neast <Yard>\nzem-map <4; -2>\nend define\n"
                                 "define room <Yard>\nsouth <Well>\nend define\n"
                                 "define room <Well>\nend define\n");
    const std::string places = "Caf\xC3\xA9\t4\t-2\nYard\t5\t-2\nWell\t5\t-1\n";
    EXPECT_EQ(ZemCall({"map", game, "--positions", "-"}).out, places);
    const std::string out = folder.Path("places.tsv");
    const ZemCall run({"map", game, "--positions", out});
    EXPECT_EQ(run.result.exitStatus, 0) << run.err;
    EXPECT_EQ(ReadBytes(out), places);
    const std::string gone = folder.Path("gone/places.tsv");
    const ZemCall failed({"map", game, "--positions", gone});
    EXPECT_EQ(failed.result.exitStatus, 1);
    EXPECT_TRUE(failed.err.starts_with(gone + ": ")) << failed.err;
}

TEST(CommandLine, DrawsTheMapAndKeepsTheOldPictureWhenThereIsNoNewOne) {
    const TempFolder folder;
    const std::string game =
        folder.Write("game.kel", "define game <x>\nend define\ndefine room <A>\neast <B>\nend define\n"
                                 "define room <B>\nwest <A>\nend define\n");
    const std::string out = folder.Write("map.svg", "as it was");
    const std::string places = folder.Path("places.tsv");
    const auto paint = [](const routing::RoutedMap& map, const std::string& file) {
        if (!file.ends_with(".svg"))
            throw KelError("no such format");
        return std::to_string(map.rooms.size()) + " rooms, " + std::to_string(map.lines.size()) + " lines";
    };
    for (const auto& [file, maker, status, content] :
         Cases<std::string, decltype(Painters::map), int, std::string>{
             {out, {}, 1, "as it was"},
             {out, [](const routing::RoutedMap&, const std::string&) -> std::string { throw KelError("no"); },
              1, "as it was"},
             {folder.Path("map.gif"), paint, 1, "as it was"},
             {out, paint, 0, "2 rooms, 1 lines"},
         }) {
        const ZemCall run({"map", game, file, "--positions", places}, {maker, {}});
        EXPECT_EQ(run.result.exitStatus, status);
        EXPECT_EQ(run.err.empty(), status == 0) << run.err;
        EXPECT_EQ(ReadBytes(out), content);
        EXPECT_EQ(ReadBytes(places), "A\t0\t0\nB\t1\t0\n");
    }
}

} // namespace
} // namespace zem::test
