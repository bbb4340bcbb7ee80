#pragma once

#include <filesystem>
#include <system_error>

namespace zem {

enum class CopyTo {
    NewFile,     // which must not be there yet, and gets the permissions of the other
    ExistingFile // whose owner, permissions and other names stay
};

/// Copies the bytes of a file. The error says what the system said, which std::filesystem::copy_file does not
/// do: it calls a disk that fills up on the way faulty.
std::error_code CopyBytes(const std::filesystem::path& from, const std::filesystem::path& to, CopyTo target);

/// Whether both files can be read and hold the same.
bool HaveSameBytes(const std::filesystem::path& a, const std::filesystem::path& b);

} // namespace zem
