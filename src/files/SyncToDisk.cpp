#include "files/SyncToDisk.h"

#include "base/SystemError.h"

#if defined(__unix__) || defined(__APPLE__)
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#define ZEM_HAS_FSYNC
#endif

namespace zem {

#ifdef ZEM_HAS_FSYNC

namespace {

/// The error of an fsync through a descriptor of its own: the system keeps an error of the disk for whoever
/// asks first.
std::error_code Sync(const std::filesystem::path& path) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC); // NOLINT(*-vararg): there is no other
    if (descriptor < 0)
        return LastSystemError();
    const std::error_code error = fsync(descriptor) == 0 ? std::error_code() : LastSystemError();
    close(descriptor); // nothing is on its way any more that this could lose
    return error;
}

bool IsFaultOfDisk(const std::error_code& error) {
    return error == std::errc::io_error || error == std::errc::no_space_on_device || error.value() == EDQUOT;
}

} // namespace

std::error_code SyncFile(const std::filesystem::path& file) {
    const std::error_code error = Sync(file);
    return error == std::errc::invalid_argument || error == std::errc::not_supported ? std::error_code()
                                                                                     : error;
}

// Many file systems know no fsync of a folder and each has an error of its own for it, and a folder may be
// closed to readers while its files can be written.
std::error_code SyncFolder(const std::filesystem::path& folder) {
    const std::error_code error = Sync(folder.empty() ? "." : folder);
    return IsFaultOfDisk(error) ? error : std::error_code();
}

#else

std::error_code SyncFile(const std::filesystem::path& /*file*/) {
    return {};
}

std::error_code SyncFolder(const std::filesystem::path& /*folder*/) {
    return {};
}

#endif

} // namespace zem
