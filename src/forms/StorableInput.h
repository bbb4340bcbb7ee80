#pragma once

#include "forms/Dialogs.h"

#include <QLineEdit>

namespace zem {

/// From now on refuses, with a message, what is typed or pasted into the box and cannot be kept in a game
/// file; pasted line ends become blanks.
/// @param dialogs  outlives the box
void RefuseUnstorableText(QLineEdit& box, Dialogs& dialogs);

} // namespace zem
