// The commands that show a game or write it anew.
#include "base/TextEncoding.h"
#include "commands/Command.h"
#include "game/PrintGame.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <utility>

namespace zem {

namespace {

int Print(CommandContext& context, const std::string& file) {
    GameModel game;
    if (!context.Load(game, file))
        return FileProblem;
    CommandCatalogue commands;
    context.Load(commands);
    return context.Write(ToUtf8(PrintGame(game, CommandLookup(commands))), "-");
}

int Format(CommandContext& context, const std::string& in, const std::string& out) {
    GameModel game;
    return context.Load(game, in) ? context.Save(game, out) : FileProblem;
}

} // namespace

void AddFormatCommand(CLI::App& app, CommandContext& context, int& status) {
    CLI::App* format = app.add_subcommand("format", "load the game IN and save it as OUT");
    auto files = std::make_shared<std::pair<std::string, std::string>>();
    format->add_option("IN", files->first, "the game to load")->required();
    format->add_option("OUT", files->second, "the file to write; left as it is when anything fails")
        ->required();
    format->final_callback(
        [&context, &status, files] { status = Format(context, files->first, files->second); });
}

void AddPrintCommand(CLI::App& app, CommandContext& context, int& status) {
    CLI::App* print =
        app.add_subcommand("print", "show a whole game as readable text, its scripts in plain English");
    auto file = std::make_shared<std::string>();
    print->add_option("FILE", *file, "the game to show")->required();
    print->final_callback([&context, &status, file] { status = Print(context, *file); });
}

} // namespace zem
