#include "writer/SaveGame.h"

#include "support/FullDisk.h"
#include "support/Games.h"
#include "support/Unprivileged.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace zem {
namespace {

namespace fs = std::filesystem;
using test::FullDisk;
using test::LargeGame;
using test::ReadBytes;
using test::RecordingHost;
using test::TempFolder;

std::string SaveProblem(GameModel& game, const std::string& path) {
    RecordingHost host;
    try {
        ReplaceGame(game, path, host);
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

TEST(SaveGame, KeepsTheHeaderOnOneLineWhateverThePath) {
    const TempFolder folder;
    const std::string path = folder.Path("q\ndefine.kel");
    GameModel game = LargeGame();
    RecordingHost host;
    SaveGame(game, path, host);
    GameModel again;
    EXPECT_TRUE(LoadGame(again, path, host));
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
}

TEST(ReplaceFile, SavesThroughLinksAndPutsBackWhatTheyLeadTo) {
    const TempFolder folder;
    fs::create_directory(folder.Path("games"));
    const std::string target = folder.Write("games/game.kel", "the old version");
    const std::string link = folder.Path("link.kel");
    fs::create_symlink("games/game.kel", link);
    fs::create_hard_link(target, folder.Path("other name.kel"));
    GameModel game = LargeGame();
    {
        const FullDisk full;
        EXPECT_NE(SaveProblem(game, link), "");
    }
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(ReadBytes(target), "the old version");
    EXPECT_EQ(ReadBytes(folder.Path("other name.kel")), "the old version");

    EXPECT_EQ(SaveProblem(game, link), "");
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_GT(ReadBytes(target).size(), 200'000u);
    EXPECT_EQ(ReadBytes(target + "~"), "the old version");
    EXPECT_FALSE(fs::exists(link + "~"));

    // A link to a file that is not there yet, and one that leads to itself.
    fs::create_symlink("games/new.kel", folder.Path("dangling.kel"));
    {
        const FullDisk full;
        EXPECT_NE(SaveProblem(game, folder.Path("dangling.kel")), "");
    }
    EXPECT_TRUE(fs::is_symlink(folder.Path("dangling.kel")));
    EXPECT_FALSE(fs::exists(folder.Path("games/new.kel")));
    fs::create_symlink("circle.kel", folder.Path("circle.kel"));
    EXPECT_EQ(SaveProblem(game, folder.Path("circle.kel")),
              "the file is a link that leads in a circle, so nothing was written");
    EXPECT_TRUE(fs::is_symlink(folder.Path("circle.kel")));
}

TEST(ReplaceFile, KeepsTheOldVersionUnderNoOtherFilesName) {
    const TempFolder folder;
    const std::string path = folder.Write("game.kel", "the old version");
    folder.Write("precious", "precious");
    fs::create_symlink("precious", path + "~new");
    GameModel game = LargeGame();
    EXPECT_EQ(SaveProblem(game, path), "");
    EXPECT_EQ(ReadBytes(folder.Path("precious")), "precious");
    EXPECT_FALSE(fs::is_symlink(path + "~"));
    EXPECT_EQ(ReadBytes(path + "~"), "the old version");

    fs::remove(path + "~");
    fs::create_directory(path + "~");
    EXPECT_EQ(SaveProblem(game, path),
              "the previous version could not be kept under its name and a \"~\", so "
              "nothing was written: this is a folder, not a file");
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

    std::string full;
    std::string fullNew;
    {
        const FullDisk fullDisk;
        full = SaveProblem(game, path);
        fullNew = SaveProblem(game, folder.Path("new.kel"));
    }
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
        EXPECT_EQ(SaveProblem(game, path), "the previous version could not be kept under its name and a "
                                           "\"~\", so nothing was written: you have no "
                                           "permission");
    }
    expectUntouched();
}

} // namespace
} // namespace zem
