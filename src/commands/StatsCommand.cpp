// The command that tells the figures of a game.
#include "commands/Command.h"
#include "commands/Json.h"
#include "figures/Figures.h"
#include "game/ScriptOwners.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <utility>

namespace zem {

namespace {

using figures::Figure;
using figures::FigureEntry;

constexpr std::size_t MostListed = 20; // entries of a figure that are worth a list in the terminal

/// The figures whose entries people ask for by name.
bool IsListed(const Figure& figure) {
    return figure.id == "rooms.cutOff" || figure.id == "rooms.withoutText" || figure.id == "rooms.longest" ||
           figure.id == "rooms.shortest" || figure.id == "items.notObtainable" ||
           figure.id == "words.byCharacter" || figure.id == "endings";
}

std::string AsText(const std::vector<Figure>& all, const ScriptOwners& owners) {
    std::string text;
    for (const Figure& figure : all) {
        text += figure.name + ": " + std::to_string(figure.value) +
                (figure.isEstimate ? " (an estimate)" : "") + "\n";
        if (!IsListed(figure))
            continue;
        std::size_t left = MostListed;
        for (const FigureEntry& entry : figure.entries) {
            if (left-- == 0) {
                text += "  and " + std::to_string(figure.entries.size() - MostListed) + " more\n";
                break;
            }
            text += "  " + ToTerminal(owners.Describe(entry.place));
            text += entry.value == 1 ? "\n" : ": " + std::to_string(entry.value) + "\n";
        }
    }
    return text;
}

std::string AsJson(const GameModel& game, const std::vector<Figure>& all, const ScriptOwners& owners) {
    Json list = Json::array();
    for (const Figure& figure : all) {
        Json entries = Json::array();
        for (const FigureEntry& entry : figure.entries)
            entries.push_back({{"where", JsonText(owners.Describe(entry.place))},
                               {"place", JsonPlace(game, entry.place)},
                               {"value", entry.value}});
        list.push_back({{"id", figure.id},
                        {"name", figure.name},
                        {"value", figure.value},
                        {"estimate", figure.isEstimate},
                        {"entries", std::move(entries)}});
    }
    return ToBytes({{"format", "zem-figures"},
                    {"version", 1},
                    {"game", JsonText(game.GameName)},
                    {"wordsPerMinute", figures::WordsPerMinute},
                    {"figures", std::move(list)}});
}

int Stats(CommandContext& context, const std::string& file, bool asJson) {
    GameModel game;
    if (!context.Load(game, file))
        return FileProblem;
    CommandCatalogue catalogue;
    context.Load(catalogue);
    const std::vector<Figure> all = figures::FiguresOf(game, CommandLookup(catalogue));
    const ScriptOwners owners(game);
    return context.Write(asJson ? AsJson(game, all, owners) : AsText(all, owners), "-");
}

} // namespace

void AddStatsCommand(CLI::App& app, CommandContext& context, int& status) {
    CLI::App* stats =
        app.add_subcommand("stats", "tell the figures of a game: rooms, things, words, reading time");
    auto arguments = std::make_shared<std::pair<std::string, bool>>();
    stats->add_option("FILE", arguments->first, "the game to count")->required();
    stats->add_flag("--json", arguments->second, "as JSON, each figure with the places that it counts");
    stats->final_callback(
        [&context, &status, arguments] { status = Stats(context, arguments->first, arguments->second); });
}

} // namespace zem
