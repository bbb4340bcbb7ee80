#include "play/Libraries.h"

#include "play/FileNames.h"
#include "reader/LoadGame.h"

#include <set>
#include <utility>

namespace zem::play {

namespace {

constexpr std::size_t MostLibraries = 64;
constexpr std::size_t MostBytes = 64 * 1024 * 1024;

class Loader {
public:
    Loader(GameFiles& files, const ReadLibrary& read) : files_(files), read_(read) {}

    void AddAllOf(const GameModel& includer) {
        for (const std::string& name : includer.Includes)
            Add(name);
    }

private:
    void Add(const std::string& name) {
        if (!seen_.insert(name).second)
            return;
        if (!IsPlainFileName(name)) {
            files_.problems.push_back("the library \"" + name + "\" is not in the folder of the game");
            return;
        }
        const std::optional<std::string> bytes = read_(name);
        if (!bytes) {
            if (name != BuiltInVerbs)
                files_.problems.push_back("the library \"" + name + "\" is missing");
            return;
        }
        if (files_.libraries.size() == MostLibraries || bytes->size() > MostBytes - size_) {
            files_.problems.push_back("the library \"" + name + "\" is one too many, or too large");
            return;
        }
        size_ += bytes->size();
        GameModel library;
        NameMessages(library);
        try {
            ReadGame(library, *bytes);
        } catch (const KelError& error) {
            files_.problems.push_back("the library \"" + name + "\" cannot be read: " + error.what());
            return;
        }
        const Table<std::string> includes = library.Includes;
        files_.libraries.push_back(std::move(library));
        files_.libraryNames.push_back(name);
        for (const std::string& inner : includes)
            Add(inner);
    }

    GameFiles& files_;
    const ReadLibrary& read_;
    std::set<std::string> seen_;
    std::size_t size_ = 0;
};

} // namespace

void NameMessages(GameModel& game) {
    if (game.ErrorMessages.IsEmpty())
        for (const MessageRow& row : MessageRows)
            game.ErrorMessages.Append({"", std::string(row.name), ""});
}

GameFiles WithLibraries(GameModel game, const ReadLibrary& read) {
    GameFiles files;
    files.game = std::move(game);
    Loader(files, read).AddAllOf(files.game);
    return files;
}

} // namespace zem::play
