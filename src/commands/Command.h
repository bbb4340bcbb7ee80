#pragma once

#include "base/KelError.h"
#include "kel/CommandCatalogue.h"
#include "model/GameModel.h"
#include "reader/SourceLines.h"

#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

namespace zem::problems {
struct CheckInput;
}
namespace CLI {
class App;
}

namespace zem::routing {
struct RoutedMap;
}

/// What all commands of the command line share: loading games, and telling what is wrong with them.
namespace zem {

/// What a command ends with. Commands that compare or judge say in their own words what FileProblem means.
enum ExitStatus { Success = 0, FileProblem = 1, WrongUsage = 2 };

/// What commands end with that compare: their answer, or that there was none.
enum ComparisonStatus { AsExpected = 0, Different = 1, Trouble = 2 };

/// What only those can do who paint: they bring it along. Without it there are no pictures. Both give the
/// bytes of a file, and throw KelError.
struct Painters {
    /// Makes a picture of a map in the format that the name of the file ends in.
    std::function<std::string(const routing::RoutedMap& map, const std::string& file)> map;
    /// Makes a document of pages of a book in HTML, which begins with the map.
    std::function<std::string(const std::string& html, const routing::RoutedMap& map)> book;
};

/// Text of the core for a terminal: UTF-8 on one line.
std::string ToTerminal(std::string_view text);

/// What a file without a byte is. Git gives one as the base of two games that began as none.
enum class EmptyFile { IsRefused, IsEmptyGame };

/// Where a command reads its data and writes what it has to say.
class CommandContext {
public:
    /// @param programFolder  where the data files are, without a trailing separator
    CommandContext(std::string programFolder, std::ostream& out, std::ostream& err, Painters painters = {});

    std::ostream& Out() { return out_; }
    std::ostream& Err() { return err_; }
    const std::string& ProgramFolder() const { return programFolder_; }
    const Painters& Painting() const { return painters_; }

    /// Loads a game with the error messages of the catalogue. What is wrong with it is told on standard
    /// error; false when it cannot be read. What may surprise its author is told as a warning.
    bool Load(GameModel& game, const std::string& file);

    /// The same, with the lines of the file in which its places stand.
    bool Load(GameModel& game, const std::string& file, SourceLines& lines);

    /// Loads a game with what is known of it besides: its file, the libraries and the names of the files
    /// beside it. What keeps it from being read is told on standard error, and false is given.
    bool LoadForCheck(problems::CheckInput& input, const std::string& file);

    /// Loads a version of a game to compare it, whatever its file is called. One that is no game or holds
    /// conflicts that git left is refused, like one that cannot be read: that is told on standard error.
    bool LoadVersion(GameModel& game, const std::string& file, EmptyFile empty = EmptyFile::IsRefused);

    /// Loads the catalogue of script commands. One that cannot be read is told, and what could be read of it
    /// is used: scripts are shown as they stand where no entry tells better.
    void Load(CommandCatalogue& commands);

    /// Saves the game as the window does. What fails is told; the status to end with. What the file would not
    /// give back is told, too; a game whose file could not be opened again is not saved.
    int Save(GameModel& game, const std::string& file);

    /// Writes bytes to a file, or to standard output if it is "-"; the file is replaced safely. What fails is
    /// told; the status to end with.
    int Write(std::string_view bytes, const std::string& target);

    /// Tells on standard error what is wrong with a file: "FILE:LINE: what". Gives FileProblem.
    int Report(const std::string& file, const KelError& error);

private:
    void NameErrors(GameModel& game);
    void Warn(const std::string& file);

    std::string programFolder_;
    std::ostream& out_;
    std::ostream& err_;
    Painters painters_;
};

/// Each adds one command to the command line, which runs it when it is named and sets the status to end with.
void AddFormatCommand(CLI::App& app, CommandContext& context, int& status);
void AddPrintCommand(CLI::App& app, CommandContext& context, int& status);
void AddCheckCommand(CLI::App& app, CommandContext& context, int& status);
void AddFindCommand(CLI::App& app, CommandContext& context, int& status);
void AddRenameCommand(CLI::App& app, CommandContext& context, int& status);
void AddMapCommand(CLI::App& app, CommandContext& context, int& status);
void AddTestCommand(CLI::App& app, CommandContext& context, int& status);
void AddWalkCommand(CLI::App& app, CommandContext& context, int& status);
void AddDiffCommand(CLI::App& app, CommandContext& context, int& status);
void AddMergeCommand(CLI::App& app, CommandContext& context, int& status);
void AddGitSetupCommand(CLI::App& app, CommandContext& context, int& status);
void AddExportCommand(CLI::App& app, CommandContext& context, int& status);
void AddPublishCommand(CLI::App& app, CommandContext& context, int& status);
void AddStatsCommand(CLI::App& app, CommandContext& context, int& status);
void AddSpellCommand(CLI::App& app, CommandContext& context, int& status);

} // namespace zem
