#pragma once

#include <QString>
#include <QWidget>

#include <functional>

namespace zem::test {

/// Opens every window of the program on the game, one after another, and calls `visit` while each is shown,
/// laid out, active and filled. The name is the window's class, and with it what the window shows where it
/// can show several things: "frmRoomProperties-Exits". Needs a QApplication, and the program's data files.
/// @param game     a copy of the shipped game "lighthouse.kel"; the windows show its path, and a procedure is
///                 added to it
/// @param colours  "Light", "Dark" or "Desktop"
void ForEachWindow(const QString& game,
                   const std::function<void(const QString& name, QWidget& window)>& visit,
                   const QString& colours = QStringLiteral("Desktop"));

/// Goes from a shown window to another one and calls `use` while that is open.
/// @param steps  names of buttons and menu items to click, with commas between them; "LIST=TEXT" selects the
///               first row that begins so; ">" stands where the step before it opens another window. Steps
///               that end by closing their window lead nowhere.
void FollowSteps(QWidget& window, const QString& steps, const std::function<void(QWidget& window)>& use);

} // namespace zem::test
