#pragma once

class QApplication;

namespace zem {

/// From now on the list or text box that has the focus has an outline. Many styles show the focus in its rows
/// or its caret alone, and nowhere when there is neither.
void OutlineFocus(QApplication& application);

} // namespace zem
