// Recorded runs after a change of the game: their state, their common beginnings, and which gets where.
#include "play/JudgeRuns.h"

#include "play/Libraries.h"
#include "play/ReachedParts.h"
#include "play/RunTree.h"
#include "reader/LoadGame.h"

#include <gtest/gtest.h>

namespace zem::play {
namespace {

std::string ShedWith(const std::string& look, const std::string& box = "msg <A box.>") {
    return "define game <Shed>\r\nstart <Shed>\r\ncommand <who> ask <who; Who?>\r\nend define\r\n"
           "define room <Shed>\r\nlook <" +
           look +
           ">\r\nnorth <Yard>\r\ncommand <lift> if flag <up> then msg <Still up.> else do <lift>\r\n"
           "define object <box>\r\nlook " +
           box +
           "\r\nend define\r\nend define\r\n"
           "define room <Yard>\r\nlook <Mud.>\r\nsouth <Shed>\r\nend define\r\n"
           "define room <Loft>\r\nlook <Hay.>\r\nend define\r\n"
           "define procedure <lift>\r\nmsg <Up.>\r\nif here <box> then flag on <up> else win\r\n"
           "end define\r\n";
}

std::shared_ptr<const World> Made(const std::string& text) {
    GameModel game;
    NameMessages(game);
    ReadGame(game, text);
    return World::Compile({std::move(game), {}, {}, {}});
}

InputLine Line(const std::string& text, InputLine::Kind kind = InputLine::Typed, std::int64_t seconds = 0) {
    InputLine line;
    line.kind = kind;
    line.text = text;
    line.seconds = seconds;
    return line;
}

RecordedRun Recorded(const std::string& name, const std::vector<std::string>& lines,
                     const std::string& game = ShedWith("Dust.")) {
    std::vector<InputLine> inputs;
    for (const std::string& line : lines)
        inputs.push_back(Line(line));
    return MakeRun(Made(game), name, 1, inputs).played;
}

RecordedRun LinesOnly(RecordedRun run) {
    run.beginning.clear();
    for (RunStep& step : run.steps)
        step.story.clear();
    return run;
}

TEST(JudgeRuns, EachRunHasTheStateThatAnEditGivesIt) {
    const RecordedRun run = Recorded("a", {"n", "s", "x box"});
    RecordedRun answered = run;
    answered.steps.push_back({Line("yes", InputLine::Answer), false, "?\n"});
    answered.steps.back().input.written = "< yes";
    const struct {
        const char* what;
        RecordedRun run;
        std::string game;
        RunState state;
        std::size_t differences;
    } cases[] = {
        {"nothing", run, ShedWith("Dust."), RunState::Approved, 0},
        {"what no run sees", run, ShedWith("Dust.", "msg <A box.>"), RunState::Approved, 0},
        {"a script", run, ShedWith("Dust.", "msg <A bx.>"), RunState::Changed, 1},
        {"a room entered twice", run, ShedWith("Straw."), RunState::Changed, 2},
        {"only lines", LinesOnly(run), ShedWith("Dust."), RunState::New, 4},
        {"a question less", answered, ShedWith("Dust."), RunState::CannotBePlayed, 0},
        {"no start room", run, "define game <X>\r\nstart <Hall>\r\nend define\r\n", RunState::CannotBePlayed,
         0},
    };
    for (const auto& one : cases) {
        const JudgedRuns judged = JudgeRuns(Made(one.game), {one.run});
        EXPECT_EQ(judged.runs[0].state, one.state) << one.what << judged.runs[0].result.problem;
        EXPECT_EQ(judged.runs[0].differences.size(), one.differences) << one.what;
        EXPECT_EQ(judged.CountOf(one.state), 1U) << one.what;
    }
}

/// The tree in one line: "3 lines(a)[1 line(b) ...]".
std::string Told(const std::vector<RecordedRun>& runs, const std::vector<RunBranch>& branches) {
    std::string told;
    for (const RunBranch& branch : branches) {
        told += (told.empty() ? "" : " ") + std::to_string(branch.end - branch.begin);
        for (const std::size_t run : branch.ending)
            told += "(" + runs[run].name + ")";
        if (!branch.branches.empty())
            told += "[" + Told(runs, branch.branches) + "]";
    }
    return told;
}

TEST(RunTree, HasTheCommonBeginnings) {
    const RecordedRun both = Recorded("a", {"n", "s", "lift"});
    RecordedRun otherSeed = both;
    otherSeed.name = "seed";
    otherSeed.seed = 7;
    RecordedRun otherChance = otherSeed;
    otherChance.name = "chance";
    otherChance.steps[1].story = "Rain.\n";
    const struct {
        std::vector<RecordedRun> runs;
        const char* tree;
    } cases[] = {
        {{}, ""},
        {{both}, "3(a)"},
        {{both, Recorded("b", {"x box"})}, "3(a) 1(b)"},
        {{both, Recorded("b", {"n", "s"}), Recorded("c", {"n", "x box", "s"})}, "1[1(b)[1(a)] 2(c)]"},
        {{Recorded("empty", {}), both}, "0(empty) 3(a)"},
        {{both, otherSeed}, "3(a)(seed)"},
        {{both, otherChance}, "1[2(a) 2(chance)]"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(Told(one.runs, TreeOfRuns(one.runs)), one.tree);
}

TEST(JudgeRuns, TheShortestWayToEachPartIsFound) {
    const std::vector<RecordedRun> runs = {Recorded("long", {"n", "s", "lift", "lift"}),
                                           Recorded("short", {"x box", "lift"})};
    const JudgedRuns judged = JudgeRuns(Made(ShedWith("Dust.")), runs);
    const struct {
        const char* where;
        const char* text;
        bool answer;
        const char* way; // "run after lines"
    } cases[] = {
        {"room Shed", "", true, "long after 0"},
        {"room Yard", "", true, "long after 1"},
        {"room Loft", "", true, ""},
        {"object box in Shed, look", "msg <A box.>", true, "short after 1"},
        {"procedure lift, script, line 1", "msg <Up.>", true, "short after 2"},
        {"procedure lift, script, line 2", "if here <box> then flag on <up> else win", true, "short after 2"},
        {"procedure lift, script, line 2", "if here <box> then flag on <up> else win", false, ""},
        {"room Shed, player command lift, action", "if flag <up> then msg <Still up.> else do <lift>", true,
         "long after 4"},
    };
    std::string all;
    const std::vector<ReachedPart> parts = PartsWithPlaces(*judged.coverage);
    for (const ReachedPart& part : parts)
        all += part.where + ": " + part.text + "\n";
    for (const auto& one : cases) {
        const auto part = std::find_if(parts.begin(), parts.end(), [&](const ReachedPart& other) {
            return other.where == one.where && other.text == one.text && other.part.answer == one.answer;
        });
        ASSERT_NE(part, parts.end()) << one.where << " is not in\n" << all;
        const auto point = ShortestWayTo(judged.world, runs, part->part.hit);
        EXPECT_EQ(point ? runs[point->run].name + " after " + std::to_string(point->steps) : "", one.way)
            << one.where << one.text;
        EXPECT_EQ(part->IsReached(), *one.way != '\0') << one.where;
    }
}

TEST(ReachedParts, AWalkCountsForTheLinesThatAreStillThere) {
    const std::shared_ptr<const World> before = Made(ShedWith("Dust."));
    const std::shared_ptr<const World> after = Made(ShedWith("Dust.", "msg <A large box.>"));
    const JudgedRuns walked = JudgeRuns(before, {Recorded("walk", {"x box", "lift", "n"})});
    const JudgedRuns judged = JudgeRuns(after, {});
    for (const ReachedPart& part : PartsWithPlaces(*judged.coverage, walked.coverage.get())) {
        const bool isEdited = part.text == "msg <A large box.>";
        const bool isWalked = part.where == "room Yard" || part.text == "msg <Up.>";
        EXPECT_TRUE(!isEdited || !part.IsReached());
        EXPECT_TRUE(!isWalked || part.walked > 0) << part.where;
        EXPECT_EQ(part.part.hits, 0U);
    }
    const LineCoverage lines(*judged.coverage, walked.coverage.get());
    const std::string condition = "if here <box> then flag on <up> else win";
    ASSERT_NE(lines.Find("lift", condition), nullptr);
    EXPECT_GT(lines.Find("lift", condition)->whenTrue, 0U);
    EXPECT_EQ(lines.Find("lift", condition)->whenFalse, 0U);
    EXPECT_EQ(lines.Find("", condition), nullptr) << "it stands in a procedure";
    ASSERT_NE(lines.Find("", "msg <A large box.>"), nullptr);
    EXPECT_EQ(lines.Find("", "msg <A large box.>")->ran, 0U);
}

TEST(MakeRun, LeavesOutWhatChangesNothing) {
    const std::string timed = "define game <T>\r\nstart <Hall>\r\ncommand <wind> after <5; ring>\r\n"
                              "command <dice> roll <d; 6>\r\ncommand <tell> msg <#d#.>\r\nend define\r\n"
                              "define room <Hall>\r\nlook <Hall.>\r\nend define\r\n"
                              "define procedure <ring>\r\nmsg <Ring!>\r\nend define\r\n";
    const auto linesOf = [&](const std::vector<InputLine>& lines) {
        std::string written;
        for (const RunStep& step : MakeRun(Made(timed), "t", 9, lines).played.steps)
            written += step.input.written + ";";
        return written;
    };
    const auto wait = [](std::int64_t seconds) { return Line("", InputLine::Seconds, seconds); };
    EXPECT_EQ(linesOf({Line("look "), wait(9), Line("look")}), "> look;> look;");
    EXPECT_EQ(linesOf({Line("wind"), wait(9), Line("look")}), "> wind;@ 9;> look;") << "it rings";
    EXPECT_EQ(MakeRun(Made(timed), "t", 9, {Line("look")}).played.seed, 1U);
    std::uint64_t seed = 2; // of another throw than 1 gives
    const std::vector<InputLine> dice = {Line("dice"), Line("tell")};
    const auto thrown = [&](std::uint64_t by) { return MakeRun(Made(timed), "t", by, dice).played; };
    while (thrown(seed).seed == 1 && seed < 100)
        ++seed;
    EXPECT_EQ(thrown(seed).seed, seed);
    EXPECT_NE(thrown(seed).steps[1].story, thrown(1).steps[1].story);
}

TEST(MakeRun, NamesAreFreeAndFitIntoAFile) {
    const std::vector<RecordedRun> runs = {Recorded("win", {}), Recorded("win 2", {})};
    const std::pair<const char*, const char*> cases[] = {{"win", "win 3"},
                                                         {" loss ", "loss"},
                                                         {"a\nrun b", "a run b"},
                                                         {"", "run"},
                                                         {"seed 7 seed 3", "seed 7 seed 3"}};
    for (const auto& [wanted, name] : cases) {
        RecordedRun run = Recorded(FreeRunName(runs, wanted), {"n"});
        EXPECT_EQ(run.name, name);
        const RecordedRuns read = ReadRuns(WriteRuns({run}));
        ASSERT_EQ(read.runs.size(), 1U) << wanted;
        EXPECT_EQ(read.runs[0].name, name);
    }
}

} // namespace
} // namespace zem::play
