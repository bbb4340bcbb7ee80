#include "readback/ReadBack.h"

#include "base/LineText.h"
#include "readback/LooseComparison.h"
#include "readback/LostParts.h"
#include "reader/LoadGame.h"
#include "writer/SaveGame.h"

#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace zem {

namespace {

class Bytes : public Output {
public:
    std::string text;
    void Write(std::string_view piece) override { text.append(piece); }
    void Close() override {}
};

/// What a file of these bytes holds, for a game with the same catalogue of error messages. Throws KelError.
GameModel Load(const GameModel& game, std::string bytes) {
    GameModel back;
    back.ErrorMessages = game.ErrorMessages; // Reading clears the game's own texts in them.
    ReadGame(back, std::move(bytes));
    return back;
}

/// Whether the game comes back from its own file.
bool GameComesBack(const GameModel& game) {
    try {
        return IsSameInFile(game, Load(game, GameFile(game)));
    } catch (const KelError&) {
        return false;
    }
}

/// Things are read into the last room that has their room's name.
void FindRoomsOfOneName(const GameModel& game, std::vector<LostPlace>& places, std::size_t most) {
    std::unordered_map<std::string_view, int> lastByName;
    int k = 0;
    for (const Room& room : game.Rooms)
        lastByName[room.Name] = ++k;
    k = 0;
    for (const Room& room : game.Rooms) {
        ++k;
        const bool hasThings = !room.Characters.IsEmpty() || !room.Objects.IsEmpty();
        if (hasThings && lastByName[room.Name] != k && places.size() < most)
            places.push_back(Lost(game, Place::Of({{FieldId::GameRooms, k}}),
                                  "its characters and objects move to the last room of the same name"));
    }
}

/// Start items are read by their names, in any capitals.
void FindItemsOfOneName(const GameModel& game, std::vector<LostPlace>& places, std::size_t most) {
    std::unordered_set<std::string> startItems;
    for (const ItemEntry& item : game.Items)
        if (item.IsStartItem)
            startItems.insert(Lower(Trim(item.Name)));
    int k = 0;
    for (const ItemEntry& item : game.Items) {
        ++k;
        const std::string name = Lower(Trim(item.Name));
        if (!item.IsStartItem && !name.empty() && startItems.contains(name) && places.size() < most)
            places.push_back(Lost(game, Place::Of({{FieldId::GameItems, k}}),
                                  "it becomes a start item like the other of the same name"));
    }
}

} // namespace

std::string GameFile(const GameModel& game) {
    Bytes bytes;
    WriteGame(game, game.FileName, bytes);
    return std::move(bytes.text);
}

std::vector<LostPlace> ReadBack(const GameModel& game, const std::string& bytes, std::size_t most) {
    std::string problem;
    try {
        if (IsSameInFile(game, Load(game, bytes)))
            return {};
        problem = "The file gives back another game than the one that was saved";
    } catch (const KelError& error) {
        problem = std::string("The file cannot be read again: ") + error.what();
    }
    std::vector<LostPlace> places = FindLostParts(game, GameComesBack, most);
    FindRoomsOfOneName(game, places, most);
    FindItemsOfOneName(game, places, most);
    if (places.empty())
        places.push_back({{}, problem});
    return places;
}

} // namespace zem
