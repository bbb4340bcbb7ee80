#include "writer/SaveGame.h"

#include "support/FullDisk.h"
#include "support/Games.h"
#include "support/SetField.h"
#include "support/Unprivileged.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <vector>

namespace zem::test {
namespace {

namespace fs = std::filesystem;

std::string SaveProblem(GameModel& game, const std::string& path) {
    RecordingHost host;
    return ProblemOf([&] { SaveGame(game, path, host); });
}

/// All 0 for a file that is not there.
struct stat Status(const std::string& path) {
    struct stat status {};
    lstat(path.c_str(), &status);
    return status;
}

TEST(SaveGame, NamesThePathOnTheOneLineOfTheHeaderAndTakesItAsFileName) {
    const TempFolder folder;
    for (const char* name : {"caf\xC3\xA9 1.kel", "it's \"caf\xE9\" $(x);.kel", "q\ndefine.kel"}) {
        const std::string path = folder.Path(name);
        GameModel game = LargeGame();
        game.Modified = true;
        RecordingHost host;
        SaveGame(game, path, host);
        std::string header = "' " + path + " created by ZEM 1.0\r\n";
        std::replace(header.begin(), header.end() - 2, '\n', ' ');
        const std::string first = ReadBytes(path);
        EXPECT_EQ(first.substr(0, header.size()), header);
        EXPECT_EQ(game.FileName, path);
        EXPECT_FALSE(game.Modified);
        EXPECT_TRUE(host.notices.empty());
        EXPECT_EQ(host.stages, std::vector<std::string>{"Saving file..."});
        SaveGame(game, path, host);
        EXPECT_EQ(ReadBytes(path), first) << "saving twice gives identical bytes";
    }
}

TEST(SaveGame, WarnsAboutAMissingStartRoomAndSavesAllTheSame) {
    const TempFolder folder;
    GameModel game;
    RecordingHost host;
    SaveGame(game, folder.Path("game.kel"), host);
    EXPECT_EQ(host.notices,
              std::vector<std::string>{
                  "No start place: This game has no start place defined. The game will not work properly in "
                  "Veldt unless a start room is selected from the Game Properties window.\r\n\r\n"
                  "Click OK to continue saving this game."});
    EXPECT_NE(ReadBytes(folder.Path("game.kel")).find("\r\nstart <>\r\n"), std::string::npos);
}

// Action exits and some other values come from forms only. They are written as they stand, but an object gets
// no line that only characters have.
TEST(SaveGame, WritesWhatNoReadGameHolds) {
    GameModel game = GameWithErrorNames();
    SetFields(game, "room 1, name = Hall && room 1, exit out, action = msg <lost> && "
                    "room 1, exit north, name = [action] && room 1, exit north, action = goto <Attic> && "
                    "room 1, exit south, name = Attic && room 1, exit south, action = msg <left over> && "
                    "room 1, object 1, name = lamp && room 1, object 1, suffix = of brass && "
                    "room 1, object 1, speak = x && room 1, object 1, gender = y && "
                    "error message 2, text = No.");
    const std::string bytes = SaveToBytes(game);
    EXPECT_EQ(bytes.substr(bytes.find("collectables")),
              CrLf("collectables <>\nerror <badgo;No.>\nend define\n\ndefine synonyms\nend define\n"
                   "define room <Hall>\nnorth goto <Attic>\nsouth <Attic>\ndefine object <lamp>\n"
                   "suffix <of brass>\n\nend define\n\nend define\n\n\n"));
}

TEST(ReplaceFile, KeepsLinksOtherNamesAndAttributesOfTheFile) {
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
    const char* const attribute = "user.shelf"; // Not every file system keeps extended attributes.
    fs::remove(folder.Path("other name.kel"));
    const bool isKept = setxattr(target.c_str(), attribute, "3", 1, 0) == 0;
    EXPECT_EQ(SaveProblem(game, link), "");
    EXPECT_EQ(getxattr(target.c_str(), attribute, nullptr, 0) == 1, isKept);
    EXPECT_EQ(SaveProblem(game, folder.Path("circle.kel")),
              "the file is a link that leads in a circle, so nothing was written");
    for (const char* name : {"link.kel", "dangling.kel", "circle.kel"})
        EXPECT_TRUE(fs::is_symlink(folder.Path(name))) << name;
}

TEST(ReplaceFile, LeavesOtherFilesAndTheRightsToThisOneAlone) {
    const TempFolder folder;
    folder.Write("precious", "precious");
    GameModel game = LargeGame();
    for (const std::string name : {"game.kel", "others.kel", "new.kel"}) {
        fs::create_symlink("precious", folder.Path(name + "~new"));
        const std::string path = folder.Path(name);
        if (name != "new.kel") {
            folder.Write(name, "the old version");
            fs::permissions(path, fs::perms(0600));
        }
        if (name == "others.kel") {
            // Only root may give a file away.
            EXPECT_EQ(chown(path.c_str(), 65534, 65534) == 0, geteuid() == 0);
        }
        const struct stat before = Status(path);
        EXPECT_EQ(SaveProblem(game, path), "");
        EXPECT_EQ(ReadBytes(folder.Path("precious")), "precious");
        EXPECT_TRUE(S_ISREG(Status(path).st_mode));
        if (before.st_ino == 0)
            continue;
        EXPECT_EQ(Status(path).st_uid, before.st_uid);
        for (const std::string& file : {path, path + "~"})
            EXPECT_EQ(Status(file).st_mode, before.st_mode) << file;
        EXPECT_EQ(ReadBytes(path + "~"), "the old version");
    }
}

TEST(ReplaceFile, SaysWhyTheFileCannotBeWrittenAndLeavesTheOldOne) {
    const TempFolder folder;
    const std::string path = folder.Write("game.kel", "the old version");
    fs::create_directory(folder.Path("game.kel~"));
    GameModel game = LargeGame();
    const std::string notKept =
        "the previous version could not be kept under its name and a \"~\", so nothing was written: ";
    const std::string notWritten = "the file cannot be written: ";
    const std::string asBefore = ". The file on disk is as it was before";
    EXPECT_EQ(SaveProblem(game, path), notKept + "this is a folder, not a file");
    fs::remove(path + "~");
    fs::create_directory(path + "~new");
    EXPECT_NE(SaveProblem(game, path), "");
    EXPECT_TRUE(fs::remove(path + "~new")) << "a folder is none of a save's leftovers";
    EXPECT_EQ(SaveProblem(game, folder.Path("gone/game.kel")),
              notWritten + "its folder or the file itself is not there");
    EXPECT_EQ(SaveProblem(game, folder.Folder()), notWritten + "this is a folder, not a file" + asBefore);
    ASSERT_EQ(mkfifo(folder.Path("pipe.kel").c_str(), 0600), 0); // to open one waits for a reader
    for (const std::string& special : {folder.Path("pipe.kel"), std::string("/dev/null")})
        EXPECT_EQ(SaveProblem(game, special), "this is not an ordinary file, so nothing was written");
    {
        const FullDisk fullDisk;
        const std::string tooLarge = notWritten + "the file has reached the largest size that is allowed";
        EXPECT_EQ(SaveProblem(game, path), tooLarge + asBefore);
        EXPECT_EQ(SaveProblem(game, folder.Path("new.kel")), tooLarge);
    }
    const auto saveWith = [&](int folderMode, int fileMode) {
        fs::remove(path + "~");
        fs::permissions(path, fs::perms(fileMode));
        fs::permissions(folder.Folder(), fs::perms(folderMode));
        const Unprivileged unprivileged;
        return SaveProblem(game, path);
    };
    EXPECT_EQ(saveWith(0777, 0444), notWritten + "you have no permission" + asBefore);
    EXPECT_EQ(saveWith(0555, 0777), notKept + "you have no permission");
    EXPECT_EQ(ReadBytes(path), "the old version");
    EXPECT_FALSE(fs::exists(folder.Path("new.kel")));
}

} // namespace
} // namespace zem::test
