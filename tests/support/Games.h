#pragma once

#include "model/GameModel.h"
#include "reader/LoadGame.h"
#include "support/RecordingHost.h"
#include "support/TempFolder.h"
#include "writer/SaveGame.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace zem::test {

/// Text with LF line ends as the bytes of a game file.
inline std::string CrLf(std::string_view text) {
    std::string bytes;
    for (const char c : text) {
        if (c == '\n')
            bytes += '\r';
        bytes += c;
    }
    return bytes;
}

/// A game whose error table is filled the way the catalogue fills it.
inline GameModel GameWithErrorNames() {
    GameModel game;
    game.ErrorMessages.Append({"An unknown command", "badcommand", ""});
    game.ErrorMessages.Append({"A way that leads nowhere", "badgo", ""});
    return game;
}

/// A game of about 200 kB, so that it goes to the file in several pieces.
inline GameModel LargeGame() {
    GameModel game;
    NewGame(game);
    game.StartRoom = "Room 1";
    for (int k = 1; k <= 200; ++k) {
        Room& room = game.Rooms.Append();
        room.Name = "Room " + std::to_string(k);
        room.Look = std::string(1000, 'x');
    }
    return game;
}

/// What a KelError says that ends the work; nothing when it ends well.
template <class Work>
std::string ProblemOf(const Work& work) {
    try {
        work();
    } catch (const KelError& error) {
        return error.what();
    }
    return "";
}

/// Loads the bytes as a game file, through a real file. Throws what LoadGame throws.
inline GameModel LoadBytes(std::string_view bytes, GameModel game = GameWithErrorNames()) {
    const TempFolder folder;
    RecordingHost host;
    if (!LoadGame(game, folder.Write("game.kel", bytes), host))
        throw KelError("refused: " + (host.messages.empty() ? "" : host.messages.front()));
    return game;
}

/// The files of a folder by their extension; a folder without any is a fault.
inline std::vector<std::filesystem::path> FilesIn(const char* folder, const char* extension = ".kel") {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.path().extension() == extension)
            files.push_back(entry.path());
    EXPECT_FALSE(files.empty()) << folder;
    return files;
}

class StringOutput : public Output {
public:
    std::string bytes;
    void Write(std::string_view piece) override { bytes.append(piece); }
    void Close() override {}
};

inline std::string SaveToBytes(const GameModel& game) {
    StringOutput output;
    WriteGame(game, "game.kel", output);
    return output.bytes;
}

/// The game as it comes back from a save. The empty list of items, which a file cannot tell from one item
/// without a name, is made the former in both.
inline GameModel WithoutNamelessItem(GameModel game) {
    if (game.Items.Count() == 1 && game.Items[1].Name.empty())
        game.Items.Clear();
    return game;
}

} // namespace zem::test
