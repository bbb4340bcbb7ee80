// The command that writes a game as text for people and programs.
#include "base/LineText.h"
#include "base/TextFile.h"
#include "commands/Command.h"
#include "export/Export.h"
#include "export/ExportForms.h"
#include "map/Layout.h"
#include "routing/Router.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>
#include <ostream>

namespace zem {

namespace {

struct ExportArguments {
    std::string file;
    std::string out;
    std::string run; // whose walkthrough it is; empty for the first
};

int ExportWalkthrough(CommandContext& context, const GameModel& game, const ExportArguments& arguments) {
    const std::string file = arguments.file + ".tests";
    try {
        const play::RecordedRun run = exports::RunCalled(ReadFile(file), arguments.run);
        return context.Write(exports::AsWalkthrough(game, run), arguments.out);
    } catch (const KelError& error) {
        return context.Report(file, error);
    }
}

/// The book as a document of pages, with the map.
int ExportPages(CommandContext& context, const GameModel& game, const CommandLookup& commands,
                const std::string& out) {
    if (!context.Painting().book)
        return context.Report(out, KelError("this program makes no pictures"));
    const map::MapGraph graph = map::ReadMapGraph(game);
    const routing::RoutedMap map = routing::RouteMap(graph, map::LayOut(graph));
    try {
        return context.Write(context.Painting().book(exports::AsHtml(game, commands), map), out);
    } catch (const KelError& error) {
        return context.Report(out, error);
    }
}

int Export(CommandContext& context, const ExportArguments& arguments) {
    const std::string ending = Lower(std::filesystem::path(arguments.out).extension().string());
    const exports::ExportForm* form = exports::FormOf(arguments.out);
    if (form == nullptr && ending != ".txt" && ending != ".pdf") {
        context.Err()
            << arguments.out
            << ": its ending tells what to write: .html, .md or .pdf for a book of the game, "
            << ".csv for its rooms, .json for all of it, .dot for the map, .txt for a walkthrough\n";
        return WrongUsage;
    }
    GameModel game;
    if (!context.Load(game, arguments.file))
        return FileProblem;
    if (ending == ".txt")
        return ExportWalkthrough(context, game, arguments);
    CommandCatalogue catalogue;
    context.Load(catalogue);
    const CommandLookup commands(catalogue);
    if (form == nullptr)
        return ExportPages(context, game, commands, arguments.out);
    return context.Write(form->write(game, commands), arguments.out);
}

} // namespace

void AddExportCommand(CLI::App& app, CommandContext& context, int& status) {
    CLI::App* exporting =
        app.add_subcommand("export", "write a game as a book, a table, data or a walkthrough");
    auto arguments = std::make_shared<ExportArguments>();
    exporting->add_option("FILE", arguments->file, "the game")->required();
    exporting
        ->add_option(
            "OUT", arguments->out,
            "the file to write: .html, .md and .pdf are a book, .csv the rooms, .json all of the game, .dot "
            "the map, .txt the walkthrough of a run in FILE.tests")
        ->required();
    exporting->add_option("--run", arguments->run, "the name of the run to write; the first without it");
    exporting->final_callback([&context, &status, arguments] { status = Export(context, *arguments); });
}

} // namespace zem
