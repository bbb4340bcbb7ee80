// The commands that compare and merge versions of a game. Their status is what git expects of its helpers.
#include "commands/Command.h"
#include "commands/ConflictFile.h"
#include "game/ScriptOwners.h"
#include "merge/LostNames.h"
#include "merge/MergeGames.h"
#include "readback/ReadBack.h"
#include "reader/LoadGame.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>
#include <ostream>

namespace zem {

namespace {

struct MergeArguments {
    std::string base;
    std::string ours;
    std::string theirs;
    std::string out;
    std::string path;      // that the game is known by; empty for out
    std::string conflicts; // the file for them; empty for the one beside out
};

/// Removes a list of conflicts that an earlier merge left: it would speak of another game.
bool RemoveOld(CommandContext& context, const std::string& file) {
    std::error_code error;
    std::filesystem::remove(file, error);
    if (error)
        context.Err() << file << ": the list of an earlier merge cannot be removed\n";
    return !error;
}

/// Writes the merged game. What a save keeps beside a game is of no use beside a temporary file, and git does
/// not clear it away.
bool WriteMerged(CommandContext& context, const std::string& bytes, const MergeArguments& arguments) {
    const std::string kept = arguments.out + "~";
    const bool isTemporary = arguments.path != arguments.out && !std::filesystem::exists(kept);
    if (context.Write(bytes, arguments.out) != Success)
        return false;
    std::error_code ignored;
    if (isTemporary)
        std::filesystem::remove(kept, ignored);
    return true;
}

/// The bytes of the merged game's file, proved to be readable; nothing when they are not, which is told.
std::string ReadableFile(CommandContext& context, const GameModel& game, const std::string& path) {
    std::string bytes = GameFile(game);
    try {
        GameModel back;
        back.ErrorMessages = game.ErrorMessages;
        ReadGame(back, bytes);
        return bytes;
    } catch (const KelError& error) {
        context.Report(path, KelError(std::string("the merged game could not be read again, so nothing is "
                                                  "written: ") +
                                      error.what()));
        return "";
    }
}

const char* WordFor(NameKind kind) {
    switch (kind) {
    case NameKind::Room:
        return "room";
    case NameKind::Object:
        return "object";
    case NameKind::Character:
        return "character";
    case NameKind::Thing:
        return "character or object";
    case NameKind::Item:
        return "item";
    case NameKind::Procedure:
        return "procedure";
    case NameKind::TextSection:
        return "text block";
    case NameKind::Menu:
        return "menu";
    case NameKind::Collectable:
        return "collectable";
    default:
        return "name";
    }
}

/// Tells of names that one side uses and the other side has deleted or renamed.
void TellLostNames(CommandContext& context, const GameModel& ours, const GameModel& theirs,
                   const GameModel& merged, const std::string& path) {
    CommandCatalogue catalogue;
    context.Load(catalogue);
    const ScriptOwners owners(merged);
    for (const merge::LostName& lost : merge::FindLostNames(ours, theirs, merged, CommandLookup(catalogue)))
        context.Err() << path << ": warning: " << ToTerminal(owners.Describe(lost.place)) << ": there is no "
                      << WordFor(lost.kind) << ' ' << ToTerminal(lost.name) << " any more\n";
}

int Merge(CommandContext& context, MergeArguments arguments) {
    if (arguments.path.empty())
        arguments.path = arguments.out;
    if (arguments.conflicts.empty())
        arguments.conflicts = arguments.out + ".conflicts";
    merge::MergeVersions versions;
    bool isRead = context.LoadVersion(versions.base, arguments.base, EmptyFile::IsEmptyGame);
    isRead = context.LoadVersion(versions.ours, arguments.ours) && isRead;
    isRead = context.LoadVersion(versions.theirs, arguments.theirs) && isRead; // all bad ones are named
    if (!isRead)
        return Trouble;

    merge::MergeResult result;
    try {
        result = merge::MergeGames(versions);
    } catch (const KelError& error) {
        context.Report(arguments.path, error);
        return Trouble;
    }
    TellLostNames(context, versions.ours, versions.theirs, result.game, arguments.path);
    result.game.FileName = arguments.path;
    const std::string bytes = ReadableFile(context, result.game, arguments.path);
    if (bytes.empty())
        return Trouble;

    // The list first: a merged game without the list of what it lacks would lose the other side's work.
    if (!RemoveOld(context, arguments.conflicts))
        return Trouble;
    if (!result.conflicts.empty() &&
        context.Write(ConflictFile(result, versions, arguments.path), arguments.conflicts) != Success)
        return Trouble;
    if (!WriteMerged(context, bytes, arguments)) {
        RemoveOld(context, arguments.conflicts);
        return Trouble;
    }
    for (const merge::Conflict& conflict : result.conflicts)
        context.Out() << arguments.path << ": conflict: " << ToTerminal(Sentence(conflict)) << '\n';
    const std::size_t count = result.conflicts.size();
    if (count == 0)
        return AsExpected;
    context.Out() << arguments.path << ": " << count << (count == 1 ? " conflict" : " conflicts")
                  << "; both versions are in " << arguments.conflicts << '\n';
    return Different;
}

constexpr const char* GitLines =
    R"(# Games are merged and shown by zem. Nothing was changed: add these lines yourself.

# 1. In the file .gitattributes of the repository, which all authors share:
*.kel merge=zem diff=zem -text

# 2. Once on each author's computer, in the repository (or with --global):
git config merge.zem.name "games merged by room and field"
git config merge.zem.driver "zem merge %O %A %B -o %A --path %P --conflicts %P.conflicts"
git config merge.zem.recursive binary
git config diff.zem.textconv "zem print"

# 3. In the file .gitignore: what is kept beside a game for its author alone
*.kel~
*.kel.conflicts

# 4. If you like: the first line of a saved game holds its whole path, which differs between authors. This puts
# the path inside the repository in its place; your own file keeps its line. Add "filter=zem" to the line of 1.
git config filter.zem.clean "f=%f; LC_ALL=C sed \"1s|^' .* created by ZEM|' \$f created by ZEM|\""
git config filter.zem.smudge cat

# Where two authors changed the same, git tells of a conflict. The game holds your version then and can be
# opened and played; the other one stands beside it in NAME.kel.conflicts. Settle each, then "git add" the game.
)";

} // namespace

void AddMergeCommand(CLI::App& app, CommandContext& context, int& status) {
    CLI::App* merge = app.add_subcommand(
        "merge", "make one game of two that began as BASE; status 0 for a clean merge, 1 for conflicts, "
                 "2 for trouble");
    auto arguments = std::make_shared<MergeArguments>();
    merge->add_option("BASE", arguments->base, "the game that both began as")->required();
    merge->add_option("OURS", arguments->ours, "the version that conflicts are settled by")->required();
    merge->add_option("THEIRS", arguments->theirs, "the other version")->required();
    merge->add_option("-o,--output", arguments->out, "the file to write, which may be OURS")->required();
    merge->add_option("--path", arguments->path, "what the game is called, where OUT is a temporary file");
    merge->add_option("--conflicts", arguments->conflicts,
                      "the file for conflicts; OUT.conflicts without it");
    merge->final_callback([&context, &status, arguments] { status = Merge(context, *arguments); });
}

void AddGitSetupCommand(CLI::App& app, CommandContext& context, int& status) {
    CLI::App* setup = app.add_subcommand(
        "git-setup", "print the lines that make git merge and show games by room and field");
    setup->final_callback([&context, &status] { status = context.Write(GitLines, "-"); });
}

} // namespace zem
