// Recorded runs: each rule of play has one that would be told differently without it, and each sample is won.
#include "base/TextFile.h"
#include "play/Libraries.h"
#include "play/RecordedRuns.h"
#include "reader/LoadGame.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

namespace zem::play {
namespace {

namespace fs = std::filesystem;

std::shared_ptr<const World> Load(const fs::path& path) {
    GameModel game;
    NameMessages(game);
    ReadGame(game, ReadFile(path.string()));
    return World::Compile(
        WithLibraries(std::move(game), [&](const std::string& name) -> std::optional<std::string> {
            const fs::path library = path.parent_path() / name;
            return fs::exists(library) ? std::optional(ReadFile(library.string())) : std::nullopt;
        }));
}

/// The games of a folder that have recorded runs.
std::vector<fs::path> GamesIn(const char* folder) {
    std::vector<fs::path> games;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        if (entry.path().extension() == ".tests")
            games.push_back(entry.path().parent_path() / entry.path().stem());
    std::sort(games.begin(), games.end());
    return games;
}

void PlayAllRuns(const fs::path& path, std::optional<Need> atTheEnd) {
    SCOPED_TRACE(path.filename().string());
    const std::string text = ReadFile(path.string() + ".tests");
    const RecordedRuns approved = ReadRuns(text);
    ASSERT_EQ(approved.problem, "") << "line " << approved.problemLine;
    ASSERT_FALSE(approved.runs.empty());
    EXPECT_EQ(WriteRuns(approved.runs), text);
    const std::shared_ptr<const World> world = Load(path);
    for (const RecordedRun& run : approved.runs) {
        const RunResult result = PlayRun(world, run);
        EXPECT_EQ(result.problem, "") << run.name;
        EXPECT_EQ(WriteRuns({result.played}), WriteRuns({run}));
        EXPECT_FALSE(FirstDifference(run, result.played)) << run.name;
        EXPECT_TRUE(!atTheEnd || result.need == *atTheEnd) << run.name;
    }
}

TEST(Runs, GamesTellWhatTheirRunsSay) {
    const std::vector<fs::path> games = GamesIn(ZEM_TEST_DATA "/play");
    ASSERT_GE(games.size(), 9U);
    for (const fs::path& game : games)
        PlayAllRuns(game, std::nullopt);
}

TEST(Runs, EverySampleIsWonAndWarnsOfNothing) {
    const std::vector<fs::path> games = GamesIn(ZEM_SAMPLES);
    ASSERT_EQ(games.size(), 4U);
    for (const fs::path& game : games) {
        PlayAllRuns(game, Need::YesNo); // whether to play again
        const RunResult result =
            PlayRun(Load(game), ReadRuns(ReadFile(game.string() + ".tests")).runs.front());
        EXPECT_NE(WriteRuns({result.played}).find("\n  You have won.\n"), std::string::npos) << game;
        for (const Warning& warning : result.warnings)
            ADD_FAILURE() << game << ": " << warning.text;
    }
}

TEST(Messages, TheReferenceHasTheirWords) {
    const std::string page = ReadFile(ZEM_PROGRAM_FOLDER "/KEL.HTM");
    for (const MessageRow& row : MessageRows) {
        const std::size_t at = page.find("<tr id=\"e-" + std::string(row.name) + "\">");
        ASSERT_NE(at, std::string::npos) << row.name;
        const std::string_view line = std::string_view(page).substr(at, page.find('\n', at) - at);
        EXPECT_TRUE(line.ends_with("<td>" + std::string(row.text) + "</td></tr>")) << line;
    }
}

TEST(Runs, AFileOfRunsIsReadWholeOrItsLineIsTold) {
    struct Case {
        const char* text;
        std::size_t problemLine; // 0 for none
        std::size_t runs;
    };
    for (const Case& one : {Case{"", 0, 0}, Case{"\n\nrun a seed 1\n> n\n  Story.\n", 0, 1},
                            Case{"run a b seed 18446744073709551615\n@ 5\n< x\nrun c seed 0\n", 0, 2},
                            Case{"> n\n", 1, 0}, Case{"run a seed x\n", 1, 0},
                            Case{"run a seed 1\nstory\n", 2, 1}, Case{"run a seed 1\n@ soon\n", 2, 1}}) {
        const RecordedRuns read = ReadRuns(one.text);
        EXPECT_EQ(read.problemLine, one.problemLine) << one.text;
        EXPECT_EQ(read.runs.size(), one.runs) << one.text;
    }
}

TEST(Runs, TheFirstStepThatDiffersIsFound) {
    const std::shared_ptr<const World> world = Load(ZEM_SAMPLES "/gatehouse.kel");
    RecordedRun run = ReadRuns("run x seed 1\n> look\n> n\n").runs.front();
    run = PlayRun(world, run).played;
    EXPECT_FALSE(FirstDifference(run, PlayRun(world, run).played));
    run.steps[1].story += "More.\n";
    EXPECT_EQ(FirstDifference(run, PlayRun(world, run).played), 2U);
    run.beginning.clear();
    EXPECT_EQ(FirstDifference(run, PlayRun(world, run).played), 0U);
}

} // namespace
} // namespace zem::play
