// What the map changes in the game.
#include "forms/RunCommand.h"
#include "panels/MapPanel.h"
#include "qt/QtText.h"

namespace zem {

void MapPanel::AsStep(const QString& name, const std::function<void(GameModel&)>& change) {
    RunCommand(dialogs_, this, [&] { session_.AsOneStep(name, [&] { session_.Change(change); }); });
}

void MapPanel::MoveRooms(const std::vector<map::Placing>& placings) {
    if (IsBusy())
        return; // the map that was dragged is no longer that of the game; the new one comes at once
    for (const map::Placing& placing : placings)
        placed_.cells[static_cast<std::size_t>(placing.room)] = *placing.cell;
    AsStep(placings.size() == 1 ? QStringLiteral("move %1 on the map")
                                      .arg(ToQt(session_.Game().Rooms[placings.front().room + 1].Name))
                                : QStringLiteral("move %1 rooms on the map").arg(placings.size()),
           [&](GameModel& game) { map::PlaceRooms(game, placings); });
}

void MapPanel::AddRoom(const QString& name, map::Cell cell, int from, map::Direction direction, bool oneWay) {
    if (IsBusy() && from != map::NoRoom)
        return;
    if (from != map::NoRoom && !MayReplaceScript({from, direction, from, std::nullopt}, name))
        return;
    RunCommand(dialogs_, this, [&] {
        const int number = session_.Game().Rooms.Count();
        const std::string bytes = FromQt(name);
        session_.AsOneStep(QStringLiteral("add room %1").arg(name), [&] {
            session_.Change([&](GameModel& game) {
                const int room = map::AddRoom(game, bytes, cell);
                if (from == map::NoRoom)
                    return;
                map::Connect(game, {from, direction, room,
                                    oneWay ? std::nullopt : map::WayBack(game, from, direction, room)});
            });
        });
        wanted_ = number;
    });
}

/// Makes the room to which an exit leads already, one cell in its direction.
void MapPanel::MakeUnknownRoom(int exit) {
    if (IsBusy())
        return;
    const map::Exit& leads = canvas_->Map().graph.exits[static_cast<std::size_t>(exit)];
    const map::Cell from = canvas_->Map().rooms[static_cast<std::size_t>(leads.from)].cell;
    AddRoom(ToQt(leads.target), canvas_->FreeCellNear(from + map::Step(leads.direction)), map::NoRoom, 0,
            true);
}

void MapPanel::Connect(int from, map::Direction direction, int to, int back, bool oneWay) {
    if (IsBusy())
        return;
    const GameModel& game = session_.Game();
    map::Connection connection{from, direction, to, std::nullopt};
    if (!oneWay)
        connection.back =
            back >= 0 ? std::optional<map::Direction>(back) : map::WayBack(game, from, direction, to);
    const QString there = ToQt(game.Rooms[to + 1].Name);
    if (!MayReplaceScript(connection, there))
        return;
    AsStep(QStringLiteral("connect %1 %2 to %3")
               .arg(ToQt(game.Rooms[from + 1].Name), QLatin1String(map::WordOf(direction)), there),
           [&](GameModel& changed) { map::Connect(changed, connection); });
}

/// Asks where the connection takes a script from the author.
bool MapPanel::MayReplaceScript(const map::Connection& connection, const QString& there) {
    return !map::ReplacesScript(session_.Game(), connection) ||
           dialogs_.ShowMessageBox(
               this,
               QStringLiteral("The exit runs a script. Replace the script by a plain exit to %1?").arg(there),
               QStringLiteral("Replace script"), QMessageBox::Yes | QMessageBox::No,
               QMessageBox::Question) == QMessageBox::Yes;
}

void MapPanel::Disconnect(int room, map::Direction direction) {
    AsStep(QStringLiteral("remove exit %1 of %2")
               .arg(QLatin1String(map::WordOf(direction)), ToQt(session_.Game().Rooms[room + 1].Name)),
           [&](GameModel& game) { map::SetExit(game, room, direction, ""); });
}

/// Turns a connection around: what lay north lies south.
void MapPanel::Flip(const routing::MapLine& line) {
    const map::Direction there = map::Opposite(line.from.port);
    AsStep(QStringLiteral("turn a connection around"), [&](GameModel& game) {
        const std::string from = game.Rooms[line.from.room + 1].Name;
        const std::string to = game.Rooms[line.to.room + 1].Name;
        map::SetExit(game, line.from.room, line.from.port, "");
        if (line.to.exit >= 0)
            map::SetExit(game, line.to.room, line.to.port, "");
        map::SetExit(game, line.from.room, there, to);
        if (line.to.exit >= 0)
            map::SetExit(game, line.to.room, map::Opposite(there), from);
    });
}

void MapPanel::DeleteSelected() {
    if (IsBusy())
        return;
    if (const int line = canvas_->ChosenLine(); line >= 0)
        return RemoveLine(canvas_->Map().lines[static_cast<std::size_t>(line)]);
    const std::vector<int> rooms(canvas_->Selected().begin(), canvas_->Selected().end());
    if (rooms.empty())
        return;
    AsStep(rooms.size() == 1 ? QStringLiteral("delete room")
                             : QStringLiteral("delete %1 rooms").arg(rooms.size()),
           [&](GameModel& game) { map::DeleteRooms(game, rooms); });
}

void MapPanel::UnpinSelected() {
    std::vector<map::Placing> placings;
    for (const int room : canvas_->Selected())
        if (map::PinOf(session_.Game().Rooms[room + 1].MiscTags))
            placings.push_back({room, std::nullopt});
    if (placings.empty())
        return; // a game that is not changed stays saved
    AsStep(QStringLiteral("let go of places on the map"),
           [&](GameModel& game) { map::PlaceRooms(game, placings); });
}

void MapPanel::RemoveLine(const routing::MapLine& line) {
    if (line.IsTie() || line.from.exit < 0)
        return;
    AsStep(QStringLiteral("remove a connection"), [line](GameModel& game) {
        map::SetExit(game, line.from.room, line.from.port, "");
        if (line.to.exit >= 0)
            map::SetExit(game, line.to.room, line.to.port, "");
    });
}

/// The selected rooms are forgotten and come back where the others want them.
void MapPanel::TidySelected() {
    const std::set<int> rooms = canvas_->Selected();
    if (rooms.empty() || IsBusy())
        return;
    map::PlacedMap others;
    std::vector<int> numbers(placed_.cells.size(), map::NoRoom);
    for (std::size_t room = 0; room < placed_.cells.size(); ++room) {
        if (rooms.contains(static_cast<int>(room)))
            continue;
        numbers[room] = others.graph.RoomCount();
        others.graph.names.push_back(placed_.graph.names[room]);
        others.graph.pins.push_back(placed_.graph.pins[room]);
        others.cells.push_back(placed_.cells[room]);
    }
    const auto number = [&](int room) { return room < 0 ? room : numbers[static_cast<std::size_t>(room)]; };
    for (map::Exit exit : placed_.graph.exits) {
        exit.from = number(exit.from);
        const bool isLost = exit.to != map::NoRoom && number(exit.to) == map::NoRoom;
        exit.to = number(exit.to);
        if (exit.from != map::NoRoom && !isLost)
            others.graph.exits.push_back(exit);
    }
    for (map::Tie tie : placed_.graph.ties) {
        tie.from = number(tie.from);
        tie.to = number(tie.to);
        if (tie.from != map::NoRoom && tie.to != map::NoRoom)
            others.graph.ties.push_back(tie);
    }
    versions_.clear();
    placed_ = std::move(others);
    isNew_ = placed_.cells.empty();
    isStale_ = true;
    UnpinSelected();
    if (isStale_)
        LayOutAnew(); // none of them was pinned, so the game did not change
}

void MapPanel::ForgetPlaces() {
    placed_ = {};
    versions_.clear();
    isNew_ = true;
    isStale_ = true;
    canvas_->FitNext();
    GameModel game = session_.Game();
    if (map::ForgetPlaces(game) > 0)
        AsStep(QStringLiteral("forget places on the map"), [&](GameModel& changed) { changed = game; });
    if (isStale_)
        LayOutAnew();
}

} // namespace zem
