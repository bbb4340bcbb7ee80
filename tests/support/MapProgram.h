#pragma once

#include "map/MapEdits.h"
#include "panels/MapPanel.h"
#include "support/RunningProgram.h"

#include <QMenu>

#include <algorithm>
#include <string>

namespace zem::test {

/// The editor with the map of a game before it.
class MapProgram : public RunningProgram {
public:
    explicit MapProgram(std::string_view bytes) : RunningProgram(bytes) { ShowMap(); }

    void ShowMap() {
        qputenv("XDG_STATE_HOME", Path("state").toUtf8());
        Main()->resize(1400, 900);
        Main()->show();
        Trigger("mnuToolsMap");
        Wait();
        Panel().setFloating(true);
        Panel().resize(900, 700);
        QCoreApplication::processEvents();
        Canvas().FitAll();
    }

    MapPanel& Panel() const { return *Main()->findChild<MapPanel*>(); }
    MapCanvas& Canvas() const { return Panel().Canvas(); }

    void Wait() const {
        ASSERT_TRUE(QTest::qWaitFor([this] { return !Panel().IsBusy(); }));
        QCoreApplication::processEvents();
    }

    int Number(const char* name) const {
        const auto& names = Canvas().Map().graph.names;
        return static_cast<int>(std::find(names.begin(), names.end(), name) - names.begin());
    }
    map::Cell CellOf(const char* name) const {
        return Canvas().Map().rooms[static_cast<std::size_t>(Number(name))].cell;
    }
    QPoint Room(const char* name) const { return Canvas().PointOfRoom(Number(name)); }
    QPoint Port(const char* name, map::Direction port) const {
        return Canvas().PointOfPort(Number(name), port);
    }

    void Drag(QPoint from, QPoint to, Qt::KeyboardModifiers keys = {}) const {
        QTest::mousePress(&Canvas(), Qt::LeftButton, keys, from);
        QTest::mouseMove(&Canvas(), (from + to) / 2);
        QTest::mouseMove(&Canvas(), to);
        QTest::mouseRelease(&Canvas(), Qt::LeftButton, keys, to);
    }
    void Key(int key, Qt::KeyboardModifiers keys = {}) const {
        QTest::keyClick(&Canvas(), static_cast<Qt::Key>(key), keys);
        Wait();
    }
    void Name(const char* name) const {
        auto* box = Canvas().findChild<QLineEdit*>(QStringLiteral("txtNewRoom"));
        ASSERT_NE(box, nullptr);
        QTest::keyClicks(box, QLatin1String(name));
        QTest::keyClick(box, Qt::Key_Return);
        Wait();
    }

    /// Opens the context menu at a point and chooses from it: the words that each entry begins with, from the
    /// menu to its submenus. Nothing is chosen where there is no such entry, or it is off.
    /// @return  whether it was chosen
    bool Choose(QPoint at, const QStringList& way,
                QContextMenuEvent::Reason reason = QContextMenuEvent::Mouse) const {
        if (reason == QContextMenuEvent::Mouse)
            QTest::mouseClick(&Canvas(), Qt::RightButton, {}, at);
        QContextMenuEvent event(reason, at, Canvas().mapToGlobal(at));
        QCoreApplication::sendEvent(&Canvas(), &event);
        auto* menu = Canvas().findChild<QMenu*>(QStringLiteral("mnuMap"));
        if (menu == nullptr)
            return false;
        bool isChosen = true;
        QList<QAction*> actions = menu->actions();
        for (const QString& step : way) {
            const auto action = std::find_if(actions.cbegin(), actions.cend(), [&step](const QAction* one) {
                return one->text().remove(u'&').startsWith(step) && one->isEnabled();
            });
            isChosen = action != actions.cend();
            if (!isChosen)
                break;
            if (const QMenu* inner = (*action)->menu())
                actions = inner->actions();
            else
                (*action)->trigger();
        }
        menu->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        Wait();
        return isChosen;
    }

    /// All exits of the game, as "Quay east Mole".
    std::string Exits() const {
        std::string told;
        for (const zem::Room& room : game.Rooms)
            for (map::Direction direction = 0; direction < map::DirectionCount; ++direction)
                if (const ScriptPair& exit = map::ExitOf(room, direction); !exit.Key.empty())
                    told += (told.empty() ? "" : ", ") + room.Name + ' ' + map::WordOf(direction) + ' ' +
                            (exit.Key == ActionExit ? exit.Script : exit.Key);
        return told;
    }
    /// The name of the step that Undo would take back.
    std::string LastStep() const {
        return Find<QAction>("mnuToolsUndo")->text().remove(QLatin1String("&Undo ")).toStdString();
    }
};

} // namespace zem::test
