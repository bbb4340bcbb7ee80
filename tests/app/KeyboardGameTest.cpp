// A game made with key presses alone, each sent to the control that has the focus then.
#include "app/Program.h"
#include "forms/QtText.h"
#include "support/Games.h"

#include <QApplication>
#include <QSettings>
#include <QTimer>
#include <QtTest/QTest>

#include <deque>
#include <gtest/gtest.h>

namespace zem::test {
namespace {

/// Types into the windows as they come up, also those that keep their caller waiting.
class Typist {
public:
    /// Waits until the window, named by its class or its title, is the active one, and presses the keys
    /// there: names as in "Alt+N", text in quotes.
    void In(const char* window, const QStringList& keys) {
        for (const QString& key : keys)
            steps_.push_back({QLatin1String(window), key});
    }

    /// Presses all keys.
    void Type() {
        QTimer::singleShot(0, &life_, [this] { Next(0); });
        QEventLoop loop;
        while (!steps_.empty())
            loop.processEvents(QEventLoop::WaitForMoreEvents);
    }

private:
    struct Step {
        QString window;
        QString key;
    };

    void Next(int waited) {
        constexpr int Patience = 3000; // milliseconds
        if (steps_.empty())
            return;
        const QWidget* active = QApplication::activeWindow();
        const QString& wanted = steps_.front().window;
        if (active != nullptr && (active->objectName() == wanted || active->windowTitle() == wanted)) {
            Press();
        } else if (waited < Patience) {
            ActivateOne();
            QTimer::singleShot(1, &life_, [this, waited] { Next(waited + 1); });
        } else {
            ADD_FAILURE() << "no window " << wanted.toStdString() << " for "
                          << steps_.front().key.toStdString() << ", but "
                          << (active == nullptr ? "none" : active->objectName().toStdString());
            steps_.clear();
            for (QWidget* window : QApplication::topLevelWidgets()) // so that whoever has opened it goes on
                if (auto* dialog = qobject_cast<QDialog*>(window))
                    dialog->reject();
        }
    }

    /// What a window manager does when the active window is closed.
    static void ActivateOne() {
        if (QWidget* modal = QApplication::activeModalWidget())
            modal->activateWindow();
        else if (QApplication::activeWindow() == nullptr)
            for (QWidget* window : QApplication::topLevelWidgets())
                if (window->isVisible() && window->windowType() != Qt::Popup)
                    window->activateWindow();
    }

    void Press() {
        const QString key = steps_.front().key;
        steps_.pop_front();
        // A key can open a window and come back only when that is closed again.
        // What is typed can open a list of matches and close it, of which the platform hears a moment later.
        QTimer::singleShot(key.startsWith(u'"') ? 20 : 0, &life_, [this] { Next(0); });
        QWidget* popup = QApplication::activePopupWidget();
        QWidget* target = popup == nullptr ? QApplication::focusWidget() : popup;
        if (target == nullptr)
            target = QApplication::activeWindow();
        if (key.startsWith(u'"')) {
            QTest::keyClicks(target, key.mid(1, key.size() - 2));
            return;
        }
        const QKeyCombination keys = QKeySequence::fromString(key)[0];
        QTest::keyClick(target, keys.key(), keys.keyboardModifiers());
    }

    std::deque<Step> steps_;
    QObject life_; // no timer outlives it
};

QStringList Times(int count, const char* key) {
    QStringList keys;
    keys.fill(QLatin1String(key), count);
    return keys;
}

TEST(Keyboard, MakesAGameOfThreeRooms) {
    const TempFolder folder;
    QSettings store(PathToQt(folder.Path("settings.ini")), QSettings::IniFormat);
    store.setValue(QStringLiteral("Init/InstalledVer"), QStringLiteral("2.0"));
    QtDialogs dialogs;
    GameModel game;
    Program program(game, store, dialogs, QStringLiteral(ZEM_PROGRAM_FOLDER), PathToQt(folder.Path("state")));
    program.Main();

    Typist keys;
    keys.In("frmStart", {"Alt+N"});
    for (const char* room : {"\"Hall\"", "\"Yard\"", "\"Attic\""}) {
        keys.In("frmMain", {"Alt+R", "Ins"});
        keys.In("New room", {room, "Return"});
        keys.In("frmRoomProperties", {"Alt+P", "\"the\"", "Return"});
    }
    const std::pair<const char*, QStringList> exits[] = {
        {"Home", {"Alt+N", "\"Yard\""}}, {"Down", {"Alt+S", "\"Hall\""}}, {"End", {"Alt+O", "\"Hall\""}}};
    for (const auto& [row, exit] : exits) {
        keys.In("frmMain", {row, "Return"});
        keys.In("frmRoomProperties",
                Times(4, "Shift+Tab") + QStringList{"Space"}); // to the page of the exits
        keys.In("frmRoomProperties", exit + QStringList{"Return"});
    }
    keys.In("frmMain", {"Alt+C", "Ins"});
    keys.In("New character", {"\"Bob\"", "Return"});
    keys.In("frmThingProperties", {"Alt+G", "\"he\"", "Return"});
    keys.In("frmMain", {"Alt+R", "Home", "Alt+O", "Ins"});
    keys.In("New object", {"\"lamp\"", "Return"});
    keys.In("frmThingProperties", {"Shift+Tab", "Shift+Tab", "Space", "Alt+L", "Return"});
    keys.In("frmScriptLines", {"Ins"});
    keys.In("frmScriptEditor", {"\"Print a message\"", "Alt+P", "\"Brass.\"", "Return"});
    keys.In("frmScriptLines", Times(7, "Tab") + QStringList{"Space"});
    keys.In("frmThingProperties", Times(4, "Tab") + QStringList{"Space"});
    keys.In("frmMain", {"Alt+E", "G", "P"});
    keys.In("frmGameProperties", {"\"Tower\"", "Tab", "\"Hall\"", "Return"});
    keys.In("frmMain", {"Alt+F", "A"});
    const QString path = PathToQt(folder.Path("tower.kel"));
    keys.In("Save As", {u'"' + path + u'"', "Return"});
    keys.In("frmMain", {"Alt+F", "X"});
    keys.Type();
    const auto withoutPath = [](const std::string& bytes) { return bytes.substr(bytes.find(" created by")); };
    EXPECT_EQ(withoutPath(ReadBytes(PathFromQt(path))),
              withoutPath(ReadBytes(ZEM_TEST_DATA "/made-by-keyboard.kel")));
}

} // namespace
} // namespace zem::test
