// The command that tells the unknown words of a game.
#include "commands/Command.h"
#include "commands/Json.h"
#include "game/Notes.h"
#include "game/ScriptOwners.h"
#include "spelling/DictionaryList.h"
#include "spelling/UnknownWords.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <ostream>
#include <set>
#include <string_view>
#include <vector>

namespace zem {

namespace {

struct SpellArguments {
    std::string file;
    std::string language; // empty for that of the game
    bool asJson = false;
};

/// A place of an unknown word as it is printed.
struct PrintedWord {
    std::size_t line = 0; // of the file
    std::string place;
    std::string word;
};

std::vector<PrintedWord> ByLineOfFile(const GameModel& game, const SourceLines& lines,
                                      const spelling::CheckedTexts& checked) {
    const ScriptOwners owners(game);
    std::vector<PrintedWord> printed;
    for (const spelling::UnknownWord& unknown : checked.unknown)
        for (const Place& place : unknown.places)
            if (const std::size_t line = lines.LineOf(game, place); line > 0) // else every game has the text
                printed.push_back({line, owners.Describe(place), unknown.word});
    std::stable_sort(printed.begin(), printed.end(),
                     [](const PrintedWord& a, const PrintedWord& b) { return a.line < b.line; });
    return printed;
}

/// The speller of a game as its notes want it. What keeps it from checking is told.
spelling::Speller MakeSpeller(CommandContext& context, const GameModel& game,
                              const SpellArguments& arguments) {
    const GameNotes notes = LoadNotes(arguments.file);
    const std::string language = !arguments.language.empty() ? arguments.language
                                 : !notes.language.empty()   ? notes.language
                                                             : spelling::LanguageOfDesktop();
    const std::vector<spelling::InstalledDictionary> installed =
        spelling::ListDictionaries(spelling::DictionaryFolders());
    const spelling::InstalledDictionary* found = spelling::FindDictionary(installed, language);
    if (found == nullptr) {
        context.Err() << spelling::TellNoDictionary(installed, language) << '\n';
        return {};
    }
    auto words = std::make_shared<spelling::GameWords>(game);
    for (const std::string& word : notes.words)
        words->Add(FromUtf8(word));
    return {std::make_shared<const spelling::Dictionary>(found->affPath), words};
}

void PrintWords(CommandContext& context, const SpellArguments& arguments,
                const spelling::CheckedTexts& checked, const std::vector<PrintedWord>& words) {
    if (!arguments.asJson) {
        for (const PrintedWord& word : words)
            context.Out() << arguments.file << ':' << word.line << ": " << ToTerminal(word.place) << ": "
                          << ToTerminal(word.word) << '\n';
        return;
    }
    Json list = Json::array();
    std::set<std::string_view> different;
    for (const PrintedWord& word : words)
        different.insert(word.word);
    for (const PrintedWord& word : words)
        list.push_back({{"line", word.line}, {"place", JsonText(word.place)}, {"word", JsonText(word.word)}});
    context.Out() << ToBytes({{"file", arguments.file},
                              {"words", checked.words},
                              {"unknown", different.size()},
                              {"places", std::move(list)}});
}

int Spell(CommandContext& context, const SpellArguments& arguments) {
    GameModel game;
    SourceLines lines;
    if (!context.Load(game, arguments.file, lines))
        return FileProblem;
    CommandCatalogue catalogue;
    context.Load(catalogue);
    spelling::Speller speller;
    try {
        speller = MakeSpeller(context, game, arguments);
    } catch (const KelError& error) { // the notes or the dictionary are damaged
        context.Err() << "zem spell: " << ToTerminal(error.what()) << '\n';
        return FileProblem;
    }
    const spelling::CheckedTexts checked = CheckTexts(game, CommandLookup(catalogue), speller);
    PrintWords(context, arguments, checked, ByLineOfFile(game, lines, checked));
    return Success;
}

} // namespace

void AddSpellCommand(CLI::App& app, CommandContext& context, int& status) {
    CLI::App* spell = app.add_subcommand(
        "spell", "tell the words of a game that no dictionary knows, one a line as FILE:LINE: place: word");
    auto arguments = std::make_shared<SpellArguments>();
    spell->add_option("FILE", arguments->file, "the game to check")->required();
    spell->add_option("--language", arguments->language,
                      "the language of its texts, such as en_GB; else that in its notes, else the desktop's");
    spell->add_flag(
        "--json", arguments->asJson,
        "print JSON: file, number of words and of unknown ones, and places with line, place and word");
    spell->final_callback([&context, &status, arguments] { status = Spell(context, *arguments); });
}

} // namespace zem
