#include "panels/MapPanel.h"

#include "qt/QtText.h"

#include <QAction>
#include <QLabel>
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
    connect(canvas_, &MapCanvas::UnknownRoomWanted, this, &MapPanel::MakeUnknownRoom);
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
    // Lines that still hold stay as they are drawn; a copy, because the author may drag on meanwhile.
    std::shared_ptr<const routing::RoutedMap> shown;
    if (!isNew_ && canvas_->HasMap())
        shown = std::make_shared<routing::RoutedMap>(canvas_->Map());
    auto work = [this, generation, game = session_.Game(), before = placed_, isNew = isNew_, file,
                 shown](const IsOutdated& stop) {
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
        result.router = shown ? std::make_shared<routing::Router>(graph, result.placed.cells, *shown)
                              : std::make_shared<routing::Router>(graph, result.placed.cells);
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

} // namespace zem
