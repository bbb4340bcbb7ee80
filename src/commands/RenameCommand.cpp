// The command that renames something with all that refers to it.
#include "base/TextEncoding.h"
#include "commands/Command.h"
#include "commands/FollowRename.h"
#include "game/Notes.h"
#include "game/Rename.h"
#include "game/WhereUsed.h"
#include "kel/CommandLookup.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <map>
#include <memory>
#include <ostream>

namespace zem {

namespace {

const std::map<std::string, NameKind>& KindsByWord() {
    static const std::map<std::string, NameKind> Kinds = [] {
        std::map<std::string, NameKind> kinds;
        for (const NameKind kind :
             {NameKind::Room, NameKind::Object, NameKind::Character, NameKind::Item, NameKind::Procedure,
              NameKind::TextSection, NameKind::Menu, NameKind::Collectable, NameKind::Variable,
              NameKind::Flag, NameKind::Timer})
            kinds.emplace(Describe(kind), kind);
        return kinds;
    }();
    return Kinds;
}

struct RenameArguments {
    std::string file;
    std::string kind;
    std::string oldName; // both in UTF-8
    std::string newName;
    std::string out;
    bool merge = false;
};

std::string Count(std::size_t count, const std::string& one, const std::string& many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

void Tell(CommandContext& context, const RenamePlan& plan, int changed) {
    const NameChange& name = plan.names.front();
    context.Out() << Describe(name.kind) << ' ' << ToTerminal(name.from) << " is called "
                  << ToTerminal(name.to)
                  << " now: " << Count(static_cast<std::size_t>(changed), "place", "places") << " changed\n";
    const auto mentions = static_cast<std::size_t>(
        std::count_if(plan.changes.begin(), plan.changes.end(),
                      [](const RenameChange& change) { return change.reason == ChangeReason::Mention; }));
    if (mentions != 0)
        context.Out() << Count(mentions, "mention", "mentions") << (plan.hasMoreMentions ? " and more" : "")
                      << " in texts left as they were\n";
    if (!plan.mayMean.empty())
        context.Out() << Count(plan.mayMean.size(), "name", "names")
                      << " made of variables may mean it, and were left as they were\n";
    if (plan.twin)
        context.Out() << "there is " << (*plan.twin == NameKind::Item ? "an item " : "an object ")
                      << ToTerminal(name.from) << ", too, which keeps its name\n";
    for (const std::string& note : plan.answer.notes)
        context.Out() << ToTerminal(note) << '\n';
}

/// What lies beside the game and calls things by name follows. What cannot is told: the game itself is saved.
void Follow(CommandContext& context, const std::string& file, const RenamePlan& plan,
            const CommandLookup& commands) {
    try {
        FollowInNotes(file, plan.names, commands);
    } catch (const KelError& error) {
        context.Report(NotesPath(file), error);
    }
    try {
        for (const std::string& run : FollowInRuns(file, plan.names))
            context.Err() << RunsPath(file) << ": run \"" << run
                          << "\" is told differently in more than the name, and stays as it was there\n";
    } catch (const KelError& error) {
        context.Report(RunsPath(file), error);
    }
}

int RenameAll(CommandContext& context, const RenameArguments& arguments) {
    const auto refuse = [&](const std::string& reason) {
        context.Err() << arguments.file << ": " << reason << '\n';
        return FileProblem;
    };
    const ConvertedText newName = Utf8ToWindows1252(arguments.newName);
    if (!newName.lacking.empty())
        return refuse("A game cannot hold the character " + newName.lacking.front().utf8 + ".");
    CommandCatalogue catalogue;
    context.Load(catalogue);
    const CommandLookup commands(catalogue);
    GameModel game;
    if (!context.Load(game, arguments.file))
        return FileProblem;

    const RenamePlan plan = PlanRename(game, commands,
                                       {.kind = KindsByWord().at(arguments.kind),
                                        .oldName = FromUtf8(arguments.oldName),
                                        .newName = newName.bytes,
                                        .merge = arguments.merge});
    if (plan.answer.verdict == NameVerdict::Merges && !arguments.merge)
        return refuse(ToTerminal(plan.answer.message) + " Say --merge if they are to be one.");
    if (!plan.isAllowed)
        return refuse(ToTerminal(plan.answer.message));
    const int changed = CarryOut(plan, game);
    if (context.Save(game, arguments.out) != Success)
        return FileProblem;
    Follow(context, arguments.out, plan, commands);
    Tell(context, plan, changed);
    return Success;
}

} // namespace

void AddRenameCommand(CLI::App& app, CommandContext& context, int& status) {
    CLI::App* rename = app.add_subcommand(
        "rename", "rename something of the game FILE with all that refers to it, and save the game as OUT");
    auto arguments = std::make_shared<RenameArguments>();
    rename->add_option("FILE", arguments->file, "the game to load")->required();
    rename
        ->add_option(
            "KIND", arguments->kind,
            "what is renamed: room, object, character, item, procedure, text, menu, collectable, variable, "
            "flag or timer")
        ->required()
        ->check(CLI::IsMember(KindsByWord()));
    rename->add_option("OLD", arguments->oldName, "its name; all of that name and kind are renamed")
        ->required();
    rename->add_option("NEW", arguments->newName, "its new name")->required();
    rename
        ->add_option("OUT,-o,--out", arguments->out,
                     "the file to write, FILE itself if you like; left as it is when anything fails")
        ->required();
    rename->add_flag("--merge", arguments->merge, "make two flags, variables or timers one if NEW is in use");
    rename->final_callback([&context, &status, arguments] { status = RenameAll(context, *arguments); });
}

} // namespace zem
