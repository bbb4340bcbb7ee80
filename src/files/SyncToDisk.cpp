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

/// Flushes a file or folder through a descriptor of its own. The kernel reports a write-back error once to
/// each open descriptor.
std::error_code Sync(const std::filesystem::path& path) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC); // NOLINT(*-vararg): POSIX has it so.
    if (descriptor < 0)
        return LastSystemError();
    const std::error_code error = fsync(descriptor) == 0 ? std::error_code() : LastSystemError();
    close(descriptor); // Nothing was written through it, so an error here means nothing.
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

// Only a fault of the disk counts: many file systems refuse fsync of a folder, each with another error, and a
// folder without read permission cannot be opened although its files can be written.
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
