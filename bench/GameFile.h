#pragma once

#include "GeneratedGame.h"

#include <filesystem>
#include <fstream>
#include <string>

namespace zem::bench {

/// A generated game in a folder of its own, removed at the end.
class GameFile {
public:
    explicit GameFile(int rooms) : folder_(std::filesystem::temp_directory_path() / "zem-bench") {
        std::filesystem::create_directories(folder_);
        std::ofstream(Input(), std::ios::binary) << GenerateGame(rooms);
    }
    ~GameFile() { std::filesystem::remove_all(folder_); }
    GameFile(const GameFile&) = delete;
    GameFile& operator=(const GameFile&) = delete;

    std::string Input() const { return (folder_ / "input.kel").string(); }
    std::string Output() const { return (folder_ / "output.kel").string(); }
    double Size() const { return static_cast<double>(std::filesystem::file_size(Input())); }

private:
    std::filesystem::path folder_;
};

} // namespace zem::bench
