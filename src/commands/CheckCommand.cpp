// The command that tells what is wrong with a game.
#include "base/TextEncoding.h"
#include "commands/Command.h"
#include "commands/GameFolder.h"
#include "kel/CommandLookup.h"
#include "problems/FindProblems.h"
#include "reader/InspectFile.h"
#include "reader/LoadGame.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <ostream>

namespace zem {

namespace {

using namespace problems;

struct CheckArguments {
    std::string file;
    bool withHints = false;
    CheckChoice choice;
};

/// A problem as it is printed, and the line of the file where it stands.
struct PrintedProblem {
    std::size_t line = 0;
    const Problem* problem = nullptr;
};

std::vector<PrintedProblem> ByLine(const CheckedGame& game, const std::vector<Problem>& problems) {
    std::vector<PrintedProblem> printed;
    for (const Problem& problem : problems)
        printed.push_back({problem.fileLine != 0 ? problem.fileLine
                                                 : game.Source()->lines.LineOf(game.Game(), problem.place),
                           &problem});
    std::stable_sort(printed.begin(), printed.end(),
                     [](const PrintedProblem& a, const PrintedProblem& b) { return a.line < b.line; });
    return printed;
}

int Check(CommandContext& context, const CheckArguments& arguments) {
    CommandCatalogue catalogue;
    context.Load(catalogue);
    const CommandLookup commands(catalogue);
    CheckInput input;
    input.commands = &commands;
    if (!context.LoadForCheck(input, arguments.file))
        return FileProblem;

    const CheckedGame game(std::move(input));
    const std::vector<Problem> problems = FindProblems(game, arguments.choice);
    int status = Success;
    for (const auto& [line, problem] : ByLine(game, problems)) {
        if (problem->level == Level::Hint && !arguments.withHints)
            continue;
        if (problem->level != Level::Hint)
            status = FileProblem;
        context.Out() << arguments.file << ':' << line << ": " << WordFor(problem->level) << ": ";
        if (problem->fileLine == 0)
            context.Out() << ToTerminal(game.Describe(problem->place)) << ": ";
        context.Out() << ToTerminal(problem->text) << " [" << problem->id << "]\n";
    }
    return status;
}

} // namespace

void AddCheckCommand(CLI::App& app, CommandContext& context, int& status) {
    CLI::App* check = app.add_subcommand("check", "tell what is wrong with a game, a problem a line");
    auto arguments = std::make_shared<CheckArguments>();
    check->add_option("FILE", arguments->file, "the game to check")->required();
    check->add_flag("--hints", arguments->withHints, "tell what is only worth a look, too");
    check->add_option("--only", arguments->choice.only, "the ids of the checks that count")->delimiter(',');
    check->add_option("--skip", arguments->choice.skip, "the ids of checks that do not count")
        ->delimiter(',');
    check->final_callback([&context, &status, arguments] { status = Check(context, *arguments); });
}

} // namespace zem
