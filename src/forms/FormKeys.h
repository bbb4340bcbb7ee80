#pragma once

class QApplication;

namespace zem {

/// From now on these keys do the same in every window: Ctrl+Return presses OK, or Close where there is no OK,
/// wherever the focus is; Alt and a letter types nothing where the letter stands for no control, and closes a
/// list of matches.
void HandleFormKeys(QApplication& application);

} // namespace zem
