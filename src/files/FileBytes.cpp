#include "files/FileBytes.h"

#include "base/SystemError.h"
#include "base/TextFile.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

#if defined(__unix__) || defined(__APPLE__)
#include <sys/stat.h>
#define ZEM_HAS_OWNERS
#endif
#ifdef __linux__
#include <sys/xattr.h>
#define ZEM_HAS_ATTRIBUTES
#endif

namespace zem {

namespace {

namespace fs = std::filesystem;
using File = std::unique_ptr<std::FILE, CloseFile>;

constexpr std::size_t BlockSize = 65536;

/// A file for whole blocks, which need no buffer on the way.
File Open(const fs::path& path, const char* mode) {
    File file(std::fopen(path.string().c_str(), mode));
    if (file)
        std::setvbuf(file.get(), nullptr, _IONBF, 0);
    return file;
}

/// A new file. Nobody is to read in it who could not read the other.
File CreateWithPermissionsOf(const fs::path& other, const fs::path& path, std::error_code& error) {
    File file = Open(path, "wbx");
    if (!file)
        error = LastSystemError();
    else
        fs::permissions(path, fs::status(other, error).permissions(), error);
    return file;
}

/// Whether more is known of the file than its bytes, its owner and its permissions.
[[maybe_unused]] bool HasAttributes(const fs::path& file) {
#ifdef ZEM_HAS_ATTRIBUTES
    std::array<char, 4096> names{};
    const ssize_t size = listxattr(file.c_str(), names.data(), names.size());
    // A system that labels every file labels the new one, too.
    return size > 0 ? std::string_view(names.data(), static_cast<std::size_t>(size)) !=
                          std::string_view("security.selinux", sizeof "security.selinux")
                    : size < 0 && errno != ENOTSUP;
#else
    return false;
#endif
}

std::error_code CopyBlocks(std::FILE* from, std::FILE* to) {
    std::vector<char> block(BlockSize);
    while (const std::size_t size = std::fread(block.data(), 1, block.size(), from)) {
        if (std::fwrite(block.data(), 1, size, to) != size)
            return LastSystemError();
    }
    return std::ferror(from) != 0 ? LastSystemError() : std::error_code();
}

} // namespace

std::error_code CopyBytes(const fs::path& from, const fs::path& to, CopyTo target) {
    const File in = Open(from, "rb");
    if (!in)
        return LastSystemError();
    std::error_code error;
    File out = target == CopyTo::NewFile ? CreateWithPermissionsOf(from, to, error) : Open(to, "wb");
    if (!out)
        return LastSystemError();
    if (!error)
        error = CopyBlocks(in.get(), out.get());
    if (std::fclose(out.release()) != 0 && !error)
        error = LastSystemError();
    return error;
}

std::error_code Create(const fs::path& path) {
    return Open(path, "wbx") ? std::error_code() : LastSystemError();
}

std::error_code CreateLike(const fs::path& other, const fs::path& path) {
    std::error_code error;
    const File file = CreateWithPermissionsOf(other, path, error);
    std::error_code ignored;
    if (file && error)
        fs::remove(path, ignored);
    return error;
}

bool IsWritable(const fs::path& file) {
    return Open(file, "r+b") != nullptr;
}

bool HavePlainRightsOfOneOwner(const fs::path& a, const fs::path& b) {
#ifdef ZEM_HAS_OWNERS
    struct stat left {};
    struct stat right {};
    return stat(a.c_str(), &left) == 0 && stat(b.c_str(), &right) == 0 && left.st_uid == right.st_uid &&
           left.st_gid == right.st_gid && !HasAttributes(a) && !HasAttributes(b);
#else
    return true;
#endif
}

bool HaveSameBytes(const fs::path& a, const fs::path& b) {
    const File left = Open(a, "rb");
    const File right = Open(b, "rb");
    if (!left || !right)
        return false;
    std::vector<char> leftBlock(BlockSize);
    std::vector<char> rightBlock(BlockSize);
    std::size_t size = 0;
    do {
        size = std::fread(leftBlock.data(), 1, BlockSize, left.get());
        if (std::fread(rightBlock.data(), 1, BlockSize, right.get()) != size ||
            std::memcmp(leftBlock.data(), rightBlock.data(), size) != 0)
            return false;
    } while (size > 0);
    return std::ferror(left.get()) == 0 && std::ferror(right.get()) == 0;
}

} // namespace zem
