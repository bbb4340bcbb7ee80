// Any bytes as a game file: it loads or is refused. What was loaded is saved, and either comes back from
// those bytes, and saves the same ones again, or the places that do not are named.
#include "model/GameModel.h"
#include "readback/LooseComparison.h"
#include "readback/ReadBack.h"
#include "reader/LoadGame.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

zem::GameModel GameWithErrorNames() {
    zem::GameModel game;
    game.ErrorMessages.Append({"description", "badgo", ""});
    return game;
}

bool Load(zem::GameModel& game, const std::string& bytes) {
    try {
        zem::ReadGame(game, bytes);
        return true;
    } catch (const zem::KelError&) {
        return false;
    }
}

/// An item without a name is a start item as soon as the file names no start item, and the next file says so.
bool HasNamelessItem(const zem::GameModel& game) {
    return std::any_of(game.Items.begin(), game.Items.end(),
                       [](const zem::ItemEntry& item) { return item.Name.empty(); });
}

void CheckRoundTrip(const zem::GameModel& game, const std::string& saved) {
    zem::GameModel again = GameWithErrorNames();
    if (!Load(again, saved) || !zem::IsSameInFile(game, again))
        std::abort();
    if (zem::GameFile(again) != saved && !HasNamelessItem(game))
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    zem::GameModel game = GameWithErrorNames();
    if (!Load(game, {reinterpret_cast<const char*>(data), size}))
        return 0;
    const std::string saved = zem::GameFile(game);
    if (zem::GameFile(game) != saved)
        std::abort();
    const std::vector<zem::LostPlace> lost = zem::ReadBack(game, saved);
    if (lost.empty())
        CheckRoundTrip(game, saved);
    for (const zem::LostPlace& place : lost)
        if (place.text.empty())
            std::abort();
    return 0;
}
