#include "files/ReplaceFile.h"

#include "base/KelError.h"
#include "base/SystemError.h"
#include "files/FileBytes.h"
#include "files/SyncToDisk.h"

#include <exception>
#include <filesystem>
#include <string>
#include <system_error>

namespace zem {

namespace {

namespace fs = std::filesystem;

constexpr int MostLinks = 40; // The kernel's own limit for a chain of symbolic links.

constexpr const char* FileIsAsBefore = ". The file on disk is as it was before";

[[noreturn]] void ThrowNotWritten(const std::string& what, const std::error_code& error) {
    throw KelError(what + ", so nothing was written: " + DescribeSystemError(error.value()));
}

/// Looks a file up. Throws KelError when that cannot be done, so that it is never taken for missing.
fs::file_status LookUp(const fs::path& path) {
    std::error_code error;
    const fs::file_status status = fs::symlink_status(path, error);
    if (status.type() == fs::file_type::none)
        ThrowNotWritten("the file that is there cannot be looked at", error);
    return status;
}

/// The file that a path stands for, whether or not it exists: a link is to stay a link.
fs::path FollowLinks(fs::path path) {
    for (int links = 0; fs::is_symlink(LookUp(path)); ++links) {
        if (links == MostLinks)
            throw KelError("the file is a link that leads in a circle, so nothing was written");
        std::error_code error;
        const fs::path target = fs::read_symlink(path, error);
        if (error)
            ThrowNotWritten("the file is a link that cannot be followed", error);
        path = path.parent_path() / target; // The operator returns an absolute target unchanged.
    }
    return path;
}

fs::path WithSuffix(const fs::path& path, const char* suffix) {
    fs::path name = path;
    name += suffix;
    return name;
}

/// Where a version of the file is written before it gets its name.
fs::path UnfinishedOf(const fs::path& file) {
    return WithSuffix(file, "~new");
}

/// Removes what a save that was cut short has left, but neither a folder of that name nor what a link leads
/// to.
void RemoveUnfinished(const fs::path& unfinished, std::error_code& error) {
    if (!fs::is_directory(fs::symlink_status(unfinished, error)))
        fs::remove(unfinished, error);
}

/// Copies the file to its backup. The earlier backup stays until the new one is whole, and both the bytes and
/// the name of the new one are on the disk before this returns: a power cut while the file is written must
/// find them there.
void KeepPrevious(const fs::path& file, const fs::path& backup) {
    const fs::path unfinished = UnfinishedOf(file);
    std::error_code error;
    RemoveUnfinished(unfinished, error);
    if (!error)
        error = CopyBytes(file, unfinished, CopyTo::NewFile);
    if (!error)
        error = SyncFile(unfinished);
    if (!error)
        fs::rename(unfinished, backup, error);
    if (!error)
        error = SyncFolder(backup.parent_path());
    if (!error)
        return;
    std::error_code ignored;
    RemoveUnfinished(unfinished, ignored);
    ThrowNotWritten("the previous version could not be kept under its name and a \"~\"", error);
}

/// Makes an empty file in which a new version of the file can be written and take its place; nobody will see
/// a difference but the bytes. False where that cannot be done; then there is no such file.
bool PrepareReplacement(const fs::path& file, const fs::path& unfinished) {
    std::error_code error;
    if (!IsWritable(file) || fs::hard_link_count(file, error) != 1)
        return false;
    RemoveUnfinished(unfinished, error);
    if (CreateLike(file, unfinished))
        return false;
    if (HavePlainRightsOfOneOwner(file, unfinished))
        return true;
    fs::remove(unfinished, error);
    return false;
}

/// Writes the new version beside the file and puts it in its place. False when that cannot be done and the
/// file is as it was.
bool WriteBeside(const fs::path& file, bool isNew, const std::function<void(const std::string&)>& write) {
    const fs::path unfinished = UnfinishedOf(file);
    if (isNew ? static_cast<bool>(Create(unfinished)) : !PrepareReplacement(file, unfinished))
        return false;
    std::error_code error;
    try {
        write(unfinished.string());
        error = SyncFile(unfinished);
        if (!error)
            fs::rename(unfinished, file, error);
        if (!error)
            return true;
    } catch (const std::exception&) {
        // Whoever writes the file itself afterwards will say why it cannot be written.
    }
    fs::remove(unfinished, error);
    return false;
}

/// Flushes the file, and its folder when its name is new, to the disk. Throws KelError when that fails.
void Settle(const fs::path& file, bool hasNewName) {
    std::error_code error = SyncFile(file);
    if (!error && hasNewName)
        error = SyncFolder(file.parent_path());
    if (error)
        throw KelError("the file cannot be written: " + DescribeSystemError(error.value()));
}

/// Makes the file what it was, and returns whether that was possible. In place at first, so that its owner
/// and its other names stay; else by a rename, which needs no room on a full disk.
bool PutBack(const fs::path& file, const fs::path& backup) {
    if (HaveSameBytes(file, backup))
        return true;
    std::error_code error = CopyBytes(backup, file, CopyTo::ExistingFile);
    if (!error && HaveSameBytes(file, backup) && !SyncFile(file))
        return true;
    fs::rename(backup, file, error);
    if (error)
        return false;
    SyncFolder(file.parent_path()); // Without it a power cut may undo the rename, which loses nothing.
    return true;
}

/// Undoes what was written, and returns the sentence that tells where the author's version is.
std::string Undo(const fs::path& file, const fs::path& backup) {
    if (PutBack(file, backup))
        return FileIsAsBefore;
    return ". The previous version is in the file beside it whose name ends in \"~\"";
}

/// A disk that is read-only refuses to remove even what is not there.
std::string UndoNew(const fs::path& file) {
    std::error_code error;
    if (fs::symlink_status(file, error).type() == fs::file_type::not_found)
        return "";
    fs::remove(file, error);
    return error ? ". A part of it may be left on the disk" : "";
}

} // namespace

void ReplaceFile(const std::string& path, const std::function<void(const std::string& file)>& write) {
    const fs::path file = FollowLinks(path);
    const fs::file_status status = LookUp(file);
    const bool isNew = !fs::exists(status);
    const bool isKept = fs::is_regular_file(status);
    if (!isNew && !isKept && !fs::is_directory(status)) // a pipe would keep the program waiting for ever
        throw KelError("this is not an ordinary file, so nothing was written");
    const fs::path backup = WithSuffix(file, "~");
    if (isKept)
        KeepPrevious(file, backup);
    std::string problem;
    try {
        const bool isReplaced = (isNew || isKept) && WriteBeside(file, isNew, write);
        if (!isReplaced)
            write(file.string());
        Settle(file, isNew || isReplaced);
        return;
    } catch (const std::exception& failure) {
        problem = failure.what();
    }
    if (isKept)
        problem += Undo(file, backup);
    else if (isNew)
        problem += UndoNew(file);
    else // a folder
        problem += FileIsAsBefore;
    throw KelError(problem);
}

} // namespace zem
