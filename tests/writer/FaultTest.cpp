// What becomes of an author's file when a save fails, whatever fails and whenever.
#include "support/FaultyDisk.h"
#include "support/FullDisk.h"
#include "support/Games.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <ostream>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace zem::test {
namespace {

namespace fs = std::filesystem;

/// What lies in the folder before a save.
struct Scene {
    const char* Name;
    bool HasOld;
    bool HasEarlierBackup;
    bool IsLink;
};

void PrintTo(const Scene& scene, std::ostream* out) {
    *out << scene.Name;
}

constexpr Scene Replaced{"file", true, false, false};
constexpr Scene ReplacedAgain{"file_with_backup", true, true, false};
constexpr Scene ReplacedThroughLink{"link", true, true, true};
constexpr Scene New{"new_file", false, false, false};

/// A save in a folder of its own.
class Save {
public:
    explicit Save(const Scene& scene, const fs::path& folder) : scene_(scene), root_(fs::canonical(folder)) {
        for (const auto& entry : fs::directory_iterator(root_))
            fs::remove_all(entry);
        if (scene.HasOld)
            Put("game.kel", old_);
        if (scene.HasEarlierBackup)
            Put("game.kel~", "an earlier version");
        if (scene.IsLink)
            fs::create_symlink("game.kel", In("link.kel"));
        path_ = In(scene.IsLink ? "link.kel" : "game.kel");
        game_ = LargeGame();
        StringOutput whole;
        WriteGame(game_, path_, whole);
        new_ = whole.bytes;
        game_.FileName = "before.kel";
        game_.Modified = true;
    }

    void Run() {
        RecordingHost host;
        problem_.clear();
        try {
            ReplaceGame(game_, path_, host);
        } catch (const KelError& error) {
            problem_ = error.what();
        } catch (const std::exception& error) {
            ADD_FAILURE() << "no KelError: " << error.what();
        }
    }

    /// Whether all that the author has is whole, and is where the message says.
    void ExpectNothingLost(bool isLasting) const {
        EXPECT_EQ(game_.Modified, !problem_.empty());
        EXPECT_EQ(game_.FileName, problem_.empty() ? path_ : "before.kel");
        if (problem_.empty())
            ExpectSaved();
        else if (problem_.ends_with("The previous version is in the file beside it whose name ends in \"~\""))
            EXPECT_TRUE(isLasting && HasBytes("game.kel~", old_)) << problem_;
        else if (problem_.ends_with("A part of it may be left on the disk"))
            EXPECT_TRUE(isLasting && !scene_.HasOld) << problem_;
        else
            ExpectAsBefore();
        EXPECT_TRUE(!scene_.HasEarlierBackup || problem_.empty() ||
                    HasBytes("game.kel~", "an earlier version") || HasBytes("game.kel", old_) ||
                    HasBytes("game.kel~", old_));
        EXPECT_TRUE(isLasting || !Exists("game.kel~new"));
    }

    void ExpectSaved() const {
        EXPECT_EQ(problem_, "");
        EXPECT_TRUE(HasBytes("game.kel", new_));
        EXPECT_FALSE(Exists("game.kel~new"));
        EXPECT_EQ(Exists("link.kel"), scene_.IsLink);
        EXPECT_TRUE(scene_.HasOld ? HasBytes("game.kel~", old_) : !Exists("game.kel~"));
    }

    void ExpectAsBefore() const {
        const bool saysSo = problem_.ends_with("The file on disk is as it was before") ||
                            problem_.find(", so nothing was written: ") != std::string::npos;
        EXPECT_TRUE(saysSo || !scene_.HasOld) << problem_;
        EXPECT_TRUE(scene_.HasOld ? HasBytes("game.kel", old_) : !Exists("game.kel")) << problem_;
        EXPECT_FALSE(problem_.empty());
    }

    bool HasBytes(const char* name, const std::string& bytes) const { return ReadBytes(In(name)) == bytes; }
    bool Exists(const char* name) const { return fs::exists(fs::symlink_status(In(name))); }
    bool HasOld() const { return scene_.HasOld; }
    const std::string& Problem() const { return problem_; }
    const std::string& Root() const { return root_; }
    std::size_t Size() const { return new_.size(); }

private:
    std::string In(const char* name) const { return root_ + '/' + name; }

    void Put(const char* name, const std::string& bytes) const {
        std::ofstream(In(name), std::ios::binary) << bytes;
    }

    Scene scene_;
    std::string root_;
    std::string path_;
    std::string old_ = std::string(90'000, 'o'); // smaller than what FullDisk allows, unlike the new version
    std::string new_;
    std::string problem_;
    GameModel game_;
};

class Disk : public testing::TestWithParam<Scene> {};

INSTANTIATE_TEST_SUITE_P(Faults, Disk, testing::Values(Replaced, ReplacedAgain, ReplacedThroughLink, New));

struct Trouble {
    Fault Kind;
    int Error;
    rlim_t MostBytes = RLIM_INFINITY; // in a file
};

/// Saves with a fault at each call in turn; `afterwards` looks at what has become of the file. Returns the
/// number of faults.
int SaveWithFaults(const Scene& scene, const Trouble& trouble, const std::function<void(Save&)>& afterwards) {
    int faults = 0;
    for (int failing = 1;; ++failing) {
        const TempFolder folder; // a new one: a file that was left in pieces is remembered
        SCOPED_TRACE(std::string(scene.Name) + ", call " + std::to_string(failing) + ", kind " +
                     std::to_string(static_cast<int>(trouble.Kind)) + ", error " +
                     std::to_string(trouble.Error));
        Save save(scene, folder.Folder());
        std::vector<std::string> calls;
        {
            const FullDisk full(trouble.MostBytes);
            const FaultyDisk disk(save.Root(), failing, trouble.Kind, trouble.Error);
            save.Run();
            calls = disk.Calls();
            faults += disk.HasFailed() ? 1 : 0;
        }
        if (calls.size() < static_cast<std::size_t>(failing)) {
            EXPECT_EQ(save.Problem().empty(), trouble.MostBytes == RLIM_INFINITY) << save.Problem();
            save.ExpectNothingLost(false);
            return faults;
        }
        SCOPED_TRACE(calls[static_cast<std::size_t>(failing) - 1] + ": " + save.Problem());
        afterwards(save);
        if (testing::Test::HasFailure())
            return faults;
    }
}

TEST_P(Disk, LosesNothingWhereverItFails) {
    int faults = 0;
    for (const int error : {ENOSPC, EIO, EACCES}) {
        for (const Fault fault : {Fault::Once, Fault::Short, Fault::Dead})
            faults += SaveWithFaults(GetParam(), {fault, error},
                                     [&](Save& save) { save.ExpectNothingLost(fault == Fault::Dead); });
    }
    const auto expect = [](Save& save) { save.ExpectNothingLost(true); };
    faults += SaveWithFaults(GetParam(), {Fault::ReadOnly, EROFS}, expect);
    // The save fails in any case, and then something on the way back, for which there are two ways.
    faults += SaveWithFaults(GetParam(), {Fault::Once, EIO, 100'000},
                             [](Save& save) { save.ExpectNothingLost(!save.HasOld()); });
    RecordProperty("faults", faults);
}

// Without the protection around it, the writer alone must notice whatever fails.
TEST(SaveGame, NoticesEveryFault) {
    const TempFolder folder;
    const std::string root = fs::canonical(folder.Folder());
    std::vector<std::string> calls;
    for (int failing = 0; static_cast<std::size_t>(failing) <= calls.size(); ++failing) {
        GameModel game = LargeGame();
        RecordingHost host;
        const FaultyDisk disk(root, failing, Fault::Once, EIO);
        const auto save = [&] { SaveGame(game, root + "/game.kel", host); };
        if (failing == 0) {
            save();
            calls = disk.Calls();
        } else
            EXPECT_THROW(save(), KelError) << calls[static_cast<std::size_t>(failing) - 1];
    }
    EXPECT_EQ(calls.front() + ", " + calls.back(), "fopen game.kel, fclose game.kel");
}

// The disk is back, but full, and then it has room: the version that was whole must outlive both saves.
TEST_P(Disk, LosesNothingInTheSavesAfterAFault) {
    const auto saveAgain = [](Save& save) {
        if (save.Problem().empty())
            return;
        const bool isPartLeft = save.Exists("game.kel") && !save.HasOld();
        {
            const FullDisk full;
            save.Run();
        }
        if (!isPartLeft)
            save.ExpectAsBefore();
        save.Run();
        if (!isPartLeft)
            save.ExpectSaved();
        EXPECT_EQ(save.Problem(), "");
    };
    for (const Fault fault : {Fault::ReadOnly, Fault::Dead})
        SaveWithFaults(GetParam(), {fault, EIO}, saveAgain);
}

/// The calls that decide what a power cut finds, each once in a row.
std::vector<std::string> Landmarks(const std::vector<std::string>& calls) {
    std::vector<std::string> landmarks;
    std::copy_if(calls.begin(), calls.end(), std::back_inserter(landmarks), [](const std::string& call) {
        const std::string function = call.substr(0, call.find(' '));
        return function == "fsync" || function == "rename" || function == "fopen" || function == "fwrite";
    });
    landmarks.erase(std::unique(landmarks.begin(), landmarks.end()), landmarks.end());
    return landmarks;
}

TEST(PowerCut, FindsOneVersionOnTheDiskAtAnyTime) {
    const TempFolder folder;
    const auto landmarks = [&](const Scene& scene) {
        Save save(scene, folder.Folder());
        const FaultyDisk disk(save.Root(), 0, Fault::Once, 0);
        save.Run();
        return Landmarks(disk.Calls());
    };
    EXPECT_EQ(landmarks(ReplacedThroughLink),
              (std::vector<std::string>{"fopen game.kel", "fopen game.kel~new", "fwrite game.kel~new",
                                        "fsync game.kel~new", "rename game.kel~new", "fsync .",
                                        "fopen link.kel", "fwrite game.kel", "fsync game.kel"}));
    EXPECT_EQ(landmarks(New),
              (std::vector<std::string>{"fopen game.kel", "fwrite game.kel", "fsync game.kel", "fsync ."}));

    // The version that is put back gets there, too.
    Save save(Replaced, folder.Folder());
    const FullDisk full;
    const FaultyDisk disk(save.Root(), 0, Fault::Once, 0);
    save.Run();
    EXPECT_EQ(Landmarks(disk.Calls()).back(), "fsync game.kel");
}

// Some file systems know no fsync, of folders or at all. A disk that says so is not faulty.
TEST(PowerCut, IsNoReasonToRefuseADiskThatCannotBeFlushed) {
    const TempFolder folder;
    Save first(Replaced, folder.Folder());
    std::vector<std::string> calls;
    {
        const FaultyDisk disk(first.Root(), 0, Fault::Once, 0);
        first.Run();
        calls = disk.Calls();
    }
    for (std::size_t call = 0; call < calls.size(); ++call) {
        if (!calls[call].starts_with("fsync"))
            continue;
        SCOPED_TRACE(calls[call]);
        for (const int error : {EINVAL, EACCES, EIO}) {
            Save save(Replaced, folder.Folder());
            {
                const FaultyDisk disk(save.Root(), static_cast<int>(call) + 1, Fault::Once, error);
                save.Run();
            }
            const bool isFine = error == EINVAL || (error == EACCES && calls[call] == "fsync .");
            EXPECT_EQ(save.Problem().empty(), isFine) << save.Problem();
        }
    }
}

constexpr int NotPermitted = 77;

/// Lets this process mount file systems that no other sees, which who is not root may as root of a world of
/// one user.
bool AllowMounts() {
    const bool isRoot = geteuid() == 0;
    const std::string user = "0 " + std::to_string(geteuid()) + " 1";
    const std::string group = "0 " + std::to_string(getegid()) + " 1";
    if (unshare(isRoot ? CLONE_NEWNS : CLONE_NEWNS | CLONE_NEWUSER) != 0)
        return false;
    if (!isRoot) {
        std::ofstream("/proc/self/setgroups") << "deny";
        std::ofstream("/proc/self/uid_map") << user;
        std::ofstream("/proc/self/gid_map") << group;
    }
    return mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

/// Runs `work` in a process of its own that may mount file systems. Returns its exit status.
int RunWithMounts(const std::function<void()>& work) {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        if (!AllowMounts())
            _exit(NotPermitted);
        work();
        std::fflush(nullptr);
        _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// Saves on a disk of a size in kB.
void SaveOnSmallDisk(const fs::path& folder, int size) {
    SCOPED_TRACE("a disk of " + std::to_string(size) + " kB");
    const std::string options = "mode=0777,size=" + std::to_string(size) + "k";
    if (mount("tmpfs", folder.c_str(), "tmpfs", 0, options.c_str()) != 0)
        _exit(NotPermitted);
    Save save(Replaced, folder);
    save.Run();
    save.ExpectNothingLost(false);
    const std::size_t needed = 90'000 + save.Size();
    const auto room = static_cast<std::size_t>(size) * 1024;
    EXPECT_TRUE(room >= needed || !save.Problem().empty());
    EXPECT_TRUE(room < needed + 16'384 || save.Problem().empty()) << save.Problem(); // pages round up
    EXPECT_TRUE(save.Problem().empty() || save.Problem().find("the disk is full") != std::string::npos)
        << save.Problem();
    umount(folder.c_str());
}

TEST(FullDisk, LosesNothingOnARealOne) {
    const TempFolder folder;
    const int status = RunWithMounts([&] {
        for (int size = 92; size <= 360; size += 4)
            SaveOnSmallDisk(folder.Folder(), size);
    });
    if (status == NotPermitted)
        GTEST_SKIP() << "no file system can be mounted here";
    EXPECT_EQ(status, 0);
}

} // namespace
} // namespace zem::test
