#include "commands/CommandLine.h"

#include "commands/Command.h"

#include <CLI/CLI.hpp>
#include <ostream>

namespace zem {

namespace {

/// In the order in which the help lists them.
constexpr auto Commands = {AddFormatCommand, AddPrintCommand,   AddCheckCommand,    AddFindCommand,
                           AddRenameCommand, AddMapCommand,     AddTestCommand,     AddWalkCommand,
                           AddDiffCommand,   AddMergeCommand,   AddGitSetupCommand, AddStatsCommand,
                           AddExportCommand, AddPublishCommand, AddSpellCommand};

} // namespace

CommandLineResult RunCommandLine(const std::vector<std::string>& arguments, const std::string& programFolder,
                                 std::ostream& out, std::ostream& err, Painters painters) {
    CLI::App app("The editor for text-adventure games in the Kel script language.", "zem");
    app.set_version_flag("--version", NameAndVersion);
    app.require_subcommand(0, 1);
    std::string file;
    const CLI::Option* fileOption = app.add_option("FILE", file, "the game to open in the editor");
    CommandContext context(programFolder, out, err, std::move(painters));
    int status = Success;
    for (const auto& add : Commands)
        add(app, context, status);
    app.parse_complete_callback([&] {
        if (fileOption->count() > 0 && !app.get_subcommands().empty())
            throw CLI::ExtrasError("a FILE to edit and a command do not go together", {file});
    });

    std::vector<std::string> reversed(arguments.rbegin(), arguments.rend()); // as the parser wants them
    try {
        app.parse(reversed);
    } catch (const CLI::ParseError& error) {
        return {app.exit(error, out, err) == 0 ? Success : WrongUsage, std::nullopt};
    }
    if (!app.get_subcommands().empty())
        return {status, std::nullopt};
    return {Success, file};
}

} // namespace zem
