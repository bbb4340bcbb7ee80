#include "panels/MapPanel.h"

#include "files/ReplaceFile.h"
#include "forms/RunCommand.h"
#include "painting/MapPicture.h"
#include "qt/QtText.h"
#include "writer/OutputFile.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QToolBar>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace zem {

namespace {

constexpr int RoomsWorthAFirstPicture = 300;

/// What stands under the name of a room when there is room for it: what is in it, and how its text begins.
QStringList DetailsOf(const GameModel& game) {
    QStringList details;
    for (const Room& room : game.Rooms) {
        const int things = room.Objects.Count() + room.Characters.Count();
        QStringList parts;
        if (things > 0)
            parts.append(QStringLiteral("%1 %2").arg(things).arg(things == 1 ? QLatin1String("thing")
                                                                             : QLatin1String("things")));
        constexpr qsizetype FirstWords = 40;
        const QString look = ToQt(std::string_view(room.Look).substr(0, FirstWords)).simplified();
        if (!look.isEmpty())
            parts.append(look);
        details.append(parts.join(QStringLiteral(" · ")));
    }
    return details;
}

} // namespace

MapPanel::MapPanel(GameSession& session, Dialogs& dialogs, const QString& mapFolder, QWidget* parent)
    : QDockWidget(QStringLiteral("Map"), parent),
      session_(session),
      dialogs_(dialogs),
      cache_(mapFolder),
      tools_(new QToolBar(this)),
      zoom_(new QLabel(this)),
      canvas_(new MapCanvas(dialogs, this)) {
    setObjectName(QStringLiteral("dckMap"));
    auto* contents = new QWidget(this);
    auto* layout = new QVBoxLayout(contents);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(tools_);
    layout->addWidget(canvas_, 1);
    setWidget(contents);
    setFocusProxy(canvas_);
    MakeTools();
    ConnectCanvas();
    connect(&session, &GameSession::Changed, this, &MapPanel::GameChanged);
    connect(&session, &GameSession::Replaced, this, &MapPanel::GameReplaced);
    connect(&session, &GameSession::Saved, this, &MapPanel::KeepPlaces);
}

void MapPanel::MakeTools() {
    tools_->setObjectName(QStringLiteral("tlbMap"));
    const auto add = [this](const char* name, const QString& text, const QString& tip, auto run) {
        QAction* action = tools_->addAction(text, this, run);
        action->setObjectName(QLatin1String(name));
        action->setToolTip(tip);
        return action;
    };
    add("actZoomOut", QStringLiteral("−"), QStringLiteral("Smaller (-)"), [this] { canvas_->ZoomOut(); });
    zoom_->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral(" 400 % ")));
    zoom_->setAlignment(Qt::AlignCenter);
    tools_->addWidget(zoom_);
    add("actZoomIn", QStringLiteral("+"), QStringLiteral("Larger (+)"), [this] { canvas_->ZoomIn(); });
    add("actFit", QStringLiteral("Fit"), QStringLiteral("Show the whole map (Ctrl+0)"),
        [this] { canvas_->FitAll(); });
    add("actFitSelection", QStringLiteral("Selection"), QStringLiteral("Show the selected rooms large"),
        [this] { canvas_->FitSelection(); });
    QAction* overview = tools_->addAction(QStringLiteral("Overview"));
    overview->setObjectName(QStringLiteral("actOverview"));
    overview->setToolTip(QStringLiteral("A small picture of the whole map in the corner (Ctrl+Shift+M)"));
    overview->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_M);
    overview->setCheckable(true);
    overview->setChecked(true);
    connect(overview, &QAction::toggled, canvas_, &MapCanvas::ShowOverview);
    tools_->addSeparator();
    add("actTidy", QStringLiteral("Tidy"), QStringLiteral("Find new places for the selected rooms"),
        [this] { TidySelected(); });
    add("actForget", QStringLiteral("Forget"),
        QStringLiteral("Let go of all places that you chose, and lay out the whole map anew"),
        [this] { ForgetPlaces(); });
    add("actExport", QStringLiteral("Export"), QStringLiteral("Save the map as SVG, PDF or PNG"),
        [this] { ExportPicture(); });
}

void MapPanel::ConnectCanvas() {
    connect(canvas_, &MapCanvas::RoomChosen, this, &MapPanel::RoomChosen);
    connect(canvas_, &MapCanvas::RoomOpened, this, &MapPanel::RoomOpened);
    connect(canvas_, &MapCanvas::RoomsMoved, this, &MapPanel::MoveRooms);
    connect(canvas_, &MapCanvas::RoomNamed, this, &MapPanel::AddRoom);
    connect(canvas_, &MapCanvas::ConnectionDrawn, this, &MapPanel::Connect);
    connect(canvas_, &MapCanvas::DeleteWanted, this, &MapPanel::DeleteSelected);
    connect(canvas_, &MapCanvas::MenuWanted, this, &MapPanel::ShowMenu);
    connect(canvas_, &MapCanvas::ZoomChanged, this,
            [this](double zoom) { zoom_->setText(QStringLiteral("%1 %").arg(qRound(zoom * 100))); });
}

// ---- Following the game

void MapPanel::showEvent(QShowEvent* event) {
    QDockWidget::showEvent(event);
    if (isStale_)
        LayOutAnew();
}

void MapPanel::GameChanged(const ChangedFields& changed) {
    if (!changed.Has(&GameModel::Rooms) && !changed.Has(&GameModel::StartRoom) &&
        !changed.Has(&GameModel::Procedures))
        return;
    isStale_ = true;
    if (isVisible())
        LayOutAnew();
}

void MapPanel::GameReplaced() {
    placed_ = {};
    isNew_ = true;
    isStale_ = true;
    versions_.clear();
    ++generation_;
    work_.Cancel();
    canvas_->Clear();
    if (isVisible())
        LayOutAnew();
}

void MapPanel::LayOutAnew() {
    isStale_ = false;
    const bool isUntouched = !session_.Game().Modified && !session_.FileName().isEmpty();
    const QString file = isNew_ && isUntouched ? session_.FileName() : QString();
    const auto known = std::find_if(versions_.begin(), versions_.end(), [this](const Version& version) {
        return version.rooms == session_.Game().Rooms;
    });
    if (known != versions_.end() && !isNew_)
        placed_ = *known->placed;
    const int generation = ++generation_;
    auto work = [this, generation, game = session_.Game(), before = placed_, isNew = isNew_,
                 file](const IsOutdated& stop) {
        Result result;
        result.placed.graph = map::ReadMapGraph(game);
        const map::MapGraph& graph = result.placed.graph;
        const QStringList details = DetailsOf(game);
        result.details = details;
        map::LayoutControl control;
        control.stop = [&stop] { return stop.load(); };
        if (isNew && graph.RoomCount() >= RoomsWorthAFirstPicture)
            control.firstPicture = [&](const std::vector<map::Cell>& cells) {
                auto first = std::make_shared<routing::Router>(graph, cells);
                QMetaObject::invokeMethod(this, [this, generation, first, details] {
                    if (generation == generation_ && work_.IsRunning())
                        canvas_->Show(first, details);
                });
            };
        std::optional<map::PlacedMap> kept;
        if (isNew)
            kept = cache_.Find(file, graph);
        if (kept)
            result.placed.cells = map::LayOutAfterEdit(*kept, graph, control);
        else
            result.placed.cells =
                isNew ? map::LayOut(graph, control) : map::LayOutAfterEdit(before, graph, control);
        result.router = std::make_shared<routing::Router>(graph, result.placed.cells);
        return result;
    };
    work_.Run(*this, std::move(work), [this](Result result) { ShowResult(std::move(result)); });
}

void MapPanel::ShowResult(Result result) {
    const bool wasNew = isNew_;
    placed_ = std::move(result.placed);
    isNew_ = false;
    canvas_->Show(result.router, result.details);
    RememberVersion();
    if (wanted_ != map::NoRoom) {
        const int room = std::exchange(wanted_, map::NoRoom);
        canvas_->Select(room);
        emit RoomChosen(room);
    } else if (wasNew)
        canvas_->Select(listed_); // it may have been selected while the map of the game before was shown
    if (wasNew && !session_.Game().Modified)
        KeepPlaces();
}

void MapPanel::RememberVersion() {
    constexpr std::size_t MostCells = 400'000; // of all versions together
    const Table<Room>& rooms = session_.Game().Rooms;
    std::erase_if(versions_, [&](const Version& version) { return version.rooms == rooms; });
    versions_.push_back({rooms, std::make_shared<map::PlacedMap>(placed_)});
    while (versions_.size() > 2 && versions_.size() * placed_.cells.size() > MostCells)
        versions_.pop_front();
}

void MapPanel::KeepPlaces() {
    if (!isNew_ && !IsBusy() && !session_.FileName().isEmpty())
        cache_.Keep(session_.FileName(), placed_);
}

void MapPanel::SelectRoom(int room) {
    listed_ = room;
    if (canvas_->HasMap() && room < static_cast<int>(canvas_->Map().rooms.size()) && !IsBusy()) {
        if (!canvas_->Selected().contains(room) || room == map::NoRoom)
            canvas_->Select(room);
    } else
        wanted_ = room;
}

// ---- Changing the game

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

void MapPanel::Connect(int from, map::Direction direction, int to, int back, bool oneWay) {
    if (IsBusy())
        return;
    const GameModel& game = session_.Game();
    map::Connection connection{from, direction, to, std::nullopt};
    if (!oneWay)
        connection.back =
            back >= 0 ? std::optional<map::Direction>(back) : map::WayBack(game, from, direction, to);
    const QString there = ToQt(game.Rooms[to + 1].Name);
    if (map::ReplacesScript(game, connection) &&
        dialogs_.ShowMessageBox(
            this,
            QStringLiteral("The exit runs a script. Replace the script by a plain exit to %1?").arg(there),
            QStringLiteral("Replace script"), QMessageBox::Yes | QMessageBox::No,
            QMessageBox::Question) != QMessageBox::Yes)
        return;
    AsStep(QStringLiteral("connect %1 %2 to %3")
               .arg(ToQt(game.Rooms[from + 1].Name), QLatin1String(map::WordOf(direction)), there),
           [&](GameModel& changed) { map::Connect(changed, connection); });
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
        placings.push_back({room, std::nullopt});
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
    AsStep(QStringLiteral("forget places on the map"), [](GameModel& game) { map::ForgetPlaces(game); });
    if (isStale_)
        LayOutAnew();
}

// ---- The menu

void MapPanel::AddRoomCommands(QMenu& menu) {
    const std::set<int>& rooms = canvas_->Selected();
    const int room = canvas_->Current();
    menu.addAction(QStringLiteral("&Edit room..."), this, [this, room] { emit RoomOpened(room); });
    menu.addActions(actions()); // those of the window for what has a name
    QMenu* exits = menu.addMenu(QStringLiteral("Remove e&xit"));
    for (map::Direction direction = 0; direction < map::DirectionCount; ++direction) {
        const ScriptPair& exit = map::ExitOf(session_.Game().Rooms[room + 1], direction);
        if (!exit.Key.empty())
            exits->addAction(QStringLiteral("%1: %2").arg(
                                 QLatin1String(map::WordOf(direction)),
                                 exit.Key == ActionExit ? QStringLiteral("script")
                                                        : ToQt(exit.Key).replace(u'&', QLatin1String("&&"))),
                             this, [this, room, direction] { Disconnect(room, direction); });
    }
    exits->setEnabled(!exits->isEmpty());
    menu.addAction(QStringLiteral("&Tidy here"), this, [this] { TidySelected(); });
    const bool isPinned = std::any_of(rooms.begin(), rooms.end(), [this](int selected) {
        return map::PinOf(session_.Game().Rooms[selected + 1].MiscTags).has_value();
    });
    menu.addAction(QStringLiteral("&Let go of the place"), this, [this] { UnpinSelected(); })
        ->setEnabled(isPinned);
    menu.addAction(rooms.size() > 1 ? QStringLiteral("&Delete rooms") : QStringLiteral("&Delete room"), this,
                   [this] { DeleteSelected(); });
    menu.addSeparator();
}

void MapPanel::AddLineCommands(QMenu& menu) {
    const int number = canvas_->ChosenLine();
    if (number < 0)
        return;
    const routing::MapLine line = canvas_->Map().lines[static_cast<std::size_t>(number)];
    if (line.IsTie() || line.from.exit < 0 || line.kind == routing::LineKind::Goto)
        return;
    const auto word = [](routing::Port port) { return QLatin1String(map::WordOf(port)); };
    menu.addAction(QStringLiteral("&Remove connection"), this, [this, line] { RemoveLine(line); });
    if (line.to.room == map::NoRoom)
        return;
    const bool isPlain = !line.from.isScript && !line.to.isScript;
    menu.addAction(QStringLiteral("&Turn around (%1 becomes %2)")
                       .arg(word(line.from.port), word(map::Opposite(line.from.port))),
                   this, [this, line] { Flip(line); })
        ->setEnabled(isPlain &&
                     map::ExitOf(session_.Game().Rooms[line.from.room + 1], map::Opposite(line.from.port))
                         .Key.empty());
    if (line.oneWay)
        menu.addAction(QStringLiteral("Add the way &back"), this,
                       [this, line] {
                           Connect(line.from.room, line.from.port, line.to.room,
                                   map::Opposite(line.from.port), false);
                       })
            ->setEnabled(isPlain);
    else {
        menu.addAction(QStringLiteral("Only %1").arg(word(line.from.port)), this,
                       [this, line] { Disconnect(line.to.room, line.to.port); })
            ->setEnabled(!line.to.isScript);
        menu.addAction(QStringLiteral("Only %1").arg(word(line.to.port)), this,
                       [this, line] { Disconnect(line.from.room, line.from.port); })
            ->setEnabled(!line.from.isScript);
    }
    menu.addSeparator();
}

void MapPanel::ShowMenu(QPoint globalPosition) {
    if (!canvas_->HasMap() || IsBusy())
        return;
    auto* menu = new QMenu(canvas_);
    menu->setObjectName(QStringLiteral("mnuMap"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const QPoint at = canvas_->mapFromGlobal(globalPosition);
    if (canvas_->ChosenLine() >= 0)
        AddLineCommands(*menu);
    else if (canvas_->Current() != map::NoRoom)
        AddRoomCommands(*menu);
    menu->addAction(QStringLiteral("&New room here"), this,
                    [this, at] { canvas_->AskName(canvas_->FreeCellAt(at), map::NoRoom, 0, false); });
    menu->addAction(QStringLiteral("&Fit the map"), canvas_, &MapCanvas::FitAll);
    menu->addAction(QStringLiteral("F&orget all hand-made places"), this, [this] { ForgetPlaces(); });
    menu->addAction(QStringLiteral("&Save picture..."), this, [this] { ExportPicture(); });
    menu->popup(globalPosition);
}

void MapPanel::ExportPicture() {
    if (!canvas_->HasMap())
        return;
    RunCommand(dialogs_, this, [this] {
        const QString path = dialogs_.AskSaveFile(
            this, {QStringLiteral("Save Picture"), QStringLiteral("svg"),
                   QStringLiteral(
                       "SVG pictures (*.svg)|*.svg|PDF documents (*.pdf)|*.pdf|PNG pictures (*.png)|*.png"),
                   session_.FileName()});
        if (path.isEmpty())
            return;
        const std::string file = PathFromQt(path);
        const std::string bytes = MapPicture(canvas_->Map(), PictureFormatOf(file));
        ReplaceFile(file, [&](const std::string& target) {
            OutputFile out(target);
            out.Write(bytes);
            out.Close();
        });
    });
}

} // namespace zem
