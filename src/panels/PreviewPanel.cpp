#include "panels/PreviewPanel.h"

#include "forms/ColourRoles.h"
#include "panels/CompiledGame.h"
#include "play/Names.h"
#include "play/Preview.h"
#include "player/StoryPane.h"
#include "qt/QtText.h"

#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>

#include <utility>

namespace zem {

namespace {

constexpr int GapOfText = 8; // device-independent pixels

struct CompassField {
    FieldId field;
    Shared<ScriptPair> Room::*exit;
    const char* word;
};

/// In the order in which exits are told.
constexpr CompassField Compass[] = {
    {FieldId::RoomNorth, &Room::North, "north"}, {FieldId::RoomNorthEast, &Room::NorthEast, "northeast"},
    {FieldId::RoomEast, &Room::East, "east"},    {FieldId::RoomSouthEast, &Room::SouthEast, "southeast"},
    {FieldId::RoomSouth, &Room::South, "south"}, {FieldId::RoomSouthWest, &Room::SouthWest, "southwest"},
    {FieldId::RoomWest, &Room::West, "west"},    {FieldId::RoomNorthWest, &Room::NorthWest, "northwest"},
    {FieldId::RoomOut, &Room::Out, "out"},
};

/// The number of the last room of that name, as scripts mean it; 0 for none.
int FindRoom(const GameModel& game, const std::string& name) {
    for (int k = game.Rooms.Count(); k >= 1; --k)
        if (game.Rooms[k].Name == name)
            return k;
    return 0;
}

/// "prefix; name" without the prefix.
std::string RoomOfPlace(const std::string& key) {
    const std::size_t semicolon = key.find(';');
    const std::size_t name = semicolon == std::string::npos ? 0 : key.find_first_not_of(' ', semicolon + 1);
    return name == std::string::npos ? std::string() : key.substr(name);
}

} // namespace

PreviewPanel::PreviewPanel(CompiledGame& game, QWidget* parent)
    : QDockWidget(tr("Preview"), parent),
      game_(game),
      page_(new StoryPane(this)),
      links_(new QLabel(this)) {
    setObjectName(QStringLiteral("dckPreview"));
    page_->setObjectName(QStringLiteral("txtPreview"));
    page_->setAccessibleName(tr("Preview"));
    links_->setObjectName(QStringLiteral("lblPreviewLinks"));
    links_->setTextFormat(Qt::RichText);
    links_->setWordWrap(true);
    links_->setTextInteractionFlags(Qt::TextBrowserInteraction);
    auto* body = new QWidget(this);
    auto* layout = new QVBoxLayout(body);
    layout->setContentsMargins(GapOfText, GapOfText, GapOfText, GapOfText);
    layout->setSpacing(GapOfText);
    layout->addWidget(page_, 1);
    layout->addWidget(links_);
    setWidget(body);
    connect(links_, &QLabel::linkActivated, this, [this](const QString& link) {
        const auto target = static_cast<std::size_t>(link.toULong());
        if (target < targets_.size())
            emit PlaceChosen(targets_[target]);
    });
    connect(&game, &CompiledGame::Changed, this, &PreviewPanel::RefreshSoon);
    connect(&game, &CompiledGame::Replaced, this, &PreviewPanel::RefreshSoon);
    connect(this, &QDockWidget::visibilityChanged, this, &PreviewPanel::RefreshSoon);
}

void PreviewPanel::Show(const Place& place) {
    place_ = place;
    RefreshSoon();
}

/// An author who holds an arrow key down in the list of rooms passes many of them.
void PreviewPanel::RefreshSoon() {
    if (std::exchange(isRefreshing_, true))
        return;
    QTimer::singleShot(0, this, [this] {
        isRefreshing_ = false;
        if (isVisible())
            Refresh();
    });
}

void PreviewPanel::Refresh() {
    page_->ClearPage();
    links_->clear();
    targets_.clear();
    const std::shared_ptr<const play::World> world = game_.Get();
    const GameModel& game = world->Game();
    if (place_.Depth() == 0 || !Exists(game, place_)) {
        page_->ShowNote(tr("Select a room, a character or an object to see what a player reads."));
        return;
    }
    const int number = place_.steps[0].entry;
    const Room& room = game.Rooms[number];
    const PlaceStep step = place_.steps[1];
    if (step.entry > 0) {
        const bool isCharacter = step.list == FieldId::RoomCharacters;
        const Thing& thing = isCharacter ? room.Characters[step.entry] : room.Objects[step.entry];
        ShowPieces(play::PreviewThing(*world, room.Name, play::Names::ThingKey(isCharacter, thing.Name)));
        links_->setText(tr("The look of %1").arg(Link(place_, thing.Name)));
        return;
    }
    ShowPieces(play::PreviewRoom(*world, room.Name));
    ShowLinks(room, number);
}

void PreviewPanel::ShowPieces(const play::Outcome& outcome) {
    for (const play::Piece& piece : outcome.pieces)
        if (piece.kind == play::Piece::Text)
            page_->Show(piece);
        else if (piece.kind == play::Piece::Clear)
            page_->ClearPage();
        else if (piece.kind == play::Piece::Picture)
            page_->ShowNote(tr("[picture: %1]").arg(ToQt(piece.text)));
    page_->EndChoices();
    if (outcome.need != play::Need::Line && outcome.need != play::Need::Nothing)
        page_->ShowNote(tr("Here the player is asked something."));
    if (outcome.pieces.empty())
        page_->ShowNote(tr("Nothing is printed."));
    for (const play::Warning& warning : outcome.warnings)
        page_->ShowWarning(ToQt(warning.text), {});
}

QString PreviewPanel::Link(const Place& place, const std::string& text) {
    targets_.push_back(place);
    const QString colour = ColourOf(ColourRole::Accent, palette()).name();
    return QStringLiteral("<a href=\"%1\" style=\"color:%2\">%3</a>")
        .arg(targets_.size() - 1)
        .arg(colour, ToQt(text).toHtmlEscaped());
}

QString PreviewPanel::ExitsOf(const Room& room, int number) {
    const GameModel& game = game_.Get()->Game();
    QStringList exits;
    const auto add = [&](const Place& place, const QString& way, const std::string& name) {
        const QString exit = Link(place, FromQt(way));
        const int target = FindRoom(game, name);
        const QString to = target == 0 ? tr("%1, which does not exist").arg(ToQt(name).toHtmlEscaped())
                                       : Link(Place::Of({{FieldId::GameRooms, target}}), name);
        exits.append(tr("%1 to %2").arg(exit, to));
    };
    for (const auto& [field, exit, word] : Compass) {
        const ScriptPair& pair = *(room.*exit);
        const Place place = Place::Of({{FieldId::GameRooms, number}, {field, 0}}, FieldId::PairKey);
        if (pair.Key == ActionExit)
            exits.append(tr("%1 by a script").arg(Link(place, word)));
        else if (!pair.Key.empty())
            add(place, QLatin1String(word), pair.Key);
    }
    for (int k = 1; k <= room.Places.Count(); ++k)
        add(Place::Of({{FieldId::GameRooms, number}, {FieldId::RoomPlaces, k}}, FieldId::PairKey),
            tr("place"), RoomOfPlace(room.Places[k].Key));
    return exits.join(QStringLiteral(", "));
}

QString PreviewPanel::ThingsOf(const Room& room, int number) {
    QStringList things;
    const auto add = [&](FieldId list, const List<Thing>& records) {
        for (int k = 1; k <= records.Count(); ++k) {
            const Thing& thing = records[k];
            const QString link = Link(Place::Of({{FieldId::GameRooms, number}, {list, k}}), thing.Name);
            things.append(thing.Hidden      ? tr("%1 (hidden)").arg(link)
                          : thing.Invisible ? tr("%1 (not listed)").arg(link)
                                            : link);
        }
    };
    add(FieldId::RoomCharacters, room.Characters);
    add(FieldId::RoomObjects, room.Objects);
    return things.join(QStringLiteral(", "));
}

void PreviewPanel::ShowLinks(const Room& room, int number) {
    QStringList lines = {
        tr("Room: %1").arg(Link(Place::Of({{FieldId::GameRooms, number}}, FieldId::RoomLook), room.Name))};
    if (const QString exits = ExitsOf(room, number); !exits.isEmpty())
        lines.append(tr("Ways out: %1").arg(exits));
    if (const QString things = ThingsOf(room, number); !things.isEmpty())
        lines.append(tr("Here: %1").arg(things));
    links_->setText(lines.join(QStringLiteral("<br>")));
}

} // namespace zem
