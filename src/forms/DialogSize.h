#pragma once

class QDialog;

namespace zem {

/// Lets the contents of the form scroll if the screen has no room for all of them. To be called at the end of
/// the form's constructor.
void FitScreen(QDialog& form);

/// FitScreen, and gives the form the size that the last form of its object name had when it was closed, while
/// the program runs.
void RememberSize(QDialog& form);

} // namespace zem
