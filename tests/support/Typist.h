#pragma once

#include <QApplication>
#include <QDialog>
#include <QEventLoop>
#include <QKeySequence>
#include <QTest>
#include <QTimer>

#include <deque>
#include <gtest/gtest.h>
#include <utility>

namespace zem::test {

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
    /// Presses the next key once its window is active.
    /// @param turns  of the event loop that have passed while it was waited for, less than 0 for some to let
    /// go by
    void Next(int turns) {
        constexpr int Patience = 3000;
        constexpr int TurnsAfterText = 20;
        if (steps_.empty())
            return;
        const auto [wanted, key] = steps_.front();
        const QWidget* active = QApplication::activeWindow();
        const bool isText = key.startsWith(u'"');
        if (turns >= 0 && active != nullptr &&
            (active->objectName() == wanted || active->windowTitle() == wanted)) {
            steps_.pop_front();
            // A key can open a window and come back only when that is closed again. What is typed can open a
            // list of matches and close it, of which the platform hears a moment later.
            QTimer::singleShot(0, &life_, [this, isText] { Next(isText ? -TurnsAfterText : 0); });
            Press(key);
        } else if (turns < Patience) {
            if (turns >= 0)
                ActivateOne();
            QTimer::singleShot(1, &life_, [this, turns] { Next(turns + 1); });
        } else {
            ADD_FAILURE() << "no window " << wanted.toStdString() << " for " << key.toStdString() << ", but "
                          << (active == nullptr ? "none" : active->objectName().toStdString());
            steps_.clear();
            for (QWidget* window : QApplication::topLevelWidgets()) // Lets the command that opened it end.
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

    static void Press(const QString& key) {
        QWidget* target = QApplication::activeWindow();
        for (QWidget* nearer : {QApplication::focusWidget(), QApplication::activePopupWidget()})
            target = nearer == nullptr ? target : nearer;
        if (key.startsWith(u'"')) {
            QTest::keyClicks(target, key.mid(1, key.size() - 2));
            return;
        }
        const QKeyCombination keys = QKeySequence::fromString(key)[0];
        QTest::keyClick(target, keys.key(), keys.keyboardModifiers());
    }

    std::deque<std::pair<QString, QString>> steps_; // Pairs of a window and a key.
    QObject life_;                                  // No timer outlives it.
};

} // namespace zem::test
