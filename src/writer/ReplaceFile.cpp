#include "writer/ReplaceFile.h"

#include "model/KelError.h"
#include "model/SystemError.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

namespace zem {

namespace {

namespace fs = std::filesystem;

constexpr int MostLinks = 40; // one that leads to another, and so on, as the system has it

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
        path = path.parent_path() / target; // which is the target itself when that is absolute
    }
    return path;
}

fs::path WithSuffix(const fs::path& path, const char* suffix) {
    fs::path name = path;
    name += suffix;
    return name;
}

/// Copies the file to its backup. The earlier backup stays until the new one is whole.
void KeepPrevious(const fs::path& file, const fs::path& backup) {
    const fs::path unfinished = WithSuffix(backup, "new");
    std::error_code error;
    fs::remove(unfinished, error); // never through a link that somebody has put there
    if (!error)
        fs::copy_file(file, unfinished, error);
    if (!error)
        fs::rename(unfinished, backup, error);
    if (!error)
        return;
    std::error_code ignored;
    fs::remove(unfinished, ignored);
    ThrowNotWritten("the previous version could not be kept under its name and a \"~\"", error);
}

bool HaveSameBytes(const fs::path& a, const fs::path& b) {
    std::ifstream left(a, std::ios::binary);
    std::ifstream right(b, std::ios::binary);
    using Bytes = std::istreambuf_iterator<char>;
    return left && right && std::equal(Bytes(left), Bytes(), Bytes(right), Bytes());
}

/// Makes the file what it was. In place where that is possible, so that its owner and its other names stay; a
/// rename, which needs no room on a full disk, where it is not.
void PutBack(const fs::path& file, const fs::path& backup, const std::string& problem) {
    if (HaveSameBytes(file, backup))
        return;
    std::error_code error;
    fs::copy_file(backup, file, fs::copy_options::overwrite_existing, error);
    if (!error && HaveSameBytes(file, backup))
        return;
    fs::rename(backup, file, error);
    if (error)
        throw KelError(problem + ". The previous version is in the file beside it whose name ends in \"~\"");
}

} // namespace

void ReplaceFile(const std::string& path, const std::function<void()>& write) {
    const fs::path file = FollowLinks(path);
    const fs::file_status status = LookUp(file);
    const bool isNew = !fs::exists(status);
    const bool isKept = fs::is_regular_file(status);
    const fs::path backup = WithSuffix(file, "~");
    if (isKept)
        KeepPrevious(file, backup);
    std::string problem;
    try {
        write();
        return;
    } catch (const std::exception& failure) {
        problem = failure.what();
    }
    if (isKept)
        PutBack(file, backup, problem);
    std::error_code ignored;
    if (isNew)
        fs::remove(file, ignored);
    throw KelError(problem + (isNew ? "" : ". The file on disk is as it was before"));
}

} // namespace zem
