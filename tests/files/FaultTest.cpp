// What becomes of an author's file when a save fails, whatever fails and whenever.
#include "support/FaultyDisk.h"
#include "support/FullDisk.h"
#include "support/Games.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <unistd.h>
#include <vector>

namespace zem::test {
namespace {

namespace fs = std::filesystem;

/// Every call fails in turn. The sanitizers make that long, and there every fourth is enough: another one for
/// each error.
constexpr int Stride = ZEM_FAULT_STRIDE;

/// What lies in the folder before a save.
struct Scene {
    const char* Name;
    bool HasOld;
    bool HasEarlierBackup;
    bool IsLink;
    bool HasOtherName; ///< A hard link, for which the file is written in place.
};

constexpr Scene Replaced{"file", true, false, false, false};
constexpr Scene ReplacedThroughLink{"link", true, true, true, false};
constexpr Scene ReplacedInPlace{"file with two names", true, true, false, true};
constexpr Scene New{"new file", false, false, false, false};

/// A save in an empty folder.
class Save {
public:
    Save(const Scene& scene, const TempFolder& folder)
        : scene_(scene),
          root_(fs::canonical(folder.Folder())),
          path_(In(scene.IsLink ? "link.kel" : "game.kel")) {
        if (scene.HasOld)
            folder.Write("game.kel", old_);
        if (scene.HasEarlierBackup)
            folder.Write("game.kel~", "an earlier version");
        if (scene.IsLink)
            fs::create_symlink("game.kel", path_);
        if (scene.HasOtherName)
            fs::create_hard_link(path_, In("other.kel"));
        StringOutput whole;
        WriteGame(game_, path_, whole);
        new_ = whole.bytes;
        game_.FileName = "before.kel";
        game_.Modified = true;
    }

    void Run() {
        RecordingHost host;
        problem_ = ProblemOf([&] { SaveGame(game_, path_, host); });
    }

    /// Runs, and returns the calls that touched the disk; one of them, from 1, fails.
    std::vector<std::string> Calls(std::size_t failing = 0) {
        const FaultyDisk disk(root_, static_cast<int>(failing), Fault::Once, EIO);
        Run();
        return disk.Calls();
    }

    /// Whether all that the author has is whole, and is where the message says.
    void ExpectNothingLost(bool isLasting) const {
        EXPECT_EQ(game_.Modified, !problem_.empty());
        EXPECT_EQ(game_.FileName, problem_.empty() ? path_ : "before.kel");
        if (problem_.empty()) {
            ExpectSaved();
        } else if (problem_.ends_with(
                       "The previous version is in the file beside it whose name ends in \"~\"")) {
            EXPECT_TRUE(isLasting) << problem_;
            EXPECT_TRUE(HasBytes("game.kel~", old_)) << problem_;
        } else if (problem_.ends_with("A part of it may be left on the disk")) {
            EXPECT_TRUE(isLasting) << problem_;
            EXPECT_FALSE(scene_.HasOld) << problem_;
        } else {
            ExpectAsBefore();
        }
        if (!problem_.empty() && scene_.HasEarlierBackup && !HasBytes("game.kel~", "an earlier version")) {
            EXPECT_TRUE(HasBytes("game.kel", old_) || HasBytes("game.kel~", old_));
        }
        if (!isLasting) {
            EXPECT_FALSE(Exists("game.kel~new"));
        }
    }

    void ExpectSaved() const {
        EXPECT_EQ(problem_, "");
        EXPECT_TRUE(HasBytes("game.kel", new_));
        EXPECT_EQ(Exists("link.kel"), scene_.IsLink);
        if (scene_.HasOtherName) {
            EXPECT_TRUE(HasBytes("other.kel", new_));
        }
        if (scene_.HasOld) {
            EXPECT_TRUE(HasBytes("game.kel~", old_));
            EXPECT_FALSE(Exists("game.kel~new"));
        } else {
            EXPECT_FALSE(Exists("game.kel~"));
        }
    }

    void ExpectAsBefore() const {
        EXPECT_FALSE(problem_.empty());
        if (scene_.HasOld) {
            const bool saysSo = problem_.ends_with("The file on disk is as it was before") ||
                                problem_.find(", so nothing was written: ") != std::string::npos;
            EXPECT_TRUE(saysSo) << problem_;
            EXPECT_TRUE(HasBytes("game.kel", old_)) << problem_;
        } else {
            EXPECT_FALSE(Exists("game.kel")) << problem_;
        }
    }

    bool IsAsBefore() const { return scene_.HasOld ? HasBytes("game.kel", old_) : !Exists("game.kel"); }

    /// Whether a program that was killed now would leave a version behind.
    bool IsWhole() const {
        return HasBytes("game.kel", new_) ||
               (scene_.HasOld ? HasBytes("game.kel", old_) : !Exists("game.kel"));
    }

    bool HasBytes(const char* name, const std::string& bytes) const { return ReadBytes(In(name)) == bytes; }
    bool Exists(const char* name) const { return fs::exists(fs::symlink_status(In(name))); }
    bool HasOld() const { return scene_.HasOld; }
    bool HasOtherName() const { return scene_.HasOtherName; }
    const std::string& Problem() const { return problem_; }
    const std::string& Root() const { return root_; }
    std::size_t SizeOfBoth() const { return old_.size() + new_.size(); }

private:
    std::string In(const char* name) const { return root_ + '/' + name; }

    Scene scene_;
    std::string root_;
    std::string path_;
    std::string old_ = std::string(90'000, 'o'); // Fits on a FullDisk; the new version does not.
    std::string new_;
    std::string problem_;
    GameModel game_ = LargeGame();
};

/// Saves in each scene with a fault at each call in turn; `afterwards` looks at what has become of the file.
/// Returns the number of faults.
/// @param mostBytes  limit for the size of a file
int SaveWithFaults(Fault fault, int error, rlim_t mostBytes,
                   const std::function<void(Save&, const std::string& call)>& afterwards) {
    int faults = 0;
    for (const Scene& scene : {Replaced, ReplacedThroughLink, ReplacedInPlace, New}) {
        bool isReached = true;
        for (int failing = 1 + error % Stride; isReached && !testing::Test::HasFailure(); failing += Stride) {
            const TempFolder folder;
            Save save(scene, folder);
            std::string call = "nothing";
            {
                const FullDisk full(mostBytes);
                const FaultyDisk disk(save.Root(), failing, fault, error);
                save.Run();
                faults += disk.HasFailed() ? 1 : 0;
                isReached = disk.Calls().size() >= static_cast<std::size_t>(failing);
                if (isReached)
                    call = disk.Calls()[static_cast<std::size_t>(failing) - 1];
            }
            SCOPED_TRACE(std::string(scene.Name) + ": " + call + " fails, kind " +
                         std::to_string(static_cast<int>(fault)) + ", error " + std::to_string(error) + ": " +
                         save.Problem());
            if (isReached) {
                afterwards(save, call);
            } else {
                EXPECT_EQ(save.Problem().empty(), mostBytes == RLIM_INFINITY);
                save.ExpectNothingLost(false);
            }
        }
    }
    return faults;
}

TEST(FaultyDisk, LosesNothingWhereverItFails) {
    int faults = 0;
    for (const int error : {ENOSPC, EIO, EACCES})
        for (const Fault fault : {Fault::Once, Fault::Short, Fault::Dead})
            faults += SaveWithFaults(fault, error, RLIM_INFINITY, [&](Save& save, const std::string&) {
                save.ExpectNothingLost(fault == Fault::Dead);
                EXPECT_TRUE(save.IsWhole() || save.HasOtherName());
            });
    faults += SaveWithFaults(Fault::ReadOnly, EROFS, RLIM_INFINITY, [](Save& save, const std::string&) {
        save.ExpectNothingLost(true);
        if (save.Problem().ends_with("A part of it may be left on the disk")) {
            EXPECT_TRUE(save.Exists("game.kel")) << "nothing could be written";
        }
    });
    // The new version never fits, so that the fault hits one of the two ways of putting the old one back.
    faults += SaveWithFaults(Fault::Once, EIO, 100'000, [](Save& save, const std::string& call) {
        save.ExpectNothingLost(!save.HasOld() || call.starts_with("remove"));
    });
    EXPECT_GT(faults, 1000 / Stride);
    RecordProperty("faults", faults);
}

// The disk is back, but full, and then it has room: a version that is whole must outlive both saves. A file
// that could not be put back is whole again after the save that succeeds.
TEST(FaultyDisk, LosesNothingInTheSavesAfterAFault) {
    const auto saveAgain = [](Save& save, const std::string&) {
        if (save.Problem().empty())
            return;
        const bool isAsBefore = save.IsAsBefore();
        {
            const FullDisk full;
            save.Run();
        }
        if (isAsBefore)
            save.ExpectAsBefore();
        save.Run();
        if (isAsBefore)
            save.ExpectSaved();
        EXPECT_EQ(save.Problem(), "");
        EXPECT_TRUE(save.IsWhole());
    };
    for (const Fault fault : {Fault::ReadOnly, Fault::Dead})
        SaveWithFaults(fault, EIO, RLIM_INFINITY, saveAgain);
}

// Without the protection around it, the writer alone must notice whatever fails.
TEST(FaultyDisk, IsNoticedByTheWriterAlone) {
    const TempFolder folder;
    const std::string root = fs::canonical(folder.Folder());
    const GameModel game = LargeGame();
    const std::string path = root + "/game.kel";
    bool hasFailed = true;
    std::vector<std::string> calls;
    for (int failing = 1; hasFailed; ++failing) {
        const FaultyDisk disk(root, failing, Fault::Once, EIO);
        const std::string problem = ProblemOf([&] {
            OutputFile output(path);
            WriteGame(game, path, output);
            output.Close();
        });
        hasFailed = disk.HasFailed();
        EXPECT_EQ(problem.empty(), !hasFailed) << failing;
        calls = disk.Calls();
    }
    EXPECT_EQ(calls.front(), "fopen game.kel");
    EXPECT_EQ(calls.back(), "fclose game.kel");
}

/// The calls that decide what a power cut or a kill finds, each once in a row.
std::string Landmarks(const std::vector<std::string>& calls) {
    std::string landmarks;
    std::string last;
    for (const std::string& call : calls) {
        const std::string function = call.substr(0, call.find(' '));
        if (call == last ||
            (function != "fsync" && function != "rename" && function != "fopen" && function != "fwrite"))
            continue;
        landmarks += (landmarks.empty() ? "" : ", ") + call;
        last = call;
    }
    return landmarks;
}

TEST(PowerCut, FindsOneVersionOnTheDiskAtAnyTime) {
    const std::string backup = "fopen game.kel, fopen game.kel~new, fwrite game.kel~new, fsync game.kel~new, "
                               "rename game.kel~new, fsync ., fopen ";
    const std::string beside = "fopen game.kel~new, fwrite game.kel~new, fsync game.kel~new, ";
    const std::string inItsPlace = "rename game.kel~new, fsync game.kel, fsync .";
    const TempFolder folders[5];
    EXPECT_EQ(Landmarks(Save(ReplacedThroughLink, folders[0]).Calls()),
              backup + "game.kel, " + beside + inItsPlace);
    EXPECT_EQ(Landmarks(Save(New, folders[1]).Calls()), beside + inItsPlace);
    EXPECT_EQ(Landmarks(Save(ReplacedInPlace, folders[2]).Calls()),
              backup + "game.kel, fwrite game.kel, fsync game.kel");
    // A version that may not be on the disk does not take the place of one that is.
    const std::vector<std::string> calls = Save(New, folders[3]).Calls();
    const auto flush = std::find(calls.begin(), calls.end(), "fsync game.kel~new") - calls.begin();
    EXPECT_EQ(Landmarks(Save(New, folders[4]).Calls(static_cast<std::size_t>(flush) + 1)),
              beside + "fopen game.kel, fwrite game.kel, fsync game.kel, fsync .");
}

// Some file systems know no fsync, of folders or at all. A disk that says so is not faulty.
TEST(PowerCut, IsNoReasonToRefuseADiskThatCannotBeFlushed) {
    for (const int error : {EINVAL, EACCES, EIO})
        SaveWithFaults(Fault::Once, error, RLIM_INFINITY, [&](Save& save, const std::string& call) {
            const bool isFine = error == EINVAL || (error == EACCES && call == "fsync .");
            if (call.starts_with("fsync") && (isFine || save.HasOtherName())) {
                EXPECT_EQ(save.Problem().empty(), isFine);
            }
        });
}

/// Moves this process into a mount namespace of its own; without root's rights into a user namespace, too.
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

TEST(FullDisk, LosesNothingOnARealOne) {
    if (!AllowMounts())
        GTEST_SKIP() << "no file system can be mounted here";
    for (std::size_t size = 92 * 1024; size <= 360 * 1024; size += 4096) {
        SCOPED_TRACE("a disk of " + std::to_string(size) + " bytes");
        const TempFolder folder;
        const std::string options = "mode=0777,size=" + std::to_string(size);
        ASSERT_EQ(mount("tmpfs", folder.Folder().c_str(), "tmpfs", 0, options.c_str()), 0);
        Save save(Replaced, folder);
        save.Run();
        save.ExpectNothingLost(false);
        const bool isFull = save.Problem().find("the disk is full") != std::string::npos;
        EXPECT_TRUE(isFull || size >= save.SizeOfBoth()) << save.Problem();
        constexpr std::size_t Rounding = 16'384; // The disk gives out whole pages.
        EXPECT_TRUE(save.Problem().empty() || (isFull && size < save.SizeOfBoth() + Rounding))
            << save.Problem();
        umount(folder.Folder().c_str());
    }
}

} // namespace
} // namespace zem::test
