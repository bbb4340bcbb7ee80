// The menu of the map, and what it does with the map as a picture.
#include "files/ReplaceFile.h"
#include "forms/RunCommand.h"
#include "painting/MapPicture.h"
#include "painting/MapPrint.h"
#include "panels/MapPanel.h"
#include "qt/QtText.h"
#include "writer/OutputFile.h"

#include <QMenu>
#include <QPrintDialog>
#include <QPrinter>

#include <algorithm>

namespace zem {

void MapPanel::AddRoomCommands(QMenu& menu) {
    const std::set<int>& rooms = canvas_->Selected();
    const int room = canvas_->Current();
    menu.addAction(QStringLiteral("&Edit room...\tReturn"), this, [this, room] { emit RoomOpened(room); });
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
    AddConnections(menu, room);
    menu.addAction(QStringLiteral("&Tidy here"), this, [this] { TidySelected(); });
    const bool isPinned = std::any_of(rooms.begin(), rooms.end(), [this](int selected) {
        return map::PinOf(session_.Game().Rooms[selected + 1].MiscTags).has_value();
    });
    menu.addAction(QStringLiteral("&Let go of the place"), this, [this] { UnpinSelected(); })
        ->setEnabled(isPinned);
    menu.addAction(rooms.size() > 1 ? QStringLiteral("&Delete rooms\tDel")
                                    : QStringLiteral("&Delete room\tDel"),
                   this, [this] { DeleteSelected(); });
    menu.addActions(canvas_->actions()); // of the clipboard
    menu.addSeparator();
}

/// A menu for each connection of the room, so that keys reach what the mouse does at lines.
void MapPanel::AddConnections(QMenu& menu, int room) {
    QMenu* connections = menu.addMenu(QStringLiteral("&Connections"));
    const map::MapGraph& graph = canvas_->Map().graph;
    for (const routing::MapLine& line : canvas_->Map().lines) {
        const bool isHere = line.from.room == room;
        if ((!isHere && line.to.room != room) || line.IsTie() || line.kind == routing::LineKind::Goto)
            continue;
        const routing::LineEnd& end = isHere ? line.from : line.to;
        const int other = isHere ? line.to.room : line.from.room;
        const QString way =
            end.exit < 0 ? QStringLiteral("from") : QString(QLatin1String(map::WordOf(end.port)));
        const std::string& name = other == map::NoRoom
                                      ? graph.exits[static_cast<std::size_t>(line.from.exit)].target
                                      : graph.names[static_cast<std::size_t>(other)];
        QString title = way + u' ' + (name.empty() ? QStringLiteral("(script)") : ToQt(name));
        QMenu* commands = connections->addMenu(title.replace(u'&', QLatin1String("&&")));
        AddLineCommands(*commands, line);
    }
    connections->setEnabled(!connections->isEmpty());
}

void MapPanel::AddLineCommands(QMenu& menu, const routing::MapLine& line) {
    if (line.IsTie() || line.from.exit < 0 || line.kind == routing::LineKind::Goto)
        return;
    const auto word = [](routing::Port port) { return QLatin1String(map::WordOf(port)); };
    menu.addAction(QStringLiteral("&Remove connection"), this, [this, line] { RemoveLine(line); });
    if (line.kind == routing::LineKind::Unknown)
        menu.addAction(QStringLiteral("&Create the room"), this,
                       [this, exit = line.from.exit] { MakeUnknownRoom(exit); });
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
        AddLineCommands(*menu, canvas_->Map().lines[static_cast<std::size_t>(canvas_->ChosenLine())]);
    else if (canvas_->RoomAt(at) != map::NoRoom)
        AddRoomCommands(*menu);
    else if (auto* paste = canvas_->findChild<QAction*>(QStringLiteral("actPaste")))
        menu->addAction(paste); // beside the rooms nothing is done with the selected ones
    menu->addAction(QStringLiteral("&New room here\tIns"), this,
                    [this, at] { canvas_->AskName(canvas_->FreeCellAt(at), map::NoRoom, 0, false); });
    menu->addAction(QStringLiteral("&Fit the map\tCtrl+0"), canvas_, &MapCanvas::FitAll);
    menu->addAction(QStringLiteral("F&orget all hand-made places"), this, [this] { ForgetPlaces(); });
    menu->addAction(QStringLiteral("&Save picture..."), this, [this] { ExportPicture(); });
    menu->addAction(QStringLiteral("&Print..."), this, [this] { Print(); });
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

void MapPanel::Print() {
    RunCommand(dialogs_, this, [this] {
        QPrinter printer(QPrinter::HighResolution);
        QPrintDialog dialog(&printer, this);
        if (dialog.exec() == QDialog::Accepted)
            PrintMap(printer, canvas_->Map());
    });
}

} // namespace zem
