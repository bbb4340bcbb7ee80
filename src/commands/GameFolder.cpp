#include "commands/GameFolder.h"

#include "base/Host.h"
#include "base/TextEncoding.h"
#include "base/TextFile.h"
#include "play/FileNames.h"
#include "play/Libraries.h"
#include "reader/LoadGame.h"

#include <exception>
#include <filesystem>
#include <ostream>

namespace zem::play {

namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t LargestLibrary = 64 * 1024 * 1024;

/// Tells what the reader has to say.
class ConsoleHost : public SilentHost {
public:
    ConsoleHost(std::ostream& err, std::string file) : err_(err), file_(std::move(file)) {}

    MessageResult ShowMessage(const std::string& text, const std::string& title, MessageButtons) override {
        ShowNotice(text, title);
        return MessageResult::Ok;
    }
    void ShowNotice(const std::string& text, const std::string& /*title*/) override {
        err_ << file_ << ": ";
        for (const char c : ToUtf8(text))
            if (c != '\r')
                err_ << (c == '\n' ? ' ' : c);
        err_ << '\n';
    }

private:
    std::ostream& err_;
    std::string file_;
};

} // namespace

std::optional<std::string> ReadBesideGame(const std::string& folder, const std::string& name) {
    if (!IsPlainFileName(name))
        return std::nullopt;
    std::error_code error;
    const fs::path home = fs::canonical(folder.empty() ? "." : folder, error);
    const fs::path file = fs::canonical(home / ToUtf8(name), error);
    if (error || file.parent_path() != home || !fs::is_regular_file(file, error) ||
        fs::file_size(file, error) > LargestLibrary || error)
        return std::nullopt;
    try {
        return ReadFile(file.string());
    } catch (const KelError&) {
        return std::nullopt;
    }
}

std::optional<GameFiles> LoadGameFiles(const std::string& path, std::ostream& err) {
    ConsoleHost host(err, path);
    GameModel game;
    NameMessages(game);
    try {
        if (!LoadGame(game, path, host))
            return std::nullopt;
        const std::string folder = fs::path(path).parent_path().string();
        GameFiles files = WithLibraries(
            std::move(game), [&](const std::string& name) { return ReadBesideGame(folder, name); });
        for (const std::string& problem : files.problems)
            err << path << ": " << ToUtf8(problem) << '\n';
        return files;
    } catch (const KelError& error) {
        err << path << ':';
        if (error.Line() != 0)
            err << error.Line() << ':';
        err << ' ' << ToUtf8(error.ProblemWithText()) << '\n';
    } catch (const std::exception& error) { // most likely a file larger than the memory
        err << path << ": " << error.what() << '\n';
    }
    return std::nullopt;
}

} // namespace zem::play

namespace zem {

std::optional<std::string> FolderFiles::Read(const std::string& name) const {
    return play::ReadBesideGame(folder_, name);
}

std::vector<std::string> FolderFiles::Names() const {
    std::vector<std::string> names;
    std::error_code error;
    for (std::filesystem::directory_iterator at(folder_.empty() ? "." : folder_, error), end;
         !error && at != end; at.increment(error))
        if (at->is_regular_file(error))
            names.push_back(FromUtf8(at->path().filename().string()));
    return names;
}

} // namespace zem
