#pragma once

#include "play/World.h"
#include "problems/CheckedGame.h"

#include <iosfwd>
#include <optional>
#include <string>

namespace zem::play {

/// Loads a game and the libraries beside it. What is wrong with the game is told on `err`, and nothing is
/// given; what is wrong with a library is told, too, and play goes on without it.
std::optional<GameFiles> LoadGameFiles(const std::string& path, std::ostream& err);

/// The bytes of a file beside the game, by its plain name; nothing when there is none that may be read. Links
/// that lead out of the folder are refused.
std::optional<std::string> ReadBesideGame(const std::string& folder, const std::string& name);

} // namespace zem::play

namespace zem {

/// The files of a folder, as checks ask for them.
class FolderFiles : public problems::FilesBeside {
public:
    /// @param folder  empty for the current one
    explicit FolderFiles(std::string folder) : folder_(std::move(folder)) {}

    std::optional<std::string> Read(const std::string& name) const override;
    std::vector<std::string> Names() const override;

private:
    std::string folder_;
};

} // namespace zem
