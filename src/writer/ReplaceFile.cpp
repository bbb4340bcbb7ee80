#include "writer/ReplaceFile.h"

#include "model/KelError.h"
#include "model/SystemError.h"

#include <cstdint>
#include <exception>
#include <filesystem>
#include <string>
#include <system_error>

namespace zem {

namespace {

namespace fs = std::filesystem;

fs::path WithSuffix(const fs::path& path, const char* suffix) {
    fs::path name = path;
    name += suffix;
    return name;
}

/// Copies the file to its backup. The earlier backup stays until the new one is whole.
void KeepPrevious(const fs::path& file, const fs::path& backup) {
    const fs::path unfinished = WithSuffix(backup, "new");
    std::error_code error;
    fs::copy_file(file, unfinished, fs::copy_options::overwrite_existing, error);
    if (!error)
        fs::rename(unfinished, backup, error);
    if (!error)
        return;
    std::error_code ignored;
    fs::remove(unfinished, ignored);
    throw KelError("the previous version could not be kept, so nothing was written: " +
                   DescribeSystemError(error.value()));
}

/// What tells whether somebody has begun to write a file.
struct Stamp {
    fs::file_time_type written;
    std::uintmax_t size = 0;

    explicit Stamp(const fs::path& file) {
        std::error_code ignored;
        written = fs::last_write_time(file, ignored);
        size = fs::file_size(file, ignored);
    }
    bool operator==(const Stamp&) const = default;
};

void PutBack(const fs::path& file, const fs::path& backup, const std::string& problem) {
    std::error_code error;
    // A rename needs no room on a full disk; it is the backup that goes, not the author's file.
    fs::rename(backup, file, error);
    if (error)
        throw KelError(problem + ". The previous version is in the file beside it whose name ends in \"~\"");
}

} // namespace

void ReplaceFile(const std::string& path, const std::function<void()>& write) {
    std::error_code error;
    // Through a link, so that the link stays one.
    const fs::path target = fs::exists(path, error) ? fs::canonical(path, error) : fs::path(path);
    const fs::path file = error ? fs::path(path) : target;
    const bool isNew = !fs::exists(file, error);
    const bool isKept = !isNew && fs::is_regular_file(file, error);
    const fs::path backup = WithSuffix(file, "~");
    if (isKept)
        KeepPrevious(file, backup);
    const Stamp before(file);
    std::string problem;
    try {
        write();
        return;
    } catch (const std::exception& failure) {
        problem = failure.what();
    }
    if (isKept && !(before == Stamp(file)))
        PutBack(file, backup, problem);
    if (isNew)
        fs::remove(file, error);
    throw KelError(problem + (isNew ? "" : ". The file on disk is as it was before"));
}

} // namespace zem
