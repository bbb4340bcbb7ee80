// The command that plays the recorded runs of a game.
#include "base/TextEncoding.h"
#include "base/TextFile.h"
#include "commands/Command.h"
#include "commands/CoverageList.h"
#include "commands/GameFolder.h"
#include "commands/JUnitReport.h"
#include "commands/NumberOptions.h"
#include "play/Coverage.h"
#include "play/RunDifferences.h"
#include "play/Session.h"
#include "play/SourcePlaces.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <memory>
#include <ostream>

namespace zem {

namespace {

using Clock = std::chrono::steady_clock;

/// What this command ends with: as approved, told otherwise, nothing could be judged.
struct TestOptions {
    std::string file;
    std::string junit;
    std::vector<std::string> runs; // to play; none for all
    double seconds = 0;            // for all of them; 0 for no limit
    bool approve = false;
    bool coverage = false;
};

/// A run that was played, with what is wrong with it in plain words.
struct PlayedRun {
    const play::RecordedRun* approved = nullptr;
    play::RunResult result;
    std::vector<std::string> problems; // each with its lines, the first of which says where
    double seconds = 0;
};

constexpr std::size_t MostTold = 5; // differences of one run

std::string Tell(const play::StoryDifference& difference) {
    std::string text = difference.after.empty() ? "told differently at the beginning\n"
                                                : "told differently after \"" + difference.after + "\"\n";
    const std::size_t pairs = std::min(difference.approved.size(), difference.printed.size());
    for (const std::string& line : difference.approved)
        text += "  - " + line + "\n";
    for (const std::string& line : difference.printed)
        text += "  + " + line + "\n";
    if (pairs == 1 && difference.approved.size() == 1 && difference.printed.size() == 1)
        text +=
            "    " +
            std::string(play::FirstDifferentCharacter(difference.approved[0], difference.printed[0]), ' ') +
            "^\n";
    return text;
}

class RunTest {
public:
    RunTest(CommandContext& context, const TestOptions& options)
        : context_(context),
          options_(options),
          testsFile_(options.file + ".tests") {}

    int Run() {
        begin_ = Clock::now();
        if (!ReadTests() || !LoadWorld())
            return Trouble;
        coverage_ = std::make_unique<play::Coverage>(world_);
        std::vector<PlayedRun> played;
        for (const play::RecordedRun& run : runs_.runs)
            if (IsWanted(run))
                played.push_back(Play(run));
        if (played.empty()) {
            context_.Err() << testsFile_ << ": there is no run of that name\n";
            return Trouble;
        }
        TellWarnings(played);
        const bool isApproved = options_.approve && Approve(played);
        if (options_.approve && !isApproved)
            return Trouble;
        const int status = TellRuns(played);
        if (options_.coverage)
            context_.Out() << SummariseCoverage(*coverage_)
                           << ListNeverReached(*coverage_, PlaceWords(world_, options_.file));
        if (!options_.junit.empty() && context_.Write(Report(played), options_.junit) != Success)
            return Trouble;
        context_.Out() << std::flush;
        return status;
    }

private:
    bool ReadTests() {
        std::error_code error;
        if (!std::filesystem::exists(testsFile_, error)) {
            context_.Err() << testsFile_ << ": the game has no recorded runs: there is no such file\n";
            return false;
        }
        try {
            runs_ = play::ReadRuns(ReadFile(testsFile_));
        } catch (const KelError& problem) {
            context_.Report(testsFile_, problem);
            return false;
        }
        if (!runs_.problem.empty()) {
            context_.Err() << testsFile_ << ':' << runs_.problemLine << ": " << runs_.problem << '\n';
            return false;
        }
        if (runs_.runs.empty())
            context_.Err() << testsFile_ << ": there is no run in the file\n";
        return !runs_.runs.empty();
    }

    bool LoadWorld() {
        std::optional<play::GameFiles> files = play::LoadGameFiles(options_.file, context_.Err());
        if (!files)
            return false;
        world_ = play::World::Compile(*std::move(files));
        const std::string why = play::Session(world_, 1).WhyItCannotBegin();
        if (!why.empty())
            context_.Err() << options_.file << ": " << ToUtf8(why) << '\n';
        return why.empty();
    }

    bool IsWanted(const play::RecordedRun& run) const {
        return options_.runs.empty() ||
               std::find(options_.runs.begin(), options_.runs.end(), run.name) != options_.runs.end();
    }

    static double SecondsSince(Clock::time_point begin) {
        return std::chrono::duration<double>(Clock::now() - begin).count();
    }

    PlayedRun Play(const play::RecordedRun& run) {
        const auto begin = Clock::now();
        PlayedRun played{&run, {}, {}, 0};
        const auto goesOn = [this] {
            return options_.seconds <= 0 || SecondsSince(begin_) < options_.seconds;
        };
        played.result = play::PlayRun(world_, run, goesOn, coverage_.get());
        const auto add = [&](std::size_t line, const std::string& text) {
            played.problems.push_back(testsFile_ + ':' + std::to_string(line) + ": run \"" + run.name +
                                      "\": " + text);
        };
        const std::vector<play::StoryDifference> differences = CompareRuns(run, played.result.played);
        for (std::size_t k = 0; k < differences.size() && k < MostTold; ++k)
            add(differences[k].line, Tell(differences[k]));
        if (differences.size() > MostTold)
            add(differences[MostTold].line, "told differently in " +
                                                std::to_string(differences.size() - MostTold) +
                                                " more places from here on\n");
        const std::size_t stopped = played.result.played.steps.size();
        const std::size_t line = stopped < run.steps.size() ? run.steps[stopped].input.number : run.number;
        if (!played.result.problem.empty())
            add(line, played.result.problem + ": " + run.steps[stopped].input.written + "\n");
        if (played.result.isCutOff)
            add(line, "the time was over here\n");
        played.seconds = SecondsSince(begin);
        return played;
    }

    /// What the author should know of the game whatever its runs say; each once, and no reason to fail.
    void TellWarnings(const std::vector<PlayedRun>& played) {
        std::vector<std::string> told;
        std::optional<PlaceWords> places;
        for (const PlayedRun& run : played)
            for (const play::Warning& warning : run.result.warnings) {
                if (!places)
                    places.emplace(world_, options_.file);
                std::string text = places->At(warning.source) + " warning: " + ToUtf8(warning.text);
                if (std::find(told.begin(), told.end(), text) == told.end()) {
                    context_.Err() << text << '\n';
                    told.push_back(std::move(text));
                }
            }
    }

    /// Puts what was played in place of what was approved. A run that could not be played to its end stays as
    /// it is. False when the file could not be written.
    bool Approve(std::vector<PlayedRun>& played) {
        bool isChanged = false;
        for (PlayedRun& run : played) {
            if (run.problems.empty() || !run.result.problem.empty() || run.result.isCutOff)
                continue;
            const auto index = static_cast<std::size_t>(run.approved - runs_.runs.data());
            runs_.runs[index] = run.result.played;
            run.problems.clear();
            context_.Out() << "run \"" << run.approved->name << "\": approved\n";
            isChanged = true;
        }
        return !isChanged || context_.Write(play::WriteRuns(runs_.runs), testsFile_) == Success;
    }

    int TellRuns(const std::vector<PlayedRun>& played) {
        std::size_t lines = 0;
        std::size_t bad = 0;
        for (const PlayedRun& run : played) {
            lines += run.result.played.steps.size();
            bad += run.problems.empty() ? 0 : 1;
            for (const std::string& problem : run.problems)
                context_.Out() << problem;
        }
        context_.Out() << played.size() - bad << " of " << played.size()
                       << (played.size() == 1 ? " run" : " runs") << " as approved, " << lines
                       << " lines played\n";
        return bad == 0 ? AsExpected : Different;
    }

    std::string Report(const std::vector<PlayedRun>& played) const {
        std::vector<ReportedTest> tests;
        for (const PlayedRun& run : played) {
            ReportedTest test;
            test.name = run.approved->name;
            test.seconds = run.seconds;
            for (const std::string& problem : run.problems)
                test.details += problem;
            if (!run.problems.empty()) {
                test.result = ReportedTest::Failed;
                test.message = run.problems.front().substr(0, run.problems.front().find('\n'));
            }
            tests.push_back(std::move(test));
        }
        return JUnitReport(std::filesystem::path(options_.file).filename().string(), tests);
    }

    CommandContext& context_;
    const TestOptions& options_;
    std::string testsFile_;
    play::RecordedRuns runs_;
    std::shared_ptr<const play::World> world_;
    std::unique_ptr<play::Coverage> coverage_;
    Clock::time_point begin_;
};

} // namespace

void AddTestCommand(CLI::App& app, CommandContext& context, int& status) {
    CLI::App* test = app.add_subcommand(
        "test",
        "play the recorded runs of a game, which stand in FILE.tests, and tell what is told differently "
        "than its author approved; exit status 0 for nothing, 1 for something, 2 where none could be played");
    auto options = std::make_shared<TestOptions>();
    test->add_option("FILE", options->file, "the game")->required();
    test->add_option("--junit", options->junit, "write a report for build servers, too: JUnit's XML");
    test->add_option("--seconds", options->seconds, "the most time that all runs may take together")
        ->check(SecondsAboveZero());
    test->add_option("--run", options->runs, "play only the run of this name; may be given again")
        ->take_all()
        ->expected(1);
    test->add_flag("--approve", options->approve, "write what is told now into FILE.tests as approved");
    test->add_flag("--coverage", options->coverage, "list what of the game no run has reached");
    test->final_callback([&context, &status, options] { status = RunTest(context, *options).Run(); });
}

} // namespace zem
