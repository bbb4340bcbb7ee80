#pragma once

class QDialog;

namespace zem {

/// Gives the form the size that the last form of its object name had when it was closed, while the program
/// runs, and never one that the screen has no room for. To be called at the end of the form's constructor.
void RememberSize(QDialog& form);

} // namespace zem
