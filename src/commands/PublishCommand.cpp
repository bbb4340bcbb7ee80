// The command that makes a game into a web page.
#include "base/TextFile.h"
#include "commands/Command.h"
#include "commands/Publish.h"
#include "game/Notes.h"
#include "kel/CommandLookup.h"
#include "problems/FindProblems.h"
#include "problems/Silenced.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>
#include <ostream>

namespace zem {

namespace {

struct PublishArguments {
    std::string file;
    std::string out;
    std::string cover;
};

/// Tells the errors of the game. They keep nobody from publishing it: its author may know better.
void TellErrors(CommandContext& context, const std::string& file) {
    CommandCatalogue catalogue;
    context.Load(catalogue);
    const CommandLookup commands(catalogue);
    problems::CheckInput input;
    input.commands = &commands;
    GameNotes notes;
    try {
        notes = LoadNotes(file);
    } catch (const KelError& error) {
        context.Report(NotesPath(file), error); // and nothing counts as silenced
    }
    if (!context.LoadForCheck(input, file))
        return;
    const problems::CheckedGame game(std::move(input));
    for (const problems::Problem& problem :
         problems::WithoutSilenced(game, notes, problems::FindProblems(game))) {
        if (problem.level != problems::Level::Error)
            continue;
        const std::size_t line = problem.fileLine != 0
                                     ? problem.fileLine
                                     : game.Source()->lines.LineOf(game.Game(), problem.place);
        context.Err() << file << ':' << line << ": error: "
                      << (problem.fileLine != 0 ? "" : ToTerminal(game.Describe(problem.place)) + ": ")
                      << ToTerminal(problem.text) << " [" << problem.id << "]\n";
    }
}

int Publish(CommandContext& context, const PublishArguments& arguments) {
    const std::filesystem::path path(arguments.file);
    try {
        const PublishedPage page = PublishGame({.bytes = ReadFile(arguments.file),
                                                .name = path.stem().string(),
                                                .folder = path.parent_path().string(),
                                                .cover = arguments.cover},
                                               context.ProgramFolder());
        for (const std::string& remark : page.remarks)
            context.Err() << arguments.file << ": warning: " << remark << '\n';
        TellErrors(context, arguments.file);
        return context.Write(page.html, arguments.out);
    } catch (const KelError& error) {
        return context.Report(arguments.file, error);
    }
}

} // namespace

void AddPublishCommand(CLI::App& app, CommandContext& context, int& status) {
    CLI::App* publish = app.add_subcommand(
        "publish", "make a game into one web page that plays it in any browser, without a network");
    auto arguments = std::make_shared<PublishArguments>();
    publish->add_option("FILE", arguments->file, "the game")->required();
    publish->add_option("OUT", arguments->out, "the page to write, - for standard output")->required();
    publish->add_option("--cover", arguments->cover,
                        "the picture on the page; without it the one beside the game that is called as it or "
                        "\"cover\"");
    publish->final_callback([&context, &status, arguments] { status = Publish(context, *arguments); });
}

} // namespace zem
