#include "app/CommandLine.h"

#include "base/TextFile.h"
#include "game/PrintGame.h"
#include "kel/ErrorCatalogue.h"
#include "map/Layout.h"
#include "model/GameModel.h"
#include "qt/QtText.h"
#include "reader/InspectFile.h"
#include "reader/LoadGame.h"
#include "writer/OutputFile.h"
#include "writer/SaveGame.h"

#include <CLI/CLI.hpp>
#include <ostream>

namespace zem {

namespace {

enum ExitStatus { Success = 0, FileProblem = 1, WrongUsage = 2 };

/// Text of the core for a terminal.
std::string ToTerminal(std::string_view text) {
    return ToQt(text).replace(QLatin1String("\r\n"), QLatin1String(" ")).toStdString();
}

/// Answers the core on standard error.
class ConsoleHost : public SilentHost {
public:
    explicit ConsoleHost(std::ostream& err) : err_(err) {}

    MessageResult ShowMessage(const std::string& text, const std::string& title, MessageButtons) override {
        ShowNotice(text, title);
        return MessageResult::Ok;
    }
    void ShowNotice(const std::string& text, const std::string& /*title*/) override {
        err_ << file_ << ": " << ToTerminal(text) << '\n';
    }

    /// The file that messages are about.
    void SetFile(const std::string& file) { file_ = file; }

private:
    std::ostream& err_;
    std::string file_;
};

int Report(std::ostream& err, const std::string& file, const KelError& error) {
    err << file << ':';
    if (error.Line() != 0)
        err << error.Line() << ':';
    err << ' ' << ToTerminal(error.ProblemWithText()) << '\n';
    return FileProblem;
}

class FileCommands {
public:
    FileCommands(const std::string& programFolder, std::ostream& out, std::ostream& err)
        : programFolder_(programFolder),
          out_(out),
          err_(err),
          host_(err) {
        host_.SetFile("zemerr.dat");
        LoadErrorCatalogue(game_.ErrorMessages, programFolder + "/zemerr.dat", host_);
    }

    int Format(const std::string& in, const std::string& out) {
        if (!Load(in))
            return FileProblem;
        host_.SetFile(out);
        try {
            SaveGame(game_, out, host_);
        } catch (const KelError& error) {
            return Report(err_, out, error);
        }
        return Success;
    }

    int Print(const std::string& file) {
        if (!Load(file))
            return FileProblem;
        CommandCatalogue commands;
        try {
            LoadCommandCatalogue(commands, programFolder_ + "/zem.dat");
        } catch (const KelError& error) {
            Report(err_, "zem.dat", error); // scripts are shown as they stand where no entry tells better
        }
        out_ << ToQt(PrintGame(game_, CommandLookup(commands))).toStdString() << std::flush;
        if (out_)
            return Success;
        err_ << "zem: the text could not be written\n";
        return FileProblem;
    }

    /// Writes where each room stands on the map: its name, x and y in cells, y growing to the south, with
    /// tabs between them. The places that the author chose count, those that the editor remembers do not.
    int Map(const std::string& file, const std::string& positions) {
        if (!Load(file))
            return FileProblem;
        const map::MapGraph graph = map::ReadMapGraph(game_);
        const std::vector<map::Cell> cells = map::LayOut(graph);
        std::string lines;
        for (int room = 0; room < graph.RoomCount(); ++room)
            lines += ToQt(graph.names[room]).toStdString() + '\t' + std::to_string(cells[room].x) + '\t' +
                     std::to_string(cells[room].y) + '\n';
        return WriteLines(lines, positions);
    }

private:
    /// @param target  a file, or "-" for standard output
    int WriteLines(const std::string& lines, const std::string& target) {
        if (target == "-") {
            out_ << lines << std::flush;
            if (out_)
                return Success;
            err_ << "zem: the places could not be written\n";
            return FileProblem;
        }
        try {
            OutputFile file(target);
            file.Write(lines);
            file.Close();
        } catch (const KelError& error) {
            return Report(err_, target, error);
        }
        return Success;
    }

    bool Load(const std::string& file) {
        host_.SetFile(file);
        try {
            if (!LoadGame(game_, file, host_))
                return false;
            Warn(file);
            return true;
        } catch (const KelError& error) {
            Report(err_, file, error);
            if (error.Line() != 0)
                Warn(file); // It may tell how the line came to be wrong.
        } catch (const std::exception& error) {
            Report(err_, file, KelError(error.what())); // most likely a file larger than the memory
        }
        return false;
    }

    void Warn(const std::string& file) {
        for (const auto& [line, text] : InspectFile(ReadFile(file)).remarks)
            err_ << file << ':' << (line == 0 ? "" : std::to_string(line) + ':')
                 << " warning: " << ToTerminal(text) << '\n';
    }

    std::string programFolder_;
    std::ostream& out_;
    std::ostream& err_;
    ConsoleHost host_;
    GameModel game_;
};

} // namespace

CommandLineResult RunCommandLine(const std::vector<std::string>& arguments, const std::string& programFolder,
                                 std::ostream& out, std::ostream& err) {
    CLI::App app("The editor for text-adventure games in the Kel script language.", "zem");
    app.set_version_flag("--version", NameAndVersion);
    app.require_subcommand(0, 1);
    std::string file;
    std::string in;
    std::string target;
    std::string printed;
    const CLI::Option* fileOption = app.add_option("FILE", file, "the game to open in the editor");
    CLI::App* format = app.add_subcommand("format", "load the game IN and save it as OUT");
    format->add_option("IN", in, "the game to load")->required();
    format->add_option("OUT", target, "the file to write; left as it is when anything fails")->required();
    CLI::App* print =
        app.add_subcommand("print", "show a whole game as readable text, its scripts in plain English");
    print->add_option("FILE", printed, "the game to show")->required();
    std::string mapped;
    std::string positions;
    CLI::App* map = app.add_subcommand("map", "lay out the map of a game");
    map->add_option("FILE", mapped, "the game whose rooms are laid out")->required();
    map->add_option("--positions", positions,
                    "the file for the rooms' places, - for standard output: name, x and y (to the south) in "
                    "whole cells, with tabs between them")
        ->required();

    std::vector<std::string> reversed(arguments.rbegin(), arguments.rend()); // as the parser wants them
    try {
        app.parse(reversed);
        if (fileOption->count() > 0 && (*format || *print || *map))
            throw CLI::ExtrasError("a FILE to edit and a command do not go together", {file});
    } catch (const CLI::ParseError& error) {
        return {app.exit(error, out, err) == 0 ? Success : WrongUsage, std::nullopt};
    }
    if (*format)
        return {FileCommands(programFolder, out, err).Format(in, target), std::nullopt};
    if (*print)
        return {FileCommands(programFolder, out, err).Print(printed), std::nullopt};
    if (*map)
        return {FileCommands(programFolder, out, err).Map(mapped, positions), std::nullopt};
    return {Success, file};
}

} // namespace zem
