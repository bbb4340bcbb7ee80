#pragma once

#include "forms/Dialogs.h"
#include "qt/OpenEdits.h"

class QDialog;

namespace zem {

/// From now on Esc and the close button of the form's window ask whether to discard the changes, if there are
/// any. The form's own Cancel says clearly enough what the author wants, and does not ask.
/// @param edit  what is typed into the form; must be there while the form is open
void AskBeforeDiscard(QDialog& form, Dialogs& dialogs, const OpenEdit& edit);

} // namespace zem
