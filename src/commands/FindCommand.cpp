// The command that finds words in a game.
#include "base/TextEncoding.h"
#include "commands/Command.h"
#include "game/Find.h"
#include "game/PlaceLine.h"
#include "kel/CommandLookup.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <limits>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>

namespace zem {

namespace {

constexpr std::size_t LongestLine = 160; // characters of a printed line; a text in a game may be any length

const std::map<std::string, HitKind>& KindsByWord() {
    static const std::map<std::string, HitKind> Kinds = {
        {"name", HitKind::Name},       {"reference", HitKind::Reference}, {"text", HitKind::PrintedText},
        {"script", HitKind::Script},   {"pattern", HitKind::Pattern},     {"raw", HitKind::RawLine},
        {"setting", HitKind::Setting},
    };
    return Kinds;
}

struct FindArguments {
    std::string file;
    std::string words; // in UTF-8
    FindQuery query;
    std::vector<std::string> kinds;
    bool asJson = false;
};

/// A hit as it is printed.
struct PrintedHit {
    std::size_t line = 0; // of the file
    std::string place;
    const char* kind = "";
    LineInContext text;
};

std::vector<PrintedHit> ByLine(const GameIndex& index, const SourceLines& lines,
                               const std::vector<FindHit>& hits) {
    std::vector<PrintedHit> printed;
    for (const FindHit& hit : hits) {
        const std::size_t line = lines.LineOf(index.Game(), hit.place);
        if (line == 0)
            continue; // a text that every game has, and the file does not
        const auto resolved = Resolve(index.Game(), hit.place);
        printed.push_back({line, index.Owners().Describe(hit.place), Describe(hit.kind),
                           InContext(*resolved->text, hit.place.bytes, LongestLine)});
    }
    std::stable_sort(printed.begin(), printed.end(),
                     [](const PrintedHit& a, const PrintedHit& b) { return a.line < b.line; });
    return printed;
}

void PrintJson(CommandContext& context, const FindArguments& arguments, const std::vector<PrintedHit>& hits) {
    nlohmann::ordered_json json = {
        {"file", arguments.file}, {"words", arguments.words}, {"count", hits.size()}};
    json["hits"] = nlohmann::ordered_json::array();
    for (const PrintedHit& hit : hits)
        json["hits"].push_back({{"line", hit.line},
                                {"place", ToUtf8(hit.place)},
                                {"kind", hit.kind},
                                {"text", ToUtf8(hit.text.text)},
                                {"begin", hit.text.marked.begin},
                                {"end", hit.text.marked.end}});
    // A path may be in no encoding at all.
    context.Out() << json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
}

int FindWords(CommandContext& context, FindArguments arguments) {
    const ConvertedText words = Utf8ToWindows1252(arguments.words);
    if (words.bytes.empty() || (arguments.query.isRegularExpression && !words.lacking.empty())) {
        context.Err() << "zem find: "
                      << (words.bytes.empty()
                              ? "there are no words to find"
                              : "no game can hold the character " + words.lacking.front().utf8)
                      << '\n';
        return WrongUsage;
    }
    arguments.query.words = words.bytes;
    for (const std::string& kind : arguments.kinds)
        arguments.query.kinds.Add(KindsByWord().at(kind));

    CommandCatalogue catalogue;
    context.Load(catalogue);
    const CommandLookup commands(catalogue);
    GameModel game;
    SourceLines lines;
    if (!context.Load(game, arguments.file, lines))
        return FileProblem;
    const GameIndex index(commands, game);
    FindResult found;
    if (words.lacking.empty()) // what no game can hold is in none
        found = Find(index, arguments.query, std::numeric_limits<std::size_t>::max());
    if (!found.problem.empty()) {
        context.Err() << "zem find: " << ToTerminal(found.problem) << '\n';
        return WrongUsage;
    }
    const std::vector<PrintedHit> hits = ByLine(index, lines, found.hits);
    if (arguments.asJson)
        PrintJson(context, arguments, hits);
    else
        for (const PrintedHit& hit : hits)
            context.Out() << arguments.file << ':' << hit.line << ": " << ToTerminal(hit.place) << ": "
                          << ToTerminal(hit.text.text) << '\n';
    return hits.empty() ? FileProblem : Success;
}

} // namespace

void AddFindCommand(CLI::App& app, CommandContext& context, int& status) {
    CLI::App* find = app.add_subcommand(
        "find",
        "find words in a game, one hit a line as FILE:LINE: place: text; status 1 when there is none");
    auto arguments = std::make_shared<FindArguments>();
    find->add_option("FILE", arguments->file, "the game to search")->required();
    find->add_option("WORDS", arguments->words, "what to find, in any capitals")->required();
    find->add_flag("--regex", arguments->query.isRegularExpression, "WORDS are a regular expression");
    find->add_flag("--words", arguments->query.wholeWords, "whole words only");
    find->add_flag("--capitals", arguments->query.capitals, "the capitals must be those of WORDS");
    find->add_option(
            "--kind", arguments->kinds,
            "what must stand there: name, reference, text (printed), script, pattern (of what players "
            "type), raw (lines kept as they are) or setting; several with a comma between them")
        ->delimiter(',')
        ->check(CLI::IsMember(KindsByWord()));
    find->add_flag(
        "--json", arguments->asJson,
        "print JSON: file, words, count, and hits with line, place, kind, text, and begin and end of "
        "the words in the text, in characters from 0");
    find->final_callback([&context, &status, arguments] { status = FindWords(context, *arguments); });
}

} // namespace zem
