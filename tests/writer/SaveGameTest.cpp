#include "writer/SaveGame.h"

#include "support/Cases.h"
#include "support/FullDisk.h"
#include "support/Games.h"
#include "support/Unprivileged.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace zem::test {
namespace {

namespace fs = std::filesystem;

std::string SaveProblem(GameModel& game, const std::string& path) {
    RecordingHost host;
    return ProblemOf([&] { ReplaceGame(game, path, host); });
}

TEST(SaveGame, NamesThePathOnTheOneLineOfTheHeaderAndTakesItAsFileName) {
    const TempFolder folder;
    for (const auto& [name, inHeader] :
         Cases<const char*, const char*>{{"caf\xC3\xA9 1.kel", "caf\xC3\xA9 1.kel"},
                                         {"it's \"caf\xE9\" $(x);.kel", "it's \"caf\xE9\" $(x);.kel"},
                                         {"q\ndefine.kel", "q define.kel"}}) {
        const std::string path = folder.Path(name);
        GameModel game = LargeGame();
        game.Modified = true;
        RecordingHost host;
        SaveGame(game, path, host);
        const std::string first = ReadBytes(path);
        EXPECT_EQ(first.substr(0, first.find('\r')), "' " + folder.Path(inHeader) + " created by ZEM 1.0");
        EXPECT_EQ(game.FileName, path);
        EXPECT_FALSE(game.Modified);
        EXPECT_TRUE(host.notices.empty());
        EXPECT_EQ(host.stages, std::vector<std::string>{"Saving file..."});
        SaveGame(game, path, host);
        EXPECT_EQ(ReadBytes(path), first) << "saving twice gives identical bytes";
        GameModel again;
        EXPECT_TRUE(LoadGame(again, path, host));
    }
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
    const std::string bytes = SaveToBytes(game);
    EXPECT_EQ(bytes.substr(bytes.find("define room")),
              CrLf("define room <Hall>\nnorth goto <Attic>\nsouth <Attic>\ndefine object <lamp>\n"
                   "suffix <of brass>\n\nend define\n\nend define\n\n\n"));
    EXPECT_NE(bytes.find("\r\nerror <badtake;No.>\r\nend define"), std::string::npos);
    EXPECT_EQ(bytes.find("badgo"), std::string::npos);
}

TEST(ReplaceFile, KeepsLinksAndOtherNamesOfTheFile) {
    const TempFolder folder;
    fs::create_directory(folder.Path("games"));
    const std::string target = folder.Write("games/game.kel", "the old version");
    const std::string link = folder.Path("link.kel");
    fs::create_symlink("games/game.kel", link);
    fs::create_hard_link(target, folder.Path("other name.kel"));
    fs::create_symlink("games/new.kel", folder.Path("dangling.kel"));
    fs::create_symlink("circle.kel", folder.Path("circle.kel"));
    GameModel game = LargeGame();
    {
        const FullDisk full;
        EXPECT_NE(SaveProblem(game, link), "");
        EXPECT_NE(SaveProblem(game, folder.Path("dangling.kel")), "");
    }
    EXPECT_EQ(ReadBytes(folder.Path("other name.kel")), "the old version");
    EXPECT_FALSE(fs::exists(folder.Path("games/new.kel")));
    EXPECT_EQ(SaveProblem(game, link), "");
    EXPECT_GT(ReadBytes(folder.Path("other name.kel")).size(), 200'000u);
    EXPECT_EQ(ReadBytes(target + "~"), "the old version");
    EXPECT_FALSE(fs::exists(link + "~"));
    EXPECT_EQ(SaveProblem(game, folder.Path("circle.kel")),
              "the file is a link that leads in a circle, so nothing was written");
    for (const char* name : {"link.kel", "dangling.kel", "circle.kel"})
        EXPECT_TRUE(fs::is_symlink(folder.Path(name))) << name;
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

    {
        const FullDisk fullDisk;
        const std::string tooLarge =
            "the file cannot be written: the file has reached the largest size that is allowed";
        EXPECT_EQ(SaveProblem(game, path), tooLarge + ". The file on disk is as it was before");
        EXPECT_EQ(SaveProblem(game, folder.Path("new.kel")), tooLarge);
    }
    EXPECT_FALSE(fs::exists(folder.Path("new.kel")));
    EXPECT_EQ(SaveProblem(game, folder.Path("gone/game.kel")),
              "the file cannot be written: its folder or the file itself is not there");
    EXPECT_EQ(
        SaveProblem(game, folder.Folder().string()),
        "the file cannot be written: this is a folder, not a file. The file on disk is as it was before");
    expectUntouched();

    const auto saveWith = [&](int folderMode, int fileMode) {
        fs::remove(path + "~");
        fs::permissions(path, fs::perms(fileMode));
        fs::permissions(folder.Folder(), fs::perms(folderMode));
        const Unprivileged unprivileged;
        return SaveProblem(game, path);
    };
    EXPECT_EQ(saveWith(0777, 0444),
              "the file cannot be written: you have no permission. The file on disk is as it was before");
    expectUntouched();
    EXPECT_EQ(saveWith(0555, 0777), "the previous version could not be kept under its name and a \"~\", so "
                                    "nothing was written: you have no permission");
    expectUntouched();
}

} // namespace
} // namespace zem::test
