#include "panels/PlaceWords.h"

#include "qt/QtText.h"

namespace zem {

QString GroupOf(const GameModel& game, const Place& place) {
    if (place.Depth() == 0)
        return QStringLiteral("The game");
    const PlaceStep& first = place.steps.front();
    if (first.list == FieldId::GameRooms && first.entry >= 1 && first.entry <= game.Rooms.Count())
        return ToQt(game.Rooms[first.entry].Name);
    const std::optional<ResolvedPlace> resolved = Resolve(game, place);
    if (!resolved || resolved->steps.empty())
        return QStringLiteral("The game");
    QString list = QLatin1String(resolved->steps.front().list);
    list[0] = list[0].toUpper();
    return list.endsWith(u'y') ? list.chopped(1) + QLatin1String("ies") : list + u's';
}

} // namespace zem
