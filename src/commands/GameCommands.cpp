// The commands that show a game or write it anew.
#include "base/TextEncoding.h"
#include "commands/Command.h"
#include "game/PrintGame.h"
#include "map/Layout.h"

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

/// Writes where each room stands on the map: its name, x and y in cells, y growing to the south, with tabs
/// between them. The places that the author chose count, those that the editor remembers do not.
int Map(CommandContext& context, const std::string& file, const std::string& positions) {
    GameModel game;
    if (!context.Load(game, file))
        return FileProblem;
    const map::MapGraph graph = map::ReadMapGraph(game);
    const std::vector<map::Cell> cells = map::LayOut(graph);
    std::string lines;
    for (int room = 0; room < graph.RoomCount(); ++room)
        lines += ToUtf8(graph.names[room]) + '\t' + std::to_string(cells[room].x) + '\t' +
                 std::to_string(cells[room].y) + '\n';
    return context.Write(lines, positions);
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

void AddMapCommand(CLI::App& app, CommandContext& context, int& status) {
    CLI::App* map = app.add_subcommand("map", "lay out the map of a game");
    auto files = std::make_shared<std::pair<std::string, std::string>>();
    map->add_option("FILE", files->first, "the game whose rooms are laid out")->required();
    map->add_option("--positions", files->second,
                    "the file for the rooms' places, - for standard output: name, x and y (to the south) in "
                    "whole cells, with tabs between them")
        ->required();
    map->final_callback([&context, &status, files] { status = Map(context, files->first, files->second); });
}

} // namespace zem
