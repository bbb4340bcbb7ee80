// The command that writes a game as text for people and programs.
#include "base/LineText.h"
#include "base/TextFile.h"
#include "commands/Command.h"
#include "export/Export.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <functional>
#include <memory>
#include <ostream>

namespace zem {

namespace {

struct ExportArguments {
    std::string file;
    std::string out;
    std::string run; // whose walkthrough it is; empty for the first
};

using Exporter = std::function<std::string(const GameModel&, const CommandLookup&)>;

struct ExportForm {
    const char* ending;
    Exporter write;
};

/// The forms that a game alone gives.
const std::vector<ExportForm>& Forms() {
    static const std::vector<ExportForm> forms = {
        {".html", exports::AsHtml},
        {".htm", exports::AsHtml},
        {".md", exports::AsMarkdown},
        {".csv", [](const GameModel& game, const CommandLookup&) { return exports::AsCsv(game); }},
        {".json", [](const GameModel& game, const CommandLookup&) { return exports::AsJson(game); }},
        {".dot", [](const GameModel& game, const CommandLookup&) { return exports::AsDot(game); }},
    };
    return forms;
}

int ExportWalkthrough(CommandContext& context, const GameModel& game, const ExportArguments& arguments) {
    const std::string file = arguments.file + ".tests";
    play::RecordedRuns recorded;
    try {
        recorded = play::ReadRuns(ReadFile(file));
    } catch (const KelError& error) {
        return context.Report(file, error);
    }
    if (!recorded.problem.empty()) {
        context.Err() << file << ':' << recorded.problemLine << ": " << recorded.problem << '\n';
        return FileProblem;
    }
    for (const play::RecordedRun& run : recorded.runs)
        if (arguments.run.empty() || run.name == arguments.run)
            return context.Write(exports::AsWalkthrough(game, run), arguments.out);
    context.Err() << file << ": there is no run" << (arguments.run.empty() ? "" : " " + arguments.run)
                  << '\n';
    return FileProblem;
}

int Export(CommandContext& context, const ExportArguments& arguments) {
    const std::string ending = Lower(std::filesystem::path(arguments.out).extension().string());
    const ExportForm* chosen = nullptr;
    for (const ExportForm& form : Forms())
        if (ending == form.ending)
            chosen = &form;
    if (chosen == nullptr && ending != ".txt") {
        context.Err()
            << arguments.out << ": its ending tells what to write: .html or .md for a book of the game, "
            << ".csv for its rooms, .json for all of it, .dot for the map, .txt for a walkthrough\n";
        return WrongUsage;
    }
    GameModel game;
    if (!context.Load(game, arguments.file))
        return FileProblem;
    if (chosen == nullptr)
        return ExportWalkthrough(context, game, arguments);
    CommandCatalogue catalogue;
    context.Load(catalogue);
    return context.Write(chosen->write(game, CommandLookup(catalogue)), arguments.out);
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
            "the file to write: .html and .md are a book, .csv the rooms, .json all of the game, .dot "
            "the map, .txt the walkthrough of a run in FILE.tests")
        ->required();
    exporting->add_option("--run", arguments->run, "the name of the run to write; the first without it");
    exporting->final_callback([&context, &status, arguments] { status = Export(context, *arguments); });
}

} // namespace zem
