#include "reader/LoadGame.h"

#include "base/LineText.h"
#include "base/TextFile.h"
#include "reader/ReadWholeGame.h"

#include <filesystem>
#include <string_view>

namespace zem {

namespace {

void ShowError(Host& host, const char* text) {
    host.ShowMessage(text, "Error", MessageButtons::Ok);
}

/// Checks that the path can be a game file, and tells the author when it cannot.
bool IsGamePath(const std::string& path, Host& host) {
    if (path.size() < 4 || !EqualIgnoringCase(std::string_view(path).substr(path.size() - 4), ".kel")) {
        // Compiled games are never read here, although the message names them.
        ShowError(host, "Unrecognized file extension!\r\n\r\n"
                        "Veldt can only read game files with .KEL or .NYX extensions.");
        return false;
    }
    std::error_code error;
    if (std::filesystem::exists(path, error) || error)
        return true;
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    const bool folderExists = folder.empty() || std::filesystem::is_directory(folder, error);
    ShowError(host, folderExists ? "Error - file not found" : "Error - path not found");
    return false;
}

} // namespace

bool LoadGame(GameModel& game, const std::string& path, Host& host) {
    host.ShowStage("Parsing file...");
    NewGame(game); // also when there is no file to read
    if (!IsGamePath(path, host))
        return false;
    if (!ReadWholeGame(game, ReadFile(path), path, host))
        return false;
    game.FileName = path;
    return true;
}

} // namespace zem
