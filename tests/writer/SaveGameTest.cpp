#include "writer/SaveGame.h"

#include "support/Games.h"
#include "support/Unprivileged.h"
#include "writer/ReplaceFile.h"

#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/resource.h>

namespace zem {
namespace {

namespace fs = std::filesystem;
using test::ReadBytes;
using test::RecordingHost;
using test::TempFolder;

/// A game of about 200 kB, so that it goes to the file in several pieces.
GameModel LargeGame() {
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

std::string SaveProblem(GameModel& game, const std::string& path) {
    RecordingHost host;
    try {
        ReplaceFile(path, [&] { SaveGame(game, path, host); });
    } catch (const KelError& error) {
        return error.what();
    }
    return "";
}

TEST(SaveGame, NamesThePathInTheHeaderAndTakesItAsFileName) {
    const TempFolder folder;
    const std::string path = folder.Path("caf\xC3\xA9 1.kel");
    GameModel game = LargeGame();
    game.Modified = true;
    RecordingHost host;
    SaveGame(game, path, host);
    const std::string first = ReadBytes(path);
    EXPECT_EQ(first.substr(0, first.find('\r')), "' " + path + " created by ZEM 1.0");
    EXPECT_EQ(game.FileName, path);
    EXPECT_FALSE(game.Modified);
    EXPECT_TRUE(host.notices.empty());
    EXPECT_EQ(host.stages, std::vector<std::string>{"Saving file..."});
    SaveGame(game, path, host);
    EXPECT_EQ(ReadBytes(path), first) << "saving twice gives identical bytes";
}

TEST(SaveGame, WarnsAboutAMissingStartRoomAndSavesAllTheSame) {
    const TempFolder folder;
    GameModel game = LargeGame();
    game.StartRoom.clear();
    RecordingHost host;
    SaveGame(game, folder.Path("game.kel"), host);
    EXPECT_EQ(host.notices,
              std::vector<std::string>{
                  "No start place: This game has no start place defined. The game will not work properly in "
                  "Veldt unless a start room is selected from the Game Properties window.\r\n\r\n"
                  "Click OK to continue saving this game."});
    EXPECT_NE(ReadBytes(folder.Path("game.kel")).find("\r\nstart <>\r\n"), std::string::npos);
}

// An action exit and the other values that only a form can make, laid out as they stand.
TEST(SaveGame, WritesWhatNoReadGameHolds) {
    GameModel game;
    Room& room = game.Rooms.Append();
    room.Name = "Hall";
    room.North = ScriptPair{"[action]", "goto <Attic>"};
    room.South = ScriptPair{"Attic", "msg <left over>"};
    room.Out = ScriptPair{"", "msg <lost>"};
    Thing& lamp = room.Objects.Append();
    lamp.Name = "lamp";
    lamp.Speak = "x"; // for characters only
    lamp.Gender = "y";
    lamp.Suffix = "of brass";
    game.ErrorMessages.Append({"description", "badgo", ""});
    game.ErrorMessages.Append({"description", "badtake", "No."});
    const std::string bytes = test::SaveToBytes(game);
    EXPECT_EQ(bytes.substr(bytes.find("define room")),
              test::CrLf("define room <Hall>\nnorth goto <Attic>\nsouth <Attic>\ndefine object <lamp>\n"
                         "suffix <of brass>\n\nend define\n\nend define\n\n\n"));
    EXPECT_NE(bytes.find("\r\nerror <badtake;No.>\r\nend define"), std::string::npos);
    EXPECT_EQ(bytes.find("badgo"), std::string::npos);
}

TEST(ReplaceFile, KeepsTheVersionThatIsReplaced) {
    const TempFolder folder;
    const std::string path = folder.Path("game.kel");
    GameModel game = LargeGame();
    EXPECT_EQ(SaveProblem(game, path), "");
    EXPECT_FALSE(fs::exists(path + "~")) << "there was nothing to keep";
    const std::string before = ReadBytes(path);
    game.Rooms.Remove(1);
    EXPECT_EQ(SaveProblem(game, path), "");
    EXPECT_EQ(ReadBytes(path + "~"), before);
    EXPECT_NE(ReadBytes(path), before);

    fs::create_symlink(path, folder.Path("link.kel"));
    EXPECT_EQ(SaveProblem(game, folder.Path("link.kel")), "");
    EXPECT_TRUE(fs::is_symlink(folder.Path("link.kel")));
}

TEST(ReplaceFile, LeavesTheOldFileWhenTheNewOneCannotBeWritten) {
    const TempFolder folder;
    const std::string path = folder.Write("game.kel", "the old version");
    GameModel game = LargeGame();
    game.FileName = "somewhere.kel";
    game.Modified = true;
    const auto expectUntouched = [&] {
        EXPECT_EQ(ReadBytes(path), "the old version");
        EXPECT_TRUE(game.Modified);
        EXPECT_EQ(game.FileName, "somewhere.kel");
    };

    // The disk is full after the first piece.
    rlimit unlimited{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &unlimited), 0);
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit small = unlimited;
    small.rlim_cur = 100'000;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const std::string full = SaveProblem(game, path);
    const std::string fullNew = SaveProblem(game, folder.Path("new.kel"));
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &unlimited), 0);
    EXPECT_EQ(full, "the file cannot be written: the file has reached the largest size that is allowed. The "
                    "file on disk is as it was before");
    EXPECT_EQ(fullNew, "the file cannot be written: the file has reached the largest size that is allowed");
    EXPECT_FALSE(fs::exists(folder.Path("new.kel")));
    expectUntouched();

    EXPECT_EQ(SaveProblem(game, folder.Path("gone/game.kel")),
              "the file cannot be written: its folder or the file itself is not there");
    EXPECT_EQ(
        SaveProblem(game, folder.Folder().string()),
        "the file cannot be written: this is a folder, not a file. The file on disk is as it was before");
    expectUntouched();

    fs::permissions(folder.Folder(), fs::perms::all);
    fs::permissions(path, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    {
        const test::Unprivileged unprivileged;
        EXPECT_EQ(SaveProblem(game, path),
                  "the file cannot be written: you have no permission. The file on disk is as it was before");
    }
    expectUntouched();

    fs::remove(path + "~");
    fs::permissions(path, fs::perms::all);
    fs::permissions(folder.Folder(), fs::perms::owner_read | fs::perms::owner_exec | fs::perms::group_read |
                                         fs::perms::group_exec | fs::perms::others_read |
                                         fs::perms::others_exec);
    {
        const test::Unprivileged unprivileged;
        EXPECT_EQ(SaveProblem(game, path),
                  "the previous version could not be kept, so nothing was written: you have no permission");
    }
    expectUntouched();
}

} // namespace
} // namespace zem
