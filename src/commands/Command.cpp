#include "commands/Command.h"

#include "base/Host.h"
#include "base/TextEncoding.h"
#include "base/TextFile.h"
#include "commands/GameFolder.h"
#include "files/ReplaceFile.h"
#include "kel/ErrorCatalogue.h"
#include "problems/CheckedGame.h"
#include "readback/ReadBack.h"
#include "reader/InspectFile.h"
#include "reader/LoadGame.h"
#include "reader/ReadVersion.h"
#include "writer/OutputFile.h"
#include "writer/SaveGame.h"

#include <filesystem>
#include <optional>
#include <ostream>

namespace zem {

namespace {

/// Answers the core on standard error.
class ConsoleHost : public SilentHost {
public:
    ConsoleHost(std::ostream& err, std::string file) : err_(err), file_(std::move(file)) {}

    MessageResult ShowMessage(const std::string& text, const std::string& title, MessageButtons) override {
        ShowNotice(text, title);
        return MessageResult::Ok;
    }
    void ShowNotice(const std::string& text, const std::string& /*title*/) override {
        err_ << file_ << ": " << ToTerminal(text) << '\n';
    }

private:
    std::ostream& err_;
    std::string file_; // that messages are about
};

/// Throws KelError when the bytes of the game's file could not be opened again.
void ProveReadable(const GameModel& game, const std::string& bytes) {
    GameModel back;
    back.ErrorMessages = game.ErrorMessages;
    try {
        ReadGame(back, bytes);
    } catch (const KelError& error) {
        throw KelError(std::string("the game could not be opened again, so nothing is written: ") +
                       error.what());
    }
}

} // namespace

std::string ToTerminal(std::string_view text) {
    std::string line = ToUtf8(text);
    for (std::size_t at = 0; (at = line.find("\r\n", at)) != std::string::npos;)
        line.replace(at, 2, " ");
    return line;
}

CommandContext::CommandContext(std::string programFolder, std::ostream& out, std::ostream& err,
                               Painters painters)
    : programFolder_(std::move(programFolder)),
      out_(out),
      err_(err),
      painters_(std::move(painters)) {}

void CommandContext::NameErrors(GameModel& game) {
    if (game.ErrorMessages.Count() != 0)
        return;
    ConsoleHost host(err_, "zemerr.dat");
    LoadErrorCatalogue(game.ErrorMessages, programFolder_ + "/zemerr.dat", host);
}

bool CommandContext::Load(GameModel& game, const std::string& file) {
    NameErrors(game);
    ConsoleHost host(err_, file);
    try {
        if (!LoadGame(game, file, host))
            return false;
        Warn(file);
        return true;
    } catch (const KelError& error) {
        Report(file, error);
        if (error.Line() != 0)
            Warn(file); // It may tell how the line came to be wrong.
    } catch (const std::exception& error) {
        Report(file, KelError(error.what())); // most likely a file larger than the memory
    }
    return false;
}

bool CommandContext::Load(GameModel& game, const std::string& file, SourceLines& lines) {
    if (!Load(game, file))
        return false;
    try {
        GameModel again;
        again.ErrorMessages = game.ErrorMessages;
        ReadGame(again, ReadFile(file), &lines);
        return true;
    } catch (const KelError& error) { // somebody has changed the file since
        Report(file, error);
        return false;
    }
}

bool CommandContext::LoadForCheck(problems::CheckInput& input, const std::string& file) {
    NameErrors(input.game);
    try {
        const auto source = std::make_shared<problems::SourceFile>();
        source->bytes = ReadFile(file);
        ReadGame(input.game, source->bytes, &source->lines);
        input.game.FileName = file;
        source->inspection = InspectFile(source->bytes);
        input.source = source;
        input.files = std::make_shared<FolderFiles>(std::filesystem::path(file).parent_path().string());
        input.libraries = std::make_shared<problems::Libraries>(ReadLibraries(input.game, *input.files));
        return true;
    } catch (const KelError& error) {
        Report(file, error);
    } catch (const std::exception& error) {
        Report(file, KelError(error.what())); // most likely a file larger than the memory
    }
    return false;
}

bool CommandContext::LoadVersion(GameModel& game, const std::string& file, EmptyFile empty) {
    NameErrors(game);
    try {
        std::string bytes = ReadFile(file);
        if (bytes.empty() && empty == EmptyFile::IsRefused)
            throw KelError("no line begins a \"define\" block, so this is no Kel game");
        ReadVersion(game, std::move(bytes));
        return true;
    } catch (const KelError& error) {
        Report(file, error);
    } catch (const std::exception& error) {
        Report(file, KelError(error.what())); // most likely a file larger than the memory
    }
    return false;
}

void CommandContext::Load(CommandCatalogue& commands) {
    try {
        LoadCommandCatalogue(commands, programFolder_ + "/zem.dat");
    } catch (const KelError& error) {
        Report("zem.dat", error);
    }
}

int CommandContext::Save(GameModel& game, const std::string& file) {
    ConsoleHost host(err_, file);
    try {
        const std::string bytes = GameFile(game);
        const std::vector<LostPlace> lost = ReadBack(game, bytes);
        for (const LostPlace& place : lost)
            err_ << file << ": warning: this does not come back from a save: " << ToTerminal(place.text)
                 << '\n';
        if (!lost.empty())
            ProveReadable(game, bytes);
        SaveGame(game, file, host);
    } catch (const KelError& error) {
        return Report(file, error);
    }
    return Success;
}

int CommandContext::Write(std::string_view bytes, const std::string& target) {
    if (target == "-") {
        out_ << bytes << std::flush;
        if (out_)
            return Success;
        err_ << "zem: standard output could not be written\n";
        return FileProblem;
    }
    const auto write = [bytes](const std::string& path) {
        OutputFile file(path);
        file.Write(bytes);
        file.Close();
    };
    try {
        std::error_code error;
        if (std::filesystem::is_other(target, error))
            write(target); // a device or a pipe cannot be replaced, and holds nothing that could be lost
        else
            ReplaceFile(target, write);
    } catch (const KelError& error) {
        return Report(target, error);
    }
    return Success;
}

int CommandContext::Report(const std::string& file, const KelError& error) {
    err_ << file << ':';
    if (error.Line() != 0)
        err_ << error.Line() << ':';
    err_ << ' ' << ToTerminal(error.ProblemWithText()) << '\n';
    return FileProblem;
}

void CommandContext::Warn(const std::string& file) {
    for (const auto& [line, text, kind] : InspectFile(ReadFile(file)).remarks)
        err_ << file << ':' << (line == 0 ? "" : std::to_string(line) + ':')
             << " warning: " << ToTerminal(text) << '\n';
}

} // namespace zem
