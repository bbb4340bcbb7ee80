#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

namespace zem::test {

/// A folder of its own for one test, removed with everything in it.
class TempFolder {
public:
    TempFolder() {
        std::random_device random;
        do
            path_ = std::filesystem::temp_directory_path() / ("zem-test-" + std::to_string(random()));
        while (!std::filesystem::create_directory(path_));
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(path_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    std::string Path(std::string_view name) const { return (path_ / name).string(); }
    const std::filesystem::path& Folder() const { return path_; }

    /// Writes a file into the folder and returns its path.
    std::string Write(std::string_view name, std::string_view bytes) const {
        std::ofstream(Path(name), std::ios::binary) << bytes;
        return Path(name);
    }

private:
    std::filesystem::path path_;
};

inline std::string ReadBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

} // namespace zem::test
