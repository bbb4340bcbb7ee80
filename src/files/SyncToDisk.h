#pragma once

#include <filesystem>
#include <system_error>

namespace zem {

/// Waits until the bytes of a file are on the disk and not only on their way to it, where the system can
/// tell. The error is that of the disk, also of bytes that were written before and by others.
std::error_code SyncFile(const std::filesystem::path& file);

/// Waits until the names in a folder are on the disk: a new file, or the effect of a rename. A folder whose
/// names cannot be waited for is no error.
std::error_code SyncFolder(const std::filesystem::path& folder);

} // namespace zem
