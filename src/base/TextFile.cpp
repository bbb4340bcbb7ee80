#include "base/TextFile.h"

#include "base/SystemError.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

namespace zem {

namespace {

constexpr std::uintmax_t LargestFile = 0xFFFFFFFF;

[[noreturn]] void ThrowUnreadable(int error) {
    throw KelError("the file cannot be read: " + DescribeSystemError(error));
}

} // namespace

std::string ReadFile(const std::string& path) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (std::filesystem::is_directory(status))
        throw KelError("this is a folder, not a file");
    // A pipe or a device would keep the program waiting for ever.
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
        throw KelError("this is not an ordinary file");

    const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path.c_str(), "rb"));
    if (!file)
        ThrowUnreadable(errno);
    std::string bytes;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (!error && size >= LargestFile)
        throw KelError("the file is too large: 4 GB and more cannot be read");
    if (!error)
        bytes.resize(size + 1); // The extra byte lets one read reach the end of the file.
    std::size_t read = 0;
    for (std::size_t got = 1; got != 0; read += got) {
        if (read == bytes.size())
            bytes.resize(bytes.size() * 2 + 4096);
        got = std::fread(bytes.data() + read, 1, bytes.size() - read, file.get());
    }
    if (std::ferror(file.get()) != 0)
        ThrowUnreadable(errno);
    bytes.resize(read);
    return bytes;
}

} // namespace zem
