#include "game/TextChanges.h"

#include "base/KelError.h"
#include "game/PlaceOrder.h"
#include "model/Texts.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace zem {

void MakeChanges(GameModel& game, std::vector<TextChange> changes) {
    std::sort(changes.begin(), changes.end(),
              [](const TextChange& a, const TextChange& b) { return PlaceComesBefore(a.place, b.place); });
    GameModel changed = game;
    for (std::size_t k = 0; k < changes.size();) {
        const Place field = changes[k].place.WholeField();
        const auto resolved = Resolve(game, field);
        if (!resolved || resolved->text == nullptr)
            throw KelError("the game has changed since: " + DescribePlace(game, field));
        const std::string& before = *resolved->text;
        std::string after;
        std::size_t at = 0;
        for (; k < changes.size() && changes[k].place.WholeField() == field; ++k) {
            const TextRange bytes = changes[k].place.bytes;
            if (bytes.begin < at || bytes.end < bytes.begin || bytes.end > before.size())
                throw KelError("the text has changed since: " + DescribePlace(game, field));
            after.append(before, at, bytes.begin - at).append(changes[k].words);
            at = bytes.end;
        }
        after.append(before, at);
        SetText(changed, field, std::move(after));
    }
    game = std::move(changed);
}

} // namespace zem
