#pragma once

class QMainWindow;

namespace zem {

/// Where a menu and buttons of the window share a key, such as Alt+E, the key opens the menu at once, and
/// leads to the buttons only when it is pressed again. Otherwise it would be the other way round.
void PutMenusFirst(QMainWindow& window);

} // namespace zem
