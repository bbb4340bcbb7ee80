// The command that lets a walker try a game out.
#include "base/TextEncoding.h"
#include "commands/Command.h"
#include "commands/CoverageList.h"
#include "commands/GameFolder.h"
#include "commands/NumberOptions.h"
#include "play/Session.h"
#include "walk/Walker.h"

#include <CLI/CLI.hpp>
#include <array>
#include <chrono>
#include <filesystem>
#include <memory>
#include <ostream>

namespace zem {

namespace {

using walk::WalkFinding;

struct WalkCommandOptions {
    std::string file;
    std::uint64_t turns = 100'000;
    std::uint64_t seed = 1;
    double seconds = 0; // 0 for no limit
    std::string runs;   // the file for the findings
    bool coverage = false;
};

/// In the order of WalkFinding::Kind.
constexpr std::array<const char*, 5> KindNames = {"win", "loss", "mistake", "circle", "dead end"};

bool IsFault(const WalkFinding& finding) {
    return finding.kind == WalkFinding::Mistake || finding.kind == WalkFinding::Circle;
}

std::string Plural(std::uint64_t count, const std::string& word) {
    return std::to_string(count) + " " + word + (count == 1 ? "" : word.ends_with('s') ? "es" : "s");
}

void TellFigures(const walk::Walker& walker, std::ostream& out) {
    const walk::WalkFigures& figures = walker.Figures();
    out << Plural(figures.turns, "turn") << ", " << Plural(figures.walks, "walk") << " from "
        << Plural(figures.states, "state") << ", " << Plural(figures.wins, "win") << ", "
        << Plural(figures.losses, "loss") << '\n'
        << SummariseCoverage(walker.Reached());
}

/// Rooms and endings that no walk has reached; for some it is certain that no player ever will.
std::string ListUnreached(const walk::Walker& walker, const PlaceWords& places) {
    std::string list;
    for (const walk::WalkUnreached& unreached : walker.NeverReached()) {
        const bool isRoom = unreached.part.kind == play::CoveragePart::Room;
        list += places.At(unreached.part.source) + (isRoom ? " never entered" : " never reached");
        list += unreached.isCertain ? ": nothing leads there\n" : " in this walk\n";
    }
    return list;
}

/// Recorded runs may be an author's work, so nothing is written over a file that is there.
bool MayWriteRuns(CommandContext& context, const std::string& file) {
    std::error_code error;
    if (file.empty() || file == "-" || !std::filesystem::exists(file, error))
        return true;
    context.Err() << file << ": there is such a file, and it is left as it is\n";
    return false;
}

int Walk(CommandContext& context, const WalkCommandOptions& options) {
    if (!MayWriteRuns(context, options.runs))
        return FileProblem;
    std::optional<play::GameFiles> files = play::LoadGameFiles(options.file, context.Err());
    if (!files)
        return FileProblem;
    const std::shared_ptr<const play::World> world = play::World::Compile(*std::move(files));
    if (const std::string why = play::Session(world, 1).WhyItCannotBegin(); !why.empty()) {
        context.Err() << options.file << ": " << ToUtf8(why) << '\n';
        return FileProblem;
    }
    walk::WalkLimits limits{options.turns, options.seed, {}};
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(options.seconds);
    if (options.seconds > 0)
        limits.goesOn = [end] { return std::chrono::steady_clock::now() < end; };
    walk::Walker walker(world, limits);
    walker.Run();

    std::vector<play::RecordedRun> runs;
    bool isFaulty = false;
    const PlaceWords places(world, options.file);
    TellFigures(walker, context.Out());
    std::array<int, KindNames.size()> counts{};
    for (const WalkFinding& finding : walker.Findings()) {
        const std::string name =
            std::string(KindNames[finding.kind]) + " " + std::to_string(++counts[finding.kind]);
        isFaulty = isFaulty || IsFault(finding);
        context.Out() << places.At(finding.source) << ' ' << ToTerminal(finding.text) << " [" << name << ", "
                      << Plural(finding.way.size(), "turn") << "]\n";
        if (!options.runs.empty())
            runs.push_back(walker.AsRun(finding, name));
    }
    context.Out() << ListUnreached(walker, places);
    if (options.coverage)
        context.Out() << ListNeverReached(walker.Reached(), places);
    context.Out() << std::flush;
    if (!options.runs.empty() && context.Write(play::WriteRuns(runs), options.runs) != Success)
        return FileProblem;
    return isFaulty ? FileProblem : Success;
}

} // namespace

void AddWalkCommand(CLI::App& app, CommandContext& context, int& status) {
    CLI::App* walk = app.add_subcommand(
        "walk",
        "let a walker play a game by itself and tell what it finds: ways to win and to lose, mistakes in "
        "scripts, turns without end, turns after which the game can no longer be won, rooms and endings "
        "never reached, and how much of the game it reached; exit status 1 for mistakes");
    auto options = std::make_shared<WalkCommandOptions>();
    walk->add_option("FILE", options->file, "the game")->required();
    walk->add_option("--turns", options->turns, "how many turns it makes")
        ->check(WholeNumber())
        ->capture_default_str();
    walk->add_option("--seed", options->seed, "of chance; the same seed gives the same walk everywhere")
        ->check(WholeNumber())
        ->capture_default_str();
    walk->add_option("--seconds", options->seconds, "the most time that it takes; it may end earlier then")
        ->check(SecondsAboveZero());
    walk->add_option("--runs", options->runs,
                     "write the findings as recorded runs, which can be played again, into a new file");
    walk->add_flag("--coverage", options->coverage, "list what of the game it never reached");
    walk->final_callback([&context, &status, options] { status = Walk(context, *options); });
}

} // namespace zem
