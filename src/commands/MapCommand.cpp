// The map of a game as a picture and as places.
#include "base/TextEncoding.h"
#include "commands/Command.h"
#include "map/Layout.h"
#include "routing/Router.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace zem {

namespace {

struct MapFiles {
    std::string game;
    std::string picture;
    std::string positions;
};

/// Where each room stands on the map: its name, x and y in cells, y growing to the south, with tabs between
/// them.
std::string PlacesOf(const map::MapGraph& graph, const std::vector<map::Cell>& cells) {
    std::string lines;
    for (int room = 0; room < graph.RoomCount(); ++room)
        lines += ToUtf8(graph.names[room]) + '\t' + std::to_string(cells[room].x) + '\t' +
                 std::to_string(cells[room].y) + '\n';
    return lines;
}

int WritePicture(CommandContext& context, const MapFiles& files, const map::MapGraph& graph,
                 const std::vector<map::Cell>& cells) {
    if (!context.Painting().map)
        return context.Report(files.picture, KelError("this program makes no pictures"));
    try {
        return context.Write(context.Painting().map(routing::RouteMap(graph, cells), files.picture),
                             files.picture);
    } catch (const KelError& error) {
        return context.Report(files.picture, error);
    }
}

/// The places that the author chose count, those that the editor remembers do not.
int Map(CommandContext& context, const MapFiles& files) {
    GameModel game;
    if (!context.Load(game, files.game))
        return FileProblem;
    const map::MapGraph graph = map::ReadMapGraph(game);
    const std::vector<map::Cell> cells = map::LayOut(graph);
    int status = Success;
    if (!files.positions.empty())
        status = context.Write(PlacesOf(graph, cells), files.positions);
    if (!files.picture.empty() && status == Success)
        status = WritePicture(context, files, graph, cells);
    return status;
}

} // namespace

void AddMapCommand(CLI::App& app, CommandContext& context, int& status) {
    CLI::App* map = app.add_subcommand("map", "lay out the map of a game and draw it");
    auto files = std::make_shared<MapFiles>();
    map->add_option("FILE", files->game, "the game whose rooms are laid out")->required();
    map->add_option("OUT", files->picture, "the picture to write: .svg, .pdf or .png");
    map->add_option("--positions", files->positions,
                    "the file for the rooms' places, - for standard output: name, x and y (to the south) in "
                    "whole cells, with tabs between them");
    map->final_callback([&context, &status, files] {
        if (files->picture.empty() && files->positions.empty())
            throw CLI::RequiredError("OUT or --positions");
        status = Map(context, *files);
    });
}

} // namespace zem
