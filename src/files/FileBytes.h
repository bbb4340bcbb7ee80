#pragma once

#include <filesystem>
#include <system_error>

namespace zem {

enum class CopyTo {
    NewFile,     ///< The target must not exist yet; it gets the permissions of the source.
    ExistingFile ///< The target keeps its owner, permissions and hard links.
};

/// Copies the bytes of a file. The error says what the system said, which std::filesystem::copy_file does not
/// do: it calls a disk that fills up on the way faulty.
std::error_code CopyBytes(const std::filesystem::path& from, const std::filesystem::path& to, CopyTo target);

/// Makes a file, which must not be there yet, with no bytes.
std::error_code Create(const std::filesystem::path& path);

/// Create with the permissions of the other file.
std::error_code CreateLike(const std::filesystem::path& other, const std::filesystem::path& path);

/// Whether the file may be written. Leaves it as it is.
bool IsWritable(const std::filesystem::path& file);

/// Whether both files have the same owner and group, and neither has extended attributes or an ACL.
bool HavePlainRightsOfOneOwner(const std::filesystem::path& a, const std::filesystem::path& b);

/// Whether both files can be read and hold the same.
bool HaveSameBytes(const std::filesystem::path& a, const std::filesystem::path& b);

} // namespace zem
