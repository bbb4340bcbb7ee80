#pragma once

class QApplication;

namespace zem {

/// From now on the control that has the focus is seen: an area that scrolls shows it, and a list or text box
/// has an outline. Many styles show the focus in its rows or its caret alone, and nowhere when there is
/// neither.
void OutlineFocus(QApplication& application);

} // namespace zem
